// Parameter files of MSFragger against a plain reader.
//
// The input is the text of a file (see Expanded). Nothing in it can fail. Each
// site is a record that keeps the text of the mass, so inputs of many sites are left
// out: one costs as much as ten thousand small ones.
#include <algorithm>
#include <cstdint>
#include <map>
#include <string>
#include <utility>
#include <vector>

#include "FuzzSupport.h"
#include "PlainModifications.h"
#include "moddb/MSFraggerModifications.h"

namespace {

using namespace Vorlan;
using Records = std::vector<CResidueModification>;

struct PlainSite {
    std::string position; ///< as the records spell it
    std::string residue;  ///< empty for a terminus of any residue
};

std::string Trimmed(std::string text)
{
    // A text of blanks only stands for no mass, however many are left.
    const char* const blanks = " \t\r\n";
    text.erase(0, text.find_first_not_of(blanks));
    return text.erase(text.find_last_not_of(blanks) + 1);
}

void AddRecord(const std::string& mass, const PlainSite& site, Records& records)
{
    const double value = fuzz::Number(mass);
    if (value == 0.0 || value != value || mass.size() > 256) {
        return;
    }
    std::string inBrackets = site.position == "Anywhere" ? "" : site.position;
    inBrackets += inBrackets.empty() || site.residue.empty() ? "" : " ";
    CResidueModification record;
    record.setId(mass);
    record.setFullId(mass + " (" + inBrackets + site.residue + ")");
    record.setTermSpecificity(site.position);
    record.setOrigin(site.residue.empty()
                         ? site.position.substr(site.position.find_last_of(' ') + 1)
                         : site.residue);
    record.setDiffMonoMass(fuzz::Number(mass));
    record.setSourceClassification(CResidueModification::UNKNOWN);
    records.push_back(record);
}

std::vector<PlainSite> SitesOf(const std::string& text)
{
    static const std::map<char, std::string> termini = {
        {'n', "Any N-term"}, {'c', "Any C-term"}, {'[', "Protein N-term"}, {']', "Protein C-term"}};
    std::vector<PlainSite> sites;
    bool isOpen = false; // the last site is a terminus that may get a residue
    for (const char c : text) {
        const bool isResidue = c >= 'A' && c <= 'Z';
        if (termini.count(c) > 0) {
            sites.push_back({termini.at(c), ""});
        } else if (isResidue && isOpen) {
            sites.back().residue = c;
        } else if (isResidue) {
            sites.push_back({"Anywhere", std::string(1, c)});
        }
        isOpen = termini.count(c) > 0;
    }
    return sites;
}

std::map<std::string, PlainSite> FixedKeys()
{
    std::map<std::string, PlainSite> keys = {{"add_Cterm_peptide", {"Any C-term", ""}},
                                             {"add_Nterm_peptide", {"Any N-term", ""}},
                                             {"add_Cterm_protein", {"Protein C-term", ""}},
                                             {"add_Nterm_protein", {"Protein N-term", ""}}};
    for (const std::string residue :
         {"G_glycine",   "A_alanine",  "S_serine",        "P_proline",       "V_valine",
          "T_threonine", "C_cysteine", "L_leucine",       "I_isoleucine",    "N_asparagine",
          "Q_glutamine", "K_lysine",   "D_aspartic_acid", "E_glutamic_acid", "M_methionine",
          "H_histidine", "R_arginine", "F_phenylalanine", "Y_tyrosine",      "W_tryptophan"}) {
        keys["add_" + residue] = {"Anywhere", residue.substr(0, 1)};
    }
    return keys;
}

Records PlainRead(const std::string& text)
{
    static const std::map<std::string, PlainSite> fixed = FixedKeys();
    Records records;
    for (const std::string& whole : fuzz::LinesOf(text)) {
        const std::string line = whole.substr(0, whole.find('#'));
        const std::vector<std::string> parts = fuzz::Pieces(line, "=");
        if (parts.size() < 2) {
            continue;
        }
        const std::string value = Trimmed(parts[1]);
        if (line.find("variable_mod_") != std::string::npos) {
            const std::vector<std::string> fields = fuzz::Pieces(value, " ");
            for (const PlainSite& site : SitesOf(fields.size() < 2 ? "" : fields[1])) {
                AddRecord(fields[0], site, records);
            }
        }
        if (fixed.count(Trimmed(parts[0])) > 0) {
            AddRecord(value, fixed.at(Trimmed(parts[0])), records);
        }
    }
    return records;
}

/// Whether the records stay few and their texts small.
bool IsCheap(const std::string& text)
{
    constexpr std::size_t kRecord = 100; // as many bytes of text cost as much as a record
    std::size_t cost = 0;
    for (const std::string& line : fuzz::LinesOf(text)) {
        const std::vector<std::string> parts = fuzz::Pieces(line, "=");
        const std::string value = parts.size() < 2 ? "" : Trimmed(parts[1]);
        const std::size_t mass = std::min(value.find(' '), value.size());
        cost += (mass + kRecord) * (value.size() - mass);
    }
    return cost <= 500000;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    if (!IsCheap(text)) {
        return 0;
    }
    file.Write(text);
    const Records expected = PlainRead(text);
    fuzz::CheckSame(fuzz::Dump(ReadMSFraggerModifications(file.Path())), fuzz::Dump(expected),
                    "a file reads as through the plain reader");
    const CModificationsDBEngineMSFragger database(file.Path());
    fuzz::Check(database.getNumberOfModifications() == expected.size(), "the number of records");
    // A question gathers all records of the name first.
    const std::size_t named = expected.size() > 1000 ? 2 : expected.size();
    for (std::size_t i = 0; i < named && i < 50; ++i) {
        const CResidueModification& found = database.getModification(
            expected[i].getFullId(), expected[i].getOrigin(), expected[i].getTermSpecificity());
        fuzz::CheckSame(fuzz::Dump(found), fuzz::Dump(expected[i]), "the record of a full id");
    }
    return 0;
}
