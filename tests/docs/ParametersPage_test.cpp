// Walks docs/formats/parameters.md: its example is read, and its tables tell
// which keys there are, in which order, and what they take.
#include "InitFile.h"
#include "TulkParam.h"
#include "docs/Page.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::Row;
using test::Thrown;

const char* const kPage = "formats/parameters.md";

/// The example at the top of the page.
std::string ExampleText()
{
    std::string text;
    for (const std::string& line :
         test::LinesOf(test::ReadFile(PELGRIN_DOCS "/" + std::string(kPage)))) {
        if (line.rfind("## ", 0) == 0) {
            break;
        }
        if (line.rfind("    ", 0) == 0) {
            text += line.substr(4) + "\n";
        }
    }
    return text;
}

/// One row of the tables: a list entry stands for the first of its list.
struct Key {
    std::string section;
    std::string name;
    std::vector<std::string> accepted;
    bool isRequired;
    std::vector<std::string> refused;
};

std::vector<Key> Keys()
{
    std::vector<Key> keys;
    for (const Row& row : test::RowsUnder(kPage, "Keys")) {
        std::string name = row.at(1);
        const std::size_t number = name.find("<n>");
        if (number != std::string::npos) {
            name.replace(number, 3, "1");
        }
        keys.push_back({row.at(0), name, test::TickedIn(row.at(2)), row.at(3) == "error",
                        test::TickedIn(row.at(4))});
    }
    return keys;
}

class ParametersPage : public testing::Test {
protected:
    ParametersPage()
    {
        std::filesystem::copy_file(PELGRIN_EXAMPLES "/data/demo_modifications.txt",
                                   folder_.PathOf("unimod.txt"));
        std::filesystem::current_path(folder_.Path());
        example_.Load(folder_.Write("example.ini", ExampleText()));
    }

    ~ParametersPage() override
    {
        std::error_code ignored;
        std::filesystem::current_path(former_, ignored);
    }

    static Thrown Read(const InitFile& file)
    {
        file.Save("run.ini");
        return test::ThrownBy([] { CTulkParam::readFromFile("run.ini"); });
    }

    static Thrown Refused(const std::string& message)
    {
        return {"InvalidParameter", "TulkParam", "CTulkParam::readFromFile_", message};
    }

    static std::string PlaceOf(const Key& key)
    {
        return "\"" + key.name + "\" in section \"" + key.section + "\"";
    }

    InitFile With(const Key& key, const std::string& value) const
    {
        InitFile file = example_;
        file.Set(key.section, key.name, value);
        return file;
    }

    InitFile example_;

private:
    const test::TempFolder folder_;
    const std::filesystem::path former_ = std::filesystem::current_path();
};

TEST_F(ParametersPage, TheExampleAsksForEverythingAndIsRead)
{
    ASSERT_EQ(Read(example_), Thrown{});
    const CTulkParam& param = *CTulkParam::getInstance();
    EXPECT_TRUE(param.getSearchParam()->bOpenSearch);
    EXPECT_EQ(param.getSearchParam()->vDatasets.size(), 2U);
    EXPECT_TRUE(param.getFdrControlParam()->bFdrControl);
    EXPECT_EQ(param.getLocalizeParam()->vTargetMods.size(), 2U);
    EXPECT_TRUE(param.getAnnotateParam()->bAnnotate);
    EXPECT_EQ(param.getOutputPath(), "results");
}

TEST_F(ParametersPage, TheExampleHoldsEveryKeyButTheOptionalPath)
{
    for (const Key& key : Keys()) {
        EXPECT_EQ(example_.Get(key.section, key.name).empty(), key.name == "modification_database")
            << key.name;
    }
}

TEST_F(ParametersPage, EveryKeyOfTheExampleHasARow)
{
    const std::vector<Key> keys = Keys();
    for (const std::string section : {"Search", "Fdr", "Localization", "Annotation", "Output"}) {
        for (const auto& [name, value] : example_.pGetSection(section)->mapValues) {
            std::string first = name;
            if (first.size() > 2 && first[first.size() - 2] == '_' && first.back() == '2') {
                first.back() = '1';
            }
            EXPECT_TRUE(std::any_of(
                keys.begin(), keys.end(),
                [&](const Key& key) { return key.section == section && key.name == first; }))
                << section << ": " << name;
        }
    }
}

TEST_F(ParametersPage, MissingKeysAreErrorsWhereItSaysSo)
{
    for (const Key& key : Keys()) {
        EXPECT_EQ(Read(With(key, "")),
                  key.isRequired ? Refused("Missing parameter " + PlaceOf(key)) : Thrown{})
            << key.name;
    }
}

TEST_F(ParametersPage, TheRowsStandInTheOrderOfReading)
{
    const std::vector<Key> keys = Keys();
    InitFile file = example_;
    for (std::size_t i = keys.size(); i-- > 0;) {
        if (keys[i].isRequired) {
            file.Set(keys[i].section, keys[i].name, "");
            EXPECT_EQ(Read(file), Refused("Missing parameter " + PlaceOf(keys[i])));
        }
    }
}

TEST_F(ParametersPage, TheValuesThatItQuotesAreTaken)
{
    for (const Key& key : Keys()) {
        for (const std::string& value : key.accepted) {
            InitFile file = With(key, value);
            if (key.section != "Annotation") {
                file.Set("Annotation", "is_annotated", "0"); // it needs localization
            }
            // A display name that the page quotes, not a value.
            const bool isClassName = value.find("Type") != std::string::npos;
            if (!isClassName) {
                EXPECT_EQ(Read(file), Thrown{}) << key.name << " = " << value;
            }
        }
    }
}

TEST_F(ParametersPage, TheValuesThatItCallsRefusedAre)
{
    std::size_t tried = 0;
    for (const Key& key : Keys()) {
        for (const std::string& value : key.refused) {
            const bool hasOwnText = key.name == "fdr_method";
            EXPECT_EQ(Read(With(key, value)),
                      Refused(hasOwnText ? "There is no such FDR estimation method."
                                         : "Invalid parameter " + PlaceOf(key)))
                << value;
            ++tried;
        }
    }
    EXPECT_GT(tried, 40U);
}

TEST_F(ParametersPage, AnnotationWithoutLocalizationIsRefused)
{
    example_.Set("Localization", "is_localized", "0");
    EXPECT_EQ(Read(example_), Refused("Must DO localization before doing annotation."));
}

TEST_F(ParametersPage, TheModificationsThatItQuotesAreRead)
{
    for (const std::string& line : test::LinesUnder(kPage, "Modifications")) {
        if (line.rfind("    ", 0) != 0) {
            continue;
        }
        example_.Set("Search", "fixed_mod_1", test::Trimmed(line));
        EXPECT_EQ(Read(example_), Thrown{}) << line;
    }
}

} // namespace
} // namespace Vorlan
