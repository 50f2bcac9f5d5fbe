#include "files/ResultColumns.h"

#include <map>

namespace pelgrin {

const std::vector<ColumnNames>& NeededColumns(FileKind kind)
{
    // clang-format off
    static const std::map<FileKind, std::vector<ColumnNames>> columns = {
        {FileKind::NativeTable,
         {{"Dataset Name"}, {"Spectrum Name"}, {"Sequence"}, {"Charge"}, {"ObsMH"}, {"Mass Shift"},
          {"Main Score"}, {"High Score Better"}, {"Identified Mod Name"},
          {"Identified Mod Position"}, {"Protein Access"}, {"Before AA"}, {"After AA"}}},
        {FileKind::Msgf,
         {{"#SpecFile"}, {"ScanNum"}, {"Peptide"}, {"Charge"}, {"Precursor"},
          {"PrecursorError(ppm)", "PrecursorError(Da)"}, {"SpecEValue"}, {"Protein"}}},
        {FileKind::MaxQuantMatches,
         {{"Raw file"}, {"Sequence"}, {"Scan number"}, {"Charge"}, {"Reverse"}, {"Score"},
          {"Mass Error [ppm]", "Mass error [ppm]"}, {"m/z"}, {"Proteins"}, {"Retention time"},
          {"Modifications"}, {"Modified sequence"}}},
        {FileKind::MaxQuantPeptides,
         {{"Amino acid before"}, {"Amino acid after"}, {"Proteins"}, {"MS/MS IDs"}}},
        {FileKind::PFind3,
         {{"File_Name"}, {"Sequence"}, {"Scan_No"}, {"Charge"}, {"Target/Decoy"}, {"Final_Score"},
          {"Mass_Shift(Exp.-Calc.)"}, {"Exp.MH+"}, {"Proteins"}, {"Modification"}, {"Positions"}}},
        {FileKind::Sequest,
         {{"Rank"}, {"Spectrum File"}, {"First Scan"}, {"Sequence"}, {"XCorr"}, {"Deltam/z [Da]"},
          {"MH+ [Da]"}, {"Theo. MH+ [Da]"}, {"Charge"}, {"Protein Accessions"}, {"Modifications"},
          {"DeltaCn"}}},
    };
    // clang-format on
    static const std::vector<ColumnNames> none;
    const auto found = columns.find(kind);
    return found == columns.end() ? none : found->second;
}

std::string ChoiceText(const ColumnNames& names)
{
    std::string text;
    for (const std::string& name : names) {
        text += (text.empty() ? "\"" : " or \"") + name + "\"";
    }
    return text;
}

} // namespace pelgrin
