#include "platform/Paths.h"

#include "support/Support.h"

namespace Vorlan {
namespace {

using test::TempFolder;

struct ResolveCase {
    const char* reason;
    std::vector<std::string> files; ///< that exist; folders on the way are made
    std::string path;
    std::string resolved;
};

const ResolveCase kResolveCases[] = {
    {"no backslash, exists", {"a/f"}, "a/f", "a/f"},
    {"no backslash, does not exist", {}, "a/f", "a/f"},
    {"a folder and a file", {"a/f"}, R"(a\f)", "a/f"},
    {"an entry whose name has a backslash", {R"(a\f)"}, R"(a\f)", R"(a\f)"},
    {"the literal entry comes first", {"a/f", R"(a\f)"}, R"(a\f)", R"(a\f)"},
    {"every backslash", {"a/b/f"}, R"(a\b\f)", "a/b/f"},
    {"only the last one", {R"(a\b/f)"}, R"(a\b\f)", R"(a\b/f)"},
    {"every backslash comes before only the last", {"a/b/f", R"(a\b/f)"}, R"(a\b\f)", "a/b/f"},
    {"the literal entry comes before both",
     {"a/b/f", R"(a\b/f)", R"(a\b\f)"},
     R"(a\b\f)",
     R"(a\b\f)"},
    {"only the first one is no way", {R"(a/b\f)"}, R"(a\b\f)", "a/b/f"},
    {"none exists: every backslash", {}, R"(a\b\f)", "a/b/f"},
    {"none exists, but the folder does", {"a/b/g"}, R"(a\b\f)", "a/b/f"},
    {"none exists, the folder has a backslash", {R"(a\b/g)"}, R"(a\b\f)", "a/b/f"},
    {"slashes stay", {"a/b/c/f"}, R"(a/b\c/f)", "a/b/c/f"},
    {"only the last one, slashes behind it", {R"(a\b/c/f)"}, R"(a\b\c/f)", R"(a\b/c/f)"},
    {"two backslashes in a row", {"a/f"}, R"(a\\f)", "a//f"},
    {"a backslash at the end of a folder", {"a/f"}, R"(a\)", "a/"},
    {"a backslash behind a file", {"a/f"}, R"(a\f\)", "a/f/"},
    {"blanks and dots", {"a b/f .x"}, R"(a b\.\f .x)", "a b/./f .x"},
    {"up and down again", {"a/f"}, R"(a\..\a\f)", "a/../a/f"},
};

TEST(Paths, ResolveTakesTheFirstReadingThatExists)
{
    for (const ResolveCase& c : kResolveCases) {
        const TempFolder folder;
        for (const std::string& file : c.files) {
            const std::filesystem::path path = folder.PathOf(file);
            std::filesystem::create_directories(path.parent_path());
            folder.Write(file, "x");
        }
        EXPECT_EQ(platform::Resolve(folder.PathOf(c.path)), folder.PathOf(c.resolved)) << c.reason;
    }
}

TEST(Paths, FolderResolvesLikeAFile)
{
    const TempFolder folder;
    std::filesystem::create_directories(folder.PathOf("a/b"));
    EXPECT_EQ(platform::Resolve(folder.Path() + "\\a\\b"), folder.PathOf("a/b"));
}

TEST(Paths, EveryBackslashOfAWholePathIsResolved)
{
    const TempFolder folder;
    folder.Write("f", "x");
    std::string path = folder.PathOf("f");
    const std::string plain = path;
    for (char& c : path) {
        c = c == '/' ? '\\' : c;
    }
    EXPECT_EQ(platform::Resolve(path), plain);
}

TEST(Paths, EmptyPathStaysEmpty)
{
    EXPECT_EQ(platform::Resolve(""), "");
}

TEST(Paths, LoneBackslashIsTheRoot)
{
    EXPECT_EQ(platform::Resolve("\\"), "/");
}

TEST(Paths, LinkToNothingDoesNotExist)
{
    const TempFolder folder;
    std::filesystem::create_symlink("nowhere", folder.PathOf(R"(a\f)"));
    EXPECT_EQ(platform::Resolve(folder.PathOf(R"(a\f)")), folder.PathOf("a/f"));
}

} // namespace
} // namespace Vorlan
