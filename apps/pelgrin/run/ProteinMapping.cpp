#include "run/ProteinMapping.h"

#include <filesystem>
#include <optional>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "run/Identifications.h"
#include "run/MappedProteins.h"
#include "run/NativeTable.h"
#include "run/Output.h"
#include "run/Report.h"

namespace pelgrin {

namespace {

using Record = Vorlan::PeptideIdentification;

/// Throws Failure for tables that cannot be written, overwrite an input, or are
/// one file.
void CheckTables(const Parameters& parameters, const std::string& proteinTable)
{
    CheckNewFile(parameters, parameters.out, parameters.outName);
    if (proteinTable.empty()) {
        return;
    }
    CheckNewFile(parameters, proteinTable, "--proteins");
    std::error_code error;
    const auto real = [&error](const std::string& path) {
        return std::filesystem::weakly_canonical(std::filesystem::absolute(path), error);
    };
    if (real(parameters.out) == real(proteinTable)) {
        throw Failure(fmt::format("{}: --out and --proteins are one file", proteinTable));
    }
}

/// Writes all that was asked for; nothing takes its place before all is whole.
void WriteTables(const Parameters& parameters, const std::string& proteinTable,
                 const std::vector<Record>& records, MappedProteins& proteins)
{
    NewFile table(parameters.out);
    WriteNativeTable(records, table, parameters.out);
    if (proteinTable.empty()) {
        proteins.WriteTable(records, [](std::string_view) {});
    } else {
        NewFile list(proteinTable);
        TextFile file(list.Path());
        proteins.WriteTable(records, [&file](std::string_view line) { file.Write(line); });
        file.Close();
        list.MoveToTarget();
    }
    table.MoveToTarget();
}

ExitStatus Report(const Parameters& parameters, const std::string& proteinTable,
                  const std::vector<Record>& records, const Counts& counts,
                  const MappedProteins& proteins)
{
    std::string text = fmt::format("Matches read {:>9}\n{}", counts.read, UnreadText(counts));
    text += proteins.Text(MappedProteins::Details::All);
    text += fmt::format("Written      {:>9}   records to {}\n", records.size(),
                        OneLine(parameters.out));
    if (!proteinTable.empty()) {
        text += fmt::format("             {:>9}   proteins to {}\n", proteins.Listed(),
                            OneLine(proteinTable));
    }
    const NotHeldText notHeld = NotHeldBy(records);
    PrintOut(text + notHeld.text);
    return counts.LostRows() > 0 || notHeld.hasLosses || proteins.HasLosses() ? WithLosses
                                                                              : AllWell;
}

} // namespace

ExitStatus MapProteins(const Parameters& parameters, const std::string& proteinTable)
{
    const LibraryOutput libraryOutput;
    CheckTables(parameters, proteinTable);
    MappedProteins proteins(*parameters.proteins);
    Counts counts;
    std::vector<Record> records = ReadIdentifications(parameters, counts).records;
    proteins.Fill(records);
    WriteTables(parameters, proteinTable, records, proteins);
    return Report(parameters, proteinTable, records, counts, proteins);
}

} // namespace pelgrin
