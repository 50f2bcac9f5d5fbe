// The host's own look at DTA folders, names of spectra, and what is no spectra.
#include "files/DtaAudit.h"

#include "common/Failure.h"
#include "files/SpectraSource.h"
#include "run/DottedName.h"
#include "run/DtaNames.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Vorlan::test::Repeat;
using Vorlan::test::TempFolder;

/// The text of the Failure that call throws; empty without one.
template <typename Call>
std::string FailureOf(Call call)
{
    try {
        call();
    } catch (const Failure& failure) {
        return failure.what();
    }
    return {};
}

// ---- DtaAudit -----------------------------------------------------------------

TEST(DtaAudit, ListsFilesAsTheLibraryDoes)
{
    const TempFolder folder;
    for (const char* const name :
         {"b.dta", "a.DTA", "B.dta", ".dta", "run.dta.txt", "dta", "xdta"}) {
        folder.Write(name, "");
    }
    std::filesystem::create_directory(folder.PathOf("sub.dta"));
    std::filesystem::create_directory_symlink(folder.PathOf("sub.dta"), folder.PathOf("link.dta"));
    std::filesystem::create_symlink("nowhere", folder.PathOf("dangling.dta"));
    EXPECT_THAT(DtaFileNames(folder.Path()),
                ElementsAre(".dta", "B.dta", "a.DTA", "b.dta", "dangling.dta"));
    EXPECT_EQ(FailureOf([&] { DtaFileNames(folder.PathOf("none")); }),
              folder.PathOf("none") + ": cannot be read: No such file or directory");
}

/// "without precursor", "behind empty line at 3, without peaks": what the audit
/// says of one file.
std::string VerdictOn(const std::string& bytes)
{
    const TempFolder folder;
    folder.Write("a.dta", bytes);
    const DtaAudit audit = AuditDta(folder.Path());
    EXPECT_THAT(audit.names, ElementsAre("a.dta"));
    std::string verdict;
    const auto add = [&verdict](const std::string& text) {
        verdict += (verdict.empty() ? "" : ", ") + text;
    };
    for (const auto& [flaw, name] :
         {std::pair<const DtaAudit::Flaw*, const char*>{&audit.behindEmptyLine, "behind empty"},
          {&audit.longLine, "long"},
          {&audit.unreadableNumbers, "unreadable"}}) {
        if (flaw->count > 0) {
            EXPECT_EQ(flaw->firstFile, "a.dta");
            add(std::to_string(flaw->count) + " " + name + " at "
                + std::to_string(flaw->firstLine));
        }
    }
    for (const auto& [names, name] : {std::pair<const std::vector<std::string>*, const char*>{
                                          &audit.notReadable, "not readable"},
                                      {&audit.withoutPrecursor, "no precursor"},
                                      {&audit.withoutPeaks, "no peaks"}}) {
        if (!names->empty()) {
            add(name);
        }
    }
    return verdict;
}

