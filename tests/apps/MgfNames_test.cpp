#include "files/MgfNames.h"

#include <set>
#include <string>
#include <vector>

#include <gmock/gmock.h>

#include "SpectraIO.h"
#include "support/Random.h"
#include "support/Support.h"

using namespace pelgrin;

namespace {

/// The names under which the library iterates over one record of this title line.
std::set<std::string> NamesInLibrary(const std::string& titleLine)
{
    const Vorlan::test::TempFolder folder;
    Vorlan::MgfIO reader;
    reader.InitLoad(folder.Write("one.mgf", "BEGIN IONS\n" + titleLine + "\n1 1\nEND IONS\n"));
    std::vector<Vorlan::Spectrum> spectra;
    std::set<std::string> names;
    while (reader.bLoadNextSpectrum(spectra)) {
        names.insert(spectra.back().strTitle);
    }
    return names;
}

std::set<std::string> NamesOfHost(const std::string& titleLine)
{
    const MgfNames names = NamesOf(titleLine);
    std::set<std::string> all;
    for (std::size_t i = 0; i < kNameKinds; ++i) {
        if (names.has[i]) {
            all.insert(names.names[i]);
        }
    }
    return all;
}

} // namespace

TEST(MgfNames, TellEachNameByItsKind)
{
    const MgfNames names =
        NamesOf("TITLE=run01.1405.1405.2 File:\"run01.raw\", NativeID:\"scan=1405\"");
    EXPECT_EQ(names.Of(NameKind::Title),
              "run01.1405.1405.2 File:\"run01.raw\", NativeID:\"scan=1405\"");
    EXPECT_EQ(names.Of(NameKind::FirstWord), "run01.1405.1405.2");
    EXPECT_EQ(names.Of(NameKind::Dotted), "run01.01405.01405.2");
    EXPECT_EQ(names.Of(NameKind::Scan), "1405");
    EXPECT_FALSE(names.scanIsCut);
}

TEST(MgfNames, SeeTheDigitThatAScanNameLost)
{
    EXPECT_EQ(NamesOf("TITLE=a scan=1405").Of(NameKind::Scan), "140");
    EXPECT_TRUE(NamesOf("TITLE=a scan=1405").scanIsCut);
    EXPECT_TRUE(NamesOf("TITLE=scan=1405  ").scanIsCut) << "blanks behind the title are no part";
    EXPECT_FALSE(NamesOf("TITLE=scan=1405_run").scanIsCut);
    EXPECT_FALSE(NamesOf("TITLE=run").scanIsCut);
}

TEST(MgfNames, AreThoseOfTheLibrary)
{
    const std::vector<std::string> pieces = {"run",
                                             ".",
                                             "..",
                                             "1405",
                                             "01405",
                                             " ",
                                             "scan=",
                                             "\"",
                                             "NativeID:\"scan=7\"",
                                             "_",
                                             "dta",
                                             "-12",
                                             "2",
                                             "x",
                                             ", ",
                                             "\t",
                                             "99999999999",
                                             "Cmpd 12",
                                             "TITLE=",
                                             "="};
    Vorlan::test::Random random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string line = round % 9 == 0 ? "T" : "TITLE=";
        for (std::uint64_t i = random.Below(9); i > 0; --i) {
            line += pieces[random.Below(pieces.size())];
        }
        ASSERT_EQ(NamesOfHost(line), NamesInLibrary(line)) << "[" << line << "]";
    }
}
