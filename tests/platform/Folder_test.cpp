#include "platform/Folder.h"

#include <algorithm>

#include <sys/stat.h>

#include "support/OpenFiles.h"
#include "support/Support.h"

namespace Vorlan {
namespace {

using test::TempFolder;
using testing::ElementsAre;
using Names = std::vector<std::string>;

Names Listed(const std::string& folder, std::string_view ending = ".dta")
{
    Names names;
    platform::ListFiles(folder, ending, names);
    return names;
}

/// The names of empty files, as they are listed.
Names ListedOf(const Names& files, std::string_view ending = ".dta")
{
    const TempFolder folder;
    for (const std::string& file : files) {
        folder.Write(file, "");
    }
    return Listed(folder.Path(), ending);
}

TEST(Folder, NamesComeInByteWiseOrder)
{
    EXPECT_THAT(ListedOf({"b.dta", "a.dta", "B.dta", "a.1.dta", "a10.dta", "a9.dta", "\xFFz.dta",
                          "\xC3\xA4.dta", "~.dta", " .dta", "a\n.dta", "a\t.dta"}),
                ElementsAre(" .dta", "B.dta", "a\t.dta", "a\n.dta", "a.1.dta", "a.dta", "a10.dta",
                            "a9.dta", "b.dta", "~.dta", "\xC3\xA4.dta", "\xFFz.dta"));
}

struct NameCase {
    const char* reason;
    std::string name;
    bool isListed;
};

const NameCase kNameCases[] = {
    {"the ending", "a.dta", true},
    {"capital letters", "a.DTA", true},
    {"both kinds of letters", "a.dTa", true},
    {"nothing but the ending", ".dta", true},
    {"the ending twice", "a.dta.dta", true},
    {"blanks", "a b .dta", true},
    {"a line feed", "a\n.dta", true},
    {"bytes above 127", "\x80\xFF.dta", true},
    {"a backslash", "a\\b.dta", true},
    {"a hidden file", ".a.dta", true},
    {"no point", "adta", false},
    {"shorter than the ending", "dta", false},
    {"something behind it", "a.dta.txt", false},
    {"one character behind it", "a.dta~", false},
    {"a blank behind it", "a.dta ", false},
    {"a line feed behind it", "a.dta\n", false},
    {"another ending", "a.mgf", false},
    {"32 away from a letter, but none",
     "a\x0E"
     "dta",
     false},
    {"above 127 and 32 away", "a.dt\xC1", false},
};

TEST(Folder, NamesCountByTheirEnding)
{
    for (const NameCase& c : kNameCases) {
        EXPECT_EQ(ListedOf({c.name}), c.isListed ? Names{c.name} : Names()) << c.reason;
    }
}

TEST(Folder, TheEndingItselfMayHaveAnyLetters)
{
    EXPECT_THAT(ListedOf({"a.mzml", "b.mzML", "c.MZML", "d.mgf"}, ".mzML"),
                ElementsAre("a.mzml", "b.mzML", "c.MZML"));
}

TEST(Folder, AnEmptyEndingListsEveryFile)
{
    EXPECT_THAT(ListedOf({"b", ".a"}, ""), ElementsAre(".a", "b"));
}

TEST(Folder, SubfoldersAndTheirFilesAreLeftOut)
{
    const TempFolder folder;
    folder.Write("a.dta", "");
    std::filesystem::create_directories(folder.PathOf("x.dta"));
    std::filesystem::create_directories(folder.PathOf("sub"));
    folder.Write("x.dta/y.dta", "");
    folder.Write("sub/z.dta", "");
    EXPECT_THAT(Listed(folder.Path()), ElementsAre("a.dta"));
}

TEST(Folder, LinksCountAsWhatTheyLeadTo)
{
    const TempFolder folder;
    const TempFolder other;
    std::filesystem::create_symlink(other.Write("file", ""), folder.PathOf("file.dta"));
    std::filesystem::create_directory_symlink(other.Path(), folder.PathOf("folder.dta"));
    std::filesystem::create_symlink("nowhere", folder.PathOf("broken.dta"));
    std::filesystem::create_symlink("loop.dta", folder.PathOf("loop.dta"));
    EXPECT_THAT(Listed(folder.Path()), ElementsAre("broken.dta", "file.dta", "loop.dta"))
        << "whoever opens the broken ones will be told";
}

TEST(Folder, EverythingButAFolderIsListed)
{
    const TempFolder folder;
    ASSERT_EQ(::mkfifo(folder.PathOf("pipe.dta").c_str(), 0600), 0);
    EXPECT_THAT(Listed(folder.Path()), ElementsAre("pipe.dta"));
}

TEST(Folder, AppendsBehindWhatIsThere)
{
    const TempFolder folder;
    folder.Write("b.dta", "");
    folder.Write("a.dta", "");
    Names names = {"z", "y"};
    platform::ListFiles(folder.Path(), ".dta", names);
    EXPECT_THAT(names, ElementsAre("z", "y", "a.dta", "b.dta")) << "only its own are sorted";
    platform::ListFiles(folder.PathOf("missing"), ".dta", names);
    EXPECT_EQ(names.size(), 4U);
}

TEST(Folder, WhatIsNoFolderListsNothing)
{
    const TempFolder folder;
    folder.Write("a.dta", "");
    struct {
        const char* reason;
        std::string path;
    } const cases[] = {
        {"an empty path", ""},
        {"a missing folder", folder.PathOf("missing")},
        {"a file", folder.PathOf("a.dta")},
        {"a file, taken for a folder", folder.PathOf("a.dta") + "\\"},
        {"a path that is too long", folder.PathOf(std::string(10000, 'x'))},
    };
    for (const auto& c : cases) {
        EXPECT_EQ(Listed(c.path), Names()) << c.reason;
    }
}

TEST(Folder, AnEmptyFolderListsNothing)
{
    const TempFolder folder;
    EXPECT_EQ(Listed(folder.Path()), Names());
}

TEST(Folder, ThePathIsResolved)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder.PathOf("a/b"));
    folder.Write("a/b/x.dta", "");
    for (const std::string end : {"/a/b", "\\a\\b", "/a\\b", "\\a\\b\\", "\\a\\b\\\\\\", "/a/b/"}) {
        EXPECT_THAT(Listed(folder.Path() + end), ElementsAre("x.dta")) << end;
    }
}

TEST(Folder, AFolderWithABackslashInItsNameComesFirst)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder.PathOf("a/b"));
    std::filesystem::create_directories(folder.PathOf(R"(a\b)"));
    folder.Write("a/b/plain.dta", "");
    folder.Write(R"(a\b/literal.dta)", "");
    EXPECT_THAT(Listed(folder.PathOf(R"(a\b)")), ElementsAre("literal.dta"));
}

TEST(Folder, ThousandsOfNamesAreSorted)
{
    const TempFolder folder;
    Names names;
    for (int i = 0; i < 3000; ++i) {
        names.push_back(std::to_string(i * 7919 % 100003) + ".dta");
        folder.Write(names.back(), "");
    }
    std::sort(names.begin(), names.end());
    EXPECT_EQ(Listed(folder.Path()), names);
}

TEST(Folder, FoldersAreClosedAgain)
{
    const TempFolder folder;
    folder.Write("a.dta", "");
    const auto before = test::OpenFileCount();
    for (int i = 0; i < 20; ++i) {
        EXPECT_EQ(Listed(folder.Path()).size(), 1U);
        EXPECT_EQ(Listed(folder.PathOf("a.dta")).size(), 0U);
    }
    EXPECT_EQ(test::OpenFileCount(), before);
}

} // namespace
} // namespace Vorlan
