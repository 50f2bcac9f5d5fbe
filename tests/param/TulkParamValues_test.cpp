// What each accepted value becomes.
#include <limits>

#include "ParameterText.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::ParameterText;
using test::Thrown;

class TulkParamValues : public test::ParameterTest {
protected:
    /// The full file with one value changed must be accepted.
    void Accept(const std::string& section, const std::string& key, const std::string& value)
    {
        ASSERT_EQ(Read(FullParameters().Set(section, key, value)), Thrown{}) << key << "=" << value;
    }
};

TEST_F(TulkParamValues, AFullFileFillsEveryField)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    EXPECT_EQ(Search().eSearchEngine, SearchEngineType::CometPepXml);
    EXPECT_TRUE(Search().bOpenSearch);
    EXPECT_EQ(Search().dPrecursorMatchingTol, 500.0);
    EXPECT_EQ(Search().ePrecursorMatchingTolType, TolType::Da);
    EXPECT_EQ(Search().eFragMethod, FragMethodType::Etd);
    EXPECT_EQ(Search().dPrecursorTol, 10.0);
    EXPECT_EQ(Search().ePrecursorTolType, TolType::Ppm);
    EXPECT_EQ(Search().dFragmentTol, 0.02);
    EXPECT_EQ(Search().eFragmentTolType, TolType::Da);
    EXPECT_EQ(Search().strModificationDatabase, "");
    EXPECT_EQ(Search().vFixedMods.size(), 1U);
    EXPECT_EQ(Search().vVarMods.size(), 2U);
    EXPECT_EQ(Search().eDatasetFormat, DatasetType::Mgf);
    EXPECT_EQ(Search().nDatasetNumber, 2);
    EXPECT_EQ(Search().vDatasets.size(), 2U);
    EXPECT_EQ(Search().ePepIdentFormat, PepIdentType::CometPepXml);
    EXPECT_EQ(Search().nPepIdentNumber, 2);
    EXPECT_EQ(Search().vPepIdentSources.size(), 2U);

    EXPECT_TRUE(Fdr().bFdrControl);
    EXPECT_EQ(Fdr().strDecoyTag, "REV_");
    EXPECT_EQ(Fdr().dFdrThreshold, 0.01);
    EXPECT_EQ(Fdr().eFdrMethod, FdrEstimateType::Separate);
    EXPECT_EQ(Fdr().eTdFdrType, TdFdrType::DecoyPlusOneByTarget);

    EXPECT_TRUE(Localize().bLocalize);
    EXPECT_EQ(Localize().nMinModNumber, 7U);
    EXPECT_TRUE(Localize().bUsePrior);
    EXPECT_EQ(Localize().strFilterMethod, "flr");
    EXPECT_EQ(Localize().dFilterThreshold, 0.75);
    EXPECT_EQ(Localize().vTargetMods.size(), 2U);

    EXPECT_TRUE(Annotate().bAnnotate);
    EXPECT_EQ(Annotate().strProteinDatabase, "proteins.fasta");
    EXPECT_EQ(CTulkParam::getInstance()->getOutputPath(), "out/here");
}

TEST_F(TulkParamValues, OptionalKeysThatAreNotThereLeaveTheUsual)
{
    ASSERT_EQ(Read(FullParameters()
                       .Remove("Search", "open_search")
                       .Remove("Search", "fragmentation_method")
                       .Remove("Search", "modification_database")
                       .Remove("Fdr", "target_decoy_method")),
              Thrown{});
    EXPECT_FALSE(Search().bOpenSearch);
    EXPECT_EQ(Search().dPrecursorMatchingTol, 0.0) << "not read";
    EXPECT_EQ(Search().eFragMethod, FragMethodType::CidHcd);
    EXPECT_EQ(Search().strModificationDatabase, "");
    EXPECT_EQ(Search().vVarMods.at(1).dMass, 2.0) << "from the default table";
    EXPECT_EQ(Fdr().eTdFdrType, TdFdrType::DecoyByTarget);
}

