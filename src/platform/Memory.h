// Memory from the system.
#ifndef VORLAN_PLATFORM_MEMORY_H
#define VORLAN_PLATFORM_MEMORY_H

#include <cstddef>

namespace Vorlan::platform {

/// Tells the system that all of [begin, begin + size) is going to be written: it
/// provides the pages at once and not one by one at their first use. Changes
/// nothing else, and nothing at all where the system does not offer it.
void ProvidePages(char* begin, std::size_t size);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_MEMORY_H
