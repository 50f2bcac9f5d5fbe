// Turning composed paths into openable ones.
//
// The library composes, stores, prints and throws paths with backslashes. On a
// system whose separator is "/", a path is resolved only here, at the moment
// it is opened.
#ifndef VORLAN_PLATFORM_PATHS_H
#define VORLAN_PLATFORM_PATHS_H

#include <string>

namespace Vorlan::platform {

/// Whether path can name an entry: nothing behind a NUL would reach the system.
bool IsPathText(const std::string& path);

/// The first of these that names an existing entry: the path as it stands, the
/// path with every backslash read as "/", the path with only its last backslash
/// read so. When none exists: the second of them, for a file to be created.
std::string Resolve(const std::string& path);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_PATHS_H
