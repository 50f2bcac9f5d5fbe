#include "proteins/PeptidePlaces.h"

#include <algorithm>
#include <stdexcept>

namespace pelgrin {

namespace {

/// The protein that holds a position of the concatenation; positions ascend.
class ProteinWalk {
public:
    explicit ProteinWalk(const ProteinDatabase& database) : database_(database) {}

    /// Goes to the protein of a match that ends at position. The library is asked
    /// once for each protein, since it copies what it finds, and in the way that
    /// is exact for a match of one residue, too (B-79): with a peptide one residue
    /// longer, one position further.
    void GoTo(std::uint64_t position)
    {
        if (position < end_) {
            return;
        }
        constexpr const char kOneResidueLonger[] = "AA";
        std::uint64_t start = 0;
        if (!database_.Library().Query(kOneResidueLonger, position + 1, protein_, start)
            || start > position) {
            throw std::logic_error("a match lies in no protein");
        }
        const std::uint64_t begin = position - start;
        while (begin_ < begin) {
            begin_ += database_.Proteins()[index_].strSequence.size() + 1;
            ++index_;
        }
        end_ = begin_ + protein_.strSequence.size();
    }

    std::size_t Index() const { return index_; }
    std::uint64_t Begin() const { return begin_; }

private:
    const ProteinDatabase& database_;
    Vorlan::CProtein protein_;
    std::size_t index_ = 0;
    std::uint64_t begin_ = 0; ///< of protein index_ in the concatenation
    std::uint64_t end_ = 0;
};

} // namespace

PlaceRange PlaceRange::In(std::size_t protein) const
{
    const auto [from, to] =
        std::equal_range(first, last, Place{0, static_cast<std::uint32_t>(protein), 0},
                         [](const Place& a, const Place& b) { return a.protein < b.protein; });
    return {from, to};
}

PeptidePlaces::PeptidePlaces(const ProteinDatabase& database,
                             const std::vector<std::string>& peptides,
                             PeptideSearch::LeucineIsoleucine letters)
    : search_(peptides, letters)
{
    FindAll(database);
    SortByPattern();
}

void PeptidePlaces::FindAll(const ProteinDatabase& database)
{
    ProteinWalk walk(database);
    search_.FindAll(
        database.Library().cProteinString(), [&](std::uint32_t pattern, std::uint64_t position) {
            walk.GoTo(position);
            if (!database.IsRepeat(walk.Index())) {
                byProtein_.push_back({pattern, static_cast<std::uint32_t>(walk.Index()),
                                      position + 1 - walk.Begin() - search_.LengthOf(pattern)});
            }
        });
}

/// A counting sort, so that each pattern's places keep their order.
void PeptidePlaces::SortByPattern()
{
    begins_.assign(search_.Patterns() + 2, 0);
    for (const Place& place : byProtein_) {
        ++begins_[place.pattern + 2];
    }
    for (std::size_t i = 2; i < begins_.size(); ++i) {
        begins_[i] += begins_[i - 1];
    }
    byPattern_.resize(byProtein_.size());
    for (const Place& place : byProtein_) {
        byPattern_[begins_[place.pattern + 1]++] = place;
    }
}

PlaceRange PeptidePlaces::Of(std::size_t peptide) const
{
    const std::uint32_t pattern = search_.PatternOf(peptide);
    if (pattern == PeptideSearch::kNoPattern) {
        return {};
    }
    return {byPattern_.data() + begins_[pattern], byPattern_.data() + begins_[pattern + 1]};
}

} // namespace pelgrin
