// Step 3, identifications: reads a result table and tells targets from decoys.
#include <algorithm>
#include <iostream>

#include "PeptideIdentificationIO.h"

using namespace Vorlan;

int main(int argc, char** argv)
{
    const std::string folder = argc > 1 ? argv[1] : "examples/data";
    const PepIdentSource source(folder, "demo_psms.txt", PepIdentType::nameToType("Calvex (.txt)"));

    PeptideIdentificationIO* pReader = PepIdentIOFactory::pGetPepIdentIO(source.eType);
    std::vector<PeptideIdentification> matches;
    pReader->InitLoad(source);
    pReader->Load(matches);
    pReader->EndLoad();
    PepIdentIOFactory::DesctroyPepIdentIO(pReader);

    const auto targets = std::count_if(matches.begin(), matches.end(),
                                       [](const auto& match) { return match.isTarget("REV_"); });
    const auto modified = std::count_if(matches.begin(), matches.end(),
                                        [](const auto& match) { return !match.vMods.empty(); });
    std::cout << matches.size() << " matches, " << targets << " of them targets, " << modified
              << " with modifications\n";
}
