#include "inspect/TextFacts.h"

#include <fstream>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

struct EncodingTexts {
    const char* key;
    const char* text;
};

constexpr EncodingTexts kEncodings[] = {
    {"ascii", "ASCII"},
    {"utf_8", "UTF-8"},
    {"utf_8_with_mark", "UTF-8 with a byte order mark"},
    {"utf_16_le", "UTF-16, low byte first"},
    {"utf_16_be", "UTF-16, high byte first"},
    {"other", "bytes above 127 that are no UTF-8"},
};

/// Whether bytes are well-formed UTF-8, one after the other.
class Utf8Check {
public:
    void Take(unsigned char byte)
    {
        if (byte < 0x80) {
            isGood_ = isGood_ && left_ == 0;
            left_ = 0;
            return;
        }
        hasHigh_ = true;
        if (left_ > 0) {
            isGood_ = isGood_ && byte >= low_ && byte <= high_;
            --left_;
            low_ = 0x80;
            high_ = 0xBF;
        } else {
            Begin(byte);
        }
    }

    bool HasHigh() const { return hasHigh_; }
    bool IsGood() const { return isGood_ && left_ == 0; }

private:
    /// The second byte of some characters is limited: no longer form than needed,
    /// no surrogates, nothing above U+10FFFF.
    void Begin(unsigned char byte)
    {
        isGood_ = isGood_ && byte >= 0xC2 && byte <= 0xF4;
        left_ = byte >= 0xF0 ? 3 : byte >= 0xE0 ? 2 : 1;
        low_ = byte == 0xE0 ? 0xA0 : byte == 0xF0 ? 0x90 : 0x80;
        high_ = byte == 0xED ? 0x9F : byte == 0xF4 ? 0x8F : 0xBF;
    }

    bool hasHigh_ = false;
    bool isGood_ = true;
    int left_ = 0;
    unsigned char low_ = 0x80;
    unsigned char high_ = 0xBF;
};

/// Counts line ends as characters come.
class LineEnds {
public:
    explicit LineEnds(TextFacts& text) : text_(text) {}

    void Take(char c)
    {
        if (c == '\n') {
            if (last_ == '\r') {
                --text_.returns;
                ++text_.both;
            } else {
                ++text_.feeds;
            }
        } else if (c == '\r') {
            ++text_.returns;
        } else if (c == '\0') {
            ++text_.nuls;
        }
        last_ = c;
        text_.endsWithLineEnd = c == '\n' || c == '\r';
    }

private:
    TextFacts& text_;
    char last_ = '\0';
};

Encoding EncodingOfMark(std::string_view head)
{
    if (BeginsWith(head, "\xEF\xBB\xBF")) {
        return Encoding::Utf8Mark;
    }
    if (BeginsWith(head, "\xFF\xFE")) {
        return Encoding::Utf16Low;
    }
    return BeginsWith(head, "\xFE\xFF") ? Encoding::Utf16High : Encoding::Ascii;
}

bool IsWide(Encoding encoding)
{
    return encoding == Encoding::Utf16Low || encoding == Encoding::Utf16High;
}

/// Takes the bytes of a file, by twos for UTF-16.
class Walk {
public:
    explicit Walk(TextFacts& text) : text_(text), ends_(text) {}

    void Take(std::string_view block)
    {
        for (const char c : block) {
            ++text_.bytes;
            if (!IsWide(text_.encoding)) {
                utf8_.Take(static_cast<unsigned char>(c));
                ends_.Take(c);
            } else if (text_.bytes % 2 == 0) {
                const char low = text_.encoding == Encoding::Utf16Low ? first_ : c;
                const char high = text_.encoding == Encoding::Utf16Low ? c : first_;
                ends_.Take(high == '\0' ? low : '?');
            }
            first_ = c;
        }
    }

    void Finish()
    {
        if (IsWide(text_.encoding) || !utf8_.HasHigh()) {
            return;
        }
        if (!utf8_.IsGood()) {
            text_.encoding = Encoding::Other;
        } else if (text_.encoding == Encoding::Ascii) {
            text_.encoding = Encoding::Utf8;
        }
    }

private:
    TextFacts& text_;
    Utf8Check utf8_;
    LineEnds ends_;
    char first_ = '\0'; ///< of two bytes
};

/// The line ends by their names, those that are there.
std::vector<Counted> LineEndCounts(const TextFacts& text)
{
    std::vector<Counted> counts;
    const auto add = [&](const char* key, const char* words, std::uint64_t count) {
        if (count > 0) {
            counts.push_back({key, words, count, std::nullopt});
        }
    };
    add("lf", "LF", text.feeds);
    add("crlf", "CRLF", text.both);
    add("cr", "CR", text.returns);
    return counts;
}

std::string LineEndText(const TextFacts& text, const std::vector<Counted>& counts)
{
    std::string words;
    if (counts.size() == 1) {
        words = counts.front().text;
    }
    for (const Counted& counted : counts) {
        if (counts.size() > 1) {
            words += fmt::format("{}{} {}", words.empty() ? "mixed: " : ", ", counted.count,
                                 counted.text);
        }
    }
    if (!text.endsWithLineEnd) {
        words += words.empty() ? "none" : ", none behind the last line";
    }
    return words.empty() ? "none" : words;
}

} // namespace

TextFacts TextFactsOf(const std::string& path)
{
    CheckReadable(path);
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(kBlock);
    TextFacts text;
    Walk walk(text);
    while (file) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const std::string_view bytes(block.data(), static_cast<std::size_t>(file.gcount()));
        if (text.bytes == 0) {
            text.encoding = EncodingOfMark(bytes);
        }
        walk.Take(bytes);
    }
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", path));
    }
    walk.Finish();
    return text;
}

void Tell(const TextFacts& text, Facts& facts)
{
    const EncodingTexts& encoding = kEncodings[static_cast<std::size_t>(text.encoding)];
    const std::vector<Counted> ends = LineEndCounts(text);
    facts.push_back({"bytes", "Bytes", text.bytes});
    facts.push_back({"encoding", "", std::string(encoding.key)});
    facts.push_back({"line_ends", "", ends});
    facts.push_back({"ends_with_line_end", "", text.endsWithLineEnd});
    facts.push_back({"", "Encoding", std::string(encoding.text)});
    facts.push_back({"", "Line ends", LineEndText(text, ends)});
    if (text.nuls > 0) {
        facts.push_back({"nul_bytes", "NUL bytes", text.nuls});
    }
}

} // namespace pelgrin
