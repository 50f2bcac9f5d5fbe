#include "util/TextMode.h"

#include <cstring>

namespace Vorlan {

std::size_t DropByteOrderMark(char* text, std::size_t size)
{
    constexpr char kMark[] = "\xEF\xBB\xBF";
    if (size < 3 || std::memcmp(text, kMark, 3) != 0) {
        return size;
    }
    std::memmove(text, text + 3, size - 3);
    return size - 3;
}

std::size_t DropCarriageReturns(char* text, std::size_t size)
{
    char* const end = text + size;
    const char* from = text;
    char* to = text;
    while (from < end) {
        const void* const found = std::memchr(from, '\r', static_cast<std::size_t>(end - from));
        const char* const stop = found == nullptr ? end : static_cast<const char*>(found);
        if (to != from) {
            std::memmove(to, from, static_cast<std::size_t>(stop - from));
        }
        to += stop - from;
        from = stop;
        if (from < end) {
            const bool beforeFeed = from + 1 < end && from[1] == '\n';
            if (!beforeFeed) {
                *to++ = '\r';
            }
            ++from;
        }
    }
    return static_cast<std::size_t>(to - text);
}

} // namespace Vorlan
