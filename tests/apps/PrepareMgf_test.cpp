// Copies of MGF files: what the library reads of the file, and of its copy.
#include <algorithm>
#include <filesystem>
#include <map>
#include <set>
#include <string>
#include <utility>
#include <vector>

#include <fmt/format.h>
#include <gmock/gmock.h>

#include "SpectraIO.h"
#include "files/MgfNames.h"
#include "prepare/Preparation.h"
#include "support/Random.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

/// "503.5 2+ 60s #7: 100/1 200/2" of the spectrum of a name; empty when there is none.
std::string SpectrumOf(const std::string& path, const std::string& name,
                       const std::string& loadedBefore = "")
{
    Vorlan::DatasetIOPool pool;
    const std::filesystem::path whole = std::filesystem::absolute(path);
    const std::string dataset = whole.filename().string();
    std::vector<Vorlan::DatasetSource> sources;
    sources.emplace_back(whole.parent_path().string(), dataset, Vorlan::DatasetType::Mgf);
    Vorlan::test::OutputOf([&] { pool.InitLoad(sources); });
    std::vector<Vorlan::Spectrum> spectra;
    if (!loadedBefore.empty()) {
        pool.bLoadOneSpectrum(dataset, loadedBefore, spectra);
    }
    spectra.clear();
    if (!pool.bHasSpectrum(dataset, name) || !pool.bLoadOneSpectrum(dataset, name, spectra)) {
        return {};
    }
    const Vorlan::Spectrum& spectrum = spectra.back();
    std::string text = fmt::format("{} {}+ {}s #{}:", spectrum.dPrecursorMz, spectrum.nCharge,
                                   spectrum.dRetentionTime, spectrum.nScan);
    for (const Vorlan::Peak& peak : spectrum.vPeaks) {
        text += fmt::format(" {}/{}", peak.dMz, peak.dIntensity);
    }
    return text;
}

/// A folder with run.mgf, and its copy in "out".
class MgfPlace {
public:
    explicit MgfPlace(const std::string& text)
        : path_(folder_.Write("run.mgf", text)), preparation_(folder_.PathOf("out"))
    {
        preparation_.Add(path_, FileKind::Mgf);
        preparation_.Run();
        preparation_.WriteReports();
    }

    const std::string& Path() const { return path_; }
    std::string CopyPath() const { return folder_.PathOf("out/run.mgf"); }
    std::string CopyText() const { return ReadFile(CopyPath()); }
    const Copy& Counts() const { return preparation_.Copies().front(); }
    std::uint64_t Changed(const std::string& key) const
    {
        const auto tally = Counts().changes.find(key);
        return tally == Counts().changes.end() ? 0 : tally->second.count;
    }
    std::vector<std::string> Titles() const
    {
        std::vector<std::string> titles;
        const std::string text = CopyText();
        for (std::size_t hit = text.find("TITLE="); hit != std::string::npos;
             hit = text.find("\nTITLE=", hit + 1)) {
            const std::size_t begin = text.find('=', hit) + 1;
            titles.push_back(text.substr(begin, text.find('\n', begin) - begin));
        }
        return titles;
    }

private:
    TempFolder folder_;
    std::string path_;
    Preparation preparation_;
};

std::string Record(const std::string& head, const std::string& peaks = "100 1\n200 2\n")
{
    return "BEGIN IONS\n" + head + peaks + "END IONS\n";
}

const std::string kFirst =
    Record("TITLE=run.1.1.2 File:\"run\", NativeID:\"scan=1\"\nPEPMASS=400.5\nCHARGE=2+\n"
           "RTINSECONDS=60\nSCANS=1\n");
const std::string kNul(1, '\0');
const std::string kFirstSpectrum = "400.5 2+ 60s #1: 100/1 200/2";

