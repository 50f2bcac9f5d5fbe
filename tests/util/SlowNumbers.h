// The C library's way with numbers, to compare ours with.
#ifndef VORLAN_TESTS_SLOWNUMBERS_H
#define VORLAN_TESTS_SLOWNUMBERS_H

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include "support/CLocale.h"

namespace Vorlan::test {

/// Equal to the last bit: -0.0 is not 0.0, and a NaN is its like.
inline bool SameBits(double a, double b)
{
    return std::memcmp(&a, &b, sizeof(double)) == 0;
}

inline double DoubleOfBits(std::uint64_t bits)
{
    double value = 0.0;
    std::memcpy(&value, &bits, sizeof(double));
    return value;
}

/// What a variable holds before it is read into.
inline constexpr double kUntouched = -7.125;

struct ScannedOne {
    bool isRead = false;
    double value = kUntouched;
};

struct ScannedTwo {
    double first = kUntouched;
    double second = 2 * kUntouched;
};

inline ScannedOne SlowScanDouble(const std::string& text)
{
    const CLocale plain;
    ScannedOne scanned;
    scanned.isRead = std::sscanf(text.c_str(), "%lf", &scanned.value) == 1;
    return scanned;
}

inline ScannedTwo SlowScanTwoDoubles(const std::string& text)
{
    const CLocale plain;
    ScannedTwo scanned;
    static_cast<void>(std::sscanf(text.c_str(), "%lf%*[ \t]%lf", &scanned.first, &scanned.second));
    return scanned;
}

inline double SlowToDouble(const std::string& text)
{
    const CLocale plain;
    return std::atof(text.c_str());
}

inline std::string SlowPrinted(const char* format, double value)
{
    const CLocale plain;
    char text[400];
    std::snprintf(text, sizeof(text), format, value);
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SLOWNUMBERS_H
