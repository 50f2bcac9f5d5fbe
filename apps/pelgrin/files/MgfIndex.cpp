#include "files/MgfIndex.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

namespace pelgrin {

namespace {

constexpr std::string_view kDigits = "0123456789";

/// What stands behind key at the front of line; null when the key does not.
const char* BehindKey(const std::string& line, std::string_view key)
{
    return line.compare(0, key.size(), key) == 0 ? line.c_str() + key.size() : nullptr;
}

/// number stands in text between characters that are no digits; zeros in front of
/// it do not count.
bool HoldsNumber(std::string_view text, std::string_view number)
{
    constexpr std::size_t kLongest = 500; // bounds the work for hostile texts
    text = text.substr(0, kLongest);
    for (std::size_t hit = text.find(number); hit != std::string_view::npos;
         hit = text.find(number, hit + 1)) {
        const std::size_t before = text.substr(0, hit).find_last_not_of('0');
        const bool isBegin = before == std::string_view::npos
                             || kDigits.find(text[before]) == std::string_view::npos;
        const std::size_t end = hit + number.size();
        if (isBegin && (end == text.size() || kDigits.find(text[end]) == std::string_view::npos)) {
            return true;
        }
    }
    return false;
}

} // namespace

// ---- Taking lines -------------------------------------------------------------

void MgfIndex::Take(const FileLines::Line& line)
{
    if (isAtEnd_) {
        return;
    }
    if (line.length > kLongestLine) {
        CloseHeaders();
        isAtEnd_ = true;
        return;
    }
    const char first = line.begin.empty() ? '\0' : line.begin.front();
    if (first >= '0' && first <= '9') {
        CloseHeaders();
    } else if (first == 'B') {
        TakeBegin(line.number);
    } else if (first == 'T' && waitsForTitle_) {
        TakeTitle(line.begin);
    } else if (first == 'P' || first == 'C') {
        TakeHeader(line);
    }
}

void MgfIndex::Finish()
{
    CloseHeaders();
    if (waitsForTitle_) {
        records_.pop_back(); // it has no name
    }
    std::sort(entries_.begin(), entries_.end(), [this](const Entry& a, const Entry& b) {
        const int order = TextOf(a).compare(TextOf(b));
        return order != 0 ? order < 0 : a.record < b.record;
    });
    MakeGroups();
}

/// A record without a title goes on: it is known by the title that follows (B-18).
void MgfIndex::TakeBegin(std::uint64_t line)
{
    if (!waitsForTitle_) {
        records_.push_back({line, std::nullopt, 0});
        waitsForTitle_ = true;
    }
}

void MgfIndex::TakeTitle(const std::string& line)
{
    waitsForTitle_ = false;
    const MgfNames names = NamesOf(line);
    const std::string& title = names.Of(NameKind::Title);
    const std::uint64_t offset = text_.size();
    text_ += title;
    Add(NameKind::Title, offset, title.size(), false);
    const std::string& word = names.Of(NameKind::FirstWord);
    if (names.Has(NameKind::FirstWord)) {
        Add(NameKind::FirstWord, offset, word.size(), false);
    }
    const std::string& dotted = names.Of(NameKind::Dotted);
    if (names.Has(NameKind::Dotted) && dotted != title && dotted != word) {
        Add(NameKind::Dotted, text_.size(), dotted.size(), false);
        text_ += dotted;
    }
    const std::string& scan = names.Of(NameKind::Scan);
    const bool isNew = scan != title && (scan != word || !names.Has(NameKind::FirstWord))
                       && (scan != dotted || !names.Has(NameKind::Dotted));
    if (names.Has(NameKind::Scan) && isNew) {
        Add(NameKind::Scan, offset + title.find("scan=") + 5, scan.size(), names.scanIsCut);
    }
}

/// Numbers as sscanf reads them; one that cannot be read sets nothing.
void MgfIndex::TakeHeader(const FileLines::Line& line)
{
    if (const char* const text = BehindKey(line.begin, "PEPMASS=")) {
        double value = 0.0;
        if (std::sscanf(text, "%lf", &value) == 1) {
            mz_ = {value, line.number};
        }
    } else if (const char* const number = BehindKey(line.begin, "CHARGE=")) {
        char* end = nullptr;
        const long long value = std::strtoll(number, &end, 10);
        if (end != number) {
            constexpr long long kMost = std::numeric_limits<std::int32_t>::max();
            charge_ = {static_cast<std::uint64_t>(std::abs(std::clamp(value, -kMost - 1, kMost))),
                       line.number};
        }
    }
}

/// The first peak ends the header of every record that waits for one.
void MgfIndex::CloseHeaders()
{
    for (; firstOpen_ < records_.size(); ++firstOpen_) {
        Record& record = records_[firstOpen_];
        if (mz_.line > record.line) {
            record.precursorMz = mz_.value;
        }
        if (charge_.line > record.line) {
            record.charge = charge_.value;
        }
    }
}

void MgfIndex::Add(NameKind kind, std::uint64_t offset, std::size_t length, bool isCut)
{
    Entry entry{};
    entry.offset = offset & ((std::uint64_t{1} << 46) - 1);
    entry.length = length & ((std::uint64_t{1} << 18) - 1);
    entry.record = (records_.size() - 1) & ((std::uint64_t{1} << 56) - 1);
    entry.kind = static_cast<std::uint64_t>(kind) & 0x7F;
    entry.isCut = isCut ? 1 : 0;
    entries_.push_back(entry);
}

void MgfIndex::MakeGroups()
{
    for (std::size_t i = 0; i < entries_.size(); ++i) {
        const Entry& entry = entries_[i];
        if (i == 0 || TextOf(entries_[i - 1]) != TextOf(entry)) {
            Group group{};
            group.begin = i & ((std::uint64_t{1} << 61) - 1);
            groups_.push_back(group);
        }
        Group& group = groups_.back();
        if (entry.kind == static_cast<std::uint64_t>(NameKind::Title) && group.titles < 2) {
            group.titles = group.titles == 0 ? 1 : 2;
        }
        group.hasUncut = group.hasUncut != 0 || entry.isCut == 0 ? 1 : 0;
    }
}

// ---- Questions ----------------------------------------------------------------

std::string_view MgfIndex::TextOf(const Entry& entry) const
{
    return std::string_view(text_).substr(entry.offset, entry.length);
}

std::string_view MgfIndex::NameOf(std::size_t group) const
{
    return TextOf(entries_[groups_[group].begin]);
}

/// The place behind the last entry of a group: the library gives that one.
std::size_t MgfIndex::EndOf(std::size_t group) const
{
    return group + 1 < groups_.size() ? groups_[group + 1].begin : entries_.size();
}

bool MgfIndex::IsAmbiguous(std::size_t group) const
{
    const std::size_t last = EndOf(group) - 1;
    const bool givesTheOnlyTitle =
        groups_[group].titles == 1
        && entries_[last].kind == static_cast<std::uint64_t>(NameKind::Title);
    return last > groups_[group].begin && !givesTheOnlyTitle;
}

bool MgfIndex::IsOfUse(std::size_t group) const
{
    return groups_[group].hasUncut != 0 && !NameOf(group).empty();
}

std::size_t MgfIndex::LowerBound(std::string_view name) const
{
    std::size_t begin = 0;
    for (std::size_t count = groups_.size(); count > 0;) {
        const std::size_t half = count / 2;
        if (NameOf(begin + half) < name) {
            begin += half + 1;
            count -= half + 1;
        } else {
            count = half;
        }
    }
    return begin;
}

std::optional<std::size_t> MgfIndex::GroupOf(std::string_view name) const
{
    const std::size_t group = LowerBound(name);
    return group < groups_.size() && NameOf(group) == name ? std::optional(group) : std::nullopt;
}

std::optional<MgfIndex::Hit> MgfIndex::Find(std::string_view name) const
{
    const auto group = GroupOf(name);
    if (!group) {
        return std::nullopt;
    }
    const std::size_t end = EndOf(*group);
    const Entry& given = entries_[end - 1];
    Hit hit;
    hit.record = given.record;
    hit.kind = static_cast<NameKind>(given.kind);
    hit.bearers = end - groups_[*group].begin;
    hit.isAmbiguous = IsAmbiguous(*group);
    hit.isCutScan = groups_[*group].hasUncut == 0;
    return hit;
}

std::vector<std::size_t> MgfIndex::BearersOf(std::string_view name, std::size_t most) const
{
    std::vector<std::size_t> bearers;
    if (const auto group = GroupOf(name)) {
        const std::size_t end = EndOf(*group);
        for (std::size_t i = groups_[*group].begin; i < end && bearers.size() < most; ++i) {
            bearers.push_back(entries_[i].record);
        }
    }
    return bearers;
}

std::size_t MgfIndex::AmbiguousNames() const
{
    std::size_t count = 0;
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        count += IsOfUse(group) && IsAmbiguous(group) ? 1 : 0;
    }
    return count;
}

std::vector<std::string_view> MgfIndex::NamesThatFind() const
{
    std::vector<std::string_view> names(records_.size());
    for (std::size_t group = 0; group < groups_.size(); ++group) {
        if (IsOfUse(group) && !IsAmbiguous(group)) {
            names[entries_[EndOf(group) - 1].record] = NameOf(group);
        }
    }
    return names;
}

std::vector<std::string> MgfIndex::Around(std::string_view name, std::size_t most) const
{
    std::vector<std::string> names;
    const std::size_t place = LowerBound(name);
    const std::size_t first = place - std::min(place, most);
    const std::size_t end = place + std::min(groups_.size() - place, most);
    for (std::size_t group = first; group < end; ++group) {
        if (IsOfUse(group)) {
            names.emplace_back(NameOf(group));
        }
    }
    return names;
}

std::vector<std::string> MgfIndex::TitlesWithNumber(std::string_view number, std::size_t most) const
{
    std::vector<std::string> titles;
    for (std::size_t group = 0; group < groups_.size() && titles.size() < most; ++group) {
        if (groups_[group].titles > 0 && HoldsNumber(NameOf(group), number)) {
            titles.emplace_back(NameOf(group));
        }
    }
    return titles;
}

} // namespace pelgrin
