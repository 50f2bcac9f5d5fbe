#include "mods/ModificationSource.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <set>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "files/EngineFileAudit.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "files/UnimodFile.h"
#include "parameters/ParameterText.h"
#include "parameters/RunParameters.h"
#include "run/Parameters.h"

namespace pelgrin {

using Vorlan::CModificationsDB;
using Vorlan::CResidueModification;
using Vorlan::SearchEngineType;

namespace {

constexpr const char kDefaultTable[] = "unimod.txt";
constexpr SearchEngineType::ESearchEngineType kEngines[] = {SearchEngineType::Pfind3Spectra,
                                                            SearchEngineType::MsFraggerPepXml,
                                                            SearchEngineType::CalvexTxt};

/// "MSFragger (.pepXML)" or its first words, "MSFragger", in any letter case.
SearchEngineType::ESearchEngineType EngineOf(const std::string& name)
{
    for (const auto engine : kEngines) {
        const std::string full = Lower(SearchEngineType::typeToName(engine));
        if (Lower(name) == full || Lower(name) == full.substr(0, full.find(" ("))) {
            return engine;
        }
    }
    throw UsageError(fmt::format("--engine: \"{}\" is not an engine whose modification file can be "
                                 "read; choose from {}",
                                 name, EngineChoices()));
}

/// Runs read; what the library throws becomes a Failure that names path.
template <typename Read>
auto ReadWithPath(const std::string& path, Read read) -> decltype(read())
{
    const LibraryOutput output;
    try {
        return read();
    } catch (const OpenMS::Exception::BaseException& error) {
        throw Failure(fmt::format("{}: {}", path, error.what()));
    }
}

[[noreturn]] void NoDefaultTable()
{
    throw Failure(fmt::format("{}: is not in the working folder; \"pelgrin mods import --out {}\" "
                              "makes it",
                              kDefaultTable, kDefaultTable));
}

void CheckDefaultTable()
{
    if (!std::filesystem::exists(kDefaultTable)) {
        NoDefaultTable();
    }
    CheckModificationTable(kDefaultTable);
    CheckTermSpecificities(kDefaultTable);
    WarnOfMasses(kDefaultTable, SearchEngineType::CalvexTxt);
}

void CheckEngineFile(const std::string& path, SearchEngineType::ESearchEngineType engine)
{
    const std::string resolved = ResolvedPath(path);
    if (engine == SearchEngineType::CalvexTxt) {
        CheckModificationTable(resolved);
        CheckTermSpecificities(resolved);
    } else if (engine == SearchEngineType::Pfind3Spectra) {
        CheckPFind3File(resolved);
    } else {
        CheckReadable(resolved);
        RefusePacked(resolved);
    }
    WarnOfMasses(resolved, engine);
}

const CModificationsDB& OpenDefaultTable()
{
    CheckDefaultTable();
    return ReadWithPath(kDefaultTable, []() -> const CModificationsDB& {
        return *Vorlan::CModificationsDBCalvexDefault::getInstance();
    });
}

const CModificationsDB& OpenEngineFile(const std::string& path,
                                       SearchEngineType::ESearchEngineType engine)
{
    CheckEngineFile(path, engine);
    return ReadWithPath(path, [&]() -> const CModificationsDB& {
        return *Vorlan::CModificationsDBEngine::getInstance(path, engine);
    });
}

/// The database and what to call it.
struct Opened {
    const CModificationsDB* database;
    std::string name;
};

Opened OpenWithoutChoice()
{
    if (std::filesystem::exists(kDefaultTable)) {
        return {&OpenDefaultTable(), kDefaultTable};
    }
    const auto xml = FindUnimodXml();
    if (!xml) {
        throw Failure(fmt::format("no modification database: neither {} in the working folder nor "
                                  "Unimod XML in any of {}; give --unimod, --params or "
                                  "--engine-file",
                                  kDefaultTable, UnimodXmlPlaces()));
    }
    return {&LoadUnimod(*xml), *xml};
}

Opened Open(const DatabaseChoice& choice)
{
    if (!choice.params.empty()) {
        const auto& search = *ReadParameterFile(choice.params).getSearchParam();
        const std::string& path = search.strModificationDatabase;
        return path.empty() ? Opened{&OpenDefaultTable(), kDefaultTable}
                            : Opened{&OpenEngineFile(path, search.eSearchEngine), path};
    }
    if (!choice.engineFile.empty()) {
        const CModificationsDB& database =
            OpenEngineFile(choice.engineFile, EngineOf(choice.engine));
        if (database.getNumberOfModifications() == 0) {
            spdlog::warn("{}: no modifications were found in it; is it a modification file of {}?",
                         OneLine(choice.engineFile), choice.engine);
        }
        return {&database, choice.engineFile};
    }
    if (!choice.unimod.empty()) {
        return {&LoadUnimod(choice.unimod), choice.unimod};
    }
    return OpenWithoutChoice();
}

/// A pFind 3 file registers its records by their ids only (B-47): the full id
/// without what stands in brackets, or up to the first bracket.
std::vector<std::string> PossibleNames(const std::string& fullId)
{
    std::string withoutBrackets;
    bool isInside = false;
    for (const char c : fullId) {
        isInside = c == '[' || (isInside && c != ']');
        if (!isInside && c != ']') {
            withoutBrackets += c;
        }
    }
    return {fullId, withoutBrackets, fullId.substr(0, fullId.find('['))};
}

} // namespace

std::string EngineChoices()
{
    std::string text;
    for (const auto engine : kEngines) {
        text += (text.empty() ? "\"" : ", \"") + SearchEngineType::typeToName(engine) + "\"";
    }
    return text;
}

const Vorlan::CTulkParam& ReadParameterFile(const std::string& path)
{
    const LibraryOutput output;
    return *LoadParameters(ParameterText(path), false).groups;
}

const CModificationsDB& OpenDatabase(const DatabaseChoice& choice)
{
    const Opened opened = Open(choice);
    const std::size_t records = opened.database->getNumberOfModifications();
    spdlog::info("the database is {}, {} record{}", OneLine(opened.name), records,
                 records == 1 ? "" : "s");
    return *opened.database;
}

std::vector<const CResidueModification*> AllRecords(const CModificationsDB& database)
{
    constexpr auto kAny = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
    std::vector<std::string> fullIds;
    database.searchModificationsByDiffMonoMass(fullIds, 0.0,
                                               std::numeric_limits<double>::infinity(), "", kAny);
    // The addresses ascend in the order of the database.
    std::set<const CResidueModification*> records;
    std::set<std::string> asked;
    for (const std::string& fullId : fullIds) {
        if (!asked.insert(fullId).second) {
            continue;
        }
        for (const std::string& name : PossibleNames(fullId)) {
            try {
                std::set<const CResidueModification*> named;
                database.searchModifications(named, name, "", kAny);
                records.insert(named.begin(), named.end());
            } catch (const OpenMS::Exception::ElementNotFound&) {
                continue;
            }
        }
    }
    if (records.size() != database.getNumberOfModifications()) {
        spdlog::warn("{} of {} records cannot be asked for by name and are left out",
                     database.getNumberOfModifications() - records.size(),
                     database.getNumberOfModifications());
    }
    return {records.begin(), records.end()};
}

} // namespace pelgrin
