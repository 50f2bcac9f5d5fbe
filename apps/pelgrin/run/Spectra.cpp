#include "run/Spectra.h"

#include <filesystem>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/FileLines.h"
#include "run/DatasetResolver.h"

namespace pelgrin {

namespace {

/// Enters every name under which the library would index a spectrum of one of
/// these title lines. The library is asked, so that the host needs no rules of
/// its own: each title is written with one peak and read back.
void AddNamesOf(const std::vector<std::string>& titleLines, Reason reason, ScratchFolder& scratch,
                SpectraFile& file)
{
    if (titleLines.empty()) {
        return;
    }
    std::string text;
    for (const std::string& line : titleLines) {
        text += "BEGIN IONS\n" + line + "\n1 1\nEND IONS\n";
    }
    Vorlan::MgfIO reader;
    reader.InitLoad(scratch.Write("titles.mgf", text));
    std::vector<Vorlan::Spectrum> spectra;
    while (reader.bLoadNextSpectrum(spectra)) {
        file.unusable.emplace(spectra.back().strTitle, reason);
        spectra.clear();
    }
    reader.EndLoad();
}

void AddScans(SpectraFile& file)
{
    constexpr std::size_t kKey = 6; // "TITLE="
    for (const std::string& title : file.audit.titlesEndingInScan) {
        const std::string scan = title.substr(title.find("scan=") + 5);
        file.scanTitles.insert_or_assign(scan, title.substr(kKey));
        file.cutScans.insert(scan.substr(0, scan.size() - 1));
    }
}

bool IsScanNumber(const std::string& name)
{
    return !name.empty() && name.find_first_not_of("0123456789") == std::string::npos;
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

SpectraFile OpenFile(const std::string& path, ScratchFolder& scratch)
{
    SpectraFile file{path, FileNameOf(path), AuditMgf(path), {}, {}, {}};
    AddScans(file);
    AddNamesOf(file.audit.titlesWithoutPeaks, Reason::SpectrumWithoutPeaks, scratch, file);
    AddNamesOf(file.audit.foreignTitles, Reason::SpectrumWithForeignTitle, scratch, file);
    Warn(file);
    return file;
}

} // namespace

SpectraPool::SpectraPool(const std::vector<std::string>& paths, ScratchFolder& scratch)
{
    std::vector<Vorlan::DatasetSource> sources;
    for (const std::string& path : paths) {
        files_.push_back(OpenFile(path, scratch));
        const std::filesystem::path folder = std::filesystem::absolute(path).parent_path();
        sources.emplace_back(folder.string(), files_.back().dataset, Vorlan::DatasetType::Mgf);
    }
    pool_.InitLoad(sources);
}

std::vector<std::string> SpectraPool::DatasetNames() const
{
    std::vector<std::string> names;
    for (const SpectraFile& file : files_) {
        names.push_back(file.dataset);
    }
    return names;
}

bool SpectraPool::Has(const SpectraFile& file, const std::string& spectrumName) const
{
    return pool_.bHasSpectrum(file.dataset, spectrumName);
}

std::string SpectraPool::NameOf(const SpectraFile& file,
                                const Vorlan::PeptideIdentification& record) const
{
    const std::string& name = record.strSpectrumName;
    const auto known = file.scanTitles.find(name);
    if (known != file.scanTitles.end() && Has(file, known->second)) {
        return known->second;
    }
    if (file.cutScans.count(name) == 0 && Has(file, name)) {
        return name;
    }
    if (!IsScanNumber(name)) {
        return {};
    }
    const std::string stem = WithoutKnownEndings(file.dataset);
    for (const std::string& charge : {"." + std::to_string(record.nCharge), std::string()}) {
        for (const std::string& scan : {name, fmt::format("{:0>5}", name)}) {
            std::string title = stem + "." + scan + "." + scan + charge;
            if (Has(file, title)) {
                return title;
            }
        }
    }
    return {};
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

} // namespace pelgrin
