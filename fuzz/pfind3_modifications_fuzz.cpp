// Modification lists of pFind 3 against a plain reader.
//
// The input is the text of a list (see Expanded). The documented exceptions are
// compared, any other end is a finding.
#include <cstdint>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "FuzzSupport.h"
#include "PlainModifications.h"
#include "moddb/PFind3Modifications.h"

namespace {

using namespace Vorlan;
using Records = std::vector<CResidueModification>;

[[noreturn]] void Fail(int sourceLine, const std::string& message)
{
    throw OpenMS::Exception::InvalidParameter(
        "ModificationDB", sourceLine, "CModificationsDBEnginePFind3::readFromSearchEngineFile",
        message);
}

std::string UpToBracket(const std::string& text, int sourceLine, const std::string& number)
{
    if (text.find('[') == std::string::npos) {
        Fail(sourceLine,
             "There was expected to be \"mod[specificity]\" before \"=\" in line" + number);
    }
    return text.substr(0, text.find('['));
}

std::string PlainId(const std::string& key, const std::string& number)
{
    if (key.find("])") == std::string::npos) {
        return UpToBracket(key, 1204, number);
    }
    std::vector<std::string> pieces = fuzz::Pieces(key, "](");
    if (pieces.size() != 2) {
        pieces = {"", ""};
    }
    const std::string first = UpToBracket(pieces[0], 1194, number);
    return first + "(" + UpToBracket(pieces[1], 1194, number) + ")";
}

CResidueModification PlainRecord(const std::string& definition, const std::string& number)
{
    static const std::map<std::string, std::string> positions = {{"NORMAL", "Anywhere"},
                                                                 {"PEP_C", "Any C-term"},
                                                                 {"PEP_N", "Any N-term"},
                                                                 {"PRO_C", "Protein C-term"},
                                                                 {"PRO_N", "Protein N-term"}};
    const std::vector<std::string> parts = fuzz::Pieces(definition, "=");
    if (parts.size() != 2) {
        Fail(1176, "There was expected to be (and only be) one \"=\" in line" + number);
    }
    const std::vector<std::string> items = fuzz::Pieces(parts[1], " ");
    if (items.size() < 6) {
        Fail(1182, "There are no sufficient items after \"=\"");
    }
    CResidueModification record;
    record.setId(PlainId(parts[0], number));
    record.setFullId(parts[0]);
    record.setDiffMonoMass(fuzz::Number(items[2]));
    if (positions.count(items[1]) == 0) {
        Fail(1228, "Unexpected term specificity" + items[1] + "in line " + number + ".");
    }
    record.setTermSpecificity(positions.at(items[1]));
    record.setOrigin(items[0]);
    if (items[0] == "ABCDEFGHIJKLMNOPQRSTUVWXYZ" && items[1] != "NORMAL") {
        record.setOrigin(std::string(1, items[1].back()) + "-term");
    }
    record.setSourceClassification(CResidueModification::UNKNOWN);
    return record;
}

void PlainRead(const std::string& text, Records& records)
{
    std::vector<std::string> lines = fuzz::LinesOf(text);
    if (!lines.empty() && lines[0].substr(0, lines[0].find('=')) == "@NUMBER_MODIFICATION") {
        lines.erase(lines.begin());
    }
    std::size_t k = 0;
    for (std::size_t i = 0; i < lines.size(); ++i, ++k) {
        if (lines[i].compare(0, 4, "name") == 0) {
            ++i;
            const std::string definition = i < lines.size() ? lines[i] : "";
            records.push_back(PlainRecord(definition, std::to_string(2 * k + 2)));
        }
    }
}

/// The records under the id of each: all with this id, and no other name.
void CheckDatabase(const CModificationsDB& database, const Records& records)
{
    constexpr std::size_t kMostNamed = 20; // each walks over all records
    constexpr auto kAny = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
    fuzz::Check(database.getNumberOfModifications() == records.size(), "the number of records");
    for (std::size_t i = 0; i < records.size() && i < kMostNamed; ++i) {
        std::string expected;
        for (const CResidueModification& record : records) {
            const bool isNever = record.getFullId() == "Oxidation (Protein N-term";
            expected += record.getId() == records[i].getId() && !isNever ? fuzz::Dump(record) : "";
        }
        std::set<const CResidueModification*> found;
        database.searchModifications(found, records[i].getId(), "", kAny);
        std::string seen;
        for (const CResidueModification* record : found) {
            seen += fuzz::Dump(*record);
        }
        fuzz::CheckSame(seen, expected, "the records under an id");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static fuzz::MemoryFile file;
    const std::string text = fuzz::Expanded(fuzz::TextOf(data, size));
    file.Write(text);
    const fuzz::ModOutcome expected =
        fuzz::ModOutcomeOf([&](Records& records) { PlainRead(text, records); });
    const fuzz::ModOutcome seen =
        fuzz::ModOutcomeOf([](Records& records) { ReadPFind3Modifications(file.Path(), records); });
    fuzz::CheckSame(seen.exception, expected.exception, "the exception");
    fuzz::CheckSame(fuzz::Dump(seen.records), fuzz::Dump(expected.records),
                    "a list reads as through the plain reader");
    if (seen.exception.empty()) {
        CheckDatabase(CModificationsDBEnginePFind3(file.Path()), expected.records);
    }
    return 0;
}
