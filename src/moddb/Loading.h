// A load that fails keeps what it has read.
#ifndef VORLAN_MODDB_LOADING_H
#define VORLAN_MODDB_LOADING_H

#include <exception>
#include <utility>
#include <vector>

#include "ModificationDB.h"

namespace Vorlan {

/// Calls read(records), which appends to records, then add(records), also where
/// read throws; what it threw goes on.
template <typename Read, typename Add>
void AddWhatIsRead(Read read, Add add)
{
    std::vector<CResidueModification> records;
    std::exception_ptr failure;
    try {
        read(records);
    } catch (...) {
        failure = std::current_exception();
    }
    add(std::move(records));
    if (failure != nullptr) {
        std::rethrow_exception(failure);
    }
}

} // namespace Vorlan

#endif // VORLAN_MODDB_LOADING_H
