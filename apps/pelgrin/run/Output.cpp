#include "run/Output.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <iterator>
#include <stdexcept>
#include <system_error>
#include <utility>

#include <unistd.h>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "SpectraIO.h"
#include "common/Failure.h"
#include "common/Terminal.h"

namespace pelgrin {

namespace {

constexpr const char kProteins[] = "proteins.tsv";

/// The files that a run writes.
std::vector<const char*> FileNamesOf(const Parameters& parameters)
{
    std::vector<const char*> names = {"annotations.tsv", "results.txt", "matched.mgf",
                                      "rejects.tsv", "ledger.json"};
    if (parameters.proteins) {
        names.push_back(kProteins);
    }
    names.push_back("summary.json");
    names.push_back("run.json"); // tells that all others are there
    return names;
}

[[noreturn]] void NotWritable(const std::string& path, int reason = 0)
{
    throw Failure(fmt::format("{}: cannot be written{}{}", path, reason != 0 ? ": " : "",
                              reason != 0 ? std::strerror(reason) : ""));
}

/// The path of a file in the output folder.
std::string PathIn(const Parameters& parameters, const char* name)
{
    return (std::filesystem::path(parameters.out) / name).string();
}

[[noreturn]] void NotAFolder(const std::string& path, const std::error_code& reason)
{
    throw Failure(fmt::format("{}: is not a folder and cannot be made one: {}", path,
                              reason ? reason.message() : "a file of that name exists"));
}

/// Looks at the folder in which the first of the missing ones is to be made.
void CheckFolderToMake(const std::string& path)
{
    namespace fs = std::filesystem;
    std::error_code error;
    fs::path place = fs::absolute(path, error);
    fs::file_status status = fs::status(place, error);
    std::size_t longest = 0;
    while (status.type() == fs::file_type::not_found && place.has_relative_path()) {
        if (fs::is_symlink(fs::symlink_status(place, error))) { // to nothing
            NotAFolder(path, std::make_error_code(std::errc::file_exists));
        }
        longest = std::max(longest, place.filename().native().size());
        place = place.parent_path();
        status = fs::status(place, error);
    }
    if (!fs::is_directory(status)) {
        const auto isPart = std::make_error_code(std::errc::not_a_directory);
        NotAFolder(path, error ? error : longest > 0 ? isPart : std::error_code());
    }
    const long most = ::pathconf(place.c_str(), _PC_NAME_MAX);
    if (most > 0 && longest > static_cast<std::size_t>(most)) {
        NotAFolder(path, std::make_error_code(std::errc::filename_too_long));
    }
    if (::access(place.c_str(), W_OK | X_OK) != 0) {
        NotAFolder(path, std::error_code(errno, std::generic_category()));
    }
}

/// What can be known of a file without changing it.
void CheckWritable(const std::string& path)
{
    CheckTarget(path);
    std::error_code ignored;
    errno = 0;
    if (std::filesystem::exists(path, ignored)
        && !std::ofstream(path, std::ios::binary | std::ios::app)) {
        NotWritable(path, errno);
    }
}

/// Throws Failure when a file of the output folder would overwrite an input.
void RefuseToOverwriteInputs(const Parameters& parameters)
{
    std::vector<std::string> inputs = parameters.spectra;
    inputs.insert(inputs.end(), parameters.psms.begin(), parameters.psms.end());
    inputs.insert(inputs.end(), parameters.fileInputs.begin(), parameters.fileInputs.end());
    for (const char* const name : FileNamesOf(parameters)) {
        const std::filesystem::path output = std::filesystem::path(parameters.out) / name;
        for (const std::string& input : inputs) {
            std::error_code ignored;
            if (std::filesystem::equivalent(output, input, ignored)) {
                throw Failure(
                    fmt::format("{}: is an input and would be overwritten; choose another "
                                "folder for {}",
                                output.string(), parameters.outName));
            }
        }
    }
}

} // namespace

void CheckOutput(const Parameters& parameters)
{
    RefuseToOverwriteInputs(parameters);
    RefuseBackslash(parameters.out);
    std::error_code error;
    if (std::filesystem::is_directory(parameters.out, error)) {
        for (const char* const name : FileNamesOf(parameters)) {
            CheckWritable(PathIn(parameters, name));
        }
    } else {
        CheckFolderToMake(parameters.out);
    }
}

void MakeOutputFolder(const Parameters& parameters)
{
    CheckOutput(parameters);
    std::error_code error;
    std::filesystem::create_directories(parameters.out, error);
    if (error) {
        NotAFolder(parameters.out, error);
    }
}

const std::string_view kAnnotationHeader =
    "Dataset Name\tSpectrum Name\tSequence\tCharge\tIon\tIon Index\tIon Charge\tStatus\t"
    "Theoretical m/z\tPeak m/z\tIntensity\tError (ppm)\n";

// ---- TextFile ---------------------------------------------------------------

TextFile::TextFile(std::string path)
    : path_(std::move(path)), file_(path_, std::ios::binary | std::ios::trunc)
{
    Check(file_.is_open());
}

void TextFile::Write(std::string_view text)
{
    file_.write(text.data(), static_cast<std::streamsize>(text.size()));
    Check(file_.good());
}

void TextFile::Close()
{
    file_.flush();
    Check(file_.good());
    file_.close();
    Check(file_.good());
}

void TextFile::Check(bool ok) const
{
    if (!ok) {
        NotWritable(path_, errno);
    }
}

// ---- MatchedSpectra ---------------------------------------------------------

/// The library's writer, which says true even when the output has failed.
class MatchedSpectra : public Vorlan::MgfIO {
public:
    explicit MatchedSpectra(const std::string& path) : path_(path)
    {
        InitSave(path);
        Check();
    }

