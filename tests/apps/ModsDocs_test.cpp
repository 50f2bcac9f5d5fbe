// Pages of docs/ show what the program says, to the letter: every indented block with "$ " is run, line by line, in a folder that
// holds examples/. What is printed on standard error stands before the output.
#include <cstdlib>
#include <sstream>

#include "HostProgram.h"

namespace pelgrin::test {
namespace {

using Vorlan::test::ReadFile;
using Vorlan::test::TempFolder;

struct Example {
    std::string command;
    std::string output;
};

/// The commands of the page with the lines below each.
std::vector<Example> ExamplesOf(const std::string& page)
{
    std::vector<Example> examples;
    std::istringstream lines(page);
    bool isInside = false;
    std::string emptyLines;
    for (std::string line; std::getline(lines, line);) {
        if (line.rfind("    $ ", 0) == 0) {
            examples.push_back({line.substr(6), ""});
            isInside = true;
            emptyLines.clear();
        } else if (isInside && line.empty()) {
            emptyLines += "\n";
        } else if (isInside && line.rfind("    ", 0) == 0) {
            examples.back().output += emptyLines + line.substr(4) + "\n";
            emptyLines.clear();
        } else {
            isInside = false;
        }
    }
    return examples;
}

/// Skips the test when an example needs Unimod XML, and there is none.
void ExpectRealOutput(const std::string& page, std::size_t leastExamples)
{
    const std::vector<Example> examples = ExamplesOf(ReadFile(PELGRIN_DOCS "/" + page));
    ASSERT_GE(examples.size(), leastExamples);
    const TempFolder folder;
    std::filesystem::create_directory_symlink(PELGRIN_EXAMPLES, folder.PathOf("examples"));
    Setting setting;
    setting.folder = folder.Path();
    const char* const path = std::getenv("PATH");
    setting.variables["PATH"] = std::filesystem::path(PELGRIN_PROGRAM).parent_path().string() + ":"
                                + (path != nullptr ? path : "");
    for (const Example& example : examples) {
        SCOPED_TRACE(example.command);
        const Outcome outcome = RunProgram({"/bin/sh", "-c", example.command}, setting);
        if (outcome.err.find("was not found in any of") != std::string::npos) {
            GTEST_SKIP() << "Unimod XML is not on this machine (package openms-common)";
        }
        EXPECT_EQ(outcome.err + outcome.out, example.output);
    }
}

TEST(PelgrinModsDocs, ExamplesShowTheRealOutput)
{
    ExpectRealOutput("pelgrin-mods.md", 8);
}

TEST(PelgrinInspectDocs, ExamplesShowTheRealOutput)
{
    ExpectRealOutput("pelgrin-inspect.md", 6);
}

TEST(FromEngineToSpectraDocs, ExamplesShowTheRealOutput)
{
    ExpectRealOutput("from-engine-to-spectra.md", 14);
}

} // namespace
} // namespace pelgrin::test