// ---- Display names -------------------------------------------------------

std::string InCapitals(OpenMS::String text)
{
    return text.toUpper();
}

TEST_F(TulkParamValues, EveryEngineIsKnownByItsNameInAnyCase)
{
    for (int i = 1; i <= 10; ++i) {
        const auto type = static_cast<SearchEngineType::ESearchEngineType>(i);
        const OpenMS::String name = SearchEngineType::typeToName(type);
        for (const std::string& value : {std::string(name), InCapitals(name)}) {
            Accept("Search", "search_result_format", value);
            EXPECT_EQ(Search().eSearchEngine, type) << value;
        }
    }
}

TEST_F(TulkParamValues, EveryDatasetFormatIsKnownByItsNameInAnyCase)
{
    for (int i = 1; i <= 4; ++i) {
        const auto type = static_cast<DatasetType::EDatasetType>(i);
        const OpenMS::String name = DatasetType::typeToName(type);
        for (const std::string& value : {std::string(name), InCapitals(name)}) {
            Accept("Search", "dataset_format", value);
            EXPECT_EQ(Search().eDatasetFormat, type) << value;
            EXPECT_EQ(Search().vDatasets.at(0).eType, type) << value;
            EXPECT_EQ(Search().vDatasets.at(1).eType, type) << value;
        }
    }
}

TEST_F(TulkParamValues, EveryResultFormatIsKnownByItsNameInAnyCase)
{
    for (int i = 1; i <= 12; ++i) {
        const auto type = static_cast<PepIdentType::EPepIdentType>(i);
        const OpenMS::String name = PepIdentType::typeToName(type);
        for (const std::string& value : {std::string(name), InCapitals(name)}) {
            Accept("Search", "pep_ident_format", value);
            EXPECT_EQ(Search().ePepIdentFormat, type) << value;
            EXPECT_EQ(Search().vPepIdentSources.at(0).eType, type) << value;
            EXPECT_EQ(Search().vPepIdentSources.at(1).eType, type) << value;
        }
    }
}

// ---- Units -----------------------------------------------------------------

TEST_F(TulkParamValues, B83_UnitsAreNumberedFromZero)
{
    for (const auto& [value, unit] : {std::pair("0", TolType::Da), std::pair("1", TolType::Ppm)}) {
        Accept("Search", "precursor_tol_type", value);
        EXPECT_EQ(Search().ePrecursorTolType, unit);
        Accept("Search", "fragment_tol_type", value);
        EXPECT_EQ(Search().eFragmentTolType, unit);
    }
    Accept("Search", "precursor_matching_tolerance_type", "0");
    EXPECT_EQ(Search().ePrecursorMatchingTolType, TolType::Da);
}

// ---- Open search and other switches --------------------------------------

TEST_F(TulkParamValues, B84_OnlyTheTextOneTurnsOpenSearchOn)
{
    for (const std::string value : {"", "0", "2", "true", "01", "1.0", "1 x"}) {
        ASSERT_EQ(Read(FullParameters()
                           .Set("Search", "open_search", value)
                           .Set("Search", "precursor_matching_tolerance", "bad")
                           .Remove("Search", "precursor_matching_tolerance_type")),
                  Thrown{})
            << value;
        EXPECT_FALSE(Search().bOpenSearch) << value;
        EXPECT_EQ(Search().dPrecursorMatchingTol, 0.0) << "not read";
        EXPECT_EQ(Search().ePrecursorMatchingTolType, TolType::Unknown) << "not read";
    }
}

TEST_F(TulkParamValues, TheFragmentationMethodIsCidUnlessTheFileSaysEtd)
{
    for (const std::string value : {"", "0"}) {
        Accept("Search", "fragmentation_method", value);
        EXPECT_EQ(Search().eFragMethod, FragMethodType::CidHcd);
    }
    Accept("Search", "fragmentation_method", "1");
    EXPECT_EQ(Search().eFragMethod, FragMethodType::Etd);
}

