// How the attributes of a tag are read.
#ifndef VORLAN_UTIL_XMLATTRIBUTETEXT_H
#define VORLAN_UTIL_XMLATTRIBUTETEXT_H

#include <string_view>

namespace Vorlan {

/// text without the blanks, tabs, line feeds and carriage returns at both ends.
inline std::string_view XmlTrimmed(std::string_view text)
{
    const auto isBlank = [](char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; };
    while (!text.empty() && isBlank(text.front())) {
        text.remove_prefix(1);
    }
    while (!text.empty() && isBlank(text.back())) {
        text.remove_suffix(1);
    }
    return text;
}

/// Gives the attributes of a text one by one, as views into it:
///
///     XmlAttributeText attributes(text);
///     while (attributes.Next()) { attributes.Name() ... attributes.Value() }
///
/// A name is what stands before the next "=", blanks trimmed; a value is what
/// stands between the next two double quotes.
class XmlAttributeText {
public:
    explicit XmlAttributeText(std::string_view text) : rest_(XmlTrimmed(text)) {}

    bool Next();
    std::string_view Name() const { return name_; }
    std::string_view Value() const { return value_; }

private:
    std::string_view rest_;
    std::string_view name_;
    std::string_view value_;
};

} // namespace Vorlan

#endif // VORLAN_UTIL_XMLATTRIBUTETEXT_H