TEST(DtaAudit, FindsWhatTheLibraryReadsInSilence)
{
    struct Case {
        const char* reason;
        std::string bytes;
        const char* expected;
    };
    for (const Case& c : {
             Case{"a plain file", "500.5 2\n100 1\n200 2\n", ""},
             Case{"no line end", "500.5 2\n100 1", ""},
             Case{"carriage returns", "500.5 2\r\n100 1\r\n200 2\r\n\r\n", ""},
             Case{"blanks, tabs, a byte order mark", "\xEF\xBB\xBF 500.5\t2 \n\t100  1e3 x\n", ""},
             Case{"empty lines at the end", "500.5 2\n100 1\n\n \n\n", ""},
             Case{"numbers of every form", "+500.5 +2\n.5 1.\n-1 1E+2\n", ""},
             Case{"nothing", "", "no precursor"},
             Case{"no charge", "500.5\n100 1\n", "no precursor"},
             Case{"charge 0", "500.5 0\n100 1\n", "no precursor"},
             Case{"a charge below 0", "500.5 -2\n100 1\n", "no precursor"},
             Case{"a charge without end", "500.5 1e9\n100 1\n", "no precursor"},
             Case{"no mass", "MH 2\n100 1\n", "no precursor"},
             Case{"a mass of 0", "0 2\n100 1\n", "no precursor"},
             Case{"a mass that is none", "inf 2\n100 1\n", "no precursor"},
             Case{"an empty first line", "\n500.5 2\n100 1\n", "no precursor"},
             Case{"no peaks", "500.5 2\n", "no peaks"},
             Case{"no peak before an empty line", "500.5 2\n\n100 1\n",
                  "1 behind empty at 2, no peaks"},
             Case{"a bundle", "500.5 2\n100 1\n\n600.5 2\n100 1\n", "1 behind empty at 3"},
             Case{"a bundle with carriage returns", "500.5 2\r\n100 1\r\n\r\n600.5 2\r\n",
                  "1 behind empty at 3"},
             Case{"a line of blanks is a peak", "500.5 2\n100 1\n  \n200 1\n", "1 unreadable at 3"},
             Case{"text among peaks", "500.5 2\n100 1\nx 1\n100 nan\n100\n1e 1\n",
                  "4 unreadable at 3"},
             Case{"no peak that can be read", "500.5 2\nx y\n", "1 unreadable at 2, no peaks"},
             Case{"a line that is too long",
                  "500.5 2\n100 1\n100 1" + Repeat(" ", 81919) + "\n200 1\n", "1 long at 3"},
             Case{"the longest line", "500.5 2\n100 1" + Repeat(" ", 81914) + "\r\n200 1\n", ""},
         }) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(VerdictOn(c.bytes), c.expected);
    }
}

TEST(DtaAudit, NamesFilesThatCannotBeOpened)
{
    const TempFolder folder;
    folder.Write("b.dta", "500.5 2\n100 1\n");
    folder.Write("back\\slash.dta", "500.5 2\n100 1\n");
    std::filesystem::create_symlink("nowhere", folder.PathOf("a.dta"));
    const DtaAudit audit = AuditDta(folder.Path());
    EXPECT_THAT(audit.notReadable, ElementsAre("a.dta", "back\\slash.dta"));
    EXPECT_THAT(audit.withoutPrecursor, IsEmpty());
}

// ---- Names of spectra ---------------------------------------------------------

TEST(DottedName, EndsInTwoScansAndPerhapsACharge)
{
    const auto partsOf = [](const char* name) {
        const auto dotted = ParseDottedName(name);
        return dotted ? dotted->front + "|" + dotted->firstScan + "|" + dotted->lastScan + "|"
                            + dotted->charge
                      : "-";
    };
    for (const auto& [name, parts] :
         std::map<const char*, const char*>{{"run.1405.1405.2", "run|1405|1405|2"},
                                            {"run.01405.01405.2", "run|1405|1405|2"},
                                            {"run.1405.1410.3", "run|1405|1410|3"},
                                            {"run.1405.1405", "run|1405|1405|"},
                                            {"run.5.12.12", "run.5|12|12|"},
                                            {"run.5.5.12", "run|5|5|12"},
                                            {"a.b.0.0.0", "a.b|0|0|0"},
                                            {"run.1405", "-"},
                                            {"run.1405.2", "-"},
                                            {"run.1405.2.0", "-"},
                                            {"1405.1405", "-"},
                                            {"run.1405.1405.2.dta", "-"},
                                            {"run.x.1405.2", "-"},
                                            {"run..1405.2", "-"},
                                            {".1.1", "-"},
                                            {"", "-"}}) {
        EXPECT_EQ(partsOf(name), std::string(parts)) << name;
    }
}

/// "file", "file by scan", "several" or "-".
std::string Found(const DtaNames& names, const std::string& name, std::uint64_t charge = 2)
{
    const auto found = names.Find(name, charge);
    if (found && found->isAmbiguous) {
        EXPECT_EQ(found->name, name);
        return "several";
    }
    return found ? found->name + (found->IsByScan() ? " by scan" : "") : "-";
}

