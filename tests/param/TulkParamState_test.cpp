// What the instance holds: after a failure, after another reading, and to a
// derived class.
#include <type_traits>

#include "ParameterText.h"
#include "support/Fields.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::MissingParameter;
using test::ParameterText;
using test::Thrown;

static_assert(
    std::is_copy_constructible_v<CSearchParam> && std::is_copy_assignable_v<CSearchParam>);
static_assert(
    std::is_copy_constructible_v<CFdrControlParam> && std::is_copy_assignable_v<CFdrControlParam>);
static_assert(
    std::is_copy_constructible_v<CLocalizeParam> && std::is_copy_assignable_v<CLocalizeParam>);
static_assert(
    std::is_copy_constructible_v<CAnnotateParam> && std::is_copy_assignable_v<CAnnotateParam>);
static_assert(!std::is_copy_constructible_v<CTulkParam> && !std::is_copy_assignable_v<CTulkParam>);
static_assert(!std::is_default_constructible_v<CTulkParam>, "one instance");

/// What a getter of the instance gives.
template <auto kGetter>
using GivenBy = std::invoke_result_t<decltype(kGetter), const CTulkParam&>;

static_assert(std::is_same_v<GivenBy<&CTulkParam::getSearchParam>, const CSearchParam*>);
static_assert(std::is_same_v<GivenBy<&CTulkParam::getFdrControlParam>, const CFdrControlParam*>);
static_assert(std::is_same_v<GivenBy<&CTulkParam::getLocalizeParam>, const CLocalizeParam*>);
static_assert(std::is_same_v<GivenBy<&CTulkParam::getAnnotateParam>, const CAnnotateParam*>);
static_assert(std::is_same_v<GivenBy<&CTulkParam::getOutputPath>, OpenMS::String>, "a copy");
static_assert(std::is_same_v<decltype(CTulkParam::getInstance()), const CTulkParam*>);

class TulkParamState : public test::ParameterTest {
protected:
    /// Fills the instance, then fails at key.
    void FailAt(const std::string& section, const std::string& key)
    {
        ASSERT_EQ(Read(FullParameters()), Thrown{});
        ASSERT_EQ(Read(FullParameters().Remove(section, key)), MissingParameter(section, key));
    }

    /// Which groups are there: S, F, L and A, and O for an output path.
    static std::string Groups(const CTulkParam& param = *CTulkParam::getInstance())
    {
        return std::string(param.getSearchParam() != nullptr ? "S" : "")
               + (param.getFdrControlParam() != nullptr ? "F" : "")
               + (param.getLocalizeParam() != nullptr ? "L" : "")
               + (param.getAnnotateParam() != nullptr ? "A" : "")
               + (param.getOutputPath().empty() ? "" : "O");
    }
};

// ---- Defaults ------------------------------------------------------------

TEST(TulkParamGroups, AreEmptyByDefault)
{
    const CSearchParam search;
    EXPECT_EQ(search.eSearchEngine, SearchEngineType::Unknown);
    EXPECT_FALSE(search.bOpenSearch);
    EXPECT_EQ(search.dPrecursorMatchingTol, 0.0);
    EXPECT_EQ(search.ePrecursorMatchingTolType, TolType::Unknown);
    EXPECT_EQ(search.eFragMethod, FragMethodType::Unknown);
    EXPECT_EQ(search.dPrecursorTol, 0.0);
    EXPECT_EQ(search.ePrecursorTolType, TolType::Unknown);
    EXPECT_EQ(search.dFragmentTol, 0.0);
    EXPECT_EQ(search.eFragmentTolType, TolType::Unknown);
    EXPECT_EQ(search.eDatasetFormat, DatasetType::Unknown);
    EXPECT_EQ(search.nDatasetNumber, 0);
    EXPECT_EQ(search.ePepIdentFormat, PepIdentType::Unknown);
    EXPECT_EQ(search.nPepIdentNumber, 0);
    EXPECT_TRUE(search.getSpecifiedMod().empty());
    EXPECT_FALSE(CFdrControlParam().bFdrControl);
    EXPECT_FALSE(CLocalizeParam().bLocalize);
    EXPECT_EQ(CLocalizeParam().nMinModNumber, 0U);
    EXPECT_FALSE(CAnnotateParam().bAnnotate);
}

