// The fields of a record: their types, and the order in which they stand.
#ifndef VORLAN_TESTS_FIELDS_H
#define VORLAN_TESTS_FIELDS_H

#include <algorithm>
#include <functional>
#include <type_traits>

namespace Vorlan::test {

/// Fields<std::string, double>::StandInOrder(r.strName, r.dMass) compiles for
/// fields of just these types, and is true when each stands behind the one
/// before it.
template <typename... Types>
struct Fields {
    template <typename... Actual>
    static bool StandInOrder(const Actual&... fields)
    {
        static_assert(sizeof...(Types) == sizeof...(Actual), "a field without its type");
        static_assert((std::is_same_v<Types, Actual> && ...), "a field of another type");
        const void* const places[] = {&fields...};
        return std::adjacent_find(std::begin(places), std::end(places), std::greater_equal<>())
               == std::end(places);
    }
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_FIELDS_H
