// What every spectrum reader promises, whatever its format.
#include <algorithm>
#include <string>
#include <vector>

#include "SpectraIO.h"
#include "contract/SpectrumExamples.h"
#include "spectra/SpectrumText.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

using Spectra = std::vector<Spectrum>;

class Reader {
public:
    explicit Reader(DatasetType::EDatasetType type) : pReader_(SpecIOFactory::pGetSpectraIO(type))
    {
    }
    ~Reader() { SpecIOFactory::DesctroySpectraIO(pReader_); }
    Reader(const Reader&) = delete;
    Reader& operator=(const Reader&) = delete;

    SpectraIO* operator->() { return pReader_; }
    SpectraIO* Get() { return pReader_; }

    std::vector<std::string> Rest()
    {
        Spectra spectra;
        pReader_->tLoadAllSpectra(spectra);
        return Dump(spectra);
    }

private:
    SpectraIO* pReader_;
};

class SpectrumReaderContract : public testing::TestWithParam<SpectrumExample> {
protected:
    SpectrumReaderContract() : path_(GetParam().write(folder_)) {}

    const std::vector<std::string>& Dumps() const { return GetParam().dumps; }

    /// A name of the example, or any name where it has none.
    std::string AName() const { return GetParam().names.empty() ? "a" : GetParam().names[0]; }

    /// What tLoadAllSpectra gives when the iteration has given that many.
    std::vector<std::string> DumpsOfAllBehind(std::size_t given) const
    {
        const std::size_t first = GetParam().loadsAllFromTheFirst ? 0 : given;
        return {Dumps().begin() + static_cast<std::ptrdiff_t>(first), Dumps().end()};
    }

    TempFolder folder_;
    std::string path_;
    Reader reader_{GetParam().type};
};

TEST_P(SpectrumReaderContract, TheFactoryGivesANewReader)
{
    ASSERT_NE(reader_.Get(), nullptr);
    EXPECT_NE(Reader(GetParam().type).Get(), reader_.Get());
}

TEST_P(SpectrumReaderContract, DestroyingNullsThePointer)
{
    SpectraIO* pReader = SpecIOFactory::pGetSpectraIO(GetParam().type);
    pReader->InitLoad(path_);
    SpecIOFactory::DesctroySpectraIO(pReader);
    EXPECT_EQ(pReader, nullptr);
}

TEST_P(SpectrumReaderContract, HasNothingBeforeInitLoad)
{
    Spectra spectra;
    EXPECT_EQ(reader_->tGetInputSpecNumber(), 0u);
    EXPECT_FALSE(reader_->bLoadNextSpectrum(spectra));
    EXPECT_EQ(reader_->tLoadAllSpectra(spectra), 0u);
    OutputOf([&] { EXPECT_FALSE(reader_->bLoadOneSpectrum(AName(), spectra)); });
    reader_->ResetIter();
    reader_->EndLoad();
    EXPECT_TRUE(spectra.empty());
}

TEST_P(SpectrumReaderContract, IterationGivesTheExample)
{
    EXPECT_EQ(OutputOf([&] {
                  reader_->InitLoad(path_);
                  Spectra spectra;
                  while (reader_->bLoadNextSpectrum(spectra)) {
                  }
                  EXPECT_EQ(Dump(spectra), Dumps());
              }),
              "")
        << "prints nothing";
}

TEST_P(SpectrumReaderContract, NumberIsThatOfTheNames)
{
    reader_->InitLoad(path_);
    EXPECT_EQ(reader_->tGetInputSpecNumber(), GetParam().names.size());
}

TEST_P(SpectrumReaderContract, EveryNameLoadsWhatTheIterationGives)
{
    reader_->InitLoad(path_);
    for (std::size_t i = GetParam().names.size(); i-- > 0;) {
        Spectra spectra;
        EXPECT_TRUE(reader_->bLoadOneSpectrum(GetParam().names[i], spectra));
        EXPECT_EQ(Dump(spectra), std::vector<std::string>{Dumps()[i]});
    }
    EXPECT_EQ(reader_.Rest(), Dumps()) << "the iteration did not move";
}

TEST_P(SpectrumReaderContract, IterationEndsAndStaysAtItsEnd)
{
    reader_->InitLoad(path_);
    reader_.Rest();
    Spectra spectra(1);
    EXPECT_FALSE(reader_->bLoadNextSpectrum(spectra));
    EXPECT_FALSE(reader_->bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra.size(), 1u);
    EXPECT_EQ(reader_.Rest(), DumpsOfAllBehind(Dumps().size()));
    EXPECT_FALSE(reader_->bLoadNextSpectrum(spectra));
}

