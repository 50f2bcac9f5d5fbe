// run.json, and the sums in it.
#include "run/RunRecord.h"

#include <filesystem>

#include "HostProgram.h"
#include "ParameterFiles.h"
#include "common/Failure.h"
#include "files/Sha256.h"

namespace pelgrin::test {
namespace {

using nlohmann::json;
using testing::ElementsAre;
using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

std::string Sha256Of(std::string_view text)
{
    Sha256 sum;
    sum.Add(text);
    return sum.Hex();
}

TEST(Sha256, IsThatOfTheStandard)
{
    EXPECT_EQ(Sha256Of(""), "e3b0c44298fc1c149afbf4c8996fb92427ae41e4649b934ca495991b7852b855");
    EXPECT_EQ(Sha256Of("abc"), "ba7816bf8f01cfea414140de5dae2223b00361a396177a9cb410ff61f20015ad");
    EXPECT_EQ(Sha256Of("abcdbcdecdefdefgefghfghighijhijkijkljklmklmnlmnomnopnopq"),
              "248d6a61d20638b8e5c026930c3e6039a33ce45964ff2167f6ecedd419db06c1");
}

TEST(Sha256, OfAFileIsThatOfItsBytes)
{
    const TempFolder folder;
    const std::string path = folder.Write("million", std::string(1000000, 'a'));
    std::uint64_t read = 0;
    EXPECT_EQ(Sha256OfFile(path, [&read](std::uint64_t bytes) { read += bytes; }),
              "cdc76e5c9914fb9281a1c7e284d73e67f1809a48a497200e046d39ccc7112cd0");
    EXPECT_EQ(read, 1000000U);
    EXPECT_EQ(Sha256OfFile(folder.Write("empty", "")), Sha256Of(""));
    std::string large;
    for (int i = 0; large.size() < 5000000; ++i) {
        large += std::to_string(i) + "\n";
    }
    EXPECT_EQ(Sha256OfFile(folder.Write("large", large)), Sha256Of(large));
}

TEST(Sha256, OfAFileThatCannotBeReadIsAFailure)
{
    const TempFolder folder;
    EXPECT_THROW(Sha256OfFile(folder.PathOf("gone")), Failure);
    EXPECT_THROW(Sha256OfFile(folder.Path()), Failure);
}

RunMoment MomentAt(int milliseconds)
{
    const std::chrono::milliseconds time(milliseconds);
    return {std::chrono::system_clock::time_point(time),
            std::chrono::steady_clock::time_point(3 * time)};
}

TEST(RunClock, TellsTheSecondsOfEveryStep)
{
    int now = 0;
    RunClock clock([&now] { return MomentAt(now); });
    now = 500;
    clock.Begin("spectra");
    now = 1500;
    clock.Begin("output");
    now = 1750;
    clock.End();
    EXPECT_THAT(clock.Steps(),
                ElementsAre(testing::Pair("spectra", 3.0), testing::Pair("output", 0.75)));
    EXPECT_EQ(UtcOf(clock.Started().date), "1970-01-01T00:00:00.000Z");
    EXPECT_EQ(UtcOf(clock.Ended().date), "1970-01-01T00:00:01.750Z");
}

TEST(RunRecord, IsMadeOfFacts)
{
    RunClock clock([] { return MomentAt(0); });
    clock.Begin("spectra");
    clock.End();
    Parameters parameters;
    parameters.arguments = {"annotate", "--psms", "\xff.txt"};
    RunInput input;
    input.path = "folder";
    input.role = "spectra";
    input.size = 12;
    input.files = 2;
    input.sha256 = "ab";
    const std::string summary =
        R"({"parameters":{"out":"x"},"records":{"read":7,"joined":{"total":5}},)"
        R"("rows_not_read":{"a":1,"b":2}})";
    const json record =
        json::parse(RunJsonOf({parameters, clock, {input}, "/data", summary, WithLosses}));
    EXPECT_EQ(record["program"], "pelgrin annotate");
    EXPECT_EQ(record["exit_status"], 3);
    EXPECT_EQ(record["arguments"][2], "\xEF\xBF\xBD.txt");
    EXPECT_EQ(record["working_folder"], "/data");
    EXPECT_EQ(record["versions"]["pelgrin"], PELGRIN_VERSION);
    EXPECT_EQ(record["inputs"][0]["files"], 2);
    EXPECT_EQ(record["inputs"][0]["sha256"], "ab");
    EXPECT_EQ(record["parameters"]["out"], "x");
    EXPECT_EQ(record["counts"],
              json({{"records_read", 7}, {"records_joined", 5}, {"rows_not_read", 3}}));
    EXPECT_EQ(record["time"]["steps"], json::parse(R"([{"step":"spectra","seconds":0.0}])"));
}

TEST(RunRecord, OfAnnotateNamesEveryInputOnce)
{
    const Workplace place;
    ASSERT_EQ(place.Annotate({Row()}).status, 0);
    const json record = json::parse(place.Output("run.json"));
    EXPECT_EQ(record["program"], "pelgrin annotate");
    EXPECT_EQ(record["exit_status"], 0);
    EXPECT_EQ(record["arguments"][0], "annotate");
    ASSERT_EQ(record["inputs"].size(), 2U);
    const std::string mgf = kRunMgf;
    EXPECT_EQ(record["inputs"][0], json({{"role", "spectra"},
                                         {"path", place.PathOf("run.mgf")},
                                         {"size", mgf.size()},
                                         {"sha256", Sha256Of(mgf)},
                                         {"has_changed", false}}));
    EXPECT_EQ(record["inputs"][1]["role"], "matches");
    EXPECT_EQ(record["counts"]["records_annotated"], 1);
    EXPECT_EQ(record["parameters"], place.Summary()["parameters"]);
    EXPECT_EQ(record.count("parameter_file"), 0U);
    std::vector<std::string> steps;
    for (const json& step : record["time"]["steps"]) {
        steps.push_back(step["step"]);
    }
    EXPECT_THAT(steps, ElementsAre("parameters", "spectra", "identifications", "annotation",
                                   "output", "SHA-256 of the inputs"));
}

TEST(RunRecord, OfRunHasEveryKeyAndWhatCheckSays)
{
    const ParameterWorkplace place;
    place.Write("psms.txt", TableOf({Row()}));
    const Ini ini;
    const std::string check = place.Check(ini).out;
    ASSERT_EQ(place.Run(ini).status, 0);
    const json record = json::parse(place.Output("run.json"));
    std::string plan;
    for (const json& line : record["plan"]) {
        plan += line.get<std::string>() + "\n";
    }
    EXPECT_EQ(plan, check);
    EXPECT_EQ(record["parameter_file"]["Search"]["fragment_tol"], "20");
    EXPECT_TRUE(record["parameter_file"]["Fdr"]["fdr_threshold"].is_null()) << "not given";
    std::vector<std::string> roles;
    for (const json& input : record["inputs"]) {
        roles.push_back(input["role"]);
        EXPECT_EQ(input["sha256"].get<std::string>().size(), 64U);
    }
    EXPECT_THAT(roles, ElementsAre("spectra", "matches", "parameters", "modifications"));
}

TEST(RunRecord, OfAFolderIsTheSumOfItsSums)
{
    const TempFolder folder;
    std::filesystem::create_directory(folder.PathOf("run"));
    folder.Write("run/b.dta", "181.1 2\n58.0287 10\n");
    folder.Write("run/a.dta", "181.1 2\n59 10\n");
    folder.Write("run/notes.txt", "not read");
    Parameters parameters;
    parameters.spectra = {folder.PathOf("run")};
    parameters.fileInputs = {folder.PathOf("run"), ""};
    const std::vector<RunInput> inputs = InputStamps(parameters).Inputs();
    ASSERT_EQ(inputs.size(), 1U) << "once, and no empty path";
    EXPECT_EQ(inputs[0].files, 2U);
    EXPECT_EQ(inputs[0].size, 33U);
    EXPECT_EQ(inputs[0].sha256, Sha256Of(Sha256Of("181.1 2\n59 10\n") + "  a.dta\n"
                                         + Sha256Of("181.1 2\n58.0287 10\n") + "  b.dta\n"));
    EXPECT_FALSE(inputs[0].hasChanged);
}

TEST(RunRecord, TellsOfInputsThatChangeWhileARunGoesOn)
{
    const TempFolder folder;
    Parameters parameters;
    parameters.spectra = {folder.Write("a.mgf", "one")};
    parameters.psms = {folder.Write("b.txt", "two")};
    const InputStamps stamps(parameters);
    folder.Write("a.mgf", "three");
    std::filesystem::remove(folder.PathOf("b.txt"));
    const std::vector<RunInput> inputs = stamps.Inputs();
    ASSERT_EQ(inputs.size(), 2U);
    EXPECT_TRUE(inputs[0].hasChanged);
    EXPECT_EQ(inputs[0].sha256, Sha256Of("three"));
    EXPECT_TRUE(inputs[1].hasChanged);
    EXPECT_EQ(inputs[1].sha256, "");
}

TEST(RunRecord, IsThereOnlyWhenTheRunFinished)
{
    const Workplace place;
    ASSERT_EQ(place.Annotate({Row()}).status, 0);
    EXPECT_TRUE(std::filesystem::exists(place.PathOf("out/run.json")));
    Workplace broken;
    std::filesystem::create_directory(broken.PathOf("out"));
    broken.Write("out/run.json", "{}");
    Setting full;
    full.outPath = "/dev/full"; // the report cannot be written
    const Outcome outcome = RunPelgrin({"annotate", "--spectra", broken.PathOf("run.mgf"), "--psms",
                                        broken.Write("psms.txt", TableOf({Row()})), "--tolerance",
                                        "20ppm", "--out", broken.PathOf("out")},
                                       full);
    EXPECT_EQ(outcome.status, 1);
    EXPECT_EQ(broken.Output("run.json"), "{}") << "that of the run before stays";
    EXPECT_FALSE(std::filesystem::exists(broken.PathOf("out/results.txt")));
}

TEST(RunRecord, SummaryKnowsNoTimes)
{
    const Workplace place;
    ASSERT_EQ(place.Annotate({Row()}).status, 0);
    const std::string first = place.Output("summary.json");
    ASSERT_EQ(place.Annotate({Row()}).status, 0);
    EXPECT_EQ(place.Output("summary.json"), first);
}

} // namespace
} // namespace pelgrin::test
