// The tags of an XML document as XML has them: quotes may hold ">".
//
// Unlike XmlTags, which ends a tag where the library does.
#ifndef PELGRIN_XMLPIECES_H
#define PELGRIN_XMLPIECES_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <string>
#include <string_view>
#include <vector>

namespace pelgrin {

struct XmlAttribute {
    std::string name;
    std::string value; ///< as written, without its quotes
    char quote = '"';
};

class XmlPieces {
public:
    enum class Kind { Open, Empty, Close, Other }; ///< Other: comment, instruction, CDATA, DOCTYPE

    /// source is the plain text of the file that the user knows as path. Throws
    /// Failure when it cannot be opened.
    XmlPieces(const std::string& source, std::string path);

    /// The next tag; false at the end, also within a tag: then IsCutOff. Throws
    /// Failure, with file and line, for a read error and for what is no tag.
    bool Next();

    Kind PieceKind() const { return kind_; }
    const std::string& Name() const { return name_; }
    const std::vector<XmlAttribute>& Attributes() const { return attributes_; }
    std::uint64_t Line() const { return begin_; }
    bool IsCutOff() const { return isCutOff_; }

private:
    bool Get(char& c);
    bool ReadTo(std::string_view end, char first);
    bool ReadTag();
    void Parse();
    void CheckName(std::string_view name) const;
    [[noreturn]] void Refuse(const char* what) const;

    std::string path_;
    std::ifstream file_;
    std::vector<char> block_;
    std::size_t next_ = 0;
    std::size_t size_ = 0;
    std::uint64_t line_ = 1;
    std::uint64_t begin_ = 1; ///< line at which the piece begins
    std::string text_;        ///< of the tag, behind "<"
    Kind kind_ = Kind::Other;
    std::string name_;
    std::vector<XmlAttribute> attributes_;
    bool isCutOff_ = false;
};

} // namespace pelgrin

#endif // PELGRIN_XMLPIECES_H
