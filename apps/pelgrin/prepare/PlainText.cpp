#include "prepare/PlainText.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <functional>
#include <string_view>
#include <vector>

#include <fmt/format.h>
#include <iconv.h>

#include "common/Failure.h"
#include "files/Packed.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;

constexpr std::string_view kMark = "\xEF\xBB\xBF";

enum class Mark { None, Utf8, Utf16Little, Utf16Big };

/// Calls take with every block of a file.
void ForBlocks(const std::string& path, const std::function<void(std::string_view)>& take)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw Failure(fmt::format("{}: cannot be opened: {}", path, std::strerror(errno)));
    }
    std::string block(kBlock, '\0');
    do {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        take(std::string_view(block).substr(0, static_cast<std::size_t>(file.gcount())));
    } while (file);
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", path));
    }
}

Mark MarkOf(const std::string& path)
{
    std::string begin;
    ForBlocks(path, [&begin](std::string_view block) {
        begin += block.substr(0, 3 - std::min<std::size_t>(3, begin.size()));
    });
    if (begin == kMark) {
        return Mark::Utf8;
    }
    if (begin.compare(0, 2, "\xFF\xFE") == 0) {
        return Mark::Utf16Little;
    }
    return begin.compare(0, 2, "\xFE\xFF") == 0 ? Mark::Utf16Big : Mark::None;
}

/// Follows the bytes of UTF-8, without its finer rules on what may stand where.
class Utf8Walk {
public:
    void Take(unsigned char byte)
    {
        if (open_ > 0) {
            isValid_ = isValid_ && (byte & 0xC0U) == 0x80U;
            --open_;
        } else if (byte >= 0x80U) {
            isValid_ = isValid_ && byte >= 0xC2U && byte <= 0xF4U;
            open_ = byte >= 0xF0U ? 3 : byte >= 0xE0U ? 2 : 1;
        }
    }
    bool IsValid() const { return isValid_ && open_ == 0; }

private:
    bool isValid_ = true;
    int open_ = 0; ///< bytes that the letter still has
};

/// What the bytes of a file are.
struct Survey {
    bool isUtf8 = true;
    std::uint64_t feeds = 0;
    std::uint64_t returns = 0;       ///< before a line feed
    std::uint64_t loneReturns = 0;   ///< elsewhere, but at the end of the file
    std::uint64_t highLines = 0;     ///< lines with a byte above 127
    std::uint64_t firstHighLine = 0; ///< from 1
    std::uint64_t nuls = 0;
    std::size_t marks = 0; ///< byte order marks at the start, one behind the other
};

/// Counts the byte order marks at the start of what it takes byte by byte.
class MarkWalk {
public:
    void Take(char c)
    {
        isOpen_ = isOpen_ && c == kMark[place_ % kMark.size()];
        place_ += isOpen_ ? 1 : 0;
    }
    std::size_t Marks() const { return place_ / kMark.size(); }

private:
    bool isOpen_ = true;
    std::size_t place_ = 0; ///< of the first byte that is none of a mark
};

Survey SurveyOf(const std::string& path)
{
    Survey survey;
    Utf8Walk utf8;
    MarkWalk marks;
    char before = '\0';
    std::uint64_t lastHighLine = 0;
    ForBlocks(path, [&](std::string_view block) {
        for (const char c : block) {
            utf8.Take(static_cast<unsigned char>(c));
            marks.Take(c);
            survey.loneReturns += before == '\r' && c != '\n' ? 1 : 0;
            survey.returns += before == '\r' && c == '\n' ? 1 : 0;
            survey.nuls += c == '\0' ? 1 : 0;
            if (static_cast<unsigned char>(c) >= 0x80U && lastHighLine != survey.feeds + 1) {
                lastHighLine = survey.feeds + 1;
                survey.firstHighLine =
                    ++survey.highLines == 1 ? lastHighLine : survey.firstHighLine;
            }
            survey.feeds += c == '\n' ? 1 : 0;
            before = c;
        }
    });
    survey.isUtf8 = utf8.IsValid();
    survey.marks = marks.Marks();
    return survey;
}

/// A file in scratch under the next number.
std::string NextPath(ScratchFolder& scratch, const char* name)
{
    static std::uint64_t number = 0;
    return scratch.PathOf(fmt::format("{}{}", name, ++number));
}

class PlainFile {
public:
    explicit PlainFile(const std::string& path) : path_(path), file_(path, std::ios::binary) {}

    void Write(std::string_view text)
    {
        file_.write(text.data(), static_cast<std::streamsize>(text.size()));
        Check();
    }
    void Close()
    {
        file_.close();
        Check();
    }

private:
    void Check() const
    {
        if (!file_) {
            throw Failure(
                fmt::format("{}: cannot be written to its end: {}", path_, std::strerror(errno)));
        }
    }

    std::string path_;
    std::ofstream file_;
};

