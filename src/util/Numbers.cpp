#include "util/Numbers.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <limits>

#include "platform/CLocale.h"
#include "util/PlainNumbers.h"

namespace Vorlan::numbers {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// What the C library passes over in front of a number.
bool IsSpace(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

/// Where a plain decimal may end without a doubt about what belongs to it.
bool EndsNumber(const char* p, const char* end)
{
    return p == end || *p == ' ' || *p == '\t' || *p == '\r';
}

/// digits[.digits] at the front of a text, as an integer without the point.
struct Digits {
    const char* stop = nullptr;  ///< behind them
    std::uint64_t mantissa = 0;  ///< modulo 2^64
    std::ptrdiff_t count = 0;    ///< of all digits
    std::ptrdiff_t fraction = 0; ///< of those behind the point

    double Value() const { return static_cast<double>(mantissa) / kPowersOfTen[fraction]; }
};

const char* AppendDigits(const char* p, const char* end, std::uint64_t& mantissa)
{
    while (p < end && IsDigit(*p)) {
        mantissa = 10 * mantissa + static_cast<unsigned>(*p++ - '0');
    }
    return p;
}

/// A point counts only behind a digit.
Digits ReadDigits(const char* const begin, const char* const end)
{
    Digits digits;
    digits.stop = AppendDigits(begin, end, digits.mantissa);
    digits.count = digits.stop - begin;
    if (digits.count > 0 && digits.stop < end && *digits.stop == '.') {
        const char* const behindPoint = digits.stop + 1;
        digits.stop = AppendDigits(behindPoint, end, digits.mantissa);
        digits.fraction = digits.stop - behindPoint;
        digits.count += digits.fraction;
    }
    return digits;
}

/// Reads digits[.digits][e[sign]digits] that ends for certain. Gives the place
/// behind it, or null for everything else.
///
/// Up to 19 digits make an exact integer. One below 2^53 divided by an exact
/// power of ten is rounded once, as the C library rounds; the others go to
/// from_chars, which rounds correctly, too.
const char* QuickDecimal(const char* const begin, const char* const end, double& value)
{
    const Digits digits = ReadDigits(begin, end);
    if (digits.count == 0) {
        return nullptr;
    }
    if (EndsNumber(digits.stop, end) && digits.count <= 19 && digits.mantissa < kExactLimit) {
        value = digits.Value();
        return digits.stop;
    }
    double exact = 0.0;
    const auto [stop, error] = std::from_chars(begin, end, exact);
    if (error != std::errc() || !EndsNumber(stop, end)) {
        return nullptr;
    }
    value = exact;
    return stop;
}

const char* SkipSpace(const char* p, const char* end)
{
    while (p < end && IsSpace(*p)) {
        ++p;
    }
    return p;
}

const char* SkipBlanksAndTabs(const char* p, const char* end)
{
    while (p < end && (*p == ' ' || *p == '\t')) {
        ++p;
    }
    return p;
}

const char* SkipDigits(const char* p, const char* end)
{
    while (p < end && IsDigit(*p)) {
        ++p;
    }
    return p;
}

const char* SkipSign(const char* p, const char* end)
{
    return p < end && (*p == '-' || *p == '+') ? p + 1 : p;
}

/// The end of what a stream takes for a decimal from begin on, or null when it
/// is none: no digits, or none behind an "e".
const char* EndOfStreamDecimal(const char* begin, const char* end)
{
    const char* const whole = SkipSign(begin, end);
    const char* p = SkipDigits(whole, end);
    std::ptrdiff_t digits = p - whole;
    if (p < end && *p == '.') {
        const char* const fraction = p + 1;
        p = SkipDigits(fraction, end);
        digits += p - fraction;
    }
    if (digits == 0) {
        return nullptr;
    }
    if (p == end || (*p != 'e' && *p != 'E')) {
        return p;
    }
    const char* const exponent = SkipSign(p + 1, end);
    p = SkipDigits(exponent, end);
    return p > exponent ? p : nullptr;
}

template <typename... Format>
void AppendChars(std::string& text, double value, Format... format)
{
    char digits[512]; // the longest text of a double with 6 decimals has 317
    const auto end = std::to_chars(digits, std::end(digits), value, format...).ptr;
    text.append(digits, end);
}

} // namespace

bool ScanDouble(std::string_view text, double& value)
{
    const char* const end = text.data() + text.size();
    if (QuickDecimal(text.data(), end, value) != nullptr) {
        return true;
    }
    return platform::ScanDoubleInCLocale(std::string(text).c_str(), value) == 1;
}

bool ScanInt(std::string_view text, std::int32_t& value)
{
    constexpr std::int64_t kTop = std::numeric_limits<std::int32_t>::max();
    const char* const end = text.data() + text.size();
    const char* p = SkipSpace(text.data(), end);
    const bool negative = p < end && *p == '-';
    if (p < end && (*p == '-' || *p == '+')) {
        ++p;
    }
    if (p == end || !IsDigit(*p)) {
        return false;
    }
    std::int64_t magnitude = 0;
    for (; p < end && IsDigit(*p); ++p) {
        magnitude = std::min(10 * magnitude + (*p - '0'), kTop + 1);
    }
    value = static_cast<std::int32_t>(negative ? -magnitude : std::min(magnitude, kTop));
    return true;
}

std::int32_t ToInt(std::string_view text)
{
    std::int32_t value = 0;
    ScanInt(text, value);
    return value;
}

double ToDouble(std::string_view text)
{
    double value = 0.0;
    if (QuickDecimal(text.data(), text.data() + text.size(), value) != nullptr) {
        return value;
    }
    return platform::ToDoubleInCLocale(std::string(text).c_str());
}

void ScanTwoDoubles(std::string_view text, double& first, double& second)
{
    const char* const end = text.data() + text.size();
    double quickFirst = 0.0;
    double quickSecond = 0.0;
    const char* const gap = QuickDecimal(text.data(), end, quickFirst);
    if (gap != nullptr) {
        const char* const next = SkipBlanksAndTabs(gap, end);
        if (next > gap && QuickDecimal(next, end, quickSecond) != nullptr) {
            first = quickFirst;
            second = quickSecond;
            return;
        }
    }
    platform::ScanTwoDoublesInCLocale(std::string(text).c_str(), first, second);
}

bool TakeDouble(std::string_view& text, double& value)
{
    const char* const end = text.data() + text.size();
    const char* const begin = SkipSpace(text.data(), end);
    const char* stop = QuickDecimal(begin, end, value);
    if (stop == nullptr) {
        stop = EndOfStreamDecimal(begin, end);
        double slow = 0.0;
        if (stop == nullptr || !ScanDouble({begin, static_cast<std::size_t>(stop - begin)}, slow)
            || std::isinf(slow)) {
            return false;
        }
        value = slow;
    }
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return true;
}

bool TakeUnsigned(std::string_view& text, std::uint64_t& value)
{
    constexpr std::uint64_t kTop = std::numeric_limits<std::uint64_t>::max();
    const char* const end = text.data() + text.size();
    const char* const begin = SkipSpace(text.data(), end);
    const char* const digits = SkipSign(begin, end);
    const char* const stop = SkipDigits(digits, end);
    if (stop == digits) {
        return false;
    }
    std::uint64_t magnitude = 0;
    for (const char* p = digits; p < stop; ++p) {
        const auto digit = static_cast<unsigned>(*p - '0');
        if (magnitude > (kTop - digit) / 10) {
            return false;
        }
        magnitude = 10 * magnitude + digit;
    }
    value = *begin == '-' ? ~magnitude + 1 : magnitude;
    text.remove_prefix(static_cast<std::size_t>(stop - text.data()));
    return true;
}

void TakeTwoDoubles(std::string_view text, double& first, double& second)
{
    if (TakeDouble(text, first)) {
        TakeDouble(text, second);
    }
}

bool ReadPlainInt(std::string_view text, std::int32_t& value)
{
    const char* const end = text.data() + text.size();
    const bool negative = !text.empty() && text.front() == '-';
    const char* const begin = text.data() + (negative ? 1 : 0);
    std::uint64_t mantissa = 0;
    if (begin == end || end - begin > kPlainIntDigits
        || AppendDigits(begin, end, mantissa) != end) {
        return false;
    }
    const auto magnitude = static_cast<std::int32_t>(mantissa);
    value = negative ? -magnitude : magnitude;
    return true;
}

bool ReadPlainDouble(std::string_view text, double& value)
{
    const char* const end = text.data() + text.size();
    const bool negative = !text.empty() && text.front() == '-';
    const Digits digits = ReadDigits(text.data() + (negative ? 1 : 0), end);
    if (digits.stop != end || digits.count == 0 || digits.count > kPlainDoubleDigits) {
        return false;
    }
    value = negative ? -digits.Value() : digits.Value();
    return true;
}

void AppendFixed6(std::string& text, double value)
{
    AppendChars(text, value, std::chars_format::fixed, 6);
}

void AppendScientific5(std::string& text, double value)
{
    AppendChars(text, value, std::chars_format::scientific, 5);
}

void AppendGeneral(std::string& text, double value)
{
    AppendChars(text, value, std::chars_format::general, 6);
}

} // namespace Vorlan::numbers
