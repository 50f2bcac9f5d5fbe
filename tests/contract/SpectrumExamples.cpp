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

/// Charge 1, so that the precursor m/z is MH.
SpectrumExample Dta()
{
    const auto write = [](const TempFolder& folder) {
        std::filesystem::create_directory(folder.PathOf("run"));
        folder.Write("run/run.7.7.1.dta", "500.25 1\n200.5 10\n100.25 30\n");
        folder.Write("run/run.5.5.1.DTA", "400.5 1\n150 5\n");
        folder.Write("run/readme.txt", "no spectrum\n");
        return folder.PathOf("run");
    };
    SpectrumExample example = {
        "Dta",
        DatasetType::Dta,
        write,
        {"run.5.5.1.DTA|400.5|1+|scan 0|rt 0|150:5|from run\\",
         "run.7.7.1.dta|500.25|1+|scan 0|rt 0|200.5:10 100.25:30|from run\\"},
        {"run.5.5.1.DTA", "run.7.7.1.dta"}};
    example.tellsWhatCannotBeOpened = false; // B-71
    example.keepsNamesAfterEndLoad = false;
    example.loadsAllFromTheFirst = true; // B-72
    return example;
}

SpectrumExample WithoutSpectra(const std::string& testName, DatasetType::EDatasetType type)
{
    const auto write = [](const TempFolder& folder) {
        return folder.Write("a.xml", "<run><spectrum id=\"scan=1\"/></run>\n");
    };
    return {testName, type, write, {}, {}}; // B-73
}

} // namespace

const std::vector<SpectrumExample>& SpectrumExamples()
{
    static const std::vector<SpectrumExample> examples = {
        Mgf(),
        Dta(),
        WithoutSpectra("MzXml", DatasetType::MzXml),
        WithoutSpectra("MzMl", DatasetType::MzMl),
    };
    return examples;
}

} // namespace Vorlan::test
