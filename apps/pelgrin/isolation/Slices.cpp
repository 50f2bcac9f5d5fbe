#include "isolation/Slices.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <string_view>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/TableRows.h"
#include "files/XmlTags.h"

namespace pelgrin {

using Vorlan::PepIdentType;

namespace {

using Format = PepIdentType::EPepIdentType;

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr const char kPeptideIds[] = "MS/MS IDs";

bool IsPepXml(Format format)
{
    return format == PepIdentType::MsFraggerPepXml || format == PepIdentType::CometPepXml;
}

class Source {
public:
    explicit Source(const std::string& path) : path_(path), file_(path, std::ios::binary)
    {
        Check(file_.is_open());
    }

    /// Bytes begin to end - 1, in pieces.
    template <typename Take>
    void Give(std::uint64_t begin, std::uint64_t end, Take take)
    {
        file_.clear();
        file_.seekg(static_cast<std::streamoff>(begin));
        while (begin < end) {
            block_.resize(static_cast<std::size_t>(std::min<std::uint64_t>(kBlock, end - begin)));
            file_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
            Check(file_.gcount() == static_cast<std::streamsize>(block_.size()));
            take(std::string_view(block_));
            begin += block_.size();
        }
    }

    std::string Text(std::uint64_t begin, std::uint64_t end)
    {
        std::string text;
        Give(begin, end, [&](std::string_view bytes) { text += bytes; });
        return text;
    }

private:
    void Check(bool isWell) const
    {
        if (!isWell) {
            throw Failure(
                fmt::format("{}: cannot be read again: it was changed or is gone", path_));
        }
    }

    std::string path_;
    std::ifstream file_;
    std::string block_;
};

class Target {
public:
    explicit Target(const std::string& path)
        : path_(path), file_(path, std::ios::binary | std::ios::trunc)
    {
        Check();
    }

    void Write(std::string_view text)
    {
        file_.write(text.data(), static_cast<std::streamsize>(text.size()));
        Check();
    }

    void Close()
    {
        file_.close();
        Check();
    }

private:
    void Check() const
    {
        if (!file_) {
            throw Failure(fmt::format("{}: cannot be written: {}", path_, std::strerror(errno)));
        }
    }

    std::string path_;
    std::ofstream file_;
};

std::uint64_t EndOfFirstLine(const std::string& path)
{
    FileLines lines(path, FileLines::Mode::Binary);
    FileLines::Line line;
    lines.Next(line);
    return line.end;
}

/// The first section of pFind 2.8 that can be a record: behind the line "[Search]" and
/// the next one. A section before that is lost, and no reader begins without it.
std::uint64_t BeginOfSections(const std::string& path)
{
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line) && line.begin.rfind("[Search]", 0) != 0) {
    }
    bool isMore = lines.Next(line) && lines.Next(line);
    while (isMore && line.begin.rfind("[Spectrum", 0) != 0) {
        isMore = lines.Next(line);
    }
    return isMore ? line.offset : line.end;
}

std::uint64_t BeginOfElement(const std::string& path, std::string_view name)
{
    XmlTags tags(path);
    while (tags.Next()) {
        if (tags.Name() == name) {
            return tags.Offset();
        }
    }
    return tags.End();
}

/// The text of a cell, and its place in the row.
std::string_view CellOf(std::string_view row, std::size_t column)
{
    for (; column > 0; --column) {
        const std::size_t tab = row.find('\t');
        if (tab == std::string_view::npos) {
            return {};
        }
        row.remove_prefix(tab + 1);
    }
    return row.substr(0, row.find_first_of("\t\r\n"));
}

/// The column in which rows of a format name their spectrum.
const char* SpectrumColumn(Format format)
{
    switch (format) {
    case PepIdentType::MsgfTsv: return "ScanNum";
    case PepIdentType::MaxQuant: return "Scan number";
    case PepIdentType::Pfind3Spectra: return "File_Name";
    case PepIdentType::SequestTxt: return "First Scan";
    default: return "Spectrum Name";
    }
}

} // namespace