    void Add(Vorlan::Spectrum& spectrum)
    {
        bSaveOneSpec(spectrum);
        Check();
    }

    void Close()
    {
        ofsOutput_.flush();
        Check();
        EndSave();
    }

private:
    void Check() const
    {
        if (!ofsOutput_.is_open() || !ofsOutput_.good()) {
            NotWritable(path_, errno);
        }
    }

    std::string path_;
};

// ---- OutputFolder -----------------------------------------------------------

OutputFolder::OutputFolder(const Parameters& parameters) : folder_(parameters.out)
{
    MakeOutputFolder(parameters);
    for (const char* const name : FileNamesOf(parameters)) {
        files_.emplace_back(name, std::make_unique<NewFile>(PathIn(parameters, name)));
    }
    annotations_.emplace(FileOf("annotations.tsv").Path());
    annotations_->Write(kAnnotationHeader);
}

OutputFolder::~OutputFolder() = default;

void OutputFolder::WriteSpectrum(const std::string& dataset, Vorlan::Spectrum& spectrum)
{
    if (!written_.insert(dataset + "\n" + spectrum.strTitle).second) {
        return;
    }
    if (!matched_) {
        matched_ = std::make_unique<MatchedSpectra>(FileOf("matched.mgf").Path());
    }
    matched_->Add(spectrum);
}

void OutputFolder::WriteAnnotation(const Vorlan::PeptideIdentification& record,
                                   const Annotation& annotation)
{
    annotations_->Write(AnnotationLines(record, annotation));
}

void OutputFolder::WriteProteins(MappedProteins& proteins,
                                 const std::vector<Vorlan::PeptideIdentification>& records)
{
    TextFile table(FileOf(kProteins).Path());
    proteins.WriteTable(records, [&table](std::string_view line) { table.Write(line); });
    table.Close();
}

NotHeldCounts OutputFolder::Finish(const std::vector<Vorlan::PeptideIdentification>& records)
{
    if (matched_) {
        matched_->Close();
    }
    annotations_->Close();
    return WriteNativeTable(records, FileOf("results.txt"),
                            (std::filesystem::path(folder_) / "results.txt").string());
}

void OutputFolder::WriteText(const char* name, const std::string& text)
{
    TextFile file(FileOf(name).Path());
    file.Write(text);
    file.Close();
}

void OutputFolder::TakePlaces()
{
    // The one that tells of a finished run goes first and comes last.
    std::error_code ignored;
    const std::filesystem::path folder(folder_);
    std::filesystem::remove(folder / files_.back().first, ignored);
    const bool hasProteins = std::any_of(
        files_.begin(), files_.end(), [](const auto& entry) { return entry.first == kProteins; });
    // It may be the user's own, and stays.
    if (!hasProteins && std::filesystem::exists(folder / kProteins, ignored)) {
        spdlog::warn("{}: was there before, and is none of these results",
                     OneLine((folder / kProteins).string()));
    }
    for (const auto& [name, file] : files_) {
        file->MoveToTarget();
    }
}

NewFile& OutputFolder::FileOf(const char* name)
{
    const auto hit = std::find_if(files_.begin(), files_.end(),
                                  [name](const auto& entry) { return entry.first == name; });
    if (hit == files_.end()) {
        throw std::logic_error(std::string(name) + " is no file of this run");
    }
    return *hit->second;
}

std::string AnnotationLines(const Vorlan::PeptideIdentification& record,
                            const Annotation& annotation)
{
    const std::string front =
        fmt::format("{}\t{}\t{}\t{}\t", record.strDatasetName, record.strSpectrumName,
                    record.strSequence, record.nCharge);
    std::string lines;
    for (const IonMatch& match : annotation.matches) {
        const Vorlan::Peak::MatchRes& ion = match.fragment.ion;
        lines += front;
        fmt::format_to(std::back_inserter(lines), "{}\t{}\t{}\t{}\t{:.6f}\t{:.6f}\t{}\t{:.3f}\n",
                       LetterOf(ion.eIonType), ion.nIonIndex, ion.nCharge,
                       ion.eHitStatus == Vorlan::Peak::SHIFT ? "shift" : "unshift",
                       match.fragment.mz, match.peakMz, match.intensity, match.ErrorPpm());
    }
    return lines;
}

} // namespace pelgrin
