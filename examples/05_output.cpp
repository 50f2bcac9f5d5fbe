// Step 5, output: writes a match as a result table and a spectrum as MGF.
#include <filesystem>
#include <fstream>
#include <iostream>

#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"

using namespace Vorlan;

int main()
{
    const std::filesystem::path folder = std::filesystem::temp_directory_path();
    const std::string table = (folder / "pelgrin-example.txt").string();
    const std::string mgf = (folder / "pelgrin-example.mgf").string();

    PeptideIdentification match;
    match.strDatasetName = "demo.mgf";
    match.strSpectrumName = "demo.00017.00017.2";
    match.strSequence = "PEPTIDEK";
    match.nCharge = 2;
    match.dObsMH = 928.462;
    match.vMods.emplace_back("Phospho (T)", 79.966331, "T", "Anywhere", 4);
    match.vEvidences.emplace_back("PROT_1", 10, 17, 'K', 'A');

    TulkTXTPepIdentIO writer;
    writer.InitSave(table);
    writer.Save({match});
    writer.EndSave();

    Spectrum spectrum;
    spectrum.strTitle = match.strSpectrumName;
    spectrum.dPrecursorMz = 464.735;
    spectrum.nCharge = 2;
    spectrum.vPeaks.emplace_back();
    spectrum.vPeaks.back().setMz(147.1128);
    spectrum.vPeaks.back().setIntensity(1250.0);

    MgfIO mgfWriter;
    mgfWriter.InitSave(mgf);
    mgfWriter.bSaveOneSpec(spectrum);
    mgfWriter.EndSave();

    for (const std::string& path : {table, mgf}) {
        std::cout << std::ifstream(path).rdbuf();
        std::filesystem::remove(path);
    }
}
