// One row of the native result table, read and written.
#ifndef VORLAN_PEPIDENT_NATIVETABLEROW_H
#define VORLAN_PEPIDENT_NATIVETABLEROW_H

#include <string>
#include <string_view>

#include "DataStructures.h"
#include "util/TabTable.h"

namespace Vorlan::native {

/// The header line, with its line feed.
extern const std::string_view kHeaderLine;

/// Reads rows of one table.
class RowReader {
public:
    /// Throws MissingColumn for the first required column that is missing.
    explicit RowReader(std::string_view headerLine);

    /// One match per row, its modifications not yet sorted. Throws OpenMS'
    /// ConversionError for a cell that is not a number.
    PeptideIdentification Read(std::string_view line);

private:
    enum Column : int {
        DatasetName,
        SpectrumName,
        Sequence,
        Charge,
        ObsMH,
        MassShift,
        MainScore,
        HighScoreBetter,
        ModName,
        ModPosition,
        ProteinAccess,
        BeforeAA,
        AfterAA,
        NumberOfRequired,
        StartPosition = NumberOfRequired,
        NumberOfColumns
    };
    static const char* const kColumnNames[NumberOfColumns];

    std::string_view Cell(Column column) const;
    void ReadModifications(PeptideIdentification& match);
    void ReadEvidences(PeptideIdentification& match);

    int places_[NumberOfColumns] = {};
    TabRow cells_;
    TabRow first_, second_, third_, fourth_; ///< the lists inside cells
};

/// Appends one line with its line feed.
void AppendRow(std::string& text, const PeptideIdentification& match);

} // namespace Vorlan::native

#endif // VORLAN_PEPIDENT_NATIVETABLEROW_H
