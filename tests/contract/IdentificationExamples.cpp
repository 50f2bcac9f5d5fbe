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

} // namespace

const std::vector<IdentificationExample>& IdentificationExamples()
{
    static const std::vector<IdentificationExample> examples = {
        NativeTable(),
    };
    return examples;
}

} // namespace Vorlan::test
