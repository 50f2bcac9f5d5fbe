// The databases of the search engines and the choice among them.
#include "ModificationDB.h"
#include "moddb/Loading.h"
#include "moddb/MSFraggerModifications.h"
#include "moddb/ModificationDBErrors.h"
#include "moddb/ModificationTable.h"
#include "moddb/PFind3Modifications.h"

namespace Vorlan {

namespace {

CModificationsDBEngine* NewEngine(const std::string& path, SearchEngineType::ESearchEngineType type)
{
    switch (type) {
    case SearchEngineType::Pfind3Spectra: return new CModificationsDBEnginePFind3(path);
    case SearchEngineType::MsFraggerPepXml: return new CModificationsDBEngineMSFragger(path);
    case SearchEngineType::CalvexTxt: return new CModificationsDBEngineCalvex(path);
    default: errors::EngineNotSupported(SearchEngineType::typeToName(type));
    }
}

} // namespace

CModificationsDBEngine* CModificationsDBEngine::dbse_ = nullptr;

CModificationsDBEngine::~CModificationsDBEngine() = default;

CModificationsDBEngine*
CModificationsDBEngine::getInstance(const std::string& path,
                                    const SearchEngineType::ESearchEngineType& type)
{
    // One thread makes it while others wait; where that throws, the next call tries
    // again. Deliberate: B-45
    static CModificationsDBEngine* const instance = dbse_ = NewEngine(path, type);
    return instance;
}

// ---- The library's own table ---------------------------------------------

CModificationsDBEngineCalvex::CModificationsDBEngineCalvex(const std::string& path)
{
    CModificationsDBEngineCalvex::readFromSearchEngineFile(path);
}

CModificationsDBEngineCalvex::~CModificationsDBEngineCalvex() = default;

void CModificationsDBEngineCalvex::readFromSearchEngineFile(const std::string& path)
{
    AddWhatIsRead(
        [&](Records& records) {
            ReadModificationTable(path, "CModificationsDBEngineCalvex::readFromSearchEngineFile",
                                  records);
        },
        [&](Records records) { addModifications_(std::move(records), BY_EVERY_NAME); });
}

// ---- pFind 3 -------------------------------------------------------------

CModificationsDBEnginePFind3::CModificationsDBEnginePFind3(const std::string& path)
{
    CModificationsDBEnginePFind3::readFromSearchEngineFile(path);
}

CModificationsDBEnginePFind3::~CModificationsDBEnginePFind3() = default;

void CModificationsDBEnginePFind3::readFromSearchEngineFile(const std::string& path)
{
    AddWhatIsRead([&](Records& records) { ReadPFind3Modifications(path, records); },
                  [&](Records records) {
                      // Deliberate: B-47. Under the id only.
                      addModifications_(std::move(records), BY_ID);
                  });
}

// ---- MSFragger -----------------------------------------------------------

CModificationsDBEngineMSFragger::CModificationsDBEngineMSFragger(const std::string& path)
{
    CModificationsDBEngineMSFragger::readFromSearchEngineFile(path);
}

CModificationsDBEngineMSFragger::~CModificationsDBEngineMSFragger() = default;

void CModificationsDBEngineMSFragger::readFromSearchEngineFile(const std::string& path)
{
    addModifications_(ReadMSFraggerModifications(path), BY_ID | BY_FULL_ID);
}

} // namespace Vorlan
