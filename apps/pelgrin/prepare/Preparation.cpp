#include "prepare/Preparation.h"

#include <algorithm>
#include <filesystem>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "files/DtaAudit.h"
#include "files/FileLines.h"
#include "files/MaxQuantAudit.h"
#include "files/Packed.h"
#include "files/SpectraSource.h"
#include "prepare/OtherCopies.h"
#include "prepare/PlainText.h"
#include "prepare/TextOutput.h"

namespace pelgrin {

namespace {

namespace fs = std::filesystem;
using Json = nlohmann::ordered_json;

constexpr const char kReport[] = "prepared.json";
constexpr const char kTitles[] = "titles.tsv";

bool IsSpectra(FileKind kind)
{
    return kind == FileKind::Mgf || kind == FileKind::DtaFolder;
}

void RefuseKind(const std::string& path, const std::string& plain, FileKind kind)
{
    switch (kind) {
    case FileKind::MzMl:
    case FileKind::MzXml: CheckMgf(plain == path ? path : NameWithoutPacking(path)); break;
    case FileKind::Dta:
        throw Failure(fmt::format("{}: is one DTA file; expected the folder that holds it", path));
    default: break;
    }
    if (kind == FileKind::Unknown || kind == FileKind::MzMl || kind == FileKind::MzXml) {
        throw Failure(fmt::format("{}: expected spectra (MGF or a folder of DTA files), a result, "
                                  "FASTA or modifications, found none of these",
                                  path));
    }
}

fs::path FolderOf(const std::string& path)
{
    return fs::absolute(path).lexically_normal().parent_path();
}

/// "b/c" for two of "/a/b/c".
fs::path LastOf(fs::path folder, std::size_t depth)
{
    fs::path last;
    for (; depth > 0 && folder.has_filename(); --depth) {
        last = last.empty() ? folder.filename() : folder.filename() / last;
        folder = folder.parent_path();
    }
    return last;
}

/// "run.pep.xml" is "run.2.pep.xml" for the second of several runs.
std::string NameOfRun(const std::string& name, std::size_t k, std::size_t n)
{
    if (n == 1) {
        return name;
    }
    const std::string lower = fs::path(name).stem().extension() == ".pep" ? ".pep" : "";
    const std::string ending = lower + fs::path(name).extension().string();
    return fmt::format("{}.{}{}", name.substr(0, name.size() - ending.size()), k, ending);
}

Json CopyJson(const ClassCounts& tallies)
{
    Json json = Json::object();
    for (const auto& [key, tally] : tallies) {
        json[key] = {{"count", tally.count}};
        if (!tally.firstFile.empty()) {
            json[key]["first_file"] = tally.firstFile;
        }
        if (tally.firstLine > 0) {
            json[key]["first_line"] = tally.firstLine;
        }
    }
    return json;
}

Json CopyJson(const Copy& copy)
{
    return {
        {"input", copy.input},
        {"kind", KeyOf(copy.kind)},
        {"outputs", copy.outputs},
        {"changes", CopyJson(copy.changes)},
        {"records",
         {{"held", copy.held}, {"written", copy.written}, {"left_out", CopyJson(copy.leftOut)}}}};
}

} // namespace

void Preparation::Add(const std::string& input, std::optional<FileKind> kind)
{
    Copy& copy = copies_.emplace_back();
    copy.input = WithoutLastSeparators(input);
    const FileState state = StateOf(copy.input);
    if (IsFolder(input)) {
        CheckDtaFolder(copy.input);
        copy.kind = FileKind::DtaFolder;
        inputs_.push_back({copy.input, PlaceOfDataset(input).name, state, {}});
        return;
    }
    CheckReadable(input);
    const std::string plain = PlainTextOf(input, scratch_, copy);
    copy.kind = kind ? *kind : KindOf(plain);
    RefuseKind(input, plain, copy.kind);
    inputs_.push_back({plain, NameWithoutPacking(input), state,
                       fs::weakly_canonical(fs::absolute(input).parent_path())});
}

void Preparation::NameDataset(const std::string& name, const std::string& input)
{
    given_[name] = WithoutLastSeparators(input);
}

void Preparation::Run()
{
    for (std::size_t i = 0; i < copies_.size(); ++i) {
        if (copies_[i].kind == FileKind::MaxQuantPeptides) {
            CheckPeptides(i);
        }
        const bool isPair = copies_[i].kind == FileKind::MaxQuantMatches && !PeptidesOf(i);
        if (const std::string beside = isPair ? PeptidesBeside(copies_[i].input, true) : "";
            !beside.empty()) {
            CheckReadable(beside);
            beside_.push_back(beside);
        }
    }
    ListInputs();
    kept_.Check(fs::path(out_) / kReport, "the report");
    kept_.Check(fs::path(out_) / kTitles, "the list of titles");
    KeepFoldersOfMatches();
    DatasetResolver::Given given;
    for (std::size_t i = 0; i < copies_.size(); ++i) {
        if (IsSpectra(copies_[i].kind)) {
            for (const auto& [name, input] : given_) {
                if (input == copies_[i].input) {
                    given.emplace(name, datasets_.size());
                }
            }
            datasets_.push_back(inputs_[i].name);
            titles_.emplace_back();
            CopyOne(i);
        }
    }
    resolver_.emplace(datasets_, std::move(given));
    for (std::size_t i = 0; i < copies_.size(); ++i) {
        if (!IsSpectra(copies_[i].kind)) {
            CopyOne(i);
        }
    }
    for (std::size_t i = 0; i < copies_.size(); ++i) {
        RemovePlain(inputs_[i].plain, copies_[i].input);
        const Copy& copy = copies_[i];
        CheckUnchanged(i, copy.input, inputs_[i].state);
        std::uint64_t leftOut = 0;
        for (const auto& [key, tally] : copy.leftOut) {
            leftOut += tally.count;
        }
        if (copy.held != copy.written + leftOut) {
            throw Failure(fmt::format("{}: {} records, but {} written and {} left out", copy.input,
                                      copy.held, copy.written, leftOut));
        }
    }
}

/// The copy of a peptides.txt is made with that of its msms.txt. Of several in one
/// folder, packed or named twice, the first one is read.
void Preparation::CheckPeptides(std::size_t i) const
{
    std::optional<std::size_t> first;
    for (std::size_t k = 0; k < copies_.size(); ++k) {
        if (copies_[k].kind != FileKind::MaxQuantMatches) {
            continue;
        }
        const auto peptides = PeptidesOf(k);
        if (peptides == i) {
            return;
        }
        if (inputs_[k].folder == inputs_[i].folder) {
            first = peptides;
        }
    }
    if (first) {
        spdlog::warn("{}: is passed over; {} was named first and is read",
                     OneLine(copies_[i].input), OneLine(copies_[*first].input));
        return;
    }
    throw Failure(fmt::format("{}: expected msms.txt of the same folder among the inputs: its rows "
                              "are numbered in the copy",
                              copies_[i].input));
}

/// Messages name the input, not the plain text of it that only this program knows.
void Preparation::CopyOne(std::size_t i)
{
    try {
        CopyPlain(i);
    } catch (const Failure& failure) {
        throw Failure(WithGivenPath(failure.what(), inputs_[i].plain, copies_[i].input));
    }
}

void Preparation::CopyPlain(std::size_t i)
{
    Copy& copy = copies_[i];
    const Input& input = inputs_[i];
    switch (copy.kind) {
    case FileKind::Mgf:
        titles_.back() =
            CopyMgf(input.plain, Claim(i, input.name), WithoutKnownEndings(input.name), copy);
        break;
    case FileKind::DtaFolder: {
        const std::string target = Claim(i, input.name);
        for (const std::string& name : DtaFileNames(input.plain)) {
            kept_.Check(fs::path(target) / name, "a copy");
        }
        CopyDtaFolder(input.plain, target, scratch_, copy);
        break;
    }
    case FileKind::Fasta: CopyFasta(input.plain, Claim(i, input.name), copy); break;
    case FileKind::MaxQuantMatches: CopyMaxQuantPair(i); break;
    case FileKind::MaxQuantPeptides: break; // with its msms.txt
    case FileKind::PepXml:
    case FileKind::NativeTable:
    case FileKind::Msgf:
    case FileKind::PFind3:
    case FileKind::Sequest: CopyMatches(i); break;
    default: CopyText(input.plain, Claim(i, input.name)); break;
    }
}

void Preparation::CopyMatches(std::size_t i)
{
    Copy& copy = copies_[i];
    const Input& input = inputs_[i];
    const NewName newName = [this](const std::string& dataset, const std::string& spectrum) {
        return NewNameOf(dataset, spectrum);
    };
    if (copy.kind == FileKind::PepXml) {
        const auto pathOf = [&](std::size_t k, std::size_t n) {
            return Claim(i, NameOfRun(input.name, k, n));
        };
        CopyPepXml(input.plain, pathOf, newName, copy);
        return;
    }
    const std::string target = Claim(i, input.name);
    switch (copy.kind) {
    case FileKind::NativeTable: CopyNativeTable(input.plain, target, newName, copy); break;
    case FileKind::Msgf: CopyMsgf(input.plain, target, copy); break;
    case FileKind::PFind3: CopyPFind3(input.plain, target, copy); break;
    default: CopySequest(input.plain, target, copy); break;
    }
}

/// Pairs of several searches have the same names: each goes to a folder named as
/// the one it comes from, and as those around it while others have that name; to one
/// of its own name in there when others come from that folder, too.
std::string Preparation::FolderOfPair(std::size_t i) const
{
    std::vector<fs::path> others;
    for (std::size_t k = 0; k < copies_.size(); ++k) {
        if (k != i && copies_[k].kind == FileKind::MaxQuantMatches) {
            others.push_back(FolderOf(copies_[k].input));
        }
    }
    if (others.empty()) {
        return {};
    }
    const fs::path folder = FolderOf(copies_[i].input);
    const bool isCrowded = std::find(others.begin(), others.end(), folder) != others.end();
    const auto isShared = [&](std::size_t depth) {
        return std::any_of(others.begin(), others.end(), [&](const fs::path& other) {
            return other != folder && LastOf(other, depth) == LastOf(folder, depth);
        });
    };
    std::size_t depth = 1;
    while (isShared(depth)) {
        ++depth;
    }
    const fs::path own = isCrowded ? fs::path(inputs_[i].name).stem() : fs::path();
    return (LastOf(folder, depth) / own / "").string();
}

void Preparation::CopyMaxQuantPair(std::size_t i)
{
    const std::string folder = FolderOfPair(i);
    const auto given = PeptidesOf(i);
    const std::string beside = given ? std::string() : PeptidesBeside(copies_[i].input, true);
    const FileState state = StateOf(beside);
    Copy uncounted;
    const std::string peptides =
        given ? inputs_[*given].plain
              : (beside.empty() ? std::string() : PlainTextOf(beside, scratch_, uncounted));
    const std::string target = Claim(i, folder + inputs_[i].name);
    const std::string second = Claim(i, folder + "peptides.txt");
    if (given) {
        copies_[*given].outputs.push_back(folder + "peptides.txt");
    }
    try {
        CopyMaxQuant(inputs_[i].plain, peptides, target, second, copies_[i]);
    } catch (const Failure& failure) {
        const std::string& path = given ? copies_[*given].input : beside;
        throw Failure(peptides.empty() ? failure.what()
                                       : WithGivenPath(failure.what(), peptides, path));
    }
    if (!beside.empty()) {
        RemovePlain(peptides, beside);
        CheckUnchanged(i, beside, state);
    }
}

/// An input is read more than once: of one that was written to meanwhile the copies
/// may be of no state that it ever had.
void Preparation::CheckUnchanged(std::size_t i, const std::string& path,
                                 const FileState& state) const
{
    if (StateOf(path) == state) {
        return;
    }
    std::error_code ignored;
    for (const fs::path output : PathsOf(copies_[i])) {
        if (copies_[i].kind == FileKind::DtaFolder) {
            for (const std::string& name : DtaFileNames(path)) {
                fs::remove(output / name, ignored);
            }
        }
        fs::remove(output, ignored); // a folder when it is empty
    }
    FailAsChanged(path);
}

/// The peptides.txt among the inputs: the first one of the same folder, or the only one.
std::optional<std::size_t> Preparation::PeptidesOf(std::size_t i) const
{
    std::vector<std::size_t> all;
    std::size_t matches = 0;
    for (std::size_t k = 0; k < copies_.size(); ++k) {
        matches += copies_[k].kind == FileKind::MaxQuantMatches ? 1 : 0;
        if (copies_[k].kind == FileKind::MaxQuantPeptides) {
            if (inputs_[k].folder == inputs_[i].folder) {
                return k;
            }
            all.push_back(k);
        }
    }
    return all.size() == 1 && matches == 1 ? std::optional(all.front()) : std::nullopt;
}

/// What no copy may take the place of.
void Preparation::ListInputs()
{
    for (const std::vector<std::string>* const paths : {&others_, &beside_}) {
        std::for_each(paths->begin(), paths->end(),
                      [this](const std::string& path) { kept_.Add(path); });
    }
    for (const Copy& copy : copies_) {
        kept_.Add(copy.input);
    }
}

/// The next preparation would take the peptides.txt that this one makes for the user's.
void Preparation::KeepFoldersOfMatches() const
{
    for (std::size_t i = 0; i < copies_.size(); ++i) {
        if (copies_[i].kind != FileKind::MaxQuantMatches || PeptidesOf(i)) {
            continue;
        }
        const fs::path peptides = fs::path(out_) / (FolderOfPair(i) + "peptides.txt");
        std::error_code ignored;
        if (fs::equivalent(fs::absolute(peptides).parent_path(),
                           fs::absolute(copies_[i].input).parent_path(), ignored)) {
            throw Failure(fmt::format("{}: would be taken for that of {} from now on; choose "
                                      "another folder",
                                      peptides.string(), copies_[i].input));
        }
    }
}

std::string Preparation::Claim(std::size_t i, const std::string& relative)
{
    const auto [former, isNew] = claimed_.emplace(relative, copies_[i].input);
    if (!isNew || relative == kReport || relative == kTitles) {
        throw Failure(
            fmt::format("{}: its copy would be {}, as that of {}; prepare it into another "
                        "folder",
                        copies_[i].input, relative, isNew ? "the report" : former->second));
    }
    std::string path = (fs::path(out_) / relative).string();
    kept_.Check(path, "a copy");
    copies_[i].outputs.push_back(relative);
    return path;
}

std::optional<std::string> Preparation::NewNameOf(const std::string& dataset,
                                                  const std::string& spectrum) const
{
    try {
        const auto hit = resolver_->Find(dataset);
        if (!hit) {
            return std::nullopt;
        }
        const auto& renamed = titles_[hit->file].renamed;
        const auto name = renamed.find(spectrum);
        return name == renamed.end() ? std::nullopt : std::optional(name->second);
    } catch (const Failure&) {
        return std::nullopt; // it may be one of two files
    }
}

std::vector<std::string> Preparation::PathsOf(const Copy& copy) const
{
    std::vector<std::string> paths;
    for (const std::string& output : copy.outputs) {
        paths.push_back((fs::path(out_) / output).string());
    }
    return paths;
}

void Preparation::WriteReports() const
{
    const bool hasMgf = std::any_of(copies_.begin(), copies_.end(),
                                    [](const Copy& copy) { return copy.kind == FileKind::Mgf; });
    if (hasMgf) {
        TextOutput titles((fs::path(out_) / kTitles).string());
        titles.Line("Dataset\tOld Title\tNew Title");
        for (std::size_t file = 0; file < titles_.size(); ++file) {
            for (const auto& [before, after] : titles_[file].rewritten) {
                titles.Line(datasets_[file] + "\t" + OneLine(before) + "\t" + OneLine(after));
            }
        }
        titles.Finish();
    }
    Json inputs = Json::array();
    for (const Copy& copy : copies_) {
        inputs.push_back(CopyJson(copy));
    }
    const Json report = {{"version", PELGRIN_VERSION}, {"inputs", inputs}};
    TextOutput output((fs::path(out_) / kReport).string());
    output.Line(report.dump(2, ' ', false, Json::error_handler_t::replace));
    output.Finish();
}

bool HasLosses(const std::vector<Copy>& copies)
{
    return std::any_of(copies.begin(), copies.end(), [](const Copy& copy) {
        return !copy.leftOut.empty() || copy.changes.count("end_added") > 0;
    });
}

void WarnOfLosses(const std::vector<Copy>& copies)
{
    for (const Copy& copy : copies) {
        for (const auto& [key, tally] : copy.leftOut) {
            const std::string path =
                tally.firstFile.empty() ? copy.input : copy.input + "/" + tally.firstFile;
            spdlog::warn("{}:{}: {}: {} left out", OneLine(path), tally.firstLine, TextOfClass(key),
                         tally.count);
        }
        const auto cut = copy.changes.find("end_added");
        if (cut != copy.changes.end()) {
            spdlog::warn("{}:{}: the file is cut off; what follows is lost", OneLine(copy.input),
                         cut->second.firstLine);
        }
    }
}

} // namespace pelgrin
