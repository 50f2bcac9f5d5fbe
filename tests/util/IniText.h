// Parameter files as texts: loaded from one, written into one, random ones.
#ifndef VORLAN_TESTS_INITEXT_H
#define VORLAN_TESTS_INITEXT_H

#include <string>
#include <string_view>

#include "InitFile.h"
#include "support/Exceptions.h"
#include "support/Random.h"
#include "support/Support.h"

namespace Vorlan::test {

/// What Display prints.
inline std::string TextOf(const InitFile& file)
{
    return OutputOf([&file] { file.Display(); });
}

/// A parameter file that was loaded, and what happened then.
struct Loaded {
    explicit Loaded(const std::string& text, const std::string& symbols = "#")
        : Loaded(TempFolder(), text, symbols)
    {
    }

    /// The file is written into folder.
    Loaded(const TempFolder& folder, const std::string& text, const std::string& symbols)
    {
        file.SetSymbol(symbols);
        const std::string path = folder.Write("run.ini", text);
        printed = OutputOf([&] { thrown = ThrownBy([&] { file.Load(path); }); });
    }

    InitFile file;
    Thrown thrown;
    std::string printed;
};

/// Lines of parameter files, whole and spoiled.
inline std::string RandomIni(Random& random)
{
    constexpr std::string_view kLines[] = {
        "[S]",    " [ T ] ", "[]",        "[a=b]", "[S] # note", "a=1",   " b = 2 # note", "=",
        "a =",    "= x y",   "# a",       "",      " \t",        "c=;d",  "k/=v",          "d=[1]",
        "[x]=[y", "a=1\r",   "\xE4=\xF6", "a = b", "[S]",        "e\t=1", "f=1;2#3",       "[T]"};
    constexpr std::size_t kCount = sizeof kLines / sizeof kLines[0];
    std::string text = random.OneIn(20) ? "" : "[S]\n";
    for (std::size_t lines = random.Below(12); lines > 0; --lines) {
        std::string line(kLines[random.Below(kCount)]);
        if (random.OneIn(12)) {
            const std::size_t place = random.Below(line.size() + 1);
            line.insert(place, 1, random.OneOf("=[]#; \r\nx"));
        }
        text += line + (random.OneIn(8) ? "\r\n" : "\n");
    }
    return text;
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_INITEXT_H
