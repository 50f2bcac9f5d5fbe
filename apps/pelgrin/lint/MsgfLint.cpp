#include <fmt/format.h>

#include "lint/LineFlaws.h"
#include "lint/ResultLint.h"
#include "lint/TableLint.h"

namespace pelgrin {

namespace {

using Cell = TableForm::Column::Cell;

enum Column : std::size_t {
    SpecFile,
    ScanNum,
    Peptide,
    Charge,
    Precursor,
    PrecursorError,
    SpecEValue,
    Protein
};

TableForm Form()
{
    TableForm form;
    form.columns = {{"#SpecFile"},
                    {"ScanNum", Cell::Whole},
                    {"Peptide"},
                    {"Charge", Cell::Whole},
                    {"Precursor", Cell::Decimal},
                    {"PrecursorError(ppm)", Cell::Decimal, "PrecursorError(Da)"},
                    {"SpecEValue", Cell::Decimal},
                    {"Protein"}};
    return form;
}

constexpr std::string_view kTail = "(pre=K,post=R)";

bool EndsInTail(std::string_view text)
{
    if (text.size() < kTail.size()) {
        return false;
    }
    const std::string_view tail = text.substr(text.size() - kTail.size());
    return tail.substr(0, 5) == "(pre=" && tail.substr(6, 6) == ",post=" && tail.back() == ')';
}

std::string_view WithoutEnds(std::string_view text)
{
    return text.size() < 2 ? std::string_view() : text.substr(1, text.size() - 2);
}

bool IsQuoted(std::string_view text)
{
    return text.size() >= 2 && text.front() == '"' && text.back() == '"';
}

/// X.SEQUENCE.Y
bool HasFlanks(std::string_view peptide)
{
    return peptide.size() >= 4 && peptide[1] == '.' && peptide[peptide.size() - 2] == '.';
}

/// The accessions that the library reads from a list, whatever its entries are.
std::vector<std::string_view> ReadList(std::string_view list)
{
    std::vector<std::string_view> accessions = PiecesOf(list, ';');
    for (std::string_view& piece : accessions) {
        piece.remove_suffix(piece.size() < kTail.size() ? 0 : kTail.size());
    }
    return accessions;
}

std::vector<std::string_view> ReadAccessions(std::string_view peptide, std::string_view cell)
{
    const std::string_view shortened = WithoutEnds(cell);
    if (shortened.size() > 1 && shortened[1] == '.') {
        return {shortened};
    }
    if (HasFlanks(peptide)) {
        return {IsQuoted(cell) ? shortened : cell};
    }
    return ReadList(EndsInTail(cell) ? cell : shortened);
}

/// Those that the cell means: entries at ";", without quotes and tails.
std::vector<std::string_view> MeantAccessions(std::string_view cell)
{
    std::vector<std::string_view> accessions =
        PiecesOf(IsQuoted(cell) ? WithoutEnds(cell) : cell, ';');
    for (std::string_view& piece : accessions) {
        piece.remove_suffix(EndsInTail(piece) ? kTail.size() : 0);
    }
    return accessions;
}

void LintProtein(const TableLint& table)
{
    const std::string_view cell = table.Cell(Protein);
    const std::vector<std::string_view> read = ReadAccessions(table.Cell(Peptide), cell);
    const std::vector<std::string_view> meant = MeantAccessions(cell);
    if (read == meant) {
        return;
    }
    std::size_t other = 0;
    while (other < read.size() && other < meant.size() && read[other] == meant[other]) {
        ++other;
    }
    table.Add(Rule::MsgfProtein,
              fmt::format("Protein: {} is read for {}; expected \"P1(pre=K,post=R)\", or a peptide "
                          "with its neighbours",
                          Shown(other < read.size() ? read[other] : ""),
                          Shown(other < meant.size() ? meant[other] : "")));
}

/// A sign right behind a mass is not looked at.
void LintMasses(const TableLint& table)
{
    std::string_view peptide = table.Cell(Peptide);
    if (HasFlanks(peptide)) { // "-" stands for the ends of a protein there
        peptide = peptide.substr(2, peptide.size() - 4);
    }
    for (std::size_t sign = peptide.find_first_of("+-"); sign != std::string_view::npos;) {
        const std::size_t end = peptide.find_first_not_of(".0123456789", sign + 1);
        if (end == std::string_view::npos) {
            return;
        }
        if (peptide[end] == '+' || peptide[end] == '-') {
            table.Add(Rule::MsgfMass,
                      fmt::format("Peptide: {}; expected one mass at a place", Shown(peptide)));
            return;
        }
        sign = peptide.find_first_of("+-", end);
    }
}

} // namespace

void LintMsgf(const std::string& path, Findings& findings)
{
    const TableForm form = Form();
    TableLint table(path, form, findings);
    if (!table.ReadHeader()) {
        return;
    }
    while (table.Next()) {
        table.LintCells();
        if (table.Cell(ScanNum) == "-1") {
            table.Add(Rule::MsgfNoScan, "ScanNum: -1; expected a scan number");
        }
        LintProtein(table);
        LintMasses(table);
    }
}

} // namespace pelgrin
