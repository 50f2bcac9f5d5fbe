// Parameter files that tests change entry by entry, and the folder in which
// they are read.
#ifndef VORLAN_TESTS_PARAMETERTEXT_H
#define VORLAN_TESTS_PARAMETERTEXT_H

#include <filesystem>
#include <map>
#include <string>

#include "TulkParam.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan::test {

/// The entries of a parameter file.
class ParameterText {
public:
    ParameterText& Set(const std::string& section, const std::string& key, const std::string& value)
    {
        sections_[section][key] = value;
        return *this;
    }

    ParameterText& Remove(const std::string& section, const std::string& key)
    {
        sections_[section].erase(key);
        return *this;
    }

    /// The whole section, header and all.
    ParameterText& Remove(const std::string& section)
    {
        sections_.erase(section);
        return *this;
    }

    /// A list of entries "<name>_1", "<name>_2" and so on with their number.
    ParameterText& SetList(const std::string& section, const std::string& name,
                           const std::vector<std::string>& values, const std::string& stem)
    {
        Set(section, name + "_number", std::to_string(values.size()));
        for (std::size_t i = 0; i < values.size(); ++i) {
            Set(section, stem + "_" + std::to_string(i + 1), values[i]);
        }
        return *this;
    }

    ParameterText& SetMods(const std::string& name, const std::vector<std::string>& values)
    {
        return SetList(name == "target_mod" ? "Localization" : "Search", name, values, name);
    }

    std::string Text() const
    {
        std::string text;
        for (const auto& [section, entries] : sections_) {
            text += "[" + section + "]\n";
            for (const auto& [key, value] : entries) {
                text += key + " = " + value + "\n";
            }
        }
        return text;
    }

private:
    std::map<std::string, std::map<std::string, std::string>> sections_;
};

/// A file that asks for everything: open search, FDR control, localization and
/// annotation.
inline ParameterText FullParameters()
{
    ParameterText text;
    text.Set("Search", "search_result_format", "Comet (.pep.xml)")
        .Set("Search", "open_search", "1")
        .Set("Search", "precursor_matching_tolerance", "500")
        .Set("Search", "precursor_matching_tolerance_type", "0")
        .Set("Search", "fragmentation_method", "1")
        .Set("Search", "precursor_tol", "10")
        .Set("Search", "precursor_tol_type", "1")
        .Set("Search", "fragment_tol", "0.02")
        .Set("Search", "fragment_tol_type", "0")
        .Set("Search", "modification_database", "")
        .SetMods("fixed_mod", {"Carbamidomethyl (C)"})
        .SetMods("var_mod", {"Oxidation (M)", "Cap (Protein N-term)"})
        .Set("Search", "dataset_format", "mgf")
        .SetList("Search", "dataset", {"data/a.mgf", "data/b.mgf"}, "dataset_filename")
        .Set("Search", "pep_ident_format", "Comet (.pep.xml)")
        .SetList("Search", "pep_ident", {"results/a.pep.xml", "results/b.pep.xml"},
                 "pep_ident_filename");
    text.Set("Fdr", "is_fdr_control", "1")
        .Set("Fdr", "decoy_tag", "REV_")
        .Set("Fdr", "fdr_threshold", "0.01")
        .Set("Fdr", "fdr_method", "2")
        .Set("Fdr", "target_decoy_method", "2");
    text.Set("Localization", "is_localized", "1")
        .Set("Localization", "min_mod_number", "7")
        .Set("Localization", "use_prior", "1")
        .Set("Localization", "filter_method", "1")
        .Set("Localization", "filter_threshold", "0.75")
        .SetMods("target_mod", {"Phospho (S)", "Phospho (T)"});
    text.Set("Annotation", "is_annotated", "1")
        .Set("Annotation", "protein_database", "proteins.fasta");
    text.Set("Output", "output", "out/here");
    return text;
}

