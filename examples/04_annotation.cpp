// Step 4, annotation: spectra and matches meet by name, and a peak is found.
#include <iostream>

#include "PeptideIdentificationIO.h"
#include "SpectraIO.h"

using namespace Vorlan;

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "examples/data";

    DatasetIOPool pool;
    pool.InitLoad({DatasetSource(folder, "demo.mgf", DatasetType::Mgf)});

    TulkTXTPepIdentIO reader;
    std::vector<PeptideIdentification> matches;
    reader.InitLoad(PepIdentSource(folder, "demo_psms.txt", PepIdentType::CalvexTxt));
    reader.Load(matches);

    matches.resize(3);
    for (const PeptideIdentification& match : matches) {
        std::vector<Spectrum> spectra;
        pool.bLoadOneSpectrum(match.strDatasetName, match.strSpectrumName, spectra);
        Spectrum& spectrum = spectra.front();

        Peak y1; // of a tryptic peptide: water, proton, and lysine or arginine
        y1.setMz(match.strSequence.back() == 'K' ? 147.11280 : 175.11895);
        spectrum.CreateHashTable();
        const std::int32_t hit = spectrum.GetHitPeak(y1, 20.0, TolType::Ppm, true);

        std::cout << match.strSpectrumName << "  " << match.strSequence << "  y1 ";
        if (hit < 0) {
            std::cout << "not found\n";
        } else {
            const Peak& peak = spectrum.vPeaks[static_cast<std::size_t>(hit)];
            std::cout << "at m/z " << peak.dMz << ", intensity " << peak.dIntensity << "\n";
        }
    }
}
