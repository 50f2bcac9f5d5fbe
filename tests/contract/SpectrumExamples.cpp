#include "contract/SpectrumExamples.h"

namespace Vorlan::test {

namespace {

SpectrumExample Mgf()
{
    const auto write = [](const TempFolder& folder) {
        return folder.Write(
            "a.mgf", "BEGIN IONS\nTITLE=run.7.2\nPEPMASS=500.25\nCHARGE=2+\nRTINSECONDS=61.5\n"
                     "SCANS=7\n200.5 10\n100.25 30\nEND IONS\n"
                     "BEGIN IONS\nTITLE=first\nPEPMASS=400.5\nCHARGE=3+\nRTINSECONDS=30\n"
                     "SCANS=5\n150 5\nEND IONS\n");
    };
    return {"Mgf",
            DatasetType::Mgf,
            write,
            {"first|400.5|3+|scan 5|rt 30|150:5",
             "run.00007.00007.2|500.25|2+|scan 7|rt 61.5|200.5:10 100.25:30",
             "run.7.2|500.25|2+|scan 7|rt 61.5|200.5:10 100.25:30"},
            {"first", "run.00007.00007.2", "run.7.2"}};
}

} // namespace

const std::vector<SpectrumExample>& SpectrumExamples()
{
    static const std::vector<SpectrumExample> examples = {
        Mgf(),
    };
    return examples;
}

} // namespace Vorlan::test
