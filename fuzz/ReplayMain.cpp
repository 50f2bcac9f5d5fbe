// Runs a fuzz target over files, for builds without libFuzzer: every file and
// every file of every folder on the command line, in the order of their names.
#include <algorithm>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <string>
#include <vector>

#include "FuzzSupport.h"

namespace {

std::vector<std::filesystem::path> FilesOf(const std::filesystem::path& place)
{
    if (!std::filesystem::is_directory(place)) {
        return {place};
    }
    std::vector<std::filesystem::path> files;
    for (const auto& entry : std::filesystem::recursive_directory_iterator(place)) {
        if (entry.is_regular_file()) {
            files.push_back(entry.path());
        }
    }
    std::sort(files.begin(), files.end());
    return files;
}

bool Replay(const std::filesystem::path& file)
{
    std::ifstream input(file, std::ios::binary);
    if (!input) {
        std::fprintf(stderr, "cannot read %s\n", file.c_str());
        return false;
    }
    // On standard error and first, so that the last line names the file that
    // ended the process.
    std::fprintf(stderr, "%s\n", file.c_str());
    const std::string bytes((std::istreambuf_iterator<char>(input)), {});
    LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t*>(bytes.data()), bytes.size());
    return true;
}

} // namespace

int main(int argc, char** argv)
{
    int replayed = 0;
    for (int i = 1; i < argc; ++i) {
        for (const auto& file : FilesOf(argv[i])) {
            if (!Replay(file)) {
                return 1;
            }
            ++replayed;
        }
    }
    std::printf("%d files replayed\n", replayed);
    return replayed > 0 ? 0 : 1; // an empty corpus proves nothing
}
