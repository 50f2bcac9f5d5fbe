// A plain walk over the lines of a file, for the host's own look at its inputs.
#ifndef PELGRIN_FILELINES_H
#define PELGRIN_FILELINES_H

#include <cstdint>
#include <fstream>
#include <string>
#include <vector>

namespace pelgrin {

/// The longest line that the library reads whole.
constexpr std::uint64_t kLongestLine = 81919;

/// The longest header line that the host looks at; the library has no limit.
constexpr std::uint64_t kLongestHeader = std::uint64_t{4} * 1024 * 1024;

/// Gives every line of a file, however long, in memory of fixed size, unless it is
/// asked for a whole one.
class FileLines {
public:
    /// Text drops a byte order mark at the start of the file and the carriage
    /// return before a line feed, as the library does.
    enum class Mode { Text, Binary };

    struct Line {
        std::uint64_t number = 0; ///< from 1
        std::uint64_t length = 0; ///< in bytes
        std::uint64_t offset = 0; ///< of its first byte in the file
        std::uint64_t end = 0;    ///< of the first byte behind it and its line feed
        std::string begin;        ///< its text up to the first NUL, at most kLongestLine bytes
        bool isPadding = true;    ///< nothing but NULs, blanks, tabs and carriage returns
    };

    /// How much of a line is given; Whole: all of its bytes, at most kLongestHeader, as
    /// the library reads the header line of most tables.
    enum class Part { Begin, Whole };

    /// Throws Failure when the file cannot be opened.
    FileLines(const std::string& path, Mode mode);

    /// The next line; false at the end. Throws Failure for a read error.
    bool Next(Line& line, Part part = Part::Begin);

private:
    bool Refill();
    void Append(Line& line, const char* bytes, std::size_t size, Part part);

    std::string path_;
    Mode mode_;
    std::ifstream file_;
    std::vector<char> block_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t number_ = 0;
    std::uint64_t offset_ = 0; ///< of the byte at begin_
    char last_ = '\0';         ///< last byte of the line so far
};

/// The text of a line that is not too long ends before the line does, at a NUL.
bool HasNul(const FileLines::Line& line);

/// The path that the library opens for a text with backslashes, "a\\b.mgf": as
/// it stands when there is such an entry, else with every backslash as "/", or
/// with only the last one when that exists.
std::string ResolvedPath(const std::string& path);

/// Throws Failure unless path is an ordinary file that can be read, and one
/// that the library can reach: it takes a backslash as a separator.
void CheckReadable(const std::string& path);

} // namespace pelgrin

#endif // PELGRIN_FILELINES_H
