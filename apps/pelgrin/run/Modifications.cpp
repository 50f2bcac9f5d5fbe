#include "run/Modifications.h"

#include <set>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/SimilarNames.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "files/EngineFileAudit.h"
#include "run/Annotation.h"

namespace pelgrin {

using Vorlan::CModificationsDB;
using Vorlan::CResidueModification;
using Vorlan::IdentModification;

namespace {

constexpr std::string_view kBlanks = " \t\r\n";

bool IsResidue(char c)
{
    return c >= 'A' && c <= 'Z';
}

/// Recognises "Protein N-term" and the like, with or without a residue behind.
void Classify(const std::string& text, ModificationName& name)
{
    name.site = text;
    const std::string lower = Lower(text);
    for (const auto specificity :
         {CResidueModification::PROTEIN_N_TERM, CResidueModification::PROTEIN_C_TERM,
          CResidueModification::N_TERM, CResidueModification::C_TERM}) {
        const std::string phrase = CResidueModification().getTermSpecificityName(specificity);
        if (lower.compare(0, phrase.size(), Lower(phrase)) != 0) {
            continue;
        }
        if (text.size() == phrase.size()) {
            name.site = phrase.substr(phrase.size() - 6); // "N-term"
            name.specificity = specificity;
        } else if (text.size() == phrase.size() + 2 && text[phrase.size()] == ' ') {
            name.site = text.substr(phrase.size() + 1);
            name.specificity = specificity;
        }
    }
}

/// The full ids of the records of a name, "Oxidation (M), Oxidation (W)", not
/// too many.
std::string SitesOf(const CModificationsDB& database, const std::string& name)
{
    constexpr std::size_t kMost = 8;
    std::set<const CResidueModification*> records;
    try {
        database.searchModifications(records, name, "",
                                     CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
    } catch (const OpenMS::Exception::ElementNotFound&) {
        return {};
    }
    std::string text;
    std::size_t shown = 0;
    for (const CResidueModification* const record : records) {
        if (++shown > kMost) {
            return text + fmt::format(" and {} more", records.size() - kMost);
        }
        text += (text.empty() ? "\"" : ", \"") + record->getFullId() + "\"";
    }
    return text;
}

std::vector<std::string> AllFullIds(const CModificationsDB& database)
{
    constexpr double kEveryMass = 1e12;
    std::vector<std::string> ids;
    database.searchModificationsByDiffMonoMass(ids, 0.0, kEveryMass, "",
                                               CResidueModification::NUMBER_OF_TERM_SPECIFICITY);
    return ids;
}

/// Looks up the names of a modification until one has a mass. The mass that a
/// reader knows counts before that of the database.
void AddMass(const std::vector<std::string>& names, bool hasMass, Parameters& parameters)
{
    for (const std::string& name : names) {
        if (parameters.modifications.count(name) > 0) {
            return;
        }
        const auto hit = parameters.lookup->Find(name);
        if (hit && !(hasMass && hit->isOfDatabase)) {
            parameters.modifications[name] = hit->mass;
            parameters.modificationSources[name] = hit->source;
            return;
        }
    }
}

/// "Phospho (STY)" of the parameter file stands for "Phospho (S)" in a table.
bool Covers(const IdentModification& specified, const std::string& name)
{
    if (FullNameOf(specified) == name) {
        return true;
    }
    const auto parsed = ParseModificationName(name);
    return parsed && specified.strPosition == "Anywhere" && parsed->name == specified.strName
           && parsed->site.size() == 1 && IsResidue(parsed->site.front())
           && specified.strSite.find(parsed->site) != std::string::npos;
}

} // namespace

std::optional<ModificationName> ParseModificationName(const std::string& text)
{
    const std::size_t open = text.rfind('(');
    if (open == std::string::npos) {
        return std::nullopt;
    }
    const std::string_view whole = text;
    const std::string rest(WithoutBlanks(whole.substr(open + 1), kBlanks));
    if (rest.size() < 2 || rest.find(')') != rest.size() - 1) {
        return std::nullopt;
    }
    ModificationName name;
    name.name = WithoutBlanks(whole.substr(0, open), kBlanks);
    Classify(rest.substr(0, rest.size() - 1), name);
    return name;
}

std::vector<ModificationName> NamesBySite(const std::string& text)
{
    const auto name = ParseModificationName(WithAnyTerm(text));
    if (!name || name->name.empty()) {
        return {};
    }
    if (name->specificity != CResidueModification::ANYWHERE
        && (name->site == "N-term" || name->site == "C-term")) {
        return {*name};
    }
    std::vector<ModificationName> names;
    for (std::size_t i = 0; i < name->site.size(); ++i) {
        if (!IsResidue(name->site[i])) {
            return {};
        }
        if (name->site.find(name->site[i]) == i) {
            names.push_back({name->name, std::string(1, name->site[i]), name->specificity});
        }
    }
    return names;
}

std::string FullNameOf(const ModificationName& name)
{
    return FullNameOf({name.name, 0.0, name.site,
                       CResidueModification().getTermSpecificityName(name.specificity), 0});
}

std::string FullNameOf(const IdentModification& specified)
{
    std::string site = specified.strSite;
    if (specified.strPosition != "Anywhere") {
        const bool isTerminus = site == "N-term" || site == "C-term";
        site = specified.strPosition + (isTerminus ? "" : " " + site);
    }
    return fmt::format("{} ({})", specified.strName, site);
}

const CResidueModification* FindRecord(const CModificationsDB& database,
                                       const ModificationName& name)
{
    for (const auto specificity :
         {name.specificity, CResidueModification::NUMBER_OF_TERM_SPECIFICITY}) {
        try {
            return &database.getModification(name.name, name.site, specificity);
        } catch (const OpenMS::Exception::ElementNotFound&) {
            return nullptr;
        } catch (const OpenMS::Exception::InvalidValue&) {
            continue; // the name is there, but not with that specificity
        }
    }
    return nullptr;
}

std::string HintFor(const CModificationsDB& database, const ModificationName& name)
{
    const std::string sites = SitesOf(database, name.name);
    if (!sites.empty()) {
        return "it has " + sites;
    }
    const std::string near = Nearest(AllFullIds(database), FullNameOf(name));
    return near.empty() ? std::string() : "the most similar one is \"" + near + "\"";
}

std::optional<ModificationLookup::Hit> ModificationLookup::Find(const std::string& name) const
{
    const std::string full = WithAnyTerm(name);
    for (const IdentModification& specified : specified_) {
        if (Covers(specified, full)) {
            return Hit{specified.dMass, "parameter file", false};
        }
    }
    if (const auto parsed = ParseModificationName(full)) {
        if (const CResidueModification* const record = FindRecord(database_, *parsed)) {
            return Hit{record->getDiffMonoMass(), databasePath_, true};
        }
    }
    return std::nullopt;
}

void AddMasses(const std::vector<Vorlan::PeptideIdentification>& records, Parameters& parameters)
{
    std::set<std::pair<std::vector<std::string>, bool>> seen;
    for (const Vorlan::PeptideIdentification& record : records) {
        for (const IdentModification& mod : record.vMods) {
            const auto [question, isNew] = seen.emplace(NamesOf(mod, record), mod.dMass != 0.0);
            if (isNew) {
                AddMass(question->first, question->second, parameters);
            }
        }
    }
}

void WarnOfMasses(const std::string& path, Vorlan::SearchEngineType::ESearchEngineType engine)
{
    if (const auto warning = WarningOfMasses(path, engine)) {
        spdlog::warn("{}", OneLine(*warning));
    }
}

} // namespace pelgrin
