// "pelgrin mods" as a child process: wrong usage and failures, each with one
// clear line. No Unimod is needed.
#include <algorithm>

#include <unistd.h>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::StartsWith;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

constexpr const char kHeader[] =
    "id\tfull_id\tunimod_accession\tfull_name\tterm_spec\torigin\tclassification\t"
    "diff_mono_mass\tdiff_average_mass\tneutral_loss_mono_mass\tneutral_loss_average_mass\n";
constexpr const char kPhospho[] = "Phospho\tPhospho (S)\tUniMod:21\tPhosphorylation\tAnywhere\tS\t"
                                  "post-translational\t79.966331\t79.979900\t0.000000\t0.000000\n";

/// A Unimod XML of one modification.
std::string XmlOf(const std::string& title, const std::string& position = "Anywhere")
{
    return "<umod:unimod><umod:modifications><umod:mod title=\"" + title
           + "\" full_name=\"Phosphorylation\" record_id=\"21\"><umod:specificity site=\"S\" "
             "position=\""
           + position
           + "\" classification=\"Post-translational\"></umod:specificity>"
             "<umod:delta mono_mass=\"79.966331\" avge_mass=\"79.9799\"></umod:delta></umod:mod>"
             "</umod:modifications></umod:unimod>";
}

class PelgrinModsFailures : public testing::Test {
protected:
    Outcome Mods(std::vector<std::string> arguments) const
    {
        arguments.insert(arguments.begin(), "mods");
        Setting setting;
        setting.folder = folder_.Path();
        return RunPelgrin(arguments, setting);
    }

    Outcome Import(const std::string& xml) const
    {
        folder_.Write("umod.xml", xml);
        return Mods({"import", "--unimod", "umod.xml", "--out", "table.txt"});
    }

    std::size_t Entries() const
    {
        const std::filesystem::directory_iterator entries(folder_.Path());
        return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
    }

    TempFolder folder_;
};

void ExpectOneLine(const Outcome& outcome, int status, const std::string& text)
{
    EXPECT_EQ(outcome.status, status);
    EXPECT_EQ(outcome.out, "");
    EXPECT_THAT(outcome.err, StartsWith("pelgrin: error: "));
    EXPECT_EQ(std::count(outcome.err.begin(), outcome.err.end(), '\n'), 1) << outcome.err;
    EXPECT_THAT(outcome.err, HasSubstr(text));
}

TEST_F(PelgrinModsFailures, WrongUsageEndsWithStatusTwo)
{
    struct Case {
        const char* reason;
        std::vector<std::string> arguments;
        const char* text;
    };
    const Case cases[] = {
        {"no command", {}, "no command was given; there is: import, find, show, explain"},
        {"unknown command", {"search"}, "\"search\" is not a command; there is: import, find"},
        {"mass missing", {"find"}, "--mass"},
        {"mass is no number", {"find", "--mass", "80Da"}, "--mass: \"80Da\" is not a number of Da"},
        {"mass is not finite", {"find", "--mass", "nan"}, "--mass: \"nan\""},
        {"negative tolerance",
         {"find", "--mass", "80", "--tolerance", "-1"},
         "--tolerance: \"-1\""},
        {"unknown unit", {"find", "--mass", "80", "--tolerance", "1kDa"}, "--tolerance: \"1kDa\""},
        {"ppm of what", {"find", "--mass", "80", "--tolerance", "5ppm"}, "give it in Da"},
        {"unknown residue",
         {"find", "--mass", "80", "--residue", "B"},
         "--residue: \"B\" is not a residue; choose from ACDEFGHIKLMNOPQRSTUVWY"},
        {"unknown terminus",
         {"find", "--mass", "80", "--term", "N-term"},
         "--term: \"N-term\" is not a place; choose from \"Anywhere\", \"Any C-term\""},
        {"two databases", {"find", "--mass", "80", "--params", "a", "--unimod", "b"}, "excludes"},
        {"engine file without engine", {"find", "--mass", "80", "--engine-file", "a"}, "--engine"},
        {"engine without a reader",
         {"find", "--mass", "80", "--engine-file", "a", "--engine", "Mascot"},
         "choose from \"pFind 3 (.spectra)\", \"MSFragger (.pepXML)\", \"Calvex (.txt)\""},
        {"no name", {"show"}, "required"},
        {"out missing", {"import"}, "--out is required"},
        {"out empty", {"import", "--out", ""}, "--out"},
        {"no modifications", {"explain", "80", "--at", "S"}, "--params"},
        {"no place", {"explain", "80", "--database"}, "--at is required"},
        {"unknown place",
         {"explain", "80", "--database", "--at", "Z"},
         "--at: \"Z\" is not a place; choose n-term, c-term or a residue of "},
        {"residue of a residue",
         {"explain", "80", "--database", "--at", "S", "--residue", "S"},
         "--residue: belongs to --at n-term or --at c-term"},
        {"unknown neighbour",
         {"explain", "80", "--database", "--at", "S", "--before", "KR"},
         "--before: \"KR\" is neither a residue nor -"},
        {"mass of the peptide",
         {"explain", "80", "--database", "--at", "S", "--mh", "0"},
         "--mh: \"0\" is not above zero"},
        {"size", {"explain", "80", "--database", "--at", "S", "--max-size", "9"}, "--max-size"},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        ExpectOneLine(Mods(c.arguments), 2, c.text);
    }
}

