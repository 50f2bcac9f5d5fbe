#include "prepare/ResultCopies.h"
#include "prepare/TableCopy.h"

namespace pelgrin {

namespace {

enum Column : std::size_t { Peptide = 2, Protein = 6 };

const std::vector<WantedColumn>& Columns()
{
    static const std::vector<WantedColumn> columns = {
        {"#SpecFile", {"SpecFile"}},
        {"ScanNum"},
        {"Peptide"},
        {"Charge"},
        {"Precursor"},
        {"SpecEValue"},
        {"Protein"},
        {"PrecursorError(ppm)", {}, false},
        {"PrecursorError(Da)", {}, false},
    };
    return columns;
}

constexpr std::size_t kTail = 14; // "(pre=K,post=R)"

bool EndsInTail(std::string_view entry)
{
    return entry.size() >= kTail && entry.substr(entry.size() - kTail, 5) == "(pre="
           && entry.back() == ')';
}

bool HasFlanks(std::string_view peptide)
{
    return peptide.size() >= 4 && peptide[1] == '.' && peptide[peptide.size() - 2] == '.';
}

bool HasDotAt(std::string_view text, std::size_t place)
{
    return text.size() > place && text[place] == '.';
}

/// An entry without the residues around the peptide loses its last 14 characters
/// (B-60): X stands for what is unknown.
std::string WithTails(const std::string& list)
{
    std::string whole;
    for (const std::string& entry : SplitCells(list, ';')) {
        whole += (whole.empty() ? "" : ";") + entry + (EndsInTail(entry) ? "" : "(pre=X,post=X)");
    }
    return whole;
}

/// The form of an unquoted protein cell that the library reads whole; empty when
/// there is none. A dot behind its second letter would make it take the cell for
/// one with ends to be cut; quotes move that dot.
std::string ReadableProtein(const std::string& protein, bool hasFlanks)
{
    if (hasFlanks) {
        return HasDotAt(protein, 2) ? '"' + protein + '"' : protein;
    }
    std::string list = WithTails(protein);
    if (!HasDotAt(list, 2)) {
        return list;
    }
    return HasDotAt(list, 1) ? std::string() : '"' + list + '"';
}

} // namespace

void CopyMsgf(const std::string& source, const std::string& target, Copy& copy)
{
    TableCopy table(source, target, Columns(), copy);
    if (table.Place(7) == TableCopy::kNone && table.Place(8) == TableCopy::kNone) {
        RefuseMissingColumn(copy, "PrecursorError(ppm)");
    }
    table.CopyRows([&](TableCopy::Cells& cells, std::uint64_t line) -> const char* {
        std::string& protein = cells[table.Place(Protein)];
        if (protein.empty() || protein.front() == '[') {
            return nullptr; // with ends that the library cuts
        }
        const std::string readable =
            ReadableProtein(protein, HasFlanks(cells[table.Place(Peptide)]));
        if (readable.empty()) {
            return "protein_unreadable";
        }
        copy.Change("protein_form", line, readable == protein ? 0 : 1);
        protein = readable;
        return nullptr;
    });
}

} // namespace pelgrin
