#include "FuzzSupport.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <iostream>
#include <streambuf>

#include <sys/mman.h>
#include <unistd.h>

#include "util/LineReader.h"

namespace Vorlan::fuzz {

namespace {

/// Takes everything and keeps nothing.
class NullBuffer : public std::streambuf {
protected:
    int_type overflow(int_type c) override { return traits_type::not_eof(c); }
    std::streamsize xsputn(const char*, std::streamsize size) override { return size; }
};

/// Readable on one line of a terminal.
std::string Escaped(std::string_view text)
{
    std::string result;
    for (const char c : text) {
        char code[8];
        const bool isPlain = c >= ' ' && c <= '~' && c != '\\';
        std::snprintf(code, sizeof code, isPlain ? "%c" : "\\x%02X",
                      static_cast<unsigned>(static_cast<unsigned char>(c)));
        result += code;
    }
    return result;
}

} // namespace

std::string_view TextOf(const std::uint8_t* data, std::size_t size)
{
    return {reinterpret_cast<const char*>(data), size};
}

std::string Expanded(std::string_view text)
{
    return Expanded(text, LineReader::kMaxLineLength);
}

std::string Expanded(std::string_view text, std::size_t lineLength)
{
    constexpr std::size_t kMostRepetitions = 4;
    constexpr std::size_t kFirstBlock = 8192;
    std::string result;
    std::size_t repetitions = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        const bool isLine = text[i] == '\x01';
        const bool repeats =
            (isLine || text[i] == '\x02') && i + 2 < text.size() && text[i + 1] != '\n';
        if (!repeats || ++repetitions > kMostRepetitions) {
            result += text[i];
            continue;
        }
        const std::size_t count =
            (isLine ? lineLength : kFirstBlock) - 4 + static_cast<unsigned char>(text[i + 2]) % 8;
        result.append(count, text[i + 1]);
        i += 2;
    }
    return result;
}

MemoryFile::MemoryFile() : descriptor_(::memfd_create("pelgrin-fuzz", 0))
{
    Check(descriptor_ >= 0, "a file in memory can be made");
}

MemoryFile::~MemoryFile()
{
    ::close(descriptor_);
}

void MemoryFile::Write(std::string_view bytes)
{
    const bool written = ::ftruncate(descriptor_, 0) == 0
                         && ::pwrite(descriptor_, bytes.data(), bytes.size(), 0)
                                == static_cast<ssize_t>(bytes.size());
    Check(written, "the file in memory can be written");
}

std::string MemoryFile::Read() const
{
    const off_t size = ::lseek(descriptor_, 0, SEEK_END);
    std::string bytes(static_cast<std::size_t>(size), '\0');
    Check(::pread(descriptor_, bytes.data(), bytes.size(), 0) == size,
          "the file in memory can be read");
    return bytes;
}

void SilenceConsole()
{
    // Never freed: std::cout is flushed behind the end of all statics.
    static auto* const buffer = new NullBuffer;
    std::cout.rdbuf(buffer);
}

void Check(bool holds, const char* rule)
{
    if (!holds) {
        std::fprintf(stderr, "\nbroken rule: %s\n", rule);
        std::abort();
    }
}

void CheckSame(std::string_view seen, std::string_view expected, const char* rule)
{
    if (seen == expected) {
        return;
    }
    const std::size_t shorter = std::min(seen.size(), expected.size());
    std::size_t part = 0;
    while (part < shorter && seen[part] == expected[part]) {
        ++part;
    }
    std::fprintf(stderr,
                 "\nequal up to byte %zu, then\n  seen     (%zu bytes) %s\n"
                 "  expected (%zu bytes) %s\n",
                 part, seen.size(), Escaped(seen.substr(part, 200)).c_str(), expected.size(),
                 Escaped(expected.substr(part, 200)).c_str());
    Check(false, rule);
}

bool SameBits(double a, double b)
{
    // NOLINTNEXTLINE(bugprone-suspicious-memory-comparison): bits are meant
    return std::memcmp(&a, &b, sizeof a) == 0;
}

} // namespace Vorlan::fuzz
