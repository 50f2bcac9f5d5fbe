// "pelgrin params template": the file that it writes can be used.
#include <filesystem>
#include <sstream>

#include "ParameterFiles.h"
#include "parameters/ParameterKeys.h"
#include "parameters/ParameterText.h"

namespace pelgrin::test {
namespace {

using testing::HasSubstr;

std::string Template()
{
    const Outcome outcome = RunPelgrin({"params", "template"});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    return outcome.out;
}

/// A place with the files that the template names.
class TemplateWorkplace : public ParameterWorkplace {
public:
    TemplateWorkplace()
    {
        Write("unimod.txt", ModificationTable());
        Write("spectra.mgf", kRunMgf);
        Row decoy;
        decoy.protein = "DECOY_P1";
        decoy.score = "1";
        Row row;
        row.dataset = "spectra.mgf";
        Write("matches.txt", TableOf({row, decoy}));
    }
};

TEST(ParamsTemplate, PassesTheCheckOnceItsFilesExist)
{
    const TemplateWorkplace workplace;
    const Outcome outcome = workplace.Check(Ini(Template()));
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    EXPECT_THAT(outcome.out, HasSubstr("Modifications of unimod.txt\n"));
}

TEST(ParamsTemplate, ItsPathsCanBeReplaced)
{
    const TemplateWorkplace workplace;
    const Ini ini = Ini(Template())
                        .With("Search", "dataset_filename_1", "./run.mgf")
                        .With("Search", "pep_ident_filename_1", "./psms.txt");
    EXPECT_EQ(workplace.Check(ini).status, 0);
}

TEST(ParamsTemplate, RunsAsItStands)
{
    const TemplateWorkplace workplace;
    const Outcome outcome = workplace.Run(Ini(Template()));
    EXPECT_EQ(outcome.status, 0) << outcome.err;
    EXPECT_TRUE(std::filesystem::exists(workplace.PathOf("results/summary.json")));
}

TEST(ParamsTemplate, NamesEveryKeyWithWhatItMayHold)
{
    const std::string text = Template();
    std::string oneLine = text;
    for (std::size_t hit = 0; (hit = oneLine.find("\n# ", hit)) != std::string::npos;) {
        oneLine.replace(hit, 3, " ");
    }
    for (const ParameterKey& row : ParameterKeys()) {
        std::string key = row.key;
        if (row.number != nullptr) {
            key.back() = '1';
        }
        EXPECT_THAT(oneLine, HasSubstr(key + " =")) << row.key;
        EXPECT_THAT(oneLine, HasSubstr(row.allowed)) << row.key;
        EXPECT_THAT(oneLine, HasSubstr(row.meaning)) << row.key;
    }
}

TEST(ParamsTemplate, KeepsItsLinesShortEnoughForATerminal)
{
    std::istringstream lines(Template());
    for (std::string line; std::getline(lines, line);) {
        EXPECT_LE(line.size(), 90U) << line;
    }
}

TEST(ParameterKeys, AreThoseOfThePageInItsOrder)
{
    const std::string page = Vorlan::test::ReadFile(PELGRIN_DOCS "/formats/parameters.md");
    std::size_t place = page.find("## Keys");
    ASSERT_NE(place, std::string::npos);
    for (const ParameterKey& row : ParameterKeys()) {
        std::string key = row.key;
        if (row.number != nullptr) {
            key.replace(key.size() - 1, 1, "<n>");
        }
        const std::size_t hit = page.find("\n| " + key + " |", place);
        ASSERT_NE(hit, std::string::npos) << key << " is not there, or in another order";
        place = hit;
    }
}

TEST(ParameterKeys, FindsKeysWithNumbers)
{
    const ParameterKey* const row = FindParameterKey("Search", "fixed_mod_17");
    ASSERT_NE(row, nullptr);
    EXPECT_STREQ(row->key, "fixed_mod_N");
    EXPECT_EQ(NumberIn(*row, "fixed_mod_17"), 17U);
    for (const char* const key : {"fixed_mod_", "fixed_mod_0", "fixed_mod_01", "fixed_mod_1x",
                                  "fixed_mod_N", "fixed_mod_99999999999"}) {
        EXPECT_EQ(FindParameterKey("Search", key), nullptr) << key;
    }
    EXPECT_EQ(FindParameterKey("Fdr", "fixed_mod_1"), nullptr);
    EXPECT_STREQ(FindParameterKey("Search", "fixed_mod_number")->key, "fixed_mod_number");
}

TEST(ParameterKeys, ANameFarFromAllHasNoNearestOne)
{
    EXPECT_EQ(NearestParameterKey("Search", "fixed_modd_3"), "fixed_mod_N");
    EXPECT_EQ(NearestParameterKey("Search", "colour"), "");
    EXPECT_EQ(NearestParameterKey("Search", std::string(100000, 'a')), "");
    EXPECT_EQ(NearestParameterSection("search"), "Search");
}

TEST(ParameterText, KnowsTheLineOfEveryKeyThatCounts)
{
    const Vorlan::test::TempFolder folder;
    const ParameterText text(folder.Write(
        "a.ini", "\xEF\xBB\xBF[ A ]\r\nx = 1 # one\r\n\n[B]\ny=\n[A]\n x=2\n=v\n[]\nz = 3\n"));
    EXPECT_EQ(text.ValueOf("A", "x"), "2");
    EXPECT_EQ(text.Find("A", "x")->line, 7U);
    EXPECT_EQ(text.LineOfSection("A"), 1U);
    EXPECT_EQ(text.PlaceOf("A", "x"), text.Path() + ":7: x");
    EXPECT_EQ(text.PlaceOf("B", "none"), text.Path() + ":4: none");
    EXPECT_EQ(text.PlaceOf("C", "none"), text.Path() + ": none");
    EXPECT_EQ(text.Find("B", "y")->value, "");
    EXPECT_EQ(text.ValueOf("A", ""), "v");
    EXPECT_EQ(text.ValueOf("", "z"), "3");
}

} // namespace
} // namespace pelgrin::test
