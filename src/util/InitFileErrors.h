// Every exception of the unit InitFile.
#ifndef VORLAN_UTIL_INITFILEERRORS_H
#define VORLAN_UTIL_INITFILEERRORS_H

#include <cstddef>
#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

inline constexpr char kInitFile[] = "InitFile";

[[noreturn]] inline void ParameterFileNotFound(const std::string& path)
{
    throw OpenMS::Exception::FileNotFound(kInitFile, __LINE__, "InitFile::Load", path);
}

/// number counts the lines of the file from 1.
[[noreturn]] inline void NotAPair(std::size_t number, const std::string& line)
{
    throw OpenMS::Exception::InvalidParameter(kInitFile, __LINE__, "InitFile::Load",
                                              std::to_string(number) + " \"" + line
                                                  + "\" Invalid parameter format");
}

[[noreturn]] inline void ParameterFileNotWritable(const std::string& path)
{
    throw OpenMS::Exception::FileNotWritable(kInitFile, __LINE__, "InitFile::Save", path);
}

} // namespace Vorlan::errors

#endif // VORLAN_UTIL_INITFILEERRORS_H
