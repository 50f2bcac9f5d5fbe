// The table of modifications: the reader against a plain one, the dump against
// a plain one, and what a dump must bring back.
//
// The input is the text of a table (see Expanded). A malformed table ends the
// process, so it is mended first: the usual header is put in front where a
// column is missing, and rows of the wrong width are taken out. An exception for
// an unknown position is expected, any other end is a finding.
#include <algorithm>
#include <cstdint>
#include <iterator>
#include <sstream>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "PlainModifications.h"
#include "moddb/ModificationTable.h"
#include "util/LineReader.h"

namespace {

using namespace Vorlan;
using Lines = std::vector<std::string>;
using Records = std::vector<CResidueModification>;

const Lines kColumns = {"id",
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

std::string Joined(const Lines& lines, const char* separator)
{
    std::string text;
    for (std::size_t i = 0; i < lines.size(); ++i) {
        text += (i > 0 ? separator : "") + lines[i];
    }
    return text;
}

/// The places of the columns in a row; empty when one is missing.
std::vector<std::size_t> Places(const std::string& headerRow)
{
    const Lines header = fuzz::Pieces(headerRow, "\t");
    std::vector<std::size_t> places;
    for (const std::string& column : kColumns) {
        const auto place = std::find(header.begin(), header.end(), column);
        if (place == header.end()) {
            return {};
        }
        places.push_back(static_cast<std::size_t>(place - header.begin()));
    }
    return places;
}

bool IsRow(const std::string& line, const std::vector<std::size_t>& places)
{
    return fuzz::Pieces(line, "\t").size() == kColumns.size()
           && *std::max_element(places.begin(), places.end()) < kColumns.size();
}

/// The text itself when it is well-formed, else the mended one.
std::string Mended(const std::string& text)
{
    Lines lines = fuzz::LinesOf(text);
    bool isMended = false;
    if (lines.empty() || Places(lines[0]).empty()) {
        lines.insert(lines.begin(), Joined(kColumns, "\t"));
        isMended = true;
    }
    const std::vector<std::size_t> places = Places(lines[0]);
    const auto end = std::remove_if(lines.begin() + 1, lines.end(), [&](const std::string& line) {
        return !line.empty() && !IsRow(line, places);
    });
    isMended = isMended || end != lines.end();
    lines.erase(end, lines.end());
    return isMended ? Joined(lines, "\n") + "\n" : text;
}

void PlainRead(const std::string& text, Records& records)
{
    const Lines lines = fuzz::LinesOf(text);
    const std::vector<std::size_t> places = Places(lines[0]);
    for (std::size_t i = 1; i < lines.size(); ++i) {
        const Lines cells = fuzz::Pieces(lines[i], "\t");
        if (cells.empty()) {
            continue;
        }
        CResidueModification record;
        record.setId(cells[places[0]]);
        record.setFullId(cells[places[1]]);
        record.setUniModAccession(cells[places[2]]);
        record.setFullName(cells[places[3]]);
        record.setTermSpecificity(cells[places[4]]);
        record.setOrigin(cells[places[5]]);
        record.setSourceClassification(OpenMS::String(cells[places[6]]));
        record.setDiffMonoMass(fuzz::Number(cells[places[7]]));
        record.setDiffAverageMass(fuzz::Number(cells[places[8]]));
        record.setNeutralLossMonoMass(fuzz::Number(cells[places[9]]));
        record.setNeutralLossAverageMass(fuzz::Number(cells[places[10]]));
        records.push_back(record);
    }
}

std::string PlainDump(const Records& records)
{
    const char* const classifications[] = {"artifact",
                                           "hypothetical",
                                           "natural",
                                           "post-translational",
                                           "multiple",
                                           "chemical derivative",
                                           "isotopic label",
                                           "pre-translational",
                                           "other glycosylation",
                                           "n-linked glycosylation",
                                           "aa substitution",
                                           "other",
                                           "non-standard residue",
                                           "co-translational",
                                           "o-linked glycosylation",
                                           "-"};
    const char* const positions[] = {"Anywhere", "Any C-term", "Any N-term", "Protein C-term",
                                     "Protein N-term"};
    std::string text = Joined(kColumns, "\t") + "\n";
    for (const CResidueModification& record : records) {
        text += Joined({record.getId(), record.getFullId(), record.getUniModAccession(),
                        record.getFullName(), positions[record.getTermSpecificity()],
                        record.getOrigin(), classifications[record.getSourceClassification()]},
                       "\t");
        for (const double mass :
             {record.getDiffMonoMass(), record.getDiffAverageMass(),
              record.getNeutralLossMonoMass(), record.getNeutralLossAverageMass()}) {
            text += fuzz::MassText(mass, "%.6f");
        }
        text += "\n";
    }
    return text;
}

/// A line that would be cut when it is read.
bool HasLongLine(const std::string& text)
{
    std::istringstream lines(text);
    std::string line;
    bool isLong = false;
    while (!isLong && std::getline(lines, line)) {
        isLong = line.size() > LineReader::kMaxLineLength;
    }
    return isLong;
}

std::string DumpOfFile(const fuzz::MemoryFile& file)
{
    const CModificationsDBEngineCalvex database(file.Path());
    static fuzz::MemoryFile dump;
    database.writeToFile(dump.Path());
    return dump.Read();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    const std::string text = Mended(fuzz::Expanded(fuzz::TextOf(data, size)));
    file.Write(text);
    const fuzz::ModOutcome expected =
        fuzz::ModOutcomeOf([&](Records& records) { PlainRead(text, records); });
    const fuzz::ModOutcome seen = fuzz::ModOutcomeOf(
        [](Records& records) { ReadModificationTable(file.Path(), "fuzz", records); });
    fuzz::CheckSame(seen.exception, expected.exception, "the exception");
    fuzz::CheckSame(fuzz::Dump(seen.records), fuzz::Dump(expected.records),
                    "a table reads as through the plain reader");
    if (!seen.exception.empty()) {
        return 0;
    }
    const std::string dump = DumpOfFile(file);
    fuzz::CheckSame(dump, PlainDump(expected.records), "the dump");
    if (HasLongLine(dump)) {
        return 0; // written out, a row may become longer than a line may be
    }
    file.Write(dump);
    fuzz::CheckSame(DumpOfFile(file), dump, "the dump of a dump that was read back");
    return 0;
}
