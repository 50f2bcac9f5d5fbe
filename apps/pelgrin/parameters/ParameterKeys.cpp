#include "parameters/ParameterKeys.h"

#include <algorithm>

#include "common/SimilarNames.h"

namespace pelgrin {

namespace {

constexpr const char kAlways[] = "always";
constexpr const char kAboveZero[] = "a number above 0";
constexpr const char kUnit[] = "0 (Da) or 1 (ppm)";
constexpr const char kZeroOrOne[] = "0 (off) or 1 (on)";
constexpr const char kShare[] = "a number from 0 to 1";
constexpr const char kModification[] =
    "name and site of a modification in the database, such as \"Oxidation (M)\", "
    "\"Acetyl (Protein N-term)\" or \"Gln->pyro-Glu (Any N-term Q)\"";
constexpr const char kPath[] = "a path with a \"/\" in it, such as ./data/run1.mgf";

// clang-format off
const std::vector<ParameterKey> kKeys = {
    {"Search", "search_result_format", nullptr, ValueKind::Text,
     "\"pFind 2.8 (.txt)\", \"pFind 3 (.spectra)\", \"MSFragger (.pepXML)\", \"Mascot\", "
     "\"Sequest (.txt)\", \"Maxquant\", \"X!Tandem\", \"Calvex (.txt)\", \"MSGF (.tsv)\" or "
     "\"Comet (.pep.xml)\"",
     kAlways, "The search engine.", "Calvex (.txt)"},
    {"Search", "open_search", nullptr, ValueKind::Switch, kZeroOrOne, "no, off when missing",
     "An open search: matches may bear a mass shift, and ions are asked with it, too.", "0"},
    {"Search", "precursor_matching_tolerance", nullptr, ValueKind::Number, kAboveZero,
     "when open_search is 1", "The widest mass shift of an open search.", "500"},
    {"Search", "precursor_matching_tolerance_type", nullptr, ValueKind::Text,
     "0 (Da); an open search has no other unit", "when open_search is 1",
     "The unit of that shift.", "0"},
    {"Search", "fragmentation_method", nullptr, ValueKind::Text, "0 (CID/HCD) or 1 (ETD)",
     "no, 0 when missing", "CID and HCD make b and y ions, ETD makes c and z ions.", "0"},
    {"Search", "precursor_tol", nullptr, ValueKind::Number, kAboveZero, kAlways,
     "How far the mass of a precursor may lie from its peptide.", "20"},
    {"Search", "precursor_tol_type", nullptr, ValueKind::Text, kUnit, kAlways,
     "The unit of precursor_tol.", "1"},
    {"Search", "fragment_tol", nullptr, ValueKind::Number, kAboveZero, kAlways,
     "How far a peak may lie from an ion, on either side.", "20"},
    {"Search", "fragment_tol_type", nullptr, ValueKind::Text, kUnit, kAlways,
     "The unit of fragment_tol.", "1"},
    {"Search", "modification_database", nullptr, ValueKind::Text,
     "the modification file of pFind 3, MSFragger or Calvex, as search_result_format says",
     "no, without it the table unimod.txt in the working folder is read",
     "Where names and masses of modifications stand.", nullptr},
    {"Search", "fixed_mod_number", nullptr, ValueKind::Count, "a number of 0 or more", kAlways,
     "How many modifications every peptide bears at their sites.", "1"},
    {"Search", "fixed_mod_N", "fixed_mod_number", ValueKind::Text, kModification,
     "for N = 1 to fixed_mod_number", "Name and site of one of them.", "Carbamidomethyl (C)"},
    {"Search", "var_mod_number", nullptr, ValueKind::Count, "a number of 0 or more", kAlways,
     "How many modifications a peptide may bear.", "1"},
    {"Search", "var_mod_N", "var_mod_number", ValueKind::Text, kModification,
     "for N = 1 to var_mod_number", "Name and site of one of them.", "Oxidation (M)"},
    {"Search", "dataset_format", nullptr, ValueKind::Text, "\"dta\", \"mgf\", \"mzXML\" or \"mzML\"",
     kAlways, "The format of the spectra; pelgrin reads dta and mgf.", "mgf"},
    {"Search", "dataset_number", nullptr, ValueKind::Count, "a number of 1 or more", kAlways,
     "How many files of spectra, or folders of dta files.", "1"},
    {"Search", "dataset_filename_N", "dataset_number", ValueKind::Text, kPath,
     "for N = 1 to dataset_number",
     "One of them, for dta the folder of the files; a path without / is refused.",
     "./spectra.mgf"},
    {"Search", "pep_ident_format", nullptr, ValueKind::Text,
     "\"pFind 2.8 (.txt)\", \"pBuild_CSV\", \"MSFragger (.pepXML)\", \"Sequest (.txt)\", "
     "\"Mascot_dat\", \"Mascot_PepXML\", \"MaxQuant\", \"X!Tandem\", \"Calvex (.txt)\", "
     "\"pFind 3 (.spectra)\", \"MSGF (.tsv)\" or \"Comet (.pep.xml)\"",
     kAlways, "The format of the matches; pelgrin does not read pBuild_CSV, Mascot and X!Tandem.", "Calvex (.txt)"},
    {"Search", "pep_ident_number", nullptr, ValueKind::Count, "a number of 1 or more", kAlways,
     "How many files of matches.", "1"},
    {"Search", "pep_ident_filename_N", "pep_ident_number", ValueKind::Text, kPath,
     "for N = 1 to pep_ident_number", "One of them; a path without / is refused.",
     "./matches.txt"},

    {"Fdr", "is_fdr_control", nullptr, ValueKind::Switch, kZeroOrOne, kAlways,
     "Whether only matches below a false discovery rate stay.", "1"},
    {"Fdr", "decoy_tag", nullptr, ValueKind::Text,
     "the text that the accessions of decoy proteins begin with", "when is_fdr_control is on",
     "How the accession of a decoy begins.", "DECOY_"},
    {"Fdr", "fdr_threshold", nullptr, ValueKind::Number, kShare, "when is_fdr_control is on",
     "Matches with a q-value up to this stay.", "0.01"},
    {"Fdr", "fdr_method", nullptr, ValueKind::Text,
     "1 (global), 2 (separate) or 3 (transferred)", "when is_fdr_control is on",
     "1 judges all files together, 2 each file alone; 3 is not offered yet.", "1"},
    {"Fdr", "target_decoy_method", nullptr, ValueKind::Text,
     "1 (decoy/target) or 2 ((decoy+1)/target)", "no, 1 when missing",
     "The formula of the false discovery rate.", "1"},

    {"Localization", "is_localized", nullptr, ValueKind::Switch, kZeroOrOne, kAlways,
     "Localization of modifications; pelgrin does not offer it yet.", "0"},
    {"Localization", "min_mod_number", nullptr, ValueKind::Count,
     "a number; one below 5 counts as 5", "when is_localized is on",
     "The least number of matches of a modification.", "5"},
    {"Localization", "use_prior", nullptr, ValueKind::Switch, kZeroOrOne,
     "when is_localized is on", "Whether frequencies of sites count.", "1"},
    {"Localization", "filter_method", nullptr, ValueKind::Text, "0 (probability) or 1 (flr)",
     "when is_localized is on", "What localizations are filtered by.", "0"},
    {"Localization", "filter_threshold", nullptr, ValueKind::Number, kShare,
     "when is_localized is on", "The limit of that filter.", "0.75"},
    {"Localization", "target_mod_number", nullptr, ValueKind::Count, "a number of 0 or more",
     "when is_localized is on", "How many modifications are localized.", "0"},
    {"Localization", "target_mod_N", "target_mod_number", ValueKind::Text, kModification,
     "for N = 1 to target_mod_number", "Name and site of one of them.", nullptr},

    {"Annotation", "is_annotated", nullptr, ValueKind::Switch, kZeroOrOne, kAlways,
     "Which proteins hold the peptides; only with is_localized = 1, else give --fasta.", "0"},
    {"Annotation", "protein_database", nullptr, ValueKind::Text, "the path of a FASTA file",
     "when is_annotated is 1", "The proteins; pelgrin run --fasta counts instead.", nullptr},

    {"Output", "output", nullptr, ValueKind::Text, "the path of a folder", kAlways,
     "The folder of the results; it is made when missing.", "./results"},
};
// clang-format on

bool HasN(const ParameterKey& row)
{
    return row.number != nullptr;
}

/// "fixed_mod_" of "fixed_mod_N".
std::string_view FrontOf(const ParameterKey& row)
{
    const std::string_view key = row.key;
    return key.substr(0, key.size() - 1);
}

/// "fixed_mod_N" of "fixed_mod_17".
std::string WithN(std::string_view key)
{
    const std::size_t end = key.find_last_not_of("0123456789");
    const bool isNumbered = end != std::string_view::npos && end + 1 < key.size();
    return isNumbered ? std::string(key.substr(0, end + 1)) + "N" : std::string(key);
}

} // namespace

const std::vector<ParameterKey>& ParameterKeys()
{
    return kKeys;
}

const ParameterKey* FindParameterKey(std::string_view section, std::string_view key)
{
    for (const ParameterKey& row : kKeys) {
        if (section == row.section
            && (HasN(row) ? NumberIn(row, key).has_value() : key == row.key)) {
            return &row;
        }
    }
    return nullptr;
}

std::optional<std::uint64_t> NumberIn(const ParameterKey& row, std::string_view key)
{
    const std::string_view front = FrontOf(row);
    if (!HasN(row) || key.substr(0, front.size()) != front) {
        return std::nullopt;
    }
    const std::string_view digits = key.substr(front.size());
    if (digits.empty() || digits.size() > 10 || digits[0] == '0'
        || digits.find_first_not_of("0123456789") != std::string_view::npos) {
        return std::nullopt;
    }
    return std::stoull(std::string(digits));
}

bool IsParameterSection(std::string_view section)
{
    return std::any_of(kKeys.begin(), kKeys.end(),
                       [&](const ParameterKey& row) { return section == row.section; });
}

std::string NearestParameterKey(std::string_view section, std::string_view key)
{
    std::vector<std::string> names;
    for (const ParameterKey& row : kKeys) {
        if (section == row.section) {
            names.emplace_back(row.key);
        }
    }
    return Nearest(names, WithN(key));
}

std::string NearestParameterSection(std::string_view section)
{
    std::vector<std::string> names;
    names.reserve(kKeys.size());
    for (const ParameterKey& row : kKeys) {
        names.emplace_back(row.section);
    }
    return Nearest(names, section);
}

} // namespace pelgrin
