#include "ModificationDB.h"
#include "moddb/Loading.h"
#include "moddb/ModificationTable.h"

namespace Vorlan {

CModificationsDBCalvexDefault* CModificationsDBCalvexDefault::dbpd_ = nullptr;

CModificationsDBCalvexDefault::CModificationsDBCalvexDefault(const std::string& path)
{
    readFromUnimodTXTFile(path);
}

CModificationsDBCalvexDefault::~CModificationsDBCalvexDefault() = default;

CModificationsDBCalvexDefault* CModificationsDBCalvexDefault::getInstance()
{
    // One thread makes it while others wait; where that throws, the next call tries
    // again.
    static CModificationsDBCalvexDefault* const instance = dbpd_ =
        new CModificationsDBCalvexDefault("unimod.txt");
    return instance;
}

void CModificationsDBCalvexDefault::readFromUnimodTXTFile(const std::string& path)
{
    AddWhatIsRead(
        [&](Records& records) {
            ReadModificationTable(path, "CModificationsDBCalvexDefault::readFromUnimodTXTFile",
                                  records);
        },
        [&](Records records) { addModifications_(std::move(records), BY_EVERY_NAME); });
}

} // namespace Vorlan
