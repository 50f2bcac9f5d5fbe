// The parameter file in the plainest way: small databases, and a reader with the
// rules of docs/formats/parameters.md written out.
#ifndef VORLAN_FUZZ_PLAINPARAMETERS_H
#define VORLAN_FUZZ_PLAINPARAMETERS_H

#include <algorithm>
#include <array>
#include <cctype>
#include <cstdint>
#include <cstdlib>
#include <limits>
#include <optional>
#include <string>
#include <vector>

#include "InitFile.h"
#include "TulkParam.h"

namespace Vorlan::fuzz {

// ---- The databases --------------------------------------------------------

struct Row {
    const char* id;
    const char* term;
    const char* origin;
    double mass;

    std::string FullId() const { return std::string(id) + " at " + origin; }
    std::string Accession() const { return std::string("UniMod:") + id; }
    std::string FullName() const { return std::string("the ") + id; }
};

inline constexpr std::array<Row, 11> kDefaultRows = {{{"Oxidation", "Anywhere", "M", 16},
                                                      {"Oxidation", "Anywhere", "W", 17},
                                                      {"Phospho", "Anywhere", "S", 80},
                                                      {"Cap", "Any N-term", "N-term", 1},
                                                      {"Cap", "Protein N-term", "N-term", 2},
                                                      {"Cap", "Any C-term", "C-term", 3},
                                                      {"Cap", "Protein C-term", "C-term", 4},
                                                      {"Ring", "Any N-term", "Q", 5},
                                                      {"Ring", "Anywhere", "K", 6},
                                                      {"Ring", "Protein N-term", "K", 7},
                                                      {"Ring", "Protein C-term", "K", 8}}};

inline constexpr std::array<Row, 3> kEngineRows = {{{"Oxidation", "Anywhere", "M", 160},
                                                    {"Phospho", "Anywhere", "STY", 800},
                                                    {"Cap", "Any C-term", "C-term", 30}}};

using Rows = std::vector<Row>;

inline std::string TableOf(const Rows& rows)
{
    std::string text = "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\t"
                       "classification\tdiff_mono_mass\tdiff_average_mass\t"
                       "neutral_loss_mono_mass\tneutral_loss_average_mass\n";
    for (const Row& row : rows) {
        text += std::string(row.id) + "\t" + row.FullId() + "\t" + row.Accession() + "\t"
                + row.FullName() + "\t" + row.term + "\t" + row.origin + "\tother\t"
                + std::to_string(row.mass) + "\t0\t0\t0\n";
    }
    return text;
}

// ---- What was read --------------------------------------------------------

/// The groups as far as they are there, and the error; empty: none.
struct Outcome {
    std::optional<CSearchParam> search;
    std::optional<CFdrControlParam> fdr;
    std::optional<CLocalizeParam> localize;
    std::optional<CAnnotateParam> annotate;
    std::string output;
    std::string error;
};

// ---- The plain reader -----------------------------------------------------

/// The values of one section.
struct PlainSection {
    const InitFile& file;
    std::string name;

    std::string Get(const std::string& key) const { return file.Get(name, key); }

    std::string Need(const std::string& key) const
    {
        Require(!Get(key).empty(), "Missing", key);
        return Get(key);
    }

    void Demand(bool isGood, const std::string& key) const { Require(isGood, "Invalid", key); }

    void Require(bool isGood, const std::string& what, const std::string& key) const
    {
        if (!isGood) {
            throw what + " parameter \"" + key + "\" in section \"" + name + "\"";
        }
    }

    double Number(const std::string& key) const { return std::atof(Need(key).c_str()); }

    std::int32_t Count(const std::string& key) const
    {
        const long long least = std::numeric_limits<std::int32_t>::min();
        const long long most = std::numeric_limits<std::int32_t>::max();
        const long long value = std::strtoll(Need(key).c_str(), nullptr, 10);
        return static_cast<std::int32_t>(std::min(most, std::max(least, value)));
    }

    /// Which of the texts the value is, counted from 0.
    int Choice(const std::string& key, const std::vector<std::string>& texts) const
    {
        const auto place = std::find(texts.begin(), texts.end(), Need(key));
        Demand(place != texts.end(), key);
        return static_cast<int>(place - texts.begin());
    }

    double Tolerance(const std::string& key) const
    {
        Demand(Number(key) > 0, key);
        return Number(key);
    }

    TolType::ETolType Unit(const std::string& key) const
    {
        return Choice(key, {"0", "1"}) == 0 ? TolType::Da : TolType::Ppm;
    }

