#include "run/NativeTable.h"

#include <algorithm>
#include <filesystem>
#include <limits>
#include <map>
#include <utility>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/FileLines.h"
#include "files/NativeRow.h"

namespace pelgrin {

using Record = Vorlan::PeptideIdentification;

namespace {

/// Something of a record that the native table has no place for.
struct NotHeld {
    const char* key; ///< of a loss; null: it is left out of every native table
    const char* text;
    bool (*isBorneBy)(const Record&);
};

bool HasTextThatDoesNotFit(const Record& record)
{
    return !FitsIntoCell(record.strDatasetName) || !FitsIntoCell(record.strSpectrumName)
           || !FitsIntoCell(record.strSequence)
           || std::any_of(record.vMods.begin(), record.vMods.end(),
                          [](const auto& mod) { return !FitsIntoList(mod.strName); })
           || std::any_of(record.vEvidences.begin(), record.vEvidences.end(),
                          [](const Vorlan::PeptideEvidence& protein) {
                              const char residues[] = {protein.cBefore, protein.cAfter};
                              return !FitsIntoList(protein.strProteinAccession)
                                     || !FitsIntoList({residues, 2});
                          });
}

/// The lines of the table that the row takes, and one that a name breaks off.
std::uint64_t LinesOf(const Record& record)
{
    std::uint64_t lines = 1;
    const auto add = [&lines](const std::string& text) {
        lines += static_cast<std::uint64_t>(std::count(text.begin(), text.end(), '\n'));
    };
    add(record.strDatasetName);
    add(record.strSpectrumName);
    add(record.strSequence);
    for (const Vorlan::IdentModification& mod : record.vMods) {
        add(mod.strName);
    }
    for (const Vorlan::PeptideEvidence& protein : record.vEvidences) {
        add(protein.strProteinAccession);
    }
    return lines;
}

constexpr std::size_t kNotHeldKinds = 10;
const NotHeld kNotHeld[kNotHeldKinds] = {
    {"table_separator",
     "records with a name that holds a tab, a line end or \";\": they do not read back",
     HasTextThatDoesNotFit},
    {"table_long_row",
     "records with a row of more than 81,919 characters: the table ends there when it is read",
     [](const Record& record) { return RowLengthOf(record) > kLongestLine; }},
    {"table_charge", "records with a negative or much too large charge: they do not read back",
     [](const Record& record) {
         return record.nCharge > std::uint64_t{std::numeric_limits<std::int32_t>::max()};
     }},
    {"table_terminus_mass", "records with a mass on a terminus that no given modification explains",
     [](const Record& record) { return !record.vAltMods.empty(); }},
    {nullptr, "records with masses of modifications; their names are there",
     [](const Record& record) {
         return std::any_of(record.vMods.begin(), record.vMods.end(),
                            [](const auto& mod) { return mod.dMass != 0.0; });
     }},
    {nullptr, "records with a decoy flag", [](const Record& record) { return record.bDecoy; }},
    {nullptr, "records with the m/z of the precursor",
     [](const Record& record) { return record.dValue1 != 0.0; }},
    {nullptr, "records with a retention time",
     [](const Record& record) { return record.dValue2 != 0.0; }},
    {nullptr, "records with a mass error of the precursor",
     [](const Record& record) { return record.nValue4 != 0; }},
    {nullptr, "records with a scan number",
     [](const Record& record) { return record.nValue5 != 0; }},
};

/// Throws Failure when path is an input, or no file that can be written.
void CheckNewFile(const Parameters& parameters, const std::string& path, const std::string& option)
{
    CheckTarget(path);
    std::vector<std::string> inputs = parameters.psms;
    inputs.insert(inputs.end(), parameters.fileInputs.begin(), parameters.fileInputs.end());
    for (const std::string& input : inputs) {
        std::error_code ignored;
        if (std::filesystem::equivalent(path, input, ignored)) {
            throw Failure(fmt::format("{}: is an input and would be overwritten; choose another "
                                      "table for {}",
                                      path, option));
        }
    }
}

} // namespace

void CheckNewFiles(const Parameters& parameters, const std::string& proteinTable)
{
    std::map<std::filesystem::path, std::string> seen;
    for (const auto& [path, option] :
         std::vector<std::pair<std::string, std::string>>{{parameters.out, parameters.outName},
                                                          {proteinTable, "--proteins"},
                                                          {parameters.rejectsTable, "--rejects"},
                                                          {parameters.ledgerFile, "--ledger"}}) {
        if (path.empty()) {
            continue;
        }
        CheckNewFile(parameters, path, option);
        std::error_code ignored;
        const auto [entry, isNew] = seen.emplace(
            std::filesystem::weakly_canonical(std::filesystem::absolute(path), ignored), option);
        if (!isNew) {
            throw Failure(fmt::format("{}: {} and {} are one file", path, entry->second, option));
        }
    }
}

NotHeldCounts WriteNativeTable(const std::vector<Record>& records, const NewFile& table,
                               const std::string& path)
{
    Vorlan::TulkTXTPepIdentIO writer;
    try {
        writer.InitSave(table.Path());
        writer.Save(records);
        writer.EndSave();
    } catch (const OpenMS::Exception::FileNotWritable&) {
        throw Failure(fmt::format("{}: cannot be written to its end", path));
    }
    NotHeldCounts notHeld;
    notHeld.Add(records);
    notHeld.Warn(path);
    return notHeld;
}

NativeTableParts::NativeTableParts(const NewFile& table, std::string path, ScratchFolder& scratch)
    : path_(std::move(path)), part_(scratch.PathOf("part.txt")),
      table_(table.Path(), std::ios::binary | std::ios::trunc)
{
    Add({}); // the header, whatever comes
}

NativeTableParts::~NativeTableParts() = default;

void NativeTableParts::Add(const std::vector<Record>& records)
{
    notHeld_.Add(records);
    Vorlan::TulkTXTPepIdentIO writer;
    try {
        writer.InitSave(part_);
        writer.Save(records);
        writer.EndSave();
    } catch (const OpenMS::Exception::FileNotWritable&) {
        throw Failure(fmt::format("{}: cannot be written to its end", part_));
    }
    std::ifstream part(part_, std::ios::binary);
    if (hasHeader_) {
        part.ignore(std::numeric_limits<std::streamsize>::max(), '\n');
    }
    hasHeader_ = true;
    if (part.peek() != std::ifstream::traits_type::eof() && !(table_ << part.rdbuf())) {
        NotWritable();
    }
}

NotHeldCounts NativeTableParts::Close()
{
    table_.close();
    if (!table_) {
        NotWritable();
    }
    notHeld_.Warn(path_);
    return notHeld_;
}

void NativeTableParts::NotWritable() const
{
    throw Failure(fmt::format("{}: cannot be written to its end", path_));
}

void NotHeldCounts::Add(const std::vector<Record>& records)
{
    records_ += records.size();
    for (const Record& record : records) {
        for (std::size_t i = 0; i < kKinds; ++i) {
            if (kNotHeld[i].isBorneBy(record)) {
                Kind& kind = kinds_[i];
                kind.firstLine = kind.count == 0 ? nextLine_ : kind.firstLine;
                ++kind.count;
            }
        }
        nextLine_ += LinesOf(record);
    }
}

std::vector<NotHeldCounts::Loss> NotHeldCounts::Losses() const
{
    std::vector<Loss> losses;
    for (std::size_t i = 0; i < kKinds; ++i) {
        if (kinds_[i].count > 0 && kNotHeld[i].key != nullptr) {
            losses.push_back(
                {kNotHeld[i].key, kNotHeld[i].text, kinds_[i].count, kinds_[i].firstLine});
        }
    }
    return losses;
}

void NotHeldCounts::Warn(const std::string& path) const
{
    for (const Loss& loss : Losses()) {
        spdlog::warn("{}:{}: the first of {} {}", OneLine(path), loss.firstLine, loss.count,
                     loss.text);
    }
}

std::vector<std::string> TableLossClasses()
{
    std::vector<std::string> keys;
    for (const NotHeld& kind : kNotHeld) {
        if (kind.key != nullptr) {
            keys.emplace_back(kind.key);
        }
    }
    return keys;
}

std::string NotHeldCounts::Text() const
{
    std::string text;
    const char* title = "Not in table";
    for (std::size_t i = 0; i < kKinds; ++i) {
        if (kinds_[i].count > 0) {
            text += fmt::format("{:<13}{:>9}   {}\n", title, kinds_[i].count, kNotHeld[i].text);
            title = "";
        }
    }
    return text;
}

} // namespace pelgrin
