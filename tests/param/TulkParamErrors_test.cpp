// What is refused: every key missing, empty and wrong, one at a time, and which
// error comes first.
#include "ParameterText.h"
#include "support/Printed.h"

namespace Vorlan {
namespace {

using test::FullParameters;
using test::InvalidParameter;
using test::MissingParameter;
using test::ParameterText;
using test::Refused;
using test::Thrown;

using TulkParamErrors = test::ParameterTest;

struct Key {
    const char* section;
    const char* name;
};

/// In the order in which they are read.
constexpr Key kRequired[] = {
    {"Search", "search_result_format"},
    {"Search", "precursor_matching_tolerance"},
    {"Search", "precursor_matching_tolerance_type"},
    {"Search", "precursor_tol"},
    {"Search", "precursor_tol_type"},
    {"Search", "fragment_tol"},
    {"Search", "fragment_tol_type"},
    {"Search", "fixed_mod_number"},
    {"Search", "fixed_mod_1"},
    {"Search", "var_mod_number"},
    {"Search", "var_mod_1"},
    {"Search", "var_mod_2"},
    {"Search", "dataset_format"},
    {"Search", "dataset_number"},
    {"Search", "dataset_filename_1"},
    {"Search", "dataset_filename_2"},
    {"Search", "pep_ident_format"},
    {"Search", "pep_ident_number"},
    {"Search", "pep_ident_filename_1"},
    {"Search", "pep_ident_filename_2"},
    {"Fdr", "is_fdr_control"},
    {"Fdr", "decoy_tag"},
    {"Fdr", "fdr_threshold"},
    {"Fdr", "fdr_method"},
    {"Localization", "is_localized"},
    {"Localization", "min_mod_number"},
    {"Localization", "use_prior"},
    {"Localization", "filter_method"},
    {"Localization", "filter_threshold"},
    {"Localization", "target_mod_number"},
    {"Localization", "target_mod_1"},
    {"Localization", "target_mod_2"},
    {"Annotation", "is_annotated"},
    {"Annotation", "protein_database"},
    {"Output", "output"},
};

constexpr Key kOptional[] = {
    {"Search", "open_search"},
    {"Search", "fragmentation_method"},
    {"Search", "modification_database"},
    {"Fdr", "target_decoy_method"},
};

TEST_F(TulkParamErrors, TheFullFileIsAccepted)
{
    EXPECT_EQ(Read(FullParameters()), Thrown{});
}

TEST_F(TulkParamErrors, EachRequiredKeyMayNotBeMissing)
{
    for (const Key& key : kRequired) {
        EXPECT_EQ(Read(FullParameters().Remove(key.section, key.name)),
                  MissingParameter(key.section, key.name));
    }
}

TEST_F(TulkParamErrors, AnEmptyValueIsMissing)
{
    for (const Key& key : kRequired) {
        EXPECT_EQ(Read(FullParameters().Set(key.section, key.name, "")),
                  MissingParameter(key.section, key.name));
        EXPECT_EQ(Read(FullParameters().Set(key.section, key.name, "\t # a comment")),
                  MissingParameter(key.section, key.name));
    }
}

TEST_F(TulkParamErrors, EachOptionalKeyMayBeMissingOrEmpty)
{
    for (const Key& key : kOptional) {
        EXPECT_EQ(Read(FullParameters().Remove(key.section, key.name)), Thrown{}) << key.name;
        EXPECT_EQ(Read(FullParameters().Set(key.section, key.name, "")), Thrown{}) << key.name;
    }
}

TEST_F(TulkParamErrors, AKeyOfAnotherSectionDoesNotCount)
{
    for (const Key& key : kRequired) {
        const std::string other = key.section == std::string("Output") ? "Search" : "Output";
        EXPECT_EQ(Read(FullParameters().Remove(key.section, key.name).Set(other, key.name, "1")),
                  MissingParameter(key.section, key.name));
    }
}

TEST_F(TulkParamErrors, KeysAndSectionsAreCaseSensitive)
{
    EXPECT_EQ(Read(FullParameters().Remove("Output", "output").Set("Output", "Output", "out")),
              MissingParameter("Output", "output"));
    EXPECT_EQ(Read(FullParameters().Remove("Output", "output").Set("output", "output", "out")),
              MissingParameter("Output", "output"));
}

TEST_F(TulkParamErrors, ASectionThatIsNotThereLacksItsFirstKey)
{
    constexpr Key kFirst[] = {
        {"Search", "search_result_format"},
        {"Fdr", "is_fdr_control"},
        {"Localization", "is_localized"},
        {"Annotation", "is_annotated"},
        {"Output", "output"},
    };
    for (const Key& key : kFirst) {
        EXPECT_EQ(Read(FullParameters().Remove(key.section)),
                  MissingParameter(key.section, key.name));
    }
}

TEST_F(TulkParamErrors, AnEmptyFileLacksTheFirstKey)
{
    EXPECT_EQ(Read(ParameterText()), MissingParameter("Search", "search_result_format"));
}

// ---- Wrong values --------------------------------------------------------

struct Wrong {
    Key key;
    std::vector<const char*> values;
};

const Wrong kWrong[] = {
    {{"Search", "search_result_format"}, {"unknown", "UNKNOWN", "Comet", "10", "MaxQuant 2"}},
    {{"Search", "precursor_matching_tolerance"}, {"0", "-1", "-0.0", "nan", "-inf", "wide", "."}},
    {{"Search", "precursor_matching_tolerance_type"}, {"2", "Da", "00", "0.0", "-1", "0 Da"}},
    {{"Search", "fragmentation_method"}, {"2", "CID/HCD", "ETD", "01", "-1", "1 x"}},
    {{"Search", "precursor_tol"},
     {"0", "0x0", "-1", "-0.0", "nan", "-nan", "-inf", "ten", "-10 ppm"}},
    {{"Search", "precursor_tol_type"}, {"2", "ppm", "Da", "01", "1.0", "-1"}},
    {{"Search", "fragment_tol"}, {"0", "-0.02", "nan", "-inf", "1e-400", "narrow"}},
    {{"Search", "fragment_tol_type"}, {"2", "ppm", "PPM", "Da", "+1"}},
    {{"Search", "fixed_mod_1"},
     {"Carbamidomethyl", "Carbamidomethyl C)", "Carbamidomethyl (C", "Carbamidomethyl ()",
      "Carbamidomethyl (C) x", "Carbamidomethyl (C))", "Carbamidomethyl (D)", "carbamidomethyl (C)",
      "Carbamidomethyl (c)", "Carbamidomethyl (C )", "(C)", "No such (C)"}},
    {{"Search", "var_mod_1"}, {"Oxidation", "Oxidation (MW)", "Oxidation (Any N-term)", "0"}},
    {{"Search", "var_mod_2"}, {"Cap", "Cap (K)"}},
    {{"Search", "dataset_format"}, {"unknown", "raw", "2", ".mgf"}},
    {{"Search", "dataset_number"}, {"0", "-1", "none", "0x10", "0.9", "-2147483648"}},
    {{"Search", "dataset_filename_1"}, {"data.mgf", "C:data.mgf", "|"}},
    {{"Search", "dataset_filename_2"}, {"data.mgf"}},
    {{"Search", "pep_ident_format"}, {"unknown", "Comet", "12"}},
    {{"Search", "pep_ident_number"}, {"0", "-2", "two", "-99999999999"}},
    {{"Search", "pep_ident_filename_1"}, {"a.pep.xml"}},
    {{"Search", "pep_ident_filename_2"}, {"b.pep.xml"}},
    {{"Fdr", "fdr_threshold"}, {"-0.0000001", "1.0000001", "-1", "2", "nan", "inf", "-inf"}},
    {{"Fdr", "target_decoy_method"}, {"0", "3", "decoy/target", "01"}},
    {{"Localization", "filter_method"}, {"2", "flr", "probability", "00"}},
    {{"Localization", "filter_threshold"}, {"-0.0000001", "1.0000001", "75", "75%", "nan", "inf"}},
    {{"Localization", "target_mod_1"}, {"Phospho", "Phospho (Y)", "Phospho (ST)"}},
    {{"Localization", "target_mod_2"}, {"Phospho (T) or (S) so"}},
    {{"Annotation", "is_annotated"}, {"2", "yes", "01", "-1"}},
};

TEST_F(TulkParamErrors, EachWrongValueIsRefused)
{
    for (const Wrong& wrong : kWrong) {
        for (const std::string value : wrong.values) {
            EXPECT_EQ(Read(FullParameters().Set(wrong.key.section, wrong.key.name, value)),
                      InvalidParameter(wrong.key.section, wrong.key.name))
                << "\"" << value << "\"";
        }
    }
}

TEST_F(TulkParamErrors, B48_AnOpenSearchTakesDaltonsOnly)
{
    const ParameterText ppm =
        FullParameters().Set("Search", "precursor_matching_tolerance_type", "1");
    EXPECT_EQ(Read(ppm), InvalidParameter("Search", "precursor_matching_tolerance_type"));
}

TEST_F(TulkParamErrors, AnUnknownFdrMethodHasItsOwnMessage)
{
    for (const std::string value : {"0", "4", "global", "01", "1.0", "-1"}) {
        EXPECT_EQ(Read(FullParameters().Set("Fdr", "fdr_method", value)),
                  Refused("There is no such FDR estimation method."));
    }
}

TEST_F(TulkParamErrors, AnnotationNeedsLocalization)
{
    EXPECT_EQ(Read(FullParameters().Set("Localization", "is_localized", "0")),
              Refused("Must DO localization before doing annotation."));
}

TEST_F(TulkParamErrors, NothingIsPrintedOfAFileThatIsReadOrRefused)
{
    const struct {
        ParameterText text;
        Thrown thrown;
    } cases[] = {
        {FullParameters(), {}},
        {FullParameters().Remove("Output", "output"), MissingParameter("Output", "output")},
        {FullParameters().Set("Search", "var_mod_2", "no mod"),
         InvalidParameter("Search", "var_mod_2")},
        {FullParameters().Set("Fdr", "fdr_method", "4"),
         Refused("There is no such FDR estimation method.")},
        {FullParameters().Set("Localization", "is_localized", "0"),
         Refused("Must DO localization before doing annotation.")},
    };
    for (const auto& c : cases) {
        Thrown thrown;
        const test::Printed printed = test::PrintedBy([&] { thrown = Read(c.text); });
        EXPECT_EQ(thrown, c.thrown);
        EXPECT_EQ(printed.out, "") << c.thrown;
        EXPECT_EQ(printed.err, "") << c.thrown;
    }
}

// ---- Large numbers -------------------------------------------------------

TEST_F(TulkParamErrors, AHugeNumberEndsAtTheFirstMissingEntry)
{
    const struct {
        Key number;
        Key missing;
    } lists[] = {
        {{"Search", "fixed_mod_number"}, {"Search", "fixed_mod_2"}},
        {{"Search", "var_mod_number"}, {"Search", "var_mod_3"}},
        {{"Search", "dataset_number"}, {"Search", "dataset_filename_3"}},
        {{"Search", "pep_ident_number"}, {"Search", "pep_ident_filename_3"}},
        {{"Localization", "target_mod_number"}, {"Localization", "target_mod_3"}},
    };
    for (const auto& list : lists) {
        for (const std::string count : {"3", "2147483647", "2147483648", "99999999999"}) {
            EXPECT_EQ(Read(FullParameters().Set(list.number.section, list.number.name, count)),
                      MissingParameter(list.missing.section, list.missing.name))
                << count;
        }
    }
}

// ---- The first error wins ------------------------------------------------

/// One step of the reading, made to fail.
struct Step {
    Key key;
    const char* value;
    Thrown thrown;
};

Step Lacking(const char* section, const char* name)
{
    return {{section, name}, "", MissingParameter(section, name)};
}

Step Bad(const char* section, const char* name, const char* value)
{
    return {{section, name}, value, InvalidParameter(section, name)};
}

/// Every step, in the order of reading.
std::vector<Step> Steps()
{
    return {
        Bad("Search", "search_result_format", "no engine"),
        Bad("Search", "precursor_matching_tolerance", "0"),
        Bad("Search", "precursor_matching_tolerance_type", "1"),
        Bad("Search", "fragmentation_method", "2"),
        Lacking("Search", "precursor_tol"),
        Bad("Search", "precursor_tol_type", "2"),
        Bad("Search", "fragment_tol", "0"),
        Lacking("Search", "fragment_tol_type"),
        {{"Search", "modification_database"},
         "mods.txt",
         {"InvalidParameter", "ModificationDB", "CModificationsDBEngine::getInstance",
          "Modification database loading from Comet (.pep.xml) is not supported for now."}},
        Lacking("Search", "fixed_mod_number"),
        Bad("Search", "fixed_mod_1", "no mod"),
        Lacking("Search", "var_mod_number"),
        Lacking("Search", "var_mod_1"),
        Bad("Search", "var_mod_2", "no mod"),
        Lacking("Search", "dataset_format"),
        Bad("Search", "dataset_number", "0"),
        Bad("Search", "dataset_filename_1", "no folder"),
        Lacking("Search", "dataset_filename_2"),
        Bad("Search", "pep_ident_format", "no format"),
        Lacking("Search", "pep_ident_number"),
        Lacking("Search", "pep_ident_filename_1"),
        Bad("Search", "pep_ident_filename_2", "no folder"),
        Lacking("Fdr", "is_fdr_control"),
        Lacking("Fdr", "decoy_tag"),
        Bad("Fdr", "fdr_threshold", "2"),
        {{"Fdr", "fdr_method"}, "4", Refused("There is no such FDR estimation method.")},
        Bad("Fdr", "target_decoy_method", "3"),
        Lacking("Localization", "is_localized"),
        Lacking("Localization", "min_mod_number"),
        Lacking("Localization", "use_prior"),
        Bad("Localization", "filter_method", "2"),
        Bad("Localization", "filter_threshold", "2"),
        Lacking("Localization", "target_mod_number"),
        Bad("Localization", "target_mod_1", "no mod"),
        Lacking("Localization", "target_mod_2"),
        Bad("Annotation", "is_annotated", "2"),
        Lacking("Annotation", "protein_database"),
        Lacking("Output", "output"),
    };
}

TEST_F(TulkParamErrors, OfTwoNeighboursTheEarlierIsTold)
{
    const std::vector<Step> steps = Steps();
    for (std::size_t i = 0; i + 1 < steps.size(); ++i) {
        ParameterText text = FullParameters();
        for (const Step& step : {steps[i], steps[i + 1]}) {
            text.Set(step.key.section, step.key.name, step.value);
        }
        EXPECT_EQ(Read(text), steps[i].thrown) << steps[i].key.name;
    }
}

TEST_F(TulkParamErrors, OfAllThatFollowTheEarliestIsTold)
{
    const std::vector<Step> steps = Steps();
    ParameterText text = FullParameters();
    for (std::size_t i = steps.size(); i-- > 0;) {
        text.Set(steps[i].key.section, steps[i].key.name, steps[i].value);
        EXPECT_EQ(Read(text), steps[i].thrown) << steps[i].key.name;
    }
}

TEST_F(TulkParamErrors, TheToleranceOfAnOpenSearchComesBeforeItsUnit)
{
    EXPECT_EQ(Read(FullParameters()
                       .Remove("Search", "precursor_matching_tolerance")
                       .Remove("Search", "precursor_matching_tolerance_type")),
              MissingParameter("Search", "precursor_matching_tolerance"));
}

TEST_F(TulkParamErrors, TheProteinDatabaseComesBeforeTheNeedOfLocalization)
{
    EXPECT_EQ(Read(FullParameters()
                       .Set("Localization", "is_localized", "0")
                       .Remove("Annotation", "protein_database")),
              MissingParameter("Annotation", "protein_database"));
}

TEST_F(TulkParamErrors, TheNeedOfLocalizationComesBeforeTheOutput)
{
    EXPECT_EQ(
        Read(FullParameters().Set("Localization", "is_localized", "0").Remove("Output", "output")),
        Refused("Must DO localization before doing annotation."));
}

} // namespace
} // namespace Vorlan