TEST(PrepareMgf, WhatTheLibraryMisreadsIsReadRightInTheCopy)
{
    struct Case {
        const char* reason;
        std::string text;
        std::string name;   ///< of a record, in file and copy
        std::string before; ///< what the library reads of the file
        std::string after;  ///< and of the copy
    };
    const std::string head = "PEPMASS=500.5\nCHARGE=3+\nRTINSECONDS=70\nSCANS=2\n";
    const std::string right = "500.5 3+ 70s #2: 100/1 200/2";
    const std::string title = "TITLE=run.2.2.3 File:\"run\", NativeID:\"scan=2\"\n";
    const std::string good = title + head;
    for (const Case& one : std::vector<Case>{
             {"a header value that is missing is not inherited",
              kFirst + Record(title + "PEPMASS=500.5\n"), "run.2.2.3",
              "500.5 2+ 60s #1: 100/1 200/2", "500.5 0+ 0s #2: 100/1 200/2"},
             {"a value that is no number is not inherited",
              kFirst + Record(title + "PEPMASS=x\nCHARGE=?\nRTINSECONDS=-\nSCANS=2\n"), "run.2.2.3",
              "400.5 2+ 60s #2: 100/1 200/2", "0 0+ 0s #2: 100/1 200/2"},
             {"a list of charges is unknown",
              kFirst + Record(title + "PEPMASS=500.5\nCHARGE=2+ and 3+\nRTINSECONDS=70\nSCANS=2\n"),
              "run.2.2.3", "500.5 2+ 70s #2: 100/1 200/2", "500.5 0+ 70s #2: 100/1 200/2"},
             {"a charge of the file is that of its records",
              "CHARGE=3+\n" + Record(title + "PEPMASS=500.5\n"), "run.2.2.3",
              "500.5 0+ 0s #0: 100/1 200/2", "500.5 3+ 0s #0: 100/1 200/2"},
             {"a blank line repeats no peak", Record(good, "100 1\n\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: 100/1 100/1 200/2", right},
             {"a comment repeats no peak", Record(good, "100 1\n# 5\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: 100/1 100/1 200/2", right},
             {"a broken line repeats no number", Record(good, "100 1\n150 x\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: 100/1 150/1 200/2", right},
             {"numbers of any form are numbers",
              Record(good, "100 1\n+150 1e-400\n0x10 7\n-5 3\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: 100/1 150/0 16/7 -5/3 200/2",
              "500.5 3+ 70s #2: 100/1 150/0 16/7 -5/3 200/2"},
             {"what is not finite is no peak",
              Record(good, "1e999 9\n100 1\nnan 5\ninf 7\n150 infinity\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: inf/9 100/1 nan/5 inf/7 150/inf 200/2", right},
             {"a scan number with a sign is one",
              Record(title + "PEPMASS=500.5\nCHARGE=+3\nRTINSECONDS=70\nSCANS=+7\n"), "run.2.2.3",
              "500.5 3+ 70s #7: 100/1 200/2", "500.5 3+ 70s #7: 100/1 200/2"},
             {"peaks behind a blank are peaks", Record(good, "  100 1\n200 2\n"), "run.2.2.3",
              "500.5 3+ 70s #2: 200/2", right},
             {"keys in lower case are keys",
              Record("TITLE=run.2.2.3 File:\"run\", NativeID:\"scan=2\"\npepmass = 500.5\n"
                     "Charge=3+\nRTINSECONDS=70\nSCANS=2\n"),
              "run.2.2.3", "0 0+ 70s #2: 100/1 200/2", right},
             {"a record without peaks takes none of the next one",
              Record("TITLE=empty\n", "") + Record(good), "run.2.2.3", right, right},
             {"a name of a record without peaks is gone",
              Record("TITLE=empty\n", "") + Record(good), "empty", right, ""},
             {"a record without END IONS ends", kFirst.substr(0, kFirst.size() - 9) + Record(good),
              "run.1.1.2",
              "400.5 2+ 60s #1: 100/1 200/2 200/2 200/2 200/2 200/2 200/2 200/2 100/1 200/2",
              kFirstSpectrum},
             {"a byte order mark hides no record", "\xEF\xBB\xBF" + Record(good), "run.2.2.3", "",
              right},
             {"a record without title gets one", Record(head), "run.2.2.3", "", right},
             {"a title behind a blank is a title", Record(" " + good), "run.2.2.3", "", right},
             {"a scan number keeps its last digit", Record("TITLE=raw scan=1405\n" + head), "1405",
              "", right},
             {"a scan number behind which FileConverter writes is found",
              Record("TITLE=500.5_70_scan=1405_run\n" + head), "1405", "", right},
             {"a scan number without scan= is found", Record("TITLE=run.1405.1405.3\n" + head),
              "1405", "", right},
             {"a line that begins with B begins no record", Record(good + "BASEPEAK=1\n") + kFirst,
              "run.2.2.3", right, right},
         }) {
        SCOPED_TRACE(one.reason);
        const MgfPlace place(one.text);
        const std::string before = one.text.find("TITLE=run.1.1") == 0 ? "" : "run.1.1.2";
        const bool hasFirst =
            one.text.find("run.1.1.2") != std::string::npos && one.name != "run.1.1.2";
        EXPECT_EQ(SpectrumOf(place.Path(), one.name, hasFirst ? before : ""), one.before);
        EXPECT_EQ(SpectrumOf(place.CopyPath(), one.name, hasFirst ? before : ""), one.after);
    }
}

TEST(PrepareMgf, EveryRecordGetsTitlesWithNamesOfItsOwn)
{
    struct Case {
        const char* reason;
        std::vector<std::string> heads;
        std::vector<std::string> titles;
    };
    const std::string good = "run.7.7.2 File:\"run\", NativeID:\"scan=7\"";
    const auto titled = [](const std::string& title) { return "TITLE=" + title + "\n"; };
    for (const Case& one : std::vector<Case>{
             {"a good title stays", {titled(good)}, {good}},
             {"a good title with a controller stays",
              {titled(
                  "r.7.7.2 File:\"\", NativeID:\"controllerType=0 controllerNumber=1 scan=7\"")},
              {"r.7.7.2 File:\"\", NativeID:\"controllerType=0 controllerNumber=1 scan=7\""}},
             {"a title of one word is the first word",
              {titled("x.7.7.2.0.dta"), titled("spectrum")},
              {"x.7.7.2.0.dta File:\"run\", NativeID:\"scan=7\"",
               "spectrum File:\"run\", NativeID:\"scan=2\""}},
             {"ThermoRawFileParser",
              {titled("controllerType=0 controllerNumber=1 scan=36") + "CHARGE=2+\n"},
              {"run.36.36.2 File:\"run\", Title:\"controllerType=0 controllerNumber=1 scan:36\", "
               "NativeID:\"scan=36\""}},
             {"Bruker",
              {titled("Cmpd 636, +MSn(730.4), 66.9 min") + "CHARGE=2+\n"},
              {"run.636.636.2 File:\"run\", Title:\"Cmpd 636, +MSn(730.4), 66.9 min\", "
               "NativeID:\"scan=636\""}},
             {"SCANS comes before a compound's number",
              {titled("Cmpd 636, x") + "SCANS=9\n"},
              {"run.9.9. File:\"run\", Title:\"Cmpd 636, x\", NativeID:\"scan=9\""}},
             {"SCANS=-1 is none",
              {titled("a b") + "SCANS=-1\n"},
              {"run.1.1. File:\"run\", Title:\"a b\", NativeID:\"scan=1\""}},
             {"no title at all", {"CHARGE=3+\n"}, {"run.1.1.3 File:\"run\", NativeID:\"scan=1\""}},
             {"one scan with two charges is nobody's scan name",
              {titled("a scan=5") + "CHARGE=2+\n", titled("b scan=5") + "CHARGE=3+\n"},
              {"run.5.5.2 File:\"run\", Title:\"a scan:5\"",
               "run.5.5.3 File:\"run\", Title:\"b scan:5\""}},
             {"one scan and charge twice",
              {titled("a scan=5") + "CHARGE=2+\n", titled("b scan=5") + "CHARGE=2+\n"},
              {"run-1.5.5.2 File:\"run\", Title:\"a scan:5\"",
               "run-2.5.5.2 File:\"run\", Title:\"b scan:5\""}},
             {"one title twice",
              {titled(good), titled(good)},
              {"run-1.7.7. File:\"run\", Title:\"run.7.7.2 File:'run', NativeID:'scan:7'\"",
               "run-2.7.7. File:\"run\", Title:\"run.7.7.2 File:'run', NativeID:'scan:7'\""}},
             {"a title that is the scan number of another record",
              {titled("2"), titled("x")},
              {"run.1.1. File:\"run\", Title:\"2\", NativeID:\"scan=1\"",
               "x File:\"run\", NativeID:\"scan=2\""}},
         }) {
        SCOPED_TRACE(one.reason);
        std::string text;
        for (const std::string& head : one.heads) {
            text += Record(head);
        }
        EXPECT_EQ(MgfPlace(text).Titles(), one.titles);
    }
}

TEST(PrepareMgf, RecordsThatCannotBeMendedAreLeftOutAndCounted)
{
    const std::string longLine(90'000, '1');
    const MgfPlace place(kFirst + Record("TITLE=a\n", "") + Record("TITLE=b\n", "100,5 1\n")
                         + Record("TITLE=c\n", "100 1\n" + longLine + "\n")
                         + Record("TITLE=d\nPEPMASS=500,25\n") + "BEGIN IONS\n"
                         + Record("TITLE=e\nPEPMASS=500" + kNul + "25\n")
                         + Record("TITLE=f\n", "100 1\n200 2" + kNul + "\n"));
    const Copy& copy = place.Counts();
    EXPECT_EQ(copy.held, 8U);
    EXPECT_EQ(copy.written, 1U);
    EXPECT_EQ(place.CopyText(), kFirst);
    std::map<std::string, std::pair<std::uint64_t, std::uint64_t>> left;
    for (const auto& [key, tally] : copy.leftOut) {
        left[key] = {tally.count, tally.firstLine};
    }
    const decltype(left) expected = {{"without_peaks", {2, 10}},
                                     {"decimal_comma", {2, 13}},
                                     {"long_line", {1, 17}},
                                     {"nul_byte", {2, 29}}};
    EXPECT_EQ(left, expected);
}

TEST(PrepareMgf, ARecordThatIsLeftOutHandsItsNamesToNobody)
{
    const std::string comma = "100,5 1\n";
    const MgfPlace place(Record("TITLE=x\nSCANS=8\n", comma) + Record("TITLE=x\nSCANS=9\n")
                         + Record("TITLE=a.5.5.2\n", comma) + Record("TITLE=a.5.5.3\n")
                         + Record("TITLE=a.7.7.2\n", "") + Record("TITLE=a.7.7.2\n"));
    EXPECT_THAT(place.Titles(),
                ElementsAre("run.9.9. File:\"run\", Title:\"x\", NativeID:\"scan=9\"",
                            "a.5.5.3 File:\"run\"", "a.7.7.2 File:\"run\", NativeID:\"scan=7\""));
    EXPECT_EQ(place.Counts().leftOut.size(), 2U);
    EXPECT_EQ(MgfPlace(place.CopyText()).CopyText(), place.CopyText());
}

TEST(PrepareMgf, OnlyNamesAreTakenFromTheTwinOfARecordThatIsLeftOut)
{
    struct Case {
        const char* reason;
        std::string lost; ///< the head of a record
        std::string kept;
        std::string title; ///< of that in the copy
    };
    for (const Case& one : std::vector<Case>{
             {"merged runs", "TITLE=a.2.2.2\n", "TITLE=b.2.2.2\n", "b.2.2.2 File:\"run\""},
             {"the name of an engine for both", "TITLE=x\nSCANS=2\nCHARGE=2+\n",
              "TITLE=run.2.2.2\nCHARGE=2+\n", "run-2.2.2.2 File:\"run\", Title:\"run.2.2.2\""},
             {"another charge", "TITLE=x\nSCANS=2\nCHARGE=3+\n", "TITLE=run.2.2.2\nCHARGE=2+\n",
              "run.2.2.2 File:\"run\""},
             {"a charge that is not known", "TITLE=x\nSCANS=2\n", "TITLE=run.2.2.2\nCHARGE=2+\n",
              "run-2.2.2.2 File:\"run\", Title:\"run.2.2.2\""},
             {"a name without its charge", "TITLE=a.2.2.2\n", "TITLE=a.2.2.\n",
              "run-2.2.2. File:\"run\", Title:\"a.2.2.\""},
             {"the scan number alone", "TITLE=x\nSCANS=2\n", "TITLE=2 y\nSCANS=2\n",
              "run-2.2.2. File:\"run\", Title:\"2 y\""},
         }) {
        SCOPED_TRACE(one.reason);
        const MgfPlace place(Record(one.lost, "150,5 3\n") + Record(one.kept));
        EXPECT_THAT(place.Titles(), ElementsAre(one.title));
        EXPECT_EQ(MgfPlace(place.CopyText()).CopyText(), place.CopyText());
    }
    std::string sameScan;
    for (int i = 0; i < 5; ++i) {
        sameScan += Record("TITLE=spec_" + std::to_string(i) + "\nSCANS=1\n",
                           i == 3 ? "150,5 3\n" : "150 3\n");
    }
    EXPECT_EQ(MgfPlace(sameScan).Counts().written, 4U);
}

TEST(PrepareMgf, ANulCostsNoMoreThanTheLibraryReads)
{
    const MgfPlace place(Record("TITLE=x" + kNul + "y\nCOM=a" + kNul + "b\n" + kNul + kNul + "\n")
                         + "BEGIN IONS\nTITLE=z\n100 1\n" + kNul + " \nEND IONS" + kNul + "\n");
    EXPECT_TRUE(place.Counts().leftOut.empty());
    EXPECT_EQ(place.Changed("nul_cut"), 3U);
    EXPECT_EQ(place.Changed("blank_line"), 2U);
    EXPECT_EQ(place.CopyText(),
              Record("TITLE=x File:\"run\", NativeID:\"scan=1\"\nCOM=a\n")
                  + Record("TITLE=z File:\"run\", NativeID:\"scan=2\"\n", "100 1\n"));
    std::string text;
    for (const char* const key : {"PEPMASS", "CHARGE", "RTINSECONDS", "SCANS"}) {
        text += Record(std::string(key) + "=2" + kNul + "5\n");
    }
    text += Record("#a=" + kNul + "b\n", "100" + kNul + "=5\n100 1\n");
    text += Record(kNul + "PEPMASS=500\n") + Record("PEPMASS" + kNul + "=500\n");
    EXPECT_EQ(MgfPlace(text).Counts().leftOut.at("nul_byte").count, 7U);
}

TEST(PrepareMgf, SignsStandBeforeValuesAlone)
{
    EXPECT_THAT(MgfPlace(Record("TITLE=a\n") + Record("TITLE=b scan +1 c\nSCANS=+7\n")).Titles(),
                ElementsAre("a File:\"run\", NativeID:\"scan=1\"",
                            "run.7.7. File:\"run\", Title:\"b scan +1 c\", NativeID:\"scan=7\""));
}

TEST(PrepareMgf, OddNamesAndKeysMakeNoLine)
{
    const MgfPlace place(Record("TITLE=x\n\r=5\n =6\n"));
    EXPECT_EQ(place.Changed("line_no_header"), 2U);
    EXPECT_EQ(place.CopyText(), Record("TITLE=x File:\"run\", NativeID:\"scan=1\"\n"));
    const TempFolder folder;
    Preparation preparation(folder.PathOf("out"));
    preparation.Add(folder.Write("a\nb\tc.mgf", Record("CHARGE=2+\n")));
    preparation.Run();
    EXPECT_EQ(ReadFile(folder.PathOf("out/a\nb\tc.mgf")),
              Record("TITLE=a_b_c.1.1.2 File:\"a_b_c\", NativeID:\"scan=1\"\nCHARGE=2+\n"));
}

TEST(PrepareMgf, BytesOfPeaksStay)
{
    const MgfPlace place(Record("TITLE=x\n", "100.10000000000001\t1e3 \t 1+ \n"
                                             "200.2   007.50\n300 1E-2 2\n"));
    EXPECT_THAT(place.CopyText(), HasSubstr("\n100.10000000000001\t1e3 \t 1+ \n200.2   007.50\n"
                                            "300 1E-2 2\nEND IONS\n"));
}

std::string RandomMgf(Vorlan::test::Random& random)
{
    const std::vector<std::string> titles = {"a",
                                             "7",
                                             "a.5.1",
                                             "a.05.1",
                                             "run.5.5.2",
                                             "run.05.05.2",
                                             "x scan=5",
                                             "x scan=5 y",
                                             "index=0",
                                             "Cmpd 5, x",
                                             "",
                                             "run-1.5.5.2 File:\"run\"",
                                             " scan=",
                                             "scan=7",
                                             "x Scan 7",
                                             "run.5.5.2 File:\"run\", NativeID:\"scan=5\"",
                                             "run.5.5. \"scan=5\"",
                                             "y scan=8"};
    const std::vector<std::string> others = {"TITLE=second",  "PEPMASS=500.5 3",
                                             "PEPMASS=",      "CHARGE=2+",
                                             "CHARGE=2+,3+",  "charge=3",
                                             "SCANS=5",       "SCANS=-1",
                                             "SCANS=5-7",     "SCANS=7",
                                             "SCANS=8",       " 200 1",
                                             "RTINSECONDS=1", "300",
                                             "1,5 2",         "",
                                             "# x",           "BASE=1",
                                             "garbage",       "TOL=1",
                                             "EX=1",          "END IONS",
                                             "begin ions "};
    std::string text;
    const auto line = [&](const std::string& content) {
        text += content + (random.OneIn(9) ? "\r\n" : "\n");
    };
    for (std::size_t records = random.Below(9); records > 0; --records) {
        line("BEGIN IONS");
        if (!random.OneIn(6)) {
            line("TITLE=" + titles[random.Below(titles.size())]);
        }
        for (std::size_t more = random.Below(4); more > 0; --more) {
            line(others[random.Below(others.size())]);
        }
        line("100.5 3");
        line(random.OneIn(4) ? others[random.Below(others.size())] : "200.5 1");
        if (!random.OneIn(9)) {
            line("END IONS");
        }
    }
    return text;
}

TEST(PrepareMgf, CopiesOfAnyFileHaveOwnNamesAndAreTheirOwnCopies)
{
    Vorlan::test::Random random(20'240);
    std::uint64_t written = 0;
    for (int i = 0; i < 150; ++i) {
        const std::string text = RandomMgf(random);
        SCOPED_TRACE(text);
        const MgfPlace place(text);
        std::set<std::string> all;
        std::size_t names = 0;
        for (const std::string& title : place.Titles()) {
            const MgfNames known = NamesOf("TITLE=" + title);
            std::set<std::string> own;
            for (std::size_t kind = 0; kind < kNameKinds; ++kind) {
                own.insert(known.names[kind]);
                own.erase("");
            }
            names += own.size();
            all.insert(own.begin(), own.end());
        }
        EXPECT_EQ(names, all.size()) << place.CopyText();
        EXPECT_EQ(place.Titles().size(), place.Counts().written);
        EXPECT_EQ(MgfPlace(place.CopyText()).CopyText(), place.CopyText());
        written += place.Counts().written;
    }
    EXPECT_GT(written, 300U);
}

} // namespace
} // namespace pelgrin
