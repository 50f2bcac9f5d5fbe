#include "ResultTexts.h"

namespace pelgrin::test {

std::string TabLine(const std::vector<std::string>& cells)
{
    std::string line;
    for (const std::string& cell : cells) {
        line += (line.empty() ? "" : "\t") + cell;
    }
    return line + "\n";
}

const std::string kMsgfHeader = TabLine({"#SpecFile", "ScanNum", "Peptide", "Charge", "Precursor",
                                         "PrecursorError(ppm)", "SpecEValue", "Protein"});

std::string MsgfRow(const std::string& peptide)
{
    return TabLine({"run.mzML", "1", peptide, "2", "195.6", "1.5", "1e-9", "P1"});
}

const std::string kPFind3Header =
    TabLine({"File_Name", "Scan_No", "Exp.MH+", "Charge", "Sequence", "Mass_Shift(Exp.-Calc.)",
             "Final_Score", "Modification", "Proteins", "Positions", "Target/Decoy"});

std::string PFind3Row(const std::string& modification)
{
    return TabLine({"run.1.1.2.0.dta", "1", "390.2", "2", "GASK", "0", "0.001", modification,
                    "P1/P2/", "6,K,A/1,R,G/", "target"});
}

const std::string kSequestHeader = TabLine(
    {"Rank", "Spectrum File", "First Scan", "Sequence", "XCorr", "Deltam/z [Da]", "MH+ [Da]",
     "Theo. MH+ [Da]", "Charge", "Protein Accessions", "Modifications", "DeltaCn"});

std::string SequestRow(const std::string& rank, const std::string& modifications)
{
    return TabLine({rank, "run.raw", "1", "GASK", "2.5", "0", "390.2", "390.2", "2", "P1",
                    modifications, "0"});
}

const std::string kMsmsHeader = TabLine({"Raw file", "Sequence", "Scan number", "Charge", "Reverse",
                                         "Score", "Mass error [ppm]", "m/z", "Proteins",
                                         "Retention time", "Modifications", "Modified sequence"});

std::string MsmsRow(const std::string& modifiedSequence, const std::string& modifications)
{
    std::string sequence;
    for (std::size_t i = 0, depth = 0; i < modifiedSequence.size(); ++i) {
        const char c = modifiedSequence[i];
        depth += c == '(' ? 1 : 0;
        sequence += depth == 0 && c >= 'A' && c <= 'Z' ? std::string(1, c) : std::string();
        depth -= c == ')' ? 1 : 0;
    }
    return TabLine({"run", sequence, "1", "2", "", "90", "0.5", "195.6", "P1", "1.5", modifications,
                    modifiedSequence});
}

const std::string kPeptidesHeader =
    TabLine({"Sequence", "Amino acid before", "Amino acid after", "Proteins", "MS/MS IDs"});

std::string PeptidesRow(const std::string& ids)
{
    return TabLine({"GASK", "K", "A", "P1;P2", ids});
}

const std::string kPFind28Head = "[Meta]\n[Search]\nInputPath=C:\\data\\run.mgf\n[Total]\n";

std::string PFind28Section(const std::string& modifications)
{
    return "[Spectrum1]\nInput=run.1.1.2\nCharge=2\nIntensity=1\nMH=390.2\nMZ=195.6\n"
           "Candidate_Total=7\nValidCandidate=1\nNO1_Score=5\nNO1_EValue=0.001\nNO1_MH=390.2\n"
           "NO1_Mass=389.2\nNO1_Matched=1\nNO1_SQ=GASK\nNO1_Length=4\nNO1_Proteins=1,P1\n"
           "NO1_ProteinIDs=1,4\nNO1_PrevNextAA=1,KA\nNO1_ProStartPos=1,5\n"
           + modifications;
}

const std::string kPFind28NoCandidate =
    "[Spectrum2]\nInput=run.1.1.2\nCharge=2\nIntensity=1\nMH=390.2\nMZ=195.6\n"
    "Candidate_Total=0\nValidCandidate=0\n";

std::string PepXml(const std::string& queries, const std::string& baseName)
{
    return "<?xml version=\"1.0\"?>\n<msms_pipeline_analysis>\n<msms_run_summary base_name=\""
           + baseName + "\">\n" + queries + "</msms_run_summary>\n</msms_pipeline_analysis>\n";
}

std::string Query(const std::string& hits)
{
    return "<spectrum_query spectrum=\"run.00001.00001.2\" assumed_charge=\"2\" "
           "precursor_neutral_mass=\"360.185447\">\n<search_result>\n"
           + hits + "</search_result>\n</spectrum_query>\n";
}

std::string Hit(const std::string& inside, const std::string& peptide)
{
    return "<search_hit peptide=\"" + peptide
           + "\" massdiff=\"0\" protein=\"P1\" peptide_prev_aa=\"K\" peptide_next_aa=\"A\">\n"
             "<search_score name=\"xcorr\" value=\"2.5\"/>\n"
             "<search_score name=\"deltacn\" value=\"0.1\"/>\n"
             "<search_score name=\"expect\" value=\"0.001\"/>\n"
           + inside + "</search_hit>\n";
}

std::string Modified(const std::string& position, const std::string& mass)
{
    return "<modification_info>\n<mod_aminoacid_mass position=\"" + position + "\" mass=\"" + mass
           + "\"/>\n</modification_info>\n";
}

} // namespace pelgrin::test
