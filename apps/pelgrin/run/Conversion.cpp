#include "run/Conversion.h"

#include <algorithm>
#include <filesystem>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/NewFile.h"
#include "files/TableAudit.h"
#include "run/Identifications.h"
#include "run/Report.h"

namespace pelgrin {

using Record = Vorlan::PeptideIdentification;

namespace {

/// Something of a record that the native table has no place for.
struct NotHeld {
    const char* text;
    bool isLoss; ///< else it is left out of every native table
    bool (*isBorneBy)(const Record&);
};

/// The table separates its cells and lists by these, and does not escape them.
bool HasSeparator(const std::string& text, const char* separators)
{
    return text.find_first_of(separators) != std::string::npos;
}

bool DoesNotReadBack(const Record& record)
{
    constexpr char kCells[] = "\t\r\n";
    constexpr char kLists[] = "\t\r\n;";
    return HasSeparator(record.strDatasetName, kCells)
           || HasSeparator(record.strSpectrumName, kCells)
           || HasSeparator(record.strSequence, kCells)
           || std::any_of(record.vMods.begin(), record.vMods.end(),
                          [&](const auto& mod) { return HasSeparator(mod.strName, kLists); })
           || std::any_of(record.vEvidences.begin(), record.vEvidences.end(),
                          [&](const auto& protein) {
                              return HasSeparator(protein.strProteinAccession, kLists);
                          });
}

const NotHeld kNotHeld[] = {
    {"records with a name that holds a tab, a line end or \";\": they do not read back", true,
     DoesNotReadBack},
    {"records with a mass on a terminus that no given modification explains", true,
     [](const Record& record) { return !record.vAltMods.empty(); }},
    {"records with masses of modifications; their names are there", false,
     [](const Record& record) {
         return std::any_of(record.vMods.begin(), record.vMods.end(),
                            [](const auto& mod) { return mod.dMass != 0.0; });
     }},
    {"records with a decoy flag", false, [](const Record& record) { return record.bDecoy; }},
    {"records with the m/z of the precursor", false,
     [](const Record& record) { return record.dValue1 != 0.0; }},
    {"records with a retention time", false,
     [](const Record& record) { return record.dValue2 != 0.0; }},
    {"records with a mass error of the precursor", false,
     [](const Record& record) { return record.nValue4 != 0; }},
    {"records with a scan number", false, [](const Record& record) { return record.nValue5 != 0; }},
};

void RefuseToOverwriteInputs(const Parameters& parameters)
{
    std::vector<std::string> inputs = parameters.psms;
    inputs.insert(inputs.end(), parameters.fileInputs.begin(), parameters.fileInputs.end());
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (std::filesystem::equivalent(parameters.out, input, ignored)) {
            throw Failure(fmt::format("{}: is an input and would be overwritten; choose another "
                                      "table for {}",
                                      parameters.out, parameters.outName));
        }
    }
}

/// Writes all records. The table takes its place when it is whole.
void WriteTable(const std::vector<Record>& records, const std::string& path)
{
    NewFile table(path);
    Vorlan::TulkTXTPepIdentIO writer;
    try {
        writer.InitSave(table.Path());
        writer.Save(records);
        writer.EndSave();
    } catch (const OpenMS::Exception::FileNotWritable&) {
        throw Failure(fmt::format("{}: cannot be written to its end", path));
    }
    table.MoveToTarget();
}

ExitStatus Report(const Parameters& parameters, const std::vector<Record>& records,
                  const Counts& counts)
{
    std::string text = fmt::format("Matches read {:>9}\n", counts.read) + UnreadText(counts);
    text += fmt::format("Written      {:>9}   records to {}\n", records.size(),
                        OneLine(parameters.out));
    const char* title = "Not in table";
    bool hasLosses = counts.LostRows() > 0;
    for (const NotHeld& kind : kNotHeld) {
        const auto count = std::count_if(records.begin(), records.end(), kind.isBorneBy);
        if (count > 0) {
            text += fmt::format("{:<13}{:>9}   {}\n", title, count, kind.text);
            title = "";
            hasLosses = hasLosses || kind.isLoss;
        }
    }
    PrintOut(text);
    return hasLosses ? WithLosses : AllWell;
}

} // namespace

ExitStatus Convert(const Parameters& parameters)
{
    const LibraryOutput libraryOutput;
    CheckTarget(parameters.out);
    RefuseToOverwriteInputs(parameters);
    Counts counts;
    const std::vector<Record> records = ReadIdentifications(parameters, counts).records;
    WriteTable(records, parameters.out);
    return Report(parameters, records, counts);
}

} // namespace pelgrin
