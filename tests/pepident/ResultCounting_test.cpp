// Rows are counted for the progress display: what the readers that show one share.
#include <cstdint>
#include <string>
#include <vector>

#include "pepident/EngineTableExamples.h"

namespace Vorlan::test {
namespace {

using testing::ElementsAre;

/// Shows what was counted.
template <typename Reader>
class CountProbe : public Reader {
public:
    std::uint64_t Count() const { return this->tResultCount_; }
};

/// Counts one row in whatever file, and notes its path.
template <typename Reader>
class OneRowCounter : public Reader {
public:
    void GetResultNumberOfFile() override
    {
        paths.push_back(this->strFilePath_);
        this->tResultCount_ = 1;
    }

    std::vector<std::string> paths;
};

/// Files with three rows for each reader.
template <typename Reader>
class ResultCounting : public testing::Test {
protected:
    static EngineFiles FilesOf(const TulkTXTPepIdentIO*)
    {
        return {kNativeHeader + Repeat("d\ts\tSEQ\t2\t1\t0\t7\t1\t\t\t\t\t\t\n", 3)};
    }
    static EngineFiles FilesOf(const MSGFTSVPepIdentIO*) { return {kMsgfTable.Text()}; }
    static EngineFiles FilesOf(const MaxQuantTXTPepIdentIO*)
    {
        return {kMatchTable.Text(), "peptides.txt", kPeptidesTable.Text()};
    }

    static const char* LabelOf(const TulkTXTPepIdentIO*) { return kNativeLoad; }
    static const char* LabelOf(const MSGFTSVPepIdentIO*) { return "MSGFTSVPepIdentIO::Load"; }
    static const char* LabelOf(const MaxQuantTXTPepIdentIO*)
    {
        return "MaxQuantTXTPepIdentIO::Load";
    }

    static Thrown NotReadable(const std::string& path)
    {
        return {"FileNotReadable", "PeptideIdentificationIO",
                LabelOf(static_cast<const Reader*>(nullptr)),
                "the file '" + path + "' is not readable for the current user"};
    }

    const EngineFolder folder_{FilesOf(static_cast<const Reader*>(nullptr))};
    const PepIdentSource missing_{"/no/folder", "result", PepIdentType::Unknown};
};

using CountingReaders = testing::Types<TulkTXTPepIdentIO, MSGFTSVPepIdentIO, MaxQuantTXTPepIdentIO>;
TYPED_TEST_SUITE(ResultCounting, CountingReaders);

TYPED_TEST(ResultCounting, InitLoadAsksTheClassThatDerives)
{
    OneRowCounter<TypeParam> reader;
    std::vector<PeptideIdentification> matches;
    const PepIdentSource& source = this->folder_.Source();
    reader.InitLoad(source);
    EXPECT_THAT(reader.paths, ElementsAre(source.strFirst + "\\result"));
    EXPECT_EQ(OutputOf([&] { reader.Load(matches); }), Shown("1/1 (100%)") + Erased("1/1 (100%)"))
        << "its count is the total";
    EXPECT_EQ(matches.size(), 3u);
}

TYPED_TEST(ResultCounting, WithoutACountThatThrowsTheFailureIsThatOfLoad)
{
    OneRowCounter<TypeParam> reader;
    std::vector<PeptideIdentification> matches;
    EXPECT_EQ(ThrownBy([&] { reader.InitLoad(this->missing_); }), Thrown());
    EXPECT_EQ(ThrownBy([&] { reader.Load(matches); }), this->NotReadable("/no/folder\\result"));
}

TYPED_TEST(ResultCounting, B20_TheFileIsThatOfInitLoadOrInitSave)
{
    CountProbe<TypeParam> reader;
    const auto count = [&reader] { reader.GetResultNumberOfFile(); };
    EXPECT_EQ(ThrownBy(count), this->NotReadable("")) << "there is none yet";
    reader.InitLoad(this->folder_.Source());
    EXPECT_EQ(ThrownBy(count), Thrown());
    EXPECT_EQ(reader.Count(), 3u);
    reader.InitSave("/no/folder/saved");
    EXPECT_EQ(ThrownBy(count), this->NotReadable("/no/folder/saved"));
}

TYPED_TEST(ResultCounting, ACountThatFailsLeavesTheFormerOne)
{
    CountProbe<TypeParam> reader;
    reader.InitLoad(this->folder_.Source());
    EXPECT_EQ(reader.Count(), 3u);
    EXPECT_EQ(ThrownBy([&] { reader.InitLoad(this->missing_); }),
              this->NotReadable("/no/folder\\result"));
    EXPECT_EQ(reader.Count(), 3u);
    std::vector<PeptideIdentification> matches;
    OutputOf([&] { reader.Load(matches); });
    EXPECT_EQ(matches.size(), 3u) << "the file before is open";
}

TYPED_TEST(ResultCounting, ProgressNumbersTheRowsOfTheFile)
{
    TypeParam reader;
    std::vector<PeptideIdentification> matches(999);
    reader.InitLoad(this->folder_.Source());
    EXPECT_EQ(OutputOf([&] { reader.Load(matches); }), Shown("3/3 (100%)") + Erased("3/3 (100%)"))
        << "not the matches of the caller";
    EXPECT_EQ(matches.size(), 1002u);
}

} // namespace
} // namespace Vorlan::test
