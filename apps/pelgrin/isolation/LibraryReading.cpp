#include "isolation/LibraryReading.h"

#include <filesystem>
#include <iostream>
#include <memory>
#include <optional>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/PepXmlAudit.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

using Format = PepIdentType::EPepIdentType;
using Kind = ReadingFault::Kind;

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

std::string FileNameOf(const std::string& path)
{
    return std::filesystem::path(path).filename().string();
}

const char* NumberColumns(Format format)
{
    return format == PepIdentType::SequestTxt
               ? "Rank, First Scan, XCorr, Deltam/z [Da], MH+ [Da], Charge and Modifications"
               : "Charge, ObsMH, Mass Shift, Main Score and Identified Mod Position";
}

[[noreturn]] void MissingElement(const std::string& text, const ResultFiles& files,
                                 std::size_t record)
{
    if (text.find("the mass shift is a combination of modifications") == std::string::npos) {
        throw ReadingFault(
            Kind::Whole,
            fmt::format("expected a column named \"{}\" in the header line", QuotedIn(text)));
    }
    throw ReadingFault(
        Kind::AtRecord,
        fmt::format("{}: no sum of up to five of the given modifications is the mass of one of "
                    "them; name the missing modification with its mass (--mod) or in the "
                    "parameter file, fixed ones such as Carbamidomethyl (C) included",
                    HitText(files.path, record)));
}

/// Tells what a reader threw when it had given so many records.
[[noreturn]] void Explain(const OpenMS::Exception::BaseException& error, Format format,
                          const ResultFiles& files, std::size_t records)
{
    const std::string text = error.what();
    // Files of OpenMS: no record is to blame, and none can be read.
    if (dynamic_cast<const OpenMS::Exception::FileNotFound*>(&error) != nullptr
        || dynamic_cast<const OpenMS::Exception::ParseError*>(&error) != nullptr) {
        throw Failure(fmt::format(
            "CHEMISTRY/Residues.xml of OpenMS cannot be read: {}; it tells the masses of "
            "residues, and lies in the folder that OPENMS_DATA_PATH names, or where "
            "OpenMS is installed",
            OneLine(text)));
    }
    if (dynamic_cast<const OpenMS::Exception::FileNotReadable*>(&error) != nullptr) {
        const bool isSecond = !files.second.empty()
                              && text.find(FileNameOf(files.path)) == std::string::npos
                              && text.find(FileNameOf(files.second)) != std::string::npos;
        throw ReadingFault(Kind::Whole, isSecond ? files.second + ": cannot be read"
                                                 : std::string("cannot be read"));
    }
    if (dynamic_cast<const OpenMS::Exception::ElementNotFound*>(&error) != nullptr) {
        MissingElement(text, files, records);
    }
    if (dynamic_cast<const OpenMS::Exception::ConversionError*>(&error) != nullptr) {
        throw ReadingFault(Kind::AtRecord, fmt::format("expected numbers in the columns {}: {}",
                                                       NumberColumns(format), text));
    }
    const std::string advice =
        format == PepIdentType::MsgfTsv && !files.second.empty()
            ? "add the modification to " + files.second
            : "name the modification with its mass (--mod) or in the parameter file";
    throw ReadingFault(Kind::AtRecord, fmt::format("{}; {}", text, advice));
}

Vorlan::PepIdentSource SourceOf(Format format, const ResultFiles& files)
{
    const auto folderOf = [](const std::string& path) {
        return path.empty() ? std::string()
                            : std::filesystem::absolute(path).parent_path().string();
    };
    return {folderOf(files.path), FileNameOf(files.path), folderOf(files.second),
            FileNameOf(files.second), format};
}

} // namespace

void LoadRecords(Format format, const ResultFiles& files,
                 std::vector<Vorlan::PeptideIdentification>& records)
{
    const std::size_t before = records.size();
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
        Explain(error, format, files, records.size() - before);
    }
    std::string message = printed ? printed->Text() : std::string();
    message.erase(message.find_last_not_of("\r\n ") + 1);
    if (!message.empty()) {
        throw ReadingFault(Kind::Whole, "cannot be read as XML: " + OneLine(message));
    }
}

} // namespace pelgrin