TEST_F(PelgrinModsFailures, HelpHasExamples)
{
    for (const char* const name : {"import", "find", "show", "explain"}) {
        const Outcome help = Mods({name, "--help"});
        EXPECT_EQ(help.status, 0);
        EXPECT_THAT(help.out, HasSubstr(std::string("Example:\n  pelgrin mods ") + name));
        EXPECT_THAT(help.out, HasSubstr("Exit status: 0 all well; 1 failure"));
    }
}

TEST_F(PelgrinModsFailures, ADatabaseThatCannotBeOpenedIsNamed)
{
    const auto find = [this](std::vector<std::string> more) {
        more.insert(more.begin(), {"find", "--mass", "80"});
        return Mods(more);
    };
    ExpectOneLine(find({"--unimod", "none.xml"}), 1,
                  "none.xml: cannot be opened: No such file or directory");
    ExpectOneLine(find({"--params", "none.ini"}), 1, "none.ini: cannot be opened");
    ExpectOneLine(find({"--engine-file", "none", "--engine", "MSFragger"}), 1,
                  "none: cannot be opened");
    ExpectOneLine(find({"--unimod", "."}), 1, "but a folder");
    const std::string begin = "[Search]\nsearch_result_format = Calvex (.txt)\n";
    folder_.Write("run.ini", begin
                                 + "precursor_tol = 20\nprecursor_tol_type = 1\n"
                                   "fragment_tol = 20\nfragment_tol_type = 1\n");
    ExpectOneLine(find({"--params", "run.ini"}), 1, "unimod.txt: is missing in the working folder");
    folder_.Write("unimod.txt", std::string(kHeader) + kPhospho);
    folder_.Write("run.ini", begin);
    ExpectOneLine(find({"--params", "run.ini"}), 1,
                  "run.ini:1: precursor_tol is missing in section [Search]");
    folder_.Write("run.ini", "precursor_tol = 1\n");
    ExpectOneLine(find({"--params", "run.ini"}), 1, "run.ini:1: \"precursor_tol = 1\"");
}

// The library would end the process for these, or pass over the rest.
TEST_F(PelgrinModsFailures, AMalformedTableIsReportedWithItsLine)
{
    struct Case {
        const char* reason;
        std::string table;
        const char* text;
    };
    const std::string phospho = kPhospho;
    std::string wrongTerm = phospho;
    wrongTerm.replace(wrongTerm.find("Anywhere"), 8, "Everywhere");
    const Case cases[] = {
        {"empty", "", "unimod.txt:1: expected a column named \"id\" in the header line"},
        {"missing column", "id\tfull_id\n", "unimod.txt:1: expected a column named \"unimod_acc"},
        {"field missing", kHeader + phospho + "Phospho\tPhospho (T)\n",
         "unimod.txt:3: expected 11 fields, found 2"},
        {"field too many", kHeader + phospho.substr(0, phospho.size() - 1) + "\tx\n",
         "unimod.txt:2: expected 11 fields, found 12"},
        {"long line", kHeader + std::string(90000, 'x') + phospho,
         "unimod.txt:2: the line is longer than 81919 bytes"},
        {"NUL", kHeader + std::string("a\0b", 3) + phospho, "unimod.txt:2: the line holds a NUL"},
        {"specificity", kHeader + wrongTerm, "unimod.txt:2: term_spec \"Everywhere\""},
    };
    for (const Case& c : cases) {
        SCOPED_TRACE(c.reason);
        folder_.Write("unimod.txt", c.table);
        ExpectOneLine(Mods({"find", "--mass", "80"}), 1, c.text);
    }
    folder_.Write("unimod.txt", kHeader + ("\n" + phospho));
    EXPECT_EQ(Mods({"find", "--mass", "79.97"}).status, 0) << "empty lines are passed over";
}

