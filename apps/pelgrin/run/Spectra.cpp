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

/// Enters every name that one of these title lines gives its spectrum.
void AddNamesOf(const std::vector<std::string>& titleLines, Reason reason, SpectraFile& file)
{
    for (const std::string& line : titleLines) {
        const MgfNames names = NamesOf(line);
        for (std::size_t i = 0; i < kNameKinds; ++i) {
            if (names.has[i]) {
                file.unusable.emplace(names.names[i], reason);
            }
        }
    }
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

SpectraFile OpenMgf(const std::string& path)
{
    SpectraFile file;
    file.path = path;
    file.mgf = AuditMgf(path, &file.index);
    file.spectra = file.mgf.spectra;
    AddScans(file);
    AddNamesOf(file.mgf.titlesWithoutPeaks, Reason::SpectrumWithoutPeaks, file);
    AddNamesOf(file.mgf.foreignTitles, Reason::SpectrumWithForeignTitle, file);
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

// ---- Names in an MGF file -------------------------------------------------------

/// What the file has under a name. The number that a title lost its last digit to
/// get (B-13) is no name, and neither is the empty one.
std::optional<SpectrumName> Look(const SpectraFile& file, const std::string& name)
{
    const auto hit = file.index.Find(name);
    if (!hit || hit->isCutScan || name.empty()) {
        return std::nullopt;
    }
    return SpectrumName{name, MeetKindOf(hit->kind), hit->isAmbiguous};
}

/// The same for a name that the host has made.
std::optional<SpectrumName> Look(const SpectraFile& file, const std::string& name, MeetKind kind)
{
    auto found = Look(file, name);
    if (found) {
        found->kind = kind;
    }
    return found;
}

std::optional<SpectrumName> LookForScan(const SpectraFile& file, const std::string& scan)
{
    const auto known = file.scanTitles.find(scan);
    if (known == file.scanTitles.end()) {
        return std::nullopt;
    }
    return known->second.empty() ? SpectrumName{scan, MeetKind::ScanInTitle, true}
                                 : Look(file, known->second, MeetKind::ScanInTitle);
}

/// A spectrum whose title says run, scan and charge.
std::optional<SpectrumName> LookForComposed(const SpectraFile& file, const std::string& scan,
                                            const std::string& charge)
{
    const std::string stem = WithoutKnownEndings(file.dataset);
    for (const std::string& number : {scan, fmt::format("{:0>5}", scan)}) {
        const std::string title = fmt::format("{}.{}.{}{}", stem, number, number, charge);
        if (auto found = Look(file, title, MeetKind::Composed)) {
            return found;
        }
    }
    return std::nullopt;
}

std::optional<SpectrumName> LookForDotted(const SpectraFile& file, const std::string& name,
                                          const DottedName& dotted)
{
    if (auto found = LookForScan(file, dotted.firstScan)) {
        return found;
    }
    return dotted.charge.empty()
               ? std::nullopt
               : Look(file, name.substr(0, name.rfind('.') + 1), MeetKind::WithoutCharge);
}

std::optional<SpectrumName> NameInMgf(const SpectraFile& file,
                                      const Vorlan::PeptideIdentification& record)
{
    const std::string& name = record.strSpectrumName;
    auto found = LookForScan(file, name);
    found = found ? found : Look(file, name);
    if (found && !found->isAmbiguous) {
        return found;
    }
    if (IsScanNumber(name)) {
        auto composed = LookForComposed(file, name, "." + std::to_string(record.nCharge));
        composed = composed || found ? composed : LookForComposed(file, name, {});
        return composed && !(composed->isAmbiguous && found) ? composed : found;
    }
    const auto dotted = ParseDottedName(name);
    return found || !dotted ? found : LookForDotted(file, name, *dotted);
}

} // namespace

SpectraPool::SpectraPool(const std::vector<std::string>& paths)
{
    for (const std::string& path : paths) {
        files_.push_back(IsFolder(path) ? OpenDta(path) : OpenMgf(path));
        const DatasetPlace place = PlaceOfDataset(path);
        files_.back().dataset = place.name;
        servers_.emplace_back(
            Vorlan::DatasetSource(place.folder, place.name, files_.back().format));
    }
}

std::uint64_t SpectraPool::Names() const
{
    std::uint64_t names = 0;
    for (const SpectraFile& file : files_) {
        const bool isFolder = file.format == Vorlan::DatasetType::Dta;
        names += isFolder ? file.dta.names.size() : file.index.Names();
    }
    return names;
}

std::vector<std::string> SpectraPool::DatasetNames() const
{
    std::vector<std::string> names;
    for (const SpectraFile& file : files_) {
        names.push_back(file.dataset);
    }
    return names;
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

std::optional<double> PrecursorMzOf(const SpectraFile& file, const std::string& spectrumName)
{
    if (file.unusable.count(spectrumName) > 0) {
        return std::nullopt;
    }
    if (file.format == Vorlan::DatasetType::Dta) {
        const auto known = file.dta.precursorMz.find(spectrumName);
        return known == file.dta.precursorMz.end() ? std::nullopt : std::optional(known->second);
    }
    const auto hit = file.index.Find(spectrumName);
    return hit ? file.index.Records()[hit->record].precursorMz : std::nullopt;
}

std::string FileNameOf(const std::string& path)
{
    return std::filesystem::path(path).filename().string();
}

} // namespace pelgrin
