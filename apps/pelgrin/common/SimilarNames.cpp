#include "common/SimilarNames.h"

#include <algorithm>
#include <cstddef>

#include "common/Words.h"

namespace pelgrin {

namespace {

constexpr std::size_t kMostNames = 5;
constexpr std::size_t kMostChanges = 4;

/// The edit distance, row by row.
std::size_t Changes(const std::string& a, const std::string& b)
{
    std::vector<std::size_t> row(b.size() + 1);
    for (std::size_t k = 0; k <= b.size(); ++k) {
        row[k] = k;
    }
    for (std::size_t i = 1; i <= a.size(); ++i) {
        std::size_t diagonal = row[0];
        row[0] = i;
        for (std::size_t k = 1; k <= b.size(); ++k) {
            const std::size_t changed = diagonal + (a[i - 1] == b[k - 1] ? 0 : 1);
            diagonal = row[k];
            row[k] = std::min({changed, row[k] + 1, row[k - 1] + 1});
        }
    }
    return row[b.size()];
}

struct Near {
    std::size_t changes;
    const std::string* name;
};

} // namespace

std::vector<std::string> SimilarNames(const std::string& wanted,
                                      const std::vector<std::string>& names)
{
    const std::string lower = Lower(wanted);
    const std::size_t most = std::min(kMostChanges, lower.size() / 3);
    std::vector<Near> near;
    for (const std::string& name : names) {
        const std::size_t longer = std::max(name.size(), lower.size());
        if (longer - std::min(name.size(), lower.size()) > most) {
            continue; // spares the distance
        }
        const std::size_t changes = Changes(lower, Lower(name));
        if (changes <= most) {
            near.push_back({changes, &name});
        }
    }
    std::stable_sort(near.begin(), near.end(),
                     [](const Near& a, const Near& b) { return a.changes < b.changes; });
    std::vector<std::string> similar;
    for (std::size_t i = 0; i < near.size() && i < kMostNames; ++i) {
        similar.push_back(*near[i].name);
    }
    return similar;
}

std::string Nearest(const std::vector<std::string>& names, std::string_view name)
{
    constexpr std::size_t kLongest = 200; // bounds the work for hostile texts
    if (name.size() > kLongest) {
        return {};
    }
    const std::vector<std::string> similar = SimilarNames(std::string(name), names);
    return similar.empty() ? std::string() : similar.front();
}

} // namespace pelgrin
