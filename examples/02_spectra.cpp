// Step 2, spectra: opens a dataset and loads one spectrum by each of its names.
#include <iostream>

#include "SpectraIO.h"

using namespace Vorlan;

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "examples/data";

    DatasetIOPool pool;
    pool.InitLoad({DatasetSource(folder, "demo.mgf", DatasetType::Mgf)});
    std::cout << pool.tGetSpecNumber() << " names\n";

    for (const std::string name : {"demo.00024.00024.2", "demo.24.24.2", "24", "no such name"}) {
        if (!pool.bHasSpectrum("demo.mgf", name)) {
            std::cout << name << ": unknown\n";
            continue;
        }
        std::vector<Spectrum> spectra;
        pool.bLoadOneSpectrum("demo.mgf", name, spectra);
        const Spectrum& spectrum = spectra.front();
        std::cout << name << ": m/z " << spectrum.dPrecursorMz << ", charge " << spectrum.nCharge
                  << ", " << spectrum.dRetentionTime << " s, " << spectrum.Size() << " peaks\n";
    }
    pool.EndLoad();
}
