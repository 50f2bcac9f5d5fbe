// The bounded line reader behind every text format.
#ifndef VORLAN_UTIL_LINEREADER_H
#define VORLAN_UTIL_LINEREADER_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

#include "platform/InputFile.h"

namespace Vorlan {

/// Reads a file in large blocks and hands out its lines as views.
///
/// - A line ends before its line feed or at the end of the file. It holds at
///   most kMaxLineLength characters; a longer line yields its first
///   kMaxLineLength ones and ends the reading, until Seek.
/// - The text of a line ends at its first NUL, as in a C string.
///   (NextOfAnyLength knows neither of the two limits.)
/// - In text mode one carriage return before a line feed is dropped and does
///   not count towards the limit, and a UTF-8 byte order mark at the start of
///   the file is dropped. In binary mode every byte stands.
///
/// A view is good until the next call of a non-const member.
class LineReader {
public:
    enum class Mode { Text, Binary };

    static constexpr std::size_t kMaxLineLength = 81919;

    LineReader();
    ~LineReader();

    /// Opens path and stands at its start. False, and Failed, when that is not
    /// possible. An open reader stays on its file and fails, as a stream does.
    bool Open(const std::string& path, Mode mode);
    void Close();
    bool IsOpen() const;
    /// Bytes of the open file, as the system tells them.
    std::uint64_t Size() const { return file_.Size(); }

    /// Nothing can be read: not open, the end was passed, or a line was too
    /// long. Seek on an open reader makes it good again.
    bool Failed() const;

    /// The next line; false when there is none.
    bool Next(std::string_view& line);

    /// The next line; false when there is none or it is too long.
    bool NextWhole(std::string_view& line);

    /// The next line whatever its length, with the NULs in it; false, and an
    /// empty line, when there is none.
    bool NextOfAnyLength(std::string& line);

    /// The next line that begins with first, which is not NUL; false when there
    /// is none up to the end of the file or the first line that is too long.
    /// Quicker than a loop over NextWhole, with the same outcome. Binary mode
    /// only.
    bool NextBeginningWith(char first, std::string_view& line);

    /// The bytes behind the line given last that are in memory, up to an edge
    /// anywhere in a line; empty after a failure. For callers who can tell lines
    /// apart more quickly, and who then Skip those that they took: whole lines only.
    std::string_view Ahead() const;
    void Skip(std::size_t size) { begin_ += size; }

    /// Byte offset in the file at which the next line begins.
    std::uint64_t Offset() const;

    /// Goes to a byte offset, past the end included. Offset 0 is in front of a
    /// byte order mark.
    void Seek(std::uint64_t offset);

private:
    bool Refill();
    bool FindLine(std::size_t& length, bool& hasFeed);
    std::string_view Text(const char* begin, std::size_t length) const;

    platform::InputFile file_;
    Mode mode_ = Mode::Text;
    bool failed_ = true;
    bool tooLong_ = false;           ///< the line given last was cut
    std::unique_ptr<char[]> buffer_; ///< allocated by Open
    std::size_t begin_ = 0;          ///< unread bytes are [begin_, end_)
    std::size_t end_ = 0;
    std::uint64_t bufferOffset_ = 0; ///< file offset of buffer_[0]
    std::size_t readSize_ = 0;       ///< size of the next read
    bool atEnd_ = false;             ///< the last read met the end of the file
    bool hasNul_ = false;            ///< buffer_ may hold a NUL
};

/// The first character of a line, NUL for an empty one.
inline char FirstOf(std::string_view line)
{
    return line.empty() ? '\0' : line.front();
}

} // namespace Vorlan

#endif // VORLAN_UTIL_LINEREADER_H
