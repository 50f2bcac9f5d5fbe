// The DTA reader and its plain twin over thousands of random files: the same
// fields to the last bit.
#include <algorithm>
#include <string>
#include <vector>

#include "spectra/DtaProbe.h"
#include "spectra/PlainDta.h"
#include "support/Sanitized.h"
#include "util/RandomNumbers.h"
#include "util/StreamTwin.h"

namespace Vorlan::test {
namespace {

std::string RandomLine(Random& random)
{
    switch (random.Below(12)) {
    case 0: return RandomStreamText(random);
    case 1: return random.Text("0123456789 .", random.Below(10));
    case 2: return random.OneIn(3) ? "" : random.Text(" \t", 1);
    case 3: return random.Text("100 7@x,", random.Below(6));
    default: return RandomNumberLine(random);
    }
}

/// Mostly a usual file, with mistakes thrown in; "@" stands for a NUL.
std::string RandomDta(Random& random)
{
    const std::string lineEnd = random.OneIn(4) ? "\r\n" : "\n";
    std::string text = random.OneIn(20) ? "\xEF\xBB\xBF" : "";
    text += random.OneIn(4) ? RandomLine(random)
                            : RandomNumber(random) + " " + random.Text("0123-+", 1);
    for (std::size_t peaks = random.Below(10); peaks > 0; --peaks) {
        text += lineEnd + RandomLine(random);
    }
    text += random.OneIn(5) ? "" : lineEnd;
    std::replace(text.begin(), text.end(), '@', '\0');
    if (!text.empty() && random.OneIn(8)) {
        text.resize(random.Below(text.size()));
    }
    return text;
}

TEST(DtaTwin, AgreesOnRandomFiles)
{
    Random random(51);
    const DtaFolder folder;
    DtaProbe reader;
    reader.Folder() = folder.Path() + "\\";
    std::size_t peaks = 0;
    for (int round = 0; round < 10000 / kRandomShare; ++round) {
        const std::string text = RandomDta(random);
        std::filesystem::remove(folder.PathOf("a.dta")); // new files are quicker
        folder.Write("a.dta", text);
        std::vector<Spectrum> spectra;
        ASSERT_TRUE(reader.bLoadOneSpectrum("a.dta", spectra));
        const Spectrum twin = PlainDta(folder.PathOf("a.dta")).Load(folder.Path() + "\\", "a.dta");
        ASSERT_EQ(ExactDump(spectra.at(0)), ExactDump(twin)) << testing::PrintToString(text);
        peaks += twin.vPeaks.size();
    }
    EXPECT_GT(peaks, 20000u / kRandomShare) << "the random files hold hardly any peaks";
}

TEST(DtaTwin, AgreesOnAFolderInOrder)
{
    Random random(52);
    DtaFolder folder;
    std::vector<std::string> names;
    for (int i = 0; i < 200; ++i) {
        names.push_back(std::to_string(random.Bits()) + (random.OneIn(2) ? ".dta" : ".DTA"));
        folder.Write(names.back(), RandomDta(random));
    }
    std::sort(names.begin(), names.end());
    DtaIO reader;
    reader.InitLoad(folder.Path());
    std::vector<Spectrum> spectra;
    ASSERT_EQ(reader.tLoadAllSpectra(spectra), names.size());
    for (std::size_t i = 0; i < names.size(); ++i) {
        PlainDta twin(folder.PathOf(names[i]));
        EXPECT_EQ(ExactDump(spectra[i]), ExactDump(twin.Load(folder.Path() + "\\", names[i])));
    }
}

TEST(DtaTwin, AgreesOnLinesAroundTheLimit)
{
    const DtaFolder folder;
    DtaProbe reader;
    reader.Folder() = folder.Path() + "\\";
    for (const std::size_t length :
         {8191u, 8192u, 65536u, 81917u, 81918u, 81919u, 81920u, 81921u, 163840u, 262144u}) {
        for (const std::string end : {"\n", "\r\n", "\r\r\n", ""}) {
            const std::string filled = "1 2" + std::string(length - 3, ' ') + end;
            for (const std::string& text : {filled + "3 4\n5 6", "400 1\n" + filled + "3 4\n5 6"}) {
                folder.Write("a.dta", text);
                std::vector<Spectrum> spectra;
                ASSERT_TRUE(reader.bLoadOneSpectrum("a.dta", spectra));
                PlainDta twin(folder.PathOf("a.dta"));
                EXPECT_EQ(ExactDump(spectra.at(0)),
                          ExactDump(twin.Load(folder.Path() + "\\", "a.dta")))
                    << length << testing::PrintToString(end);
            }
        }
    }
}

} // namespace
} // namespace Vorlan::test
