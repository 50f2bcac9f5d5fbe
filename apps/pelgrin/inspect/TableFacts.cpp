#include "inspect/TableFacts.h"

#include <algorithm>
#include <map>
#include <string_view>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"
#include "files/ResultColumns.h"

namespace pelgrin {

namespace {

constexpr std::size_t kNone = static_cast<std::size_t>(-1);

/// Where a table tells proteins and decoys.
struct Places {
    const char* engine;
    const char* accessions;
    const char* separators;  ///< what ends the first accession
    const char* decoyColumn; ///< nullptr: none
    const char* decoyText;   ///< what marks a decoy there, in lower case
};

const Places& PlacesOf(FileKind kind)
{
    static const std::map<FileKind, Places> places = {
        {FileKind::NativeTable, {"", "Protein Access", ";", nullptr, nullptr}},
        {FileKind::Msgf, {"MS-GF+", "Protein", ";(", nullptr, nullptr}},
        {FileKind::MaxQuantMatches, {"MaxQuant", "Proteins", ";", "Reverse", "+"}},
        {FileKind::MaxQuantPeptides, {"MaxQuant", "Proteins", ";", "Reverse", "+"}},
        {FileKind::PFind3, {"pFind 3", "Proteins", "/", "Target/Decoy", "decoy"}},
        {FileKind::Sequest, {"Proteome Discoverer", "Protein Accessions", ";", nullptr, nullptr}},
    };
    static const Places none = {"", "", "", nullptr, nullptr};
    const auto found = places.find(kind);
    return found == places.end() ? none : found->second;
}

std::vector<std::string> SplitTabs(std::string_view line)
{
    std::vector<std::string> cells;
    for (std::size_t begin = 0; begin <= line.size();) {
        const std::size_t end = std::min(line.find('\t', begin), line.size());
        cells.emplace_back(line.substr(begin, end - begin));
        begin = end + 1;
    }
    return cells;
}

/// The cell at a place; empty when the line has none.
std::string_view CellAt(std::string_view line, std::size_t place)
{
    for (; place > 0; --place) {
        const std::size_t tab = line.find('\t');
        if (tab == std::string_view::npos) {
            return {};
        }
        line.remove_prefix(tab + 1);
    }
    return line.substr(0, line.find('\t'));
}

std::size_t PlaceOf(const std::vector<std::string>& columns, std::string_view name)
{
    const auto found = std::find_if(columns.begin(), columns.end(), [&](const std::string& column) {
        return Lower(column) == Lower(name);
    });
    return found == columns.end() ? kNone : static_cast<std::size_t>(found - columns.begin());
}

/// Compares the header with what the reader needs.
void CompareColumns(TableFacts& table)
{
    const std::vector<ColumnNames>& needed = NeededColumns(table.kind);
    table.needed = needed.size();
    for (const ColumnNames& names : needed) {
        const bool isThere = std::any_of(names.begin(), names.end(), [&](const std::string& name) {
            return std::find(table.columns.begin(), table.columns.end(), name)
                   != table.columns.end();
        });
        const std::size_t place = PlaceOf(table.columns, names.front());
        if (!isThere && place != kNone) {
            table.otherCase.push_back(
                fmt::format("{}, here \"{}\"", ChoiceText(names), table.columns[place]));
        } else if (!isThere) {
            table.missing.push_back(ChoiceText(names));
        }
    }
}

/// As the reader sees a line: that of Sequest drops quotes.
void Clean(FileKind kind, std::string& line)
{
    if (kind == FileKind::Sequest) {
        line.erase(std::remove(line.begin(), line.end(), '"'), line.end());
    }
}

/// Takes the rows of a table one by one.
class Rows {
public:
    explicit Rows(TableFacts& table)
        : table_(table), places_(PlacesOf(table.kind)),
          accession_(PlaceOf(table.columns, places_.accessions))
    {
        if (places_.decoyColumn != nullptr) {
            mark_ = PlaceOf(table.columns, places_.decoyColumn);
            table.decoyColumn = mark_ == kNone ? "" : places_.decoyColumn;
        }
    }

    void Take(const std::string& line)
    {
        ++table_.rows;
        if (accession_ != kNone) {
            std::string_view cell = CellAt(line, accession_);
            cell = WithoutBlanks(cell.substr(0, cell.find_first_of(places_.separators)));
            if (!cell.empty() && cell.front() == '"') {
                cell.remove_prefix(1);
            }
            table_.decoys.Add(cell);
        }
        if (mark_ != kNone && Lower(WithoutBlanks(CellAt(line, mark_))) == places_.decoyText) {
            ++table_.marked;
        }
    }

private:
    TableFacts& table_;
    const Places& places_;
    std::size_t accession_;
    std::size_t mark_ = kNone;
};

} // namespace

TableFacts TableFactsOf(FileKind kind, const std::string& path)
{
    TableFacts table;
    table.kind = kind;
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    lines.Next(line, kind == FileKind::Sequest ? FileLines::Part::Begin : FileLines::Part::Whole);
    Clean(kind, line.begin);
    table.columns = SplitTabs(line.begin);
    CompareColumns(table);
    Rows rows(table);
    while (lines.Next(line)) {
        if (!line.begin.empty()) {
            Clean(kind, line.begin);
            rows.Take(line.begin);
        }
    }
    return table;
}

void Tell(const TableFacts& table, Facts& facts)
{
    facts.push_back({"rows", "Rows", table.rows});
    facts.push_back({"columns", "", table.columns});
    if (table.needed == 0) {
        facts.push_back({"", "Columns", table.columns.size()});
        return;
    }
    const std::size_t there = table.needed - table.missing.size() - table.otherCase.size();
    facts.push_back(
        {"", "Columns",
         fmt::format("{}; {} of {} that are needed", table.columns.size(), there, table.needed)});
    facts.push_back({"missing_columns", "Missing", table.missing});
    facts.push_back({"columns_in_other_case", "Other case", table.otherCase});
    table.decoys.Tell(facts);
    if (!table.decoyColumn.empty()) {
        facts.push_back({"decoy_column", "", table.decoyColumn});
        facts.push_back({"rows_marked_as_decoys", "", table.marked});
        facts.push_back({"", "Marked decoys",
                         fmt::format("{} by the column \"{}\" ({})", table.marked,
                                     table.decoyColumn, ShareText(table.marked, table.rows))});
    }
}

std::string EngineOfTable(FileKind kind)
{
    return kind == FileKind::PFind28 ? "pFind 2" : PlacesOf(kind).engine;
}

PFind28Facts PFind28FactsOf(const std::string& path)
{
    constexpr std::string_view kProteins = "NO1_Proteins=";
    PFind28Facts sections;
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        const std::string_view text = line.begin;
        if (BeginsWith(text, "[Spectrum")) {
            ++sections.sections;
        } else if (BeginsWith(text, "NO1_SQ=")) {
            ++sections.candidates;
        } else if (BeginsWith(text, kProteins)) {
            const std::size_t comma = text.find(',');
            if (comma != std::string_view::npos) {
                sections.decoys.Add(text.substr(comma + 1, text.find(',', comma + 1) - comma - 1));
            }
        }
    }
    return sections;
}

void Tell(const PFind28Facts& sections, Facts& facts)
{
    facts.push_back({"sections", "Sections", sections.sections});
    facts.push_back({"sections_with_candidate", "With candidate", sections.candidates});
    sections.decoys.Tell(facts);
}

} // namespace pelgrin
