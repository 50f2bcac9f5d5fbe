#include "files/ResultAudit.h"

#include <fmt/format.h>

#include "files/MaxQuantAudit.h"
#include "files/MsgfAudit.h"
#include "files/PFindAudit.h"
#include "files/PepXmlAudit.h"
#include "files/SequestAudit.h"
#include "files/TableAudit.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

struct UnreadTexts {
    const char* key;
    const char* text;
    bool isLoss;
};

constexpr UnreadTexts kTexts[kUnread] = {
    {"behind_empty_line", "rows behind an empty line of the table", true},
    {"behind_long_line", "rows behind a line of more than 81919 characters", true},
    {"short_row", "rows with too few cells", true},
    {"row_without_protein", "rows without a protein", true},
    {"row_not_named", "rows of msms.txt that no peptide names", true},
    {"row_missing", "rows that a peptide names and msms.txt does not have", true},
    {"other_layout", "sections of another layout", true},
    {"further_run", "queries of a second or later run", true},
    {"blank_row", "empty rows", false},
    {"lower_rank", "rows of a rank above 1", false},
    {"without_candidate", "spectra without a candidate", false},
    {"query_without_hit", "queries without a hit", false},
    {"further_hit", "hits behind the first one of a query", false},
    {"further_protein", "proteins behind the first one of a hit", false},
};

const UnreadTexts& TextsOf(Unread reason)
{
    return kTexts[static_cast<std::size_t>(reason)];
}

ResultAudit AuditNative(const std::string& path, const OnRecord& onRecord)
{
    const TableAudit table = AuditTable(path);
    ResultAudit audit;
    audit.records = table.rows;
    audit.longLine = table.longLine;
    audit.cutsRow = table.cutsRow;
    audit.unread[static_cast<std::size_t>(Unread::BehindEmptyLine)] = {table.rowsBehindEmptyLine,
                                                                       table.emptyLine};
    audit.unread[static_cast<std::size_t>(Unread::BehindLongLine)] = {table.rowsBehindLongLine,
                                                                      table.longLine};
    for (std::uint64_t row = 0; onRecord && row < table.rows; ++row) {
        onRecord(row + 2); // below the header
    }
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

void ResultAudit::Add(Unread reason, std::uint64_t line)
{
    Count& count = unread[static_cast<std::size_t>(reason)];
    if (++count.units == 1) {
        count.firstLine = line;
    }
}

void ResultAudit::AddRecord(std::uint64_t line, const OnRecord& onRecord)
{
    ++records;
    if (onRecord) {
        onRecord(line);
    }
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

std::string PlaceOfRecord(PepIdentType::EPepIdentType format, const ResultFiles& files,
                          std::uint64_t record)
{
    std::uint64_t seen = 0;
    std::uint64_t place = 0;
    AuditResult(format, files, [&](std::uint64_t line) {
        place = seen == record ? line : place;
        ++seen;
    });
    return place == 0 ? files.path : fmt::format("{}:{}", files.path, place);
}

} // namespace pelgrin
