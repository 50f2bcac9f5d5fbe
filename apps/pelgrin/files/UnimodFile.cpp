#include "files/UnimodFile.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <filesystem>
#include <iostream>
#include <iterator>
#include <map>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>

#include "CStringProcess.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "common/Words.h"
#include "files/FileLines.h"
#include "files/NewFile.h"
#include "files/Packed.h"

namespace pelgrin {

namespace {

namespace fs = std::filesystem;

constexpr const char kUnimodXml[] = "CHEMISTRY/unimod.xml";

constexpr std::array<const char*, 11> kColumns = {"id",
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

std::vector<std::string> PossiblePlaces()
{
    std::vector<std::string> places = {kUnimodXml};
    const char* const data = std::getenv("OPENMS_DATA_PATH");
    if (data != nullptr && *data != '\0') {
        places.push_back((fs::path(data) / kUnimodXml).string());
    }
    for (const char* const prefix : {"/usr/local/share", "/usr/share", "/opt/openms/share"}) {
        places.push_back((fs::path(prefix) / "openms" / kUnimodXml).string());
    }
    const char* const conda = std::getenv("CONDA_PREFIX");
    if (conda != nullptr && *conda != '\0') {
        places.push_back((fs::path(conda) / "share/OpenMS" / kUnimodXml).string());
    }
    return places;
}

/// A table that the library would not read as it was meant.
struct Fault {
    std::uint64_t line = 0;
    std::string text;
    std::string begin; ///< of the line
};

/// The columns are there, and where a row of eleven fields has them.
std::optional<std::string> FaultOfHeader(const std::string& header)
{
    std::map<std::string, int> columns;
    Vorlan::CStringProcess::GetAttributesFromFirstRow(header, columns, "\t");
    for (const char* const name : kColumns) {
        const auto column = columns.find(name);
        if (column == columns.end()) {
            return fmt::format("expected a column named \"{}\" in the header line", name);
        }
        if (column->second >= static_cast<int>(kColumns.size())) {
            return fmt::format("the column \"{}\" is not among the first {}", name,
                               kColumns.size());
        }
    }
    return std::nullopt;
}

std::optional<std::string> FaultOfRow(const FileLines::Line& line)
{
    if (line.length > kLongestLine) {
        return fmt::format("the line is longer than {} bytes", kLongestLine);
    }
    if (line.begin.size() < line.length) {
        return "the line holds a NUL";
    }
    const auto fields = 1 + std::count(line.begin.begin(), line.begin.end(), '\t');
    if (line.length > 0 && fields != static_cast<std::ptrdiff_t>(kColumns.size())) {
        return fmt::format("expected {} fields, found {}", kColumns.size(), fields);
    }
    return std::nullopt;
}

/// Counts the rows; the first fault ends the walk.
std::optional<Fault> FindFault(const std::string& path, std::uint64_t& rows)
{
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    rows = 0;
    for (bool isHeader = true; lines.Next(line) || isHeader; isHeader = false) {
        const auto text = isHeader ? FaultOfHeader(line.begin) : FaultOfRow(line);
        if (text) {
            return Fault{line.number, *text, Clip(line.begin, 60)};
        }
        rows += !isHeader && line.length > 0 ? 1 : 0;
    }
    return std::nullopt;
}

} // namespace

std::optional<std::string> FindUnimodXml()
{
    for (const std::string& place : PossiblePlaces()) {
        std::error_code error;
        if (fs::is_regular_file(place, error)) {
            return place;
        }
    }
    return std::nullopt;
}

std::string UnimodXmlPlaces()
{
    std::string text;
    for (const std::string& place : PossiblePlaces()) {
        text += (text.empty() ? "" : ", ") + place;
    }
    return text;
}

const Vorlan::CModificationsDB& LoadUnimod(const std::string& xmlPath)
{
    CheckReadable(xmlPath);
    RefusePacked(xmlPath);
    // The library prints the origins of terminal records on the one (B-42),
    // and why the XML cannot be read on the other (B-43).
    const Captured out(std::cout);
    const Captured err(std::cerr);
    try {
        const auto& database = *Vorlan::CModificationsDBUnimod::getInstance(xmlPath);
        if (database.getNumberOfModifications() > 0) {
            return database;
        }
    } catch (const OpenMS::Exception::BaseException& error) {
        throw Failure(fmt::format("{}: cannot be read as Unimod XML: {}", xmlPath, error.what()));
    }
    std::string reason = err.Text();
    reason.erase(reason.find_last_not_of("\r\n") + 1);
    throw Failure(fmt::format("{}: no modifications were found; {}", xmlPath,
                              reason.empty() ? "expected umod:mod elements with umod:specificity "
                                               "below umod:modifications of Unimod XML"
                                             : OneLine(reason)));
}

std::uint64_t WriteModificationTable(const std::string& xmlPath, const std::string& outPath)
{
    const Vorlan::CModificationsDB& database = LoadUnimod(xmlPath);
    CheckTarget(outPath);
    NewFile temporary(outPath);
    try {
        database.writeToFile(temporary.Path());
    } catch (const OpenMS::Exception::BaseException&) { // B-39
        throw Failure(fmt::format("{}: cannot be written to its end", outPath));
    }
    std::uint64_t rows = 0;
    if (const auto fault = FindFault(temporary.Path(), rows)) {
        throw Failure(fmt::format(
            "{}: the table cannot hold the record that begins \"{}\" ({}): a tab, line feed or NUL "
            "stands in one of its texts",
            xmlPath, OneLine(fault->begin), fault->text));
    }
    if (rows != database.getNumberOfModifications()) {
        throw Failure(fmt::format("{}: the table would hold {} rows for {} records", xmlPath, rows,
                                  database.getNumberOfModifications()));
    }
    temporary.MoveToTarget();
    return rows;
}

std::uint64_t CheckModificationTable(const std::string& path)
{
    CheckReadable(path);
    RefusePacked(path);
    std::uint64_t rows = 0;
    if (const auto fault = FindFault(path, rows)) {
        throw Failure(fmt::format("{}:{}: {}", path, fault->line, fault->text));
    }
    return rows;
}

} // namespace pelgrin
