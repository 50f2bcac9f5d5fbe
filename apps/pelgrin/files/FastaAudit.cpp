#include "files/FastaAudit.h"

#include <cerrno>
#include <cstring>
#include <fstream>
#include <string_view>
#include <vector>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/FileLines.h"
#include "files/Packed.h"

namespace pelgrin {

namespace {

constexpr std::size_t kBlockSize = std::size_t{256} * 1024;
constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

bool IsBetween(char c, char first, char last)
{
    return c >= first && c <= last;
}

/// Takes the bytes of a file one by one: lines may have any length.
class Walk {
public:
    explicit Walk(const std::string& path) : path_(path) {}

    void Take(std::string_view block)
    {
        for (const char c : block) {
            TakeByte(c);
        }
    }

    FastaAudit Finish()
    {
        if (audit_.headers == 0) {
            NoHeader("the file is empty");
        }
        return audit_;
    }

private:
    void TakeByte(char c)
    {
        if (c == '\n') {
            if (audit_.headers == 0) {
                NoHeader("it is empty");
            }
            atLineStart_ = true;
            hasReturn_ = false;
            ++line_;
            return;
        }
        if (c == '\r') {
            hasReturn_ = true;
        } else if (hasReturn_) {
            throw Failure(fmt::format("{}:{}: a carriage return stands inside a line; expected "
                                      "lines that end in a line feed",
                                      path_, line_));
        }
        if (atLineStart_) {
            BeginLine(c);
        } else if (!inHeader_) {
            TakeResidue(c);
        }
    }

    void BeginLine(char first)
    {
        atLineStart_ = false;
        inHeader_ = first == '>';
        if (inHeader_) {
            ++audit_.headers;
        } else if (audit_.headers == 0) {
            NoHeader("it begins with something else");
        } else {
            TakeResidue(first);
        }
    }

    void TakeResidue(char c)
    {
        if (IsBetween(c, 'A', 'Z')) {
            ++audit_.residues;
        } else if (IsBetween(c, 'a', 'z')) {
            ++audit_.lowerCase;
            audit_.firstLowerCase = audit_.firstLowerCase != 0 ? audit_.firstLowerCase : line_;
        } else if (c != ' ' && c != '\t' && c != '\r') {
            ++audit_.others;
        }
    }

    [[noreturn]] void NoHeader(const char* reason) const
    {
        throw Failure(fmt::format("{}:{}: expected a FASTA file, whose first line is a header "
                                  "that begins with \">\"; {}",
                                  path_, 1, reason));
    }

    const std::string& path_;
    FastaAudit audit_;
    std::uint64_t line_ = 1;
    bool atLineStart_ = true;
    bool inHeader_ = false;
    bool hasReturn_ = false; ///< a carriage return that the line should end with
};

std::string_view WithoutByteOrderMark(std::string_view block)
{
    const bool hasMark = block.substr(0, kByteOrderMark.size()) == kByteOrderMark;
    return block.substr(hasMark ? kByteOrderMark.size() : 0);
}

} // namespace

FastaAudit AuditFasta(const std::string& path)
{
    CheckReadable(path);
    RefusePacked(path);
    std::ifstream file(path, std::ios::binary);
    std::vector<char> block(kBlockSize);
    Walk walk(path);
    for (bool isFirst = true; file; isFirst = false) {
        file.read(block.data(), static_cast<std::streamsize>(block.size()));
        const std::string_view bytes(block.data(), static_cast<std::size_t>(file.gcount()));
        walk.Take(isFirst ? WithoutByteOrderMark(bytes) : bytes);
    }
    if (file.bad()) {
        throw Failure(fmt::format("{}: cannot be read to its end: {}", path, std::strerror(errno)));
    }
    return walk.Finish();
}

} // namespace pelgrin
