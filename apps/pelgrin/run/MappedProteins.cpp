#include "run/MappedProteins.h"

#include <filesystem>
#include <iterator>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "common/Terminal.h"
#include "proteins/Examples.h"

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;
using Group = ProteinCountGroup;

const char* TitleOf(Group group)
{
    switch (group) {
    case Group::Peptides: return "Peptides";
    case Group::Evidences: return "Evidences";
    default: return ""; // stand below the evidences
    }
}

/// The counts of a group, by key.
Json ProteinsJson(const ProteinCounts& counts, Group group)
{
    Json json = Json::object();
    if (group == Group::Peptides || group == Group::Evidences) {
        json["total"] = counts.Total(group);
    }
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        const auto count = static_cast<ProteinCount>(i);
        if (GroupOf(count) == group) {
            json[KeyOf(count)] = counts.Of(count);
        }
    }
    return json;
}

Json ExamplesOf(const ProteinCounts& counts)
{
    Json json = Json::object();
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        if (!counts.examples[i].empty()) {
            json[KeyOf(static_cast<ProteinCount>(i))] = counts.examples[i];
        }
    }
    return json;
}

Json ProteinsJson(const TopSites& sites)
{
    Json json = Json::array();
    for (const TopSites::Entry& site : sites.Entries()) {
        json.push_back({{"site", site.text}, {"matches", site.records}});
    }
    return json;
}

Json ProteinsJson(const ProteinDatabase& database)
{
    return {{"path", database.Path()},
            {"proteins", database.Proteins().size()},
            {"residues", database.Residues()},
            {"without_residues", database.WithoutResidues()},
            {"repeated_accessions", database.Repeats()},
            {"repeated_examples", database.RepeatedNames()},
            {"lower_case_letters", database.Audit().lowerCase},
            {"other_characters", database.Audit().others}};
}

void Warn(const ProteinDatabase& database)
{
    const std::string path = OneLine(database.Path());
    if (database.Audit().lowerCase > 0) {
        spdlog::warn("{}:{}: the first of {} lower-case letters in sequences; they are not read",
                     path, database.Audit().firstLowerCase, database.Audit().lowerCase);
    }
    if (database.Repeats() > 0) {
        spdlog::warn("{}: {} headers repeat an accession ({}); the first one of each counts", path,
                     database.Repeats(), TextOf(database.RepeatedNames()));
    }
    if (database.WithoutResidues() > 0) {
        spdlog::warn("{}: {} proteins have no residues", path, database.WithoutResidues());
    }
}

} // namespace

MappedProteins::MappedProteins(ProteinPlan plan) : plan_(std::move(plan)), database_(plan_.database)
{
    Warn(database_);
}

void MappedProteins::Fill(std::vector<Record>& records)
{
    map_ = std::make_unique<const ProteinMap>(database_, records, plan_.equateIl);
    counts_ = FillEvidences(*map_, plan_.decoyTag, records);
}

void MappedProteins::WriteTable(const std::vector<Record>& records,
                                const std::function<void(std::string_view)>& write)
{
    write(kProteinHeader);
    ProteinRows(*map_, records).ForEach([&](const ProteinRow& row) {
        ++listed_;
        sites_.Offer(row, *map_);
        write(LineOf(row, *map_));
    });
    map_.reset();
}

std::string MappedProteins::Text(Details details) const
{
    const std::string name = std::filesystem::path(database_.Path()).filename().string();
    std::string text = fmt::format("Proteins     {:>9}   in {}, {} with a peptide\n",
                                   database_.Proteins().size(), OneLine(name), listed_);
    const char* titled = "";
    for (std::size_t i = 0; i < kProteinCounts; ++i) {
        const auto count = static_cast<ProteinCount>(i);
        const bool isWanted = details == Details::All || IsLoss(count)
                              || count == ProteinCount::PeptideFound
                              || count == ProteinCount::EvidenceAdded;
        if (counts_.Of(count) == 0 || !isWanted) {
            continue;
        }
        const bool isOfPeptides = GroupOf(count) == Group::Peptides;
        const char* const title = TitleOf(isOfPeptides ? Group::Peptides : Group::Evidences);
        const auto& examples = counts_.examples[i];
        fmt::format_to(std::back_inserter(text), "{:<13}{:>9}   {}{}\n",
                       title == titled ? "" : title, counts_.Of(count), pelgrin::TextOf(count),
                       examples.empty() ? "" : " (" + pelgrin::TextOf(examples) + ")");
        titled = title;
    }
    return text;
}

std::string MappedProteins::SitesText() const
{
    std::string text;
    for (const TopSites::Entry& site : sites_.Entries()) {
        fmt::format_to(std::back_inserter(text), "{:<14}{:>8}   match{} {}\n",
                       text.empty() ? "Modified sites" : "", site.records,
                       site.records == 1 ? "  " : "es", OneLine(site.text));
    }
    return text;
}

Json MappedProteins::Summary() const
{
    Json json = {{"database", ProteinsJson(database_)},
                 {"equate_il", plan_.equateIl},
                 {"decoy_tag", plan_.decoyTag ? Json(*plan_.decoyTag) : Json()},
                 {"with_peptide", listed_},
                 {"peptides", ProteinsJson(counts_, Group::Peptides)},
                 {"evidences", ProteinsJson(counts_, Group::Evidences)},
                 {"filled", ProteinsJson(counts_, Group::Confirmed)},
                 {"without_evidence", ProteinsJson(counts_, Group::Added)},
                 {"examples", ExamplesOf(counts_)},
                 {"modified_sites", sites_.Offered()},
                 {"most_modified", ProteinsJson(sites_)}};
    return json;
}

} // namespace pelgrin
