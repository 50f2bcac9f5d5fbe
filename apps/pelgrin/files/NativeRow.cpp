#include "files/NativeRow.h"

#include <algorithm>

#include <fmt/format.h>

namespace pelgrin {

std::size_t RowLengthOf(const Vorlan::PeptideIdentification& record)
{
    constexpr std::size_t kModColumns = 2;
    constexpr std::size_t kProteinColumns = 4;
    constexpr std::size_t kOtherColumns = 8;
    // One character behind each cell, and behind each element of a list but the last.
    std::size_t length = kOtherColumns + std::max<std::size_t>(record.vMods.size(), 1) * kModColumns
                         + std::max<std::size_t>(record.vEvidences.size(), 1) * kProteinColumns;
    length += record.strDatasetName.size() + record.strSpectrumName.size()
              + record.strSequence.size() + fmt::formatted_size("{}", record.nCharge)
              + fmt::formatted_size("{:.6f}", record.dObsMH)
              + fmt::formatted_size("{:.6f}", record.dMassShift)
              + (record.dMainScore < 0.00001 ? fmt::formatted_size("{:.5e}", record.dMainScore)
                                             : fmt::formatted_size("{:.6f}", record.dMainScore))
              + 1; // whether a high score is better
    for (const Vorlan::IdentModification& mod : record.vMods) {
        length += mod.strName.size() + fmt::formatted_size("{}", mod.nPos);
    }
    for (const Vorlan::PeptideEvidence& protein : record.vEvidences) {
        length += protein.strProteinAccession.size() + 2 // the residues
                  + fmt::formatted_size("{}", protein.nStart);
    }
    return length - 1; // the line feed
}

bool FitsIntoCell(std::string_view text)
{
    return text.find_first_of(std::string_view("\t\r\n\0", 4)) == std::string_view::npos;
}

bool FitsIntoList(std::string_view text)
{
    return FitsIntoCell(text) && text.find(';') == std::string_view::npos;
}

} // namespace pelgrin
