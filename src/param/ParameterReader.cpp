#include "param/ParameterReader.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "param/ModificationEntry.h"
#include "param/TulkParamErrors.h"
#include "util/Numbers.h"

namespace Vorlan {

// ---- SectionReader -------------------------------------------------------

SectionReader::SectionReader(const InitFile& file, std::string section)
    : file_(file), section_(std::move(section))
{
}

std::string SectionReader::Optional(const std::string& key) const
{
    return file_.Get(section_, key);
}

std::string SectionReader::Required(const std::string& key) const
{
    std::string value = Optional(key);
    if (value.empty()) {
        Missing(key);
    }
    return value;
}

double SectionReader::Number(const std::string& key) const
{
    return numbers::ToDouble(Required(key)); // Deliberate: B-51
}

std::int32_t SectionReader::Count(const std::string& key) const
{
    return numbers::ToInt(Required(key)); // Deliberate: B-51
}

std::string ParameterPlace(const std::string& key, const std::string& section)
{
    return "\"" + key + "\" in section \"" + section + "\"";
}

void SectionReader::Missing(const std::string& key) const
{
    errors::BadParameter("Missing parameter " + ParameterPlace(key, section_));
}

void SectionReader::Invalid(const std::string& key) const
{
    errors::BadParameter("Invalid parameter " + ParameterPlace(key, section_));
}

// ---- Kinds of values -----------------------------------------------------

namespace {

/// A number above zero. What is not a number is not above zero.
double Tolerance(const SectionReader& section, const std::string& key)
{
    const double value = section.Number(key);
    if (!(value > 0.0)) {
        section.Invalid(key);
    }
    return value;
}

TolType::ETolType ToleranceType(const SectionReader& section, const std::string& key)
{
    const std::string value = section.Required(key);
    if (value != "0" && value != "1") {
        section.Invalid(key);
    }
    return TolType::nameToType(value == "0" ? "Da" : "PPM"); // Deliberate: B-83
}

/// A number from 0 to 1.
double Share(const SectionReader& section, const std::string& key)
{
    const double value = section.Number(key);
    if (!(value >= 0.0 && value <= 1.0)) {
        section.Invalid(key);
    }
    return value;
}

/// A number of list entries that is above zero.
std::int32_t EntryCount(const SectionReader& section, const std::string& key)
{
    const std::int32_t count = section.Count(key);
    if (count <= 0) {
        section.Invalid(key);
    }
    return count;
}

/// Folder, with the separator, and file name.
std::pair<std::string, std::string> SplitPath(const SectionReader& section, const std::string& key)
{
    const std::string path = section.Required(key);
    const std::size_t separator = path.find_last_of("/\\");
    if (separator == std::string::npos) {
        section.Invalid(key);
    }
    return {path.substr(0, separator + 1), path.substr(separator + 1)};
}

// ---- Modifications -------------------------------------------------------

/// The record of an entry: of exactly its term specificity, else of any. Null
/// when the database has none.
const CResidueModification* FindModification(const CModificationsDB& database,
                                             const ModificationEntry& entry)
{
    for (const auto specificity :
         {entry.specificity, CResidueModification::NUMBER_OF_TERM_SPECIFICITY}) {
        try {
            return &database.getModification(entry.name, entry.site, specificity);
        } catch (const OpenMS::Exception::ElementNotFound&) {
            return nullptr;
        } catch (const OpenMS::Exception::InvalidValue&) {
            continue;
        }
    }
    return nullptr;
}

IdentModification Modification(const SectionReader& section, const std::string& key,
                               const CModificationsDB& database)
{
    const auto entry = ParseModificationEntry(section.Required(key));
    const CResidueModification* const record = entry ? FindModification(database, *entry) : nullptr;
    if (record == nullptr) {
        section.Invalid(key);
    }
    return {entry->name, record->getDiffMonoMass(), entry->site,
            CResidueModification().getTermSpecificityName(entry->specificity), 0};
}

/// Reads "<name>_number" and "<name>_1", "<name>_2" and so on.
void ReadModifications(const SectionReader& section, const std::string& name,
                       const CModificationsDB& database, std::vector<IdentModification>& mods)
{
    const std::int32_t count = section.Count(name + "_number");
    for (std::int32_t i = 0; i < count; ++i) {
        const std::string key = name + "_" + std::to_string(std::int64_t{i} + 1);
        mods.push_back(Modification(section, key, database));
    }
}

/// MSFragger finds an oxidation of methionine at the start of a protein, too.
/// Deliberate: B-50
void AddOxidationOfProteinStart(CSearchParam& param)
{
    const bool has =
        std::any_of(param.vVarMods.begin(), param.vVarMods.end(), [](const IdentModification& mod) {
            return mod.strName == "Oxidation" && mod.strSite == "M";
        });
    if (param.eSearchEngine == SearchEngineType::MsFraggerPepXml && has) {
        param.vVarMods.emplace_back("Oxidation", 15.994915, "N-term", "Protein N-term", 0);
    }
}

const CModificationsDB& DatabaseOf(const CSearchParam& param)
{
    if (param.strModificationDatabase.empty()) {
        return *CModificationsDBCalvexDefault::getInstance();
    }
    return *CModificationsDBEngine::getInstance(param.strModificationDatabase, param.eSearchEngine);
}

// ---- Parts of the section "Search" ---------------------------------------

void ReadEngine(const SectionReader& section, CSearchParam& param)
{
    param.eSearchEngine = SearchEngineType::nameToType(section.Required("search_result_format"));
    if (param.eSearchEngine == SearchEngineType::Unknown) {
        section.Invalid("search_result_format");
    }
    param.bOpenSearch = section.Optional("open_search") == "1"; // Deliberate: B-84
    if (param.bOpenSearch) {
        constexpr char kType[] = "precursor_matching_tolerance_type";
        param.dPrecursorMatchingTol = Tolerance(section, "precursor_matching_tolerance");
        param.ePrecursorMatchingTolType = ToleranceType(section, kType);
        if (param.ePrecursorMatchingTolType != TolType::Da) {
            section.Invalid(kType); // Deliberate: B-48
        }
    }
}

void ReadTolerances(const SectionReader& section, CSearchParam& param)
{
    const std::string method = section.Optional("fragmentation_method");
    if (!method.empty() && method != "0" && method != "1") {
        section.Invalid("fragmentation_method");
    }
    param.eFragMethod = FragMethodType::nameToType(method == "1" ? "ETD" : "CID/HCD");
    param.dPrecursorTol = Tolerance(section, "precursor_tol");
    param.ePrecursorTolType = ToleranceType(section, "precursor_tol_type");
    param.dFragmentTol = Tolerance(section, "fragment_tol");
    param.eFragmentTolType = ToleranceType(section, "fragment_tol_type");
}

void ReadDatasets(const SectionReader& section, CSearchParam& param)
{
    param.eDatasetFormat = DatasetType::nameToType(section.Required("dataset_format"));
    if (param.eDatasetFormat == DatasetType::Unknown) {
        section.Invalid("dataset_format");
    }
    param.nDatasetNumber = EntryCount(section, "dataset_number");
    for (std::int32_t i = 0; i < param.nDatasetNumber; ++i) {
        const auto [folder, name] =
            SplitPath(section, "dataset_filename_" + std::to_string(std::int64_t{i} + 1));
        param.vDatasets.emplace_back(folder, name, param.eDatasetFormat);
    }
}

void ReadResults(const SectionReader& section, CSearchParam& param)
{
    param.ePepIdentFormat = PepIdentType::nameToType(section.Required("pep_ident_format"));
    if (param.ePepIdentFormat == PepIdentType::Unknown) {
        section.Invalid("pep_ident_format");
    }
    param.nPepIdentNumber = EntryCount(section, "pep_ident_number");
    for (std::int32_t i = 0; i < param.nPepIdentNumber; ++i) {
        const auto [folder, name] =
            SplitPath(section, "pep_ident_filename_" + std::to_string(std::int64_t{i} + 1));
        param.vPepIdentSources.emplace_back(folder, name, param.ePepIdentFormat);
    }
}

} // namespace

// ---- Sections ------------------------------------------------------------

const CModificationsDB& ReadSearch(const InitFile& file, CSearchParam& param)
{
    const SectionReader section(file, "Search");
    ReadEngine(section, param);
    ReadTolerances(section, param);
    param.strModificationDatabase = section.Optional("modification_database");
    const CModificationsDB& database = DatabaseOf(param);
    ReadModifications(section, "fixed_mod", database, param.vFixedMods);
    ReadModifications(section, "var_mod", database, param.vVarMods);
    AddOxidationOfProteinStart(param);
    ReadDatasets(section, param);
    ReadResults(section, param);
    return database;
}

void ReadFdrControl(const InitFile& file, CFdrControlParam& param)
{
    const SectionReader section(file, "Fdr");
    param.bFdrControl = section.Required("is_fdr_control") != "0"; // Deliberate: B-84
    if (!param.bFdrControl) {
        return;
    }
    param.strDecoyTag = section.Required("decoy_tag");
    param.dFdrThreshold = Share(section, "fdr_threshold");
    const std::string method = section.Required("fdr_method");
    if (method != "1" && method != "2" && method != "3") {
        errors::BadParameter("There is no such FDR estimation method.");
    }
    param.eFdrMethod = static_cast<FdrEstimateType::EFdrEstimateType>(numbers::ToInt(method));
    const std::string formula = section.Optional("target_decoy_method");
    if (!formula.empty() && formula != "1" && formula != "2") {
        section.Invalid("target_decoy_method");
    }
    param.eTdFdrType = TdFdrType::nameToType(formula == "2" ? "(decoy+1)/target" : "decoy/target");
}

void ReadLocalize(const InitFile& file, const CModificationsDB& database, CLocalizeParam& param)
{
    const SectionReader section(file, "Localization");
    param.bLocalize = section.Required("is_localized") != "0"; // Deliberate: B-84
    if (!param.bLocalize) {
        return;
    }
    // Deliberate: B-49. A negative number is a very large one.
    param.nMinModNumber = std::max<std::uint64_t>(
        5, static_cast<std::uint64_t>(std::int64_t{section.Count("min_mod_number")}));
    param.bUsePrior = section.Required("use_prior") != "0";
    const std::string filter = section.Required("filter_method");
    if (filter != "0" && filter != "1") {
        section.Invalid("filter_method");
    }
    param.strFilterMethod = filter == "0" ? "probability" : "flr";
    param.dFilterThreshold = Share(section, "filter_threshold");
    ReadModifications(section, "target_mod", database, param.vTargetMods);
}

void ReadAnnotate(const InitFile& file, bool localize, CAnnotateParam& param)
{
    const SectionReader section(file, "Annotation");
    const std::string annotate = section.Required("is_annotated");
    if (annotate != "0" && annotate != "1") {
        section.Invalid("is_annotated");
    }
    param.bAnnotate = annotate == "1";
    if (!param.bAnnotate) {
        return;
    }
    param.strProteinDatabase = section.Required("protein_database");
    if (!localize) {
        errors::BadParameter("Must DO localization before doing annotation.");
    }
}

std::string ReadOutput(const InitFile& file)
{
    return SectionReader(file, "Output").Required("output");
}

} // namespace Vorlan
