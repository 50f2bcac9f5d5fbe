// Every byte that the pool prints while it indexes, and the paths it composes.
#include <string>
#include <vector>

#include "spectra/PoolText.h"

namespace Vorlan::test {
namespace {

std::string OutputOfInitLoad(const std::vector<DatasetSource>& sources)
{
    DatasetIOPool pool;
    return OutputOf([&] { pool.InitLoad(sources); });
}

/// "i/n", what is printed in between, and as many backspaces.
std::string Step(std::size_t i, std::size_t n, const std::string& between = "")
{
    const std::string progress = std::to_string(i) + "/" + std::to_string(n);
    return progress + between + std::string(progress.size(), '\b');
}

std::string NotOpened(const std::string& path)
{
    return "\nMulSpecIO error: failed to open spectra file " + path + "\n";
}

TEST(DatasetIOPoolConsole, NoDataset)
{
    EXPECT_EQ(OutputOfInitLoad({}), "    Setting spectra index for each dataset: ...Done.\n");
}

TEST(DatasetIOPoolConsole, OneDataset)
{
    const PoolFolder folder;
    EXPECT_EQ(OutputOfInitLoad({folder.Dataset("a.mgf", "")}),
              "    Setting spectra index for each dataset: 1/1\b\b\b...Done.\n");
}

TEST(DatasetIOPoolConsole, TenDatasets)
{
    const PoolFolder folder;
    std::string expected = kPoolStart;
    for (std::size_t i = 1; i <= 10; ++i) {
        expected += Step(i, 10);
    }
    EXPECT_EQ(OutputOfInitLoad(std::vector<DatasetSource>(10, folder.Dataset("a.mgf", ""))),
              expected + kPoolDone);
}

TEST(DatasetIOPoolConsole, AThousandMissingDatasetsAndOneBlankAtTheEnd)
{
    const TempFolder folder;
    const std::vector<DatasetSource> sources(1000,
                                             {folder.Path(), "missing.mgf", DatasetType::Mgf});
    std::string expected = kPoolStart;
    for (std::size_t i = 1; i <= 1000; ++i) {
        expected += Step(i, 1000, NotOpened(folder.Path() + "\\missing.mgf"));
    }
    EXPECT_EQ(OutputOfInitLoad(sources), expected + kPoolDone + " ");
}

TEST(DatasetIOPoolConsole, B19_BlanksBehindTheLineEndByTheLengthOfTheLastProgress)
{
    const std::vector<std::pair<std::size_t, std::string>> cases = {
        {999, ""}, {1000, " "}, {9999, " "}, {10000, "   "}};
    for (const auto& [count, blanks] : cases) {
        const std::vector<DatasetSource> sources(count, {"", "x", DatasetType::Unknown});
        const std::string text = OutputOfInitLoad(sources);
        const std::string end = Step(count, count) + kPoolDone + blanks;
        ASSERT_GE(text.size(), end.size());
        EXPECT_EQ(text.substr(text.size() - end.size()), end);
    }
}

TEST(DatasetIOPoolConsole, UnknownTypesPrintTheirProgressOnly)
{
    EXPECT_EQ(
        OutputOfInitLoad({{"a", "b", DatasetType::Unknown}, {"a", "c", DatasetType::Unknown}}),
        kPoolStart + Step(1, 2) + Step(2, 2) + kPoolDone);
}

TEST(DatasetIOPoolConsole, ASecondInitLoadPrintsTheSame)
{
    const PoolFolder folder;
    const std::vector<DatasetSource> sources = folder.TwoDatasets();
    DatasetIOPool pool;
    const std::string first = OutputOf([&] { pool.InitLoad(sources); });
    EXPECT_EQ(OutputOf([&] { pool.InitLoad(sources); }), first);
}

struct FolderCase {
    std::string reason;
    std::string folder;
    std::string path;
};

TEST(DatasetIOPoolConsole, FoldersEndInOneBackslash)
{
    const std::vector<FolderCase> cases = {
        {"none", "no\\such", "no\\such\\a.mgf"},
        {"one", "no\\such\\", "no\\such\\a.mgf"},
        {"three", "no\\such\\\\\\", "no\\such\\a.mgf"},
        {"nothing else", "\\\\\\", "\\a.mgf"},
        {"empty", "", "\\a.mgf"},
        {"a slash stays", "no/such/", "no/such/\\a.mgf"},
        {"backslashes inside stay", "no\\\\such", "no\\\\such\\a.mgf"},
    };
    for (const FolderCase& row : cases) {
        EXPECT_EQ(OutputOfInitLoad({{row.folder, "a.mgf", DatasetType::Mgf}}),
                  kPoolStart + Step(1, 1, NotOpened(row.path)) + kPoolDone)
            << row.reason;
    }
}

TEST(DatasetIOPoolConsole, BackslashesAtTheEndOfAFolderDoNotMatter)
{
    const PoolFolder folder;
    DatasetSource source = folder.Dataset("a.mgf", Record("a1", "1 2"));
    for (const char* const end : {"", "\\", "\\\\\\"}) {
        source.strFirst = folder.Path() + end;
        DatasetIOPool pool;
        QuietInitLoad(pool, {source});
        EXPECT_TRUE(pool.bHasSpectrum("a.mgf", "a1")) << "end: " << end;
    }
}

} // namespace
} // namespace Vorlan::test
