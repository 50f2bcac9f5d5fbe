// Every byte that reading and writing the native table print.
#include <iostream>
#include <string>
#include <vector>

#include "pepident/MatchText.h"

namespace Vorlan::test {
namespace {

const std::string kRow = "d\ts\tSEQ\t2\t1\t0\t7\t1\t\t\t\t\t\t\n";

std::string OutputOfLoad(const std::string& text)
{
    const TempFolder folder;
    folder.Write("t.txt", text);
    return OutputOf([&] {
        ThrownBy([&] {
            std::vector<PeptideIdentification> matches;
            TulkTXTPepIdentIO reader;
            reader.InitLoad({folder.Path(), "t.txt", PepIdentType::CalvexTxt});
            reader.Load(matches);
        });
    });
}

std::string OutputOfSave(std::size_t rows)
{
    const TempFolder folder;
    TulkTXTPepIdentIO writer;
    writer.InitSave(folder.PathOf("t.txt"));
    return OutputOf([&] { writer.Save(std::vector<PeptideIdentification>(rows)); });
}

struct ProgressCase {
    std::size_t rows;
    std::string output;
};

const std::vector<ProgressCase>& Cases()
{
    static const std::vector<ProgressCase> cases = {
        {0, ""},
        {1, Shown("1/1 (100%)") + Erased("1/1 (100%)")},
        {999, Shown("999/999 (100%)") + Erased("999/999 (100%)")},
        {1000, Shown("1000/1000 (100%)") + Erased("1000/1000 (100%)")},
        {1001, Shown("1000/1001 (99%)") + Shown("1001/1001 (100%)") + Erased("1001/1001 (100%)")},
        {2500, Shown("1000/2500 (40%)") + Shown("2000/2500 (80%)") + Shown("2500/2500 (100%)")
                   + Erased("2500/2500 (100%)")},
    };
    return cases;
}

TEST(NativeTableProgress, TextIsOverwrittenAndErased)
{
    EXPECT_EQ(OutputOfLoad(kNativeHeader + kRow),
              "1/1 (100%)\b\b\b\b\b\b\b\b\b\b          \b\b\b\b\b\b\b\b\b\b");
}

TEST(NativeTableProgress, OfLoad)
{
    for (const ProgressCase& row : Cases()) {
        EXPECT_EQ(OutputOfLoad(kNativeHeader + Repeat(kRow, row.rows)), row.output) << row.rows;
    }
}

TEST(NativeTableProgress, OfSave)
{
    for (const ProgressCase& row : Cases()) {
        EXPECT_EQ(OutputOfSave(row.rows), row.output) << row.rows;
    }
}

TEST(NativeTableProgress, ALastRowWithoutLineFeedIsNotCounted)
{
    std::string text = kNativeHeader + Repeat(kRow, 3);
    text.pop_back();
    EXPECT_EQ(OutputOfLoad(text), Shown("2/2 (100%)") + Erased("2/2 (100%)"));
    text = kNativeHeader + kRow;
    text.pop_back();
    EXPECT_EQ(OutputOfLoad(text), "") << "of no rows none is the last";
    text = kNativeHeader + Repeat(kRow, 1000);
    text.pop_back();
    EXPECT_EQ(OutputOfLoad(text),
              Shown("999/999 (100%)") + Shown("1000/999 (100%)") + Erased("1000/999 (100%)"));
}

TEST(NativeTableProgress, ARowThatIsNotThereIsNotShown)
{
    EXPECT_EQ(OutputOfLoad(kNativeHeader + kRow + "\n"), "");
    EXPECT_EQ(OutputOfLoad(kNativeHeader + Repeat(kRow, 999) + "\n" + kRow), "");
    EXPECT_EQ(OutputOfLoad(kNativeHeader + "\n"), "");
}

TEST(NativeTableProgress, TheOverlongLastRowIsShown)
{
    std::string row = kRow;
    row.insert(row.size() - 1, std::string(90000, '\t'));
    EXPECT_EQ(OutputOfLoad(kNativeHeader + kRow + row), Shown("2/2 (100%)") + Erased("2/2 (100%)"));
}

TEST(NativeTableProgress, NothingIsErasedBehindAnException)
{
    EXPECT_EQ(OutputOfLoad(kNativeHeader + "d\ts\tSEQ\tx\n"), "1/1 (100%)");
}

/// Tells how many bytes a file holds whenever something is printed.
class SizeOnOutput : public std::streambuf {
public:
    explicit SizeOnOutput(std::string path) : path_(std::move(path)), former_(std::cout.rdbuf(this))
    {
    }
    ~SizeOnOutput() override { std::cout.rdbuf(former_); }
    SizeOnOutput(const SizeOnOutput&) = delete;
    SizeOnOutput& operator=(const SizeOnOutput&) = delete;

    std::vector<std::size_t> sizes;

private:
    std::streamsize xsputn(const char* /*text*/, std::streamsize length) override
    {
        sizes.push_back(ReadFile(path_).size());
        return length;
    }
    int_type overflow(int_type c) override
    {
        sizes.push_back(ReadFile(path_).size());
        return traits_type::not_eof(c);
    }

    std::string path_;
    std::streambuf* former_;
};

/// The sizes of the file before and after row 1000 of 1001, after the last row
/// and at the end.
std::vector<std::size_t> SizesWhileSaving(const PeptideIdentification& match, std::string path)
{
    TulkTXTPepIdentIO writer;
    writer.InitSave(path);
    const SizeOnOutput output(path);
    writer.Save(std::vector<PeptideIdentification>(1001, match));
    return output.sizes;
}

TEST(NativeTableProgress, ARowWithProteinsIsInTheFileAtOnce)
{
    const TempFolder folder;
    PeptideIdentification match;
    match.vEvidences.resize(1);
    const std::size_t row = NativeTextOf({match}).size() - kNativeHeader.size();
    const std::vector<std::size_t> sizes = SizesWhileSaving(match, folder.PathOf("t.txt"));
    ASSERT_EQ(sizes.size(), 5u);
    EXPECT_EQ(sizes[0], kNativeHeader.size() + 999 * row);
    EXPECT_EQ(sizes[1], kNativeHeader.size() + 1000 * row);
    EXPECT_EQ(sizes[2], kNativeHeader.size() + 1000 * row);
    EXPECT_EQ(sizes[3], kNativeHeader.size() + 1001 * row);
}

TEST(NativeTableProgress, ARowWithoutProteinsMayWait)
{
    const TempFolder folder;
    const PeptideIdentification match;
    const std::size_t row = NativeTextOf({match}).size() - kNativeHeader.size();
    const std::vector<std::size_t> sizes = SizesWhileSaving(match, folder.PathOf("t.txt"));
    ASSERT_EQ(sizes.size(), 5u);
    EXPECT_LT(sizes[0], kNativeHeader.size() + 999 * row);
    EXPECT_EQ(ReadFile(folder.PathOf("t.txt")).size(), kNativeHeader.size() + 1001 * row);
}

} // namespace
} // namespace Vorlan::test