TEST(TulkParamGroups, FieldsStandInTheirOrder)
{
    using Text = std::string;
    using Mods = std::vector<IdentModification>;
    const CSearchParam s;
    EXPECT_TRUE(
        (test::Fields<SearchEngineType::ESearchEngineType, bool, double, TolType::ETolType,
                      FragMethodType::EFragType, double, TolType::ETolType, double,
                      TolType::ETolType, Text>::StandInOrder(s.eSearchEngine, s.bOpenSearch,
                                                             s.dPrecursorMatchingTol,
                                                             s.ePrecursorMatchingTolType,
                                                             s.eFragMethod, s.dPrecursorTol,
                                                             s.ePrecursorTolType, s.dFragmentTol,
                                                             s.eFragmentTolType,
                                                             s.strModificationDatabase)));
    EXPECT_TRUE(
        (test::Fields<Text, Mods, Mods, DatasetType::EDatasetType, std::int32_t,
                      std::vector<DatasetSource>, PepIdentType::EPepIdentType, std::int32_t,
                      std::vector<PepIdentSource>>::StandInOrder(s.strModificationDatabase,
                                                                 s.vFixedMods, s.vVarMods,
                                                                 s.eDatasetFormat, s.nDatasetNumber,
                                                                 s.vDatasets, s.ePepIdentFormat,
                                                                 s.nPepIdentNumber,
                                                                 s.vPepIdentSources)));
    const CFdrControlParam fdr;
    EXPECT_TRUE(
        (test::Fields<bool, Text, double, FdrEstimateType::EFdrEstimateType,
                      TdFdrType::ETdFdrType>::StandInOrder(fdr.bFdrControl, fdr.strDecoyTag,
                                                           fdr.dFdrThreshold, fdr.eFdrMethod,
                                                           fdr.eTdFdrType)));
    const CLocalizeParam localize;
    EXPECT_TRUE((test::Fields<bool, std::uint64_t, bool, Text, Mods, double>::StandInOrder(
        localize.bLocalize, localize.nMinModNumber, localize.bUsePrior, localize.strFilterMethod,
        localize.vTargetMods, localize.dFilterThreshold)));
    const CAnnotateParam annotate;
    EXPECT_TRUE(
        (test::Fields<bool, Text>::StandInOrder(annotate.bAnnotate, annotate.strProteinDatabase)));
}

// ---- After a failure -----------------------------------------------------

TEST_F(TulkParamState, AFileThatIsNotThereLeavesNothing)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    testing::internal::CaptureStdout();
    EXPECT_EQ(test::ThrownBy([] { CTulkParam::readFromFile("no.ini"); }).name, "FileNotFound");
    testing::internal::GetCapturedStdout();
    EXPECT_EQ(Groups(), "");
}

TEST_F(TulkParamState, AFileThatIsMalformedLeavesNothing)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    Write("run.ini", FullParameters().Text() + "no pair\n");
    EXPECT_EQ(test::ThrownBy([] { CTulkParam::readFromFile("run.ini"); }).file, "InitFile");
    EXPECT_EQ(Groups(), "");
}

TEST_F(TulkParamState, AFailureAtTheFirstKeyLeavesADefaultGroup)
{
    FailAt("Search", "search_result_format");
    EXPECT_EQ(Groups(), "S");
    EXPECT_EQ(Search().eSearchEngine, SearchEngineType::Unknown);
    EXPECT_EQ(Search().dPrecursorTol, 0.0);
    EXPECT_TRUE(Search().vDatasets.empty());
}

TEST_F(TulkParamState, AFailureInsideSearchLeavesWhatStandsBefore)
{
    FailAt("Search", "var_mod_2");
    EXPECT_EQ(Groups(), "S");
    EXPECT_EQ(Search().dFragmentTol, 0.02);
    EXPECT_EQ(Search().vFixedMods.size(), 1U);
    EXPECT_EQ(Search().vVarMods.size(), 1U);
    EXPECT_EQ(Search().eDatasetFormat, DatasetType::Unknown);
}

TEST_F(TulkParamState, AFailureAtTheLastKeyOfSearchLeavesTheListsBefore)
{
    FailAt("Search", "pep_ident_filename_2");
    EXPECT_EQ(Groups(), "S");
    EXPECT_EQ(Search().vDatasets.size(), 2U);
    EXPECT_EQ(Search().nPepIdentNumber, 2);
    EXPECT_EQ(Search().vPepIdentSources.size(), 1U);
}

