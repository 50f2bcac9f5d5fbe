// Hazards of results: tables of every engine, and pepXML.
#include "LintRows.h"
#include "ResultTexts.h"
#include "support/Support.h"

namespace pelgrin::test {

using Vorlan::test::Repeat;

namespace {

using Cells = std::vector<std::string>;

/// text with the first from as to.
std::string With(std::string text, const std::string& from, const std::string& to)
{
    return text.replace(text.find(from), from.size(), to);
}

const std::string kNativeHeader =
    TabLine({"Dataset Name", "Spectrum Name", "Sequence", "Charge", "ObsMH", "Mass Shift",
             "Main Score", "High Score Better", "Identified Mod Name", "Identified Mod Position",
             "Protein Access", "Before AA", "After AA"});
const std::string kNativeRow =
    TabLine({"run.mgf", "s1", "GASK", "2", "390.2", "0", "1.5", "1", "", "", "P1", "K", "A"});

std::string Native(const std::string& rows)
{
    return kNativeHeader + rows;
}

std::vector<LintRow> NativeRows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::NativeTable, text, findings, reading};
    };
    return {
        row("a plain table", Native(kNativeRow), "", "run.mgf s1 GASK/2 1.5 0 high | K.P1.A"),
        row("empty lines at the end", Native(kNativeRow + "\n\n"), "",
            "run.mgf s1 GASK/2 1.5 0 high | K.P1.A"),
        row("an empty line between rows", Native(kNativeRow + "\n" + kNativeRow),
            "empty_line_ends@3", "run.mgf s1 GASK/2 1.5 0 high | K.P1.A"),
        row("no column ObsMH", With(Native(kNativeRow), "ObsMH", "MH"), "missing_column@1",
            "throws ElementNotFound"),
        row("a header too long for a row",
            With(Native(kNativeRow), "\n", "\t" + Repeat("x", 81919) + "\n"), "",
            "run.mgf s1 GASK/2 1.5 0 high | K.P1.A"),
        row("a NUL in the header", With(Native(kNativeRow), "\n", std::string("\tA\0B\n", 5)), "",
            "run.mgf s1 GASK/2 1.5 0 high | K.P1.A"),
        row("a column in capital letters", With(Native(kNativeRow), "Charge", "CHARGE"),
            "column_spelling@1", "throws ElementNotFound"),
        row("a short row", Native("run.mgf\ts1\tGASK\t2\t390.2\t0\t1.5\t1\n"), "short_row@2",
            "run.mgf s1 GASK/2 1.5 0 high"),
        row("a cell between quotes", With(Native(kNativeRow), "GASK", "\"GASK\""), "quoted_cell@2",
            "run.mgf s1 \"GASK\"/2 1.5 0 high | K.P1.A"),
        row("a score that is no number", Native(kNativeRow + With(kNativeRow, "1.5", "1,5")),
            "number_ends_reading@3",
            "run.mgf s1 GASK/2 1.5 0 high | K.P1.A; throws ConversionError"),
        row("a negative charge", With(Native(kNativeRow), "\t2\t", "\t-2\t"), "negative_charge@2",
            "run.mgf s1 GASK/18446744073709551614 1.5 0 high | K.P1.A"),
        row("a flag as a word", With(Native(kNativeRow), "1.5\t1", "1.5\ttrue"),
            "high_score_better@2", "run.mgf s1 GASK/2 1.5 0 | K.P1.A"),
        row("more modifications than positions",
            With(Native(kNativeRow), "\t\t\t", "\tOxidation (M);Acetyl\t4\t"), "list_length@2",
            "run.mgf s1 GASK/2 1.5 0 Acetyl@0 Oxidation (M)@4 high | K.P1.A"),
        row("a NUL in a row", With(Native(kNativeRow), "GASK", std::string("GA\0SK", 5)),
            "nul_byte@2 short_row@2 number_ends_reading@2 number_ends_reading@2 "
            "number_ends_reading@2 number_ends_reading@2 high_score_better@2",
            "throws ConversionError"),
    };
}

