// What a test prints and scans itself is the same in every locale of the host.
#ifndef VORLAN_TESTS_CLOCALE_H
#define VORLAN_TESTS_CLOCALE_H

#include <locale.h>

namespace Vorlan::test {

/// The C library works in the "C" locale for this thread while it lives. Never
/// around a call of what is tested: it must not need that.
class CLocale {
public:
    CLocale() : former_(::uselocale(TheLocale())) {}
    ~CLocale() { ::uselocale(former_); }
    CLocale(const CLocale&) = delete;
    CLocale& operator=(const CLocale&) = delete;

private:
    static locale_t TheLocale()
    {
        static const locale_t locale =
            ::newlocale(LC_ALL_MASK, "C", static_cast<locale_t>(nullptr));
        return locale;
    }

    locale_t former_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_CLOCALE_H
