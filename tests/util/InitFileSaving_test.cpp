// Writing parameter files, and what comes back from a written one.
#include "InitFile.h"

#include <new>

#include "support/Exceptions.h"
#include "support/FailingMemory.h"
#include "support/IniTwin.h"
#include "support/Random.h"
#include "support/Support.h"
#include "util/IniText.h"

namespace Vorlan {
namespace {

using std::string_literals::operator""s;
using test::Loaded;
using test::TempFolder;
using test::TextOf;
using test::Thrown;
using test::ThrownBy;

TEST(InitFileSaving, SectionsInTheOrderFirstMetAndKeysInThatOfTheirBytes)
{
    const TempFolder folder;
    const Loaded loaded("# note\n[T]\nb = 2\na = 1\n[S]\n[U] # note\nx =\n[T]\nB=3\n");
    loaded.file.Save(folder.PathOf("saved.ini"));
    EXPECT_EQ(test::ReadFile(folder.PathOf("saved.ini")), "[T]\nB=3\na=1\nb=2\n[S]\n[U]\nx=\n");
}

TEST(InitFileSaving, DisplayPrintsWhatSaveWrites)
{
    const Loaded loaded("[T]\nb = 2\na = \xFF\n[S]\n");
    EXPECT_EQ(TextOf(loaded.file), "[T]\na=\xFF\nb=2\n[S]\n");
    EXPECT_EQ(TextOf(InitFile()), "");
}

TEST(InitFileSaving, FileThatIsThereIsReplaced)
{
    const TempFolder folder;
    const std::string path = folder.Write("saved.ini", std::string(1000, 'x'));
    const Loaded loaded("[S]\n");
    const std::string printed = test::OutputOf([&] { loaded.file.Save(path); });
    EXPECT_EQ(test::ReadFile(path), "[S]\n");
    EXPECT_EQ(printed, "");
    InitFile().Save(path);
    EXPECT_EQ(test::ReadFile(path), "");
}

TEST(InitFileSaving, LoadedFileCanBeSavedIntoItself)
{
    const TempFolder folder;
    const std::string path = folder.Write("run.ini", "[S]\na = 1 # note\n");
    InitFile file;
    file.Load(path);
    file.Set("S", "b", "2");
    file.Save(path);
    EXPECT_EQ(test::ReadFile(path), "[S]\na=1\nb=2\n");
}

TEST(InitFileSaving, ComposedPathsAreResolved)
{
    const TempFolder folder;
    const Loaded loaded("[S]\n");
    loaded.file.Save(folder.Path() + "\\saved.ini");
    EXPECT_EQ(test::ReadFile(folder.PathOf("saved.ini")), "[S]\n");
}

Thrown NotWritable(const std::string& path)
{
    return {"FileNotWritable", "InitFile", "InitFile::Save",
            "the file '" + path + "' is not writable for the current user"};
}

TEST(InitFileSaving, FileThatCannotBeOpenedIsAnError)
{
    const TempFolder folder;
    const Loaded loaded("[S]\na=1\n");
    for (const std::string& path :
         {folder.Path(), folder.PathOf("no/such.ini"), folder.Path() + "\\no\\such.ini", ""s}) {
        Thrown thrown;
        const std::string printed =
            test::OutputOf([&] { thrown = ThrownBy([&] { loaded.file.Save(path); }); });
        EXPECT_EQ(thrown, NotWritable(path));
        EXPECT_EQ(printed, "");
    }
    EXPECT_EQ(TextOf(loaded.file), "[S]\na=1\n");
}

TEST(InitFileSaving, APathWithANulIsAnErrorAndNotTheFileInFrontOfIt)
{
    const TempFolder folder;
    const std::string path = folder.Write("run.ini", "former");
    const Loaded loaded("[S]\n");
    EXPECT_EQ(ThrownBy([&] { loaded.file.Save(path + "\0.bak"s); }).name, "FileNotWritable");
    EXPECT_EQ(test::ReadFile(path), "former");
}

TEST(InitFileSaving, FileStaysWhereMemoryEndsBeforeItsText)
{
    PELGRIN_NEEDS_FAILING_MEMORY();
    const TempFolder folder;
    const std::string path = folder.Write("run.ini", "former");
    const Loaded loaded("[S]\na=" + std::string(70000, 'x') + "\n");
    bool failed = false;
    try {
        const test::SmallMemory memory(50000);
        loaded.file.Save(path);
    } catch (const std::bad_alloc&) {
        failed = true;
    }
    EXPECT_TRUE(failed);
    EXPECT_EQ(test::ReadFile(path), "former");
}

TEST(InitFileSaving, FullDeviceIsAnError)
{
    if (!std::filesystem::exists("/dev/full")) {
        GTEST_SKIP() << "no /dev/full";
    }
    Loaded loaded("[S]\na=1\n");
    EXPECT_EQ(ThrownBy([&] { loaded.file.Save("/dev/full"); }), NotWritable("/dev/full"));
    loaded.file.Set("S", "a", std::string(1000000, 'x')); // more than any buffer holds
    EXPECT_EQ(ThrownBy([&] { loaded.file.Save("/dev/full"); }), NotWritable("/dev/full"));
}

TEST(InitFileSaving, WhatWasLoadedComesBackWhole)
{
    const TempFolder folder;
    test::Random random(2);
    for (int i = 0; i < 3000; ++i) {
        const std::string text = test::RandomIni(random);
        const Loaded loaded(folder, text, random.Text("#;/", random.Below(3)));
        const std::string saved = TextOf(loaded.file);
        const Loaded again(folder, saved, ""); // nothing is a comment
        ASSERT_EQ(again.thrown, Thrown()) << text;
        ASSERT_EQ(TextOf(again.file), saved) << text;
    }
}

/// Contents that a file can hold: trimmed, one line, no comment, no "=", and no
/// pair that looks like a header.
std::string RandomWord(test::Random& random)
{
    return random.Text("abc]./", 1) + random.Text("ab []/.", random.Below(4))
           + random.Text("abc[./", 1);
}

TEST(InitFileSaving, RandomContentsComeBack)
{
    const TempFolder folder;
    test::Random random(3);
    for (int i = 0; i < 2000; ++i) {
        std::string headers;
        for (std::size_t count = 1 + random.Below(5); count > 0; --count) {
            headers += "[" + RandomWord(random) + "]\n";
        }
        Loaded loaded(folder, headers, "#");
        test::IniTwin names("#");
        names.Load(headers);
        for (const auto& [name, none] : names.Sections()) {
            for (std::size_t pairs = random.Below(5); pairs > 0; --pairs) {
                loaded.file.Set(name, random.OneIn(9) ? "" : RandomWord(random),
                                random.OneIn(9) ? "" : RandomWord(random));
            }
        }
        const std::string saved = TextOf(loaded.file);
        ASSERT_EQ(TextOf(Loaded(folder, saved, "#").file), saved);
    }
}

struct LossCase {
    const char* reason;
    std::string key;
    std::string value;
    std::string back; ///< what is displayed when it was saved and loaded
};

// Set takes anything; the format does not hold it.
const LossCase kLossCases[] = {
    {"blanks at the ends", " a ", "\tb\r", "[S]\na=b\n"},
    {"a comment symbol in a value", "a", "1#2", "[S]\na=1\n"},
    {"a line feed in a value", "a", "1\nb=2", "[S]\na=1\nb=2\n"},
    {"a header in a value", "a", "1\n[T]", "[S]\na=1\n[T]\n"},
    {"a NUL in a value", "a", "1\0002"s, "[S]\na=1\n"},
    {"a pair that looks like a header", "[a", "b]", "[S]\n[a=b]\n"},
    {"a value that is too long", "a", std::string(81920, 'x'),
     "[S]\na=" + std::string(81917, 'x') + "\n"},
};

TEST(InitFileSaving, WhatTheFormatDoesNotHoldIsLost)
{
    for (const LossCase& c : kLossCases) {
        Loaded loaded("[S]\n");
        loaded.file.Set("S", c.key, c.value);
        const Loaded again(TextOf(loaded.file));
        EXPECT_EQ(again.thrown, Thrown()) << c.reason;
        EXPECT_EQ(TextOf(again.file), c.back) << c.reason;
    }
}

TEST(InitFileSaving, WhatTheFormatDoesNotHoldMayNotLoad)
{
    for (const char* const value : {"1=2", "1\nword"}) {
        Loaded loaded("[S]\n");
        loaded.file.Set("S", "a", value);
        EXPECT_EQ(Loaded(TextOf(loaded.file)).thrown.name, "InvalidParameter") << value;
    }
    Loaded loaded("[S]\n");
    loaded.file.Set("S", "a#", "1");
    EXPECT_EQ(Loaded(TextOf(loaded.file)).thrown.message, "2 \"a#=1\" Invalid parameter format");
}

} // namespace
} // namespace Vorlan