std::vector<LintRow> MsgfRows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::Msgf, kMsgfHeader + text, findings, reading};
    };
    const std::string plain = MsgfRow("GASK");
    return {
        row("neighbours in the peptide", MsgfRow(), "", "run.mgf 1 GASK/2 1e-09 0 | K.P1.A"),
        row("neighbours behind the protein", With(plain, "P1", "P1(pre=K,post=A);P2(pre=-,post=A)"),
            "", "run.mgf 1 GASK/2 1e-09 0 | K.P1.A | -.P2.A"),
        row("an empty line between rows", MsgfRow() + "\n" + MsgfRow(), "",
            "run.mgf 1 GASK/2 1e-09 0 | K.P1.A; run.mgf 1 GASK/2 1e-09 0 | K.P1.A"),
        row("a short row", "run.mzML\t1\n" + MsgfRow(), "short_row@2",
            "run.mgf 1 GASK/2 1e-09 0 | K.P1.A"),
        row("a row too long", MsgfRow() + With(MsgfRow(), "P1", Repeat("P", 81919)) + MsgfRow(),
            "long_line@3",
            "run.mgf 1 GASK/2 1e-09 0 | K.P1.A; run.mgf 1 GASK/2 1e-09 0 | "
            "K.PPPPPPPPPPPPPPPPPPPPPPPPPPPPPP.A"),
        row("a charge with its sign", With(MsgfRow(), "\t2\t", "\t2+\t"), "",
            "run.mgf 1 GASK/2 1e-09 0 | K.P1.A"),
        row("a charge as a word", With(MsgfRow(), "\t2\t", "\ttwo\t"), "number_in_part@2",
            "run.mgf 1 GASK/0 1e-09 0 | K.P1.A"),
        row("a score with a comma", With(MsgfRow(), "1e-9", "1,5e-9"), "number_in_part@2",
            "run.mgf 1 GASK/2 1 0 | K.P1.A"),
        row("no scan number", With(MsgfRow(), "\t1\t", "\t-1\t"), "msgf_no_scan@2",
            "run.mgf -1 GASK/2 1e-09 0 | K.P1.A"),
        row("a protein without neighbours anywhere", With(plain, "P1", "sp|P02769|ALBU_BOVIN"),
            "msgf_protein@2", "run.mgf 1 GASK/2 1e-09 0 | A.p|P0.V"),
        row("a list of proteins where the peptide has neighbours", With(MsgfRow(), "P1", "P1;P2"),
            "msgf_protein@2", "run.mgf 1 GASK/2 1e-09 0 | K.P1;P2.A"),
        row("an accession with a dot in its third place", With(MsgfRow(), "P1", "NP.12"),
            "msgf_protein@2", "run.mgf 1 GASK/2 1e-09 0 | K.P.1.A"),
        row("masses at several places", MsgfRow("-.+42.011GAS+15.995K+1.5.-"), "",
            "throws InvalidValue"),
        row("a mass right behind a mass", MsgfRow("K.GAS+15.995+1.5K.A"), "msgf_mass@2",
            "throws InvalidValue"),
        {"no column Protein", FileKind::Msgf, With(kMsgfHeader, "Protein", "Proteins") + MsgfRow(),
         "missing_column@1", "ends the process"},
    };
}

std::vector<LintRow> MaxQuantRows()
{
    const auto row = [](const std::string& reason, const std::string& rows,
                        const std::string& peptides, const std::string& findings,
                        const std::string& reading) {
        return LintRow{reason, FileKind::MaxQuantMatches,
                       kMsmsHeader + rows + "----\n" + kPeptidesHeader + peptides, findings,
                       reading};
    };
    const std::string two = MsmsRow() + MsmsRow();
    return {
        row("a pair", two, PeptidesRow("0;1"), "",
            "run.mgf 1 GASK/2 90 0 high | K.P1.A | K.P2.A; run.mgf 1 GASK/2 90 0 high | K.P1.A | "
            "K.P2.A"),
        {"no peptides.txt", FileKind::MaxQuantMatches, kMsmsHeader + MsmsRow(),
         "maxquant_no_peptides@0", "throws FileNotReadable"},
        row("IDs out of order", two, PeptidesRow("1;0"), "maxquant_ids@2", "ends the process"),
        row("a separator behind the last ID", two, PeptidesRow("0;") + PeptidesRow("1"),
            "maxquant_ids@2", "ends the process"),
        row("a row that no peptide names", two, PeptidesRow("0"), "maxquant_rows@0",
            "run.mgf 1 GASK/2 90 0 high | K.P1.A | K.P2.A"),
        row("an ID behind the last row", MsmsRow(), PeptidesRow("0;1"), "maxquant_rows@2",
            "run.mgf 1 GASK/2 90 0 high | K.P1.A | K.P2.A"),
        row("a decoy", With(MsmsRow(), "\t2\t\t90", "\t2\t+\t90"), PeptidesRow("0"),
            "maxquant_decoy@2", "run.mgf 1 GASK/2 90 0 high | -.DECOY.-"),
        row("a raw file with dots", With(MsmsRow(), "run", "run.day1"), PeptidesRow("0"),
            "dataset_dots@2", "run.mgf 1 GASK/2 90 0 high | K.P1.A | K.P2.A"),
        row("no score", With(MsmsRow(), "90", ""), PeptidesRow("0"), "number_in_part@2",
            "run.mgf 1 GASK/2 0 0 high | K.P1.A | K.P2.A"),
        row("a short row", "run\tGASK\n" + MsmsRow(), PeptidesRow("0;1"), "short_row@2",
            "run.mgf 1 GASK/2 90 0 high | K.P1.A | K.P2.A"),
        {"a column in small letters", FileKind::MaxQuantMatches,
         With(kMsmsHeader, "Scan number", "scan number") + MsmsRow() + "----\n" + kPeptidesHeader
             + PeptidesRow("0"),
         "column_spelling@1", "ends the process"},
    };
}

