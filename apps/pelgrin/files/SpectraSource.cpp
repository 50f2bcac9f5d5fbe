#include "files/SpectraSource.h"

#include <filesystem>
#include <string_view>

#include <fmt/format.h>

#include "common/Failure.h"
#include "common/Words.h"
#include "files/DtaAudit.h"
#include "files/FileLines.h"

namespace pelgrin {

namespace {

constexpr const char kMzML[] = "mzML";
constexpr const char kMzXML[] = "mzXML";
constexpr const char kOtherXml[] = "XML";

bool EndsIn(std::string_view name, std::string_view ending)
{
    return name.size() > ending.size() && Lower(name.substr(name.size() - ending.size())) == ending;
}

/// The length of ".mzML", ".mzXML" or one of these and ".gz" at the end of path,
/// in any case; 0 when there is none. Says which in format.
std::size_t XmlEnding(const std::string& path, std::string& format)
{
    const std::string file = std::filesystem::path(path).filename().string();
    for (const char* const name : {kMzML, kMzXML}) {
        for (const char* const packed : {"", ".gz"}) {
            const std::string ending = "." + Lower(name) + packed;
            if (EndsIn(file, ending)) {
                format = name;
                return ending.size();
            }
        }
    }
    return 0;
}

/// The format of an XML file by what stands at its beginning; empty when it is none.
std::string XmlContent(const std::string& path)
{
    constexpr std::uint64_t kLines = 50;
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    bool isXml = false;
    while (lines.Next(line) && line.number <= kLines) {
        const std::string& text = line.begin;
        const std::size_t first = text.find_first_not_of(" \t\r");
        if (line.number == 1 && (first == std::string::npos || text[first] != '<')) {
            return {};
        }
        isXml = isXml || text.find("<?xml") != std::string::npos;
        if (text.find("<mzML") != std::string::npos
            || text.find("<indexedmzML") != std::string::npos) {
            return kMzML;
        }
        if (text.find("<mzXML") != std::string::npos) {
            return kMzXML;
        }
    }
    return isXml ? kOtherXml : "";
}

} // namespace

bool IsFolder(const std::string& path)
{
    std::error_code ignored;
    return std::filesystem::is_directory(path, ignored);
}

std::string WithoutLastSeparators(const std::string& path)
{
    const std::size_t last = path.find_last_not_of('/');
    return last != std::string::npos && IsFolder(path) ? path.substr(0, last + 1) : path;
}

DatasetPlace PlaceOfDataset(const std::string& path)
{
    std::filesystem::path whole = std::filesystem::absolute(WithoutLastSeparators(path));
    if (whole.filename() == "." || whole.filename() == "..") {
        std::error_code error;
        const std::filesystem::path real = std::filesystem::canonical(whole, error);
        whole = error ? whole : real;
    }
    return {whole.parent_path().string(), whole.filename().string()};
}

void CheckMgf(const std::string& path)
{
    CheckReadable(path);
    if (EndsIn(path, ".dta")) {
        throw Failure(fmt::format("{}: is one DTA file; expected the folder that holds it", path));
    }
    std::string format;
    if (XmlEnding(path, format) == 0) {
        format = XmlContent(path);
    }
    if (format == kOtherXml) {
        throw Failure(
            fmt::format("{}: is an XML file; expected MGF, or a folder of DTA files", path));
    }
    if (!format.empty()) {
        throw Failure(fmt::format("{}: is {}, which is not read; convert it to MGF: {}", path,
                                  format, ConversionOf(path, format)));
    }
}

void CheckDtaFolder(const std::string& path)
{
    if (path.find('\\') != std::string::npos) {
        throw Failure(fmt::format("{}: a path with a backslash cannot be read", path));
    }
    std::error_code ignored;
    if (std::filesystem::exists(path, ignored) && !IsFolder(path)) {
        throw Failure(fmt::format("{}: expected a folder of DTA files, but it is a file", path));
    }
    if (DtaFileNames(path).empty()) {
        throw Failure(fmt::format("{}: is a folder without DTA files", path));
    }
}

void CheckSpectra(const std::string& path)
{
    if (IsFolder(path)) {
        CheckDtaFolder(path);
    } else {
        CheckMgf(path);
    }
}

std::string ConversionOf(const std::string& path, const std::string& format)
{
    std::string told;
    const std::size_t ending = XmlEnding(path, told);
    const std::string in = ending == 0 ? path + "." + format : path;
    const std::string rename =
        ending == 0 ? fmt::format("mv {} {} && ", ShellWord(path), ShellWord(in)) : "";
    return fmt::format("{}FileConverter -in {} -out {} (Debian package topp)", rename,
                       ShellWord(in), ShellWord(path.substr(0, path.size() - ending) + ".mgf"));
}

} // namespace pelgrin