TEST_F(TulkParamValues, B84_EveryTextButZeroTurnsFdrControlOn)
{
    for (const std::string value : {"1", "2", "00", "no", "-"}) {
        Accept("Fdr", "is_fdr_control", value);
        EXPECT_TRUE(Fdr().bFdrControl) << value;
    }
}

TEST_F(TulkParamValues, WithoutFdrControlItsOtherKeysAreNotRead)
{
    ASSERT_EQ(Read(FullParameters()
                       .Set("Fdr", "is_fdr_control", "0")
                       .Remove("Fdr", "decoy_tag")
                       .Set("Fdr", "fdr_threshold", "7")
                       .Set("Fdr", "fdr_method", "bad")
                       .Set("Fdr", "target_decoy_method", "bad")),
              Thrown{});
    EXPECT_FALSE(Fdr().bFdrControl);
    EXPECT_EQ(Fdr().dFdrThreshold, 0.0);
    EXPECT_EQ(Fdr().eFdrMethod, FdrEstimateType::Unknown);
    EXPECT_EQ(Fdr().eTdFdrType, TdFdrType::Unknown);
}

TEST_F(TulkParamValues, FdrMethodsAndFormulasAreNumbered)
{
    Accept("Fdr", "fdr_method", "1");
    EXPECT_EQ(Fdr().eFdrMethod, FdrEstimateType::Global);
    Accept("Fdr", "fdr_method", "3");
    EXPECT_EQ(Fdr().eFdrMethod, FdrEstimateType::Transferred);
    for (const std::string value : {"", "1"}) {
        Accept("Fdr", "target_decoy_method", value);
        EXPECT_EQ(Fdr().eTdFdrType, TdFdrType::DecoyByTarget);
    }
}

TEST_F(TulkParamValues, B84_EveryTextButZeroTurnsLocalizationAndItsPriorOn)
{
    for (const std::string value : {"1", "2", "00", "no"}) {
        Accept("Localization", "is_localized", value);
        EXPECT_TRUE(Localize().bLocalize) << value;
        Accept("Localization", "use_prior", value);
        EXPECT_TRUE(Localize().bUsePrior) << value;
    }
    Accept("Localization", "use_prior", "0");
    EXPECT_FALSE(Localize().bUsePrior);
    Accept("Localization", "filter_method", "0");
    EXPECT_EQ(Localize().strFilterMethod, "probability");
}

TEST_F(TulkParamValues, WithoutLocalizationItsOtherKeysAreNotRead)
{
    ASSERT_EQ(Read(FullParameters()
                       .Set("Annotation", "is_annotated", "0")
                       .Remove("Annotation", "protein_database")
                       .Set("Localization", "is_localized", "0")
                       .Set("Localization", "filter_method", "bad")
                       .Set("Localization", "filter_threshold", "bad")
                       .Remove("Localization", "use_prior")
                       .Remove("Localization", "min_mod_number")
                       .Remove("Localization", "target_mod_number")),
              Thrown{});
    EXPECT_FALSE(Localize().bLocalize);
    EXPECT_EQ(Localize().nMinModNumber, 0U);
    EXPECT_EQ(Localize().strFilterMethod, "");
    EXPECT_TRUE(Localize().vTargetMods.empty());
    EXPECT_FALSE(Annotate().bAnnotate);
    EXPECT_EQ(Annotate().strProteinDatabase, "");
}

// ---- Numbers -------------------------------------------------------------

struct Number {
    const char* reason;
    const char* text;
    double value;
};

