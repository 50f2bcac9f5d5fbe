#include "support/SpecifiedMods.h"

#include <cstddef>
#include <fstream>

#include "TulkParam.h"

namespace bench {

namespace {

constexpr char kTableHead[] =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
    "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";

constexpr char kParameters[] = "[Search]\n"
                               "search_result_format = Calvex (.txt)\n"
                               "precursor_tol = 20\n"
                               "precursor_tol_type = 1\n"
                               "fragment_tol = 20\n"
                               "fragment_tol_type = 1\n"
                               "dataset_format = mgf\n"
                               "dataset_number = 1\n"
                               "dataset_filename_1 = ./run01.mgf\n"
                               "pep_ident_format = Comet (.pep.xml)\n"
                               "pep_ident_number = 1\n"
                               "pep_ident_filename_1 = ./run01.pep.xml\n"
                               "fixed_mod_number = 0\n";

constexpr char kOtherSections[] = "[Fdr]\nis_fdr_control = 0\n"
                                  "[Localization]\nis_localized = 0\n"
                                  "[Annotation]\nis_annotated = 0\n"
                                  "[Output]\noutput = .\n";

} // namespace

void Specify(const std::vector<SpecifiedMod>& mods, const std::string& folder)
{
    const std::string table = folder + "/modifications.txt";
    const std::string parameters = folder + "/run.ini";
    {
        std::ofstream tableFile(table);
        std::ofstream file(parameters);
        tableFile << kTableHead;
        file << kParameters << "modification_database = " << table << '\n'
             << "var_mod_number = " << mods.size() << '\n';
        for (std::size_t i = 0; i < mods.size(); ++i) {
            const SpecifiedMod& mod = mods[i];
            const std::string fullId = mod.name + " (" + mod.residue + ")";
            tableFile << mod.name << '\t' << fullId << "\t\t\tAnywhere\t" << mod.residue
                      << "\tother\t" << std::to_string(mod.mass) << "\t0\t0\t0\n";
            file << "var_mod_" << i + 1 << " = " << fullId << '\n';
        }
        file << kOtherSections;
    }
    Vorlan::CTulkParam::readFromFile(parameters);
}

} // namespace bench
