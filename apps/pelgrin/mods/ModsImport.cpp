#include <filesystem>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/UnimodFile.h"
#include "mods/Mods.h"

namespace pelgrin {

ExitStatus RunModsImport(const ImportQuestion& question)
{
    std::string xml = question.unimod;
    if (xml.empty()) {
        const auto found = FindUnimodXml();
        if (!found) {
            throw Failure(fmt::format("Unimod XML was not found in any of {}; give --unimod FILE "
                                      "(Debian has it in the package openms-common)",
                                      UnimodXmlPlaces()));
        }
        xml = *found;
        spdlog::info("reading {}", OneLine(xml));
    }
    std::error_code error;
    if (std::filesystem::exists(question.out, error)) {
        if (std::filesystem::equivalent(question.out, xml, error)) {
            throw Failure(fmt::format("{}: is the input and would be overwritten", question.out));
        }
        if (!question.mayOverwrite) {
            throw Failure(fmt::format("{}: exists; --force lets it be overwritten", question.out));
        }
    }
    const std::uint64_t records = WriteModificationTable(xml, question.out);
    PrintReport(fmt::format("{} records were written to {}.\n", records, OneLine(question.out)));
    return AllWell;
}

} // namespace pelgrin
