#include "inspect/Facts.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Terminal.h"

namespace pelgrin {

namespace {

constexpr std::size_t kLabel = 16; ///< the longest label and two blanks
constexpr std::size_t kLongestText = 200;

/// The lines of a value, without its label.
struct LinesOfValue {
    std::vector<std::string> operator()(bool value) const { return {value ? "yes" : "no"}; }
    std::vector<std::string> operator()(std::uint64_t value) const
    {
        return {std::to_string(value)};
    }
    std::vector<std::string> operator()(const std::string& value) const { return {value}; }
    std::vector<std::string> operator()(const std::vector<std::string>& values) const
    {
        return values;
    }
    std::vector<std::string> operator()(const std::vector<Counted>& counts) const;
    std::vector<std::string> operator()(const std::vector<Facts>& objects) const;
};

std::vector<std::string> LinesOfValue::operator()(const std::vector<Counted>& counts) const
{
    std::size_t width = 0;
    for (const Counted& counted : counts) {
        width = std::max(width, std::to_string(counted.count).size());
    }
    std::vector<std::string> lines;
    for (const Counted& counted : counts) {
        lines.push_back(fmt::format("{:>{}}  {}", counted.count, width, counted.text));
        if (counted.line && *counted.line != 0) {
            lines.back() += fmt::format(" (line {})", *counted.line);
        }
    }
    return lines;
}

/// The facts of an object stand in one line, but lists below it.
std::vector<std::string> LinesOfValue::operator()(const std::vector<Facts>& objects) const
{
    std::vector<std::string> lines;
    for (const Facts& facts : objects) {
        std::string first;
        std::vector<std::string> below;
        for (const Fact& fact : facts) {
            const std::vector<std::string> values = std::visit(*this, fact.value);
            if (fact.label.empty() || values.empty()) {
                continue;
            }
            if (fact.value.index() <= 2) {
                first += (first.empty() ? "" : ", ") + fact.label + " " + values.front();
            } else {
                for (const std::string& value : values) {
                    below.push_back("  " + fact.label + " " + value);
                }
            }
        }
        lines.push_back(first);
        lines.insert(lines.end(), below.begin(), below.end());
    }
    return lines;
}

nlohmann::ordered_json JsonOfCounts(const std::vector<Counted>& counts)
{
    auto json = nlohmann::ordered_json::object();
    for (const Counted& counted : counts) {
        if (counted.line) {
            json[counted.key] = {{"count", counted.count}, {"first_line", *counted.line}};
        } else {
            json[counted.key] = counted.count;
        }
    }
    return json;
}

struct JsonOfValue {
    template <typename Value>
    nlohmann::ordered_json operator()(const Value& value) const
    {
        return value;
    }
    nlohmann::ordered_json operator()(const std::vector<Counted>& counts) const
    {
        return JsonOfCounts(counts);
    }
    nlohmann::ordered_json operator()(const std::vector<Facts>& objects) const
    {
        auto json = nlohmann::ordered_json::array();
        for (const Facts& facts : objects) {
            json.push_back(JsonOf(facts));
        }
        return json;
    }
};

} // namespace

std::string TextOf(const Facts& facts)
{
    std::string text;
    for (const Fact& fact : facts) {
        if (fact.label.empty()) {
            continue;
        }
        std::string label = fact.label;
        for (std::string line : std::visit(LinesOfValue(), fact.value)) {
            if (line.size() > kLongestText) {
                line.replace(kLongestText, std::string::npos, "...");
            }
            std::string whole = OneLine(fmt::format("  {:<{}}{}", label, kLabel, line));
            whole.erase(whole.find_last_not_of(' ') + 1);
            text += whole + "\n";
            label.clear();
        }
    }
    return text;
}

nlohmann::ordered_json JsonOf(const Facts& facts)
{
    auto json = nlohmann::ordered_json::object();
    for (const Fact& fact : facts) {
        if (!fact.key.empty()) {
            json[fact.key] = std::visit(JsonOfValue(), fact.value);
        }
    }
    return json;
}

void Tally::Add(const std::string& text)
{
    ++total_;
    auto place = places_.find(text);
    if (place == places_.end()) {
        const std::string kept = counts_.size() < kMost ? text : "others";
        place = places_.find(kept);
        if (place == places_.end()) {
            place = places_.emplace(kept, counts_.size()).first;
            counts_.push_back({kept, kept, 0, std::nullopt});
        }
    }
    ++counts_[place->second].count;
}

std::string ShareText(std::uint64_t part, std::uint64_t whole)
{
    if (part == 0 || whole == 0) {
        return "0 %";
    }
    return fmt::format("{:.1f} %", 100.0 * static_cast<double>(part) / static_cast<double>(whole));
}

} // namespace pelgrin
