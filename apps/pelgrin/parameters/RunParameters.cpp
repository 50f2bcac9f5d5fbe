#include "parameters/RunParameters.h"

#include <filesystem>
#include <map>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/EngineFileAudit.h"
#include "files/FastaAudit.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "files/SpectraSource.h"
#include "files/UnimodFile.h"
#include "parameters/ParameterKeys.h"
#include "parameters/ParameterMessages.h"
#include "parameters/PlanText.h"
#include "run/Identifications.h"
#include "run/Modifications.h"
#include "run/Output.h"

namespace pelgrin {

using Vorlan::CTulkParam;
using Vorlan::FdrEstimateType;
using Vorlan::FragMethodType;
using Vorlan::Peak;
using Vorlan::SearchEngineType;

namespace {

constexpr const char kDefaultTable[] = "unimod.txt";

/// A failure that another function told, with the place in front.
template <typename Call>
void WithPlace(const std::string& place, Call call)
{
    try {
        call();
    } catch (const Failure& failure) {
        throw Failure(place + ": " + failure.what());
    }
}

// ---- The modification database ----------------------------------------------

void MakeDefaultTable(const ParameterText& text, bool makeTable)
{
    if (!makeTable) {
        throw Failure(fmt::format(
            "{}: is missing in the working folder, and {} names no modification_database; make it "
            "with \"pelgrin mods import --unimod FILE --out {}\", or give --make-table",
            kDefaultTable, text.Path(), kDefaultTable));
    }
    const auto unimod = FindUnimodXml();
    if (!unimod) {
        throw Failure(fmt::format("{}: cannot be made, no Unimod XML was found in: {}; make it "
                                  "with \"pelgrin mods import --unimod FILE --out {}\"",
                                  kDefaultTable, UnimodXmlPlaces(), kDefaultTable));
    }
    WriteModificationTable(*unimod, kDefaultTable);
    spdlog::info("{} was made from {}", kDefaultTable, *unimod);
}

void CheckTable(const std::string& path)
{
    CheckModificationTable(path);
    CheckTermSpecificities(path);
}

/// The library stops at a missing key that it reads before the database.
bool StopsBeforeDatabase(const ParameterText& text)
{
    for (const ParameterKey& row : ParameterKeys()) {
        if (std::string_view(row.key) == "modification_database") {
            break;
        }
        if (row.IsRequired() && text.ValueOf(row.section, row.key).empty()) {
            return true;
        }
    }
    return false;
}

/// Refuses a modification file that the library would end the process for, or
/// tell no file and line of. Gives its path.
std::string CheckDatabase(const ParameterText& text, bool makeTable)
{
    const std::string value = text.ValueOf("Search", "modification_database");
    if (value.empty()) {
        std::error_code ignored;
        if (!std::filesystem::exists(kDefaultTable, ignored)) {
            MakeDefaultTable(text, makeTable);
        }
        CheckTable(kDefaultTable);
        return kDefaultTable;
    }
    std::string path = ResolvedPath(value);
    const auto engine =
        SearchEngineType::nameToType(text.ValueOf("Search", "search_result_format"));
    WithPlace(text.PlaceOf("Search", "modification_database"), [&] {
        switch (engine) {
        case SearchEngineType::Unknown: break; // the library tells
        case SearchEngineType::CalvexTxt: CheckTable(path); break;
        case SearchEngineType::Pfind3Spectra: CheckPFind3File(path); break;
        case SearchEngineType::MsFraggerPepXml:
            CheckReadable(path);
            RefusePacked(path);
            break;
        default:
            throw Failure(fmt::format(
                "files of {} are not read; expected no value, for the table {}, or a "
                "search_result_format of \"pFind 3 (.spectra)\", \"MSFragger (.pepXML)\" or "
                "\"Calvex (.txt)\"",
                static_cast<const std::string&>(SearchEngineType::typeToName(engine)),
                kDefaultTable));
        }
    });
    return path;
}

const Vorlan::CModificationsDB& DatabaseOf(const Vorlan::CSearchParam& search)
{
    // The instances that CTulkParam has made.
    if (search.strModificationDatabase.empty()) {
        return *Vorlan::CModificationsDBCalvexDefault::getInstance();
    }
    return *Vorlan::CModificationsDBEngine::getInstance(search.strModificationDatabase,
                                                        search.eSearchEngine);
}

// ---- What the library says --------------------------------------------------

/// A modification that was refused: it is not written as one, or unknown.
std::string ExplainModification(const ParameterText& text, const NamedKey& named,
                                const std::string& database)
{
    const auto name = ParseModificationName(text.ValueOf(named.section, named.key));
    const Vorlan::CSearchParam* const search = CTulkParam::getInstance()->getSearchParam();
    if (!name || search == nullptr) {
        return BadValue(text, named.section, named.key);
    }
    const std::string hint = HintFor(DatabaseOf(*search), *name);
    return BadValue(
        text, named.section, named.key,
        fmt::format("{} has no such modification{}{}", database, hint.empty() ? "" : ", ", hint));
}

const CTulkParam* ReadGroups(const ParameterText& text, const std::string& database)
{
    try {
        return CTulkParam::readFromFile(text.Path());
    } catch (const OpenMS::Exception::InvalidParameter& error) {
        const std::string message = error.what();
        const NamedKey named = KeyIn(message);
        const bool isModification = named.key.find("_mod_") != std::string::npos
                                    && named.key.find("_number") == std::string::npos
                                    && message.find("Invalid") != std::string::npos;
        throw Failure(isModification ? ExplainModification(text, named, database)
                                     : Explain(text, message));
    } catch (const OpenMS::Exception::BaseException& error) {
        throw Failure(Explain(text, error.what()));
    }
}

// ---- What pelgrin offers so far ---------------------------------------------

/// The library finds spectra in datasets of this format.
bool HasSpectra(Vorlan::DatasetType::EDatasetType format)
{
    return format == Vorlan::DatasetType::Mgf || format == Vorlan::DatasetType::Dta;
}

void CheckOffered(const ParameterText& text, const CTulkParam& groups)
{
    const Vorlan::CSearchParam& search = *groups.getSearchParam();
    constexpr const char kNotYet[] = "this format is not read yet";
    if (!HasSpectra(search.eDatasetFormat)) {
        const Vorlan::DatasetSource& first = search.vDatasets.front();
        throw Failure(
            BadValue(text, "Search", "dataset_format",
                     "such files are not read, convert each one to MGF: "
                         + ConversionOf(ResolvedPath(first.strFirst + first.strSecond),
                                        Vorlan::DatasetType::typeToName(search.eDatasetFormat)),
                     "\"mgf\" or \"dta\""));
    }
    if (!HasReader(search.ePepIdentFormat)) {
        throw Failure(BadValue(text, "Search", "pep_ident_format", kNotYet, FormatChoices()));
    }
    const Vorlan::CFdrControlParam& fdr = *groups.getFdrControlParam();
    if (fdr.bFdrControl && fdr.eFdrMethod == FdrEstimateType::Transferred) {
        throw Failure(BadValue(text, "Fdr", "fdr_method", "\"transferred\" is not offered yet",
                               "1 (global) or 2 (separate)"));
    }
}

std::vector<std::string> NotOffered(const ParameterText& text, const CTulkParam& groups)
{
    if (!groups.getLocalizeParam()->bLocalize) {
        return {};
    }
    spdlog::warn("{} = {}: localization is not offered yet; the run goes on without it",
                 OneLine(text.PlaceOf("Localization", "is_localized")),
                 OneLine(text.ValueOf("Localization", "is_localized")));
    return {"localization"};
}

// ---- Files ------------------------------------------------------------------

/// The files of a list, "dataset_filename_1" and so on, as the library finds
/// them; problems with them go to the plan.
class FileList {
public:
    /// check throws Failure for a path that is none of this list.
    using Check = void (*)(const std::string& path);

