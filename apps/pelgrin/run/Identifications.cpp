#include "run/Identifications.h"

#include <filesystem>
#include <iostream>
#include <iterator>
#include <memory>
#include <optional>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/EngineFileAudit.h"
#include "files/FileLines.h"
#include "files/PepXmlAudit.h"
#include "files/UnimodFile.h"
#include "run/Spectra.h"
#include "run/WholeRecords.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

using Records = std::vector<Vorlan::PeptideIdentification>;
using Format = PepIdentType::EPepIdentType;

struct GiveBack {
    void operator()(Vorlan::PeptideIdentificationIO* reader) const
    {
        Vorlan::PepIdentIOFactory::DesctroyPepIdentIO(reader);
    }
};

bool IsPepXml(Format format)
{
    return format == PepIdentType::MsFraggerPepXml || format == PepIdentType::CometPepXml;
}

/// What stands between the first and the last quote of an exception's text.
std::string QuotedIn(const std::string& text)
{
    const std::size_t begin = text.find('\'');
    const std::size_t end = text.rfind('\'');
    return begin < end ? text.substr(begin + 1, end - begin - 1) : text;
}

// ---- Failures of the readers ------------------------------------------------

[[noreturn]] void MassNotExplained(Format format, const ResultFiles& files, std::size_t record)
{
    throw Failure(fmt::format(
        "{}: {}: no sum of up to five of the given modifications is the mass of one of them; name "
        "the missing modification with its mass (--mod) or in the parameter file, fixed ones such "
        "as Carbamidomethyl (C) included",
        PlaceOfRecord(format, files, record), QueryText(files.path, record)));
}

const char* NumberColumns(Format format)
{
    return format == PepIdentType::SequestTxt
               ? "Rank, First Scan, XCorr, Deltam/z [Da], MH+ [Da], Charge and Modifications"
               : "Charge, ObsMH, Mass Shift, Main Score and Identified Mod Position";
}

/// Tells what a reader threw when it had given so many records.
[[noreturn]] void Explain(const OpenMS::Exception::BaseException& error, Format format,
                          const ResultFiles& files, std::size_t records)
{
    const std::string text = error.what();
    if (dynamic_cast<const OpenMS::Exception::FileNotReadable*>(&error) != nullptr) {
        const bool isSecond = !files.second.empty()
                              && text.find(FileNameOf(files.path)) == std::string::npos
                              && text.find(FileNameOf(files.second)) != std::string::npos;
        throw Failure(fmt::format("{}: cannot be read", isSecond ? files.second : files.path));
    }
    if (dynamic_cast<const OpenMS::Exception::ElementNotFound*>(&error) != nullptr) {
        if (text.find("the mass shift is a combination of modifications") != std::string::npos) {
            MassNotExplained(format, files, records);
        }
        throw Failure(fmt::format("{}:1: expected a column named \"{}\" in the header line",
                                  files.path, QuotedIn(text)));
    }
    const std::string place = PlaceOfRecord(format, files, records);
    if (dynamic_cast<const OpenMS::Exception::ConversionError*>(&error) != nullptr) {
        throw Failure(fmt::format("{}: expected numbers in the columns {}: {}", place,
                                  NumberColumns(format), text));
    }
    const std::string advice =
        format == PepIdentType::MsgfTsv && !files.second.empty()
            ? "add the modification to " + files.second
            : "name the modification with its mass (--mod) or in the parameter file";
    throw Failure(fmt::format("{}: {}; {}", place, text, advice));
}

// ---- Reading ----------------------------------------------------------------

Vorlan::PepIdentSource SourceOf(Format format, const ResultFiles& files)
{
    const auto folderOf = [](const std::string& path) {
        return path.empty() ? std::string()
                            : std::filesystem::absolute(path).parent_path().string();
    };
    return {folderOf(files.path), FileNameOf(files.path), folderOf(files.second),
            FileNameOf(files.second), format};
}

