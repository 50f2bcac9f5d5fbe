// How the text of a file is written: its bytes, encoding and line ends.
#ifndef PELGRIN_TEXTFACTS_H
#define PELGRIN_TEXTFACTS_H

#include <cstdint>
#include <string>

#include "inspect/Facts.h"

namespace pelgrin {

enum class Encoding : std::size_t {
    Ascii,
    Utf8,
    Utf8Mark, ///< with a byte order mark
    Utf16Low, ///< with its mark, the low byte first
    Utf16High,
    Other, ///< bytes above 127 that are no UTF-8
};

struct TextFacts {
    std::uint64_t bytes = 0;
    Encoding encoding = Encoding::Ascii;
    std::uint64_t nuls = 0;      ///< bytes that are 0; of UTF-16 characters
    std::uint64_t feeds = 0;     ///< lines that end in a line feed alone
    std::uint64_t both = 0;      ///< in a carriage return and a line feed
    std::uint64_t returns = 0;   ///< in a carriage return alone
    bool endsWithLineEnd = true; ///< as an empty file does
};

/// One pass over the bytes. Throws Failure when the file cannot be read.
TextFacts TextFactsOf(const std::string& path);

void Tell(const TextFacts& text, Facts& facts);

} // namespace pelgrin

#endif // PELGRIN_TEXTFACTS_H