TEST_F(TulkParamState, AFailureInFdrLeavesSearchAndWhatStandsBefore)
{
    FailAt("Fdr", "fdr_method");
    EXPECT_EQ(Groups(), "SF");
    EXPECT_TRUE(Fdr().bFdrControl);
    EXPECT_EQ(Fdr().strDecoyTag, "REV_");
    EXPECT_EQ(Fdr().dFdrThreshold, 0.01);
    EXPECT_EQ(Fdr().eFdrMethod, FdrEstimateType::Unknown);
}

TEST_F(TulkParamState, AFailureInLocalizationLeavesWhatStandsBefore)
{
    FailAt("Localization", "target_mod_2");
    EXPECT_EQ(Groups(), "SFL");
    EXPECT_EQ(Localize().dFilterThreshold, 0.75);
    EXPECT_EQ(Localize().vTargetMods.size(), 1U);
}

TEST_F(TulkParamState, AFailureInAnnotationLeavesWhatStandsBefore)
{
    FailAt("Annotation", "protein_database");
    EXPECT_EQ(Groups(), "SFLA");
    EXPECT_TRUE(Annotate().bAnnotate);
    EXPECT_EQ(Annotate().strProteinDatabase, "");
}

TEST_F(TulkParamState, AMissingLocalizationLeavesTheAnnotationAsRead)
{
    ASSERT_EQ(Read(FullParameters().Set("Localization", "is_localized", "0")).name,
              "InvalidParameter");
    EXPECT_EQ(Groups(), "SFLA");
    EXPECT_EQ(Annotate().strProteinDatabase, "proteins.fasta");
}

TEST_F(TulkParamState, AFailureAtTheOutputLeavesAllGroups)
{
    FailAt("Output", "output");
    EXPECT_EQ(Groups(), "SFLA");
    EXPECT_TRUE(Annotate().bAnnotate);
}

TEST_F(TulkParamState, B48_AnOpenSearchInPpmIsReadBeforeItIsRefused)
{
    ASSERT_EQ(Read(FullParameters().Set("Search", "precursor_matching_tolerance_type", "1")).name,
              "InvalidParameter");
    EXPECT_TRUE(Search().bOpenSearch);
    EXPECT_EQ(Search().dPrecursorMatchingTol, 500.0);
}

// ---- Another reading -----------------------------------------------------

TEST_F(TulkParamState, ASecondReadingReplacesTheFirst)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    ASSERT_EQ(Read(FullParameters()
                       .Set("Search", "open_search", "0")
                       .SetMods("fixed_mod", {})
                       .SetMods("var_mod", {"Phospho (S)"})
                       .SetList("Search", "dataset", {"other/c.mgf"}, "dataset_filename")
                       .Set("Fdr", "is_fdr_control", "0")
                       .Set("Localization", "is_localized", "0")
                       .Set("Annotation", "is_annotated", "0")
                       .Set("Output", "output", "second")),
              Thrown{});
    EXPECT_FALSE(Search().bOpenSearch);
    EXPECT_EQ(Search().dPrecursorMatchingTol, 0.0);
    EXPECT_TRUE(Search().vFixedMods.empty());
    ASSERT_EQ(Search().vVarMods.size(), 1U);
    EXPECT_EQ(Search().vVarMods[0].strName, "Phospho");
    ASSERT_EQ(Search().vDatasets.size(), 1U);
    EXPECT_EQ(Search().vDatasets[0].strSecond, "c.mgf");
    EXPECT_EQ(Fdr().strDecoyTag, "");
    EXPECT_TRUE(Localize().vTargetMods.empty());
    EXPECT_EQ(Annotate().strProteinDatabase, "");
    EXPECT_EQ(CTulkParam::getInstance()->getOutputPath(), "second");
}

TEST_F(TulkParamState, AfterAFailureAGoodFileIsReadWholly)
{
    FailAt("Search", "search_result_format");
    EXPECT_EQ(Read(FullParameters()), Thrown{});
    EXPECT_EQ(Groups(), "SFLAO");
}

