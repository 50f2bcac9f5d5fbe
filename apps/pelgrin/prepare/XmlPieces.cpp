#include "prepare/XmlPieces.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr std::size_t kLongestTag = std::size_t{1024} * 1024;
constexpr std::string_view kSpace = " \t\r\n";

void SkipSpace(std::string_view& text)
{
    text.remove_prefix(std::min(text.find_first_not_of(kSpace), text.size()));
}

} // namespace

XmlPieces::XmlPieces(const std::string& source, std::string path)
    : path_(std::move(path)), file_(source, std::ios::binary), block_(kBlock)
{
    if (!file_) {
        throw Failure(fmt::format("{}: cannot be opened: {}", path_, std::strerror(errno)));
    }
}

bool XmlPieces::Next()
{
    char c = '\0';
    do {
        if (!Get(c)) {
            return false;
        }
    } while (c != '<');
    begin_ = line_;
    if (!ReadTag()) {
        isCutOff_ = true;
        return false;
    }
    if (kind_ != Kind::Other) {
        Parse();
    }
    return true;
}

bool XmlPieces::Get(char& c)
{
    if (next_ == size_) {
        file_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
        if (file_.bad()) {
            throw Failure(fmt::format("{}: cannot be read to its end", path_));
        }
        next_ = 0;
        size_ = static_cast<std::size_t>(file_.gcount());
        if (size_ == 0) {
            return false;
        }
    }
    c = block_[next_++];
    line_ += c == '\n' ? 1 : 0;
    return true;
}

/// Reads on behind first until end was read; what is read is not kept.
bool XmlPieces::ReadTo(std::string_view end, char first)
{
    std::string last(1, first);
    for (char c = '\0'; last != end; last += c) {
        if (!Get(c)) {
            return false;
        }
        if (last.size() == end.size()) {
            last.erase(0, 1);
        }
    }
    return true;
}

/// Behind "<".
bool XmlPieces::ReadTag()
{
    text_.clear();
    char quote = '\0';
    std::size_t brackets = 0; // of a DOCTYPE
    for (char c = '\0'; Get(c); text_ += c) {
        if (text_ == "!--" || text_ == "![CDATA[" || text_ == "?") {
            kind_ = Kind::Other;
            const std::string_view end = text_ == "?" ? "?>" : text_ == "!--" ? "-->" : "]]>";
            return ReadTo(end, c);
        }
        if (quote != '\0') {
            quote = c == quote ? '\0' : quote;
        } else if (c == '"' || c == '\'') {
            quote = c;
        } else if (c == '[' && text_.front() == '!') {
            ++brackets;
        } else if (c == ']' && brackets > 0) {
            --brackets;
        } else if (c == '>' && brackets == 0) {
            kind_ = !text_.empty() && text_.front() == '!' ? Kind::Other : Kind::Open;
            return true;
        }
        if (text_.size() >= kLongestTag) {
            Refuse("a tag of more than 1048576 characters; is a quote missing?");
        }
    }
    return false;
}

void XmlPieces::Parse()
{
    std::string_view text = text_;
    attributes_.clear();
    kind_ = Kind::Open;
    if (!text.empty() && text.front() == '/') {
        kind_ = Kind::Close;
        text.remove_prefix(1);
    } else if (!text.empty() && text.back() == '/') {
        kind_ = Kind::Empty;
        text.remove_suffix(1);
    }
    const std::size_t end = std::min(text.find_first_of(kSpace), text.size());
    name_ = text.substr(0, end);
    text.remove_prefix(end);
    if (name_.empty()) {
        Refuse("a tag without a name");
    }
    CheckName(name_);
    for (SkipSpace(text); !text.empty(); SkipSpace(text)) {
        const std::size_t equals = text.find('=');
        const std::size_t open =
            equals == std::string_view::npos ? equals : text.find_first_not_of(kSpace, equals + 1);
        if (open == std::string_view::npos || (text[open] != '"' && text[open] != '\'')) {
            Refuse("an attribute without a value in quotes");
        }
        const std::size_t close = text.find(text[open], open + 1);
        if (close == std::string_view::npos) {
            Refuse("an attribute without a second quote");
        }
        XmlAttribute attribute;
        attribute.name = text.substr(0, std::min(text.find_first_of(" \t\r\n="), equals));
        CheckName(attribute.name);
        attribute.value = text.substr(open + 1, close - open - 1);
        attribute.quote = text[open];
        attributes_.push_back(std::move(attribute));
        text.remove_prefix(close + 1);
    }
}

/// A quote in a name would be that of a value in a copy.
void XmlPieces::CheckName(std::string_view name) const
{
    if (name.find_first_of("\"'") != std::string_view::npos) {
        Refuse("a name with a quote");
    }
}

void XmlPieces::Refuse(const char* what) const
{
    throw Failure(fmt::format("{}:{}: expected XML, found {}", path_, begin_, what));
}

} // namespace pelgrin
