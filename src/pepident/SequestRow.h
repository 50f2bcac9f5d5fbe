// One row of a table of Sequest.
#ifndef VORLAN_PEPIDENT_SEQUESTROW_H
#define VORLAN_PEPIDENT_SEQUESTROW_H

#include <array>
#include <cstddef>
#include <string>
#include <string_view>

#include "DataStructures.h"
#include "util/TabTable.h"

namespace Vorlan::sequest {

/// Reads the rows of one table. Double quotes are dropped everywhere.
class RowReader {
public:
    /// Throws MissingColumn for the first column that is missing.
    explicit RowReader(std::string_view headerLine);

    /// False for an empty row and for one with a rank above 1. Throws OpenMS'
    /// ConversionError for a cell that is not a number.
    bool Read(std::string_view row, PeptideIdentification& match);

private:
    enum Column : std::size_t {
        Rank,
        SpectrumFile,
        FirstScan,
        Sequence,
        XCorr,
        DeltaMz,
        Mh,
        TheoMh,
        Charge,
        Accessions,
        Modifications,
        DeltaCn,
        NumberOfColumns
    };
    static const char* const kColumnNames[NumberOfColumns];

    std::string_view Cell(Column column) const { return cells_.Cell(places_[column]); }

    std::array<int, NumberOfColumns> places_{};
    std::string text_; ///< the row without quotes
    TabRow cells_;
    TabRow list_;
};

/// "M5(Oxidation)" or "N-Term(Acetyl)", blanks around it allowed. Throws
/// ConversionError.
IdentModification ParseModification(std::string_view entry);

} // namespace Vorlan::sequest

#endif // VORLAN_PEPIDENT_SEQUESTROW_H
