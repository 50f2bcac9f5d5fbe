#include "moddb/ModificationTable.h"

#include <array>
#include <cstddef>
#include <string_view>

#include "moddb/ModificationDBErrors.h"
#include "util/Console.h"
#include "util/LineReader.h"
#include "util/Numbers.h"
#include "util/TabTable.h"

namespace Vorlan {

namespace {

enum Column : std::size_t {
    Id,
    FullId,
    UniModAccession,
    FullName,
    TermSpec,
    Origin,
    Classification,
    DiffMonoMass,
    DiffAverageMass,
    NeutralLossMonoMass,
    NeutralLossAverageMass,
    NumberOfColumns
};

constexpr std::array<const char*, NumberOfColumns> kColumns = {"id",
                                                               "full_id",
                                                               "unimod_accession",
                                                               "full_name",
                                                               "term_spec",
                                                               "origin",
                                                               "classification",
                                                               "diff_mono_mass",
                                                               "diff_average_mass",
                                                               "neutral_loss_mono_mass",
                                                               "neutral_loss_average_mass"};

using Places = std::array<int, NumberOfColumns>; // of the columns in a row

// Deliberate: B-44. Both readers of the table name this one.
constexpr char kCalls[] = "CModificationsDBEngineCalvex::readFromSearchEngineFile calls\n";

Places FindColumns(std::string_view headerRow)
{
    const TabHeader header(headerRow);
    Places places{};
    for (std::size_t i = 0; i < NumberOfColumns; ++i) {
        places[i] = header.Find(kColumns[i]);
        if (places[i] == TabHeader::kMissing) {
            console::PrintAndExit(console::Stream::Err,
                                  std::string(kCalls) + "Error:\tCannot find the column \""
                                      + kColumns[i] + "\" in the modification data base file\n");
        }
    }
    return places;
}

bool HasAllTerms(const TabRow& row, const Places& places)
{
    for (const int place : places) {
        if (static_cast<std::size_t>(place) >= row.Size()) {
            return false;
        }
    }
    // Deliberate: B-44. Eleven, however many columns the header has.
    return row.Size() == NumberOfColumns;
}

CResidueModification RecordOf(const TabRow& row, const Places& places)
{
    const auto text = [&](Column column) { return std::string(row.Cell(places[column])); };
    const auto mass = [&](Column column) { return numbers::ToDouble(row.Cell(places[column])); };
    CResidueModification record;
    record.setId(text(Id));
    record.setFullId(text(FullId));
    record.setUniModAccession(text(UniModAccession));
    record.setFullName(text(FullName));
    record.setTermSpecificity(text(TermSpec));
    record.setOrigin(text(Origin));
    record.setSourceClassification(text(Classification));
    record.setDiffMonoMass(mass(DiffMonoMass));
    record.setDiffAverageMass(mass(DiffAverageMass));
    record.setNeutralLossMonoMass(mass(NeutralLossMonoMass));
    record.setNeutralLossAverageMass(mass(NeutralLossAverageMass));
    return record;
}

} // namespace

std::string ModificationTableHeader()
{
    std::string header = kColumns[0];
    for (std::size_t i = 1; i < NumberOfColumns; ++i) {
        header.append("\t").append(kColumns[i]);
    }
    return header;
}

void ReadModificationTable(const std::string& path, const char* label,
                           std::vector<CResidueModification>& records)
{
    LineReader reader;
    if (!reader.Open(path, LineReader::Mode::Text)) {
        errors::TableNotReadable(label, path);
    }
    std::string_view line;
    reader.Next(line);
    const Places places = FindColumns(line);
    TabRow row;
    for (std::size_t number = 2; reader.Next(line); ++number) {
        row.Split(line, '\t');
        if (row.Size() == 0) {
            continue;
        }
        if (!HasAllTerms(row, places)) {
            console::PrintAndExit(console::Stream::Err,
                                  std::string(kCalls)
                                      + "Error:\tUnexpected number of terms in line "
                                      + std::to_string(number) + "\n");
        }
        records.push_back(RecordOf(row, places));
    }
}

} // namespace Vorlan
