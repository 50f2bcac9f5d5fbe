#include <algorithm>
#include <cerrno>
#include <cstring>
#include <fstream>

#include <fmt/format.h>

#include "common/Failure.h"
#include "prepare/OtherCopies.h"
#include "prepare/TextOutput.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlock = std::size_t{256} * 1024;
constexpr std::size_t kLongestHeader = std::size_t{1024} * 1024;

/// Takes the bytes of a file one after the other: a sequence may be one line of
/// any length.
class FastaWalk {
public:
    FastaWalk(const std::string& target, Copy& copy) : output_(target), copy_(copy) {}

    void Take(char c)
    {
        if (c == '\n') {
            EndLine();
            return;
        }
        if (isAtStart_ && c != '\r') {
            isAtStart_ = false;
            isHeader_ = c == '>';
        }
        if (isHeader_) {
            header_ += c;
            if (header_.size() > kLongestHeader) {
                throw Failure(fmt::format("{}:{}: expected a header of at most {} characters",
                                          copy_.input, line_, kLongestHeader));
            }
        } else if (c != '\r') {
            TakeResidue(c);
        }
    }

    void Finish()
    {
        if (!isAtStart_) {
            EndLine();
        }
        Flush();
        output_.Finish();
    }

private:
    void TakeResidue(char c)
    {
        if (copy_.held == 0) {
            isOutside_ = true;
            return;
        }
        isLower_ = isLower_ || (c >= 'a' && c <= 'z');
        block_ += c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
        if (block_.size() >= kBlock) {
            Flush();
        }
    }

    void EndLine()
    {
        if (isAtStart_) {
            copy_.Change("blank_line", line_);
        } else if (isHeader_) {
            EndHeader();
        } else if (isOutside_) {
            copy_.Change("line_before_header", line_);
        } else {
            copy_.Change("lower_case", line_, isLower_ ? 1 : 0);
            block_ += '\n';
        }
        ++line_;
        isAtStart_ = true;
        isHeader_ = isLower_ = isOutside_ = false;
    }

    /// Only a blank ends an accession (B-75).
    void EndHeader()
    {
        header_.erase(header_.find_last_not_of(" \t\r") + 1);
        const std::size_t accession = std::min(header_.find_first_not_of(" \t", 1), header_.size());
        copy_.Change("leading_blank", line_, accession > 1 ? 1 : 0);
        header_.erase(1, accession - 1);
        const std::size_t tab = header_.find_first_of(" \t");
        if (tab != std::string::npos && header_[tab] == '\t') {
            header_[tab] = ' ';
            copy_.Change("header_tab", line_);
        }
        block_ += header_ + '\n';
        header_.clear();
        ++copy_.held;
        ++copy_.written;
    }

    void Flush()
    {
        output_.Write(block_);
        block_.clear();
    }

    TextOutput output_;
    Copy& copy_;
    std::string block_; ///< to be written
    std::string header_;
    std::uint64_t line_ = 1;
    bool isAtStart_ = true; ///< of a line
    bool isHeader_ = false;
    bool isLower_ = false;
    bool isOutside_ = false;
};

} // namespace

void CopyFasta(const std::string& source, const std::string& target, Copy& copy)
{
    std::ifstream file(source, std::ios::binary);
    if (!file) {
        throw Failure(fmt::format("{}: cannot be opened: {}", source, std::strerror(errno)));
    }
    std::string begin(3, '\0');
    file.read(begin.data(), 3);
    file.clear();
    file.seekg(begin == "\xEF\xBB\xBF" ? 3 : 0);
    FastaWalk walk(target, copy);
    std::string block(kBlock, '\0');
    do {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        for (std::streamsize i = 0; i < file.gcount(); ++i) {
            walk.Take(block[static_cast<std::size_t>(i)]);
        }
    } while (file);
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end", source));
    }
    walk.Finish();
}

} // namespace pelgrin
