#include "contract/IdentificationExamples.h"

namespace Vorlan::test {

namespace {

IdentificationExample NativeTable()
{
    return {"NativeTable",
            PepIdentType::CalvexTxt,
            "psms.txt",
            "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
            "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
            "Before AA\tAfter AA\tProtein Start Position\n"
            "a.mgf\trun.00001.00001.2\tPEPMK\t2\t603.280\t15.9949\t2.5\t1\tOxidation (M);Acetyl "
            "(N-term)"
            "\t4;0\tP1;P2\tK;R\tA;-\t7;12\n"
            "a.mgf\trun.00002.00002.3\tSAMPLER\t3\t803.408\t0\t0.000001\t0\t\t\t\t\t\t\n",
            {"run.00001.00001.2", "run.00002.00002.3"},
            "TulkTXTPepIdentIO::Load",
            true};
}

IdentificationExample PepXml(const std::string& testName, PepIdentType::EPepIdentType type)
{
    const auto query = [](const std::string& number) {
        return "<spectrum_query spectrum=\"run." + number
               + " x\" assumed_charge=\"2\" precursor_neutral_mass=\"602.27\">\n<search_result>\n"
                 "<search_hit peptide=\"PEPMK\" massdiff=\"0.01\" protein=\"P1\" "
                 "peptide_prev_aa=\"K\" peptide_next_aa=\"A\">\n"
                 "<search_score name=\"expect\" value=\"0.01\"/>\n"
                 "</search_hit>\n</search_result>\n</spectrum_query>\n";
    };
    return {testName,
            type,
            "psms.pep.xml",
            "<?xml version=\"1.0\"?>\n<msms_pipeline_analysis>\n<msms_run_summary "
            "base_name=\"a\">\n<search_summary>\n</search_summary>\n"
                + query("1") + query("2") + "</msms_run_summary>\n</msms_pipeline_analysis>\n",
            {"run.1", "run.2"},
            ""};
}

IdentificationExample Msgf()
{
    return {"Msgf",
            PepIdentType::MsgfTsv,
            "psms.tsv",
            "#SpecFile\tScanNum\tPeptide\tCharge\tPrecursor\tPrecursorError(ppm)\tSpecEValue\t"
            "Protein\n"
            "a.mzML\t11\tPEPMK\t2\t302.1\t1.5\t1E-12\tP1(pre=K,post=R);P2(pre=R,post=A)\n"
            "a.mzML\t12\tSAMPLER\t3\t268.4\t-2\t0.01\tP3(pre=-,post=A)\n",
            {"11", "12"},
            "MSGFTSVPepIdentIO::Load"};
}

IdentificationExample MaxQuant()
{
    return {"MaxQuant",
            PepIdentType::MaxQuant,
            "msms.txt",
            "Raw file\tSequence\tScan number\tCharge\tReverse\tScore\tMass Error [ppm]\tm/z\t"
            "Proteins\tRetention time\tModifications\tModified sequence\n"
            "a\tPEPMK\t21\t2\t\t80.5\t1.5\t302.1\tP1;P2\t12.5\tOxidation (M)\t_PEPM(ox)K_\n"
            "a\tPEPMK\t22\t3\t\t10\t-2\t201.7\tP1;P2\t13\tUnmodified\t_PEPMK_\n",
            {"21", "22"},
            "MaxQuantTXTPepIdentIO::Load",
            false,
            "peptides.txt",
            "Amino acid before\tAmino acid after\tProteins\tMS/MS IDs\nK\tA\tP1;P2\t0;1\n"};
}

IdentificationExample PFind3()
{
    return {"PFind3",
            PepIdentType::Pfind3Spectra,
            "pFind-Filtered.spectra",
            "File_Name\tSequence\tScan_No\tCharge\tTarget/Decoy\tFinal_Score\t"
            "Mass_Shift(Exp.-Calc.)\tExp.MH+\tProteins\tModification\tPositions\n"
            "run.31.31.2.0.dta\tPEPMK\t31\t2\ttarget\t1e-9\t0.01\t603.28\tP1/P2/\t"
            "4,Oxidation[M];\t7,K,A/0,-,A/\n"
            "run.32.32.3.0.dta\tSAMPLER\t32\t3\tdecoy\t0.5\t-0.01\t803.4\tREV_P1/\t\t9,R,-/\n",
            {"run.31.31.2.0.dta", "run.32.32.3.0.dta"},
            "Pfind3PepIdentIO::Load"};
}

IdentificationExample PFind28()
{
    const auto section = [](const std::string& number) {
        return "[Spectrum" + number + "]\nInput=run." + number + "." + number
               + ".2.dta\nCharge=2\nIntensity=0\nMH=603.28\nMZ=302.14\nCandidate_Total=9\n"
                 "ValidCandidate=1\nNO1_Score=5\nNO1_EValue=1e-5\nNO1_MH=603.27\n"
                 "NO1_Matched_Peaks=7\nNO1_Matched_Intensity=0.5\nNO1_SQ=PEPMK\nNO1_Other=0\n"
                 "NO1_Proteins=1,P1\nNO1_ProteinIDs=1,1\nNO1_PrevNextAA=1,KA\n"
                 "NO1_ProStartPos=1,7\nNO1_Modify_Pos=1,4\nNO1_Modify_Name=1,Oxidation (M)\n";
    };
    return {"PFind28",
            PepIdentType::Pfind28Txt,
            "result.txt",
            "[Search]\nInputPath=C:\\data\\a.mgf\n" + section("41") + section("42"),
            {"run.41.41.2.dta", "run.42.42.2.dta"},
            "PfindTXTPepIdentIO::Load"};
}

IdentificationExample Sequest()
{
    return {"Sequest",
            PepIdentType::SequestTxt,
            "psms.txt",
            "Rank\tSpectrum File\tFirst Scan\tSequence\tXCorr\tDeltam/z [Da]\tMH+ [Da]\tTheo. MH+ "
            "[Da]\tCharge\tProtein Accessions\tModifications\tDeltaCn\n"
            "1\ta.raw\t51\tPEPMK\t2.5\t0.001\t603.28\t603.27\t2\tP1; P2\tM4(Oxidation)\t0\n"
            "1\ta.raw\t52\tSAMPLER\t1.5\t0\t803.4\t803.4\t3\tP3\t\t0\n",
            {"51", "52"},
            "SequestTXTPepIdentIO::Load"};
}

} // namespace

const std::vector<IdentificationExample>& IdentificationExamples()
{
    static const std::vector<IdentificationExample> examples = {
        NativeTable(),
        PepXml("MsFragger", PepIdentType::MsFraggerPepXml),
        PepXml("Comet", PepIdentType::CometPepXml),
        Msgf(),
        MaxQuant(),
        PFind3(),
        PFind28(),
        Sequest(),
    };
    return examples;
}

} // namespace Vorlan::test
