#include "prepare/PreparedRun.h"

#include <algorithm>

#include "files/SpectraSource.h"
#include "prepare/Preparation.h"
#include "run/Identifications.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

/// What a result must be, whatever it looks like.
FileKind KindOfResult(PepIdentType::EPepIdentType format)
{
    switch (format) {
    case PepIdentType::MsFraggerPepXml:
    case PepIdentType::CometPepXml: return FileKind::PepXml;
    case PepIdentType::MsgfTsv: return FileKind::Msgf;
    case PepIdentType::MaxQuant: return FileKind::MaxQuantMatches;
    case PepIdentType::Pfind3Spectra: return FileKind::PFind3;
    case PepIdentType::Pfind28Txt: return FileKind::PFind28;
    case PepIdentType::SequestTxt: return FileKind::Sequest;
    default: return FileKind::NativeTable;
    }
}

/// The copies of the inputs from begin to end.
std::vector<std::string> PathsOf(const Preparation& preparation, std::size_t begin, std::size_t end)
{
    std::vector<std::string> paths;
    for (std::size_t i = begin; i < end; ++i) {
        const Copy& copy = preparation.Copies()[i];
        const std::vector<std::string> outputs = preparation.PathsOf(copy);
        // The second file of a pair is found beside the first.
        const bool isPair = copy.kind == FileKind::MaxQuantMatches;
        paths.insert(paths.end(), outputs.begin(), isPair ? outputs.begin() + 1 : outputs.end());
    }
    return paths;
}

constexpr const char kFront[] = "prepare_";

PreparedInput PreparedOf(const Copy& copy)
{
    PreparedInput input{copy.input, copy.held, copy.written, {}};
    for (const auto& [key, tally] : copy.leftOut) {
        const std::string path =
            tally.firstFile.empty() ? copy.input : copy.input + "/" + tally.firstFile;
        input.leftOut.push_back({kFront + key, TextOfClass(key), tally.count,
                                 path + ":" + std::to_string(tally.firstLine)});
    }
    const auto cut = copy.changes.find("end_added");
    if (cut != copy.changes.end()) {
        input.leftOut.push_back({kFront + cut->first, TextOfClass(cut->first), cut->second.count,
                                 copy.input + ":" + std::to_string(cut->second.firstLine), false});
    }
    return input;
}

} // namespace

std::vector<std::string> PrepareLossClasses()
{
    std::vector<std::string> keys = ClassKeys();
    for (std::string& key : keys) {
        key.insert(0, kFront);
    }
    return keys;
}

void PrepareInputs(Parameters& parameters, const std::string& folder)
{
    Preparation preparation(folder, parameters.fileInputs);
    for (const std::string& path : parameters.spectra) {
        preparation.Add(path, FileKind::Mgf);
    }
    for (const std::string& path : parameters.psms) {
        preparation.Add(path, KindOfResult(parameters.format));
    }
    for (const auto& [name, path] : parameters.datasets) {
        preparation.NameDataset(name, path);
    }
    preparation.Run();
    preparation.WriteReports();
    WarnOfLosses(preparation.Copies());
    const std::size_t spectra = parameters.spectra.size();
    const std::vector<std::string> copies = PathsOf(preparation, 0, spectra);
    for (auto& [name, path] : parameters.datasets) {
        for (std::size_t i = 0; i < spectra; ++i) {
            if (path == parameters.spectra[i]) {
                path = copies[i];
                break;
            }
        }
    }
    // Of the second files that a run looks for, those that were there.
    std::vector<std::string>& inputs = parameters.fileInputs;
    for (const std::string& path : parameters.psms) {
        const std::string second = FilesOf(parameters.format, path).second;
        inputs.erase(std::remove(inputs.begin(), inputs.end(), second), inputs.end());
    }
    inputs.insert(inputs.end(), preparation.Beside().begin(), preparation.Beside().end());
    parameters.spectra = copies;
    parameters.psms = PathsOf(preparation, spectra, preparation.Copies().size());
    for (const Copy& copy : preparation.Copies()) {
        parameters.prepared.push_back(PreparedOf(copy));
    }
    for (const std::string& path : preparation.Beside()) {
        parameters.prepared.push_back({path, 0, 0, {}}); // its rows are those of the other file
    }
}

} // namespace pelgrin
