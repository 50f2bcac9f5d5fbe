#include "SpectraIO.h"

#include "platform/OutputFile.h"
#include "spectra/SpectrumIndex.h"
#include "util/Console.h"
#include "util/LineReader.h"

namespace Vorlan {

namespace {

bool ReportNotOpened(const std::string& path)
{
    console::Print(console::Stream::Out,
                   "\nMulSpecIO error: failed to open spectra file " + path + "\n");
    return false;
}

} // namespace

MulSpecIO::MulSpecIO() : pIndex_(std::make_unique<SpectrumIndex>()) {}

MulSpecIO::~MulSpecIO() = default;

// ---- Loading -------------------------------------------------------------

void MulSpecIO::InitLoad(const std::string& path)
{
    SpectraIO::CloseInputFile(); // of an earlier file
    bOpenInputFile(path);
    SetMap();
    ResetIter();
}

bool MulSpecIO::bLoadNextSpectrum(std::vector<Spectrum>& vSpectra)
{
    if (tIter_ >= pIndex_->Size()) {
        return false;
    }
    // Deliberate: B-22. Once under each of its names.
    bLoadOneSpectrum(std::string(pIndex_->Name(tIter_)), vSpectra);
    ++tIter_;
    return true;
}

std::uint64_t MulSpecIO::tLoadAllSpectra(std::vector<Spectrum>& vSpectra)
{
    std::uint64_t loaded = 0;
    for (; tIter_ < pIndex_->Size(); ++tIter_) {
        loaded += bLoadOneSpectrum(std::string(pIndex_->Name(tIter_)), vSpectra) ? 1 : 0;
    }
    return loaded;
}

void MulSpecIO::EndLoad()
{
    CloseInputFile(); // Deliberate: B-86. The index stays.
}

bool MulSpecIO::bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra)
{
    // The iteration asks for the names in their order: no search then.
    const bool isNext = tIter_ < pIndex_->Size() && pIndex_->Name(tIter_) == name;
    const std::size_t entry = isNext ? tIter_ : pIndex_->Find(name);
    if (entry == SpectrumIndex::kNone) {
        console::Print(console::Stream::Out, "\nUnable to load spectrum " + name + "\n");
        return false;
    }
    pInput_->Seek(pIndex_->Position(entry));
    cSpectrum_.strTitle = name;
    bGetOneSpec();
    vSpectra.push_back(cSpectrum_);
    return true;
}

void MulSpecIO::ResetIter()
{
    tIter_ = 0;
}

std::uint64_t MulSpecIO::tGetInputSpecNumber()
{
    return pIndex_->Size();
}

bool MulSpecIO::bHasName_(const std::string& name) const
{
    return pIndex_->Find(name) != SpectrumIndex::kNone;
}

bool MulSpecIO::bOpenInputFile(const std::string& path)
{
    return pInput_->Open(path, LineReader::Mode::Binary) || ReportNotOpened(path);
}

void MulSpecIO::CloseInputFile()
{
    SpectraIO::CloseInputFile();
}

// ---- Saving --------------------------------------------------------------

void MulSpecIO::InitSave(const std::string& path)
{
    CloseOutputFile(); // of an earlier file
    bOpenOutputFile(path);
}

void MulSpecIO::EndSave()
{
    CloseOutputFile();
}

bool MulSpecIO::bSaveOneSpec(Spectrum& spectrum)
{
    return bPutOneSpec(spectrum);
}

std::uint64_t MulSpecIO::tSaveSpectra(std::vector<Spectrum>& vSpectra, std::uint64_t first,
                                      std::uint64_t last)
{
    std::uint64_t written = 0;
    for (std::uint64_t i = first; i <= last && i < vSpectra.size(); ++i, ++written) {
        if (!bPutOneSpec(vSpectra[i])) {
            break;
        }
    }
    return written;
}

bool MulSpecIO::bOpenOutputFile(const std::string& path)
{
    platform::OpenOutput(ofsOutput_, path);
    return ofsOutput_.good() || ReportNotOpened(path);
}

void MulSpecIO::CloseOutputFile()
{
    if (ofsOutput_.is_open()) {
        ofsOutput_.close();
    }
    ofsOutput_.clear();
}

} // namespace Vorlan
