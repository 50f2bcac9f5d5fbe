// "pelgrin params check" as a child process: every error with file, line, key
// and what is allowed.
#include <algorithm>
#include <filesystem>

#include "ParameterFiles.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;
using testing::Not;

TEST(ParamsCheck, SaysWhatWillBeRun)
{
    const ParameterWorkplace workplace;
    const Outcome outcome = workplace.Check(Ini().WithFdr("0.01", "2", "2"));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    const auto size = [&](const char* name) {
        return std::to_string(std::filesystem::file_size(workplace.PathOf(name)));
    };
    EXPECT_EQ(outcome.out,
              "Engine        Calvex (.txt)\n"
              "Search        closed: no ions with a mass shift\n"
              "Precursors    20 ppm\n"
              "Fragments     20 ppm, CID/HCD: b and y ions\n"
              "Modifications of mods.txt\n"
              "  fixed       Carbamidomethyl (C)                        +57.021464 Da\n"
              "  variable    Oxidation (M)                              +15.994915 Da\n"
              "Spectra       mgf\n"
              "  ./run.mgf   "
                  + size("run.mgf")
                  + " bytes\n"
                    "Matches       Calvex (.txt)\n"
                    "  ./psms.txt   "
                  + size("psms.txt")
                  + " bytes\n"
                    "FDR control   q-values up to 0.01 stay, by (decoy+1)/target, each file alone; "
                    "decoys begin with \"D_\"\n"
                    "Localization  off\n"
                    "Annotation    off\n"
                    "Output        out, which will be made\n");
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("out")));
}

TEST(ParamsCheck, TellsAnOutputThatARunCannotWrite)
{
    const ParameterWorkplace workplace;
    std::filesystem::create_directories(workplace.PathOf("former/results.txt"));
    workplace.Write("file", "");
    std::filesystem::create_symlink("nothing", workplace.PathOf("link"));
    for (const auto& [output, told] : std::vector<std::pair<std::string, std::string>>{
             {"./former", "former/results.txt: cannot be written: it is not an ordinary file\n"},
             {"./file/below", "is not a folder and cannot be made one: Not a directory\n"},
             {"./link", "is not a folder and cannot be made one: File exists\n"},
             {"./new/" + std::string(300, 'x'),
              "is not a folder and cannot be made one: File name too long\n"}}) {
        const Ini ini = Ini().With("Output", "output", output);
        for (const Outcome& outcome : {workplace.Check(ini), workplace.Run(ini, {Row()})}) {
            EXPECT_EQ(outcome.status, 1) << output;
            EXPECT_THAT(outcome.err, HasSubstr(told));
        }
    }
    EXPECT_EQ(workplace.Check(Ini().With("Output", "output", "./new/folder")).status, 0);
    EXPECT_FALSE(std::filesystem::exists(workplace.PathOf("new")));
}

TEST(ParamsCheck, ListsEveryFileThatIsMissing)
{
    const ParameterWorkplace workplace;
    const Outcome outcome =
        workplace.Check(Ini()
                            .With("Search", "dataset_filename_1", "./none.mgf")
                            .With("Search", "pep_ident_filename_1", "./no.txt"));
    EXPECT_EQ(outcome.status, 1);
    EXPECT_THAT(outcome.out, HasSubstr("  ./none.mgf   cannot be read\n"));
    EXPECT_EQ(outcome.err,
              "pelgrin: error: run.ini:16: dataset_filename_1: ./none.mgf: cannot be opened: No "
              "such file or directory\n"
              "pelgrin: error: run.ini:19: pep_ident_filename_1: ./no.txt: cannot be opened: No "
              "such file or directory\n");
}

struct BadKey {
    const char* section;
    const char* key;
    const char* value; ///< null: the key is taken away
    const char* text;  ///< behind "run.ini:LINE: "
};

/// "run.ini:12: " with the line of the key, or of its section.
std::string FrontOf(const Ini& ini, const BadKey& c)
{
    const std::string begin =
        c.value != nullptr ? std::string(c.key) + " =" : "[" + std::string(c.section) + "]";
    return "pelgrin: error: run.ini:" + std::to_string(ini.LineOf(begin)) + ": ";
}

