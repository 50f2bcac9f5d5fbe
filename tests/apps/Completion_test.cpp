// Completion scripts and manual page, by the shells and the formatter themselves.
#include <algorithm>
#include <sstream>

#include <unistd.h>

#include <CLI/CLI.hpp>

#include "HostProgram.h"
#include "help/CommandTree.h"
#include "help/Completion.h"
#include "help/ManualPage.h"

namespace pelgrin::test {
namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using Vorlan::test::TempFolder;

/// A program is there, to judge by its own --version.
bool IsThere(const std::string& path)
{
    return ::access(path.c_str(), X_OK) == 0;
}

/// What bash offers for the last word of a command line.
class Bash {
public:
    Bash()
    {
        folder_.Write("script", RunPelgrin({"completion", "bash"}).out);
        folder_.Write("run.mgf", "");
        folder_.Write("ask", "source ./script\n"
                             "COMP_WORDS=(\"$@\")\nCOMP_CWORD=$(($# - 1))\n_pelgrin\n"
                             "for word in \"${COMPREPLY[@]}\"; do echo \"$word\"; done\n");
    }

    std::vector<std::string> Offers(std::vector<std::string> words) const
    {
        words.insert(words.begin(), {"/bin/bash", "ask", "pelgrin"});
        Setting setting;
        setting.folder = folder_.Path();
        const Outcome outcome = RunProgram(words, setting);
        EXPECT_EQ(outcome.status, 0) << outcome.err;
        EXPECT_EQ(outcome.err, "");
        std::vector<std::string> offers;
        std::istringstream lines(outcome.out);
        for (std::string line; std::getline(lines, line);) {
            offers.push_back(line);
        }
        return offers;
    }

private:
    TempFolder folder_;
};

struct Asked {
    const char* reason;
    std::vector<std::string> words;
    std::vector<std::string> offers;
};

TEST(Completion, BashOffersWhatMayStandThere)
{
    const Bash bash;
    const std::vector<Asked> cases = {
        {"commands", {"ann"}, {"annotate"}},
        {"hidden commands are not offered", {"man"}, {}},
        {"commands of a group", {"mods", "f"}, {"find"}},
        {"a group behind an option of the program", {"--log-file", "x", "params", "c"}, {"check"}},
        {"a switch takes no word", {"-q", "params", "t"}, {"template"}},
        {"options of the innermost command", {"mods", "find", "--t"}, {"--tolerance", "--term"}},
        {"options of the program", {"run", "--log"}, {"--log-file"}},
        {"choices", {"run", "--progress", "p"}, {"plain"}},
        {"choices with blanks, as the shell wants them",
         {"convert", "--format", "Com"},
         {"Comet\\ \\(.pep.xml\\)"}},
        {"choices behind a quotation mark", {"convert", "--format", "\"Com"}, {"Comet (.pep.xml)"}},
        {"choices of an argument", {"completion", "f"}, {"fish"}},
        {"files behind an option", {"annotate", "--psms", "run."}, {"run.mgf"}},
        {"files behind an option of many", {"annotate", "--spectra", "a.mgf", "run."}, {"run.mgf"}},
        {"files as an argument", {"run", "run."}, {"run.mgf"}},
        {"files as the first of many arguments", {"lint", "run."}, {"run.mgf"}},
        {"files as a later argument", {"lint", "a.mgf", "b.mgf", "run."}, {"run.mgf"}},
        {"files to inspect", {"inspect", "--json", "a.mgf", "run."}, {"run.mgf"}},
        {"files to prepare", {"prepare", "a.mgf", "run."}, {"run.mgf"}},
        {"nothing behind the last argument", {"run", "a.ini", "run."}, {}},
        {"no files where folders are wanted", {"annotate", "--out", "run."}, {}},
        {"nothing for a number", {"annotate", "--tolerance", ""}, {}},
    };
    for (const Asked& c : cases) {
        EXPECT_EQ(bash.Offers(c.words), c.offers) << c.reason;
    }
}

TEST(Completion, BashOffersEveryOptionOfEveryHelp)
{
    const Bash bash;
    for (const std::vector<std::string>& command : std::vector<std::vector<std::string>>{
             {"annotate"}, {"run"}, {"convert"}, {"map-proteins"}, {"mods", "explain"}}) {
        std::vector<std::string> words = command;
        words.push_back("--help");
        std::istringstream help(RunPelgrin(words).out);
        words.back() = "--";
        const std::vector<std::string> offers = bash.Offers(words);
        for (std::string line; std::getline(help, line);) {
            if (line.compare(0, 4, "  --") == 0) {
                EXPECT_THAT(offers, Contains(line.substr(2, line.find(' ', 2) - 2)));
            }
        }
        EXPECT_THAT(offers, Contains("--quiet"));
    }
}

TEST(Completion, TheOtherShellsUnderstandTheirScripts)
{
    const TempFolder folder;
    for (const auto& [shell, path] :
         std::map<std::string, std::string>{{"zsh", "/usr/bin/zsh"}, {"fish", "/usr/bin/fish"}}) {
        const std::string text = RunPelgrin({"completion", shell}).out;
        EXPECT_THAT(text, HasSubstr("MSFragger")) << "choices";
        EXPECT_THAT(text, HasSubstr("min-shift")) << "options";
        if (IsThere(path)) {
            const Outcome outcome = RunProgram({path, "-n", folder.Write(shell, text)});
            EXPECT_EQ(outcome.status, 0) << shell << ": " << outcome.err;
            EXPECT_EQ(outcome.err, "");
        }
    }
}

TEST(Completion, TheOtherShellsOfferFilesForEveryPlace)
{
    const std::string zsh = RunPelgrin({"completion", "zsh"}).out;
    for (const char* const spec : {"'*:FILE:_files'", "'*:FILE ...:_files'"}) {
        EXPECT_THAT(zsh, HasSubstr(spec));
    }
    const std::string fish = RunPelgrin({"completion", "fish"}).out;
    for (const char* const command : {"lint", "inspect", "prepare"}) {
        EXPECT_THAT(fish,
                    HasSubstr("'__fish_seen_subcommand_from " + std::string(command) + "' -F\n"));
    }
}

TEST(Completion, AnUnknownShellIsRefused)
{
    ExpectRefusal(RunPelgrin({"completion", "tcsh"}), 2, "tcsh not in {bash,zsh,fish}");
}

TEST(Completion, FollowsAnyTreeOfCommands)
{
    CLI::App app("Does it.", "pelgrin");
    CLI::App* const command = app.add_subcommand("do", "It's done: [now]");
    std::string text;
    command->add_option("--how", text, "in which way: \"one (1)\", \"it's\"")->type_name("WAY");
    app.add_subcommand("secret", "Nobody sees it")->group("");
    const CommandNode tree = TreeOf(app);
    ASSERT_EQ(tree.commands.size(), 1U);
    const CommandNode& node = tree.commands.front();
    ASSERT_EQ(node.options.size(), 2U);
    EXPECT_EQ(node.options.back().description, "in which way");
    EXPECT_THAT(node.options.back().choices, ElementsAre("one (1)", "it's"));
    EXPECT_EQ(node.options.front().value, OptionNode::Value::None);
    EXPECT_THAT(BashCompletionOf(tree),
                HasSubstr("\"do --how\") kind=choice many='' choices=('one (1)' 'it'\\''s')"));
    EXPECT_THAT(ZshCompletionOf(tree), HasSubstr("do\\:\"It'\\''s done\\: [now]\""));
    EXPECT_THAT(FishCompletionOf(tree), HasSubstr("-a do -d 'It\\'s done: [now]'"));
    EXPECT_THAT(ManualPageOf(tree, "1.2.3"), HasSubstr("in which way: one (1), it's"));
}

TEST(ManualPage, NamesEveryCommandAndEveryOption)
{
    const std::string page = RunPelgrin({"manual"}).out;
    EXPECT_THAT(page, testing::StartsWith(".TH PELGRIN 1 \"\" \"pelgrin " PELGRIN_VERSION "\""));
    for (const char* const text :
         {"annotate", "convert", "map\\-proteins", "params check", "params template", "mods import",
          "mods find", "mods show", "mods explain", "completion", "run"}) {
        EXPECT_THAT(page, HasSubstr("\\fBpelgrin " + std::string(text) + "\\fR\n"));
    }
    for (const char* const text :
         {"\\-\\-log\\-file", "\\-\\-progress", "\\-\\-min\\-shift", "\\-\\-equate\\-il",
          "\\-\\-engine\\-file", "\\-\\-make\\-table", "\\fISHELL\\fR"}) {
        EXPECT_THAT(page, HasSubstr(text));
    }
    EXPECT_THAT(page, HasSubstr(".SH EXIT STATUS\n"));
    EXPECT_EQ(RunPelgrin({"manual"}).out, page) << "the same bytes every time";
}

TEST(ManualPage, IsFormattedWithoutWarnings)
{
    if (!IsThere("/usr/bin/groff")) {
        GTEST_SKIP() << "groff is not installed";
    }
    const TempFolder folder;
    const std::string page = folder.Write("pelgrin.1", RunPelgrin({"manual"}).out);
    const Outcome outcome =
        RunProgram({"/usr/bin/groff", "-man", "-Tutf8", "-ww", "-P-cbou", page});
    EXPECT_EQ(outcome.status, 0);
    EXPECT_EQ(outcome.err, "");
    for (const char* const text : {"pelgrin map-proteins", "--tolerance WIDTH", "EXIT STATUS",
                                   "--mod \"Oxidation (M)=15.994915\" --mod"}) {
        EXPECT_THAT(outcome.out, HasSubstr(text));
    }
}

} // namespace
} // namespace pelgrin::test
