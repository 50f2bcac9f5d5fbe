// Which spectra file a dataset name means.
#include "run/DatasetResolver.h"

#include "common/Failure.h"
#include "support/Support.h"

namespace pelgrin {
namespace {

using Files = std::vector<std::string>;

/// "run.mgf by_file_name", "-" for none, or the text of the refusal.
std::string Resolved(const std::string& name, const Files& files,
                     const DatasetResolver::Given& given = {})
{
    try {
        const auto hit = DatasetResolver(files, given).Find(name);
        return hit ? files.at(hit->file) + " " + KeyOf(hit->rule) : "-";
    } catch (const Failure& failure) {
        return failure.what();
    }
}

TEST(DatasetResolver, TheFirstRuleThatFindsAFileDecides)
{
    struct Case {
        const char* reason;
        const char* name;
        Files files;
        const char* expected;
    };
    for (const Case& c : {
             Case{"the name itself", "run.mgf", {"run.mgf", "run"}, "run.mgf by_file_name"},
             Case{"the name itself, without ending", "run", {"run.mgf", "run"}, "run by_file_name"},
             Case{"behind a slash",
                  "/data/run.mgf",
                  {"run.MGF", "run.mgf"},
                  "run.mgf by_file_name_behind_separator"},
             Case{"behind a backslash",
                  "C:\\data\\run.mgf",
                  {"run.mgf"},
                  "run.mgf by_file_name_behind_separator"},
             Case{"a name that holds a slash is tried whole first",
                  "a/run.mgf",
                  {"run.mgf", "a/run.mgf"},
                  "a/run.mgf by_file_name"},
             Case{"no ending", "run", {"run.mgf"}, "run.mgf by_file_name_without_ending"},
             Case{"no parameters were read",
                  "/data/run01.unknown",
                  {"run01.mgf", "run02.mgf"},
                  "run01.mgf by_file_name_without_ending"},
             Case{"another ending in another case",
                  "run.RAW",
                  {"run.MGF"},
                  "run.MGF by_file_name_without_ending"},
             Case{"endings upon endings",
                  "run.mzML.gz.unknown",
                  {"run.mgf"},
                  "run.mgf by_file_name_without_ending"},
             Case{"a result", "run.pep.xml", {"run.mgf"}, "run.mgf by_file_name_without_ending"},
             Case{"dots that are no ending stay",
                  "a.b.raw",
                  {"a.b.mgf", "a.mgf"},
                  "a.b.mgf by_file_name_without_ending"},
             Case{"cut at its first dot", "a.mgf", {"a.b.mgf"}, "a.b.mgf by_file_name_cut_at_dot"},
             Case{"cut, with a path", "x/a.mgf", {"a.b.mgf"}, "a.b.mgf by_file_name_cut_at_dot"},
             Case{"a stronger rule comes first",
                  "a.mgf",
                  {"a.b.mgf", "a.MGF"},
                  "a.MGF by_file_name_without_ending"},
             Case{"a name with a dot was not cut", "a.c.mgf", {"a.b.mgf"}, "-"},
             Case{"the stem's case counts", "RUN.mgf", {"run.mgf"}, "-"},
             Case{"part of a name", "run1.mgf", {"run.mgf", "run10.mgf"}, "-"},
             Case{"nothing behind the separator", "/data/", {".mgf", "data"}, "-"},
             Case{"nothing at all", "", {".mgf", "run.mgf"}, "-"},
             Case{"an ending alone is a name", ".mgf", {".mgf"}, ".mgf by_file_name"},
         }) {
        SCOPED_TRACE(c.reason);
        EXPECT_EQ(Resolved(c.name, c.files), c.expected);
    }
}

TEST(DatasetResolver, ANameThatMeansTwoFilesIsRefusedWithBoth)
{
    EXPECT_EQ(Resolved("run", {"other.mgf", "run.mgf", "run.MGF"}),
              "the dataset \"run\" may be \"run.mgf\" or \"run.MGF\"; say which with --dataset "
              "\"run=FILE\"");
    EXPECT_EQ(Resolved("/x/a.mgf", {"a.1.mgf", "a.2.mgf"}),
              "the dataset \"/x/a.mgf\" may be \"a.1.mgf\" or \"a.2.mgf\"; say which with "
              "--dataset \"/x/a.mgf=FILE\"");
}

TEST(DatasetResolver, WhatTheUserSaysWinsOverAllRules)
{
    const Files files = {"a.1.mgf", "a.2.mgf", "a.mgf"};
    EXPECT_EQ(Resolved("a.mgf", files, {{"a.mgf", 1}}), "a.2.mgf by_user");
    EXPECT_EQ(Resolved("b", files, {{"b", 0}}), "a.1.mgf by_user");
    EXPECT_EQ(Resolved("/x/b", files, {{"b", 0}}), "-");
}

TEST(DatasetResolver, EveryRuleHasItsOwnKeyAndText)
{
    std::map<std::string, int> keys;
    std::map<std::string, int> texts;
    for (std::size_t i = 0; i < kNameRules; ++i) {
        ++keys[KeyOf(static_cast<NameRule>(i))];
        ++texts[TextOf(static_cast<NameRule>(i))];
    }
    EXPECT_EQ(keys.size(), kNameRules);
    EXPECT_EQ(texts.size(), kNameRules);
}

TEST(WithoutKnownEndings, LeavesWhatIsNoEnding)
{
    for (const auto& [name, stem] :
         std::map<std::string, std::string>{{"run", "run"},
                                            {"/d/run.mgf", "run"},
                                            {"run.mgf.unknown", "run"},
                                            {"run.mgf.txt", "run.mgf.txt"},
                                            {".mgf", ".mgf"},
                                            {"run.d", "run"},
                                            {"run.mzXML", "run"},
                                            {"C:\\d\\run.01.dta", "run.01"}}) {
        EXPECT_EQ(WithoutKnownEndings(name), stem) << name;
    }
}

} // namespace
} // namespace pelgrin