TEST(ParamsCheck, NamesFileLineKeyAndWhatIsAllowed)
{
    const ParameterWorkplace workplace;
    const Ini base = Ini()
                         .WithFdr("0.01")
                         .With("Search", "open_search", "1")
                         .With("Search", "precursor_matching_tolerance", "500")
                         .With("Search", "precursor_matching_tolerance_type", "0");
    const BadKey cases[] = {
        {"Search", "search_result_format", "Comets",
         "search_result_format = \"Comets\": expected \"pFind 2.8 (.txt)\", "},
        {"Search", "search_result_format", nullptr,
         "search_result_format is missing in section [Search]: expected \"pFind"},
        {"Search", "precursor_matching_tolerance", "0",
         "precursor_matching_tolerance = \"0\": expected a number above 0\n"},
        {"Search", "precursor_matching_tolerance_type", "1",
         "precursor_matching_tolerance_type = \"1\": expected 0 (Da); an open search has no other "
         "unit\n"},
        {"Search", "fragmentation_method", "HCD",
         "fragmentation_method = \"HCD\": expected 0 (CID/HCD) or 1 (ETD)\n"},
        {"Search", "precursor_tol", "", "precursor_tol is empty: expected a number above 0\n"},
        {"Search", "precursor_tol_type", "ppm",
         "precursor_tol_type = \"ppm\": expected 0 (Da) or 1 (ppm)\n"},
        {"Search", "fragment_tol", nullptr,
         "fragment_tol is missing in section [Search]: expected a number above 0\n"},
        {"Search", "fragment_tol_type", "2",
         "fragment_tol_type = \"2\": expected 0 (Da) or 1 (ppm)\n"},
        {"Search", "fixed_mod_number", nullptr,
         "fixed_mod_number is missing in section [Search]: expected a number of 0 or more\n"},
        {"Search", "fixed_mod_1", nullptr,
         "fixed_mod_1 is missing in section [Search]: expected name and site"},
        {"Search", "fixed_mod_1", "Carbamidomethyl",
         "fixed_mod_1 = \"Carbamidomethyl\": expected name and site of a modification in the "
         "database, such as \"Oxidation (M)\", "},
        {"Search", "fixed_mod_1", "Carbamidomethyl (K)",
         "fixed_mod_1 = \"Carbamidomethyl (K)\": mods.txt has no such modification, it has "
         "\"Carbamidomethyl (C)\"; expected name and site"},
        {"Search", "var_mod_1", "Oxydation (M)",
         "var_mod_1 = \"Oxydation (M)\": mods.txt has no such modification, the most similar one "
         "is \"Oxidation (M)\"; expected"},
        {"Search", "var_mod_1", "Something else (M)",
         "var_mod_1 = \"Something else (M)\": mods.txt has no such modification; expected"},
        {"Search", "dataset_format", "raw",
         "dataset_format = \"raw\": expected \"dta\", \"mgf\", \"mzXML\" or \"mzML\"\n"},
        {"Search", "dataset_number", "0",
         "dataset_number = \"0\": expected a number of 1 or more\n"},
        {"Search", "dataset_filename_1", "run.mgf",
         "dataset_filename_1 = \"run.mgf\": expected a path with a \"/\" in it, such as "
         "./data/run1.mgf\n"},
        {"Search", "pep_ident_format", "Comet", "pep_ident_format = \"Comet\": expected \"pFind"},
        {"Search", "pep_ident_number", "none",
         "pep_ident_number = \"none\": expected a number of 1 or more\n"},
        {"Search", "pep_ident_filename_1", "psms.txt",
         "pep_ident_filename_1 = \"psms.txt\": expected a path with"},
        {"Fdr", "is_fdr_control", nullptr,
         "is_fdr_control is missing in section [Fdr]: expected 0 (off) or 1 (on)\n"},
        {"Fdr", "decoy_tag", nullptr, "decoy_tag is missing in section [Fdr]: expected the text"},
        {"Fdr", "fdr_threshold", "1.5", "fdr_threshold = \"1.5\": expected a number from 0 to 1\n"},
        {"Fdr", "fdr_method", "4",
         "fdr_method = \"4\": expected 1 (global), 2 (separate) or 3 (transferred)\n"},
        {"Fdr", "target_decoy_method", "0",
         "target_decoy_method = \"0\": expected 1 (decoy/target) or 2 ((decoy+1)/target)\n"},
        {"Localization", "is_localized", nullptr,
         "is_localized is missing in section [Localization]: expected"},
        {"Annotation", "is_annotated", "yes",
         "is_annotated = \"yes\": expected 0 (off) or 1 (on)\n"},
        {"Annotation", "is_annotated", "1", "protein_database is missing in section [Annotation]"},
        {"Output", "output", nullptr,
         "output is missing in section [Output]: expected the path of a folder\n"},
    };
    for (const BadKey& c : cases) {
        SCOPED_TRACE(std::string(c.key) + " = " + (c.value != nullptr ? c.value : "missing"));
        const Ini ini =
            c.value != nullptr ? base.With(c.section, c.key, c.value) : base.Without(c.key);
        BadKey place = c;
        if (std::string(c.text).find("protein_database") == 0) {
            place.value = nullptr; // that key is the missing one
        }
        const Outcome outcome = workplace.Check(ini);
        EXPECT_EQ(outcome.status, 1);
        EXPECT_EQ(outcome.out, "");
        EXPECT_THAT(outcome.err, HasSubstr(FrontOf(ini, place) + c.text));
        EXPECT_EQ(workplace.Run(ini).err, outcome.err);
    }
}