std::vector<LintRow> PFind3Rows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::PFind3, kPFind3Header + text, findings, reading};
    };
    return {
        row("a plain row", PFind3Row("0,Acetyl[ProteinN-term];"), "",
            "run.mgf run.1.1.2.0.dta GASK/2 0.001 0 Acetyl@0 | K.P1.A | R.P2.G"),
        row("a modification without its separator", PFind3Row("2,Oxidation[M]"),
            "pfind3_separator@2", "run.mgf run.1.1.2.0.dta GASK/2 0.001 0 | K.P1.A | R.P2.G"),
        row("a last protein without its separator", With(PFind3Row(), "P1/P2/", "P1/P2"),
            "list_length@2 pfind3_separator@2", "run.mgf run.1.1.2.0.dta GASK/2 0.001 0 | K.P1.A"),
        row("no separator at all", With(PFind3Row(), "P1/P2/", "P1"),
            "list_length@2 pfind3_no_protein@2", "nothing"),
        row("one position for two proteins", With(PFind3Row(), "6,K,A/1,R,G/", "6,K,A/"),
            "list_length@2", "run.mgf run.1.1.2.0.dta GASK/2 0.001 0 | K.P1.A | X.P2.X"),
        row("a name of its own", With(PFind3Row(), "run.1.1.2.0.dta", "run.1.1"), "pfind3_name@2",
            "run.1.1.mgf run.1.1 GASK/2 0.001 0 | K.P1.A | R.P2.G"),
    };
}

std::vector<LintRow> PFind28Rows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::PFind28, text, findings, reading};
    };
    const std::string sections = PFind28Section() + kPFind28NoCandidate;
    const std::string modified = "NO1_Modify_Pos=1,2\nNO1_Modify_Name=1,Acetyl (N-term)\n";
    return {
        row("plain sections", kPFind28Head + sections + PFind28Section(modified), "",
            "run.mgf run.1.1.2 GASK/2 0.001 0 | K.P1.A; run.mgf run.1.1.2 GASK/2 0.001 0 Acetyl "
            "(Any N-term)@2 | K.P1.A"),
        row("no [Search]", sections, "pfind28_no_search@0", "nothing"),
        row("a section in front of [Search]", sections + kPFind28Head + sections,
            "pfind28_no_search@31", "run.mgf run.1.1.2 GASK/2 0.001 0 | K.P1.A"),
        row("an earlier layout", kPFind28Head + With(PFind28Section(), "NO1_MH=", "NO1_Mass="),
            "pfind28_place@15", "run.mgf run.1.1.2 GASK/2 0.001 390.2 | K.P1.A"),
        row("a line less", kPFind28Head + With(PFind28Section(), "Intensity=1\n", ""),
            "pfind28_place@9", "nothing"),
        row("an input path with a blank", With(kPFind28Head, "data", "my data") + PFind28Section(),
            "pfind28_blank@3", "my run.1.1.2 GASK/2 0.001 0 | K.P1.A"),
        row("accessions with a blank", kPFind28Head + With(PFind28Section(), "1,P1", "1,P1 x"),
            "pfind28_blank@20", "run.mgf run.1.1.2 GASK/2 0.001 0 | K.P1.A"),
        row("an accession with a comma", kPFind28Head + With(PFind28Section(), "1,P1", "1,P1,x"),
            "list_length@20", "run.mgf run.1.1.2 GASK/2 0.001 0 | K.P1.A | X.x.X"),
        row("a count that is no whole number",
            kPFind28Head + With(PFind28Section(), "1,P1", "1.0,P1"), "list_length@20",
            "run.mgf run.1.1.2 GASK/2 0.001 0"),
    };
}

