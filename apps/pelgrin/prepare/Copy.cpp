#include "prepare/Copy.h"

#include "common/Failure.h"

namespace pelgrin {

namespace {

const std::map<std::string, const char*>& Texts()
{
    static const std::map<std::string, const char*> texts = {
        // Of the whole file.
        {"unpacked", "file that was packed"},
        {"byte_order_mark", "byte order mark dropped"},
        {"utf16", "file in UTF-16, written as UTF-8"},
        {"latin1", "lines in Latin-1, written as UTF-8"},
        {"line_ends", "lines with a carriage return at their end"},
        {"lone_carriage_return", "carriage returns alone, now line ends"},
        // Of spectra.
        {"blank_line", "blank lines dropped"},
        {"comment_line", "comment lines dropped"},
        {"line_outside", "lines outside of records dropped"},
        {"line_no_peak", "lines that are no peak dropped"},
        {"line_no_header", "lines that are no header dropped"},
        {"leading_blank", "lines with a blank in front"},
        {"key_spelling", "keys spelled as the library wants them"},
        {"header_repeated", "header lines that a later one overrides"},
        {"nul_cut", "lines that end at a NUL byte"},
        {"end_ions_added", "records without END IONS"},
        {"header_filled", "header values filled in"},
        {"value_unreadable", "header values that are no number, now unknown"},
        {"charge_list", "lists of charges, now unknown"},
        {"charge_of_file", "charges taken from the head of the file"},
        {"title_made", "records without a title"},
        {"title_rewritten", "titles rewritten"},
        {"name_made_unique", "records whose scan and charge are not their own"},
        {"without_peaks", "records without peaks"},
        {"decimal_comma", "records with decimal commas"},
        {"long_line", "records with a line of more than 81919 characters"},
        {"nul_byte", "records or rows with a NUL byte"},
        {"header_too_long", "records with too many header lines"},
        {"without_precursor", "DTA files without mass and charge"},
        {"several_spectra", "DTA files with several spectra"},
        // Of tables.
        {"column_spelling", "columns spelled as the library wants them"},
        {"quotes_dropped", "rows with quotes, dropped"},
        {"blank_row", "blank rows dropped"},
        {"short_row", "rows with too few cells"},
        {"quoted_tab", "rows with a tab between quotes"},
        {"cell_no_number", "rows with a cell that is no number"},
        {"protein_form", "protein cells written so that they are read whole"},
        {"protein_unreadable", "rows with a protein that no form keeps whole"},
        {"accession_blank", "rows with blanks around accessions"},
        {"modification_form", "modification cells written so that they are read whole"},
        {"separator_added", "rows with a separator added"},
        {"spectrum_renamed", "spectra under their new names"},
        {"name_of_several", "matches with a name that several spectra had"},
        {"peptides_made", "rows of peptides.txt made anew"},
        {"row_without_protein", "rows without a protein"},
        // Of XML.
        {"attribute_quotes", "attributes in single quotes"},
        {"attribute_text", "attributes written so that they are read right"},
        {"markup_dropped", "comments and instructions dropped"},
        {"run_split", "further runs, each in a file of its own"},
        {"empty_run", "runs without anything, dropped"},
        {"end_added", "ends of elements added to a file that is cut off"},
        {"cut_off", "queries in which the file ends"},
        // Of proteins.
        {"header_tab", "headers with a tab behind the accession"},
        {"lower_case", "lines with lower-case residues"},
        {"line_before_header", "lines before the first protein dropped"},
    };
    return texts;
}

void Add(ClassCounts& tallies, const char* key, const std::string& file, std::uint64_t line,
         std::uint64_t count)
{
    if (count == 0) {
        return;
    }
    ClassCount& tally = tallies[key];
    if (tally.count == 0) {
        tally.firstLine = line;
        tally.firstFile = file;
    }
    tally.count += count;
}

} // namespace

void Copy::Change(const char* key, std::uint64_t line, std::uint64_t count)
{
    Add(changes, key, file, line, count);
}

void Copy::LeaveOut(const char* key, std::uint64_t line)
{
    Add(leftOut, key, file, line, 1);
}

void FailAsChanged(const std::string& path)
{
    throw Failure(path + ": has changed while it was copied; expected inputs to stay as they are");
}

const char* TextOfClass(const std::string& key)
{
    const auto text = Texts().find(key);
    return text == Texts().end() ? key.c_str() : text->second;
}

std::vector<std::string> ClassKeys()
{
    std::vector<std::string> keys;
    for (const auto& [key, text] : Texts()) {
        keys.push_back(key);
    }
    return keys;
}

} // namespace pelgrin