TEST(ParamsCheck, AnnotationNeedsLocalization)
{
    const ParameterWorkplace workplace;
    const Ini ini = Ini()
                        .With("Annotation", "is_annotated", "1")
                        .With("Annotation", "protein_database", "a.fasta");
    ExpectRefusal(
        workplace.Check(ini), 1,
        "run.ini:25: is_annotated = \"1\": proteins are annotated only after localization; "
        "expected 0, or is_localized = 1 in section [Localization]\n");
}

TEST(ParamsCheck, ASectionThatIsMissingIsNamed)
{
    const ParameterWorkplace workplace;
    ExpectRefusal(
        workplace.Check(Ini().WithoutSection("Fdr")), 1,
        "run.ini: section [Fdr] is missing; it needs is_fdr_control: 0 (off) or 1 (on)\n");
    ExpectRefusal(workplace.Check(Ini("")), 1,
                  "run.ini: section [Search] is missing; it needs search_result_format: \"pFind");
}

TEST(ParamsCheck, ALineThatIsNeitherPairNorHeaderIsNamed)
{
    const ParameterWorkplace workplace;
    ExpectRefusal(workplace.Check(Ini("# a comment\n[Search]\nprecursor_tol 20 # x\n")), 1,
                  "run.ini:3: \"precursor_tol 20\": expected a pair \"key = value\" or a header "
                  "\"[section]\"\n");
    ExpectRefusal(
        workplace.Check(Ini("[Search]\na = b = c\n")), 1,
        "run.ini:2: \"a = b = c\": expected only one \"=\"; a value cannot hold another\n");
    ExpectRefusal(workplace.Check(Ini("a = b\n[Search]\n")), 1,
                  "run.ini:1: \"a = b\": expected a header \"[section]\" before the first pair\n");
}

TEST(ParamsCheck, AFileThatCannotBeReadIsAnError)
{
    ExpectRefusal(RunPelgrin({"params", "check", "none.ini"}), 1,
                  "none.ini: cannot be opened: No such file or directory\n");
    ExpectRefusal(RunPelgrin({"run", "none.ini"}), 1, "none.ini: cannot be opened");
    ExpectRefusal(RunPelgrin({"run", "/dev/null"}), 1, "but a pipe or device");
    ExpectRefusal(RunPelgrin({"run", "/"}), 1, "but a folder");
}

