// How many files the process holds open.
#ifndef VORLAN_TESTS_OPENFILES_H
#define VORLAN_TESTS_OPENFILES_H

#include <cstddef>
#include <filesystem>
#include <iterator>

namespace Vorlan::test {

/// Always 0 where the system does not tell.
inline std::ptrdiff_t OpenFileCount()
{
    std::error_code missing;
    std::filesystem::directory_iterator files("/proc/self/fd", missing);
    return missing ? 0 : std::distance(files, std::filesystem::directory_iterator());
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_OPENFILES_H
