#include "SpectraIO.h"

#include "datastructures/FieldNames.h"
#include "spectra/SpectraIOErrors.h"
#include "util/ComposedPath.h"
#include "util/Console.h"

namespace Vorlan {

namespace {

/// Owned from here on; given back to the factory when the last pool lets go.
std::shared_ptr<SpectraIO> MakeReader(DatasetType::EDatasetType type)
{
    return {SpecIOFactory::pGetSpectraIO(type),
            [](SpectraIO* pReader) { SpecIOFactory::DesctroySpectraIO(pReader); }};
}

void PrintOut(const std::string& text)
{
    console::Print(console::Stream::Out, text);
}

} // namespace

DatasetIOPool::DatasetIOPool() = default;
DatasetIOPool::DatasetIOPool(const DatasetIOPool&) = default;
DatasetIOPool& DatasetIOPool::operator=(const DatasetIOPool&) = default;
DatasetIOPool::~DatasetIOPool() = default;

void DatasetIOPool::InitLoad(const std::vector<DatasetSource>& vSources)
{
    vSources_ = vSources;
    for (DatasetSource& source : vSources_) {
        FolderOf(source) = WithOneBackslash(FolderOf(source));
    }
    SetDatasetSourceIndex();
    InitSpecIO();
}

void DatasetIOPool::SetDatasetSourceIndex()
{
    mapDatasets_.clear();
    for (std::size_t i = 0; i < vSources_.size(); ++i) {
        mapDatasets_[DatasetNameOf(vSources_[i])] = i; // Deliberate: B-85
    }
}

void DatasetIOPool::InitSpecIO()
{
    PrintOut("    Setting spectra index for each dataset: ");
    vReaders_.clear();
    vReaders_.reserve(vSources_.size());
    std::string progress;
    for (const DatasetSource& source : vSources_) {
        progress = std::to_string(vReaders_.size() + 1) + "/" + std::to_string(vSources_.size());
        PrintOut(progress);
        vReaders_.push_back(MakeReader(source.eType));
        if (vReaders_.back()) {
            vReaders_.back()->InitLoad(FolderOf(source) + DatasetNameOf(source));
        }
        PrintOut(std::string(progress.size(), '\b'));
    }
    PrintOut("...Done.\n");
    // Deliberate: B-19. The blanks come behind the line end.
    constexpr std::size_t kDoneLength = 8;
    if (progress.size() > kDoneLength) {
        PrintOut(std::string(progress.size() - kDoneLength, ' '));
    }
    tCurrent_ = 0;
}

bool DatasetIOPool::bLoadNextSpectrum(std::vector<Spectrum>& vSpectra)
{
    for (; tCurrent_ < vReaders_.size(); ++tCurrent_) {
        if (vReaders_[tCurrent_] && vReaders_[tCurrent_]->bLoadNextSpectrum(vSpectra)) {
            return true;
        }
    }
    return false;
}

bool DatasetIOPool::bLoadOneSpectrum(const std::string& datasetName,
                                     const std::string& spectrumName,
                                     std::vector<Spectrum>& vSpectra)
{
    const auto dataset = mapDatasets_.find(datasetName);
    if (dataset == mapDatasets_.end()) {
        errors::UnknownDataset(datasetName);
    }
    if (dataset->second >= vReaders_.size() || !vReaders_[dataset->second]) {
        return false;
    }
    return vReaders_[dataset->second]->bLoadOneSpectrum(spectrumName, vSpectra);
}

bool DatasetIOPool::bHasSpectrum(const std::string& datasetName,
                                 const std::string& spectrumName) const
{
    const auto dataset = mapDatasets_.find(datasetName);
    if (dataset == mapDatasets_.end() || dataset->second >= vReaders_.size()) {
        return false;
    }
    const SpectraIO* const pReader = vReaders_[dataset->second].get();
    if (const auto* pFile = dynamic_cast<const MulSpecIO*>(pReader)) {
        return pFile->bHasName_(spectrumName);
    }
    const auto* pFolder = dynamic_cast<const DtaIO*>(pReader);
    return pFolder != nullptr && pFolder->bHasName_(spectrumName);
}

std::uint64_t DatasetIOPool::tLoadAllSpectra(std::vector<Spectrum>& vSpectra)
{
    while (bLoadNextSpectrum(vSpectra)) {
    }
    return vSpectra.size(); // Deliberate: B-09.
}

std::uint64_t DatasetIOPool::tGetDatasetNumber() const
{
    return vSources_.size();
}

std::uint64_t DatasetIOPool::tGetSpecNumber() const
{
    std::uint64_t number = 0;
    for (const auto& pReader : vReaders_) {
        number += pReader ? pReader->tGetInputSpecNumber() : 0;
    }
    return number;
}

void DatasetIOPool::ResetIter()
{
    tCurrent_ = 0;
    for (const auto& pReader : vReaders_) {
        if (pReader) {
            pReader->ResetIter();
        }
    }
}

void DatasetIOPool::EndLoad()
{
    for (const auto& pReader : vReaders_) {
        if (pReader) {
            pReader->EndLoad();
        }
    }
    vReaders_.clear();
}

} // namespace Vorlan
