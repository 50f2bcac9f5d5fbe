// Every real result file: what it holds, what is read, and what is lost by class,
// as it came and when it was prepared.
#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iostream>

#include <fmt/format.h>

#include "HostProgram.h"
#include "files/FileKind.h"

namespace pelgrin::test {
namespace {

namespace fs = std::filesystem;
using Vorlan::PepIdentType;
using Vorlan::test::ReadFile;
using Vorlan::test::RealDataFolder;
using Vorlan::test::TempFolder;

using Format = PepIdentType::EPepIdentType;

const std::vector<std::string> kModifications = {"Carbamidomethyl (C)=57.021464",
                                                 "Oxidation (M)=15.994915",
                                                 "Acetyl (Protein N-term)=42.010565",
                                                 "Phospho (STY)=79.966331",
                                                 "TMTpro (K)=304.207146",
                                                 "TMTpro (N-term)=304.207146",
                                                 "TMT6plex (K)=229.162932",
                                                 "TMT6plex (N-term)=229.162932",
                                                 "Carboxymethyl (C)=58.005479",
                                                 "Deamidated (NQ)=0.984016",
                                                 "Gln->pyro-Glu (Any N-term Q)=-17.026549"};

/// Counted without any code of the host.
std::uint64_t PlainlyHeldIn(Format format, const std::string& path)
{
    const bool isXml =
        format == PepIdentType::CometPepXml || format == PepIdentType::MsFraggerPepXml;
    std::ifstream file(path, std::ios::binary);
    std::string line;
    std::uint64_t held = 0;
    for (std::uint64_t number = 1; std::getline(file, line); ++number) {
        if (!isXml && format != PepIdentType::Pfind28Txt) {
            held += number > 1 && line.find_first_not_of("\r") != std::string::npos ? 1 : 0;
            continue;
        }
        const std::string key = isXml ? "<search_hit " : "[Spectrum";
        for (std::size_t hit = line.find(key); hit != std::string::npos;
             hit = line.find(key, hit + 1)) {
            ++held;
        }
    }
    return held;
}

/// "1707 held, 589 read; 1118 further_hit, 35 further_protein" or how it is refused.
std::string Converted(Format format, const std::string& path)
{
    const TempFolder folder;
    std::vector<std::string> arguments = {"convert",
                                          "--format",
                                          PepIdentType::typeToName(format),
                                          "--in",
                                          path,
                                          "--out",
                                          folder.PathOf("table.txt"),
                                          "--ledger",
                                          folder.PathOf("ledger.json")};
    for (const std::string& modification : kModifications) {
        arguments.insert(arguments.end(), {"--mod", modification});
    }
    const Outcome outcome = RunPelgrin(arguments);
    if (outcome.status == 1) {
        const std::size_t error = outcome.err.rfind("error: ");
        const std::size_t name = outcome.err.find(':', error + 7);
        return fmt::format("{} held, refused", PlainlyHeldIn(format, path))
               + outcome.err.substr(name, outcome.err.find('\n', name) - name).substr(0, 70);
    }
    const nlohmann::json page =
        nlohmann::json::parse(ReadFile(folder.PathOf("ledger.json")))["pages"]["matches"];
    EXPECT_EQ(page["held"], PlainlyHeldIn(format, path)) << path;
    std::uint64_t sum = page["kept"];
    std::string classes;
    for (const auto& [key, one] : page["classes"].items()) {
        sum += one["in_sum"] ? one["count"].get<std::uint64_t>() : 0;
        classes += fmt::format("{} {} {}", classes.empty() ? ";" : ",",
                               one["count"].get<std::uint64_t>(), key);
    }
    EXPECT_EQ(page["held"], sum) << path;
    const std::string table = ReadFile(folder.PathOf("table.txt"));
    EXPECT_EQ(page["kept"].get<std::int64_t>(), std::count(table.begin(), table.end(), '\n') - 1)
        << path;
    return fmt::format("{} held, {} read{}", page["held"].get<std::uint64_t>(),
                       page["kept"].get<std::uint64_t>(), classes);
}

/// The result files below the folder, by path.
std::map<std::string, Format> Results(const std::string& folder)
{
    std::map<std::string, Format> results;
    for (const auto& entry : fs::recursive_directory_iterator(folder)) {
        const std::string path = entry.path().string();
        if (!entry.is_regular_file() || entry.path().extension() == ".dta") {
            continue;
        }
        if (const auto format = FormatOf(KindOf(path), path)) {
            results[fs::relative(path, folder).string()] = *format;
        }
    }
    return results;
}

/// "path: as it came" and, where that differs, "path: prepared: ...".
std::vector<std::string> TableOfResults()
{
    std::vector<std::string> table;
    for (const auto& [name, format] : Results(RealDataFolder())) {
        const std::string path = RealDataFolder() + "/" + name;
        const std::string asItCame = Converted(format, path);
        table.push_back(name + ": " + asItCame);
        const TempFolder folder;
        const Outcome outcome = RunPelgrin({"prepare", "--out", folder.PathOf("ready"), path});
        if (outcome.status == 1) {
            table.push_back("  not prepared");
            continue;
        }
        for (const auto& [ready, readyFormat] : Results(folder.PathOf("ready"))) {
            const std::string prepared =
                Converted(readyFormat, folder.PathOf("ready") + "/" + ready);
            if (prepared != asItCame) {
                table.push_back("  prepared " + ready + ": " + prepared);
            }
        }
    }
    return table;
}

TEST(RealLedger, AddsUpForEveryResultAsItCameAndPrepared)
{
    PELGRIN_NEEDS_REAL_DATA();
    const std::vector<std::string> expected = {};
    const std::vector<std::string> table = TableOfResults();
    for (const std::string& row : table) {
        std::cout << row << "\n";
    }
    EXPECT_EQ(table, expected);
}

} // namespace
} // namespace pelgrin::test
