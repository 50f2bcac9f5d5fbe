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

/// Writes proteins.tsv, when it was asked for, and counts what stands in it.
void WriteProteins(const std::optional<NewFile>& list, const std::vector<Record>& records,
                   MappedProteins& proteins)
{
    if (!list) {
        proteins.WriteTable(records, [](std::string_view) {});
        return;
    }
    TextFile file(list->Path());
    proteins.WriteTable(records, [&file](std::string_view line) { file.Write(line); });
    file.Close();
}

std::string ReportOf(const Parameters& parameters, const std::string& proteinTable,
                     std::size_t records, const Counts& counts, const MappedProteins& proteins)
{
    std::string text = fmt::format("Matches read {:>9}\n", counts.read);
    text += proteins.Text(MappedProteins::Details::All);
    text += fmt::format("Written      {:>9}   records to {}\n", records, OneLine(parameters.out));
    if (!proteinTable.empty()) {
        text += fmt::format("             {:>9}   proteins to {}\n", proteins.Listed(),
                            OneLine(proteinTable));
    }
    return text;
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
    NewFile table(parameters.out);
    const NotHeldCounts notHeld = WriteNativeTable(all.records, table, parameters.out);
    std::optional<NewFile> list;
    if (!proteinTable.empty()) {
        list.emplace(proteinTable);
    }
    WriteProteins(list, all.records, proteins);
    std::string report = ReportOf(parameters, proteinTable, all.records.size(), counts, proteins);
    report += notHeld.Text();
    // Nothing takes its place before all is whole.
    const bool hasLosses = WriteLosses(parameters, all, counts, notHeld, report);
    if (list) {
        list->MoveToTarget();
    }
    table.MoveToTarget();
    PrintReport(report);
    return hasLosses || proteins.HasLosses() ? WithLosses : AllWell;
}

} // namespace pelgrin
