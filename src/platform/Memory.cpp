#include "platform/Memory.h"

#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace Vorlan::platform {

void ProvidePages(char* begin, std::size_t size)
{
#ifdef MADV_POPULATE_WRITE
    const auto page = static_cast<std::uintptr_t>(::sysconf(_SC_PAGESIZE));
    const auto address = reinterpret_cast<std::uintptr_t>(begin);
    const std::uintptr_t first = (address + page - 1) / page * page;
    const std::uintptr_t last = (address + size) / page * page;
    if (first < last) {
        ::madvise(reinterpret_cast<void*>(first), last - first, MADV_POPULATE_WRITE);
    }
#else
    static_cast<void>(begin);
    static_cast<void>(size);
#endif
}

} // namespace Vorlan::platform
