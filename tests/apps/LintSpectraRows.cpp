// Hazards of MGF, DTA and FASTA files.
#include "LintRows.h"
#include "support/Support.h"

namespace pelgrin::test {

using Vorlan::test::Repeat;

namespace {

const std::string kValues = "PEPMASS=500\nCHARGE=2+\nRTINSECONDS=10\nSCANS=7\n";

/// Nine lines; the peaks are 100/1 and 200/2.
std::string Record(const std::string& title, const std::string& values = kValues,
                   const std::string& peaks = "100 1\n200 2\n")
{
    return "BEGIN IONS\nTITLE=" + title + "\n" + values + peaks + "END IONS\n";
}

std::string WithPeaks(const std::string& peaks)
{
    return Record("a", kValues, peaks);
}

std::string WithValues(const std::string& values)
{
    return Record("a", values);
}

LintRow Mgf(const std::string& reason, const std::string& text, const std::string& findings,
            const std::string& reading)
{
    return {reason, FileKind::Mgf, text, findings, reading};
}

const std::string kPlain = Record("a");

} // namespace

std::vector<LintRow> MgfRows()
{
    return {
        Mgf("a plain record", kPlain, "", "a 500/2/10/7: 100/1 200/2"),
        Mgf("carriage returns in front of line feeds are usual",
            "BEGIN IONS\r\nTITLE=a\r\n100 1\r\n200 2\r\nEND IONS\r\n", "",
            "a 0/0/0/0: 100/1 200/2"),
        Mgf("comments and blank lines around records", "# made by hand\n\n" + kPlain + "\n#\n", "",
            "a 500/2/10/7: 100/1 200/2"),
        Mgf("blanks in front of later peaks", WithPeaks("100 1\n 200\t2 0.5\n"), "",
            "a 500/2/10/7: 100/1 200/2"),
        Mgf("what no record says is carried over by none", Record("a", "") + Record("b", ""), "",
            "a 0/0/0/0: 100/1 200/2; b 0/0/0/0: 100/1 200/2"),
        Mgf("an intensity behind the precursor m/z", WithValues("PEPMASS=500 12345\n"), "",
            "a 500/0/0/0: 100/1 200/2"),

        Mgf("a mark in front of the first record", "\xEF\xBB\xBF" + kPlain + Record("b"),
            "byte_order_mark@1", "b 500/2/10/7: 100/1 200/2"),
        Mgf("a line too long", kPlain + "#" + Repeat("x", 81919) + "\n" + Record("b"),
            "long_line@10", "a 500/2/10/7: 100/1 200/2"),
        Mgf("a NUL inside of a number", WithPeaks("100 1\n20" + std::string(1, '\0') + "0 2\n"),
            "no_intensity@8 nul_byte@8", "a 500/2/10/7: 100/1 20/1"),
        Mgf("a carriage return between two peaks", WithPeaks("100 1\r200 2\n300 3\n"),
            "lone_return@7", "a 500/2/10/7: 100/1 300/3"),
        Mgf("a file of carriage returns is one line", "BEGIN IONS\rTITLE=a\r100 1\rEND IONS\r",
            "lone_return@1 no_title@1", "nothing"),

        Mgf("two records under one title", kPlain + Record("a", kValues, "300 3\n"),
            "shared_title@1", "a 500/2/10/7: 300/3"),
        Mgf("titles that begin with one word",
            Record("Cmpd 1") + Record("Cmpd 2", kValues, "300 3\n"), "shared_first_word@1",
            "Cmpd 500/2/10/7: 300/3; Cmpd 1 500/2/10/7: 100/1 200/2; Cmpd 2 500/2/10/7: 300/3"),
        Mgf("titles that give one dotted name",
            Record("run.1.1.2") + Record("run.2.1.2", kValues, "300 3\n"), "shared_dotted_name@1",
            "run.00001.00001.2 500/2/10/7: 300/3; run.1.1.2 500/2/10/7: 100/1 200/2; run.2.1.2 "
            "500/2/10/7: 300/3"),
        Mgf("scan numbers that lose their last digit and are one then",
            Record("a scan=11") + Record("b scan=12", kValues, "300 3\n"),
            "cut_scan@2 cut_scan@11 shared_scan_name@1",
            "1 500/2/10/7: 300/3; a 500/2/10/7: 100/1 200/2; a scan=11 500/2/10/7: 100/1 200/2; b "
            "500/2/10/7: 300/3; b scan=12 500/2/10/7: 300/3"),
        Mgf("the scan name of one record is the title of the next",
            Record("a scan=7\"") + Record("7", kValues, "300 3\n"), "shared_across_kinds@1",
            "7 500/2/10/7: 300/3; a 500/2/10/7: 100/1 200/2; a scan=7\" 500/2/10/7: 100/1 200/2"),
        Mgf("a scan number that ends the title", Record("a scan=1405"), "cut_scan@2",
            "140 500/2/10/7: 100/1 200/2; a 500/2/10/7: 100/1 200/2; a scan=1405 500/2/10/7: 100/1 "
            "200/2"),
        Mgf("a scan number with a word behind it", Record("1_scan=1405_run"), "odd_scan@2",
            "1405_ru 500/2/10/7: 100/1 200/2; 1_scan=1405_run 500/2/10/7: 100/1 200/2"),
        Mgf("a record without title",
            "BEGIN IONS\n" + kValues + "100 1\nEND IONS\n" + Record("b", kValues, "300 3\n"),
            "no_title@1", "b 500/2/10/7: 100/1"),
        Mgf("no title up to the end", kPlain + "BEGIN IONS\n100 1\nEND IONS\n",
            "no_charge@10 no_pepmass@10 no_scan@10 no_time@10 no_title@10",
            "a 500/2/10/7: 100/1 200/2"),
        Mgf("an empty title", Record(""), "empty_title@2", " 500/2/10/7: 100/1 200/2"),
        Mgf("a tolerance in front of the title", "BEGIN IONS\nTOL=10\nTITLE=a\n100 1\nEND IONS\n",
            "other_t_line@2", " 0/0/0/0: 100/1"),
        Mgf("a base peak behind the title",
            WithValues("BASEPEAK=1\n") + Record("b", kValues, "300 3\n"),
            "no_charge@1 no_pepmass@1 no_scan@1 no_time@1 other_b_line@3",
            "a 0/0/0/0: 100/1 200/2; b 0/0/0/0: 100/1 200/2"),

        Mgf("a line with E among the peaks", WithPeaks("100 1\nENERGY=20\n200 2\n"),
            "other_e_line@8", "a 500/2/10/7: 100/1"),
        Mgf("a record without peaks", Record("a", kValues, "") + Record("b", kValues, "300 3\n"),
            "no_peaks@1", "a 500/2/10/7: 300/3; b 500/2/10/7: 300/3"),
        Mgf("a record without END IONS",
            "BEGIN IONS\nTITLE=a\n" + kValues + "100 1\n" + Record("b", kValues, "300 3\n"),
            "no_end@1",
            "a 500/2/10/7: 100/1 100/1 100/1 100/1 100/1 100/1 100/1 300/3; b 500/2/10/7: 300/3"),
        Mgf("a file that is cut off", "BEGIN IONS\nTITLE=a\n" + kValues + "100 1\n20",
            "no_end@1 no_intensity@8", "a 500/2/10/7: 100/1 20/1"),
        Mgf("a record that states nothing behind one that does", kPlain + Record("b", ""),
            "no_charge@10 no_pepmass@10 no_scan@10 no_time@10",
            "a 500/2/10/7: 100/1 200/2; b 500/2/10/7: 100/1 200/2"),
        Mgf("a charge that is no number",
            kPlain + Record("b", "PEPMASS=600\nCHARGE=unknown\nRTINSECONDS=20\nSCANS=8\n"),
            "bad_value@13", "a 500/2/10/7: 100/1 200/2; b 600/2/20/8: 100/1 200/2"),
        Mgf("lists and ranges",
            WithValues("PEPMASS=500\nCHARGE=2+ and 3+\nRTINSECONDS=10-20\nSCANS=7-9\n"),
            "value_list@4 value_list@5 value_list@6", "a 500/2/10/7: 100/1 200/2"),
        Mgf("a negative charge", WithValues("PEPMASS=500\nCHARGE=2-\nRTINSECONDS=10\nSCANS=7\n"),
            "negative_charge@4", "a 500/2/10/7: 100/1 200/2"),
        Mgf("a charge for all records", "CHARGE=2+\n\n" + WithValues("PEPMASS=500\n"),
            "line_in_front@1", "a 500/0/0/0: 100/1 200/2"),
        Mgf("blanks in front of header lines",
            "BEGIN IONS\n TITLE=a\n PEPMASS=500\nTITLE=b\n100 1\nEND IONS\n",
            "indented_line@2 indented_line@3", "b 0/0/0/0: 100/1"),
        Mgf("a blank in front of the end", "BEGIN IONS\nTITLE=a\n100 1\n END IONS\n" + Record("b"),
            "indented_line@4 no_charge@1 no_end@1 no_pepmass@1 no_scan@1 no_time@1",
            "a 0/0/0/0: 100/1 100/1 100/1 100/1 100/1 100/1 100/1 100/1 100/1 200/2; b 500/2/10/7: "
            "100/1 200/2"),
        Mgf("keys in small letters, and with a blank",
            "BEGIN IONS\nTITLE=a\nPepMass=500\nCHARGE = 2+\n100 1\nEND IONS\n",
            "key_spelling@3 key_spelling@4", "a 0/0/0/0: 100/1"),
        Mgf("a begin in small letters", "begin ions\nTITLE=a\n100 1\nEND IONS\n" + Record("b"),
            "key_spelling@1", "b 500/2/10/7: 100/1 200/2"),
        Mgf("a blank in front of the first peaks", WithPeaks(" 100 1\n\t200 2\n300 3\n"),
            "indented_peak@7 indented_peak@8", "a 500/2/10/7: 300/3"),

        Mgf("a blank line among the peaks", WithPeaks("100 1\n\n200 2\n"), "blank_peak_line@8",
            "a 500/2/10/7: 100/1 100/1 200/2"),
        Mgf("a comment among the peaks", WithPeaks("100 1\n# weak\n200 2\n"), "bad_peak_line@8",
            "a 500/2/10/7: 100/1 100/1 200/2"),
        Mgf("peaks that are not finite", WithPeaks("100 1\nnan 5\ninf 7\n1e999 8\n200 nan\n"),
            "bad_peak_line@10 bad_peak_line@11 bad_peak_line@8 bad_peak_line@9",
            "a 500/2/10/7: 100/1 nan/5 inf/7 inf/8 200/nan"),
        Mgf("peaks of other numbers", WithPeaks("100 1\n-5 3\n0x10 5\n+2 1e-400\n"), "",
            "a 500/2/10/7: 100/1 -5/3 16/5 2/0"),
        Mgf("peaks without intensity", WithPeaks("100 1\n200\n300;5\n"),
            "no_intensity@8 no_intensity@9", "a 500/2/10/7: 100/1 200/1 300/1"),
        Mgf("white space of any kind in front of later peaks",
            WithPeaks("100 1\n\v200 5\n \f300 \v6\n"), "", "a 500/2/10/7: 100/1 200/5 300/6"),
        Mgf("a carriage return in front of a peak", WithPeaks("100 1\n \r200 5\n"), "lone_return@8",
            "a 500/2/10/7: 100/1 200/5"),
        Mgf("a carriage return behind the blank between them",
            WithPeaks("100 1\n200 \r5\n300\t\r6\n"), "lone_return@8 lone_return@9",
            "a 500/2/10/7: 100/1 200/5 300/6"),
        Mgf("a carriage return between m/z and intensity", WithPeaks("100 1\n200\r5\n"),
            "lone_return@8 no_intensity@8", "a 500/2/10/7: 100/1 200/1"),
        Mgf("decimal commas",
            Record("a", "PEPMASS=500,25\nCHARGE=2+\nRTINSECONDS=10\nSCANS=7\n",
                   "100,5 1\n200 2,5\n"),
            "decimal_comma@3 decimal_comma@7 decimal_comma@8", "a 500/2/10/7: 100/0 200/2"),
    };
}

std::vector<LintRow> OtherSpectraRows()
{
    const auto dta = [](const std::string& reason, const std::string& text,
                        const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::DtaFolder, text, findings, reading};
    };
    return {
        dta("a plain file", "1000.5 2\n100 1\n200 2\n\n", "", "a.dta 500.754/2/0/0: 100/1 200/2"),
        dta("a mark is dropped",
            "\xEF\xBB\xBF"
            "1000.5 2\r\n100 1\r\n",
            "", "a.dta 500.754/2/0/0: 100/1"),
        dta("a charge of 0", "1000.5 0\n100 1\n", "dta_precursor@1", "a.dta inf/0/0/0: 100/1"),
        dta("no charge", "1000.5\n100 1\n", "dta_precursor@1", "a.dta inf/0/0/0: 100/1"),
        dta("a negative charge", "1000.5 -2\n100 1\n", "dta_precursor@1",
            "a.dta 1.00728/18446744073709551614/0/0: 100/1"),
        dta("a mass with a comma", "1000,5 2\n100 1\n", "decimal_comma@1",
            "a.dta inf/0/0/0: 100/1"),
        dta("an empty line between peaks", "1000.5 2\n100 1\n\n200 2\n", "dta_empty_line@3",
            "a.dta 500.754/2/0/0: 100/1"),
        dta("white space of any kind", "\v1000.5\f2\n100 1\n\v200\v\v2\n", "",
            "a.dta 500.754/2/0/0: 100/1 200/2"),
        dta("a line of blanks", "1000.5 2\n100 1\n  \n200 2\n", "blank_peak_line@3",
            "a.dta 500.754/2/0/0: 100/1 100/1 200/2"),
        dta("a word among the peaks", "1000.5 2\n100 1\nend\n", "bad_peak_line@3",
            "a.dta 500.754/2/0/0: 100/1 100/1"),
        dta("numbers that a stream does not take", "1000.5 2\n100 1\nnan 5\n0x10 5\n",
            "bad_peak_line@3 no_intensity@4", "a.dta 500.754/2/0/0: 100/1 100/1 0/1"),
        dta("no peaks", "1000.5 2\n", "dta_peaks@1", "a.dta 500.754/2/0/0:"),
        dta("a line too long", "1000.5 2\n100 1\n200 2" + Repeat(" ", 81919) + "\n300 3\n",
            "long_line@3", "a.dta 500.754/2/0/0: 100/1 200/2"),
        {"mzML", FileKind::MzMl, "<mzML></mzML>\n", "not_parsed@0", "nothing"},
    };
}

