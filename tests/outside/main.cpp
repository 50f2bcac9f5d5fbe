// What somebody else's program does with the installed library: writes an MGF
// file, reads it back, finds a peak, fills a database of its own kind, and
// catches exceptions of the library.
#include <cstddef>
#include <cstdint>
#include <iostream>
#include <string>
#include <vector>

#include <OpenMS/CONCEPT/Exception.h>

#include "DataStructures.h"
#include "InitFile.h"
#include "ModificationDB.h"
#include "SpectraIO.h"
#include "TulkParam.h"
#include "XmlDocument.h"

using namespace Vorlan;

namespace {

Spectrum OneSpectrum()
{
    Spectrum spectrum;
    spectrum.strTitle = "run.7.7.2";
    spectrum.dPrecursorMz = 500.25;
    spectrum.nCharge = 2;
    for (const double mz : {175.119, 175.125, 400.5}) {
        spectrum.vPeaks.emplace_back();
        spectrum.vPeaks.back().dMz = mz;
        spectrum.vPeaks.back().dIntensity = mz / 5.0;
    }
    return spectrum;
}

void WriteSpectrum(const std::string& path)
{
    MgfIO writer;
    Spectrum spectrum = OneSpectrum();
    writer.InitSave(path);
    writer.bSaveOneSpec(spectrum);
    writer.EndSave();
}

std::string Untargeted()
{
    try {
        PeptideIdentification().isTarget("REV_");
    } catch (const OpenMS::Exception::InvalidValue& e) {
        return e.getFunction();
    }
    return "nothing";
}

/// A loader of the host's own.
class HostDatabase : public CModificationsDB {
public:
    HostDatabase()
    {
        CResidueModification record;
        record.setId("Phospho");
        record.setFullId("Phospho (S)");
        record.setDiffMonoMass(79.966331);
        addModifications_({record}, BY_ID);
    }
};

std::string WithoutRoot()
{
    CXmlDocument document;
    try {
        return document.cRoot().strValue();
    } catch (const CXmlException& e) {
        return e.szWhat();
    }
}

std::string WithoutParameters()
{
    try {
        CTulkParam::readFromFile("nowhere.ini");
    } catch (const OpenMS::Exception::FileNotFound& e) {
        return e.getFunction();
    }
    return "nothing";
}

} // namespace

int main()
{
    WriteSpectrum("outside.mgf");
    SpectraIO* pReader = SpecIOFactory::pGetSpectraIO(DatasetType::nameToType("MGF"));
    pReader->InitLoad("outside.mgf");
    std::vector<Spectrum> spectra;
    pReader->tLoadAllSpectra(spectra);
    Spectrum& spectrum = spectra.at(0);
    spectrum.CreateHashTable();
    Peak theo;
    theo.dMz = 175.119;
    const std::int32_t hit = spectrum.GetHitPeak(theo, 20.0, TolType::Ppm, true);
    std::cout << pReader->tGetInputSpecNumber() << " names, " << spectrum.Size()
              << " peaks, hit at "
              << (hit < 0 ? 0.0 : spectrum.vPeaks.at(static_cast<std::size_t>(hit)).dMz)
              << ", thrown by " << Untargeted() << std::endl;
    const std::string label = WithoutParameters();
    const auto any = CResidueModification::NUMBER_OF_TERM_SPECIFICITY;
    std::cout << HostDatabase().getModification("Phospho", "", any).getFullId() << ", "
              << WithoutRoot() << ", thrown by " << label << std::endl;
    SpecIOFactory::DesctroySpectraIO(pReader);
    return 0;
}
