// Lines of two plain decimals, which most lines of a file of spectra are, without
// a step for each character.
//
// The idea: one comparison of 32 bytes tells all places that are no digits, and with
// them the two numbers and the end of the line. Digits become an integer eight at a
// time. Nothing here branches on how long a number is, which differs from line to
// line and cannot be foreseen. Held by NumbersTwin.PlainLinesAgreeWithScans.
#ifndef VORLAN_UTIL_PLAINNUMBERS_H
#define VORLAN_UTIL_PLAINNUMBERS_H

#include <cstddef>
#include <cstdint>
#include <cstring>

#ifdef __SSE2__
#include <emmintrin.h>
#endif

namespace Vorlan::numbers {

/// An integer below kExactLimit divided by one of these is rounded once, as the C
/// library rounds.
inline constexpr double kPowersOfTen[] = {1e0,  1e1,  1e2,  1e3,  1e4,  1e5,  1e6,  1e7,
                                          1e8,  1e9,  1e10, 1e11, 1e12, 1e13, 1e14, 1e15,
                                          1e16, 1e17, 1e18, 1e19, 1e20, 1e21, 1e22};
inline constexpr std::uint64_t kExactLimit = std::uint64_t{1} << 53;

/// Whether TakePlainLine knows any line as plain: it needs the instructions that every
/// x86-64 processor has.
#ifdef __SSE2__
inline constexpr bool kKnowsPlainLines = true;
#else
inline constexpr bool kKnowsPlainLines = false;
#endif

/// TakePlainLine may look at so many bytes from the start of a line on, whatever
/// stands in them.
inline constexpr std::size_t kPlainLineReach = 40;

#ifdef __SSE2__

namespace plain {

inline constexpr std::size_t kMostDigits = 16; // of a number; they make an integer

inline std::uint64_t IntegerPowerOfTen(std::size_t exponent)
{
    return static_cast<std::uint64_t>(kPowersOfTen[exponent]);
}

/// Bit i tells that text[i] is no digit; 32 of them.
inline std::uint32_t NonDigits(const char* text)
{
    const auto sixteen = [](const char* from) {
        const __m128i bytes = _mm_loadu_si128(reinterpret_cast<const __m128i*>(from));
        const __m128i digits = _mm_sub_epi8(bytes, _mm_set1_epi8('0'));
        const __m128i above = _mm_cmpeq_epi8(_mm_max_epu8(digits, _mm_set1_epi8(10)), digits);
        return static_cast<std::uint32_t>(_mm_movemask_epi8(above));
    };
    return sixteen(text) | sixteen(text + 16) << 16;
}

inline std::uint64_t EightBytes(const char* text)
{
    std::uint64_t word = 0;
    std::memcpy(&word, text, sizeof word);
    return word;
}

/// The value of the first count digits of a word, 1 to 8 of them. Its bytes stand
/// in it from the lowest on, so the digits move up and noughts in below them; then
/// neighbours are joined: pairs, fours, all eight.
inline std::uint64_t UpToEightDigits(std::uint64_t word, std::size_t count)
{
    word = word << (64 - 8 * count) & 0x0F0F0F0F0F0F0F0F;
    word = word * (1 + (10 << 8)) >> 8 & 0x00FF00FF00FF00FF;
    word = word * (1 + (100 << 16)) >> 16 & 0x0000FFFF0000FFFF;
    return word * (1 + (std::uint64_t{10000} << 32)) >> 32;
}

/// The value of the first count digits of text, 1 to kMostDigits of them.
inline std::uint64_t Digits(const char* text, std::size_t count)
{
    if (count <= 8) {
        return UpToEightDigits(EightBytes(text), count);
    }
    return UpToEightDigits(EightBytes(text), count - 8) * IntegerPowerOfTen(8)
           + UpToEightDigits(EightBytes(text + count - 8), 8);
}

/// The same for whole digits, a point and fraction digits, at least one of each.
inline std::uint64_t DigitsAroundPoint(const char* text, std::size_t whole, std::size_t fraction)
{
    if (whole + fraction <= 8) {
        const std::uint64_t front = (std::uint64_t{1} << 8 * whole) - 1;
        const std::uint64_t word = (EightBytes(text) & front) | (EightBytes(text + 1) & ~front);
        return UpToEightDigits(word, whole + fraction);
    }
    return Digits(text, whole) * IntegerPowerOfTen(fraction) + Digits(text + whole + 1, fraction);
}

/// A walk over the numbers of a line, from one character that is no digit to the next.
struct Walk {
    const char* line = nullptr;
    std::uint32_t nonDigits = 0; ///< those not met yet
    std::size_t place = 0;       ///< where the walk stands in line

    /// Goes to the next character that is no digit and gives how many digits stand
    /// before it; 0 also when the 32 bytes hold none.
    std::size_t PassDigits()
    {
        if (nonDigits == 0) {
            return 0;
        }
        const std::size_t begin = place;
        place = static_cast<unsigned>(__builtin_ctz(nonDigits));
        nonDigits &= nonDigits - 1;
        return place - begin;
    }

    /// digits[.digits]; false for anything else, and for what is not exact.
    bool TakeDecimal(double& value)
    {
        const char* const begin = line + place;
        const std::size_t whole = PassDigits();
        std::size_t fraction = 0;
        if (Here() == '.') {
            ++place;
            fraction = PassDigits();
            if (fraction == 0) {
                return false;
            }
        }
        if (whole == 0 || whole + fraction > kMostDigits) {
            return false;
        }
        const std::uint64_t mantissa =
            fraction == 0 ? Digits(begin, whole) : DigitsAroundPoint(begin, whole, fraction);
        value = static_cast<double>(static_cast<std::int64_t>(mantissa)) / kPowersOfTen[fraction];
        return mantissa < kExactLimit;
    }

    char Here() const { return line[place]; }
};

} // namespace plain

/// Reads two plain decimals, a blank or tab between them, that a line feed ends, with
/// or without a carriage return in front of it. Gives the place behind the line
/// feed, or null for any other line, which may be good and leaves both values open.
/// kPlainLineReach bytes stand from line on.
inline const char* TakePlainLine(const char* line, double& first, double& second)
{
    plain::Walk walk{line, plain::NonDigits(line)};
    if (!walk.TakeDecimal(first) || (walk.Here() != ' ' && walk.Here() != '\t')) {
        return nullptr;
    }
    ++walk.place;
    if (!walk.TakeDecimal(second)) {
        return nullptr;
    }
    const char* const end = line + walk.place + (walk.Here() == '\r' ? 1 : 0);
    return *end == '\n' ? end + 1 : nullptr;
}

#else

inline const char* TakePlainLine(const char*, double&, double&)
{
    return nullptr;
}

#endif

} // namespace Vorlan::numbers

#endif // VORLAN_UTIL_PLAINNUMBERS_H