    FileList(const ParameterText& text, std::string front, Check check, RunPlan& plan)
        : text_(text), front_(std::move(front)), check_(check), plan_(plan)
    {
    }

    void Add(const std::string& asWritten)
    {
        const std::string key = fmt::format("{}_{}", front_, paths_.size() + 1);
        const std::string place = text_.PlaceOf("Search", key);
        paths_.push_back(WithoutLastSeparators(ResolvedPath(asWritten)));
        const auto tell = [this, &place](const Failure& failure) {
            plan_.fileProblems.push_back(place + ": " + failure.what());
        };
        try {
            check_(paths_.back());
        } catch (const Failure& failure) {
            tell(failure);
            return;
        }
        try {
            RefusePacked(paths_.back());
        } catch (const Failure& failure) {
            tell(failure);
            plan_.mendable.push_back(plan_.fileProblems.back());
        }
    }

    /// A dataset is known by its file name.
    void RefuseEqualNames()
    {
        const auto nameOf = [](const std::string& path) { return PlaceOfDataset(path).name; };
        RefuseEqual(nameOf, "has the same file name, and records could not tell them apart");
    }

    /// Every match counts once.
    void RefuseEqualFiles()
    {
        const auto real = [](const std::string& path) {
            std::error_code error;
            const auto canonical = std::filesystem::canonical(path, error);
            return error ? path : canonical.string();
        };
        RefuseEqual(real, "is the same file, and its matches would count twice");
    }

