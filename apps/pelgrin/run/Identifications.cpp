#include "run/Identifications.h"

#include <algorithm>
#include <filesystem>
#include <iterator>
#include <memory>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "PeptideIdentificationIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/FileLines.h"
#include "files/TableAudit.h"

namespace pelgrin {

namespace {

struct GiveBack {
    void operator()(Vorlan::PeptideIdentificationIO* reader) const
    {
        Vorlan::PepIdentIOFactory::DesctroyPepIdentIO(reader);
    }
};

/// What stands between the first and the last quote of an exception's text.
std::string QuotedIn(const std::string& text)
{
    const std::size_t begin = text.find('\'');
    const std::size_t end = text.rfind('\'');
    return begin < end ? text.substr(begin + 1, end - begin - 1) : text;
}

using Records = std::vector<Vorlan::PeptideIdentification>;

Records Load(const std::string& name, Vorlan::PepIdentType::EPepIdentType format)
{
    Records records;
    const std::filesystem::path path(name);
    const std::unique_ptr<Vorlan::PeptideIdentificationIO, GiveBack> reader(
        Vorlan::PepIdentIOFactory::pGetPepIdentIO(format));
    try {
        reader->InitLoad(
            Vorlan::PepIdentSource(std::filesystem::absolute(path).parent_path().string(),
                                   path.filename().string(), format));
        reader->Load(records);
        reader->EndLoad();
    } catch (const OpenMS::Exception::ElementNotFound& error) {
        throw Failure(fmt::format("{}:1: expected a column named \"{}\" in the header line", name,
                                  QuotedIn(error.what())));
    } catch (const OpenMS::Exception::ConversionError& error) {
        // All rows before this one are in records; the header is line 1.
        throw Failure(
            fmt::format("{}:{}: expected numbers in the columns Charge, ObsMH, Mass Shift, "
                        "Main Score and Identified Mod Position: {}",
                        name, records.size() + 2, error.what()));
    } catch (const OpenMS::Exception::FileNotReadable&) {
        throw Failure(fmt::format("{}: cannot be read", name));
    }
    return records;
}

void Warn(const std::string& path, const TableAudit& audit)
{
    if (audit.rowsBehindEmptyLine > 0) {
        spdlog::warn("{}:{}: an empty line ends the table; {} rows behind it are not read",
                     OneLine(path), audit.emptyLine, audit.rowsBehindEmptyLine);
    }
    if (audit.longLine != 0) {
        spdlog::warn(
            "{}:{}: a line of more than {} characters ends the table; it is cut, and {} rows "
            "behind it are not read",
            OneLine(path), audit.longLine, kLongestLine, audit.rowsBehindLongLine);
    }
}

} // namespace

Identifications ReadIdentifications(const Parameters& parameters, Counts& counts)
{
    Identifications all;
    for (const std::string& path : parameters.psms) {
        const TableAudit audit = AuditTable(path);
        Warn(path, audit);
        Records records = Load(path, parameters.format);
        if (records.size() != audit.rows) {
            throw Failure(
                fmt::format("{}: expected {} rows, as counted before, but {} were read: the file "
                            "was changed, or cannot be read to its end",
                            path, audit.rows, records.size()));
        }
        const std::size_t begin = all.records.size();
        all.files.push_back({path, begin, begin + records.size()});
        std::move(records.begin(), records.end(), std::back_inserter(all.records));
        counts.rowsBehindEmptyLine += audit.rowsBehindEmptyLine;
        counts.rowsBehindLongLine += audit.rowsBehindLongLine;
        counts.rowsCut += audit.cutsRow ? 1 : 0;
    }
    counts.read = all.records.size();
    return all;
}

} // namespace pelgrin
