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

} // namespace Vorlan::test

#endif // VORLAN_TESTS_SANITIZED_H
