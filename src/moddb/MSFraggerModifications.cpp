// Lines of a parameter file of MSFragger:
//
//     variable_mod_01 = 15.9949 M 3        mass, sites, most per peptide
//     variable_mod_02 = 42.0106 [^ 1
//     add_C_cysteine = 57.021464           mass
//
// The sites of a variable modification are read one character after the other:
// "n", "c", "[" and "]" are termini, followed by "^" or "*" for any residue or
// by the one residue that the terminus must have; a capital letter is a residue.
#include "moddb/MSFraggerModifications.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include "CStringProcess.h"
#include "moddb/ModificationDBErrors.h"
#include "util/LineReader.h"
#include "util/Numbers.h"

namespace Vorlan {

namespace {

using Specificity = CResidueModification::TermSpecificity;

constexpr Specificity kAnywhere = CResidueModification::ANYWHERE;

bool IsResidue(char c)
{
    return c >= 'A' && c <= 'Z';
}

/// The terminus that a character of the sites stands for, or ANYWHERE.
Specificity TerminusOf(char symbol)
{
    switch (symbol) {
    case 'n': return CResidueModification::N_TERM;
    case 'c': return CResidueModification::C_TERM;
    case '[': return CResidueModification::PROTEIN_N_TERM;
    case ']': return CResidueModification::PROTEIN_C_TERM;
    default: return kAnywhere;
    }
}

/// Every site repeats the text of the mass: a longer one would make records of
/// gigabytes out of one line.
constexpr std::size_t kLongestMass = 256;

/// residue is empty for a terminus of any residue. A mass that is zero or no
/// number makes no record.
void Append(const std::string& massText, Specificity specificity, const std::string& residue,
            std::vector<CResidueModification>& records)
{
    const double mass = numbers::ToDouble(massText);
    if (mass == 0.0 || std::isnan(mass) || massText.size() > kLongestMass) {
        return;
    }
    CResidueModification record;
    record.setTermSpecificity(specificity);
    std::string site = residue;
    std::string origin = residue;
    if (specificity != kAnywhere) {
        const std::string term = record.getTermSpecificityName(specificity);
        site = residue.empty() ? term : term + " " + residue;
        if (residue.empty()) {
            origin = term.substr(term.size() - std::string_view("N-term").size());
        }
    }
    record.setId(massText);
    record.setFullId(massText + " (" + site + ")");
    record.setOrigin(origin);
    record.setDiffMonoMass(mass);
    record.setSourceClassification(CResidueModification::UNKNOWN);
    records.push_back(record);
}

void AppendVariable(const std::string& massText, std::string_view sites,
                    std::vector<CResidueModification>& records)
{
    for (std::size_t i = 0; i < sites.size(); ++i) {
        const Specificity terminus = TerminusOf(sites[i]);
        if (terminus == kAnywhere) {
            if (IsResidue(sites[i])) {
                Append(massText, kAnywhere, std::string(1, sites[i]), records);
            }
        } else if (i + 1 < sites.size() && IsResidue(sites[i + 1])) {
            Append(massText, terminus, std::string(1, sites[++i]), records);
        } else {
            Append(massText, terminus, {}, records);
        }
    }
}

struct FixedKey {
    std::string_view key;
    Specificity specificity;
};

constexpr FixedKey kTerminalKeys[] = {
    {"add_Cterm_peptide", CResidueModification::C_TERM},
    {"add_Nterm_peptide", CResidueModification::N_TERM},
    {"add_Cterm_protein", CResidueModification::PROTEIN_C_TERM},
    {"add_Nterm_protein", CResidueModification::PROTEIN_N_TERM},
};

/// The residue is the fifth character.
constexpr std::string_view kResidueKeys[] = {
    "add_G_glycine",       "add_A_alanine",       "add_S_serine",        "add_P_proline",
    "add_V_valine",        "add_T_threonine",     "add_C_cysteine",      "add_L_leucine",
    "add_I_isoleucine",    "add_N_asparagine",    "add_D_aspartic_acid", "add_Q_glutamine",
    "add_K_lysine",        "add_E_glutamic_acid", "add_M_methionine",    "add_H_histidine",
    "add_F_phenylalanine", "add_R_arginine",      "add_Y_tyrosine",      "add_W_tryptophan",
};

/// Keys that are not in the tables, such as those of user residues, make no
/// record.
void AppendFixed(const std::string& key, const std::string& massText,
                 std::vector<CResidueModification>& records)
{
    for (const FixedKey& terminal : kTerminalKeys) {
        if (key == terminal.key) {
            Append(massText, terminal.specificity, {}, records);
        }
    }
    if (std::find(std::begin(kResidueKeys), std::end(kResidueKeys), key)
        != std::end(kResidueKeys)) {
        Append(massText, kAnywhere, key.substr(4, 1), records);
    }
}

} // namespace

void AppendMSFraggerModifications(std::string_view line, std::vector<CResidueModification>& records)
{
    const std::string text(line.substr(0, line.find('#')));
    std::vector<std::string> parts = CStringProcess::split(text, "=");
    if (parts.size() < 2) {
        return;
    }
    CStringProcess::Trim(parts[0]);
    CStringProcess::Trim(parts[1]);
    if (text.find("variable_mod_") != std::string::npos) {
        const std::vector<std::string> fields = CStringProcess::split(parts[1], " ");
        if (fields.size() >= 2) {
            AppendVariable(fields[0], fields[1], records);
        }
    }
    if (text.find("add_") != std::string::npos) {
        AppendFixed(parts[0], parts[1], records);
    }
}

std::vector<CResidueModification> ReadMSFraggerModifications(const std::string& path)
{
    LineReader reader;
    if (!reader.Open(path, LineReader::Mode::Text)) {
        errors::MSFraggerFileNotReadable(path);
    }
    std::vector<CResidueModification> records;
    std::string_view line;
    while (reader.Next(line)) {
        AppendMSFraggerModifications(line, records);
    }
    return records;
}

} // namespace Vorlan
