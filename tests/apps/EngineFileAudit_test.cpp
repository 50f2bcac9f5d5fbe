// The host's look at modification files against the library's readers.
#include "files/EngineFileAudit.h"

#include <OpenMS/CONCEPT/Exception.h>

#include "ModificationDB.h"
#include "common/Failure.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using Vorlan::test::Random;
using Vorlan::test::TempFolder;

bool IsRefusedByLibrary(const std::string& path)
{
    try {
        const Vorlan::CModificationsDBEnginePFind3 database(path);
        return false;
    } catch (const OpenMS::Exception::InvalidParameter&) {
        return true;
    }
}

bool IsRefused(const std::string& path)
{
    try {
        CheckPFind3File(path);
        return false;
    } catch (const Failure&) {
        return true;
    }
}

/// Lines made of the parts that matter to the format.
std::string RandomList(Random& random)
{
    const char* const parts[] = {"name",   "[",     "]",      "](",   "])", "=",  " ",
                                 "NORMAL", "PEP_N", "PRO_CC", "1.5 ", "S",  "\n", "Phospho[S]"};
    const char* const good = "name1=A[S] 0\nA[S]=S NORMAL 1.5 1.5 0 H(1)\n";
    std::string text = random.OneIn(2) ? "@NUMBER_MODIFICATION=2\n" : "";
    for (std::size_t lines = random.Below(4); lines > 0; --lines) {
        std::string pair = good;
        for (std::size_t changes = random.Below(3); changes > 0; --changes) {
            const std::size_t place = random.Below(pair.size());
            pair.replace(place, random.Below(4), parts[random.Below(std::size(parts))]);
        }
        text += pair;
    }
    return text;
}

TEST(CheckPFind3File, RefusesWhatTheLibraryRefuses)
{
    const TempFolder folder;
    Random random(3);
    int refused = 0;
    constexpr int kRounds = 5000;
    for (int round = 0; round < kRounds; ++round) {
        const std::string text = RandomList(random);
        const std::string path = folder.Write("modification.ini", text);
        const bool expected = IsRefusedByLibrary(path);
        ASSERT_EQ(IsRefused(path), expected) << text;
        refused += expected ? 1 : 0;
    }
    EXPECT_GT(refused, kRounds / 20); // both kinds occur
    EXPECT_LT(refused, kRounds - kRounds / 20);
}

} // namespace
} // namespace pelgrin