class Converter {
public:
    Converter(const std::string& source, const char* charset)
        : source_(source), converter_(::iconv_open("UTF-8", charset))
    {
        if (converter_ == reinterpret_cast<iconv_t>(-1)) { // NOLINT: as POSIX defines it
            throw Failure(fmt::format("{}: the system cannot convert {}", source, charset));
        }
    }
    ~Converter() { ::iconv_close(converter_); }
    Converter(const Converter&) = delete;
    Converter& operator=(const Converter&) = delete;

    void Take(std::string_view block, PlainFile& target)
    {
        rest_ += block;
        char* next = rest_.data();
        std::size_t size = rest_.size();
        std::string out(4 * rest_.size() + 16, '\0');
        char* outNext = out.data();
        std::size_t room = out.size();
        const std::size_t result = ::iconv(converter_, &next, &size, &outNext, &room);
        if (result == static_cast<std::size_t>(-1) && errno != EINVAL) {
            throw Failure(fmt::format("{}: the text is damaged: it is no UTF-16 near byte {}",
                                      source_, taken_ + rest_.size() - size));
        }
        target.Write(std::string_view(out).substr(0, out.size() - room));
        taken_ += rest_.size() - size;
        rest_.erase(0, rest_.size() - size);
    }

    void Finish() const
    {
        if (!rest_.empty()) {
            throw Failure(fmt::format("{}: the text ends within a letter", source_));
        }
    }

private:
    std::string source_;
    iconv_t converter_;
    std::string rest_; ///< the beginning of a letter
    std::uint64_t taken_ = 0;
};

std::string FromUtf16(const std::string& path, const std::string& given, Mark mark,
                      ScratchFolder& scratch)
{
    std::string plain = NextPath(scratch, "utf8-");
    PlainFile target(plain);
    Converter converter(given, mark == Mark::Utf16Little ? "UTF-16LE" : "UTF-16BE");
    std::size_t skip = 2;
    ForBlocks(path, [&](std::string_view block) {
        converter.Take(block.substr(std::min(skip, block.size())), target);
        skip = 0;
    });
    converter.Finish();
    target.Close();
    return plain;
}

/// Latin-1 becomes UTF-8, and a carriage return a line feed, where asked for. So
/// many bytes at the start are left out.
std::string Rewritten(const std::string& path, std::size_t skip, bool isLatin1, bool hasReturns,
                      ScratchFolder& scratch)
{
    std::string plain = NextPath(scratch, "plain-");
    PlainFile target(plain);
    std::string text;
    ForBlocks(path, [&](std::string_view block) {
        text.clear();
        const std::size_t left = std::min(skip, block.size());
        block.remove_prefix(left);
        skip -= left;
        for (const char c : block) {
            const auto byte = static_cast<unsigned char>(c);
            if (isLatin1 && byte >= 0x80U) {
                text += static_cast<char>(0xC0U | (byte >> 6U));
                text += static_cast<char>(0x80U | (byte & 0x3FU));
            } else {
                text += hasReturns && c == '\r' ? '\n' : c;
            }
        }
        target.Write(text);
    });
    target.Close();
    return plain;
}

} // namespace

std::string PlainTextOf(const std::string& path, ScratchFolder& scratch, Copy& copy)
{
    std::string plain = path;
    if (PackingOf(path) != Packing::None) {
        plain = NextPath(scratch, "unpacked-");
        Unpack(path, plain);
        copy.Change("unpacked", 0);
    }
    const Mark mark = MarkOf(plain);
    if (mark == Mark::Utf16Little || mark == Mark::Utf16Big) {
        const std::string source = plain;
        plain = FromUtf16(source, path, mark, scratch);
        RemovePlain(source, path);
        copy.Change("utf16", 0);
    }
    const Survey survey = SurveyOf(plain);
    if (survey.nuls > 0 && !survey.isUtf8) {
        throw Failure(fmt::format("{}: expected text, but it holds other data", path));
    }
    const bool hasReturns = survey.feeds == 0 && survey.loneReturns > 0;
    copy.Change("byte_order_mark", 1, mark == Mark::Utf8 ? 1 : 0);
    copy.Change("line_ends", 1, survey.returns);
    copy.Change("lone_carriage_return", 1, hasReturns ? survey.loneReturns : 0);
    copy.Change("latin1", survey.firstHighLine, survey.isUtf8 ? 0 : survey.highLines);
    // of several marks FileLines drops one
    if (!survey.isUtf8 || hasReturns || survey.marks > 1) {
        const std::string source = plain;
        plain = Rewritten(source, kMark.size() * survey.marks, !survey.isUtf8, hasReturns, scratch);
        RemovePlain(source, path);
    }
    return plain;
}

void RemovePlain(const std::string& plain, const std::string& path)
{
    if (plain != path) {
        std::remove(plain.c_str());
    }
}

} // namespace pelgrin
