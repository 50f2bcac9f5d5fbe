// What of the markup of an XML file the library understands otherwise.
#ifndef PELGRIN_XMLLINT_H
#define PELGRIN_XMLLINT_H

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "files/XmlTags.h"
#include "lint/Findings.h"

namespace pelgrin {

/// Follows the tags of a file from the first one on, with the names of the open
/// elements. Behind the first fault that moves the ends of elements it is silent.
class XmlLint {
public:
    explicit XmlLint(Findings& findings) : findings_(findings) {}

    void Take(const XmlTags& tags);
    /// tags are at their end.
    void Finish(const XmlTags& tags);

private:
    struct Open {
        std::string name;
        std::uint64_t line;
    };

    void TakeDeclaration(std::string_view text);
    void TakeStart(std::string_view text);
    void TakeEnd(std::string_view text);
    void Add(Rule rule, std::string what) { findings_.Add(rule, line_, std::move(what)); }
    void Lose(Rule rule, std::string what);

    Findings& findings_;
    std::uint64_t line_ = 0;
    bool isLost_ = false; ///< where elements end is not known any more
    std::vector<Open> open_;
    std::size_t openLength_ = 0; ///< of their names
};

/// An attribute of the tag is in single quotes.
bool HasSingleQuotes(std::string_view tag);

} // namespace pelgrin

#endif // PELGRIN_XMLLINT_H
