#include "inspect/Reading.h"

#include <algorithm>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/DtaAudit.h"
#include "files/EngineFileAudit.h"
#include "files/FastaAudit.h"
#include "files/MaxQuantAudit.h"
#include "files/MgfAudit.h"
#include "files/Packed.h"
#include "files/ResultAudit.h"
#include "files/ScratchFolder.h"
#include "files/SpectraSource.h"
#include "files/TableRows.h"
#include "files/UnimodFile.h"

namespace pelgrin {

namespace {

void Lose(Reading& reading, const char* key, const char* text, std::uint64_t count,
          std::uint64_t line)
{
    if (count > 0) {
        reading.lost.push_back({key, text, count, line});
    }
}

Reading ReadingOfMgf(const std::string& path)
{
    const MgfAudit audit = AuditMgf(path);
    Reading reading;
    reading.unit = "spectra";
    // a foreign title stands for the spectrum in front of its own: one of two is lost
    const std::uint64_t lost =
        audit.spectraBehindLongLine + audit.titlesWithoutPeaks.size() + audit.foreignTitles.size();
    reading.units = audit.spectra - std::min(audit.spectra, lost);
    Lose(reading, "without_peaks", "spectra without peaks", audit.titlesWithoutPeaks.size(),
         audit.firstWithoutPeaks);
    Lose(reading, "with_foreign_title", "spectra under the title of the next one",
         audit.foreignTitles.size(), audit.firstWithoutTitle);
    Lose(reading, "behind_long_line", "spectra behind a line of more than 81919 characters",
         audit.spectraBehindLongLine, audit.longLine);
    FileLines lines(path, FileLines::Mode::Binary);
    FileLines::Line line;
    if (lines.Next(line)
        && BeginsWith(line.begin, "\xEF\xBB\xBF"
                                  "BEGIN IONS")) {
        Lose(reading, "behind_byte_order_mark", "spectra hidden by the byte order mark", 1, 1);
    }
    return reading;
}

Reading ReadingOfDta(const std::string& folder)
{
    const DtaAudit audit = AuditDta(folder);
    Reading reading;
    reading.unit = "spectra";
    const auto lose = [&](const char* key, const char* text, std::uint64_t count) {
        if (count > 0) {
            reading.lost.push_back({key, text, count, std::nullopt});
        }
    };
    lose("not_readable", "files that cannot be opened", audit.notReadable.size());
    lose("without_precursor", "files without mass and charge", audit.withoutPrecursor.size());
    lose("without_peaks", "files without peaks", audit.withoutPeaks.size());
    reading.units = audit.names.size() - audit.notReadable.size() - audit.withoutPrecursor.size()
                    - audit.withoutPeaks.size();
    lose("with_lines_behind_empty_line", "files with lines behind an empty one",
         audit.behindEmptyLine.count);
    lose("cut_at_long_line", "files that end at a line too long", audit.longLine.count);
    lose("lines_without_numbers", "lines that are no m/z and intensity",
         audit.unreadableNumbers.count);
    return reading;
}

Reading ReadingOfFasta(const std::string& path)
{
    const FastaAudit audit = AuditFasta(path);
    Reading reading;
    reading.unit = "proteins";
    reading.units = audit.headers;
    reading.residues = audit.residues;
    Lose(reading, "lower_case_letters", "lower-case letters of sequences", audit.lowerCase,
         audit.firstLowerCase);
    if (audit.others > 0) {
        reading.lost.push_back(
            {"other_characters", "other characters of sequences", audit.others, std::nullopt});
    }
    return reading;
}

/// Messages name the second file as it was found, packed or not.
ResultAudit AuditOf(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
                    const std::string& second)
{
    try {
        return AuditResult(format, files);
    } catch (const Failure& failure) {
        throw Failure(second.empty() ? failure.what()
                                     : WithGivenPath(failure.what(), files.second, second));
    }
}

/// What the reader of a result says, by the host's own look at it.
Reading ReadingOfResult(FileKind kind, const std::string& path, const std::string& given)
{
    const auto format = FormatOf(kind, path);
    if (!format) {
        throw Failure(
            fmt::format("{}: there is a reader for pepXML of MSFragger and Comet only", path));
    }
    Reading reading;
    reading.unit = "records";
    ResultFiles files{path, ""};
    ScratchFolder scratch;
    if (kind == FileKind::MaxQuantMatches) {
        reading.second = PeptidesBeside(given, given != path);
        if (reading.second.empty()) {
            throw Failure(
                fmt::format("{}: expected peptides.txt of the same search beside it", path));
        }
        files.second = Unpacked(reading.second, scratch);
    } else if (kind == FileKind::NativeTable) {
        TableRows(path).Highest(NeededColumns(kind));
    }
    const ResultAudit audit = AuditOf(*format, files, reading.second);
    reading.units = audit.records;
    for (std::size_t i = 0; i < kUnread; ++i) {
        const auto reason = static_cast<Unread>(i);
        const ResultAudit::Count& count = audit.Of(reason);
        if (count.units > 0) {
            const bool isSecond = FileOf(files, reason) != path;
            (IsLoss(reason) ? reading.lost : reading.passedOver)
                .push_back({KeyOf(reason),
                            std::string(TextOf(reason)) + (isSecond ? "; see peptides.txt" : ""),
                            count.units, count.firstLine});
        }
    }
    Lose(reading, "row_cut", "row that is read, but cut: its line is too long",
         audit.cutsRow ? 1 : 0, audit.longLine);
    return reading;
}

Reading ReadingOfTable(const std::string& path)
{
    Reading reading;
    reading.unit = "modifications";
    reading.units = CheckModificationTable(path);
    CheckTermSpecificities(path);
    return reading;
}

/// "1 spectrum", "2 spectra".
std::string UnitsText(const Reading& reading)
{
    std::string unit = reading.unit;
    if (reading.units == 1) {
        unit = unit == "spectra" ? "spectrum" : unit.substr(0, unit.size() - 1);
    }
    return fmt::format("{} {}", reading.units, unit);
}

/// Throws Failure for what is not read, with the reason.
Reading Read(FileKind kind, const std::string& path, const std::string& given)
{
    switch (kind) {
    case FileKind::Mgf: return ReadingOfMgf(path);
    case FileKind::DtaFolder: return ReadingOfDta(path);
    case FileKind::Fasta: return ReadingOfFasta(path);
    case FileKind::ModificationTable: return ReadingOfTable(path);
    case FileKind::Dta:
        throw Failure(fmt::format("{}: is one DTA file; expected the folder that holds it", path));
    case FileKind::MzMl:
        throw Failure(fmt::format("convert it to MGF: {}", ConversionOf(given, "mzML")));
    case FileKind::MzXml:
        throw Failure(fmt::format("convert it to MGF: {}", ConversionOf(given, "mzXML")));
    case FileKind::PFind3Modifications: CheckPFind3File(path); return {};
    case FileKind::MaxQuantPeptides: TableRows(path).Highest(NeededColumns(kind)); return {};
    case FileKind::PepXml:
    case FileKind::NativeTable:
    case FileKind::Msgf:
    case FileKind::MaxQuantMatches:
    case FileKind::PFind3:
    case FileKind::PFind28:
    case FileKind::Sequest: return ReadingOfResult(kind, path, given);
    default: return {};
    }
}

} // namespace

Reading ReadingOf(FileKind kind, const std::string& path, const std::string& given)
{
    try {
        return Read(kind, path, given);
    } catch (const Failure& failure) {
        Reading reading;
        reading.refusal = failure.what();
        return reading;
    }
}

void Tell(const Reading& reading, Facts& facts)
{
    if (!reading.second.empty()) {
        facts.push_back({"second_file", "Read with", reading.second});
    }
    if (!reading.refusal.empty()) {
        facts.push_back({"refusal", "Not read", reading.refusal});
        return;
    }
    if (reading.unit.empty()) {
        return;
    }
    facts.push_back({reading.unit + "_read", "", reading.units});
    facts.push_back({"", "Is read", UnitsText(reading)});
    if (reading.residues) {
        facts.push_back({"residues", "Residues", *reading.residues});
    }
    facts.push_back({"lost", "Lost", reading.lost});
    facts.push_back({"passed_over", "Passed over", reading.passedOver});
}

} // namespace pelgrin
