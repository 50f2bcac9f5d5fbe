#include "run/Identifications.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <utility>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/EngineFileAudit.h"
#include "files/FileLines.h"
#include "files/ScratchFolder.h"
#include "files/UnimodFile.h"
#include "isolation/ResultReader.h"
#include "run/Modifications.h"
#include "run/WholeRecords.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

using Records = std::vector<Vorlan::PeptideIdentification>;
using Format = PepIdentType::EPepIdentType;

void Warn(const ResultFiles& files, const ResultAudit& audit)
{
    const std::string path = OneLine(files.path);
    for (std::size_t i = 0; i < kUnread; ++i) {
        const auto reason = static_cast<Unread>(i);
        const ResultAudit::Count& count = audit.unread[i];
        if (!IsLoss(reason) || count.units == 0 || reason == Unread::BehindLongLine) {
            continue;
        }
        if (reason == Unread::BehindEmptyLine) {
            spdlog::warn("{}:{}: an empty line ends the table; {} rows behind it are not read",
                         path, count.firstLine, count.units);
        } else {
            spdlog::warn("{}:{}: the first of {} {}; they are not read",
                         OneLine(FileOf(files, reason)), count.firstLine, count.units,
                         TextOf(reason));
        }
    }
    if (audit.longLine != 0) {
        spdlog::warn(
            "{}:{}: a line of more than {} characters ends the table; it is cut, and {} rows "
            "behind it are not read",
            path, audit.longLine, kLongestLine, audit.Of(Unread::BehindLongLine).units);
    }
}

/// pFind's readers look masses up in the default table, when it is there. The
/// library ends the process for one that is malformed. Of the files that are told
/// already no warning comes again.
void CheckDefaultTable(Format format, const std::vector<std::string>& told)
{
    constexpr const char kTable[] = "unimod.txt";
    std::error_code ignored;
    const bool isPFind =
        format == PepIdentType::Pfind3Spectra || format == PepIdentType::Pfind28Txt;
    if (isPFind && std::filesystem::is_regular_file(kTable, ignored)) {
        CheckModificationTable(kTable);
        CheckTermSpecificities(kTable);
        if (std::none_of(told.begin(), told.end(), [&](const std::string& path) {
                return std::filesystem::equivalent(path, kTable, ignored);
            })) {
            WarnOfMasses(kTable, Vorlan::SearchEngineType::CalvexTxt);
        }
    }
}

/// Reads one file after the other.
class OneByOne {
public:
    OneByOne(const Parameters& parameters, Counts& counts, const TakeRecords& take)
        : parameters_(parameters), counts_(counts), take_(take), fixed_(FixedModifications()),
          reader_(scratch_)
    {
        all_.format = parameters.format;
    }

    void Read(const std::string& path)
    {
        ResultFile file;
        file.files = FilesOf(parameters_.format, path, parameters_.second);
        file.begin = file.end = counts_.read;
        try {
            file.audit = AuditResult(parameters_.format, file.files);
        } catch (const Failure& refusal) {
            Refuse(std::move(file), refusal.what());
            return;
        }
        file.held = HeldIn(parameters_.format, path);
        Warn(file.files, file.audit);
        const ResultReading reading =
            reader_.Read(parameters_.format, file.files, [this](Records&& some) { Take(some); });
        Note(path, reading, file);
        file.end = counts_.read;
        Check(file);
        all_.files.push_back(std::move(file));
    }

    ResultsRead Finish()
    {
        if (counts_.read == 0 && !all_.rejects.parts.empty()) {
            const std::size_t more = all_.rejects.parts.size() - 1;
            throw Failure(fmt::format(
                "{}{}", all_.rejects.parts.front().Text(),
                more == 0 ? "" : fmt::format(" (and {} more: nothing could be read)", more)));
        }
        return std::move(all_);
    }

private:
    void Take(Records& records)
    {
        for (Vorlan::PeptideIdentification& record : records) {
            MakeWhole(parameters_.format, fixed_, record);
        }
        counts_.read += records.size();
        take_(std::move(records));
    }

