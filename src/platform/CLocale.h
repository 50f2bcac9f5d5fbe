// The C library's scanning in the "C" locale.
#ifndef VORLAN_PLATFORM_CLOCALE_H
#define VORLAN_PLATFORM_CLOCALE_H

namespace Vorlan::platform {

/// sscanf(text, "%lf", &value) in the "C" locale: 1 when a number was read, else
/// 0 or EOF with value unchanged.
int ScanDoubleInCLocale(const char* text, double& value);

/// sscanf(text, "%lf%*[ \t]%lf", &first, &second) in the "C" locale: how many
/// were read; the others are unchanged.
int ScanTwoDoublesInCLocale(const char* text, double& first, double& second);

/// atof(text) in the "C" locale.
double ToDoubleInCLocale(const char* text);

} // namespace Vorlan::platform

#endif // VORLAN_PLATFORM_CLOCALE_H
