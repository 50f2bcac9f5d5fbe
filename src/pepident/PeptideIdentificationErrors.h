// Every exception of the unit PeptideIdentificationIO. label is the literal
// name of the reader's member, "TulkTXTPepIdentIO::Load".
#ifndef VORLAN_PEPIDENT_ERRORS_H
#define VORLAN_PEPIDENT_ERRORS_H

#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::errors {

inline constexpr char kPeptideIdentificationIO[] = "PeptideIdentificationIO";

[[noreturn]] inline void NotReadable(const char* label, const std::string& path)
{
    throw OpenMS::Exception::FileNotReadable(kPeptideIdentificationIO, __LINE__, label, path);
}

[[noreturn]] inline void NotWritable(const char* label, const std::string& path)
{
    throw OpenMS::Exception::FileNotWritable(kPeptideIdentificationIO, __LINE__, label, path);
}

[[noreturn]] inline void MissingColumn(const char* label, const std::string& column)
{
    throw OpenMS::Exception::ElementNotFound(kPeptideIdentificationIO, __LINE__, label, column);
}

} // namespace Vorlan::errors

#endif // VORLAN_PEPIDENT_ERRORS_H
