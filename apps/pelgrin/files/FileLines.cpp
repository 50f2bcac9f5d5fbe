#include "files/FileLines.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <string_view>

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr char kByteOrderMark[] = "\xEF\xBB\xBF";
constexpr std::string_view kPadding("\0 \t\r", 4);

} // namespace

FileLines::FileLines(const std::string& path, Mode mode)
    : path_(path), mode_(mode), file_(path, std::ios::binary), block_(kBlockSize)
{
    if (!file_) {
        throw Failure(fmt::format("{}: cannot be opened: {}", path, std::strerror(errno)));
    }
    Refill();
    if (mode == Mode::Text && end_ >= 3 && std::memcmp(block_.data(), kByteOrderMark, 3) == 0) {
        begin_ = 3;
        offset_ = 3;
    }
}

bool FileLines::Next(Line& line, Part part)
{
    line.length = 0;
    line.begin.clear();
    line.isPadding = true;
    line.number = ++number_;
    line.offset = offset_;
    last_ = '\0';
    bool any = false;
    while (begin_ < end_ || Refill()) {
        any = true;
        const char* const from = block_.data() + begin_;
        const auto* const feed = static_cast<const char*>(std::memchr(from, '\n', end_ - begin_));
        const std::size_t size =
            feed != nullptr ? static_cast<std::size_t>(feed - from) : end_ - begin_;
        Append(line, from, size, part);
        begin_ += size;
        offset_ += size;
        if (feed != nullptr) {
            ++begin_;
            ++offset_;
            if (mode_ == Mode::Text && last_ == '\r') {
                --line.length;
                line.begin.resize(static_cast<std::size_t>(
                    std::min<std::uint64_t>(line.length, line.begin.size())));
            }
            break;
        }
    }
    line.end = offset_;
    if (part == Part::Begin) {
        line.begin.resize(std::min(line.begin.size(), line.begin.find('\0')));
    }
    return any;
}

bool FileLines::Refill()
{
    file_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    begin_ = 0;
    end_ = static_cast<std::size_t>(file_.gcount());
    if (file_.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", path_));
    }
    return end_ > 0;
}

void FileLines::Append(Line& line, const char* bytes, std::size_t size, Part part)
{
    line.length += size;
    line.isPadding =
        line.isPadding
        && std::string_view(bytes, size).find_first_not_of(kPadding) == std::string_view::npos;
    const std::size_t kept = part == Part::Whole ? kLongestHeader : kLongestLine;
    if (line.begin.size() < kept) {
        line.begin.append(bytes, std::min(size, kept - line.begin.size()));
    }
    if (size > 0) {
        last_ = bytes[size - 1];
    }
}

bool HasNul(const FileLines::Line& line)
{
    return line.begin.size() < std::min(line.length, kLongestLine);
}

std::string ResolvedPath(const std::string& path)
{
    const auto exists = [](const std::string& text) {
        std::error_code ignored;
        return std::filesystem::exists(text, ignored);
    };
    const std::size_t last = path.rfind('\\');
    if (last == std::string::npos || exists(path)) {
        return path;
    }
    std::string all = path;
    std::replace(all.begin(), all.end(), '\\', '/');
    std::string onlyLast = path;
    onlyLast[last] = '/';
    return !exists(all) && exists(onlyLast) ? onlyLast : all;
}

void CheckReadable(const std::string& path)
{
    if (path.find('\\') != std::string::npos) {
        throw Failure(fmt::format("{}: a path with a backslash cannot be read", path));
    }
    std::error_code error;
    const std::filesystem::file_status status = std::filesystem::status(path, error);
    if (std::filesystem::exists(status) && !std::filesystem::is_regular_file(status)) {
        throw Failure(
            fmt::format("{}: is not a file that can be read at any place, but a {}", path,
                        std::filesystem::is_directory(status) ? "folder" : "pipe or device"));
    }
    const FileLines opened(path, FileLines::Mode::Binary);
}

} // namespace pelgrin
