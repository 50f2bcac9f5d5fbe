#include "files/EngineFileAudit.h"

#include <algorithm>
#include <cstdlib>
#include <map>
#include <string_view>
#include <utility>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>

#include "CStringProcess.h"
#include "ModificationDB.h"
#include "common/Failure.h"
#include "common/Words.h"
#include "files/FileLines.h"
#include "files/Packed.h"
#include "files/TableRows.h"

namespace pelgrin {

using Vorlan::CStringProcess;
using Vorlan::SearchEngineType;

namespace {

constexpr const char kMonoMass[] = "diff_mono_mass";
constexpr const char* kPlaces[] = {"NORMAL", "PEP_N", "PEP_C", "PRO_N", "PRO_C"};

/// What the library wants of the text before "=": "Phospho[S]", or two of that
/// kind, "A[S](B[T])".
bool IsKey(const std::string& key)
{
    if (key.find("])") == std::string::npos) {
        return key.find('[') != std::string::npos;
    }
    const std::vector<std::string> pieces = CStringProcess::split(key, "](");
    return pieces.size() == 2 && pieces[0].find('[') != std::string::npos
           && pieces[1].find('[') != std::string::npos;
}

/// What is wrong with a definition such as
/// "Phospho[S]=S NORMAL 79.966331 79.9799 1 97.976896 97.9952 H(1)O(3)P(1)".
std::optional<std::string> FaultOfDefinition(const std::string& definition)
{
    const std::vector<std::string> parts = CStringProcess::split(definition, "=");
    if (parts.size() != 2) {
        return "expected a definition with one \"=\" behind the line of its name";
    }
    const std::vector<std::string> items = CStringProcess::split(parts[1], " ");
    if (items.size() < 6) {
        return fmt::format("expected at least 6 items behind \"=\", found {}", items.size());
    }
    if (!IsKey(parts[0])) {
        return "expected \"name[sites]\" before \"=\"";
    }
    if (std::find(std::begin(kPlaces), std::end(kPlaces), items[1]) == std::end(kPlaces)) {
        return fmt::format("\"{}\": expected NORMAL, PEP_N, PEP_C, PRO_N or PRO_C behind the sites",
                           items[1]);
    }
    return std::nullopt;
}

/// Takes masses, and remembers the first one that is read otherwise than it stands there.
class Masses {
public:
    explicit Masses(std::string path) : path_(std::move(path)) {}

    void Take(std::uint64_t line, const std::string& cell, std::string_view mass)
    {
        if (ParseNumber(WithoutBlanks(mass, " \t\r"))) {
            return;
        }
        const std::string text(mass);
        Add(line, cell,
            fmt::format("\"{}\" is read as {}; expected a mass with a decimal point", text,
                        std::strtod(text.c_str(), nullptr)));
    }

    void Add(std::uint64_t line, const std::string& cell, const std::string& fault)
    {
        if (++count_ == 1) {
            first_ = fmt::format("{}:{}: {}: {}", path_, line, cell, fault);
        }
    }