void Load(Format format, const ResultFiles& files, Records& records)
{
    const std::unique_ptr<Vorlan::PeptideIdentificationIO, GiveBack> reader(
        Vorlan::PepIdentIOFactory::pGetPepIdentIO(format));
    // The readers of pepXML print why an XML file cannot be read, and nothing else.
    std::optional<Captured> printed;
    if (IsPepXml(format)) {
        printed.emplace(std::cout);
    }
    try {
        reader->InitLoad(SourceOf(format, files));
        reader->Load(records);
        reader->EndLoad();
    } catch (const OpenMS::Exception::BaseException& error) {
        printed.reset();
        Explain(error, format, files, records.size());
    }
    std::string message = printed ? printed->Text() : std::string();
    message.erase(message.find_last_not_of("\r\n ") + 1);
    if (!message.empty()) {
        throw Failure(fmt::format("{}: cannot be read as XML: {}", files.path, OneLine(message)));
    }
}

void Warn(const std::string& path, const ResultAudit& audit)
{
    for (std::size_t i = 0; i < kUnread; ++i) {
        const auto reason = static_cast<Unread>(i);
        const ResultAudit::Count& count = audit.unread[i];
        if (!IsLoss(reason) || count.units == 0 || reason == Unread::BehindLongLine) {
            continue;
        }
        if (reason == Unread::BehindEmptyLine) {
            spdlog::warn("{}:{}: an empty line ends the table; {} rows behind it are not read",
                         OneLine(path), count.firstLine, count.units);
        } else {
            spdlog::warn("{}:{}: the first of {} {}; they are not read", OneLine(path),
                         count.firstLine, count.units, TextOf(reason));
        }
    }
    if (audit.longLine != 0) {
        spdlog::warn(
            "{}:{}: a line of more than {} characters ends the table; it is cut, and {} rows "
            "behind it are not read",
            OneLine(path), audit.longLine, kLongestLine, audit.Of(Unread::BehindLongLine).units);
    }
}

/// pFind's readers look masses up in the default table, when it is there. The
/// library ends the process for one that is malformed.
void CheckDefaultTable(Format format)
{
    constexpr const char kTable[] = "unimod.txt";
    std::error_code ignored;
    const bool isPFind =
        format == PepIdentType::Pfind3Spectra || format == PepIdentType::Pfind28Txt;
    if (isPFind && std::filesystem::is_regular_file(kTable, ignored)) {
        CheckModificationTable(kTable);
        CheckTermSpecificities(kTable);
    }
}

Records ReadFile(Format format, const ResultFiles& files, Counts& counts)
{
    const ResultAudit audit = AuditResult(format, files);
    Warn(files.path, audit);
    Records records;
    Load(format, files, records);
    if (records.size() != audit.records) {
        throw Failure(
            fmt::format("{}: expected {} records, as counted before, but {} were read: the file "
                        "was changed, or cannot be read to its end",
                        files.path, audit.records, records.size()));
    }
    const auto fixed = FixedModifications();
    for (Vorlan::PeptideIdentification& record : records) {
        MakeWhole(format, fixed, record);
    }
    counts.Add(audit);
    return records;
}

} // namespace

ResultFiles FilesOf(Format format, const std::string& path, const std::string& second)
{
    if (format == PepIdentType::MaxQuant && second.empty()) {
        return {path, (std::filesystem::path(path).parent_path() / "peptides.txt").string()};
    }
    return {path, second};
}

Identifications ReadIdentifications(const Parameters& parameters, Counts& counts)
{
    CheckDefaultTable(parameters.format);
    Identifications all;
    all.format = parameters.format;
    for (const std::string& path : parameters.psms) {
        const ResultFiles files = FilesOf(parameters.format, path, parameters.second);
        Records records = ReadFile(parameters.format, files, counts);
        const std::size_t begin = all.records.size();
        all.files.push_back({files, begin, begin + records.size()});
        std::move(records.begin(), records.end(), std::back_inserter(all.records));
    }
    counts.read = all.records.size();
    return all;
}

} // namespace pelgrin