TEST_F(TulkParamValues, B51_TolerancesAreReadAsFarAsTheyAreNumbers)
{
    const Number numbers[] = {
        {"a whole number", "1", 1.0},
        {"a digit far behind the point", "1.0000001", 1.0000001},
        {"text behind", "1e-3 junk", 0.001},
        {"a unit behind", "20ppm", 20.0},
        {"a decimal comma ends it", "2,5", 2.0},
        {"hexadecimal", "0x10", 16.0},
        {"a sign", "+5", 5.0},
        {"the smallest there is", "4.9406564584124654e-324", 4.9406564584124654e-324},
        {"infinite", "inf", std::numeric_limits<double>::infinity()},
        {"beyond all doubles", "1e999", std::numeric_limits<double>::infinity()},
    };
    for (const Number& number : numbers) {
        SCOPED_TRACE(number.reason);
        Accept("Search", "precursor_matching_tolerance", number.text);
        EXPECT_EQ(Search().dPrecursorMatchingTol, number.value);
        Accept("Search", "precursor_tol", number.text);
        EXPECT_EQ(Search().dPrecursorTol, number.value);
        Accept("Search", "fragment_tol", number.text);
        EXPECT_EQ(Search().dFragmentTol, number.value);
    }
}

TEST_F(TulkParamValues, B51_ThresholdsLieBetweenZeroAndOneAndATextIsZero)
{
    const Number numbers[] = {
        {"the lower end", "0", 0.0},           {"the upper end", "1", 1.0},
        {"minus zero", "-0.0", 0.0},           {"text behind", "0.5 or so", 0.5},
        {"a percent sign is text", "1%", 1.0}, {"no number is zero", "strict", 0.0},
        {"hexadecimal", "0x1", 1.0},           {"just below one", "0.9999999", 0.9999999},
    };
    for (const Number& number : numbers) {
        SCOPED_TRACE(number.reason);
        Accept("Fdr", "fdr_threshold", number.text);
        EXPECT_EQ(Fdr().dFdrThreshold, number.value);
        Accept("Localization", "filter_threshold", number.text);
        EXPECT_EQ(Localize().dFilterThreshold, number.value);
    }
}

TEST_F(TulkParamValues, B51_CountsAreReadAsFarAsTheyAreWholeNumbers)
{
    for (const std::string value : {"1", "1 junk", "1.9", "1e3", "+1", "01", "1 2"}) {
        Accept("Search", "dataset_number", value);
        EXPECT_EQ(Search().nDatasetNumber, 1) << value;
        EXPECT_EQ(Search().vDatasets.size(), 1U) << value;
        Accept("Search", "pep_ident_number", value);
        EXPECT_EQ(Search().nPepIdentNumber, 1) << value;
        EXPECT_EQ(Search().vPepIdentSources.size(), 1U) << value;
        Accept("Search", "var_mod_number", value);
        EXPECT_EQ(Search().vVarMods.size(), 1U) << value;
    }
}

TEST_F(TulkParamValues, NumbersOfKeysAreDecimal)
{
    std::vector<std::string> files;
    for (int i = 1; i <= 12; ++i) {
        files.push_back("./" + std::to_string(i) + ".txt");
    }
    ParameterText text = FullParameters();
    text.SetList("Search", "pep_ident", files, "pep_ident_filename");
    ASSERT_EQ(Read(text), Thrown{});
    ASSERT_EQ(Search().vPepIdentSources.size(), 12U);
    for (std::size_t i = 0; i < files.size(); ++i) {
        EXPECT_EQ("./" + Search().vPepIdentSources[i].strSecond, files[i]);
    }
}

TEST_F(TulkParamValues, B51_ANumberOfModificationsThatIsNotPositiveMeansNone)
{
    for (const std::string value : {"0", "-1", "none", "0x10", "-99999999999"}) {
        Accept("Search", "fixed_mod_number", value);
        EXPECT_TRUE(Search().vFixedMods.empty()) << value;
        Accept("Search", "var_mod_number", value);
        EXPECT_TRUE(Search().vVarMods.empty()) << value;
        Accept("Localization", "target_mod_number", value);
        EXPECT_TRUE(Localize().vTargetMods.empty()) << value;
    }
}

