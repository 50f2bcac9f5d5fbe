#include "proteins/ProteinTable.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <set>
#include <tuple>
#include <utility>

#include <fmt/format.h>

#include "common/Terminal.h"

namespace pelgrin {

using Vorlan::IdentModification;
using Vorlan::PeptideIdentification;

namespace {

constexpr std::size_t kTopSites = 5;

/// A text that neither a cell nor a list of one breaks at.
std::string AsEntry(const std::string& text)
{
    std::string entry = OneLine(text);
    std::replace(entry.begin(), entry.end(), ';', ',');
    return entry;
}

enum class SiteKind : std::uint8_t { NTerm, Residue, CTerm };

std::string SiteText(SiteKind kind, std::uint64_t position, const std::string& sequence)
{
    switch (kind) {
    case SiteKind::NTerm: return fmt::format("N-term{}", position);
    case SiteKind::CTerm: return fmt::format("C-term{}", position);
    default: return fmt::format("{}{}", sequence[static_cast<std::size_t>(position) - 1], position);
    }
}

/// Residues in at least one of the places, which stand by start.
std::uint64_t Covered(const std::vector<ProteinRow::PeptidePlace>& places)
{
    std::uint64_t covered = 0;
    std::uint64_t upTo = 0;
    for (const ProteinRow::PeptidePlace& place : places) {
        if (place.end > upTo) {
            covered += place.end - std::max(upTo, place.start - 1);
            upTo = place.end;
        }
    }
    return covered;
}

std::uint64_t CountDifferent(std::vector<std::uint32_t>& numbers)
{
    std::sort(numbers.begin(), numbers.end());
    numbers.erase(std::unique(numbers.begin(), numbers.end()), numbers.end());
    return numbers.size();
}

} // namespace

/// A modification of a form at a place of a protein.
struct ProteinRows::Hit {
    std::uint64_t position = 0;
    std::uint32_t name = 0;
    SiteKind kind = SiteKind::Residue;
    std::uint32_t form = 0;

    auto Site() const { return std::tie(position, name, kind); }
    auto All() const { return std::tie(position, name, kind, form); }
};

ProteinRows::ProteinRows(const ProteinMap& map, const std::vector<PeptideIdentification>& records)
    : map_(map), recordsOf_(map.Peptides().size()), peptidesOf_(map.Places().Search().Patterns()),
      formsOf_(map.Peptides().size())
{
    for (const std::uint32_t peptide : map.PeptideOf()) {
        ++recordsOf_[peptide];
    }
    for (std::uint32_t i = 0; i < map.Peptides().size(); ++i) {
        const std::uint32_t pattern = map.Places().Search().PatternOf(i);
        if (pattern != PeptideSearch::kNoPattern) {
            peptidesOf_[pattern].push_back(i);
        }
    }
    TakeNames(records);
    TakeForms(records);
}

void ProteinRows::TakeNames(const std::vector<PeptideIdentification>& records)
{
    std::set<std::string> names;
    for (const PeptideIdentification& record : records) {
        for (const IdentModification& mod : record.vMods) {
            names.insert(mod.strName);
        }
    }
    names_.assign(names.begin(), names.end());
}

void ProteinRows::TakeForms(const std::vector<PeptideIdentification>& records)
{
    using Key = std::pair<std::uint32_t, std::vector<std::pair<std::int32_t, std::uint32_t>>>;
    std::map<Key, std::uint32_t> known;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::uint32_t peptide = map_.PeptideOf()[i];
        Key key = {peptide, {}};
        for (const IdentModification& mod : records[i].vMods) {
            const auto name = std::lower_bound(names_.begin(), names_.end(), mod.strName);
            key.second.emplace_back(mod.nPos, static_cast<std::uint32_t>(name - names_.begin()));
        }
        std::sort(key.second.begin(), key.second.end());
        if (key.second.empty()) {
            continue;
        }
        const auto [form, isNew] = known.emplace(key, static_cast<std::uint32_t>(forms_.size()));
        if (isNew) {
            formsOf_[peptide].push_back(form->second);
            Form& made = forms_.emplace_back();
            for (const auto& [position, name] : key.second) {
                made.mods.push_back({position, name});
            }
        }
        ++forms_[form->second].records;
    }
}

void ProteinRows::ForEach(const std::function<void(const ProteinRow&)>& handler) const
{
    const std::vector<Place>& places = map_.Places().ByProtein();
    const Place* const end = places.data() + places.size();
    for (const Place* first = places.data(); first != end;) {
        const Place* const last = std::find_if(
            first, end, [first](const Place& place) { return place.protein != first->protein; });
        handler(RowOf(first, last));
        first = last;
    }
}

