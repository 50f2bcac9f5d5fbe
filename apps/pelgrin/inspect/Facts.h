// What is told of a file, for people and for programs: names and values in an order.
#ifndef PELGRIN_FACTS_H
#define PELGRIN_FACTS_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

#include <nlohmann/json.hpp>

namespace pelgrin {

/// How often something was seen.
struct Counted {
    std::string key;  ///< in JSON
    std::string text; ///< of the report
    std::uint64_t count = 0;
    std::optional<std::uint64_t> line; ///< where it was seen first, from 1
};

struct Fact;
using Facts = std::vector<Fact>;

struct Fact {
    using Value = std::variant<bool, std::uint64_t, std::string, std::vector<std::string>,
                               std::vector<Counted>, std::vector<Facts>>;

    std::string key;   ///< in JSON; empty: it stands in the report only
    std::string label; ///< of the report; empty: it stands in JSON only
    Value value;
};

/// A line for each value, the labels in a column. Lists without entries are left
/// out. Control characters become "?".
std::string TextOf(const Facts& facts);
/// An object with every fact that has a key.
nlohmann::ordered_json JsonOf(const Facts& facts);

/// Counts texts of a file in the order in which they are seen first, in memory of
/// fixed size: behind the first kMost different ones all are "others".
class Tally {
public:
    static constexpr std::size_t kMost = 40;

    void Add(const std::string& text);
    std::uint64_t Total() const { return total_; }
    /// The texts are keys and words.
    const std::vector<Counted>& Counts() const { return counts_; }

private:
    std::map<std::string, std::size_t> places_;
    std::vector<Counted> counts_;
    std::uint64_t total_ = 0;
};

/// "12.5 %"; "0 %" of nothing.
std::string ShareText(std::uint64_t part, std::uint64_t whole);

} // namespace pelgrin

#endif // PELGRIN_FACTS_H
