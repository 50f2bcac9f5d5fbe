// Turning composed paths into openable ones.
//
// The library composes, stores, prints and throws paths with backslashes. On a
// system whose separator is "/", a path is resolved only here, at the moment
// it is opened.
#ifndef VORLAN_PLATFORM_PATHS_H
#define VORLAN_PLATFORM_PATHS_H

#include <functional>
#include <string>

namespace Vorlan::platform {

/// Whether path can name an entry: nothing behind a NUL would reach the system.
bool IsPathText(const std::string& path);

/// Whether path, as it stands, names an entry. A link to nothing names none.
bool Exists(const std::string& path);

/// The first of these that isIt takes: the path as it stands, the path with every
/// backslash read as "/", the path with only its last backslash read so. When it
/// takes none of them, the second.
std::string FirstReading(const std::string& path,
                         const std::function<bool(const std::string&)>& isIt);

/// The first reading of path that names an existing entry. When none exists: the
/// second one, for a file to be created.
std::string Resolve(const std::string& path);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_PATHS_H