ProteinRow ProteinRows::RowOf(const Place* first, const Place* last) const
{
    ProteinRow row;
    row.protein = first->protein;
    std::vector<std::uint32_t> peptides;
    for (const Place* place = first; place != last; ++place) {
        const std::size_t length = map_.Places().Search().LengthOf(place->pattern);
        for (const std::uint32_t peptide : peptidesOf_[place->pattern]) {
            row.places.push_back({peptide, place->start + 1, place->start + length});
            peptides.push_back(peptide);
        }
    }
    row.peptides = CountDifferent(peptides);
    for (const std::uint32_t peptide : peptides) {
        row.records += recordsOf_[peptide];
    }
    std::sort(row.places.begin(), row.places.end(), [](const auto& a, const auto& b) {
        return std::tie(a.start, a.end, a.peptide) < std::tie(b.start, b.end, b.peptide);
    });
    row.covered = Covered(row.places);
    std::vector<Hit> hits;
    for (const ProteinRow::PeptidePlace& place : row.places) {
        AddHits(place, hits);
    }
    row.sites = SitesOf(hits, map_.Database().Proteins()[row.protein].strSequence);
    return row;
}

void ProteinRows::AddHits(const ProteinRow::PeptidePlace& place, std::vector<Hit>& hits) const
{
    const auto length = static_cast<std::int64_t>(place.end - place.start + 1);
    for (const std::uint32_t form : formsOf_[place.peptide]) {
        for (const ModificationOf& mod : forms_[form].mods) {
            if (mod.position < 0 || mod.position > length + 1) {
                continue; // outside the peptide
            }
            if (mod.position == 0) {
                hits.push_back({place.start, mod.name, SiteKind::NTerm, form});
            } else if (mod.position == length + 1) {
                hits.push_back({place.end, mod.name, SiteKind::CTerm, form});
            } else {
                const auto offset = static_cast<std::uint64_t>(mod.position) - 1;
                hits.push_back({place.start + offset, mod.name, SiteKind::Residue, form});
            }
        }
    }
}

/// Every record counts once at a site, even when its peptide covers it twice.
std::vector<ModifiedSite> ProteinRows::SitesOf(std::vector<Hit>& hits,
                                               const std::string& sequence) const
{
    std::sort(hits.begin(), hits.end(),
              [](const Hit& a, const Hit& b) { return a.All() < b.All(); });
    hits.erase(std::unique(hits.begin(), hits.end(),
                           [](const Hit& a, const Hit& b) { return a.All() == b.All(); }),
               hits.end());
    std::vector<ModifiedSite> sites;
    for (std::size_t i = 0; i < hits.size(); ++i) {
        const Hit& hit = hits[i];
        if (i == 0 || hits[i - 1].Site() != hit.Site()) {
            sites.push_back(
                {SiteText(hit.kind, hit.position, sequence), names_[hit.name], hit.position, 0});
        }
        sites.back().records += forms_[hit.form].records;
    }
    return sites;
}

// ---- Texts ------------------------------------------------------------------

const std::string_view kProteinHeader =
    "Accession\tDescription\tLength\tCoverage (%)\tMatches\tPeptides\tPeptide Places\t"
    "Modifications\n";

std::string LineOf(const ProteinRow& row, const ProteinMap& map)
{
    const Vorlan::CProtein& protein = map.Database().Proteins()[row.protein];
    const auto length = static_cast<double>(protein.strSequence.size());
    std::string line = fmt::format(
        "{}\t{}\t{}\t{:.2f}\t{}\t{}\t", OneLine(std::string(map.Database().NameOf(row.protein))),
        OneLine(protein.strDescription), protein.strSequence.size(),
        100 * static_cast<double>(row.covered) / length, row.records, row.peptides);
    const char* separator = "";
    for (const ProteinRow::PeptidePlace& place : row.places) {
        fmt::format_to(std::back_inserter(line), "{}{}@{}-{}", std::exchange(separator, ";"),
                       map.Peptides()[place.peptide], place.start, place.end);
    }
    line += '\t';
    separator = "";
    for (const ModifiedSite& site : row.sites) {
        fmt::format_to(std::back_inserter(line), "{}{}@{}", std::exchange(separator, ";"),
                       AsEntry(site.name), site.site);
        if (site.records > 1) {
            fmt::format_to(std::back_inserter(line), " x{}", site.records);
        }
    }
    return line + "\n";
}

void TopSites::Offer(const ProteinRow& row, const ProteinMap& map)
{
    offered_ += row.sites.size();
    for (const ModifiedSite& site : row.sites) {
        if (entries_.size() == kTopSites && entries_.back().records >= site.records) {
            continue;
        }
        const auto place =
            std::find_if(entries_.begin(), entries_.end(),
                         [&site](const Entry& entry) { return entry.records < site.records; });
        entries_.insert(place, {fmt::format("{} {} {}", map.Database().NameOf(row.protein),
                                            site.site, site.name),
                                site.records});
        if (entries_.size() > kTopSites) {
            entries_.pop_back();
        }
    }
}

} // namespace pelgrin