TEST(DtaNames, FindEveryFormOfAName)
{
    const DtaNames names({"run.2002.2002.2.dta", "run.2002.2002.3.DTA", "run.02004.02004.2.dta",
                          "run.7.7.dta", "run.9.12.2.dta", "plain.dta"});
    for (const auto& [name, file] :
         std::map<std::string, std::string>{{"run.2002.2002.2.dta", "run.2002.2002.2.dta"},
                                            {"run.2002.2002.2", "run.2002.2002.2.dta"},
                                            {"run.2002.2002.2.Dta", "run.2002.2002.2.dta"},
                                            {"run.2002.2002.3", "run.2002.2002.3.DTA"},
                                            {"run.2002.2002.3.dta", "run.2002.2002.3.DTA"},
                                            {"run.02002.02002.2", "run.2002.2002.2.dta"},
                                            {"run.02002.02002.3.dta", "run.2002.2002.3.DTA"},
                                            {"run.2004.2004.2", "run.02004.02004.2.dta"},
                                            {"run.00007.00007", "run.7.7.dta"},
                                            {"run.00009.00012.2", "run.9.12.2.dta"},
                                            {"plain", "plain.dta"},
                                            {"2002", "run.2002.2002.2.dta by scan"},
                                            {"02004", "run.02004.02004.2.dta by scan"},
                                            {"7", "run.7.7.dta by scan"},
                                            {"9", "run.9.12.2.dta by scan"},
                                            {"2005", "-"},
                                            {"run.2002.2002.4", "-"},
                                            {"run.2002.2002", "-"},
                                            {"RUN.2002.2002.2", "-"},
                                            {"other.2002.2002.2", "-"},
                                            {"../run.7.7", "-"},
                                            {"./plain.dta", "-"},
                                            {"..\\x\\plain.dta", "-"},
                                            {"x\\plain", "-"},
                                            {".dta", "-"},
                                            {"", "-"}}) {
        EXPECT_EQ(Found(names, name), file) << name;
    }
    EXPECT_EQ(Found(names, "2002", 3), "run.2002.2002.3.DTA by scan");
    EXPECT_EQ(Found(names, "2002", 4), "-");
    EXPECT_EQ(Found(names, "7", 4), "run.7.7.dta by scan");
}

TEST(DtaNames, WhatMayBeTwoFilesIsNeither)
{
    const DtaNames names({"a.3.3.2.dta", "b.3.3.2.dta", "a.4.4.2.dta", "a.04.04.2.dta", "c.DTA",
                          "c.dta", "x\\y.dta"});
    EXPECT_EQ(Found(names, "3"), "several");
    EXPECT_EQ(Found(names, "a.3.3.2"), "a.3.3.2.dta");
    EXPECT_EQ(Found(names, "a.4.4.2"), "a.4.4.2.dta");
    EXPECT_EQ(Found(names, "a.00004.00004.2"), "several");
    EXPECT_EQ(Found(names, "c"), "several");
    EXPECT_EQ(Found(names, "c.DTA"), "c.DTA");
    // The library would open y.dta in the folder x.
    EXPECT_EQ(Found(names, "x\\y.dta"), "-");
    EXPECT_EQ(Found(names, "x\\y"), "-");
}

// ---- Files and folders --------------------------------------------------------

TEST(SpectraSource, ADatasetIsNamedByItsFileOrFolder)
{
    const TempFolder folder;
    const auto placeOf = [](const std::string& path) {
        const DatasetPlace place = PlaceOfDataset(path);
        return place.folder + "|" + place.name;
    };
    const std::string inner = folder.PathOf("run01");
    std::filesystem::create_directory(inner);
    EXPECT_EQ(placeOf(inner), folder.Path() + "|run01");
    EXPECT_EQ(placeOf(inner + "//"), folder.Path() + "|run01");
    EXPECT_EQ(PlaceOfDataset(inner + "/.").name, "run01");
    EXPECT_EQ(PlaceOfDataset(inner + "/../run01/..").name,
              std::filesystem::path(folder.Path()).filename());
    EXPECT_EQ(placeOf(folder.PathOf("run.mgf")), folder.Path() + "|run.mgf");
    EXPECT_EQ(WithoutLastSeparators(inner + "/"), inner);
    EXPECT_EQ(WithoutLastSeparators(folder.PathOf("none/")), folder.PathOf("none/"));
    EXPECT_EQ(WithoutLastSeparators("/"), "/");
}

