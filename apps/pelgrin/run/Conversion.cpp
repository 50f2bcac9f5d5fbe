#include "run/Conversion.h"

#include <memory>
#include <utility>
#include <vector>

#include <fmt/format.h>

#include "common/Terminal.h"
#include "files/ScratchFolder.h"
#include "run/Ledger.h"
#include "run/Output.h"

namespace pelgrin {

using Record = Vorlan::PeptideIdentification;

bool WriteLosses(const Parameters& parameters, const ResultsRead& results, const Counts& counts,
                 const NotHeldCounts& notHeld, std::string& report)
{
    results.rejects.Warn(parameters.rejectsTable);
    Ledger ledger(parameters.allowed);
    ledger.AddMatches(results, counts);
    ledger.AddTable(notHeld, parameters.out);
    report += ledger.Text();
    std::vector<std::unique_ptr<NewFile>> whole;
    for (const auto& [path, text] : {std::pair{&parameters.rejectsTable, results.rejects.Table()},
                                     std::pair{&parameters.ledgerFile, ledger.Json()}}) {
        if (!path->empty()) {
            whole.push_back(std::make_unique<NewFile>(*path));
            TextFile file(whole.back()->Path());
            file.Write(text);
            file.Close();
        }
    }
    for (const std::unique_ptr<NewFile>& file : whole) {
        file->MoveToTarget();
    }
    return ledger.HasLosses();
}

ExitStatus Convert(const Parameters& parameters)
{
    const LibraryOutput libraryOutput;
    CheckNewFiles(parameters);
    Counts counts;
    ScratchFolder scratch;
    NewFile table(parameters.out);
    NativeTableParts parts(table, parameters.out, scratch);
    const ResultsRead results =
        ReadResults(parameters, counts, [&](std::vector<Record>&& records) { parts.Add(records); });
    const NotHeldCounts notHeld = parts.Close();
    std::string report =
        fmt::format("Matches read {:>9}\nWritten      {:>9}   records to {}\n{}", counts.read,
                    counts.read, OneLine(parameters.out), notHeld.Text());
    const bool hasLosses = WriteLosses(parameters, results, counts, notHeld, report);
    table.MoveToTarget();
    PrintReport(report);
    return hasLosses ? WithLosses : AllWell;
}

} // namespace pelgrin
