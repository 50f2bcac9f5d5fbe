// The tags of an XML file, one after the other, in memory of fixed size.
//
// Good for counting and for a look at attributes, not for understanding: a tag
// ends where the library lets it end (docs/formats/pepxml.md), at the first
// ">", or the next one when a "-" stands before it.
#ifndef PELGRIN_XMLTAGS_H
#define PELGRIN_XMLTAGS_H

#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace pelgrin {

class XmlTags {
public:
    /// Throws Failure when the file cannot be opened.
    explicit XmlTags(const std::string& path);

    /// The next tag. Throws Failure for a read error.
    bool Next();

    /// The tag behind its "<", at most 64 KiB of it; behind the end of the file what
    /// there is of a tag that does not end.
    std::string_view Text() const { return tag_; }
    /// "search_hit" of "<search_hit ...>", "/search_hit" of "</search_hit>".
    std::string_view Name() const;
    /// The value of an attribute as it is written, in double quotes; empty when
    /// it is not there.
    std::string_view Attribute(std::string_view name) const;
    /// The line at which the tag begins, from 1.
    std::uint64_t Line() const { return line_; }
    /// The place of its "<" in the file, and of the first byte behind it.
    std::uint64_t Offset() const { return offset_; }
    std::uint64_t End() const { return blockOffset_ + begin_; }

private:
    bool Refill();
    /// Appends the text up to and with the next ">" to the tag.
    bool AppendToEnd();

    std::string path_;
    std::ifstream file_;
    std::vector<char> block_;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    std::uint64_t blockOffset_ = 0; ///< of the block in the file
    std::uint64_t offset_ = 0;
    std::uint64_t line_ = 1;
    std::uint64_t linesInTag_ = 0;
    std::string tag_; ///< behind its "<"; at most kLongestTag of it
};

} // namespace pelgrin

#endif // PELGRIN_XMLTAGS_H
