// The host's own look at a result file, before the library reads it.
//
// A reader passes over what gives no record without a word, and some end the
// process for a file that is not as they want it. This look finds both before:
// it counts the records that the reader will give and everything else in the
// file under a reason, and it throws Failure, with file and line, where the
// process would end.
#ifndef PELGRIN_RESULTAUDIT_H
#define PELGRIN_RESULTAUDIT_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

#include "DataStructures.h"

namespace pelgrin {

/// Why a unit of a result file gives no record, or a part of one is not read.
enum class Unread : std::size_t {
    // Lost: matches may be missing.
    BehindEmptyLine,
    BehindLongLine,
    ShortRow,
    RowWithoutProtein,
    RowNotNamed,
    RowMissing,
    OtherLayout,
    FurtherRun,
    StrayHit,
    LowerRank,
    FurtherHit,
    FurtherProtein,
    // Passed over: no match was there.
    BlankRow,
    WithoutCandidate,
    QueryWithoutHit,
};
constexpr std::size_t kUnread = 15;

/// The key in summary.json, such as "short_row".
const char* KeyOf(Unread reason);
/// The words of the report, such as "rows with too few cells".
const char* TextOf(Unread reason);
/// Something is missing, else all is as it should be.
bool IsLoss(Unread reason);
/// What is counted is one of the units that HeldIn counts.
bool IsHeld(Unread reason);

/// Where a record stands: the row, query or section that gives it.
struct RecordPlace {
    std::uint64_t line = 0; ///< at which it begins, from 1
    // Offsets in bytes, from 0; end is that of the first byte behind it.
    std::uint64_t begin = 0;
    std::uint64_t end = 0;
    // Of MaxQuant only: the row of peptides.txt that names the record.
    std::uint64_t secondBegin = 0;
    std::uint64_t secondEnd = 0;
};

/// Told for every record, in order.
using OnRecord = std::function<void(const RecordPlace&)>;

struct ResultAudit {
    struct Count {
        std::uint64_t units = 0;
        std::uint64_t firstLine = 0; ///< where the first one is, or what ends the reading
    };

    std::uint64_t records = 0; ///< that the reader gives
    std::array<Count, kUnread> unread;
    std::uint64_t longLine = 0; ///< number of the line that ends the reading; 0 none
    bool cutsRow = false;       ///< that line gives a record, of its beginning

    void Add(Unread reason, std::uint64_t line);
    void AddRecord(const RecordPlace& place, const OnRecord& onRecord);
    const Count& Of(Unread reason) const { return unread[static_cast<std::size_t>(reason)]; }
};

/// A result file, and the second file that some formats need.
struct ResultFiles {
    std::string path;
    std::string second; ///< peptides.txt of MaxQuant, list of modifications of MS-GF+; or empty
};

/// What the file holds, counted without a look at what a reader takes: rows below
/// the header that are not empty, elements search_hit of pepXML, sections of pFind
/// 2.8. It is the sum of the records and of all reasons that are IsHeld. Throws
/// Failure when the file cannot be read.
std::uint64_t HeldIn(Vorlan::PepIdentType::EPepIdentType format, const std::string& path);

/// Throws Failure when a file cannot be read, or a table lacks a column.
ResultAudit AuditResult(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
                        const OnRecord& onRecord = {});

/// The file that the lines of a reason are those of.
const std::string& FileOf(const ResultFiles& files, Unread reason);

/// "psms.txt:12" of a record, counted from 0; the path alone when the file has
/// no such record.
std::string PlaceOfRecord(Vorlan::PepIdentType::EPepIdentType format, const ResultFiles& files,
                          std::uint64_t record);

} // namespace pelgrin

#endif // PELGRIN_RESULTAUDIT_H
