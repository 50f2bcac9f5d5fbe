// Whether a build has the address sanitizer: it takes memory, time and descriptors
// of its own.
#ifndef VORLAN_TESTS_SANITIZED_H
#define VORLAN_TESTS_SANITIZED_H

#if defined(__SANITIZE_ADDRESS__) // g++
#define PELGRIN_SANITIZED 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) // clang++
#define PELGRIN_SANITIZED 1
#endif
#endif
#ifndef PELGRIN_SANITIZED
#define PELGRIN_SANITIZED 0
#endif

namespace Vorlan::test {

inline constexpr bool kSanitized = PELGRIN_SANITIZED != 0;

/// Of random comparisons a share is enough for the sanitizers, which take their time:
/// a number of them, or of what they must have met, is divided by this.
inline constexpr int kRandomShare = kSanitized ? 5 : 1;

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SANITIZED_H