    std::optional<std::string> Warning() const
    {
        if (count_ == 0) {
            return std::nullopt;
        }
        return count_ == 1 ? first_
                           : fmt::format("{} ({} such masses in the file)", first_, count_);
    }

private:
    std::string path_;
    std::string first_;
    std::uint64_t count_ = 0;
};

void TakeTable(const std::string& path, Masses& masses)
{
    TableRows rows(path);
    ResultAudit unused;
    std::vector<std::pair<std::string, std::size_t>> columns;
    for (const char* const name :
         {kMonoMass, "diff_average_mass", "neutral_loss_mono_mass", "neutral_loss_average_mass"}) {
        columns.emplace_back(name, rows.Column(name));
    }
    while (rows.Next(unused)) {
        for (const auto& [name, column] : columns) {
            const std::string_view mass = rows.Cell(column);
            const bool isNeeded = name == kMonoMass && !rows.Row().empty();
            if (isNeeded || !mass.empty()) {
                masses.Take(rows.Number(), name, mass);
            }
        }
    }
}

void TakePFind3(const std::string& path, Masses& masses)
{
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        if (BeginsWith(line.begin, "name") && lines.Next(line)) {
            const std::vector<std::string> parts = CStringProcess::split(line.begin, "=");
            masses.Take(line.number, parts.at(0), CStringProcess::split(parts.at(1), " ").at(2));
        }
    }
}

/// Fields end at single blanks. Without a site among the second one there is no
/// modification.
void TakeVariable(std::uint64_t line, const std::string& key, const std::string& value,
                  Masses& masses)
{
    constexpr const char kSites[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZnc[]";
    const std::vector<std::string> fields = CStringProcess::split(value, " ");
    if (ParseNumber(fields[0]) == 0.0) {
        return; // "0.0 site_07 1" stands for none
    }
    if (fields.size() < 2 || fields[1].find_first_of(kSites) == std::string::npos) {
        masses.Add(line, key,
                   fmt::format("\"{}\" makes no modification; expected a mass, one blank and "
                               "sites",
                               value));
        return;
    }
    masses.Take(line, key, fields[0]);
}

/// "variable_mod_01 = 15.9949 M 3", "add_C_cysteine = 57.021464".
void TakeMSFragger(const std::string& path, Masses& masses)
{
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        const std::string_view text = std::string_view(line.begin).substr(0, line.begin.find('#'));
        const std::size_t equals = text.find('=');
        if (equals == std::string_view::npos) {
            continue;
        }
        const std::string key(WithoutBlanks(text.substr(0, equals), " \t\r"));
        const std::string_view value = WithoutBlanks(text.substr(equals + 1), " \t\r");
        if (value.empty()) {
            continue;
        }
        if (BeginsWith(key, "variable_mod_")) {
            TakeVariable(line.number, key, std::string(value), masses);
        } else if (BeginsWith(key, "add_") && key != "add_topN_complementary") { // no mass
            masses.Take(line.number, key, value.substr(0, value.find(' ')));
        }
    }
}

} // namespace

void CheckPFind3File(const std::string& path)
{
    CheckReadable(path);
    RefusePacked(path);
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        if (line.length > kLongestLine) {
            throw Failure(fmt::format("{}:{}: the line is longer than {} bytes", path, line.number,
                                      kLongestLine));
        }
        if (line.begin.compare(0, 4, "name") != 0) {
            continue;
        }
        FileLines::Line definition;
        lines.Next(definition);
        if (const auto fault = FaultOfDefinition(definition.begin)) {
            throw Failure(fmt::format("{}:{}: {}", path, definition.number, *fault));
        }
    }
}

void CheckTermSpecificities(const std::string& path)
{
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    lines.Next(line);
    std::map<std::string, int> columns;
    CStringProcess::GetAttributesFromFirstRow(line.begin, columns, "\t");
    const auto column = static_cast<std::size_t>(columns.at("term_spec"));
    while (lines.Next(line)) {
        if (line.begin.empty()) {
            continue;
        }
        const std::string text = CStringProcess::split(line.begin, "\t").at(column);
        try {
            Vorlan::CResidueModification().setTermSpecificity(text);
        } catch (const OpenMS::Exception::InvalidValue&) {
            throw Failure(fmt::format("{}:{}: term_spec \"{}\": expected \"Anywhere\", \"Any "
                                      "N-term\", \"Any C-term\", \"Protein N-term\" or \"Protein "
                                      "C-term\"",
                                      path, line.number, text));
        }
    }
}

std::optional<std::string> WarningOfMasses(const std::string& path,
                                           SearchEngineType::ESearchEngineType engine)
{
    Masses masses(path);
    switch (engine) {
    case SearchEngineType::CalvexTxt: TakeTable(path, masses); break;
    case SearchEngineType::Pfind3Spectra: TakePFind3(path, masses); break;
    case SearchEngineType::MsFraggerPepXml: TakeMSFragger(path, masses); break;
    default: break;
    }
    return masses.Warning();
}

} // namespace pelgrin
