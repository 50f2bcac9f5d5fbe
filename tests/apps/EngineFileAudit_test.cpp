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

TEST(WarningOfMasses, NamesTheFirstThatIsReadInPartAndCountsTheOthers)
{
    using Vorlan::SearchEngineType;
    struct Case {
        const char* reason;
        SearchEngineType::ESearchEngineType engine;
        std::string text;
        std::string warning; ///< behind the path; empty: none
    };
    const std::string header =
        "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
        "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";
    const auto row = [](const std::string& mono, const std::string& loss) {
        return "O\tO (M)\t\tO\tAnywhere\tM\t-\t" + mono + "\t15.9994\t" + loss + "\t0\n";
    };
    const std::string comma = ": \"15,994915\" is read as 15; expected a mass with a decimal point";
    const std::string fragger = "variable_mod_01 = 15.9949 M 3 # 1,2\nadd_C_cysteine = +57.02\n";
    for (const Case& one : std::vector<Case>{
             {"a table", SearchEngineType::CalvexTxt,
              header + row("15.994915", "") + row("1e1", "0"), ""},
             {"a table with commas", SearchEngineType::CalvexTxt,
              header + row("15.994915", "0") + "\n" + row("15,994915", "x"),
              ":4: diff_mono_mass" + comma + " (2 such masses in the file)"},
             {"a pFind list", SearchEngineType::Pfind3Spectra,
              "name1=O[M] 0\nO[M]=M NORMAL 15.994915 15.9 0 O(1)\n", ""},
             {"a pFind list with commas", SearchEngineType::Pfind3Spectra,
              "@NUMBER_MODIFICATION=1\nname1=O[M] 0\nO[M]=M NORMAL 15,994915 15.9 0 O(1)\n",
              ":3: O[M]" + comma},
             {"parameters of MSFragger", SearchEngineType::MsFraggerPepXml, fragger, ""},
             {"parameters of MSFragger with commas", SearchEngineType::MsFraggerPepXml,
              fragger + "variable_mod_02 = 15,994915 M 3\nadd_C_cysteine = 15,994915 # C\n",
              ":3: variable_mod_02" + comma + " (2 such masses in the file)"},
             {"tabs in parameters of MSFragger", SearchEngineType::MsFraggerPepXml,
              fragger
                  + "variable_mod_02 = 15.9949\tM\t3\nvariable_mod_03 =\n"
                    "variable_mod_07 = 0.0 site_07 1\n",
              ":3: variable_mod_02: \"15.9949\tM\t3\" makes no modification; expected a mass, one "
              "blank and sites"},
             {"two blanks in parameters of MSFragger", SearchEngineType::MsFraggerPepXml,
              "variable_mod_01 = 15.9949  M 3\n",
              ":1: variable_mod_01: \"15.9949  M 3\" makes no modification; expected a mass, one "
              "blank and sites"},
             {"two blanks in a pFind list", SearchEngineType::Pfind3Spectra,
              "name1=A[C] 0\nA[C]=C NORMAL  57.02 57.0 0 H(1)\n",
              ":2: A[C]: \"\" is read as 0; expected a mass with a decimal point"},
             {"a table without a mass", SearchEngineType::CalvexTxt, header + row("", ""),
              ":2: diff_mono_mass: \"\" is read as 0; expected a mass with a decimal point"},
         }) {
        SCOPED_TRACE(one.reason);
        const TempFolder folder;
        const std::string path = folder.Write("file", one.text);
        EXPECT_EQ(WarningOfMasses(path, one.engine).value_or(""),
                  one.warning.empty() ? "" : path + one.warning);
    }
}

} // namespace
} // namespace pelgrin
