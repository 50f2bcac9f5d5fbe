#include "SpectraIO.h"

#include "platform/Folder.h"
#include "platform/InputFile.h"
#include "spectra/DtaRecord.h"
#include "util/ComposedPath.h"
#include "util/Console.h"
#include "util/LineReader.h"

namespace Vorlan {

DtaIO::DtaIO()
{
    DtaIO::InitMember();
}

DtaIO::~DtaIO() = default;

void DtaIO::InitMember()
{
    SpectraIO::InitMember();
    strExtension_ = ".dta";
}

void DtaIO::InitLoad(const std::string& folder)
{
    strFolder_ = WithOneBackslash(folder);
    SetFilenameList();
    ResetIter();
}

void DtaIO::SetFilenameList()
{
    constexpr std::size_t kUsualNumber = 32768;
    vFilenames_.clear();
    vFilenames_.reserve(kUsualNumber);
    platform::ListFiles(strFolder_, ".dta", vFilenames_); // Deliberate: B-71.
}

bool DtaIO::bLoadNextSpectrum(std::vector<Spectrum>& vSpectra)
{
    while (tIter_ < vFilenames_.size()) {
        const std::string name = vFilenames_[tIter_++]; // the list may change meanwhile
        if (bLoadOneSpectrum(name, vSpectra)) {
            return true;
        }
    }
    return false;
}

std::uint64_t DtaIO::tLoadAllSpectra(std::vector<Spectrum>& vSpectra)
{
    ResetIter(); // Deliberate: B-72.
    std::uint64_t loaded = 0;
    for (; tIter_ < vFilenames_.size(); ++tIter_) {
        const std::string name = vFilenames_[tIter_];
        loaded += bLoadOneSpectrum(name, vSpectra) ? 1 : 0;
    }
    return loaded;
}

void DtaIO::EndLoad()
{
    vFilenames_.clear();
    strFolder_.clear(); // Deliberate: B-91. The working folder's files are found then.
}

bool DtaIO::bLoadOneSpectrum(const std::string& name, std::vector<Spectrum>& vSpectra)
{
    if (!bOpenInputFile(strFolder_ + name)) {
        return false;
    }
    bool isRead = false;
    try {
        cSpectrum_.strSource = strFolder_;
        cSpectrum_.strTitle.assign(name, name.rfind('\\') + 1, std::string::npos); // npos + 1 is 0
        isRead = bGetOneSpec();
        vSpectra.push_back(cSpectrum_);
    } catch (...) { // no memory, or a derived class
        CloseInputFile();
        throw;
    }
    CloseInputFile();
    return isRead;
}

void DtaIO::ResetIter()
{
    tIter_ = 0;
}

std::uint64_t DtaIO::tGetInputSpecNumber()
{
    return vFilenames_.size();
}

bool DtaIO::bHasName_(const std::string& name) const
{
    return platform::InputFile().Open(strFolder_ + name);
}

bool DtaIO::bOpenInputFile(const std::string& path)
{
    if (pInput_->Open(path, LineReader::Mode::Text)) {
        return true;
    }
    console::Print(console::Stream::Out, "\nDtaIO error: failed to open dta file " + path + "\n");
    return false;
}

void DtaIO::CloseInputFile()
{
    SpectraIO::CloseInputFile();
}

bool DtaIO::bGetOneSpec()
{
    dta::ReadRecord(*pInput_, cSpectrum_, cPeak_);
    return true;
}

} // namespace Vorlan
