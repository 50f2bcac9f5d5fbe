// What every identification reader promises, whatever its format.
#include <algorithm>
#include <string>
#include <vector>

#include "PeptideIdentificationIO.h"
#include "contract/IdentificationExamples.h"
#include "support/Exceptions.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using Matches = std::vector<PeptideIdentification>;

std::vector<std::string> SpectrumNamesOf(const Matches& matches)
{
    std::vector<std::string> names;
    for (const PeptideIdentification& match : matches) {
        names.push_back(match.strSpectrumName);
    }
    return names;
}

std::string WithReturns(std::string text)
{
    for (std::size_t feed = text.find('\n'); feed != std::string::npos;
         feed = text.find('\n', feed + 2)) {
        text.insert(feed, "\r");
    }
    return text;
}

/// Owns a reader of the factory.
class Reader {
public:
    explicit Reader(PepIdentType::EPepIdentType type)
        : pReader_(PepIdentIOFactory::pGetPepIdentIO(type))
    {
    }
    ~Reader() { PepIdentIOFactory::DesctroyPepIdentIO(pReader_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    PeptideIdentificationIO* operator->() { return pReader_; }
    PeptideIdentificationIO* Get() { return pReader_; }

private:
    PeptideIdentificationIO* pReader_;
};

class IdentificationReaderContract : public testing::TestWithParam<IdentificationExample> {
protected:
    PepIdentSource Source() const { return {folder_.Path(), GetParam().fileName, GetParam().type}; }

    PepIdentSource WriteExample() const
    {
        return WriteTexts(GetParam().text, GetParam().secondText);
    }

    PepIdentSource WriteTexts(const std::string& text, const std::string& second) const
    {
        folder_.Write(GetParam().fileName, text);
        if (!GetParam().secondName.empty()) {
            folder_.Write(GetParam().secondName, second);
        }
        return Source();
    }

    /// The whole calling order, quietly.
    static Matches LoadAll(const PepIdentSource& source)
    {
        Matches matches;
        Reader reader(GetParam().type);
        OutputOf([&] {
            reader->InitLoad(source);
            reader->Load(matches);
            reader->EndLoad();
        });
        return matches;
    }

    TempFolder folder_;
};

/// Formats that are written, and those that are only read. The native table, the
/// one that is written, keeps its input behind EndLoad (B-11).
class WritingIdentificationReader : public IdentificationReaderContract {};
class ReadingIdentificationReader : public IdentificationReaderContract {};

std::vector<IdentificationExample> ExamplesThatWrite(bool writes)
{
    std::vector<IdentificationExample> examples;
    for (const IdentificationExample& example : IdentificationExamples()) {
        if (example.writes == writes) {
            examples.push_back(example);
        }
    }
    return examples;
}

TEST_P(IdentificationReaderContract, TheFactoryGivesTheTypeAskedFor)
{
    Reader reader(GetParam().type);
    ASSERT_NE(reader.Get(), nullptr);
    EXPECT_EQ(reader->eGetType(), GetParam().type);
    Reader other(GetParam().type);
    EXPECT_NE(reader.Get(), other.Get());
}

TEST_P(IdentificationReaderContract, DestroyingNullsThePointer)
{
    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(GetParam().type);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
    EXPECT_EQ(pReader, nullptr);
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

TEST_P(IdentificationReaderContract, LoadsTheExampleInItsOrder)
{
    EXPECT_EQ(SpectrumNamesOf(LoadAll(WriteExample())), GetParam().spectrumNames);
}

TEST_P(IdentificationReaderContract, AppendsAndNeverClears)
{
    Matches matches(2);
    matches[0].strSpectrumName = "kept";
    Reader reader(GetParam().type);
    OutputOf([&] {
        reader->InitLoad(WriteExample());
        reader->Load(matches);
    });
    ASSERT_EQ(matches.size(), 2 + GetParam().spectrumNames.size());
    EXPECT_EQ(matches[0].strSpectrumName, "kept");
    EXPECT_EQ(matches[2].strSpectrumName, GetParam().spectrumNames[0]);
}

TEST_P(IdentificationReaderContract, CarriageReturnsDoNotMatter)
{
    const Matches expected = LoadAll(WriteExample());
    const Matches matches =
        LoadAll(WriteTexts(WithReturns(GetParam().text), WithReturns(GetParam().secondText)));
    ASSERT_EQ(matches.size(), expected.size());
    for (std::size_t i = 0; i < matches.size(); ++i) {
        EXPECT_EQ(matches[i].strSpectrumName, expected[i].strSpectrumName);
        EXPECT_EQ(matches[i].strSequence, expected[i].strSequence);
        EXPECT_EQ(matches[i].nCharge, expected[i].nCharge);
        EXPECT_EQ(matches[i].dObsMH, expected[i].dObsMH);
        EXPECT_TRUE(matches[i].isModSame(expected[i].vMods));
        EXPECT_EQ(matches[i].vEvidences.size(), expected[i].vEvidences.size());
    }
}

TEST_P(IdentificationReaderContract, BackslashesAtTheEndOfTheFolderDoNotMatter)
{
    PepIdentSource source = WriteExample();
    source.strFirst += "\\\\\\";
    EXPECT_EQ(SpectrumNamesOf(LoadAll(source)), GetParam().spectrumNames);
}

TEST_P(IdentificationReaderContract, TwoReadersDoNotDisturbEachOther)
{
    Matches firstMatches;
    Matches secondMatches;
    Reader first(GetParam().type);
    Reader second(GetParam().type);
    OutputOf([&] {
        first->InitLoad(WriteExample());
        second->InitLoad(Source());
        first->Load(firstMatches);
        first->EndLoad();
        second->Load(secondMatches);
    });
    EXPECT_EQ(SpectrumNamesOf(firstMatches), GetParam().spectrumNames);
    EXPECT_EQ(SpectrumNamesOf(secondMatches), GetParam().spectrumNames);
}

/// A loading that cannot read: path is what the exception tells.
template <typename Call>
void ExpectNotReadableBy(Call load, const std::string& path)
{
    const IdentificationExample& example = IdentificationReaderContract::GetParam();
    Reader reader(example.type);
    Matches matches(1);
    Thrown thrown;
    const std::string output =
        OutputOf([&] { thrown = ThrownBy([&] { load(*reader.Get(), matches); }); });
    const Thrown notReadable = {"FileNotReadable", "PeptideIdentificationIO", example.loadLabel,
                                "the file '" + path + "' is not readable for the current user"};
    EXPECT_EQ(thrown, example.IsPepXml() ? Thrown() : notReadable);
    EXPECT_EQ(output, example.IsPepXml() ? "Can not open file!\n" : "");
    EXPECT_EQ(matches.size(), 1u);
}

void ExpectNotReadable(const PepIdentSource& source, const std::string& path)
{
    const auto load = [&source](PeptideIdentificationIO& reader, Matches& matches) {
        reader.InitLoad(source);
        reader.Load(matches);
    };
    ExpectNotReadableBy(load, path);
}

TEST_P(IdentificationReaderContract, AMissingFileIsNotReadable)
{
    ExpectNotReadable(Source(), folder_.Path() + "\\" + GetParam().fileName);
}

TEST_P(IdentificationReaderContract, AFolderIsNotReadable)
{
    ExpectNotReadable({folder_.Path(), "", GetParam().type}, folder_.Path() + "\\");
}

TEST_P(IdentificationReaderContract, LoadWithoutInitLoadIsNotReadable)
{
    Reader reader(GetParam().type);
    Matches matches(1);
    Thrown thrown;
    OutputOf([&] { thrown = ThrownBy([&] { reader->Load(matches); }); });
    EXPECT_EQ(thrown.name, GetParam().IsPepXml() ? "" : "FileNotReadable");
    EXPECT_EQ(thrown.function, GetParam().loadLabel);
    EXPECT_EQ(matches.size(), 1u);
}

TEST_P(IdentificationReaderContract, ADeviceWithoutAnEndIsNotReadable)
{
    ExpectNotReadable({"/dev", "zero", GetParam().type}, "/dev\\zero");
}

TEST_P(IdentificationReaderContract, AFileThatIsOpenIsNotReplacedByAnother)
{
    const PepIdentSource source = WriteExample();
    if (GetParam().IsPepXml()) { // Load opens it
        Reader reader(GetParam().type);
        Matches matches;
        OutputOf([&] {
            reader->InitLoad({"/no", "file", GetParam().type});
            reader->InitLoad(source);
            reader->Load(matches);
        });
        EXPECT_EQ(SpectrumNamesOf(matches), GetParam().spectrumNames);
        return;
    }
    const auto load = [&source](PeptideIdentificationIO& reader, Matches& matches) {
        reader.InitLoad(source);
        reader.InitLoad(source);
        reader.Load(matches);
    };
    ExpectNotReadableBy(load, folder_.Path() + "\\" + GetParam().fileName);
}

TEST_P(ReadingIdentificationReader, ReadsAgainBehindEndLoad)
{
    Reader reader(GetParam().type);
    Matches matches;
    for (int round = 0; round < 2; ++round) {
        OutputOf([&] {
            reader->InitLoad(WriteExample());
            reader->Load(matches);
            reader->EndLoad();
        });
    }
    std::vector<std::string> twice = GetParam().spectrumNames;
    twice.insert(twice.end(), GetParam().spectrumNames.begin(), GetParam().spectrumNames.end());
    EXPECT_EQ(SpectrumNamesOf(matches), twice);
}

TEST_P(IdentificationReaderContract, EndLoadAndEndSaveWithoutAnythingOpenAreHarmless)
{
    Reader reader(GetParam().type);
    reader->EndLoad();
    reader->EndLoad();
    reader->EndSave();
    Matches matches;
    OutputOf([&] {
        reader->InitLoad(WriteExample());
        reader->Load(matches);
    });
    reader->EndLoad();
    reader->EndLoad();
    EXPECT_EQ(SpectrumNamesOf(matches), GetParam().spectrumNames);
}

TEST_P(IdentificationReaderContract, TheFileIsNotChanged)
{
    LoadAll(WriteExample());
    EXPECT_EQ(ReadFile(folder_.PathOf(GetParam().fileName)), GetParam().text);
}

TEST_P(WritingIdentificationReader, WhatIsWrittenReadsBack)
{
    const Matches expected = LoadAll(WriteExample());
    Reader writer(GetParam().type);
    OutputOf([&] {
        writer->InitSave(folder_.PathOf("written"));
        writer->Save(expected);
        writer->EndSave();
    });
    const Matches matches = LoadAll({folder_.Path(), "written", GetParam().type});
    EXPECT_EQ(SpectrumNamesOf(matches), SpectrumNamesOf(expected));
}

TEST_P(ReadingIdentificationReader, AReaderThatWritesNothingLeavesAnEmptyFile)
{
    folder_.Write("written", "before");
    folder_.Write("second", "before");
    Reader writer(GetParam().type);
    EXPECT_EQ(OutputOf([&] {
                  for (const char* const name : {"written", "no/folder", "second"}) {
                      writer->InitSave(folder_.PathOf(name));
                      writer->Save(Matches(3));
                      writer->EndSave();
                  }
              }),
              "");
    for (const char* const name : {"written", "second"}) {
        EXPECT_EQ(ReadFile(folder_.PathOf(name)), GetParam().IsPepXml() ? "before" : "") << name;
    }
}

TEST_P(IdentificationReaderContract, InitSaveRemembersItsPath)
{
    const std::string path = folder_.PathOf("written");
    const auto load = [&path](PeptideIdentificationIO& reader, Matches& matches) {
        reader.InitSave(path);
        reader.Load(matches);
    };
    ExpectNotReadableBy(load, path);
}

TEST_P(IdentificationReaderContract, APathWithANulIsNotTheFileInFrontOfIt)
{
    const std::string path = folder_.Write("written", "former");
    Reader writer(GetParam().type);
    OutputOf([&] {
        writer->InitSave(path + '\0');
        writer->EndSave();
    });
    EXPECT_EQ(ReadFile(path), "former");
}

TEST_P(IdentificationReaderContract, InitSaveLeavesTheInputAsItIs)
{
    Reader reader(GetParam().type);
    Matches matches;
    OutputOf([&] {
        reader->InitLoad(WriteExample());
        reader->InitSave(folder_.PathOf("written"));
        reader->Load(matches);
    });
    EXPECT_EQ(SpectrumNamesOf(matches), GetParam().spectrumNames);
}

INSTANTIATE_TEST_SUITE_P(All, IdentificationReaderContract,
                         testing::ValuesIn(IdentificationExamples()),
                         [](const auto& example) { return example.param.testName; });
INSTANTIATE_TEST_SUITE_P(All, WritingIdentificationReader,
                         testing::ValuesIn(ExamplesThatWrite(true)),
                         [](const auto& example) { return example.param.testName; });
INSTANTIATE_TEST_SUITE_P(All, ReadingIdentificationReader,
                         testing::ValuesIn(ExamplesThatWrite(false)),
                         [](const auto& example) { return example.param.testName; });

TEST(IdentificationReaderContractList, EveryReaderOfTheFactoryHasAnExample)
{
    for (int type = -1; type <= 20; ++type) {
        const auto wanted = static_cast<PepIdentType::EPepIdentType>(type);
        const auto& examples = IdentificationExamples();
        const bool hasExample =
            std::any_of(examples.begin(), examples.end(),
                        [wanted](const auto& example) { return example.type == wanted; });
        EXPECT_EQ(Reader(wanted).Get() != nullptr, hasExample) << type;
    }
}

} // namespace
} // namespace Vorlan::test
