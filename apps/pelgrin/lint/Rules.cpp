#include "lint/Rules.h"

namespace pelgrin {

namespace {

constexpr const char* kNothing = "nothing";

constexpr RuleTexts kTexts[] = {
    {"byte_order_mark", "a byte order mark hides what the first line begins with", "",
     "removes it"},
    {"long_line", "a line of more than 81919 characters ends the reading", "",
     "leaves its record or row out"},
    {"nul_byte", "a line ends at its first NUL", "",
     "leaves its record or row out, or ends a header there"},
    {"lone_return", "a carriage return inside a line ends no line", "",
     "makes it a line feed in a file without line feeds"},

    {"shared_title", "records have one title: the last one is found for all", "",
     "makes titles unique"},
    {"shared_first_word", "titles begin with one word: the last record has that name", "",
     "makes titles unique"},
    {"shared_dotted_name", "titles give one dotted name: the last record has it", "B-24",
     "makes titles unique"},
    {"shared_scan_name", "titles give one scan name: the last record has it", "B-13",
     "makes titles unique"},
    {"shared_across_kinds", "a name of one record is another kind of name of a later one", "",
     "makes titles unique"},
    {"cut_scan", "the scan number at the end of a title loses its last digit", "B-13",
     "writes it so that it stays whole"},
    {"odd_scan", "the scan name is no number: no scan number finds the record", "B-13",
     "writes it so that it stays whole"},
    {"no_title", "a record without title stands under the next one, whose record is not found",
     "B-18", "gives it a title"},
    {"empty_title", "a record whose title is empty has no name", "", "gives it a title"},
    {"other_t_line", "a line that begins with T is taken for the title", "B-23", "drops the line"},
    {"other_b_line", "a line that begins with B is taken for the begin of a record", "B-23",
     "drops the line"},

    {"other_e_line", "a line that begins with E ends the peaks", "B-23", "drops the line"},
    {"no_peaks", "a record without peaks has those of the next record", "B-16", "leaves it out"},
    {"no_end", "a record without END IONS goes on into the next one, or is cut off", "", "ends it"},
    {"no_pepmass", "a record without PEPMASS has that of the one loaded before", "B-10",
     "writes that it is unknown"},
    {"no_charge", "a record without CHARGE has that of the one loaded before", "B-10",
     "writes that it is unknown"},
    {"no_time", "a record without RTINSECONDS has that of the one loaded before", "B-10",
     "writes that it is unknown"},
    {"no_scan", "a record without SCANS has the number of the one loaded before", "B-10",
     "writes the number of its title"},
    {"bad_value", "a header value is no number: that of the record loaded before stays", "B-10",
     "writes that it is unknown"},
    {"value_list", "of a list or range in a header only the first number is read", "",
     "writes a list of charges as unknown"},
    {"negative_charge", "the sign of a charge is dropped, or makes it a huge number", "", kNothing},
    {"line_in_front", "header lines in front of the first record are not read", "",
     "gives CHARGE to records without one, drops the others"},
    {"indented_line", "a header line with a blank in front is not seen", "", "removes the blank"},
    {"key_spelling", "a key in other letter case or with blanks is not seen", "",
     "spells it as the library wants it"},
    {"indented_peak", "a peak line in front of the first that begins with a digit is not read", "",
     "removes the blank; drops a line that begins with a sign or point"},

    {"blank_peak_line", "a blank line inside the peaks repeats the peak before", "B-17",
     "drops the line"},
    {"bad_peak_line",
     "a line that is no peak inside the peaks repeats the peak before; in MGF, inf and nan are "
     "read",
     "B-17", "drops the line"},
    {"no_intensity", "a peak without intensity has the intensity before", "B-17", "drops the line"},
    {"decimal_comma", "a number ends at its decimal comma", "", "leaves the record out"},

    {"dta_precursor", "without mass and charge the precursor m/z is infinite or no number", "B-70",
     "leaves the file out"},
    {"dta_empty_line", "an empty line ends a DTA file", "B-74", "drops the line"},
    {"dta_peaks", "a DTA file without peaks is a spectrum without peaks", "",
     "leaves the file out"},
    {"not_parsed", "mzML and mzXML are opened and not parsed", "B-73",
     "refuses it: convert it to MGF"},

    {"fasta_no_header", "a file whose first line is no header fails, or is empty", "B-78",
     kNothing},
    {"fasta_tab", "a tab does not end an accession", "B-75", "makes the tab a blank"},
    {"fasta_empty_accession", "a header that is empty or begins with a blank has no accession",
     "B-75", "removes the blank in front of one"},
    {"fasta_repeated_accession", "an accession stands for several proteins", "", kNothing},
    {"fasta_description", "\"<\", \"&\" and character 1 of a description become blanks", "B-77",
     kNothing},
    {"fasta_no_residues", "an entry has no residues", "B-76", kNothing},
    {"fasta_lower_case", "lower-case letters of a sequence are dropped", "B-76",
     "makes them capital"},
    {"fasta_other_character", "what is no letter in a sequence is dropped", "B-76", kNothing},

    {"missing_column", "without a column the reading fails, or the process ends", "B-66",
     "refuses it"},
    {"column_spelling", "a column in another spelling is a missing one", "B-66",
     "spells it as the library wants it"},
    {"empty_line_ends", "rows behind an empty line are not read", "B-12", "drops the line"},
    {"short_row", "a row with too few cells is passed over, or ends the reading", "",
     "leaves it out"},
    {"quoted_cell", "double quotes around a cell are part of its value", "", "removes them"},
    {"number_ends_reading", "a cell that is no number ends the reading", "", "leaves the row out"},
    {"number_in_part", "a cell that is no number is read as far as it is one, or as 0", "",
     kNothing},
    {"list_length", "entries of lists that do not belong together are lost or have defaults", "",
     kNothing},
    {"high_score_better", "any text but 1 means that low scores are better", "", kNothing},
    {"dataset_dots", "the name of the spectra file ends at the first dot", "B-69", kNothing},
    {"msgf_no_scan", "a match without scan number finds no spectrum", "", kNothing},
    {"msgf_protein", "accessions are cut by their places", "B-60",
     "writes the cell in a form that is read whole"},
    {"msgf_mass", "a mass right behind a mass stays in the peptide", "B-89", kNothing},
    {"maxquant_decoy", "a decoy has the protein DECOY, and no other", "B-61", kNothing},
    {"maxquant_ids", "\"MS/MS IDs\" that do not count the rows end the process", "B-62",
     "writes a pair of tables that fit"},
    {"maxquant_rows", "rows that no peptide names are not read", "B-62",
     "writes a pair of tables that fit"},
    {"maxquant_no_peptides", "msms.txt cannot be read without peptides.txt", "",
     "writes a pair of tables that fit"},
    {"pfind3_separator", "an entry that no separator ends is not read", "B-63", "ends the entry"},
    {"pfind3_no_protein", "a row without a protein is passed over", "B-63", "ends the entry"},
    {"pfind3_name", "a name of fewer than six pieces names its spectra file as a whole", "",
     kNothing},
    {"pfind28_no_search", "without a line [Search] no match is read", "B-64", kNothing},
    {"pfind28_place", "a line at another place has no value", "B-64", kNothing},
    {"pfind28_blank", "a value ends at its first blank", "B-90", kNothing},
    {"sequest_place", "a modification without number ends the reading", "B-67",
     "leaves the row out"},
    {"sequest_blank", "an accession keeps the blanks around it", "B-65", "removes them"},
    {"sequest_tab", "a tab between quotes ends the cell", "", "leaves the row out"},

    {"xml_broken", "a file that is not well-formed gives no match", "B-68", "refuses it"},
    {"xml_name_begins", "an element ends at a closing tag that begins with its name", "B-28",
     kNothing},
    {"xml_arrow", "a tag that ends in \"->\" goes on to the next \">\"", "B-29", kNothing},
    {"xml_tag_cut", "a \">\" inside an attribute ends the tag", "B-29", "writes it as &gt;"},
    {"xml_comment", "a comment ends at its first \">\"", "B-30", "drops comments"},
    {"xml_doctype", "a DOCTYPE goes on to the next \"]>\"", "B-36", "drops it"},
    {"xml_single_quotes", "an attribute in single quotes is not read", "", "writes double quotes"},
    {"xml_entity", "an escape such as &amp; stays as it is", "", "resolves it"},
    {"further_run", "only the first run is read", "B-52", "writes a file for each run"},
    {"further_hit", "only the first hit of a query is read", "B-52", kNothing},
    {"further_protein", "only the first protein of a hit is read", "B-52", kNothing},
    {"query_without_hit", "a query without a hit gives no match", "", kNothing},
    {"query_name", "the name of a spectrum ends at its first blank", "", kNothing},
    {"terminal_mass", "what sits on a terminus is kept beside and not converted", "", kNothing},
    {"search_score", "the score is the third one, or named expect; else 0 or another one", "B-57",
     kNothing},
    {"modified_position", "a modification outside of its peptide is passed over", "", kNothing},

    {"table_fields", "a row of other than 11 fields ends the process", "B-44", kNothing},
    {"term_specificity", "an unknown term specificity ends the reading", "", kNothing},
};
static_assert(sizeof kTexts / sizeof *kTexts == kRules);

} // namespace

const RuleTexts& TextsOf(Rule rule)
{
    return kTexts[static_cast<std::size_t>(rule)];
}

std::optional<Rule> RuleOf(std::string_view id)
{
    for (std::size_t i = 0; i < kRules; ++i) {
        if (id == kTexts[i].id) {
            return static_cast<Rule>(i);
        }
    }
    return std::nullopt;
}

} // namespace pelgrin