inline const char* const kModificationHeader =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
    "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";

/// A line of a modification table. Masses tell the records apart.
inline std::string ModificationRow(const std::string& id, const std::string& term,
                                   const std::string& origin, const std::string& mass)
{
    const std::string site = term == "Anywhere"   ? origin
                             : origin.size() == 1 ? term + " " + origin
                                                  : term;
    return id + "\t" + id + " (" + site + ")\tUniMod:" + id + "\tthe " + id + "\t" + term + "\t"
           + origin + "\tother\t" + mass + "\t0\t0\t0\n";
}

/// The default table of these tests.
inline std::string DefaultTable()
{
    return kModificationHeader + ModificationRow("Carbamidomethyl", "Anywhere", "C", "57.021464")
           + ModificationRow("Oxidation", "Anywhere", "M", "15.994915")
           + ModificationRow("Oxidation", "Anywhere", "W", "15.994915")
           + ModificationRow("Phospho", "Anywhere", "S", "79.966331")
           + ModificationRow("Phospho", "Anywhere", "T", "79.966331")
           + ModificationRow("Cap", "Any N-term", "N-term", "1")
           + ModificationRow("Cap", "Protein N-term", "N-term", "2")
           + ModificationRow("Cap", "Any C-term", "C-term", "3")
           + ModificationRow("Cap", "Protein C-term", "C-term", "4")
           + ModificationRow("Cap", "Anywhere", "N-term", "5")
           + ModificationRow("Gln->pyro-Glu", "Any N-term", "Q", "6")
           + ModificationRow("Ring", "Anywhere", "K", "7")
           + ModificationRow("Ring", "Any N-term", "K", "8")
           + ModificationRow("Ring", "Protein N-term", "K", "9")
           + ModificationRow("Ring", "Any C-term", "K", "10")
           + ModificationRow("Ring", "Protein C-term", "K", "11")
           + ModificationRow("Tail", "Any C-term", "C-term", "12");
}

/// A test whose working folder holds the default table. The process keeps the
/// table that it read first; all tests write the same one.
class ParameterTest : public testing::Test {
protected:
    ParameterTest()
    {
        folder_.Write("unimod.txt", DefaultTable());
        std::filesystem::current_path(folder_.Path());
    }

    ~ParameterTest() override
    {
        std::error_code ignored;
        std::filesystem::current_path(former_, ignored);
    }

    std::string Write(const std::string& name, const std::string& bytes) const
    {
        return folder_.Write(name, bytes);
    }

    /// Reads the file into the instance; what is thrown, empty for nothing.
    Thrown Read(const ParameterText& text) const
    {
        Write("run.ini", text.Text());
        return ThrownBy([] { CTulkParam::readFromFile("run.ini"); });
    }

    /// What was read.
    static const CSearchParam& Search() { return *CTulkParam::getInstance()->getSearchParam(); }
    static const CFdrControlParam& Fdr()
    {
        return *CTulkParam::getInstance()->getFdrControlParam();
    }
    static const CLocalizeParam& Localize()
    {
        return *CTulkParam::getInstance()->getLocalizeParam();
    }
    static const CAnnotateParam& Annotate()
    {
        return *CTulkParam::getInstance()->getAnnotateParam();
    }

private:
    const TempFolder folder_;
    const std::filesystem::path former_ = std::filesystem::current_path();
};

/// What the parameters throw for a bad value.
inline Thrown Refused(const std::string& message)
{
    return {"InvalidParameter", "TulkParam", "CTulkParam::readFromFile_", message};
}

inline Thrown MissingParameter(const std::string& section, const std::string& key)
{
    return Refused("Missing parameter \"" + key + "\" in section \"" + section + "\"");
}

inline Thrown InvalidParameter(const std::string& section, const std::string& key)
{
    return Refused("Invalid parameter \"" + key + "\" in section \"" + section + "\"");
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PARAMETERTEXT_H
