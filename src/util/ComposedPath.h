// Composing a path from a folder and a name, always with backslashes.
#ifndef VORLAN_UTIL_COMPOSEDPATH_H
#define VORLAN_UTIL_COMPOSEDPATH_H

#include <string>

namespace Vorlan {

/// folder with exactly one backslash at its end.
template <typename Text>
Text WithOneBackslash(Text folder)
{
    while (!folder.empty() && folder.back() == '\\') {
        folder.pop_back();
    }
    folder.push_back('\\');
    return folder;
}

} // namespace Vorlan

#endif // VORLAN_UTIL_COMPOSEDPATH_H
