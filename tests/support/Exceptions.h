// What an OpenMS exception tells, as a value that tests compare.
#ifndef VORLAN_TESTS_EXCEPTIONS_H
#define VORLAN_TESTS_EXCEPTIONS_H

#include <ostream>
#include <string>

#include <OpenMS/CONCEPT/Exception.h>

namespace Vorlan::test {

/// Everything is empty when nothing was thrown.
struct Thrown {
    std::string name;     ///< the exception class
    std::string file;     ///< the unit
    std::string function; ///< the label
    std::string message;

    bool operator==(const Thrown& other) const
    {
        return name == other.name && file == other.file && function == other.function
               && message == other.message;
    }
};

inline std::ostream& operator<<(std::ostream& out, const Thrown& thrown)
{
    return out << thrown.name << " of " << thrown.file << " in " << thrown.function << ": "
               << thrown.message;
}

/// What a call throws. Other exceptions pass through.
template <typename Call>
Thrown ThrownBy(Call call)
{
    try {
        call();
    } catch (const OpenMS::Exception::BaseException& e) {
        return {e.getName(), e.getFile(), e.getFunction(), e.getMessage()};
    }
    return {};
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_EXCEPTIONS_H
