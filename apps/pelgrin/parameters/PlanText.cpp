#include "parameters/PlanText.h"

#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <map>
#include <optional>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/DtaAudit.h"
#include "files/SpectraSource.h"
#include "parameters/ParameterKeys.h"
#include "run/Identifications.h"
#include "run/Modifications.h"

namespace pelgrin {

namespace {

template <typename... Arguments>
void Add(std::string& text, fmt::format_string<Arguments...> format, Arguments&&... arguments)
{
    fmt::format_to(std::back_inserter(text), format, std::forward<Arguments>(arguments)...);
}

void AddSearch(std::string& text, const Vorlan::CSearchParam& search, const Parameters& parameters)
{
    const std::string engine = Vorlan::SearchEngineType::typeToName(search.eSearchEngine);
    const std::string method = Vorlan::FragMethodType::typeToName(search.eFragMethod);
    Add(text, "Engine        {}\n", engine);
    if (search.bOpenSearch) {
        Add(text, "Search        open, mass shifts up to {}; ions are asked with them, too\n",
            TextOf(Tolerance{search.dPrecursorMatchingTol, search.ePrecursorMatchingTolType}));
    } else {
        Add(text, "Search        closed: no ions with a mass shift\n");
    }
    Add(text, "Precursors    {}\n",
        TextOf(Tolerance{search.dPrecursorTol, search.ePrecursorTolType}));
    std::string ions;
    for (const Vorlan::Peak::EIonType ion : parameters.ions) {
        ions += fmt::format("{}{}", ions.empty() ? "" : " and ", LetterOf(ion));
    }
    Add(text, "Fragments     {}, {}: {} ions\n", TextOf(parameters.tolerance), method, ions);
}

void AddModifications(std::string& text, const char* kind,
                      const std::vector<Vorlan::IdentModification>& mods)
{
    for (const Vorlan::IdentModification& mod : mods) {
        Add(text, "  {:<12}{:<40} {:>+12.6f} Da\n", kind, OneLine(FullNameOf(mod)), mod.dMass);
    }
}

/// The bytes of a file, or the DTA files of a folder.
std::string SizeOf(const std::string& path)
{
    try {
        if (IsFolder(path)) {
            return fmt::format("{} DTA files", DtaFileNames(path).size());
        }
    } catch (const Failure&) {
        return "cannot be read";
    }
    std::error_code error;
    const auto size = std::filesystem::file_size(path, error);
    return error ? std::string("cannot be read") : fmt::format("{} bytes", size);
}

void AddFiles(std::string& text, const char* title, const std::string& format,
              const std::vector<std::string>& paths)
{
    Add(text, "{:<14}{}\n", title, format);
    for (const std::string& path : paths) {
        Add(text, "  {}   {}\n", OneLine(path), SizeOf(path));
    }
}

/// The second files that a format has by default.
void AddSecondFiles(std::string& text, const Parameters& parameters)
{
    std::vector<std::string> paths;
    for (const std::string& path : parameters.psms) {
        const ResultFiles files = FilesOf(parameters.format, path);
        if (!files.second.empty()) {
            paths.push_back(files.second);
        }
    }
    if (!paths.empty()) {
        AddFiles(text, "Peptides", "peptides.txt", paths);
    }
}

void AddProteins(std::string& text, const Parameters& parameters)
{
    if (!parameters.proteins) {
        Add(text, "Annotation    off\n");
        return;
    }
    AddFiles(text, "Annotation", "proteins that hold the peptides",
             {parameters.proteins->database});
}

void AddFdr(std::string& text, const Parameters& parameters)
{
    if (!parameters.fdr) {
        Add(text, "FDR control   off\n");
        return;
    }
    const FdrPlan& fdr = *parameters.fdr;
    const std::string formula = Vorlan::TdFdrType::typeToName(fdr.formula);
    const bool isGlobal = fdr.method == Vorlan::FdrEstimateType::Global;
    Add(text, "FDR control   q-values up to {} stay, by {}, {}; decoys begin with \"{}\"\n",
        fdr.threshold, formula, isGlobal ? "all files together" : "each file alone",
        OneLine(fdr.decoyTag));
}

/// The entry that counts for a key of the file.
FileKey ValueIn(const ParameterText& text, const ParameterKey& row, const std::string& key)
{
    const ParameterText::Entry* const entry = text.Find(row.section, key);
    return {row.section, key, entry ? std::optional<std::string>(entry->value) : std::nullopt};
}

/// fixed_mod_1 and so on: those of the file up to their number, by it.
void AddNumbered(const ParameterText& text, const ParameterKey& row, std::vector<FileKey>& keys)
{
    const long long count = std::atoll(text.ValueOf(row.section, row.number).c_str());
    std::map<std::uint64_t, std::string> names;
    for (const ParameterText::Entry& entry : text.Entries()) {
        const auto n = NumberIn(row, entry.key);
        if (entry.section == row.section && n && count > 0
            && *n <= static_cast<std::uint64_t>(count)) {
            names[*n] = entry.key;
        }
    }
    for (const auto& [n, name] : names) {
        keys.push_back(ValueIn(text, row, name));
    }
}

} // namespace

std::vector<FileKey> KeysOf(const ParameterText& text)
{
    std::vector<FileKey> keys;
    for (const ParameterKey& row : ParameterKeys()) {
        if (row.number == nullptr) {
            keys.push_back(ValueIn(text, row, row.key));
        } else {
            AddNumbered(text, row, keys);
        }
    }
    return keys;
}

std::string TextOf(const RunPlan& plan)
{
    const Parameters& parameters = plan.parameters;
    const Vorlan::CSearchParam& search = *plan.groups->getSearchParam();
    std::string text;
    AddSearch(text, search, parameters);
    Add(text, "Modifications of {}\n", OneLine(plan.database));
    AddModifications(text, "fixed", search.vFixedMods);
    AddModifications(text, "variable", search.vVarMods);
    if (search.vFixedMods.empty() && search.vVarMods.empty()) {
        text += "  none\n";
    }
    AddFiles(text, "Spectra", Vorlan::DatasetType::typeToName(search.eDatasetFormat),
             parameters.spectra);
    AddFiles(text, "Matches", Vorlan::PepIdentType::typeToName(search.ePepIdentFormat),
             parameters.psms);
    AddSecondFiles(text, parameters);
    AddFdr(text, parameters);
    Add(text, "Localization  {}\n",
        plan.groups->getLocalizeParam()->bLocalize ? "asked for, but not offered yet" : "off");
    AddProteins(text, parameters);
    std::error_code ignored;
    Add(text, "Output        {}{}\n", OneLine(parameters.out),
        std::filesystem::is_directory(parameters.out, ignored) ? "" : ", which will be made");
    return text;
}

} // namespace pelgrin
