#include "run/Conversion.h"

#include <fmt/format.h>

#include "common/Terminal.h"
#include "run/Identifications.h"
#include "run/NativeTable.h"
#include "run/Report.h"

namespace pelgrin {

using Record = Vorlan::PeptideIdentification;

namespace {

ExitStatus Report(const Parameters& parameters, const std::vector<Record>& records,
                  const Counts& counts)
{
    const NotHeldText notHeld = NotHeldBy(records);
    PrintOut(fmt::format("Matches read {:>9}\n{}Written      {:>9}   records to {}\n{}",
                         counts.read, UnreadText(counts), records.size(), OneLine(parameters.out),
                         notHeld.text));
    return counts.LostRows() > 0 || notHeld.hasLosses ? WithLosses : AllWell;
}

} // namespace

ExitStatus Convert(const Parameters& parameters)
{
    const LibraryOutput libraryOutput;
    CheckNewFile(parameters, parameters.out, parameters.outName);
    Counts counts;
    const std::vector<Record> records = ReadIdentifications(parameters, counts).records;
    NewFile table(parameters.out);
    WriteNativeTable(records, table, parameters.out);
    table.MoveToTarget();
    return Report(parameters, records, counts);
}

} // namespace pelgrin
