#include "platform/CLocale.h"

#include <clocale>
#include <cstdio>
#include <cstdlib>

// POSIX: newlocale and uselocale are not in <clocale>.
#include <locale.h> // NOLINT(modernize-deprecated-headers)

namespace Vorlan::platform {

namespace {

/// Sets the calling thread's locale to "C" while it lives.
class CLocaleScope {
public:
    CLocaleScope() : former_(::uselocale(CLocale())) {}
    ~CLocaleScope() { ::uselocale(former_); }
    CLocaleScope(const CLocaleScope&) = delete;
    CLocaleScope& operator=(const CLocaleScope&) = delete;

private:
    static locale_t CLocale()
    {
        // Made once and kept; the "C" locale exists on every system.
        static const locale_t locale =
            ::newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
        return locale;
    }

    locale_t former_;
};

} // namespace

int ScanDoubleInCLocale(const char* text, double& value)
{
    const CLocaleScope scope;
    return std::sscanf(text, "%lf", &value);
}

int ScanTwoDoublesInCLocale(const char* text, double& first, double& second)
{
    const CLocaleScope scope;
    return std::sscanf(text, "%lf%*[ \t]%lf", &first, &second);
}

double ToDoubleInCLocale(const char* text)
{
    const CLocaleScope scope;
    return std::strtod(text, nullptr);
}

} // namespace Vorlan::platform