    /// A file that its reader would not read, or end the process for.
    void Refuse(ResultFile file, const std::string& reason)
    {
        try {
            file.held = HeldIn(parameters_.format, file.files.path);
        } catch (const Failure&) {
            file.held = 0;
        }
        // Messages of a file begin with its path and, where known, the line.
        RejectedPart part{file.files.path, 0, "", reason, true, file.held};
        if (reason.rfind(file.files.path + ":", 0) == 0) {
            char* end = nullptr;
            const char* const begin = reason.c_str() + file.files.path.size() + 1;
            part.line = std::strtoull(begin, &end, 10);
            const std::string rest = part.line > 0 && *end == ':' ? end + 1 : begin;
            part.reason = rest.substr(std::min(rest.find_first_not_of(' '), rest.size()));
        }
        all_.rejects.parts.push_back(std::move(part));
        counts_.held += file.held;
        counts_.refused += file.held;
        ++counts_.filesRefused;
        all_.files.push_back(std::move(file));
    }

    void Note(const std::string& path, const ResultReading& reading, ResultFile& file)
    {
        for (const Reject& reject : reading.rejects) {
            all_.rejects.parts.push_back(
                {path, reject.line, reject.spectrum, reject.reason, false, 1});
            file.rejected.push_back(reject.record);
        }
        for (const std::string& end : reading.restarts) {
            all_.rejects.restarts.push_back(path + ": " + end);
        }
        if (!reading.inPieces.empty()) {
            all_.rejects.inPieces.push_back(path + ": " + reading.inPieces);
        }
        counts_.Add(file.audit);
        counts_.held += file.held;
        counts_.rejected += reading.rejects.size();
    }

    /// What the file holds is what was read and what is named.
    static void Check(const ResultFile& file)
    {
        std::uint64_t told = file.end - file.begin + file.rejected.size();
        for (std::size_t i = 0; i < kUnread; ++i) {
            told += IsHeld(static_cast<Unread>(i)) ? file.audit.unread[i].units : 0;
        }
        if (told != file.held) {
            throw std::logic_error(
                fmt::format("{}: the file holds {} matches, but {} were read or counted under a "
                            "reason",
                            file.files.path, file.held, told));
        }
    }

    const Parameters& parameters_;
    Counts& counts_;
    const TakeRecords& take_;
    const std::vector<Vorlan::IdentModification> fixed_;
    ScratchFolder scratch_;
    ResultReader reader_;
    ResultsRead all_;
};

} // namespace

ResultFiles FilesOf(Format format, const std::string& path, const std::string& second)
{
    if (format == PepIdentType::MaxQuant && second.empty()) {
        return {path, (std::filesystem::path(path).parent_path() / "peptides.txt").string()};
    }
    return {path, second};
}

std::string ResultFile::PlaceOf(Format format, std::size_t record) const
{
    std::uint64_t inFile = record - begin;
    for (const std::uint64_t reject : rejected) {
        inFile += reject <= inFile ? 1 : 0;
    }
    return PlaceOfRecord(format, files, inFile);
}

ResultsRead ReadResults(const Parameters& parameters, Counts& counts, const TakeRecords& take)
{
    CheckDefaultTable(parameters.format, parameters.fileInputs);
    OneByOne reading(parameters, counts, take);
    for (const std::string& path : parameters.psms) {
        reading.Read(path);
    }
    return reading.Finish();
}

Identifications ReadIdentifications(const Parameters& parameters, Counts& counts)
{
    Identifications all;
    const TakeRecords take = [&all](Records&& some) {
        std::move(some.begin(), some.end(), std::back_inserter(all.records));
    };
    static_cast<ResultsRead&>(all) = ReadResults(parameters, counts, take);
    return all;
}

} // namespace pelgrin