TEST_P(SpectrumReaderContract, ResetIterStartsOver)
{
    reader_->InitLoad(path_);
    Spectra spectra;
    reader_->bLoadNextSpectrum(spectra);
    reader_->ResetIter();
    EXPECT_EQ(reader_.Rest(), Dumps());
    reader_->ResetIter();
    EXPECT_EQ(reader_.Rest(), Dumps());
}

TEST_P(SpectrumReaderContract, LoadAllCountsWhatItAppends)
{
    reader_->InitLoad(path_);
    Spectra spectra;
    const std::size_t given = reader_->bLoadNextSpectrum(spectra) ? 1 : 0;
    spectra.clear();
    EXPECT_EQ(reader_->tLoadAllSpectra(spectra), DumpsOfAllBehind(given).size());
    EXPECT_EQ(Dump(spectra), DumpsOfAllBehind(given));
}

TEST_P(SpectrumReaderContract, AppendsAndNeverClears)
{
    reader_->InitLoad(path_);
    Spectra spectra(1);
    spectra[0].strTitle = "kept";
    std::vector<std::string> expected = {Dump(spectra[0])};
    for (const std::string& name : GetParam().names) {
        reader_->bLoadOneSpectrum(name, spectra);
    }
    while (reader_->bLoadNextSpectrum(spectra)) {
    }
    reader_->ResetIter();
    reader_->tLoadAllSpectra(spectra);
    for (int way = 0; way < 3; ++way) {
        expected.insert(expected.end(), Dumps().begin(), Dumps().end());
    }
    EXPECT_EQ(Dump(spectra), expected);
}

TEST_P(SpectrumReaderContract, AnUnknownNameIsToldAndGivesFalse)
{
    reader_->InitLoad(path_);
    Spectra spectra;
    const std::string output =
        OutputOf([&] { EXPECT_FALSE(reader_->bLoadOneSpectrum("no such name", spectra)); });
    EXPECT_NE(output.find("no such name"), std::string::npos);
    EXPECT_TRUE(spectra.empty());
    EXPECT_EQ(reader_.Rest(), Dumps());
}

TEST_P(SpectrumReaderContract, WhatCannotBeOpenedIsEmptyAndMostlyTold)
{
    const std::string missing = folder_.PathOf("missing");
    const std::string output = OutputOf([&] { reader_->InitLoad(missing); });
    EXPECT_EQ(output.find(missing) != std::string::npos, GetParam().tellsWhatCannotBeOpened);
    EXPECT_EQ(reader_->tGetInputSpecNumber(), 0u);
    EXPECT_TRUE(reader_.Rest().empty());
}

TEST_P(SpectrumReaderContract, EndLoadKeepsTheNamesOrForgetsAll)
{
    reader_->InitLoad(path_);
    reader_->EndLoad();
    reader_->EndLoad();
    EXPECT_EQ(reader_->tGetInputSpecNumber(),
              GetParam().keepsNamesAfterEndLoad ? GetParam().names.size() : 0u);
}

TEST_P(SpectrumReaderContract, ASecondInitLoadStartsAnew)
{
    for (const bool endsBefore : {true, false}) {
        Reader reader(GetParam().type);
        reader->InitLoad(path_);
        Spectra spectra;
        reader->bLoadNextSpectrum(spectra);
        if (endsBefore) {
            reader->EndLoad();
        }
        reader->InitLoad(path_);
        EXPECT_EQ(reader.Rest(), Dumps());
    }
}

TEST_P(SpectrumReaderContract, TwoReadersDoNotDisturbEachOther)
{
    Reader other(GetParam().type);
    reader_->InitLoad(path_);
    other->InitLoad(path_);
    Spectra spectra;
    reader_->bLoadNextSpectrum(spectra);
    reader_->EndLoad();
    EXPECT_EQ(other.Rest(), Dumps());
}

INSTANTIATE_TEST_SUITE_P(All, SpectrumReaderContract, testing::ValuesIn(SpectrumExamples()),
                         [](const auto& example) { return example.param.testName; });

TEST(SpectrumReaderContractList, EveryReaderOfTheFactoryHasAnExample)
{
    for (int type = -1; type <= 10; ++type) {
        const auto wanted = static_cast<DatasetType::EDatasetType>(type);
        const auto& examples = SpectrumExamples();
        const bool hasExample =
            std::any_of(examples.begin(), examples.end(),
                        [wanted](const auto& example) { return example.type == wanted; });
        EXPECT_EQ(Reader(wanted).Get() != nullptr, hasExample) << type;
    }
}

} // namespace
} // namespace Vorlan::test
