#include "run/Spectra.h"

#include <filesystem>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/FileLines.h"
#include "files/SpectraSource.h"
#include "run/DatasetResolver.h"
#include "run/DottedName.h"

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
    for (const std::string& line : file.mgf.titlesWithScan) {
        const std::size_t begin = line.find("scan=") + 5;
        const std::size_t end = line.find_first_not_of("0123456789", begin);
        const std::string scan = line.substr(begin, end - begin);
        const auto [entry, isNew] = file.scanTitles.emplace(scan, line.substr(kKey));
        if (!isNew && entry->second != line.substr(kKey)) {
            entry->second.clear(); // one of several spectra
        }
        if (end == std::string::npos) {
            file.cutScans.insert(scan.substr(0, scan.size() - 1));
        }
    }
}

void WarnOfMgf(const SpectraFile& file)
{
    const MgfAudit& audit = file.mgf;
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

void WarnOfDta(const SpectraFile& file)
{
    const DtaAudit& audit = file.dta;
    const auto pathOf = [&file](const std::string& name) {
        return OneLine((std::filesystem::path(file.path) / name).string());
    };
    const auto useless = [&](const std::vector<std::string>& names, const char* line,
                             const char* what) {
        if (!names.empty()) {
            spdlog::warn("{}{}: {}; {} such files cannot be annotated", pathOf(names.front()), line,
                         what, names.size());
        }
    };
    useless(audit.notReadable, "", "cannot be opened");
    useless(audit.withoutPrecursor, ":1", "no mass and charge of a precursor");
    useless(audit.withoutPeaks, "", "a spectrum without peaks");
    const auto flawed = [&](const DtaAudit::Flaw& flaw, const std::string& what) {
        if (flaw.count > 0) {
            spdlog::warn("{}:{}: {}", pathOf(flaw.firstFile), flaw.firstLine, what);
        }
    };
    flawed(
        audit.behindEmptyLine,
        fmt::format("an empty line ends the spectrum; {} such files hold more, which is not read",
                    audit.behindEmptyLine.count));
    flawed(audit.longLine,
           fmt::format("a line of more than {} characters ends the spectrum; {} such files are not "
                       "read to their end",
                       kLongestLine, audit.longLine.count));
    flawed(audit.unreadableNumbers,
           fmt::format("expected m/z and intensity; {} such lines are read with the numbers of the "
                       "line before",
                       audit.unreadableNumbers.count));
}

SpectraFile OpenMgf(const std::string& path, ScratchFolder& scratch)
{
    SpectraFile file;
    file.path = path;
    file.mgf = AuditMgf(path);
    file.spectra = file.mgf.spectra;
    AddScans(file);
    AddNamesOf(file.mgf.titlesWithoutPeaks, Reason::SpectrumWithoutPeaks, scratch, file);
    AddNamesOf(file.mgf.foreignTitles, Reason::SpectrumWithForeignTitle, scratch, file);
    WarnOfMgf(file);
    return file;
}

SpectraFile OpenDta(const std::string& path)
{
    SpectraFile file;
    file.path = path;
    file.format = Vorlan::DatasetType::Dta;
    file.dta = AuditDta(path);
    file.dtaNames = DtaNames(file.dta.names);
    file.spectra = file.dta.names.size();
    for (const auto& [names, reason] :
         {std::pair{&file.dta.notReadable, Reason::SpectrumNotReadable},
          {&file.dta.withoutPrecursor, Reason::SpectrumWithoutPrecursor},
          {&file.dta.withoutPeaks, Reason::SpectrumWithoutPeaks}}) {
        for (const std::string& name : *names) {
            file.unusable.emplace(name, reason);
        }
    }
    WarnOfDta(file);
    return file;
}

} // namespace

SpectraPool::SpectraPool(const std::vector<std::string>& paths, ScratchFolder& scratch)
{
    std::vector<Vorlan::DatasetSource> sources;
    for (const std::string& path : paths) {
        files_.push_back(IsFolder(path) ? OpenDta(path) : OpenMgf(path, scratch));
        const DatasetPlace place = PlaceOfDataset(path);
        files_.back().dataset = place.name;
        sources.emplace_back(place.folder, place.name, files_.back().format);
        servers_.emplace_back(sources.back());
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

std::optional<std::string> SpectraPool::TitleOfScan(const SpectraFile& file,
                                                    const std::string& scan) const
{
    const auto known = file.scanTitles.find(scan);
    const bool isKnown =
        known != file.scanTitles.end() && !known->second.empty() && Has(file, known->second);
    return isKnown ? std::optional(known->second) : std::nullopt;
}

std::optional<SpectrumName>
SpectraPool::NameInMgf(const SpectraFile& file, const Vorlan::PeptideIdentification& record) const
{
    const std::string& name = record.strSpectrumName;
    if (const auto title = TitleOfScan(file, name)) {
        return SpectrumName{*title, true};
    }
    if (file.cutScans.count(name) == 0 && Has(file, name)) {
        return SpectrumName{name, false};
    }
    if (const auto dotted = ParseDottedName(name)) {
        if (const auto title = TitleOfScan(file, dotted->firstScan)) {
            return SpectrumName{*title, true};
        }
        const std::string withoutCharge = name.substr(0, name.rfind('.') + 1);
        const bool has = !dotted->charge.empty() && Has(file, withoutCharge);
        return has ? std::optional(SpectrumName{withoutCharge, false}) : std::nullopt;
    }
    if (!IsScanNumber(name)) {
        return std::nullopt;
    }
    const std::string stem = WithoutKnownEndings(file.dataset);
    for (const std::string& charge : {"." + std::to_string(record.nCharge), std::string()}) {
        for (const std::string& scan : {name, fmt::format("{:0>5}", name)}) {
            std::string title = stem + "." + scan + "." + scan + charge;
            if (Has(file, title)) {
                return SpectrumName{std::move(title), true};
            }
        }
    }
    return std::nullopt;
}

std::optional<SpectrumName> SpectraPool::NameOf(const SpectraFile& file,
                                                const Vorlan::PeptideIdentification& record) const
{
    return file.format == Vorlan::DatasetType::Dta
               ? file.dtaNames.Find(record.strSpectrumName, record.nCharge)
               : NameInMgf(file, record);
}

Vorlan::Spectrum* SpectraPool::Load(const SpectraFile& file, const std::string& spectrumName)
{
    const auto place = static_cast<std::size_t>(&file - files_.data());
    switch (servers_.at(place).Load(spectrumName, loaded_)) {
    case SpectrumServer::Reply::Found: return &loaded_;
    case SpectrumServer::Reply::ReaderEnded: return nullptr;
    case SpectrumServer::Reply::Unknown: break;
    }
    throw Failure(fmt::format("{}: spectrum \"{}\" cannot be read again", file.path, spectrumName));
}

std::vector<std::string> SpectraPool::ReaderEnds() const
{
    std::vector<std::string> ends;
    for (std::size_t i = 0; i < files_.size(); ++i) {
        for (const std::string& end : servers_[i].Ends()) {
            ends.push_back(files_[i].path + ": " + end);
        }
    }
    return ends;
}

std::string FileNameOf(const std::string& path)
{
    return std::filesystem::path(path).filename().string();
}

} // namespace pelgrin