    const std::vector<std::string>& Paths() const { return paths_; }

private:
    template <typename NameOf>
    void RefuseEqual(NameOf nameOf, const char* reason)
    {
        std::map<std::string, std::string> keys;
        for (std::size_t i = 0; i < paths_.size(); ++i) {
            const std::string key = fmt::format("{}_{}", front_, i + 1);
            const auto [former, isNew] = keys.emplace(nameOf(paths_[i]), key);
            if (!isNew) {
                plan_.fileProblems.push_back(fmt::format("{}: {}: {} {}",
                                                         text_.PlaceOf("Search", key), paths_[i],
                                                         former->second, reason));
            }
        }
    }

    const ParameterText& text_;
    std::string front_;
    Check check_;
    RunPlan& plan_;
    std::vector<std::string> paths_;
};

/// The second files that a format has by default.
void AddSecondFiles(const ParameterText& text, Vorlan::PepIdentType::EPepIdentType format,
                    RunPlan& plan)
{
    for (std::size_t i = 0; i < plan.parameters.psms.size(); ++i) {
        const ResultFiles files = FilesOf(format, plan.parameters.psms[i]);
        if (files.second.empty()) {
            continue;
        }
        plan.parameters.fileInputs.push_back(files.second);
        try {
            CheckReadable(files.second);
            RefusePacked(files.second);
        } catch (const Failure& failure) {
            const std::string key = fmt::format("pep_ident_filename_{}", i + 1);
            plan.fileProblems.push_back(text.PlaceOf("Search", key) + ": " + failure.what());
            plan.mendable.push_back(plan.fileProblems.back());
        }
    }
}

void AddFiles(const ParameterText& text, const Vorlan::CSearchParam& search, RunPlan& plan)
{
    const bool isDta = search.eDatasetFormat == Vorlan::DatasetType::Dta;
    FileList spectra(text, "dataset_filename", isDta ? CheckDtaFolder : CheckMgf, plan);
    for (const Vorlan::DatasetSource& source : search.vDatasets) {
        spectra.Add(source.strFirst + source.strSecond);
    }
    spectra.RefuseEqualNames();
    plan.parameters.spectra = spectra.Paths();
    FileList results(text, "pep_ident_filename", CheckReadable, plan);
    for (const Vorlan::PepIdentSource& source : search.vPepIdentSources) {
        results.Add(source.strFirst + source.strSecond);
    }
    results.RefuseEqualFiles();
    plan.parameters.psms = results.Paths();
    AddSecondFiles(text, search.ePepIdentFormat, plan);
}

/// The protein database of the command line, else of the file.
void AddProteins(const ParameterText& text, const ProteinChoice& choice, RunPlan& plan)
{
    const Vorlan::CAnnotateParam& annotate = *plan.groups->getAnnotateParam();
    const bool isOfFile = choice.fasta.empty();
    if (isOfFile && !annotate.bAnnotate) {
        return;
    }
    ProteinPlan& proteins = plan.parameters.proteins.emplace();
    proteins.database = isOfFile ? ResolvedPath(annotate.strProteinDatabase) : choice.fasta;
    proteins.equateIl = choice.equateIl;
    if (plan.parameters.fdr) {
        proteins.decoyTag = plan.parameters.fdr->decoyTag;
    }
    plan.parameters.fileInputs.push_back(proteins.database);
    try {
        AuditFasta(proteins.database);
    } catch (const Failure& failure) {
        const std::string place =
            isOfFile ? text.PlaceOf("Annotation", "protein_database") : "--fasta";
        plan.fileProblems.push_back(place + ": " + failure.what());
    }
}

void AddOutput(const ParameterText& text, RunPlan& plan)
{
    Parameters& parameters = plan.parameters;
    parameters.out = ResolvedPath(plan.groups->getOutputPath());
    parameters.outName = fmt::format("\"output\" in {}", text.Path());
    parameters.fileInputs.insert(parameters.fileInputs.end(), {text.Path(), plan.database});
    const std::string place = text.PlaceOf("Output", "output");
    std::error_code ignored;
    if (std::filesystem::exists(parameters.out, ignored)
        && !std::filesystem::is_directory(parameters.out, ignored)) {
        plan.fileProblems.push_back(
            fmt::format("{}: {}: expected a folder, but it is a file", place, parameters.out));
        return;
    }
    try {
        CheckOutput(parameters);
    } catch (const Failure& failure) {
        plan.fileProblems.push_back(place + ": " + failure.what());
    }
}

// ---- Parameters -------------------------------------------------------------

std::optional<FdrPlan> FdrPlanOf(const Vorlan::CFdrControlParam& fdr)
{
    if (!fdr.bFdrControl) {
        return std::nullopt;
    }
    return FdrPlan{fdr.strDecoyTag, fdr.dFdrThreshold, fdr.eFdrMethod, fdr.eTdFdrType};
}

void AddSearch(const Vorlan::CSearchParam& search, RunPlan& plan)
{
    Parameters& parameters = plan.parameters;
    parameters.format = search.ePepIdentFormat;
    parameters.tolerance = {search.dFragmentTol, search.eFragmentTolType};
    parameters.ions = search.eFragMethod == FragMethodType::Etd
                          ? std::vector<Peak::EIonType>{Peak::C_ION, Peak::Z_ION}
                          : std::vector<Peak::EIonType>{Peak::B_ION, Peak::Y_ION};
    parameters.shiftedIons = search.bOpenSearch;
    parameters.lookup = LookupOf({plan.groups, plan.database});
}

} // namespace

LoadedParameters LoadParameters(const ParameterText& text, bool makeTable)
{
    const std::string database =
        StopsBeforeDatabase(text) ? std::string() : CheckDatabase(text, makeTable);
    return {ReadGroups(text, database), database};
}

void WarnOfMasses(const LoadedParameters& loaded)
{
    const Vorlan::CSearchParam& search = *loaded.groups->getSearchParam();
    WarnOfMasses(loaded.database, search.strModificationDatabase.empty()
                                      ? SearchEngineType::CalvexTxt
                                      : search.eSearchEngine);
}

std::shared_ptr<const ModificationLookup> LookupOf(const LoadedParameters& loaded)
{
    const Vorlan::CSearchParam& search = *loaded.groups->getSearchParam();
    return std::make_shared<const ModificationLookup>(search.getSpecifiedMod(), DatabaseOf(search),
                                                      loaded.database);
}

namespace {

/// All but what only a run needs: proteins and output.
RunPlan PlanOf(const ParameterText& text, bool makeTable)
{
    for (const std::string& warning : WarningsOf(text)) {
        spdlog::warn("{}", OneLine(warning));
    }
    RunPlan plan;
    const LoadedParameters loaded = LoadParameters(text, makeTable);
    WarnOfMasses(loaded);
    plan.groups = loaded.groups;
    plan.database = loaded.database;
    CheckOffered(text, *plan.groups);
    plan.parameters.program = "pelgrin run";
    plan.parameters.isRun = true;
    plan.parameters.parameterFile = text.Path();
    plan.parameters.fileKeys = KeysOf(text);
    AddSearch(*plan.groups->getSearchParam(), plan);
    plan.parameters.fdr = FdrPlanOf(*plan.groups->getFdrControlParam());
    plan.parameters.notOffered = NotOffered(text, *plan.groups);
    AddFiles(text, *plan.groups->getSearchParam(), plan);
    return plan;
}

} // namespace

RunPlan ReadRunPlan(const std::string& path, bool makeTable, const ProteinChoice& proteins)
{
    const ParameterText text(path);
    RunPlan plan = PlanOf(text, makeTable);
    AddProteins(text, proteins, plan);
    AddOutput(text, plan);
    return plan;
}

RunPlan ReadJoinPlan(const std::string& path, bool makeTable)
{
    return PlanOf(ParameterText(path), makeTable);
}

void RefuseFileProblems(const RunPlan& plan)
{
    const std::size_t problems = plan.fileProblems.size();
    if (problems > 0) {
        throw Failure(problems == 1 ? plan.fileProblems.front()
                                    : fmt::format("{} (and {} more: see pelgrin params check)",
                                                  plan.fileProblems.front(), problems - 1));
    }
}

} // namespace pelgrin