Slices::Slices(Format format, const ResultFiles& files, const std::string& folder)
    : format_(format), files_(files)
{
    const std::filesystem::path in(folder);
    pieces_.path = (in / std::filesystem::path(files.path).filename()).string();
    // Only MaxQuant's second file is in pieces; a list of modifications is whole.
    pieces_.second =
        format == PepIdentType::MaxQuant ? (in / "second" / "peptides.txt").string() : files.second;
    if (format == PepIdentType::MaxQuant) {
        std::error_code ignored; // what is not there cannot be written, and tells so
        std::filesystem::create_directories(in / "second", ignored);
    }
    FindHead();
}

void Slices::FindHead()
{
    if (IsPepXml(format_)) {
        headEnd_ = BeginOfElement(files_.path, "spectrum_query");
    } else if (format_ == PepIdentType::Pfind28Txt) {
        headEnd_ = BeginOfSections(files_.path);
    } else {
        headEnd_ = EndOfFirstLine(files_.path);
    }
    if (format_ == PepIdentType::MaxQuant) {
        secondHeadEnd_ = EndOfFirstLine(files_.second);
        ids_ = TableRows(files_.second).Column(kPeptideIds);
    }
}

ResultFiles Slices::Write(const std::vector<RecordPlace>& places, std::size_t begin,
                          std::size_t end) const
{
    WriteRecords(pieces_.path, places, begin, end);
    if (format_ == PepIdentType::MaxQuant) {
        WritePeptides(pieces_.second, places, begin, end);
    }
    return pieces_;
}

void Slices::WriteRecords(const std::string& path, const std::vector<RecordPlace>& places,
                          std::size_t begin, std::size_t end) const
{
    Source source(files_.path);
    Target target(path);
    char last = '\n';
    const auto write = [&](std::string_view bytes) {
        target.Write(bytes);
        last = bytes.back();
    };
    source.Give(0, headEnd_, write);
    for (; begin < end; ++begin) {
        source.Give(places[begin].begin, places[begin].end, write);
        if (last != '\n') { // the last line of the file; an empty one would end a table
            write("\n");
        }
    }
    if (IsPepXml(format_)) {
        write("</msms_run_summary>\n</msms_pipeline_analysis>\n");
    }
    target.Close();
}

void Slices::WritePeptides(const std::string& path, const std::vector<RecordPlace>& places,
                           std::size_t begin, std::size_t end) const
{
    Source source(files_.second);
    Target target(path);
    source.Give(0, secondHeadEnd_, [&](std::string_view bytes) { target.Write(bytes); });
    for (std::size_t number = 0; begin < end;) {
        const RecordPlace& first = places[begin];
        std::string ids;
        for (; begin < end && places[begin].secondBegin == first.secondBegin; ++begin) {
            ids += fmt::format("{}{}", ids.empty() ? "" : ";", number++);
        }
        std::string row = source.Text(first.secondBegin, first.secondEnd);
        const std::string_view cell = CellOf(row, ids_);
        row.replace(static_cast<std::size_t>(cell.data() - row.data()), cell.size(), ids);
        target.Write(row.back() == '\n' ? row : row + "\n");
    }
    target.Close();
}

std::string Slices::SpectrumAt(const RecordPlace& place) const
{
    constexpr std::uint64_t kLook = std::uint64_t{64} * 1024;
    Source source(files_.path);
    const std::string text = source.Text(place.begin, std::min(place.end, place.begin + kLook));
    const auto between = [&text](std::string_view front, const char* ends) {
        const std::size_t hit = text.find(front);
        const std::size_t begin = hit == std::string::npos ? text.size() : hit + front.size();
        return text.substr(begin, text.find_first_of(ends, begin) - begin);
    };
    if (IsPepXml(format_)) {
        return between("spectrum=\"", "\"");
    }
    if (format_ == PepIdentType::Pfind28Txt) {
        return between("Input=", "\r\n");
    }
    const bool isQuoted = format_ == PepIdentType::SequestTxt;
    TableRows header(files_.path, isQuoted ? TableRows::Cells::Quoted : TableRows::Cells::Plain);
    std::string cell;
    try {
        cell = CellOf(text, header.Column(SpectrumColumn(format_)));
    } catch (const Failure&) { // a native table without the column: its reader says so
    }
    cell.erase(std::remove(cell.begin(), cell.end(), '"'), cell.end());
    return cell;
}

} // namespace pelgrin