TEST(ParamsCheck, WarnsOfWhatTheLibraryPassesOverInSilence)
{
    struct Case {
        const char* reason;
        Ini ini;
        const char* line; ///< that the warning names
        const char* text;
    };
    const ParameterWorkplace workplace;
    const Ini base;
    for (const Case& c :
         {Case{"typo", base.With("Search", "fragment_toll", "10"), "fragment_toll",
               "unknown key \"fragment_toll\" in section [Search] is not read; did you mean "
               "\"fragment_tol\"?"},
          Case{"typo with number", base.With("Search", "var_modd_1", "x"), "var_modd_1",
               "unknown key \"var_modd_1\" in section [Search] is not read; did you mean "
               "\"var_mod_N\"?"},
          Case{"nothing near", base.With("Search", "colour", "red"), "colour",
               "unknown key \"colour\" in section [Search] is not read\n"},
          Case{"other section", base.With("Output", "decoy_tag", "x"), "decoy_tag",
               "unknown key \"decoy_tag\" in section [Output] is not read; it belongs into section "
               "[Fdr]"},
          Case{"unknown section", Ini(base.Text() + "[FDR]\na = b\n"), "[FDR]",
               "unknown section [FDR] is not read; did you mean \"Fdr\"?"},
          Case{"not counted", base.With("Search", "var_mod_2", "Phospho (S)"), "var_mod_2",
               "var_mod_2 is not read: var_mod_number is 1"},
          Case{"twice", Ini("[Search]\nprecursor_tol = 5\n" + base.Text()), "precursor_tol = 5",
               "precursor_tol stands again in line 7, and only that one is read"},
          Case{"text behind a number", base.With("Search", "fragment_tol", "20 ppm"),
               "fragment_tol =",
               "fragment_tol = \"20 ppm\" is read as 20; expected a number above 0"},
          Case{"half a count", base.With("Search", "var_mod_number", "1.9"), "var_mod_number",
               "var_mod_number = \"1.9\" is read as 1; expected "},
          Case{"a count with an exponent", base.With("Search", "var_mod_number", "1e3"),
               "var_mod_number", "var_mod_number = \"1e3\" is read as 1; expected "},
          Case{"word as switch", base.With("Search", "open_search", "yes"), "open_search",
               "open_search = \"yes\" is read as off; expected 0 (off) or 1 (on)"}}) {
        SCOPED_TRACE(c.reason);
        const Outcome outcome = workplace.Check(c.ini);
        EXPECT_EQ(outcome.status, 0);
        EXPECT_THAT(outcome.err, HasSubstr("pelgrin: warning: run.ini:"
                                           + std::to_string(c.ini.LineOf(c.line)) + ": " + c.text));
        EXPECT_EQ(workplace.Run(c.ini).status, 0);
    }
    EXPECT_THAT(workplace.Check(base.With("Fdr", "is_fdr_control", "no")).err,
                HasSubstr("is_fdr_control = \"no\" is read as on"));
}

// ---- Modification databases ---------------------------------------------------

TEST(ParamsCheck, B44_AMalformedTableIsToldWithItsLineBeforeTheLibraryEndsTheProcess)
{
    const ParameterWorkplace workplace;
    const std::string table = ModificationTable();
    const std::string front = "run.ini:9: modification_database: mods.txt:";
    workplace.Write("mods.txt", table + "Short\trow\n");
    ExpectRefusal(workplace.Check(Ini()), 1, front + "8: expected 11 fields, found 2\n");
    workplace.Write("mods.txt", "ID" + table.substr(2));
    ExpectRefusal(workplace.Check(Ini()), 1,
                  front + "1: expected a column named \"id\" in the header line\n");
    std::string wrong = table;
    wrong.replace(wrong.rfind("\tAny N-term\t"), 12, "\tany N-term\t");
    workplace.Write("mods.txt", wrong);
    ExpectRefusal(workplace.Check(Ini()), 1,
                  front + "7: term_spec \"any N-term\": expected \"Anywhere\", ");
    ExpectRefusal(workplace.Check(Ini().With("Search", "modification_database", "none.txt")), 1,
                  "run.ini:9: modification_database: none.txt: cannot be opened: No such file");
}

