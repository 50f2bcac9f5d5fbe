// Files that are written.
#ifndef VORLAN_PLATFORM_OUTPUTFILE_H
#define VORLAN_PLATFORM_OUTPUTFILE_H

#include <fstream>
#include <string>

namespace Vorlan::platform {

/// Opens output on the file that path resolves to, emptying it. The stream fails
/// when it cannot, when it is open already, and for a path with a NUL in it: the
/// system would take what stands in front of the NUL for a path.
void OpenOutput(std::ofstream& output, const std::string& path);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_OUTPUTFILE_H
