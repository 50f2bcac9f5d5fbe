#include "ModificationDB.h"
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
    if (dbpd_ == nullptr) {
        dbpd_ = new CModificationsDBCalvexDefault("unimod.txt");
    }
    return dbpd_;
}

void CModificationsDBCalvexDefault::readFromUnimodTXTFile(const std::string& path)
{
    addModifications_(
        ReadModificationTable(path, "CModificationsDBCalvexDefault::readFromUnimodTXTFile"),
        BY_ID | BY_FULL_ID | BY_FULL_NAME | BY_ACCESSION);
}

} // namespace Vorlan