TEST(ParamsCheck, MassesThatAreReadInPartAreTold)
{
    const ParameterWorkplace workplace;
    std::string table = ModificationTable();
    const std::size_t point = table.find("15.994915");
    const std::string before = table.substr(0, point);
    const auto line = 1 + std::count(before.begin(), before.end(), '\n');
    table.replace(point, 9, "15,994915");
    workplace.Write("mods.txt", table);
    const std::string warning = "pelgrin: warning: mods.txt:" + std::to_string(line)
                                + ": diff_mono_mass: \"15,994915\" is read as 15; expected a mass "
                                  "with a decimal point\n";
    EXPECT_THAT(workplace.Check(Ini()).err, HasSubstr(warning));
    EXPECT_EQ(workplace.Run(Ini()).err, warning);
}

TEST(ParamsCheck, B46_ErrorsOfAPFind3ListHaveTheRealLine)
{
    const ParameterWorkplace workplace;
    const Ini ini = Ini()
                        .With("Search", "search_result_format", "pFind 3 (.spectra)")
                        .With("Search", "fixed_mod_number", "0")
                        .Without("fixed_mod_1")
                        .With("Search", "var_mod_1", "A (S)");
    const std::string good = "name1=A[S] 0\nA[S]=S NORMAL 1.5 1.5 0 H(1)\n";
    for (const auto& [second, text] :
         {std::pair<const char*, const char*>{
              "B[S]=S NORMAL 1.5\n",
              "mods.txt:7: expected at least 6 items behind \"=\", found 3\n"},
          {"B[S]=S ANY 1.5 1.5 0 H(1)\n",
           "mods.txt:7: \"ANY\": expected NORMAL, PEP_N, PEP_C, PRO_N or PRO_C behind the sites\n"},
          {"B=S NORMAL 1.5 1.5 0 H(1)\n", "mods.txt:7: expected \"name[sites]\" before \"=\"\n"},
          {"B[S] S NORMAL\n", "mods.txt:7: expected a definition with one \"=\""},
          {"", "mods.txt:7: expected a definition with one \"=\""}}) {
        workplace.Write("mods.txt", "@NUMBER_MODIFICATION=2\n" + good
                                        + "a line between\nand another\nname2=B[S] 0\n" + second);
        ExpectRefusal(workplace.Check(ini), 1, text);
    }
    workplace.Write("mods.txt", good);
    EXPECT_EQ(workplace.Check(ini).status, 0);
}

TEST(ParamsCheck, AnEngineWithoutModificationFilesIsRefused)
{
    const ParameterWorkplace workplace;
    ExpectRefusal(workplace.Check(Ini().With("Search", "search_result_format", "X!Tandem")), 1,
                  "run.ini:9: modification_database: files of X!Tandem are not read; expected no "
                  "value, for the table unimod.txt, or a search_result_format of");
}

TEST(ParamsCheck, SaysHowTheDefaultTableIsMadeOrMakesIt)
{
    const ParameterWorkplace workplace;
    const Ini ini = Ini().Without("modification_database");
    ExpectRefusal(workplace.Run(ini), 1,
                  "unimod.txt: is missing in the working folder, and run.ini names no "
                  "modification_database; make it with \"pelgrin mods import --unimod FILE --out "
                  "unimod.txt\", or give --make-table\n");
    const Outcome outcome = workplace.Pelgrin({"params", "check", "--make-table"}, ini);
    if (outcome.status != 0) {
        EXPECT_THAT(outcome.err, HasSubstr("no Unimod XML was found in"));
        GTEST_SKIP() << "no Unimod XML on this machine";
    }
    EXPECT_THAT(outcome.err, HasSubstr("pelgrin: info: unimod.txt was made from "));
    EXPECT_THAT(outcome.out, HasSubstr("Modifications of unimod.txt\n"));
    EXPECT_EQ(workplace.Run(ini).status, 0);
    EXPECT_EQ(workplace.Pelgrin({"run", "--make-table"}, ini).err, ""); // it is there
}

} // namespace
} // namespace pelgrin::test
