#include "run/Spectra.h"

#include <filesystem>
#include <fstream>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

/// Enters every name under which the library would index a spectrum of one of
/// these title lines. The library is asked, so that the host needs no rules of
/// its own: each title is written with one peak and read back.
void AddNamesOf(const std::vector<std::string>& titleLines, Reason reason,
                const std::string& scratchPath, SpectraFile& file)
{
    if (titleLines.empty()) {
        return;
    }
    std::ofstream scratch(scratchPath, std::ios::binary | std::ios::trunc);
    for (const std::string& line : titleLines) {
        scratch << "BEGIN IONS\n" << line << "\n1 1\nEND IONS\n";
    }
    scratch.close();
    if (!scratch) {
        throw Failure(fmt::format("{}: cannot be written", scratchPath));
    }
    Vorlan::MgfIO reader;
    reader.InitLoad(scratchPath);
    std::vector<Vorlan::Spectrum> spectra;
    while (reader.bLoadNextSpectrum(spectra)) {
        file.unusable.emplace(spectra.back().strTitle, reason);
        spectra.clear();
    }
    reader.EndLoad();
    std::ofstream(scratchPath, std::ios::binary | std::ios::trunc).close();
}

void Warn(const SpectraFile& file)
{
    const MgfAudit& audit = file.audit;
    const std::string path = OneLine(file.path);
    if (audit.spectra == 0) {
        spdlog::warn("{}: holds no spectra", path);
    }
    if (!audit.titlesWithoutPeaks.empty()) {
        spdlog::warn("{}:{}: a spectrum without peaks; {} such spectra cannot be annotated", path,
                     audit.firstWithoutPeaks, audit.titlesWithoutPeaks.size());
    }
    if (audit.firstWithoutTitle != 0) {
        spdlog::warn(
            "{}:{}: a spectrum without title; {} titles that follow such spectra cannot be "
            "annotated",
            path, audit.firstWithoutTitle, audit.foreignTitles.size());
    }
    if (audit.longLine != 0) {
        spdlog::warn("{}:{}: a line of more than {} characters; {} spectra behind it are not read",
                     path, audit.longLine, kLongestLine, audit.spectraBehindLongLine);
    }
}

SpectraFile OpenFile(const std::string& path, const std::string& scratchPath)
{
    SpectraFile file{path, FileNameOf(path), AuditMgf(path), {}};
    AddNamesOf(file.audit.titlesWithoutPeaks, Reason::SpectrumWithoutPeaks, scratchPath, file);
    AddNamesOf(file.audit.foreignTitles, Reason::SpectrumWithForeignTitle, scratchPath, file);
    Warn(file);
    return file;
}

} // namespace

SpectraPool::SpectraPool(const std::vector<std::string>& paths, const std::string& scratchPath)
{
    std::vector<Vorlan::DatasetSource> sources;
    for (const std::string& path : paths) {
        files_.push_back(OpenFile(path, scratchPath));
        const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
        sources.emplace_back(folder.string(), files_.back().dataset, Vorlan::DatasetType::Mgf);
    }
    for (const SpectraFile& file : files_) {
        datasets_[file.dataset] = {&file, true};
    }
    for (const SpectraFile& file : files_) {
        if (const auto name = WithoutMgfEnding(file.dataset)) {
            datasets_.emplace(*name, Dataset{&file, false});
        }
    }
    pool_.InitLoad(sources);
}

std::optional<SpectraPool::Dataset> SpectraPool::Find(const std::string& datasetName) const
{
    const auto hit = datasets_.find(datasetName);
    return hit == datasets_.end() ? std::nullopt : std::optional<Dataset>(hit->second);
}

bool SpectraPool::Has(const SpectraFile& file, const std::string& spectrumName) const
{
    return pool_.bHasSpectrum(file.dataset, spectrumName);
}

Vorlan::Spectrum& SpectraPool::Load(const SpectraFile& file, const std::string& spectrumName)
{
    loaded_.clear();
    if (!pool_.bLoadOneSpectrum(file.dataset, spectrumName, loaded_) || loaded_.empty()) {
        throw Failure(
            fmt::format("{}: spectrum \"{}\" cannot be read again", file.path, spectrumName));
    }
    return loaded_.back();
}

std::string FileNameOf(const std::string& path)
{
    return std::filesystem::path(path).filename().string();
}

std::optional<std::string> WithoutMgfEnding(const std::string& fileName)
{
    const std::size_t dot = fileName.size() < 5 ? std::string::npos : fileName.size() - 4;
    if (dot == std::string::npos) {
        return std::nullopt;
    }
    std::string ending = fileName.substr(dot);
    for (char& c : ending) {
        c = c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
    }
    return ending == ".mgf" ? std::optional<std::string>(fileName.substr(0, dot)) : std::nullopt;
}

} // namespace pelgrin
