// Text mode for files that are not read line by line.
#ifndef VORLAN_UTIL_TEXTMODE_H
#define VORLAN_UTIL_TEXTMODE_H

#include <cstddef>

namespace Vorlan {

/// Drops one carriage return before each line feed of text[0, size). Gives the
/// size that is left.
std::size_t DropCarriageReturns(char* text, std::size_t size);

/// Drops a UTF-8 byte order mark at the start of text[0, size), likewise.
std::size_t DropByteOrderMark(char* text, std::size_t size);

} // namespace Vorlan

#endif // VORLAN_UTIL_TEXTMODE_H