std::vector<LintRow> SequestRows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::Sequest, kSequestHeader + text, findings, reading};
    };
    return {
        row("a plain row", SequestRow("1", "N-Term(TMT6plex); M3(Oxidation)"), "",
            "run.mgf 1 GASK/2 2.5 0 TMT6plex@0 Oxidation@3 high | X.P1.X"),
        row("cells between quotes", With(SequestRow(), "GASK", "\"GASK\""), "",
            "run.mgf 1 GASK/2 2.5 0 high | X.P1.X"),
        row("a lower rank may hold anything", SequestRow() + With(SequestRow("2"), "2.5", "x"), "",
            "run.mgf 1 GASK/2 2.5 0 high | X.P1.X"),
        row("a modification without number", SequestRow("1", "C-Term(Amidated)"), "sequest_place@2",
            "throws ConversionError"),
        row("a blank in front of a second protein", With(SequestRow(), "P1", "P1; DECOY_P2"),
            "sequest_blank@2", "run.mgf 1 GASK/2 2.5 0 high | X.P1.X | X. DECOY_P2.X"),
        row("a tab between quotes", With(SequestRow(), "GASK", "\"GA\tSK\""),
            "number_ends_reading@2 number_ends_reading@2 sequest_tab@2", "throws ConversionError"),
        row("a spectrum file with dots", With(SequestRow(), "run.raw", "run.day1.raw"),
            "dataset_dots@2", "run.mgf 1 GASK/2 2.5 0 high | X.P1.X"),
        row("an empty score", With(SequestRow(), "2.5", ""), "number_ends_reading@2",
            "throws ConversionError"),
        row("a short row", "1\trun.raw\t1\tGASK\n" + SequestRow(),
            "short_row@2 number_ends_reading@2 number_ends_reading@2 number_ends_reading@2 "
            "number_ends_reading@2",
            "throws ConversionError"),
        {"a mark in front of the first column", FileKind::Sequest,
         "\xEF\xBB\xBF" + kSequestHeader + SequestRow(), "byte_order_mark@1 missing_column@1",
         "throws ElementNotFound"},
    };
}

const std::string kModificationHeader = TabLine(
    {"id", "full_id", "unimod_accession", "full_name", "term_spec", "origin", "classification",
     "diff_mono_mass", "diff_average_mass", "neutral_loss_mono_mass", "neutral_loss_average_mass"});

std::string ModificationRow(const std::string& term = "Anywhere", const std::string& more = "")
{
    return TabLine({"Phospho", "Phospho (S)", "UniMod:21", "Phosphorylation", term, "S",
                    "post-translational", "79.966331", "79.9799", "97.976896", "97.9952" + more});
}

std::vector<LintRow> ModificationRows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::ModificationTable, kModificationHeader + text, findings,
                       reading};
    };
    return {
        row("a plain table", ModificationRow() + "\n", "", "Phospho (S) of 79.9663"),
        row("a row with a note behind it",
            ModificationRow() + ModificationRow("Anywhere", "\tnote"), "table_fields@3",
            "ends the process"),
        row("a short row", "Phospho\tPhospho (S)\n", "table_fields@2", "ends the process"),
        row("a place that is unknown", ModificationRow("N-term"), "term_specificity@2",
            "throws the value 'N-term' was used but is not valid; Invalid term specificity"),
        row("a mass with a comma", With(ModificationRow(), "79.966331", "79,966331"),
            "number_in_part@2", "Phospho (S) of 79"),
    };
}

void Append(std::vector<LintRow>& all, std::vector<LintRow> rows)
{
    all.insert(all.end(), rows.begin(), rows.end());
}

} // namespace

std::vector<LintRow> TableRowsOfEngines()
{
    std::vector<LintRow> all = NativeRows();
    Append(all, MsgfRows());
    Append(all, MaxQuantRows());
    Append(all, PFind3Rows());
    Append(all, PFind28Rows());
    Append(all, SequestRows());
    Append(all, ModificationRows());
    return all;
}

