// Memory from the system.
#ifndef VORLAN_PLATFORM_MEMORY_H
#define VORLAN_PLATFORM_MEMORY_H

#include <algorithm>
#include <cstddef>

namespace Vorlan::platform {

/// Tells the system that all of [begin, begin + size) is going to be written: it
/// provides the pages at once and not one by one at their first use. Changes
/// nothing else, and nothing at all where the system does not offer it.
void ProvidePages(char* begin, std::size_t size);

/// Provides the pages of a list that grows by its end, into room that was reserved,
/// a good way ahead of what is written: one by one, each at its first use, they take
/// longer than all reading.
class PagesAhead {
public:
    /// list, a vector or a string, is going to get so many more elements. Changes
    /// nothing that anybody sees.
    template <typename List>
    void Reach(List& list, std::size_t more)
    {
        constexpr std::size_t kSize = sizeof(typename List::value_type);
        const std::size_t room = list.capacity() * kSize;
        const std::size_t wanted = std::min((list.size() + more) * kSize, room);
        if (provided_ < wanted) {
            Provide(reinterpret_cast<char*>(list.data()), room, wanted);
        }
    }

private:
    void Provide(char* begin, std::size_t room, std::size_t wanted);

    std::size_t provided_ = 0; ///< so many bytes have their pages
};

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_MEMORY_H
