#include "run/ProteinMapping.h"

#include <optional>

#include <fmt/format.h>

#include "common/Terminal.h"
#include "run/Conversion.h"
#include "run/Identifications.h"
#include "run/MappedProteins.h"
#include "run/NativeTable.h"
#include "run/Output.h"

namespace pelgrin {

namespace {

using Record = Vorlan::PeptideIdentification;

/// Writes all that was asked for; nothing takes its place before all is whole.
NotHeldCounts WriteTables(const Parameters& parameters, const std::string& proteinTable,
                          const std::vector<Record>& records, MappedProteins& proteins)
{
    NewFile table(parameters.out);
    NotHeldCounts notHeld = WriteNativeTable(records, table, parameters.out);
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
    return notHeld;
}

ExitStatus Report(const Parameters& parameters, const std::string& proteinTable,
                  const Identifications& all, const Counts& counts, const MappedProteins& proteins,
                  const NotHeldCounts& notHeld)
{
    const std::vector<Record>& records = all.records;
    std::string text = fmt::format("Matches read {:>9}\n", counts.read);
    text += proteins.Text(MappedProteins::Details::All);
    text += fmt::format("Written      {:>9}   records to {}\n", records.size(),
                        OneLine(parameters.out));
    if (!proteinTable.empty()) {
        text += fmt::format("             {:>9}   proteins to {}\n", proteins.Listed(),
                            OneLine(proteinTable));
    }
    text += notHeld.Text();
    const bool hasLosses = WriteLosses(parameters, all, counts, text);
    PrintReport(text);
    return hasLosses || notHeld.HasLosses() || proteins.HasLosses() ? WithLosses : AllWell;
}

} // namespace

ExitStatus MapProteins(const Parameters& parameters, const std::string& proteinTable)
{
    const LibraryOutput libraryOutput;
    CheckNewFiles(parameters, proteinTable);
    MappedProteins proteins(*parameters.proteins);
    Counts counts;
    Identifications all = ReadIdentifications(parameters, counts);
    proteins.Fill(all.records);
    const NotHeldCounts notHeld = WriteTables(parameters, proteinTable, all.records, proteins);
    return Report(parameters, proteinTable, all, counts, proteins, notHeld);
}

} // namespace pelgrin
