// Step 1, parameters: reads the parameter file of a run and prints what it says.
#include <iostream>

#include <OpenMS/CONCEPT/Exception.h>

#include "TulkParam.h"

using namespace Vorlan;

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "examples/data";
    const CTulkParam* parameters = nullptr;
    try {
        parameters = CTulkParam::readFromFile(folder + "/demo.ini");
    } catch (const OpenMS::Exception::BaseException& error) {
        std::cerr << error.what() << "\n"; // names the key and its section
        return 1;
    }

    const CSearchParam& search = *parameters->getSearchParam();
    std::cout << "engine      " << SearchEngineType::typeToName(search.eSearchEngine) << "\n"
              << "precursors  " << search.dPrecursorTol << " "
              << TolType::typeToName(search.ePrecursorTolType) << ", mass shifts up to "
              << search.dPrecursorMatchingTol << " "
              << TolType::typeToName(search.ePrecursorMatchingTolType) << "\n"
              << "fragments   " << search.dFragmentTol << " "
              << TolType::typeToName(search.eFragmentTolType) << ", "
              << FragMethodType::typeToName(search.eFragMethod) << "\n";
    for (const IdentModification& mod : search.getSpecifiedMod()) {
        std::cout << "modified    " << mod.strName << " at " << mod.strSite << ", "
                  << mod.strPosition << ": " << mod.dMass << " Da\n";
    }
    for (const DatasetSource& dataset : search.vDatasets) {
        std::cout << "spectra     " << dataset.strFirst << dataset.strSecond << "\n";
    }
    for (const PepIdentSource& matches : search.vPepIdentSources) {
        std::cout << "matches     " << matches.strFirst << matches.strSecond << "\n";
    }
    std::cout << "FDR control " << (parameters->getFdrControlParam()->bFdrControl ? "on" : "off")
              << ", localization " << (parameters->getLocalizeParam()->bLocalize ? "on" : "off")
              << ", annotation " << (parameters->getAnnotateParam()->bAnnotate ? "on" : "off")
              << "\n"
              << "output      " << parameters->getOutputPath() << "\n";
}
