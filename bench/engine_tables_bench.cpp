// The tables of the search engines, each beside a native result table of the
// same number of bytes.
#include <algorithm>
#include <cstdint>
#include <filesystem>
#include <fstream>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include <benchmark/benchmark.h>

#include "PeptideIdentificationIO.h"
#include "support/Claims.h"
#include "support/Inputs.h"
#include "support/SpecifiedMods.h"

namespace {

using Matches = std::vector<Vorlan::PeptideIdentification>;
using Vorlan::PepIdentType;

constexpr std::size_t kFullSize = 150000000; // bytes

// ---- One match, as every engine writes it ---------------------------------------

struct Match {
    std::string scan, sequence, protein;
    std::size_t charge = 2;
    std::size_t oxidised = 0; ///< place of the modified M, 0 for none
    std::string mz, mh, score;
};

std::string Decimal(bench::Random& random, std::uint64_t low, std::uint64_t high,
                    std::size_t decimals)
{
    std::string text;
    bench::AppendDecimal(text, random.Between(low, high), decimals);
    return text;
}

class MatchMaker {
public:
    Match Next()
    {
        Match match;
        match.scan = std::to_string(++scan_);
        match.sequence.assign(random_.Between(7, 25), 'A');
        for (char& residue : match.sequence) {
            residue = "ACDEFGHIKLMNPQRSTVWY"[random_.Between(0, 19)];
        }
        match.oxidised = match.sequence.find('M') + 1; // npos + 1 is 0
        const std::string number = std::to_string(random_.Between(10000, 99999));
        match.protein = "sp|P" + number + "|GENE" + number + "_HUMAN";
        match.charge = random_.Between(2, 4);
        match.mz = Decimal(random_, 30000000, 120000000, 5);
        match.mh = Decimal(random_, 700000000, 3500000000, 6);
        match.score = Decimal(random_, 0, 999999, 4);
        return match;
    }

private:
    bench::Random random_{7};
    std::size_t scan_ = 0;
};

// ---- The formats ------------------------------------------------------------------

std::string NativeRow(const Match& m)
{
    return "run01.mgf\trun01." + m.scan + '.' + m.scan + '.' + std::to_string(m.charge) + '\t'
           + m.sequence + '\t' + std::to_string(m.charge) + '\t' + m.mh + "\t0.001234\t" + m.score
           + "\t1\t" + (m.oxidised == 0 ? "\t" : "Oxidation (M)\t" + std::to_string(m.oxidised))
           + '\t' + m.protein + "\tK\tA\t17\n";
}

std::string MsgfRow(const Match& m)
{
    std::string peptide = m.sequence;
    if (m.oxidised != 0) {
        peptide.insert(m.oxidised, "+15.995");
    }
    return "run01.mzML\tcontrollerType=0 controllerNumber=1 scan=" + m.scan + '\t' + m.scan
           + "\tHCD\t" + m.mz + "\t0\t-0.5443\t" + std::to_string(m.charge) + '\t' + peptide + '\t'
           + m.protein + "(pre=K,post=A)\t251\t240\t" + m.score + "E-15\t1.136E-9\n";
}

std::string MaxQuantRow(const Match& m)
{
    std::string modified = '_' + m.sequence + '_';
    if (m.oxidised != 0) {
        modified.insert(m.oxidised + 1, "(Oxidation (M))");
    }
    return "run01\t" + m.scan + "\t4711\t" + m.sequence + '\t' + std::to_string(m.sequence.size())
           + "\t0\t" + (m.oxidised == 0 ? "Unmodified" : "Oxidation (M)") + '\t' + modified + '\t'
           + m.protein + '\t' + std::to_string(m.charge) + '\t' + m.mz + "\t1234.5\t0.35\t"
           + m.score + "\t31.25\t0.0021\t\t"
           + "y3;y4;y5;y6;b2;b3\t347.2;460.3;559.3;660.4;201.1;314.2\n";
}

std::string PFind3Row(const Match& m)
{
    const std::string charge = std::to_string(m.charge);
    return "run01." + m.scan + '.' + m.scan + '.' + charge + ".0.dta\t" + m.scan + '\t' + m.mh
           + '\t' + charge + "\t0\t" + m.sequence + '\t' + m.mh + "\t0.003098\t35.299588\t"
           + m.score + "e-013\t"
           + (m.oxidised == 0 ? "" : std::to_string(m.oxidised) + ",Oxidation[M];") + "\t3\t"
           + m.protein + "/\t173,K,A/\t1|0|\ttarget\t0\t0.948977\t131070\n";
}

std::string PFind28Section(const Match& m)
{
    const std::string charge = std::to_string(m.charge);
    return "[Spectrum" + m.scan + "]\nInput=run01." + m.scan + '.' + m.scan + '.' + charge
           + ".dta\nCharge=" + charge + "\nIntensity=0.00000\nMH=" + m.mh + "\nMZ=" + m.mz
           + "\nCandidate_Total=2000\nValidCandidate=1\nNO1_Score=" + m.score
           + "\nNO1_EValue=1.537127E-001\nNO1_MH=" + m.mh
           + "\nNO1_MatchedIons=12\nNO1_Rank=1\nNO1_SQ=" + m.sequence
           + "\nNO1_Missed=0\nNO1_Proteins=1," + m.protein
           + "\nNO1_ProteinIDs=1,4292\nNO1_PrevNextAA=1,KA\nNO1_ProStartPos=1,17\n"
           + (m.oxidised == 0 ? "NO1_Modify_Pos=0\nNO1_Modify_Name=0\n"
                              : "NO1_Modify_Pos=1," + std::to_string(m.oxidised)
                                    + "\nNO1_Modify_Name=1,Oxidation (M)\n");
}

std::string SequestRow(const Match& m)
{
    return "\"-117\"\t\"High\"\t\"" + m.sequence + "\"\t\""
           + (m.oxidised == 0 ? "" : "M" + std::to_string(m.oxidised) + "(Oxidation)") + "\"\t\""
           + m.protein + "\"\t\"0\"\t\"" + std::to_string(m.charge) + "\"\t\"0.0000\"\t\"1\"\t\""
           + m.mz + "\"\t\"" + m.mh + "\"\t\"" + m.mh
           + "\"\t\"1.30\"\t\"0.00115\"\t\"6107200.5\"\t\"CID\"\t\"" + m.scan
           + "\"\t\"run01.raw\"\t\"465.7\"\t\"341.9\"\t\"7.95\"\n";
}

struct Format {
    PepIdentType::EPepIdentType type;
    const char* file;
    const char* head;
    std::string (*row)(const Match&);
};

const std::map<std::string, Format> kFormats = {
    {"native table",
     {PepIdentType::CalvexTxt, "native.txt",
      "Dataset Name\tSpectrum Name\tSequence\tCharge\tObsMH\tMass Shift\tMain Score\t"
      "High Score Better\tIdentified Mod Name\tIdentified Mod Position\tProtein Access\t"
      "Before AA\tAfter AA\tProtein Start Position\n",
      NativeRow}},
    {"MS-GF+",
     {PepIdentType::MsgfTsv, "msgf.tsv",
      "#SpecFile\tSpecID\tScanNum\tFragMethod\tPrecursor\tIsotopeError\tPrecursorError(ppm)\t"
      "Charge\tPeptide\tProtein\tDeNovoScore\tMSGFScore\tSpecEValue\tEValue\n",
      MsgfRow}},
    {"MaxQuant",
     {PepIdentType::MaxQuant, "msms.txt",
      "Raw file\tScan number\tScan index\tSequence\tLength\tMissed cleavages\tModifications\t"
      "Modified sequence\tProteins\tCharge\tm/z\tMass\tMass Error [ppm]\tScore\tRetention time\t"
      "PEP\tReverse\tMatches\tMasses\n",
      MaxQuantRow}},
    {"pFind 3",
     {PepIdentType::Pfind3Spectra, "pFind-Filtered.spectra",
      "File_Name\tScan_No\tExp.MH+\tCharge\tQ-value\tSequence\tCalc.MH+\tMass_Shift(Exp.-Calc.)\t"
      "Raw_Score\tFinal_Score\tModification\tSpecificity\tProteins\tPositions\tLabel\t"
      "Target/Decoy\tMiss.Clv.Sites\tAvg.Frag.Mass.Shift\tOthers\n",
      PFind3Row}},
    {"pFind 2.8",
     {PepIdentType::Pfind28Txt, "pFind.txt", "[Search]\nInputPath=D:\\data\\run01.mgf\n[Total]\n",
      PFind28Section}},
    {"Sequest",
     {PepIdentType::SequestTxt, "sequest.txt",
      "\"PSMs Workflow ID\"\t\"Confidence\"\t\"Sequence\"\t\"Modifications\"\t"
      "\"Protein Accessions\"\t\"# Missed Cleavages\"\t\"Charge\"\t\"DeltaCn\"\t\"Rank\"\t"
      "\"m/z [Da]\"\t\"MH+ [Da]\"\t\"Theo. MH+ [Da]\"\t\"DeltaM [ppm]\"\t\"Deltam/z [Da]\"\t"
      "\"Intensity\"\t\"Activation Type\"\t\"First Scan\"\t\"Spectrum File\"\t"
      "\"Abundance: 126\"\t\"Abundance: 127N\"\t\"XCorr\"\n",
      SequestRow}},
};

// ---- The inputs ---------------------------------------------------------------------

/// The file of a format, and for MaxQuant a peptides.txt of three rows each.
class Input {
public:
    explicit Input(const Format& format)
    {
        const std::size_t bytes = bench::Scaled(kFullSize);
        std::ofstream file(folder_.File(format.file), std::ios::binary);
        file << format.head;
        MatchMaker maker;
        for (std::size_t written = 0; written < bytes; ++matches_) {
            const std::string row = format.row(maker.Next());
            file << row;
            written += row.size();
        }
        if (format.type == PepIdentType::MaxQuant) {
            WritePeptides();
        }
    }

