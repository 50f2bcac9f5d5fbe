// Whether a build has the address sanitizer: it takes memory, time and descriptors
// of its own.
#ifndef VORLAN_TESTS_SANITIZED_H
#define VORLAN_TESTS_SANITIZED_H

namespace Vorlan::test {

#if defined(__SANITIZE_ADDRESS__) // g++
inline constexpr bool kSanitized = true;
#elif defined(__has_feature)
#if __has_feature(address_sanitizer) // clang++
inline constexpr bool kSanitized = true;
#else
inline constexpr bool kSanitized = false;
#endif
#else
inline constexpr bool kSanitized = false;
#endif

/// Of random comparisons a share is enough for the sanitizers, which take their time:
/// a number of them, or of what they must have met, is divided by this.
inline constexpr int kRandomShare = kSanitized ? 5 : 1;

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SANITIZED_H
