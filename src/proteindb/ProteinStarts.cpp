#include "proteindb/ProteinStarts.h"

namespace Vorlan {

std::vector<std::uint64_t> MakeBins(const std::vector<std::uint64_t>& starts, std::uint64_t length,
                                    std::uint64_t binWidth)
{
    std::vector<std::uint64_t> bins;
    bins.reserve(length / binWidth + 1);
    for (std::uint64_t protein = 0; protein < starts.size(); ++protein) {
        while (bins.size() <= starts[protein] / binWidth) {
            bins.push_back(protein);
        }
    }
    bins.resize(length / binWidth + 1, starts.size() - 1);
    return bins;
}

std::uint64_t ProteinAt(const std::vector<std::uint64_t>& starts, std::uint64_t first,
                        std::uint64_t endPos)
{
    std::uint64_t protein = first;
    if (endPos > starts[protein]) {
        while (protein < starts.size() && endPos > starts[protein]) {
            ++protein;
        }
        --protein; // Deliberate: B-79. The one that begins at endPos is passed by.
    } else {
        while (endPos < starts[protein]) {
            --protein;
        }
    }
    return protein;
}

} // namespace Vorlan
