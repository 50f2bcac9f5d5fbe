#include "parameters/ReaderParameters.h"

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "TulkParam.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "files/ScratchFolder.h"
#include "parameters/ParameterMessages.h"
#include "parameters/ParameterText.h"
#include "parameters/RunParameters.h"

namespace pelgrin {

using Vorlan::CResidueModification;

namespace {

constexpr const char kTableHeader[] =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
    "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";

/// What the parameter file needs beside its modifications; nobody reads it.
constexpr const char kOtherKeys[] = R"(search_result_format = Calvex (.txt)
open_search = 0
precursor_tol = 20
precursor_tol_type = 1
fragment_tol = 20
fragment_tol_type = 1
fixed_mod_number = 0
dataset_format = mgf
dataset_number = 1
dataset_filename_1 = ./spectra.mgf
pep_ident_format = Calvex (.txt)
pep_ident_number = 1
pep_ident_filename_1 = ./matches.txt
[Fdr]
is_fdr_control = 0
[Localization]
is_localized = 0
[Annotation]
is_annotated = 0
[Output]
output = ./results
)";

/// A row of the table holds a name three times, and ends the process when it is longer
/// than a line.
constexpr std::size_t kLongestName = 1000;

/// A modification of one residue or terminus, as table and parameter file
/// write it.
struct Entry {
    ModificationName name;
    double mass = 0.0;

    std::string Position() const
    {
        return CResidueModification().getTermSpecificityName(name.specificity);
    }
};

/// The entries of "Phospho (STY)=79.966331": one for each residue.
void AddEntries(const std::string& text, std::vector<Entry>& entries)
{
    const auto [written, mass] = ParseModification(text);
    if (written.find_first_of("=#\t\r\n") != std::string::npos) {
        throw UsageError(
            fmt::format("--mod: \"{}\": a name with \"=\", \"#\" or a tab cannot be told "
                        "to a reader; choose another one",
                        written));
    }
    if (written.size() > kLongestName) {
        throw UsageError(
            fmt::format("--mod: \"{}...\": a name of more than {} characters cannot be "
                        "told to a reader; choose another one",
                        Clip(written, 40), kLongestName));
    }
    const std::vector<ModificationName> names = NamesBySite(written);
    if (names.empty()) {
        spdlog::warn(
            "--mod: \"{}\" has no site in parentheses, such as \"Oxidation (M)\" or \"Acetyl "
            "(Protein N-term)\": no mass is explained by it",
            OneLine(written));
    }
    for (const ModificationName& name : names) {
        entries.push_back({name, mass});
    }
}

std::string TableOf(const std::vector<Entry>& entries)
{
    std::string table = kTableHeader;
    for (const Entry& entry : entries) {
        table += fmt::format("{}\t{}\t\t{}\t{}\t{}\t-\t{}\t0\t0\t0\n", entry.name.name,
                             FullNameOf(entry.name), entry.name.name, entry.Position(),
                             entry.name.site, entry.mass);
    }
    return table;
}

std::string ParameterFileOf(const std::vector<Entry>& entries, const std::string& tablePath)
{
    std::string text = fmt::format("[Search]\nmodification_database = {}\nvar_mod_number = {}\n",
                                   tablePath, entries.size());
    for (std::size_t i = 0; i < entries.size(); ++i) {
        text += fmt::format("var_mod_{} = {}\n", i + 1, FullNameOf(entries[i].name));
    }
    return text + kOtherKeys;
}

} // namespace

std::shared_ptr<const ModificationLookup> TellParameterFile(const std::string& path,
                                                            std::vector<std::string>& inputs)
{
    const ParameterText text(path);
    for (const std::string& warning : WarningsOf(text)) {
        spdlog::warn("{}", OneLine(warning));
    }
    const LoadedParameters loaded = LoadParameters(text, false);
    WarnOfMasses(loaded);
    inputs.insert(inputs.end(), {path, loaded.database});
    return LookupOf(loaded);
}

void TellModifications(const std::vector<std::string>& modifications)
{
    std::vector<Entry> entries;
    for (const std::string& text : modifications) {
        AddEntries(text, entries);
    }
    ScratchFolder scratch;
    const std::string table = scratch.Write("modifications.txt", TableOf(entries));
    if (table.find_first_of("=#") != std::string::npos) {
        throw Failure(
            fmt::format("{}: a path with \"=\" or \"#\" cannot be told to a reader; choose "
                        "another folder for TMPDIR",
                        table));
    }
    const std::string file = scratch.Write("reader.ini", ParameterFileOf(entries, table));
    try {
        Vorlan::CTulkParam::readFromFile(file);
    } catch (const OpenMS::Exception::BaseException& error) {
        throw Failure(fmt::format("the modifications of --mod cannot be told to the reader: {}",
                                  error.what()));
    }
}

void TellReader(const std::string& parameterFile, const std::vector<std::string>& modifications,
                Parameters& parameters)
{
    parameters.modifications = ParseModifications(modifications);
    parameters.modificationsGiven = NamesGiven(modifications);
    if (!parameterFile.empty()) {
        parameters.parameterFile = parameterFile;
        parameters.lookup = TellParameterFile(parameterFile, parameters.fileInputs);
    } else if (parameters.format != Vorlan::PepIdentType::CalvexTxt) {
        TellModifications(modifications);
    }
}

} // namespace pelgrin