    double Share(const std::string& key) const
    {
        Demand(Number(key) >= 0 && Number(key) <= 1, key);
        return Number(key);
    }
};

inline std::string Upper(std::string text)
{
    for (char& c : text) {
        c = static_cast<char>(std::toupper(static_cast<unsigned char>(c)));
    }
    return text;
}

inline std::string WithoutBlanksAround(const std::string& text)
{
    const std::size_t begin = text.find_first_not_of(" \t\r\n");
    return begin == std::string::npos
               ? ""
               : text.substr(begin, text.find_last_not_of(" \t\r\n") - begin + 1);
}

/// Name, site and position of a modification; an empty site: none.
inline IdentModification PlainEntry(const std::string& text)
{
    IdentModification mod;
    const std::size_t open = text.rfind('(');
    if (open == std::string::npos || text.back() != ')'
        || text.find(')', open) != text.size() - 1) {
        return mod;
    }
    mod.strName = WithoutBlanksAround(text.substr(0, open));
    mod.strSite = text.substr(open + 1, text.size() - open - 2);
    mod.strSite.erase(0, std::min(mod.strSite.find_first_not_of(" \t\r\n"), mod.strSite.size()));
    const std::string site = Upper(mod.strSite);
    for (const std::string term :
         {"Protein N-term", "Protein C-term", "Any N-term", "Any C-term"}) {
        if (site == Upper(term)) {
            mod.strSite = term.substr(term.size() - 6);
            mod.strPosition = term;
        }
        for (char residue = 'A'; residue <= 'Z'; ++residue) {
            if (site == Upper(term) + " " + residue) {
                mod.strSite = residue;
                mod.strPosition = term;
            }
        }
    }
    return mod;
}

inline void PlainMods(const PlainSection& section, const std::string& name, const Rows& rows,
                      std::vector<IdentModification>& mods)
{
    const std::int32_t count = section.Count(name + "_number");
    for (long long n = 1; n <= count; ++n) {
        const std::string key = name + "_" + std::to_string(n);
        IdentModification mod = PlainEntry(section.Need(key));
        section.Demand(!mod.strSite.empty(), key);
        const Row* found = nullptr;
        for (const bool anywhere : {false, true}) {
            for (const Row& row : rows) {
                const bool isNamed = mod.strName == row.id || mod.strName == row.FullId()
                                     || mod.strName == row.FullName()
                                     || mod.strName == row.Accession();
                if (found == nullptr && isNamed && mod.strSite == row.origin
                    && (anywhere || mod.strPosition == row.term)) {
                    found = &row;
                }
            }
        }
        section.Demand(found != nullptr, key);
        mod.dMass = found->mass;
        mods.push_back(mod);
    }
}

template <typename Source, typename Type>
void PlainSources(const PlainSection& section, const std::string& name, Type type,
                  std::int32_t& count, std::vector<Source>& sources)
{
    section.Demand(section.Count(name + "_number") > 0, name + "_number");
    count = section.Count(name + "_number");
    for (long long n = 1; n <= count; ++n) {
        const std::string key = name + "_filename_" + std::to_string(n);
        std::string folder = section.Need(key);
        std::string file;
        while (!folder.empty() && folder.back() != '/' && folder.back() != '\\') {
            file.push_back(folder.back());
            folder.pop_back();
        }
        std::reverse(file.begin(), file.end());
        section.Demand(!folder.empty(), key);
        sources.emplace_back(folder, file, type);
    }
}

inline void PlainTolerances(const PlainSection& section, CSearchParam& param)
{
    param.eSearchEngine = SearchEngineType::nameToType(section.Need("search_result_format"));
    section.Demand(param.eSearchEngine != SearchEngineType::Unknown, "search_result_format");
    param.bOpenSearch = section.Get("open_search") == "1";
    if (param.bOpenSearch) {
        param.dPrecursorMatchingTol = section.Tolerance("precursor_matching_tolerance");
        param.ePrecursorMatchingTolType = section.Unit("precursor_matching_tolerance_type");
        section.Demand(param.ePrecursorMatchingTolType == TolType::Da,
                       "precursor_matching_tolerance_type");
    }
    const bool hasMethod = !section.Get("fragmentation_method").empty();
    param.eFragMethod = hasMethod && section.Choice("fragmentation_method", {"0", "1"}) == 1
                            ? FragMethodType::Etd
                            : FragMethodType::CidHcd;
    param.dPrecursorTol = section.Tolerance("precursor_tol");
    param.ePrecursorTolType = section.Unit("precursor_tol_type");
    param.dFragmentTol = section.Tolerance("fragment_tol");
    param.eFragmentTolType = section.Unit("fragment_tol_type");
}

inline Rows PlainSearch(const PlainSection& section, CSearchParam& param)
{
    PlainTolerances(section, param);
    param.strModificationDatabase = section.Get("modification_database");
    Rows rows = param.strModificationDatabase.empty()
                    ? Rows(kDefaultRows.begin(), kDefaultRows.end())
                    : Rows(kEngineRows.begin(), kEngineRows.end());
    PlainMods(section, "fixed_mod", rows, param.vFixedMods);
    PlainMods(section, "var_mod", rows, param.vVarMods);
    bool hasOxidation = false;
    for (const IdentModification& mod : param.vVarMods) {
        hasOxidation = hasOxidation || (mod.strName == "Oxidation" && mod.strSite == "M");
    }
    if (hasOxidation && param.eSearchEngine == SearchEngineType::MsFraggerPepXml) {
        param.vVarMods.emplace_back("Oxidation", 15.994915, "N-term", "Protein N-term", 0);
    }
    param.eDatasetFormat = DatasetType::nameToType(section.Need("dataset_format"));
    section.Demand(param.eDatasetFormat != DatasetType::Unknown, "dataset_format");
    PlainSources(section, "dataset", param.eDatasetFormat, param.nDatasetNumber, param.vDatasets);
    param.ePepIdentFormat = PepIdentType::nameToType(section.Need("pep_ident_format"));
    section.Demand(param.ePepIdentFormat != PepIdentType::Unknown, "pep_ident_format");
    PlainSources(section, "pep_ident", param.ePepIdentFormat, param.nPepIdentNumber,
                 param.vPepIdentSources);
    return rows;
}

inline void PlainFdr(const PlainSection& section, CFdrControlParam& param)
{
    param.bFdrControl = section.Need("is_fdr_control") != "0";
    if (!param.bFdrControl) {
        return;
    }
    param.strDecoyTag = section.Need("decoy_tag");
    param.dFdrThreshold = section.Share("fdr_threshold");
    const std::string method = section.Need("fdr_method");
    if (method.size() != 1 || method < "1" || method > "3") {
        throw std::string("There is no such FDR estimation method.");
    }
    param.eFdrMethod = static_cast<FdrEstimateType::EFdrEstimateType>(method[0] - '0');
    const bool hasFormula = !section.Get("target_decoy_method").empty();
    param.eTdFdrType = hasFormula && section.Choice("target_decoy_method", {"1", "2"}) == 1
                           ? TdFdrType::DecoyPlusOneByTarget
                           : TdFdrType::DecoyByTarget;
}

inline void PlainLocalize(const PlainSection& section, const Rows& rows, CLocalizeParam& param)
{
    param.bLocalize = section.Need("is_localized") != "0";
    if (!param.bLocalize) {
        return;
    }
    const std::int64_t least = section.Count("min_mod_number");
    param.nMinModNumber =
        least >= 0 && least < 5 ? std::uint64_t{5} : static_cast<std::uint64_t>(least);
    param.bUsePrior = section.Need("use_prior") != "0";
    param.strFilterMethod =
        section.Choice("filter_method", {"0", "1"}) == 0 ? "probability" : "flr";
    param.dFilterThreshold = section.Share("filter_threshold");
    PlainMods(section, "target_mod", rows, param.vTargetMods);
}

inline void PlainAnnotate(const PlainSection& section, bool localize, CAnnotateParam& param)
{
    param.bAnnotate = section.Choice("is_annotated", {"0", "1"}) == 1;
    if (param.bAnnotate) {
        param.strProteinDatabase = section.Need("protein_database");
        if (!localize) {
            throw std::string("Must DO localization before doing annotation.");
        }
    }
}

inline Outcome PlainRead(const InitFile& file)
{
    Outcome outcome;
    try {
        const Rows rows = PlainSearch({file, "Search"}, outcome.search.emplace());
        PlainFdr({file, "Fdr"}, outcome.fdr.emplace());
        PlainLocalize({file, "Localization"}, rows, outcome.localize.emplace());
        PlainAnnotate({file, "Annotation"}, outcome.localize->bLocalize,
                      outcome.annotate.emplace());
        outcome.output = PlainSection{file, "Output"}.Need("output");
    } catch (const std::string& error) {
        outcome.error = "TulkParam: " + error;
    }
    return outcome;
}

} // namespace Vorlan::fuzz

#endif // VORLAN_FUZZ_PLAINPARAMETERS_H
