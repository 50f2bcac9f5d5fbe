#include "util/LineReader.h"

#include <algorithm>
#include <cstring>

namespace Vorlan {

namespace {

constexpr std::size_t kBufferSize = std::size_t{256} * 1024;

// A seek is mostly followed by one record, a scan by the whole file: reading
// starts with a small block and doubles it from one to the next.
constexpr std::size_t kFirstReadSize = std::size_t{8} * 1024;

// With so many bytes and no line feed among them, a line is too long: the
// longest one, a carriage return and the line feed.
constexpr std::size_t kDecisiveLength = LineReader::kMaxLineLength + 2;

static_assert(kBufferSize >= 2 * kDecisiveLength, "a line must fit beside a block");

/// The length of the whole lines at the front of text before the first one that
/// begins with first. Looks for that character alone, which is far quicker than
/// a walk from line feed to line feed.
std::size_t LengthOfOtherLines(std::string_view text, char first)
{
    for (std::size_t hit = text.find(first); hit != std::string_view::npos;
         hit = text.find(first, hit + 1)) {
        if (hit == 0 || text[hit - 1] == '\n') {
            return hit;
        }
    }
    const std::size_t lastFeed = text.rfind('\n');
    return lastFeed == std::string_view::npos ? 0 : lastFeed + 1;
}

} // namespace

LineReader::LineReader() = default;
LineReader::~LineReader() = default;

bool LineReader::Open(const std::string& path, Mode mode)
{
    failed_ = true;
    if (file_.IsOpen()) {
        return false;
    }
    if (!buffer_) {                           // before the file, which would stay open without one
        buffer_.reset(new char[kBufferSize]); // not filled with zeros first
    }
    if (!file_.Open(path)) {
        return false;
    }
    mode_ = mode;
    begin_ = end_ = 0;
    bufferOffset_ = 0;
    readSize_ = kFirstReadSize;
    hasNul_ = false;
    atEnd_ = false;
    failed_ = false;
    tooLong_ = false;
    if (mode == Mode::Text && Refill() && end_ >= 3
        && std::memcmp(buffer_.get(), "\xEF\xBB\xBF", 3) == 0) {
        begin_ = 3;
    }
    return true;
}

void LineReader::Close()
{
    file_.Close();
    failed_ = true;
}

bool LineReader::IsOpen() const
{
    return file_.IsOpen();
}

bool LineReader::Failed() const
{
    return failed_;
}

bool LineReader::Next(std::string_view& line)
{
    std::size_t length = 0;
    bool hasFeed = false;
    if (failed_ || !FindLine(length, hasFeed)) {
        failed_ = true;
        return false;
    }
    const char* const begin = buffer_.get() + begin_;
    begin_ += length + (hasFeed ? 1 : 0);
    if (mode_ == Mode::Text && hasFeed && length > 0 && begin[length - 1] == '\r') {
        --length;
    }
    tooLong_ = length > kMaxLineLength;
    if (tooLong_) {
        failed_ = true;
        length = kMaxLineLength;
    }
    line = Text(begin, length);
    return true;
}

bool LineReader::NextWhole(std::string_view& line)
{
    return Next(line) && !tooLong_;
}

bool LineReader::NextOfAnyLength(std::string& line)
{
    line.clear();
    std::size_t length = 0;
    bool hasFeed = false;
    while (!failed_ && !hasFeed && FindLine(length, hasFeed)) {
        line.append(buffer_.get() + begin_, length);
        begin_ += length + (hasFeed ? 1 : 0);
    }
    if (!hasFeed && line.empty()) {
        failed_ = true;
        return false;
    }
    if (mode_ == Mode::Text && hasFeed && !line.empty() && line.back() == '\r') {
        line.pop_back();
    }
    return true;
}

bool LineReader::NextBeginningWith(char first, std::string_view& line)
{
    while (!failed_) {
        // A jump over lines inside the buffer. None of them can be too long,
        // since all of them together are not.
        const std::size_t size = std::min(end_ - begin_, kMaxLineLength);
        begin_ += LengthOfOtherLines({buffer_.get() + begin_, size}, first);
        // One line the careful way: it begins with first, or meets the edge
        // of the buffer, or is too long.
        if (NextWhole(line) && FirstOf(line) == first) {
            return true;
        }
    }
    return false;
}

std::string_view LineReader::Ahead() const
{
    return failed_ ? std::string_view() : std::string_view(buffer_.get() + begin_, end_ - begin_);
}

std::uint64_t LineReader::Offset() const
{
    return bufferOffset_ + begin_;
}

void LineReader::Seek(std::uint64_t offset)
{
    failed_ = !file_.IsOpen();
    tooLong_ = false;
    atEnd_ = false;
    if (offset >= bufferOffset_ && offset - bufferOffset_ <= end_) {
        begin_ = static_cast<std::size_t>(offset - bufferOffset_);
        return;
    }
    bufferOffset_ = offset;
    begin_ = end_ = 0;
    readSize_ = kFirstReadSize;
    hasNul_ = false;
}

/// Moves the unread bytes to the front and reads on behind them; false when
/// the file gave none.
bool LineReader::Refill()
{
    if (atEnd_) {
        return false;
    }
    const std::size_t unread = end_ - begin_;
    std::memmove(buffer_.get(), buffer_.get() + begin_, unread);
    bufferOffset_ += begin_;
    begin_ = 0;
    end_ = unread;
    const std::size_t wanted = std::min(readSize_, kBufferSize - end_);
    const std::size_t got = file_.ReadAt(bufferOffset_ + end_, buffer_.get() + end_, wanted);
    atEnd_ = got < wanted;
    readSize_ = std::min(2 * readSize_, kBufferSize);
    hasNul_ = (hasNul_ && unread > 0) || std::memchr(buffer_.get() + end_, '\0', got) != nullptr;
    end_ += got;
    return got > 0;
}

/// The length of the line at begin_, without its line feed. Stops looking at
/// kDecisiveLength, with hasFeed false. False at the end of the file.
bool LineReader::FindLine(std::size_t& length, bool& hasFeed)
{
    std::size_t scanned = 0;
    for (;;) {
        const std::size_t unread = std::min(end_ - begin_, kDecisiveLength);
        const char* const begin = buffer_.get() + begin_;
        const void* const feed = std::memchr(begin + scanned, '\n', unread - scanned);
        if (feed != nullptr) {
            length = static_cast<std::size_t>(static_cast<const char*>(feed) - begin);
            hasFeed = true;
            return true;
        }
        scanned = unread;
        if (scanned == kDecisiveLength || !Refill()) {
            length = scanned;
            hasFeed = false;
            return scanned > 0;
        }
    }
}

std::string_view LineReader::Text(const char* begin, std::size_t length) const
{
    if (hasNul_) {
        const void* const nul = std::memchr(begin, '\0', length);
        if (nul != nullptr) {
            length = static_cast<std::size_t>(static_cast<const char*>(nul) - begin);
        }
    }
    return {begin, length};
}

} // namespace Vorlan
