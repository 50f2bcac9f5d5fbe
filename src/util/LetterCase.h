// Upper and lower case of ASCII letters, whatever locale the host has set.
#ifndef VORLAN_UTIL_LETTERCASE_H
#define VORLAN_UTIL_LETTERCASE_H

#include <algorithm>
#include <string>

namespace Vorlan {

inline char ToUpperAscii(char c)
{
    return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

inline char ToLowerAscii(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

inline std::string UpperAscii(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), ToUpperAscii);
    return text;
}

inline std::string LowerAscii(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(), ToLowerAscii);
    return text;
}

} // namespace Vorlan

#endif // VORLAN_UTIL_LETTERCASE_H