    Vorlan::PepIdentSource Source(const Format& format) const
    {
        return {folder_.Path(), format.file, format.type};
    }

    std::size_t Matches() const { return matches_; }

private:
    void WritePeptides() const
    {
        std::ofstream file(folder_.File("peptides.txt"), std::ios::binary);
        file << "Sequence\tAmino acid before\tAmino acid after\tProteins\tMS/MS IDs\n";
        for (std::size_t i = 0; i < matches_; i += 3) {
            file << "PEPTIDE\tK\tA\tsp|P12345|GENE_HUMAN\t" << i;
            for (std::size_t id = i + 1; id < std::min(i + 3, matches_); ++id) {
                file << ';' << id;
            }
            file << '\n';
        }
    }

    bench::TemporaryFolder folder_;
    std::size_t matches_ = 0;
};

const Input& InputOf(const std::string& name)
{
    static std::map<std::string, Input> inputs;
    return inputs.try_emplace(name, kFormats.at(name)).first->second;
}

// ---- Read -----------------------------------------------------------------------------

void Read(benchmark::State& state, const std::string& name)
{
    const Format& format = kFormats.at(name);
    const Input& input = InputOf(name);
    const bench::CoutToNull quiet;
    bool isWhole = false;
    for (auto _ : state) {
        Matches matches;
        Vorlan::PeptideIdentificationIO* reader =
            Vorlan::PepIdentIOFactory::pGetPepIdentIO(format.type);
        reader->InitLoad(input.Source(format));
        reader->Load(matches);
        reader->EndLoad();
        state.PauseTiming();
        isWhole = matches.size() == input.Matches();
        Vorlan::PepIdentIOFactory::DesctroyPepIdentIO(reader);
        bench::LetGo(matches);
        state.ResumeTiming();
    }
    state.SetBytesProcessed(state.iterations()
                            * static_cast<std::int64_t>(bench::Scaled(kFullSize)));
    if (!isWhole) {
        state.SkipWithError("the table was not read whole");
    }
}

} // namespace

int main(int argc, char** argv)
{
    const bench::TemporaryFolder folder;
    bench::Specify({{"Oxidation", 'M', 15.994915}}, folder.Path());
    std::vector<bench::Claim> claims;
    for (const auto& [name, format] : kFormats) {
        benchmark::RegisterBenchmark(("Read " + name).c_str(), Read, name)
            ->Unit(benchmark::kMillisecond)
            ->Iterations(1)
            ->Repetitions(5);
        if (format.type != PepIdentType::CalvexTxt) {
            claims.push_back({name + ": read", "Read " + name, "native table of as many bytes",
                              "Read native table", bench::Claim::TimesTheTime, 2.0});
        }
    }
    return bench::Run(argc, argv, claims);
}
