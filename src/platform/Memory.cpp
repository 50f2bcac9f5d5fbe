#include "platform/Memory.h"

#include <algorithm>
#include <cstdint>

#include <sys/mman.h>
#include <unistd.h>

namespace Vorlan::platform {

void ProvidePages(char* begin, std::size_t size)
{
#ifdef MADV_POPULATE_WRITE
    const auto page = static_cast<std::size_t>(::sysconf(_SC_PAGESIZE));
    const std::size_t skipped = (page - reinterpret_cast<std::uintptr_t>(begin) % page) % page;
    const std::size_t whole = skipped < size ? (size - skipped) / page * page : 0;
    if (whole > 0) {
        ::madvise(begin + skipped, whole, MADV_POPULATE_WRITE);
    }
#else
    static_cast<void>(begin);
    static_cast<void>(size);
#endif
}

void PagesAhead::Provide(char* begin, std::size_t room, std::size_t wanted)
{
    constexpr std::size_t kAhead = std::size_t{4} << 20;
    const std::size_t goal = wanted + std::min(kAhead, room - wanted);
    ProvidePages(begin + provided_, goal - provided_);
    provided_ = goal;
}

} // namespace Vorlan::platform
