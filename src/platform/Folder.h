// The files of a folder.
#ifndef VORLAN_PLATFORM_FOLDER_H
#define VORLAN_PLATFORM_FOLDER_H

#include <string>
#include <string_view>
#include <vector>

namespace Vorlan::platform {

/// Appends the names, without the folder, of all entries of the folder that the
/// path resolves to, except subfolders, whose names end in ending: ASCII letters
/// in any case. Byte-wise order. Nothing for a folder that cannot be read.
void ListFiles(const std::string& folder, std::string_view ending, std::vector<std::string>& names);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_FOLDER_H
