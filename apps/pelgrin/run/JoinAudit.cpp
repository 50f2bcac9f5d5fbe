#include "run/JoinAudit.h"

#include <algorithm>
#include <cmath>
#include <numeric>

#include <OpenMS/CONCEPT/Constants.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/SimilarNames.h"
#include "common/Terminal.h"
#include "run/DottedName.h"

namespace pelgrin {

using Vorlan::PeptideIdentification;

namespace {

constexpr std::size_t kMostExamples = 5;
constexpr std::size_t kMostNames = 3;
constexpr double kMillion = 1e6;
constexpr double kSameMzPpm = 20.0;
constexpr double kSameMzTh = 0.01;

struct DeviationTexts {
    const char* key;
    const char* text;
};

constexpr DeviationTexts kTexts[kDeviations] = {
    {"within_1_ppm", "within 1 ppm"},    {"within_5_ppm", "within 5 ppm"},
    {"within_10_ppm", "within 10 ppm"},  {"within_20_ppm", "within 20 ppm"},
    {"within_50_ppm", "within 50 ppm"},  {"within_100_ppm", "within 100 ppm"},
    {"isotopic", "1 to 3 neutrons off"}, {"within_0.5_th", "within 0.5 Th"},
    {"within_3_th", "within 3 Th"},      {"beyond_3_th", "beyond 3 Th"},
    {"not_known", "m/z not known"},
};

constexpr double kPpmWidths[] = {1.0, 5.0, 10.0, 20.0, 50.0, 100.0};

bool IsMz(double value)
{
    return std::isfinite(value) && value > 0.0;
}

bool IsSameMz(double difference, double spectrumMz)
{
    return std::fabs(difference) <= std::max(kSameMzTh, spectrumMz * kSameMzPpm / kMillion);
}

bool IsIsotopic(double difference, double spectrumMz, std::uint64_t charge)
{
    constexpr double kNeutron = 1.00335; // 13C for 12C
    for (int neutrons = 1; neutrons <= 3 && charge > 0; ++neutrons) {
        const double step = neutrons * kNeutron / static_cast<double>(charge);
        if (IsSameMz(std::fabs(difference) - step, spectrumMz)) {
            return true;
        }
    }
    return false;
}

/// The scan number that a spectrum name tells, without zeros in front.
std::optional<std::string> ScanOf(const std::string& name)
{
    if (IsScanNumber(name)) {
        return WithoutZeros(name);
    }
    if (const auto dotted = ParseDottedName(name)) {
        return dotted->firstScan;
    }
    const std::size_t key = name.find("scan=");
    const std::size_t begin = key == std::string::npos ? name.size() : key + 5;
    const std::size_t end = std::min(name.find_first_not_of("0123456789", begin), name.size());
    const std::string scan = name.substr(begin, end - begin);
    return scan.empty() ? std::nullopt : std::optional(WithoutZeros(scan));
}

/// Characters in which both begin alike.
std::size_t SharedFront(const std::string& left, const std::string& right)
{
    const std::size_t shorter = std::min(left.size(), right.size());
    const auto end = left.begin() + static_cast<std::ptrdiff_t>(shorter);
    return static_cast<std::size_t>(std::mismatch(left.begin(), end, right.begin()).first
                                    - left.begin());
}

/// Exactly one of the first spectra of that name has the m/z and charge of record.
bool FitsOne(const MgfIndex& index, const PeptideIdentification& record, const std::string& name)
{
    constexpr std::size_t kMostBearers = 100; // one name may be every spectrum's
    const auto mz = PrecursorMzOf(record);
    const std::vector<std::size_t> bearers = index.BearersOf(name, kMostBearers);
    const auto fits = [&](std::size_t bearer) {
        const MgfIndex::Record& spectrum = index.Records()[bearer];
        return spectrum.precursorMz && IsSameMz(*mz - *spectrum.precursorMz, *spectrum.precursorMz)
               && (spectrum.charge == 0 || spectrum.charge == record.nCharge);
    };
    return mz && bearers.size() < kMostBearers
           && std::count_if(bearers.begin(), bearers.end(), fits) == 1;
}

JoinedFile::Ambiguous AmbiguousOf(const MgfIndex& index, const std::string& name)
{
    JoinedFile::Ambiguous example;
    example.name = name;
    if (const auto hit = index.Find(name)) {
        example.spectra = hit->bearers;
    }
    for (const std::size_t bearer : index.BearersOf(name, kMostNames)) {
        example.lines.push_back(index.Records()[bearer].line);
    }
    return example;
}

/// Room for another example of that name.
template <typename Example>
bool IsWanted(const std::vector<Example>& examples, const std::string& name)
{
    return examples.size() < kMostExamples
           && std::none_of(examples.begin(), examples.end(),
                           [&name](const Example& example) { return example.name == name; });
}

double ShareOf(std::uint64_t met, std::uint64_t read)
{
    return read == 0 ? 1.0 : static_cast<double>(met) / static_cast<double>(read);
}

/// " (lines 1, 12 and others)" of the spectra that share a name.
std::string LinesText(const JoinedFile::Ambiguous& example)
{
    if (example.lines.empty()) {
        return {};
    }
    return fmt::format(" (lines {}{})", fmt::join(example.lines, ", "),
                       example.spectra > example.lines.size() ? " and others" : "");
}

bool WarnBelow(const std::string& place, std::uint64_t met, std::uint64_t read, double minMatch)
{
    if (ShareOf(met, read) >= minMatch) {
        return false;
    }
    spdlog::warn("{}: {} of {} records met their spectrum, {:.1f} %; expected at least {} "
                 "(--min-match)",
                 place, met, read, 100 * ShareOf(met, read), minMatch);
    return true;
}

} // namespace

// ---- Precursors ---------------------------------------------------------------

const char* KeyOf(Deviation deviation)
{
    return kTexts[static_cast<std::size_t>(deviation)].key;
}

const char* TextOf(Deviation deviation)
{
    return kTexts[static_cast<std::size_t>(deviation)].text;
}

Deviation DeviationOf(double recordMz, double spectrumMz, std::uint64_t charge)
{
    const double difference = recordMz - spectrumMz;
    const double ppm = std::fabs(difference) / spectrumMz * kMillion;
    for (std::size_t i = 0; i < std::size(kPpmWidths); ++i) {
        if (ppm <= kPpmWidths[i]) {
            return static_cast<Deviation>(i);
        }
    }
    if (IsIsotopic(difference, spectrumMz, charge)) {
        return Deviation::Isotopic;
    }
    const double distance = std::fabs(difference);
    return distance <= 0.5   ? Deviation::WithinHalfTh
           : distance <= 3.0 ? Deviation::WithinThreeTh
                             : Deviation::Beyond;
}

std::optional<double> PrecursorMzOf(const PeptideIdentification& record)
{
    if (IsMz(record.dValue1)) {
        return record.dValue1;
    }
    const auto charge = static_cast<double>(record.nCharge);
    const double mz = (record.dObsMH + (charge - 1.0) * OpenMS::Constants::PROTON_MASS_U) / charge;
    return IsMz(record.dObsMH) && IsMz(mz) ? std::optional(mz) : std::nullopt;
}

// ---- Names that are near ------------------------------------------------------

std::vector<std::string> NamesNear(const SpectraFile& file, const std::string& wanted)
{
    constexpr std::size_t kLongest = 200; // bounds the work for hostile texts
    constexpr std::size_t kBeside = 10;
    const auto scan = ScanOf(wanted);
    std::vector<std::string> titles;
    std::vector<std::string> beside;
    if (file.format == Vorlan::DatasetType::Dta) {
        const std::vector<std::string>& names = file.dta.names; // in order
        const auto place = std::lower_bound(names.begin(), names.end(), wanted);
        beside.assign(place - std::min<std::ptrdiff_t>(place - names.begin(), kBeside),
                      place + std::min<std::ptrdiff_t>(names.end() - place, kBeside));
    } else {
        titles = scan ? file.index.TitlesWithNumber(*scan, kMostNames) : titles;
        beside = file.index.Around(wanted, kBeside);
    }
    std::stable_sort(beside.begin(), beside.end(),
                     [&wanted](const std::string& left, const std::string& right) {
                         return SharedFront(left, wanted) > SharedFront(right, wanted);
                     });
    std::vector<std::string> all = titles;
    all.insert(all.end(), beside.begin(), beside.end());
    all.erase(std::remove_if(all.begin(), all.end(),
                             [](const std::string& name) { return name.size() > kLongest; }),
              all.end());
    std::vector<std::string> ranked =
        wanted.size() <= kLongest ? SimilarNames(wanted, all) : std::vector<std::string>();
    ranked.insert(ranked.end(), all.begin(), all.end());
    std::vector<std::string> nearest;
    for (std::string& name : ranked) {
        const bool isNew = std::find(nearest.begin(), nearest.end(), name) == nearest.end();
        if (isNew && nearest.size() < kMostNames) {
            nearest.push_back(std::move(name));
        }
    }
    return nearest;
}

// ---- One file of spectra ------------------------------------------------------

std::uint64_t JoinedFile::Met() const
{
    return std::accumulate(met.begin(), met.end(), std::uint64_t{0});
}

std::uint64_t JoinedFile::WithDeviation() const
{
    return Met() - deviations[static_cast<std::size_t>(Deviation::NotKnown)];
}

bool JoinedFile::IsSuspicious() const
{
    return deviations[static_cast<std::size_t>(Deviation::Beyond)] * 100 > WithDeviation();
}

std::optional<double> JoinedFile::MedianPpm() const
{
    if (ppm.empty()) {
        return std::nullopt;
    }
    std::vector<double> sorted = ppm;
    const auto middle = sorted.begin() + static_cast<std::ptrdiff_t>((sorted.size() - 1) / 2);
    std::nth_element(sorted.begin(), middle, sorted.end());
    return *middle;
}

// ---- All ----------------------------------------------------------------------

JoinAudit::JoinAudit(const std::vector<SpectraFile>& files)
{
    for (const SpectraFile& file : files) {
        files_.emplace_back();
        files_.back().file = file.dataset;
        files_.back().ambiguousNames = file.index.AmbiguousNames();
    }
}

void JoinAudit::Take(const SpectraFile& file, std::size_t place,
                     const PeptideIdentification& record, const std::optional<SpectrumName>& name)
{
    JoinedFile& joined = files_.at(place);
    ++joined.read;
    if (!name) {
        ++joined.unknown;
        if (IsWanted(joined.unknownExamples, record.strSpectrumName)) {
            joined.unknownExamples.push_back(
                {record.strSpectrumName, NamesNear(file, record.strSpectrumName)});
        }
        return;
    }
    if (name->isAmbiguous) {
        ++joined.ambiguous;
        joined.ambiguousThatFitOne += FitsOne(file.index, record, name->name) ? 1 : 0;
        if (IsWanted(joined.ambiguousExamples, name->name)) {
            joined.ambiguousExamples.push_back(AmbiguousOf(file.index, name->name));
        }
        return;
    }
    ++joined.met.at(static_cast<std::size_t>(name->kind));
    const auto recordMz = PrecursorMzOf(record);
    const auto spectrumMz = PrecursorMzOf(file, name->name);
    const bool isKnown = recordMz && spectrumMz && IsMz(*spectrumMz);
    const Deviation deviation =
        isKnown ? DeviationOf(*recordMz, *spectrumMz, record.nCharge) : Deviation::NotKnown;
    ++joined.deviations.at(static_cast<std::size_t>(deviation));
    if (deviation <= Deviation::Within100Ppm) {
        joined.ppm.push_back((*recordMz - *spectrumMz) / *spectrumMz * kMillion);
    }
}

void JoinAudit::TakeWithoutFile(const PeptideIdentification& record)
{
    ++withoutFile_[record.strDatasetName];
}

std::uint64_t JoinAudit::Read() const
{
    std::uint64_t read = 0;
    for (const auto& [name, records] : withoutFile_) {
        read += records;
    }
    for (const JoinedFile& file : files_) {
        read += file.read;
    }
    return read;
}

std::uint64_t JoinAudit::Met() const
{
    return std::accumulate(
        files_.begin(), files_.end(), std::uint64_t{0},
        [](std::uint64_t met, const JoinedFile& file) { return met + file.Met(); });
}

bool JoinAudit::Warn(const std::optional<double>& minMatch) const
{
    bool isEnough = true;
    for (const JoinedFile& file : files_) {
        const std::string name = OneLine(file.file);
        if (file.ambiguous > 0) {
            const JoinedFile::Ambiguous& first = file.ambiguousExamples.front();
            spdlog::warn("{}: {} records were not joined, since several spectra of the file have "
                         "that name; the first one is \"{}\"{}",
                         name, file.ambiguous, OneLine(first.name), LinesText(first));
        }
        if (file.IsSuspicious()) {
            spdlog::warn(
                "{}: names met, but the spectra may be others: of {} records {} have an m/z that "
                "lies more than 3 Th from their spectrum's",
                name, file.WithDeviation(),
                file.deviations[static_cast<std::size_t>(Deviation::Beyond)]);
        }
        isEnough = !(minMatch && WarnBelow(name, file.Met(), file.read, *minMatch)) && isEnough;
    }
    isEnough = !(minMatch && WarnBelow("all files", Met(), Read(), *minMatch)) && isEnough;
    return isEnough;
}

} // namespace pelgrin
