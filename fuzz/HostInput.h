// Inputs of the targets that call the host program: a file as a user has it, in a
// folder of its own.
#ifndef PELGRIN_FUZZ_HOSTINPUT_H
#define PELGRIN_FUZZ_HOSTINPUT_H

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <optional>
#include <string>
#include <string_view>

#include "FuzzSupport.h"
#include "files/FileKind.h"

namespace Vorlan::fuzz {

/// A folder in the system's folder for temporary files, removed with all that is in it.
class Folder {
public:
    Folder()
    {
        std::string path =
            (std::filesystem::temp_directory_path() / "pelgrin-fuzz-XXXXXX").string();
        Check(::mkdtemp(path.data()) != nullptr, "a folder can be made");
        path_ = path;
    }
    ~Folder() { std::filesystem::remove_all(path_); }
    Folder(const Folder&) = delete;
    Folder& operator=(const Folder&) = delete;

    std::string PathOf(const std::string& name) const { return (path_ / name).string(); }

private:
    std::filesystem::path path_;
};

inline std::string BytesOf(const std::filesystem::path& path)
{
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

inline void WriteBytes(const std::filesystem::path& path, std::string_view bytes)
{
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    Check(file.flush().good(), "an input can be written");
}

/// An input on the disk.
struct HostInput {
    std::string path;
    /// What the user says that it is; nothing: what the file shows.
    std::optional<pelgrin::FileKind> kind;
};

/// What the first byte of an input asks for.
struct HostForm {
    char letter = '\0';
    const char* name = nullptr; ///< of the file or folder
    std::optional<pelgrin::FileKind> kind;
};

/// The form of an input; other letters stand for the last one.
inline const HostForm& HostFormOf(std::string_view input)
{
    using pelgrin::FileKind;
    static constexpr HostForm kForms[] = {
        {'m', "run.mgf", FileKind::Mgf},
        {'d', "spectra", FileKind::DtaFolder},
        {'p', "run.pep.xml", FileKind::PepXml},
        {'n', "run.txt", FileKind::NativeTable},
        {'g', "run.tsv", FileKind::Msgf},
        {'q', "msms.txt", FileKind::MaxQuantMatches},
        {'3', "run.spectra", FileKind::PFind3},
        {'2', "run.txt", FileKind::PFind28},
        {'s', "run_PSMs.txt", FileKind::Sequest},
        {'f', "run.fasta", FileKind::Fasta},
        {'t', "mods.txt", FileKind::ModificationTable},
        {'z', "run.mgf.gz", std::nullopt}, // its bytes as they are
        {'?', "run.1.mgf", std::nullopt},
    };
    for (const HostForm& form : kForms) {
        if (!input.empty() && input.front() == form.letter) {
            return form;
        }
    }
    return *std::prev(std::end(kForms));
}

/// Up to three files of a folder, with \x03 between them.
inline void WriteDtaFolder(const std::filesystem::path& folder, std::string_view text)
{
    std::filesystem::create_directory(folder);
    for (const char* const name : {"run.1.1.2.dta", "run.2.2.2.dta", "run.3.3.3.dta"}) {
        const std::size_t size = std::min(text.find('\x03'), text.size());
        WriteBytes(folder / name, text.substr(0, size));
        if (size == text.size()) {
            return;
        }
        text.remove_prefix(size + 1);
    }
}

/// Writes an input below the folder "in", which is made anew. The first byte tells its
/// form, the rest is the text (see Expanded); behind the first \x03 stands that of a
/// peptides.txt beside it.
inline HostInput WriteHostInput(const Folder& folder, std::string_view input)
{
    const HostForm& form = HostFormOf(input);
    const std::filesystem::path in = folder.PathOf("in");
    std::filesystem::remove_all(in);
    std::filesystem::create_directory(in);
    const std::filesystem::path path = in / form.name;
    input.remove_prefix(input.empty() ? 0 : 1);
    if (form.letter == 'z') {
        WriteBytes(path, input);
        return {path, form.kind};
    }
    const std::string expanded = Expanded(input);
    const std::string_view text = expanded;
    if (form.kind == pelgrin::FileKind::DtaFolder) {
        WriteDtaFolder(path, text);
        return {path, form.kind};
    }
    const std::size_t split = std::min(text.find('\x03'), text.size());
    WriteBytes(path, text.substr(0, split));
    if (split < text.size()) {
        WriteBytes(in / "peptides.txt", text.substr(split + 1));
    }
    return {path, form.kind};
}

} // namespace Vorlan::fuzz

#endif // PELGRIN_FUZZ_HOSTINPUT_H