TEST_F(TulkParamState, ACopyOfAGroupOutlivesTheReading)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    const CSearchParam copy = Search();
    ASSERT_EQ(Read(ParameterText()).name, "InvalidParameter");
    EXPECT_EQ(copy.vVarMods.size(), 2U);
    EXPECT_EQ(copy.vDatasets.at(1).strSecond, "b.mgf");
}

TEST_F(TulkParamState, ThePathMayBeATextOfTheGroupsThatGo)
{
    // Long enough for memory of its own, which goes with its group.
    const std::string next = "the parameters of the run that comes next.ini";
    const std::string missing = "no folder of the run that comes next/";
    Write(next, FullParameters()
                    .Set("Search", "pep_ident_filename_1", missing + "a.pep.xml")
                    .Set("Output", "output", "next")
                    .Text());
    ASSERT_EQ(Read(FullParameters().Set("Search", "pep_ident_filename_1", "./" + next)), Thrown{});
    CTulkParam::readFromFile(Search().vPepIdentSources.at(0).strSecond);
    EXPECT_EQ(CTulkParam::getInstance()->getOutputPath(), "next");

    Thrown thrown;
    EXPECT_EQ(test::OutputOf([&] {
                  thrown = test::ThrownBy(
                      [] { CTulkParam::readFromFile(Search().vPepIdentSources.at(0).strFirst); });
              }),
              "Error when reading \"" + missing + "\".\n");
    EXPECT_EQ(thrown, (Thrown{"FileNotFound", "InitFile", "InitFile::Load",
                              "the file '" + missing + "' could not be found"}));
    EXPECT_EQ(Groups(), "");
}

TEST_F(TulkParamState, ReadingGivesTheOneInstance)
{
    const CTulkParam* const before = CTulkParam::getInstance();
    Write("run.ini", FullParameters().Text());
    EXPECT_EQ(CTulkParam::readFromFile("run.ini"), before);
    EXPECT_EQ(CTulkParam::getInstance(), before);
}

// ---- Derived classes -----------------------------------------------------

class Parameters : public CTulkParam {
public:
    using CTulkParam::clear_;
    using CTulkParam::ParamError;
    using CTulkParam::readFromFile_;
};

// The workers of the instance are for derived classes only.
constexpr auto kRead = [](auto& param) -> decltype(param.readFromFile_("")) {};
constexpr auto kClear = [](auto& param) -> decltype(param.clear_()) {};
constexpr auto kTell = [](auto& param) -> decltype(param.ParamError("", "")) { return {}; };

static_assert(std::is_invocable_v<decltype(kRead), Parameters&>);
static_assert(!std::is_invocable_v<decltype(kRead), CTulkParam&>);
static_assert(std::is_invocable_v<decltype(kClear), Parameters&>);
static_assert(!std::is_invocable_v<decltype(kClear), CTulkParam&>);
static_assert(std::is_invocable_v<decltype(kTell), Parameters&>);
static_assert(!std::is_invocable_v<decltype(kTell), CTulkParam&>);

TEST_F(TulkParamState, ADerivedClassReadsIntoItself)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    Write("other.ini", FullParameters().Set("Output", "output", "other").Text());
    Parameters parameters;
    EXPECT_EQ(Groups(parameters), "");
    parameters.readFromFile_("other.ini");
    EXPECT_EQ(Groups(parameters), "SFLAO");
    EXPECT_EQ(parameters.getOutputPath(), "other");
    EXPECT_EQ(CTulkParam::getInstance()->getOutputPath(), "out/here");
}

TEST_F(TulkParamState, ClearingDeletesTheGroupsAndEmptiesThePath)
{
    Write("run.ini", FullParameters().Text());
    Parameters parameters;
    parameters.readFromFile_("run.ini");
    parameters.clear_();
    EXPECT_EQ(Groups(parameters), "");
    parameters.clear_();
    EXPECT_EQ(Groups(parameters), "") << "twice does no harm";
}

TEST(TulkParamError, QuotesKeyAndSection)
{
    EXPECT_EQ(Parameters::ParamError("fdr_threshold", "Fdr"),
              R"("fdr_threshold" in section "Fdr")");
    EXPECT_EQ(Parameters::ParamError("", ""), R"("" in section "")");
}

} // namespace
} // namespace Vorlan
