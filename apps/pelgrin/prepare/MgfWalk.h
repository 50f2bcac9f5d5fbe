// The lines of an MGF file by what they are, one after the other.
#ifndef PELGRIN_MGFWALK_H
#define PELGRIN_MGFWALK_H

#include <cstdint>
#include <string>
#include <string_view>

#include "files/FileLines.h"

namespace pelgrin {

enum class MgfPart {
    Begin,      ///< BEGIN IONS
    End,        ///< END IONS
    EndMissing, ///< before a line that begins a record within one, and before the end
    Header,     ///< KEY=value before the peaks of a record
    Peak,       ///< m/z, intensity and perhaps more
    FileHeader, ///< KEY=value before the first record
    Outside,    ///< anything else outside of records
    Blank,      ///< these within a record
    Comment,
    NoHeader, ///< before the peaks
    NoPeak,   ///< behind the first peak; one number alone, or one that is not finite
    Comma,    ///< a line of numbers with a comma
    LongLine, ///< of more than kLongestLine characters
    Nul,      ///< a line with a NUL byte that is no header; padding is blank
};

class MgfWalk {
public:
    /// Throws Failure when the file cannot be opened.
    explicit MgfWalk(const std::string& path) : lines_(path, FileLines::Mode::Text) {}

    /// The next part; false at the end. Throws Failure for a read error.
    bool Next();

    MgfPart Part() const { return part_; }
    std::uint64_t Line() const { return line_.number; }
    /// The line without the blanks in front of it.
    std::string_view Text() const { return text_; }
    /// What stands behind the first NUL is not part of the text, nor of the value.
    bool IsCut() const { return HasNul(line_); }
    bool HasLeadingBlank() const { return text_.data() != line_.begin.data(); }
    /// Of a header: its key in capital letters, and its value without blanks around.
    const std::string& Key() const { return key_; }
    std::string_view Value() const { return value_; }

private:
    MgfPart PartOfLine();
    MgfPart PartInRecord();
    MgfPart PartOfNumbers();
    bool TakeHeader();

    FileLines lines_;
    FileLines::Line line_;
    std::string_view text_;
    std::string key_;
    std::string_view value_;
    MgfPart part_ = MgfPart::Outside;
    bool isPending_ = false; ///< the line is one that begins a record
    bool isAtEnd_ = false;
    bool isInRecord_ = false;
    bool hasPeaks_ = false;
    bool hasRecords_ = false;
};

} // namespace pelgrin

#endif // PELGRIN_MGFWALK_H
