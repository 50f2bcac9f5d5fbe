// The one place that reads and writes numbers.
//
// Reading follows the C library's rules in the "C" locale, whatever locale the
// host has set. Plain decimals ("405.25", "1e5") take a quick path with the
// same result; anything else goes to the C library itself.
// Held by tests/util/Numbers_test.cpp, which compares both on random texts.
#ifndef VORLAN_UTIL_NUMBERS_H
#define VORLAN_UTIL_NUMBERS_H

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace Vorlan::numbers {

/// As sscanf(text, "%lf", &value) == 1; value is unchanged on false.
bool ScanDouble(std::string_view text, double& value);

/// As sscanf(text, "%d", &value) == 1, but a number beyond 32 bits becomes the
/// nearest one of them; value is unchanged on false.
bool ScanInt(std::string_view text, std::int32_t& value);

/// As atoi(text), with the same care for numbers beyond 32 bits.
std::int32_t ToInt(std::string_view text);

/// As atof(text): 0 when there is no number. A text ends at its first NUL.
double ToDouble(std::string_view text);

/// As sscanf(text, "%lf%*[ \t]%lf", &first, &second): a number that cannot be
/// read leaves its variable unchanged, and the second one is not read without
/// the first.
void ScanTwoDoubles(std::string_view text, double& first, double& second);

/// As `stream >> value` on a stream over text in the classic locale: white space
/// is passed over, and the longest text that looks like a decimal is taken, which
/// knows no "inf", no "nan" and no "0x". value is unchanged, and what text is then
/// left open, on false; a number too large for a double gives false, too.
bool TakeDouble(std::string_view& text, double& value);

/// The same for an unsigned number: "-1" is 2^64 - 1, as a stream has it.
bool TakeUnsigned(std::string_view& text, std::uint64_t& value);

/// As `stream >> first >> second`, likewise; the second one is not read without
/// the first.
void TakeTwoDoubles(std::string_view text, double& first, double& second);

/// Digits that fit into 32 bits, and those that a double holds without rounding.
inline constexpr std::ptrdiff_t kPlainIntDigits = 9;
inline constexpr std::ptrdiff_t kPlainDoubleDigits = 15;

/// Reads a text that is all [-]digits, or all [-]digits[.[digits]], of so many digits
/// at most: every parser that is worth its name gives the same for it, to the last
/// bit. False for any other text, which may be a number; value is unchanged then.
bool ReadPlainInt(std::string_view text, std::int32_t& value);
bool ReadPlainDouble(std::string_view text, double& value);

/// Appends value as printf("%.6f") writes it in the "C" locale.
void AppendFixed6(std::string& text, double value);

/// Appends value as printf("%.5e") writes it in the "C" locale.
void AppendScientific5(std::string& text, double value);

/// Appends value as printf("%g") writes it in the "C" locale, the default form
/// of a stream.
void AppendGeneral(std::string& text, double value);

} // namespace Vorlan::numbers

#endif // VORLAN_UTIL_NUMBERS_H
