#include "parameters/ParameterText.h"

#include <OpenMS/DATASTRUCTURES/String.h>
#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/FileLines.h"
#include "files/Packed.h"

namespace pelgrin {

namespace {

std::string TrimmedByOpenMS(const std::string& text)
{
    OpenMS::String trimmed = text;
    return trimmed.trim();
}

} // namespace

ParameterText::ParameterText(std::string path) : path_(std::move(path))
{
    CheckReadable(path_);
    RefusePacked(path_);
    FileLines lines(path_, FileLines::Mode::Text);
    FileLines::Line line;
    while (longLine_ == 0 && lines.Next(line)) {
        if (line.length > kLongestLine) {
            longLine_ = line.number;
        }
        Take(line.begin, line.number);
    }
}

void ParameterText::Take(const std::string& line, std::uint64_t number)
{
    const std::string text = TrimmedByOpenMS(line.substr(0, line.find('#')));
    if (text.empty()) {
        return;
    }
    if (text.size() > 1 && text.front() == '[' && text.back() == ']') {
        headers_.push_back({TrimmedByOpenMS(text.substr(1, text.size() - 2)), number});
        return;
    }
    const std::size_t equals = text.find('=');
    const auto refuse = [&](const char* expected) {
        throw Failure(
            fmt::format("{}:{}: \"{}\": expected {}", path_, number, Clip(text, 200), expected));
    };
    if (equals == std::string::npos) {
        refuse("a pair \"key = value\" or a header \"[section]\"");
    }
    if (text.find('=', equals + 1) != std::string::npos) {
        refuse("only one \"=\"; a value cannot hold another");
    }
    if (headers_.empty()) {
        refuse("a header \"[section]\" before the first pair");
    }
    const Entry entry{headers_.back().section, TrimmedByOpenMS(text.substr(0, equals)),
                      TrimmedByOpenMS(text.substr(equals + 1)), number};
    last_[{entry.section, entry.key}] = entries_.size();
    entries_.push_back(entry);
}

const ParameterText::Entry* ParameterText::Find(const std::string& section,
                                                const std::string& key) const
{
    const auto place = last_.find({section, key});
    return place == last_.end() ? nullptr : &entries_[place->second];
}

std::string ParameterText::ValueOf(const std::string& section, const std::string& key) const
{
    const Entry* const entry = Find(section, key);
    return entry == nullptr ? std::string() : entry->value;
}

std::uint64_t ParameterText::LineOfSection(const std::string& section) const
{
    for (const Header& header : headers_) {
        if (header.section == section) {
            return header.line;
        }
    }
    return 0;
}

std::string ParameterText::PlaceOf(const std::string& section, const std::string& key) const
{
    const Entry* const entry = Find(section, key);
    const std::uint64_t line = entry != nullptr ? entry->line : LineOfSection(section);
    return line == 0 ? fmt::format("{}: {}", path_, key)
                     : fmt::format("{}:{}: {}", path_, line, key);
}

} // namespace pelgrin