TEST_F(TulkParamValues, B49_TheLeastNumberOfModificationsIsFiveAndANegativeOneIsHuge)
{
    const struct {
        const char* text;
        std::uint64_t value;
    } numbers[] = {
        {"0", 5U},
        {"2", 5U},
        {"4", 5U},
        {"5", 5U},
        {"6", 6U},
        {"7 or more", 7U},
        {"few", 5U},
        {"2147483647", 2147483647U},
        {"99999999999", 2147483647U},
        {"-1", 18446744073709551615U},
        {"-2147483648", 18446744071562067968U},
    };
    for (const auto& number : numbers) {
        Accept("Localization", "min_mod_number", number.text);
        EXPECT_EQ(Localize().nMinModNumber, number.value) << number.text;
    }
}

// ---- Paths ---------------------------------------------------------------

TEST_F(TulkParamValues, PathsAreCutBehindTheirLastSeparator)
{
    const struct {
        const char* reason;
        const char* path;
        const char* folder;
        const char* name;
    } paths[] = {
        {"slashes", "data/run/a.mgf", "data/run/", "a.mgf"},
        {"backslashes", "C:\\data\\a.mgf", "C:\\data\\", "a.mgf"},
        {"a slash behind a backslash", "C:\\data/a.mgf", "C:\\data/", "a.mgf"},
        {"a backslash behind a slash", "data/run\\a.mgf", "data/run\\", "a.mgf"},
        {"in the working folder", "./a.mgf", "./", "a.mgf"},
        {"in the root", "/a.mgf", "/", "a.mgf"},
        {"blanks within", "my data/a b.mgf", "my data/", "a b.mgf"},
        {"a separator at the end leaves no name", "data/", "data/", ""},
        {"nothing but a separator", "\\", "\\", ""},
        {"two separators", "data//a.mgf", "data//", "a.mgf"},
    };
    for (const auto& row : paths) {
        SCOPED_TRACE(row.reason);
        Accept("Search", "dataset_filename_1", row.path);
        EXPECT_EQ(Search().vDatasets.at(0).strFirst, row.folder);
        EXPECT_EQ(Search().vDatasets.at(0).strSecond, row.name);
        Accept("Search", "pep_ident_filename_2", row.path);
        EXPECT_EQ(Search().vPepIdentSources.at(1).strFirst, row.folder);
        EXPECT_EQ(Search().vPepIdentSources.at(1).strSecond, row.name);
    }
}

TEST_F(TulkParamValues, AResultHasNoSecondFileAndNoLists)
{
    ASSERT_EQ(Read(FullParameters()), Thrown{});
    ASSERT_EQ(Search().vPepIdentSources.size(), 2U);
    for (const PepIdentSource& source : Search().vPepIdentSources) {
        EXPECT_EQ(source.strThird, "") << source.strSecond;
        EXPECT_EQ(source.strFourth, "") << source.strSecond;
        EXPECT_TRUE(source.vFirstList.empty()) << source.strSecond;
        EXPECT_TRUE(source.vSecondList.empty()) << source.strSecond;
    }
}

TEST_F(TulkParamValues, ListsKeepTheOrderOfTheirNumbers)
{
    std::vector<std::string> files;
    for (int i = 1; i <= 12; ++i) {
        files.push_back("data/" + std::to_string(i) + ".mgf");
    }
    ASSERT_EQ(Read(FullParameters().SetList("Search", "dataset", files, "dataset_filename")),
              Thrown{});
    ASSERT_EQ(Search().vDatasets.size(), 12U);
    EXPECT_EQ(Search().vDatasets[1].strSecond, "2.mgf");
    EXPECT_EQ(Search().vDatasets[9].strSecond, "10.mgf");
}

TEST_F(TulkParamValues, TheOutputAndTheProteinDatabaseAreTakenAsTheyStand)
{
    Accept("Output", "output", "C:\\out dir\\");
    EXPECT_EQ(CTulkParam::getInstance()->getOutputPath(), "C:\\out dir\\");
    Accept("Annotation", "protein_database", "no folder.fasta");
    EXPECT_EQ(Annotate().strProteinDatabase, "no folder.fasta");
}

} // namespace
} // namespace Vorlan