std::vector<LintRow> PepXmlRows()
{
    const auto row = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::PepXml, text, findings, reading};
    };
    const std::string plain = PepXml(Query(Hit()));
    const std::string summary =
        "<search_summary search_engine=\"X! Tandem\" search_engine_version=\"MSFragger-3.7\"/>\n";
    const std::string run = plain.substr(plain.find("<msms_run"),
                                         plain.find("</msms_pipeline") - plain.find("<msms_run"));
    return {
        row("a plain file", plain, "",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("a comment and an arrow inside of attributes",
            With(PepXml("<!-- made by hand -->\n" + Query(Hit())), "\"P1\"", "\"A->B &gt; C\""), "",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.A->B > C.A"),
        row("a file that is cut off in a tag", plain.substr(0, plain.size() - 5), "xml_broken@14",
            "nothing"),
        row("an element that does not end", With(plain, "</search_result>\n", ""), "xml_broken@11",
            "nothing"),
        row("a closing tag that begins with an outer element",
            PepXml(Query(Hit("<search_hit_note></search_hit_note>\n"))), "xml_name_begins@10",
            "nothing"),
        row("a tag that ends in an arrow", PepXml(Query(Hit("<note a=\"1\"->\n"))),
            "xml_arrow@10 xml_broken@12", "nothing"),
        row("a bracket inside of an attribute", With(plain, "\"P1\"", "\"A>B\""), "xml_tag_cut@6",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | X..X"),
        row("a comment with a bracket",
            With(plain, "<search_result>", "<!-- hits > 0, not <more> --><search_result>"),
            "xml_broken@12 xml_comment@5", "nothing"),
        row("a DOCTYPE",
            With(plain, "<msms_pipeline", "<!DOCTYPE msms_pipeline_analysis>\n<msms_pipeline"),
            "xml_doctype@2", "nothing"),
        row("single quotes", With(plain, "protein=\"P1\"", "protein='P1'"), "xml_single_quotes@6",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | X.K.A"),
        row("an escape in a name", With(plain, "run.00001", "a&amp;b.00001"), "xml_entity@4",
            "/data/run.unknown a&amp;b.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("a second run", With(plain, "</msms_pipeline", run + "</msms_pipeline"),
            "further_run@14", "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("a second hit", PepXml(Query(Hit() + Hit("", "GAAK"))), "further_hit@11",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("a second protein", PepXml(Query(Hit("<alternative_protein protein=\"P2\"/>\n"))),
            "further_protein@10", "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("a query without a hit", PepXml(Query("")), "query_without_hit@4", "nothing"),
        row("a blank in a name", With(plain, "run.00001", "my run.00001"), "query_name@4",
            "/data/run.unknown my GASK/2 0.001 0 | K.P1.A"),
        row("a modified terminus",
            PepXml(Query(Hit("<modification_info mod_nterm_mass=\"43.018425\"/>\n"))),
            "terminal_mass@10",
            "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 terminal | K.P1.A"),
        row("a position behind the peptide", PepXml(Query(Hit(Modified("9", "160.03")))),
            "modified_position@11", "/data/run.unknown run.00001.00001.2 GASK/2 0.001 0 | K.P1.A"),
        row("no score named expect", With(plain, "expect", "e-value"), "search_score@6",
            "/data/run.unknown run.00001.00001.2 GASK/2 0 0 | K.P1.A"),
        row("MSFragger with two scores",
            With(With(plain, "<spectrum_query", summary + "<spectrum_query"),
                 "<search_score name=\"deltacn\" value=\"0.1\"/>\n", ""),
            "search_score@7", "/data/run.unknown run.00001.00001.2 GASK/2 0 0 | K.P1.A"),
        row("a charge that is no number",
            With(plain, "assumed_charge=\"2\"", "assumed_charge=\"\""), "number_in_part@4",
            "/data/run.unknown run.00001.00001.2 GASK/0 0.001 0 | K.P1.A"),
    };
}

std::vector<LintRow> AllLintRows()
{
    std::vector<LintRow> all;
    Append(all, MgfRows());
    Append(all, OtherSpectraRows());
    Append(all, FastaRows());
    Append(all, TableRowsOfEngines());
    Append(all, PepXmlRows());
    return all;
}

} // namespace pelgrin::test
