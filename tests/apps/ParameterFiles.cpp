#include "ParameterFiles.h"

#include <algorithm>
#include <stdexcept>

namespace pelgrin::test {

Ini::Ini()
    : text_("[Search]\n"
            "search_result_format = Calvex (.txt)\n"
            "open_search = 0\n"
            "fragmentation_method = 0\n"
            "precursor_tol = 20\n"
            "precursor_tol_type = 1\n"
            "fragment_tol = 20\n"
            "fragment_tol_type = 1\n"
            "modification_database = mods.txt\n"
            "fixed_mod_number = 1\n"
            "fixed_mod_1 = Carbamidomethyl (C)\n"
            "var_mod_number = 1\n"
            "var_mod_1 = Oxidation (M)\n"
            "dataset_format = mgf\n"
            "dataset_number = 1\n"
            "dataset_filename_1 = ./run.mgf\n"
            "pep_ident_format = Calvex (.txt)\n"
            "pep_ident_number = 1\n"
            "pep_ident_filename_1 = ./psms.txt\n"
            "[Fdr]\n"
            "is_fdr_control = 0\n"
            "[Localization]\n"
            "is_localized = 0\n"
            "[Annotation]\n"
            "is_annotated = 0\n"
            "[Output]\n"
            "output = out\n")
{
}

Ini Ini::With(const std::string& section, const std::string& key, const std::string& value) const
{
    const std::string line = key + " = " + value + "\n";
    std::string text = text_;
    const std::size_t hit = text.find("\n" + key + " =");
    if (hit != std::string::npos) {
        text.replace(hit + 1, text.find('\n', hit + 1) - hit, line);
        return Ini(text);
    }
    const std::size_t header = text.find("[" + section + "]\n");
    if (header == std::string::npos) {
        throw std::logic_error("no section " + section);
    }
    const std::size_t next = text.find("\n[", header);
    text.insert(next == std::string::npos ? text.size() : next + 1, line);
    return Ini(text);
}

Ini Ini::Without(const std::string& key) const
{
    std::string text = text_;
    const std::size_t hit = text.find("\n" + key + " =") + 1;
    text.erase(hit, text.find('\n', hit) + 1 - hit);
    return Ini(text);
}

Ini Ini::WithoutSection(const std::string& section) const
{
    std::string text = text_;
    const std::size_t header = text.find("[" + section + "]\n");
    const std::size_t next = text.find("\n[", header);
    text.erase(header, next == std::string::npos ? next : next + 1 - header);
    return Ini(text);
}

Ini Ini::WithFdr(const std::string& threshold, const std::string& method,
                 const std::string& formula) const
{
    return With("Fdr", "is_fdr_control", "1")
        .With("Fdr", "decoy_tag", "D_")
        .With("Fdr", "fdr_threshold", threshold)
        .With("Fdr", "fdr_method", method)
        .With("Fdr", "target_decoy_method", formula);
}

Ini Ini::WithLocalization() const
{
    return With("Localization", "is_localized", "1")
        .With("Localization", "min_mod_number", "5")
        .With("Localization", "use_prior", "1")
        .With("Localization", "filter_method", "0")
        .With("Localization", "filter_threshold", "0.75")
        .With("Localization", "target_mod_number", "0");
}

std::size_t Ini::LineOf(const std::string& front) const
{
    const std::size_t hit = ("\n" + text_).find("\n" + front);
    if (hit == std::string::npos) {
        throw std::logic_error("no line " + front);
    }
    const auto end = text_.begin() + static_cast<std::ptrdiff_t>(hit);
    return 1 + static_cast<std::size_t>(std::count(text_.begin(), end, '\n'));
}

ParameterWorkplace::ParameterWorkplace()
{
    Write("mods.txt", ModificationTable());
    Write("psms.txt", TableOf({Row()}));
}

Outcome ParameterWorkplace::Pelgrin(const std::vector<std::string>& arguments, const Ini& ini) const
{
    Write("run.ini", ini.Text());
    std::vector<std::string> all = arguments;
    all.emplace_back("run.ini");
    Setting setting;
    setting.folder = PathOf("");
    return RunPelgrin(all, setting);
}

Outcome ParameterWorkplace::Run(const Ini& ini, const std::vector<Row>& rows) const
{
    Write("psms.txt", TableOf(rows));
    return Run(ini);
}

std::string ModificationTable()
{
    std::string table = "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\t"
                        "classification\tdiff_mono_mass\tdiff_average_mass\t"
                        "neutral_loss_mono_mass\tneutral_loss_average_mass\n";
    const auto add = [&table](const char* id, const char* term, const char* origin,
                              const char* site, const char* mass) {
        table += std::string(id) + "\t" + id + " (" + site + ")\tUniMod:0\tlong " + id + "\t" + term
                 + "\t" + origin + "\tother\t" + mass + "\t0\t0\t0\n";
    };
    add("Acetyl", "Any N-term", "N-term", "Any N-term", "42.010565");
    add("Acetyl", "Protein N-term", "N-term", "Protein N-term", "42.010565");
    add("Carbamidomethyl", "Anywhere", "C", "C", "57.021464");
    add("Oxidation", "Anywhere", "M", "M", "15.994915");
    add("Phospho", "Anywhere", "S", "S", "79.966331");
    add("Gln->pyro-Glu", "Any N-term", "Q", "Any N-term Q", "-17.026549");
    return table;
}

} // namespace pelgrin::test
