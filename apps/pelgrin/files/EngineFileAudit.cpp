#include "files/EngineFileAudit.h"

#include <algorithm>
#include <map>
#include <optional>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>
#include <fmt/format.h>

#include "CStringProcess.h"
#include "ModificationDB.h"
#include "common/Failure.h"
#include "files/FileLines.h"

namespace pelgrin {

using Vorlan::CStringProcess;

namespace {

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

} // namespace

void CheckPFind3File(const std::string& path)
{
    CheckReadable(path);
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

} // namespace pelgrin
