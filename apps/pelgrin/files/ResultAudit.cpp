#include "files/ResultAudit.h"

#include <string_view>

#include <fmt/format.h>

#include "files/FileLines.h"
#include "files/MaxQuantAudit.h"
#include "files/MsgfAudit.h"
#include "files/PFindAudit.h"
#include "files/PepXmlAudit.h"
#include "files/ResultColumns.h"
#include "files/SequestAudit.h"
#include "files/TableAudit.h"
#include "files/TableRows.h"
#include "files/XmlTags.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

struct UnreadTexts {
    const char* key;
    const char* text;
    bool isLoss;
    bool isHeld;
};

constexpr UnreadTexts kTexts[kUnread] = {
    {"behind_empty_line", "rows behind an empty line of the table", true, true},
    {"behind_long_line", "rows behind a line of more than 81919 characters", true, true},
    {"short_row", "rows with too few cells", true, true},
    {"row_without_protein", "rows without a protein", true, true},
    {"row_not_named", "rows of msms.txt that no peptide names", true, true},
    {"row_missing", "rows that a peptide names and msms.txt does not have", true, false},
    {"other_layout", "sections of another layout", true, true},
    {"further_run", "hits of a second or later run", true, true},
    {"stray_hit", "hits outside of a query", true, true},
    {"lower_rank", "rows of a rank above 1", true, true},
    {"further_hit", "hits behind the first one of a query", true, true},
    {"further_protein", "proteins behind the first one of a hit", true, false},
    {"blank_row", "empty rows", false, false},
    {"without_candidate", "spectra without a candidate", false, true},
    {"query_without_hit", "queries without a hit", false, false},
};

const UnreadTexts& TextsOf(Unread reason)
{
    return kTexts[static_cast<std::size_t>(reason)];
}

ResultAudit AuditNative(const std::string& path, const OnRecord& onRecord)
{
    // A file without rows is no reason to pass over what is not the header of a table.
    TableRows(path).Highest(NeededColumns(FileKind::NativeTable));
    const TableAudit table = AuditTable(path, onRecord);
    ResultAudit audit;
    audit.records = table.rows;
    audit.longLine = table.longLine;
    audit.cutsRow = table.cutsRow;
    audit.unread[static_cast<std::size_t>(Unread::BehindEmptyLine)] = {table.rowsBehindEmptyLine,
                                                                       table.emptyLine};
    audit.unread[static_cast<std::size_t>(Unread::BehindLongLine)] = {table.rowsBehindLongLine,
                                                                      table.longLine};
    return audit;
}

} // namespace

const char* KeyOf(Unread reason)
{
    return TextsOf(reason).key;
}

const char* TextOf(Unread reason)
{
    return TextsOf(reason).text;
}

bool IsLoss(Unread reason)
{
    return TextsOf(reason).isLoss;
}

bool IsHeld(Unread reason)
{
    return TextsOf(reason).isHeld;
}

void ResultAudit::Add(Unread reason, std::uint64_t line)
{
    Count& count = unread[static_cast<std::size_t>(reason)];
    if (++count.units == 1) {
        count.firstLine = line;
    }
}

void ResultAudit::AddRecord(const RecordPlace& place, const OnRecord& onRecord)
{
    ++records;
    if (onRecord) {
        onRecord(place);
    }
}

std::uint64_t HeldIn(PepIdentType::EPepIdentType format, const std::string& path)
{
    std::uint64_t held = 0;
    if (format == PepIdentType::MsFraggerPepXml || format == PepIdentType::CometPepXml) {
        XmlTags tags(path);
        while (tags.Next()) {
            held += tags.Name() == "search_hit" ? 1 : 0;
        }
        return held;
    }
    // Quotes and one carriage return at the end make no row of Proteome Discoverer.
    const bool isQuoted = format == PepIdentType::SequestTxt;
    FileLines lines(path, isQuoted ? FileLines::Mode::Binary : FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        if (format == PepIdentType::Pfind28Txt) {
            held += line.begin.rfind("[Spectrum", 0) == 0 ? 1 : 0;
        } else if (line.number > 1) {
            std::string_view text = line.begin;
            if (isQuoted && !text.empty() && text.back() == '\r') {
                text.remove_suffix(1);
            }
            held += text.find_first_not_of(isQuoted ? "\"" : "") != std::string_view::npos ? 1 : 0;
        }
    }
    return held;
}

ResultAudit AuditResult(PepIdentType::EPepIdentType format, const ResultFiles& files,
                        const OnRecord& onRecord)
{
    switch (format) {
    case PepIdentType::MsFraggerPepXml:
    case PepIdentType::CometPepXml: return AuditPepXml(files.path, onRecord);
    case PepIdentType::MsgfTsv: return AuditMsgf(files.path, onRecord);
    case PepIdentType::MaxQuant: return AuditMaxQuant(files, onRecord);
    case PepIdentType::Pfind3Spectra: return AuditPFind3(files.path, onRecord);
    case PepIdentType::Pfind28Txt: return AuditPFind28(files.path, onRecord);
    case PepIdentType::SequestTxt: return AuditSequest(files.path, onRecord);
    default: return AuditNative(files.path, onRecord);
    }
}

const std::string& FileOf(const ResultFiles& files, Unread reason)
{
    return reason == Unread::RowMissing ? files.second : files.path;
}

std::string PlaceOfRecord(PepIdentType::EPepIdentType format, const ResultFiles& files,
                          std::uint64_t record)
{
    std::uint64_t seen = 0;
    std::uint64_t place = 0;
    AuditResult(format, files, [&](const RecordPlace& found) {
        place = seen == record ? found.line : place;
        ++seen;
    });
    return place == 0 ? files.path : fmt::format("{}:{}", files.path, place);
}

} // namespace pelgrin
