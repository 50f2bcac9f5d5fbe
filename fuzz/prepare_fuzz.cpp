// The copies that prepare makes of any input, and copies of these: both are the
// same, byte for byte, and the second has all records of the first.
//
// The input: a letter for the kind and the file (see WriteHostInput).
#include <cstdint>
#include <filesystem>
#include <map>
#include <optional>
#include <string>

#include "FuzzSupport.h"
#include "HostInput.h"
#include "common/Failure.h"
#include "prepare/Preparation.h"

namespace {

using namespace Vorlan;
namespace fs = std::filesystem;

/// What a preparation has made.
struct Copies {
    pelgrin::Copy copy;
    std::map<std::string, std::string> files; ///< by their names in the folder
};

/// Nothing where the input is refused.
std::optional<Copies> CopiesOf(const fuzz::HostInput& input, const std::string& out)
{
    std::error_code ignored;
    fs::remove_all(out, ignored);
    pelgrin::Preparation preparation(out);
    try {
        preparation.Add(input.path, input.kind);
        preparation.Run();
        preparation.WriteReports();
    } catch (const pelgrin::Failure&) {
        return std::nullopt;
    }
    Copies copies{preparation.Copies().front(), {}};
    for (const std::string& output : copies.copy.outputs) {
        const fs::path path = fs::path(out) / output;
        if (fs::is_directory(path)) {
            for (const auto& entry : fs::directory_iterator(path)) {
                const std::string name = entry.path().filename();
                copies.files[output + "/" + name] = fuzz::BytesOf(entry.path());
            }
        } else {
            copies.files[output] = fuzz::BytesOf(path);
        }
    }
    return copies;
}

/// Prepares one of the copies once more. That of a peptides.txt goes with its msms.txt.
void CompareCopyOf(const Copies& first, const std::string& name, const fuzz::Folder& folder,
                   std::uint64_t& records)
{
    const auto second =
        CopiesOf({folder.PathOf("out") + "/" + name, first.copy.kind}, folder.PathOf("again"));
    fuzz::Check(second.has_value(), "a copy can be copied");
    for (const auto& [file, bytes] : second->files) {
        const auto former = first.files.find(file);
        fuzz::Check(former != first.files.end(), "a copy of a copy has its name");
        fuzz::CheckSame(bytes, former->second, "a copy of a copy is the same");
    }
    fuzz::Check(second->copy.held == second->copy.written, "a copy loses no record again");
    records += second->copy.written;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    static const fuzz::Folder folder;
    const fuzz::HostInput input = fuzz::WriteHostInput(folder, fuzz::TextOf(data, size));
    const auto first = CopiesOf(input, folder.PathOf("out"));
    // A folder without DTA files, all left out, is no input.
    if (!first || (first->copy.kind == pelgrin::FileKind::DtaFolder && first->files.empty())) {
        return 0;
    }
    std::uint64_t records = 0;
    for (const std::string& output : first->copy.outputs) {
        if (output != "peptides.txt") {
            CompareCopyOf(*first, output, folder, records);
        }
    }
    fuzz::Check(records == first->copy.written, "copies of copies have as many records");
    return 0;
}