TEST(SpectraSource, AFolderOfDtaFilesIsTakenAndOthersAreNot)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run01"));
    EXPECT_EQ(FailureOf([&] { CheckSpectra(folder.PathOf("run01")); }),
              folder.PathOf("run01") + ": is a folder without DTA files");
    const std::string file = folder.Write("run01/a.dta", "");
    EXPECT_EQ(FailureOf([&] { CheckSpectra(folder.PathOf("run01")); }), "");
    EXPECT_EQ(FailureOf([&] { CheckSpectra(file); }),
              file + ": is one DTA file; expected the folder that holds it");
    EXPECT_EQ(FailureOf([&] { CheckDtaFolder(file); }),
              file + ": expected a folder of DTA files, but it is a file");
    EXPECT_EQ(FailureOf([&] { CheckDtaFolder(folder.PathOf("none")); }),
              folder.PathOf("none") + ": cannot be read: No such file or directory");
    EXPECT_THAT(FailureOf([&] { CheckMgf(folder.PathOf("run01")); }),
                testing::HasSubstr("but a folder"));
    const std::string odd = folder.PathOf("a\\b");
    std::filesystem::create_directory(odd);
    EXPECT_EQ(FailureOf([&] { CheckSpectra(odd); }),
              odd + ": a path with a backslash cannot be read");
}

TEST(SpectraSource, XmlIsKnownByItsEndingAndByItsContent)
{
    struct Case {
        const char* reason;
        const char* name;
        std::string bytes;
        const char* expected; ///< of the message behind the path
    };
    constexpr char kIsMzML[] = ": is mzML, which is not read; convert it to MGF: ";
    constexpr char kIsMzXML[] = ": is mzXML, which is not read; convert it to MGF: ";
    for (const Case& c : {
             Case{"an ending", "a.mzML", "", kIsMzML},
             Case{"another case", "a.MZXML", "", kIsMzXML},
             Case{"packed", "a.mzML.gz", "\x1F\x8B", kIsMzML},
             Case{"content", "a.mgf", "<?xml version=\"1.0\"?>\r\n<mzML>\r\n", kIsMzML},
             Case{"content with an index", "a", "\xEF\xBB\xBF<indexedmzML xmlns=\"x\">", kIsMzML},
             Case{"content without a declaration", "a.txt", "<mzXML\n", kIsMzXML},
             Case{"all in one line", "a", "<?xml version=\"1.0\"?><mzXML><msRun>", kIsMzXML},
             Case{"a comment in front", "a", "<?xml?>\n<!-- x -->\n\n<mzML", kIsMzML},
             Case{"another XML", "a", "<?xml version=\"1.0\"?>\n<pepXML>\n",
                  ": is an XML file; expected MGF, or a folder of DTA files"},
             Case{"MGF", "a.mgf", "BEGIN IONS\nTITLE=<mzML <?xml\n1 1\nEND IONS\n", ""},
             Case{"MGF behind a comment", "a.mgf", "# <?xml\nBEGIN IONS\n", ""},
             Case{"empty", "a.mgf", "", ""},
             Case{"an ending alone is a name", ".mzML", "", ""},
         }) {
        SCOPED_TRACE(c.reason);
        const TempFolder folder;
        const std::string path = folder.Write(c.name, c.bytes);
        const std::string failure = FailureOf([&] { CheckMgf(path); });
        EXPECT_EQ(failure.substr(0, failure.find("FileConverter")).substr(0, failure.find("mv ")),
                  *c.expected == '\0' ? "" : path + c.expected);
    }
}

TEST(SpectraSource, TheConversionIsACommandForAShell)
{
    for (const auto& [path, command] : std::map<std::string, std::string>{
             {"run.mzML", "FileConverter -in run.mzML -out run.mgf (Debian package topp)"},
             {"a/b.c.mzXML.gz",
              "FileConverter -in a/b.c.mzXML.gz -out a/b.c.mgf (Debian package topp)"},
             {"my run.mzML",
              "FileConverter -in 'my run.mzML' -out 'my run.mgf' (Debian package topp)"},
             {"it's.mzML",
              "FileConverter -in 'it'\\''s.mzML' -out 'it'\\''s.mgf' (Debian package topp)"},
             {"run.mgf", "mv run.mgf run.mgf.mzML && FileConverter -in run.mgf.mzML -out "
                         "run.mgf.mgf (Debian package topp)"}}) {
        EXPECT_EQ(ConversionOf(path, "mzML"), command);
    }
}

} // namespace
} // namespace pelgrin
