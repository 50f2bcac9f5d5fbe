#include "files/XmlTags.h"

#include <algorithm>
#include <cerrno>
#include <cstring>

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr std::size_t kLongestTag = std::size_t{64} * 1024;

std::uint64_t FeedsIn(const char* begin, const char* end)
{
    return static_cast<std::uint64_t>(std::count(begin, end, '\n'));
}

} // namespace

XmlTags::XmlTags(const std::string& path) : path_(path), file_(path, std::ios::binary)
{
    if (!file_) {
        throw Failure(fmt::format("{}: cannot be opened: {}", path, std::strerror(errno)));
    }
    block_.resize(kBlock);
}

bool XmlTags::Next()
{
    line_ += linesInTag_;
    linesInTag_ = 0;
    tag_.clear();
    while (begin_ < end_ || Refill()) {
        const char* const begin = block_.data() + begin_;
        const char* const end = block_.data() + end_;
        const char* const hit = std::find(begin, end, '<');
        line_ += FeedsIn(begin, hit);
        begin_ += static_cast<std::size_t>(hit - begin) + (hit == end ? 0 : 1);
        if (hit == end) {
            continue;
        }
        offset_ = blockOffset_ + begin_ - 1;
        bool whole = AppendToEnd();
        if (whole && tag_.size() > 1 && tag_[tag_.size() - 2] == '-' && tag_.front() != '!') {
            whole = AppendToEnd();
        }
        return whole;
    }
    return false;
}

std::string_view XmlTags::Name() const
{
    return std::string_view(tag_).substr(0, tag_.find_first_of(" \t\r\n>/", 1));
}

std::string_view XmlTags::Attribute(std::string_view name) const
{
    const std::string_view tag = tag_;
    for (std::size_t hit = tag.find(name); hit != std::string_view::npos;
         hit = tag.find(name, hit + 1)) {
        const std::size_t value = hit + name.size() + 2;
        const bool begins = hit > 0 && std::strchr(" \t\r\n", tag[hit - 1]) != nullptr;
        if (begins && tag.substr(hit + name.size(), 2) == "=\"") {
            return tag.substr(value, tag.find('"', value) - value);
        }
    }
    return {};
}

bool XmlTags::Refill()
{
    blockOffset_ += end_;
    file_.read(block_.data(), static_cast<std::streamsize>(block_.size()));
    begin_ = 0;
    end_ = static_cast<std::size_t>(file_.gcount());
    if (file_.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", path_));
    }
    return end_ > 0;
}

bool XmlTags::AppendToEnd()
{
    while (begin_ < end_ || Refill()) {
        const char* const begin = block_.data() + begin_;
        const char* const end = block_.data() + end_;
        const char* const hit = std::find(begin, end, '>');
        const char* const behind = hit == end ? end : hit + 1;
        linesInTag_ += FeedsIn(begin, behind);
        const std::size_t room = kLongestTag - std::min(kLongestTag, tag_.size());
        tag_.append(begin, std::min(room, static_cast<std::size_t>(behind - begin)));
        begin_ += static_cast<std::size_t>(behind - begin);
        if (hit != end) {
            return true;
        }
    }
    return false;
}

} // namespace pelgrin