std::vector<LintRow> FastaRows()
{
    const auto fasta = [](const std::string& reason, const std::string& text,
                          const std::string& findings, const std::string& reading) {
        return LintRow{reason, FileKind::Fasta, text, findings, reading};
    };
    return {
        fasta("plain entries", ">P1 one\nPEPTIDE\nK\n>P2 two\r\nAAA\r\n", "",
              "P1 [one] PEPTIDEK; P2 [two] AAA"),
        fasta("a mark is dropped", "\xEF\xBB\xBF>P1 one\nPEPTIDE\n", "", "P1 [one] PEPTIDE"),
        fasta("text in front of the first header", "proteins\n>P1 one\nPEPTIDE\n",
              "fasta_no_header@1 fasta_lower_case@1", "fails"),
        fasta("no header at all", "\n", "fasta_no_header@1", "nothing"),
        fasta("a tab behind the accession", ">P1\tone\nPEPTIDE\n", "fasta_tab@1",
              "P1\tone [] PEPTIDE"),
        fasta("a blank in front of the accession", "> P1 one\nPEPTIDE\n", "fasta_empty_accession@1",
              " [P1 one] PEPTIDE"),
        fasta("an accession twice", ">P1 one\nPEPTIDE\n>P1 two\nAAA\n",
              "fasta_repeated_accession@3", "P1 [one] PEPTIDE; P1 [two] AAA"),
        fasta("an arrow in a description", ">P1 5'<->3' end & more\nPEPTIDE\n",
              "fasta_description@1", "P1 [5' ->3' end   more] PEPTIDE"),
        fasta("an entry without residues", ">P1 one\n>P2 two\nAAA\n", "fasta_no_residues@1",
              "P1 [one] ; P2 [two] AAA"),
        fasta("soft-masked residues", ">P1 one\nPEPtideK\n", "fasta_lower_case@2", "P1 [one] PEPK"),
        fasta("a stop and a gap", ">P1 one\nPEP-TIDE*\n", "fasta_other_character@2",
              "P1 [one] PEPTIDE"),
        fasta("carriage returns alone", ">P1 one\rPEPTIDE\r", "fasta_no_residues@1 lone_return@1",
              "P1 [one\rPEPTIDE] "),
    };
}

} // namespace pelgrin::test