TEST_F(PelgrinModsFailures, XmlWithoutModificationsIsNamedWithTheReason)
{
    struct Case {
        const char* reason;
        std::string xml;
        const char* text;
    };
    for (const Case& c : {Case{"no XML", "no XML", "umod.xml: no modifications were found; "},
                          Case{"empty", "", "umod.xml: no modifications were found; "},
                          Case{"another document", "<a><b></b></a>", "expected umod:mod elements"},
                          Case{"cut", XmlOf("Phospho").substr(0, 100), "umod.xml: no modif"},
                          Case{"position", XmlOf("Phospho", "Everywhere"),
                               "umod.xml: cannot be read as Unimod XML: "}}) {
        SCOPED_TRACE(c.reason);
        ExpectOneLine(Import(c.xml), 1, c.text);
        EXPECT_EQ(Entries(), 1U) << "no half table";
        ExpectOneLine(Mods({"find", "--mass", "80", "--unimod", "umod.xml"}), 1, c.text);
    }
    // B-43: what the library says on standard error is part of the one line.
    EXPECT_THAT(Import("<a>").err, HasSubstr("umod.xml: no modifications were found; "));
}

TEST_F(PelgrinModsFailures, B42_ImportPrintsNoOriginsOfTerminalRecords)
{
    const Outcome made = Import(XmlOf("Phospho", "Any N-term"));
    EXPECT_EQ(made.status, 0);
    EXPECT_EQ(made.err, "");
    EXPECT_EQ(made.out, "1 records were written to table.txt.\n");
}

TEST_F(PelgrinModsFailures, ATextThatWouldBreakTheTableIsRefused)
{
    for (const char* const title : {"Pho\tspho", "Pho\nspho", "a\tb\n"}) {
        ExpectOneLine(Import(XmlOf(title)), 1, "umod.xml: the table cannot hold the record");
        EXPECT_EQ(Entries(), 1U);
    }
}

TEST_F(PelgrinModsFailures, AnEngineFileWithoutModificationsIsTold)
{
    folder_.Write("run.mgf", "BEGIN IONS\nTITLE=a\n100 1\nEND IONS\n");
    for (const char* const command : {"show", "find"}) {
        const std::vector<std::string> question = command == std::string("show")
                                                      ? std::vector<std::string>{"Phospho"}
                                                      : std::vector<std::string>{"--mass", "80"};
        std::vector<std::string> arguments = {command, "--engine-file", "run.mgf", "--engine",
                                              "MSFragger"};
        arguments.insert(arguments.end(), question.begin(), question.end());
        const Outcome outcome = Mods(arguments);
        EXPECT_EQ(outcome.status, 3) << outcome.err;
        EXPECT_THAT(outcome.err, HasSubstr("run.mgf: no modifications were found in it; is it a "
                                           "modification file of MSFragger"));
    }
}

TEST_F(PelgrinModsFailures, AnOutputThatCannotBeWrittenIsAFailure)
{
    folder_.Write("umod.xml", XmlOf("Phospho"));
    const auto import = [this](const std::string& out) {
        return Mods({"import", "--unimod", "umod.xml", "--out", out, "--force"});
    };
    ExpectOneLine(import("none/table.txt"), 1,
                  "none/table.txt: cannot be written: No such file or directory");
    ExpectOneLine(import("."), 1, ".: cannot be written: it is not an ordinary file");
    ExpectOneLine(import("a\\b"), 1, "backslash");
    ExpectOneLine(import("umod.xml"), 1, "umod.xml: is the input and would be overwritten");
    ExpectOneLine(import("/dev/null"), 1, "it is not an ordinary file");
    EXPECT_EQ(Entries(), 1U);
}

TEST_F(PelgrinModsFailures, AReportThatCannotBeWrittenIsAFailure)
{
    if (::access("/dev/full", W_OK) != 0) {
        GTEST_SKIP() << "no /dev/full";
    }
    folder_.Write("unimod.txt", std::string(kHeader) + kPhospho);
    Setting setting;
    setting.folder = folder_.Path();
    setting.outPath = "/dev/full";
    const Outcome outcome = RunPelgrin({"mods", "show", "Phospho"}, setting);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.err, HasSubstr("standard output: cannot be written"));
}

} // namespace
} // namespace pelgrin::test
