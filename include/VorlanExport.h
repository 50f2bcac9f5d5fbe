// Marks the public classes of PelgrinDLL. The library is built with hidden
// symbols; only what carries VORLAN_API can be linked against.
#ifndef VORLAN_EXPORT_H
#define VORLAN_EXPORT_H

/// \def VORLAN_API
/// Stands in front of the name of a public class.
#if defined(_WIN32)
#if defined(VORLAN_BUILDING)
#define VORLAN_API __declspec(dllexport)
#else
#define VORLAN_API __declspec(dllimport)
#endif
#else
#define VORLAN_API __attribute__((visibility("default")))
#endif

#endif // VORLAN_EXPORT_H
