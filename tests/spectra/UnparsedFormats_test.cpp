// mzML and mzXML: opened, never parsed, never written.
#include <string>
#include <vector>

#include <sys/stat.h>

#include "SpectraIO.h"
#include "spectra/SpectrumIndex.h"
#include "spectra/SpectrumText.h"
#include "support/OpenFiles.h"
#include "support/Support.h"

namespace Vorlan::test {
namespace {

const char* const kText =
    "<?xml version=\"1.0\"?>\n<mzML><run><spectrum id=\"scan=1\"/></run></mzML>\n"
    "BEGIN IONS\nTITLE=a\n1 2\nEND IONS\n";

std::string NotOpened(const std::string& path)
{
    return "\nMulSpecIO error: failed to open spectra file " + path + "\n";
}

/// Shows the steps of a reader.
template <typename Reader>
class Probe : public Reader {
public:
    using Reader::bGetOneSpec;
    using Reader::bPutOneSpec;
    using Reader::InitMember;
    using Reader::SetMap;

    Spectrum& Current() { return this->cSpectrum_; }
    const std::string& Extension() const { return this->strExtension_; }
    std::size_t IndexSize() const { return this->pIndex_->Size(); }
};

template <typename Reader>
class UnparsedFormats : public testing::Test {
protected:
    static std::string ExtensionOf(const MzMLIO*) { return ".mzML"; }
    static std::string ExtensionOf(const MzXMLIO*) { return ".mzXML"; }

    const TempFolder folder_;
    const std::string path_ = folder_.Write("a.mzML", kText);
    Probe<Reader> reader_;
};

using Readers = testing::Types<MzMLIO, MzXMLIO>;
TYPED_TEST_SUITE(UnparsedFormats, Readers);

TYPED_TEST(UnparsedFormats, B73_AFileThatCanBeOpenedHasNoSpectra)
{
    EXPECT_EQ(OutputOf([&] { this->reader_.InitLoad(this->path_); }), "");
    EXPECT_EQ(this->reader_.tGetInputSpecNumber(), 0u);
    std::vector<Spectrum> spectra(1);
    EXPECT_FALSE(this->reader_.bLoadNextSpectrum(spectra));
    EXPECT_EQ(this->reader_.tLoadAllSpectra(spectra), 0u);
    this->reader_.ResetIter();
    EXPECT_FALSE(this->reader_.bLoadNextSpectrum(spectra));
    EXPECT_EQ(spectra.size(), 1u);
}

TYPED_TEST(UnparsedFormats, EveryNameIsUnknownAndTold)
{
    this->reader_.InitLoad(this->path_);
    for (const std::string name : {"scan=1", "a", ""}) {
        std::vector<Spectrum> spectra;
        EXPECT_EQ(OutputOf([&] { EXPECT_FALSE(this->reader_.bLoadOneSpectrum(name, spectra)); }),
                  "\nUnable to load spectrum " + name + "\n");
        EXPECT_TRUE(spectra.empty());
    }
}

TYPED_TEST(UnparsedFormats, WhatCannotBeOpenedIsToldAsGiven)
{
    const std::string pipe = this->folder_.PathOf("pipe");
    ASSERT_EQ(::mkfifo(pipe.c_str(), 0600), 0);
    for (const std::string& path : {this->folder_.PathOf("missing"), this->folder_.Path(), pipe,
                                    std::string(), this->folder_.Path() + "\\missing"}) {
        EXPECT_EQ(OutputOf([&] { this->reader_.InitLoad(path); }), NotOpened(path));
        EXPECT_EQ(this->reader_.tGetInputSpecNumber(), 0u);
    }
}

TYPED_TEST(UnparsedFormats, InitLoadOpensAndEndLoadCloses)
{
    const auto before = OpenFileCount();
    this->reader_.InitLoad(this->folder_.Path() + "\\a.mzML");
    this->reader_.InitLoad(this->path_);
    EXPECT_TRUE(OpenFileCount() == before + 1 || before == 0) << "one file, the one before closed";
    this->reader_.EndLoad();
    this->reader_.EndLoad();
    EXPECT_EQ(OpenFileCount(), before);
    EXPECT_EQ(OutputOf([&] { this->reader_.InitLoad(this->path_); }), "") << "and again";
}

TYPED_TEST(UnparsedFormats, B73_InitSaveEmptiesTheFileAndNothingIsWritten)
{
    this->reader_.InitSave(this->path_);
    std::vector<Spectrum> spectra(3);
    EXPECT_FALSE(this->reader_.bSaveOneSpec(spectra[0]));
    EXPECT_EQ(this->reader_.tSaveSpectra(spectra, 0, 2), 0u);
    EXPECT_EQ(this->reader_.tSaveSpectra(spectra, 2, 1), 0u);
    this->reader_.EndSave();
    EXPECT_EQ(ReadFile(this->path_), "");
}

TYPED_TEST(UnparsedFormats, B73_InitSaveMakesAnEmptyFile)
{
    const std::string path = this->folder_.PathOf("new.mzML");
    EXPECT_EQ(OutputOf([&] { this->reader_.InitSave(path); }), "");
    this->reader_.EndSave();
    this->reader_.EndSave();
    ASSERT_TRUE(std::filesystem::exists(path));
    EXPECT_EQ(ReadFile(path), "");
}

TYPED_TEST(UnparsedFormats, AFileThatCannotBeWrittenIsTold)
{
    const std::string path = this->folder_.PathOf("no/new.mzML");
    EXPECT_EQ(OutputOf([&] { this->reader_.InitSave(path); }), NotOpened(path));
    Spectrum spectrum;
    EXPECT_FALSE(this->reader_.bSaveOneSpec(spectrum));
    this->reader_.EndSave();
}

TYPED_TEST(UnparsedFormats, LoadingLeavesTheFileAsItIs)
{
    this->reader_.InitLoad(this->path_);
    this->reader_.EndLoad();
    EXPECT_EQ(ReadFile(this->path_), kText);
}

TYPED_TEST(UnparsedFormats, TheStepsDoNothing)
{
    this->reader_.InitLoad(this->path_);
    this->reader_.SetMap();
    EXPECT_EQ(this->reader_.IndexSize(), 0u);
    EXPECT_FALSE(this->reader_.bGetOneSpec());
    EXPECT_EQ(Dump(this->reader_.Current()), "|0|0+|scan 0|rt 0|");
    Spectrum spectrum;
    EXPECT_FALSE(this->reader_.bPutOneSpec(spectrum));
}

TYPED_TEST(UnparsedFormats, InitMemberClearsThePeaksAndMakesRoom)
{
    const std::string extension = this->ExtensionOf(&this->reader_);
    EXPECT_EQ(this->reader_.Extension(), extension);
    EXPECT_GE(this->reader_.Current().vPeaks.capacity(), 256u);
    this->reader_.Current().vPeaks.resize(7);
    this->reader_.InitMember();
    EXPECT_TRUE(this->reader_.Current().vPeaks.empty());
    EXPECT_GE(this->reader_.Current().vPeaks.capacity(), 256u);
    EXPECT_EQ(this->reader_.Extension(), extension);
    this->reader_.Current().vPeaks.reserve(1000);
    const std::size_t room = this->reader_.Current().vPeaks.capacity();
    this->reader_.InitMember();
    EXPECT_EQ(this->reader_.Current().vPeaks.capacity(), room) << "more room stays";
}

} // namespace
} // namespace Vorlan::test
