#include "support/Support.h"

#include <cstdlib>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace Vorlan::test {

TempFolder::TempFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "pelgrin-test-XXXXXX").string();
    if (::mkdtemp(pattern.data()) == nullptr) {
        throw std::runtime_error("no temporary folder: " + pattern);
    }
    path_ = pattern;
}

TempFolder::~TempFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::string TempFolder::PathOf(std::string_view name) const
{
    return path_ + "/" + std::string(name);
}

std::string TempFolder::Write(std::string_view name, std::string_view bytes) const
{
    const std::string path = PathOf(name);
    // A new file each time: some file systems wait for the disk when an old one
    // is cut short and written again, which takes minutes in a random test.
    std::filesystem::remove(path);
    std::ofstream file(path, std::ios::binary | std::ios::trunc);
    file.write(bytes.data(), static_cast<std::streamsize>(bytes.size()));
    if (!file.flush()) {
        throw std::runtime_error("cannot write " + path);
    }
    return path;
}

std::string ReadFile(const std::string& path)
{
    std::ifstream file(path, std::ios::binary);
    if (!file) {
        throw std::runtime_error("cannot read " + path);
    }
    return {std::istreambuf_iterator<char>(file), std::istreambuf_iterator<char>()};
}

std::string RealDataFolder()
{
    const char* const named = std::getenv("PELGRIN_TEST_DATA");
    const std::string folder = named != nullptr ? named : PELGRIN_TEST_DATA_DEFAULT;
    return std::filesystem::is_directory(folder) ? folder : std::string();
}

std::string OpenMSFile(const std::string& name)
{
    std::vector<std::string> folders = {"/usr/share/openms", "/usr/share/OpenMS"};
    if (const char* const named = std::getenv("OPENMS_DATA_PATH")) {
        folders.insert(folders.begin(), named);
    }
    for (const std::string& folder : folders) {
        std::string path = folder + "/" + name;
        if (std::filesystem::is_regular_file(path)) {
            return path;
        }
    }
    return {};
}

std::string Repeat(std::string_view part, std::size_t count)
{
    std::string text;
    text.reserve(part.size() * count);
    for (std::size_t i = 0; i < count; ++i) {
        text += part;
    }
    return text;
}

} // namespace Vorlan::test
