// What the fuzz targets share: the input as values or text, a file that holds
// it, a silent console, and checks that end the run.
#ifndef VORLAN_FUZZ_SUPPORT_H
#define VORLAN_FUZZ_SUPPORT_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>
#include <string_view>

/// The entry of every target. libFuzzer calls it, and ReplayMain.cpp.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace Vorlan::fuzz {

// ---- Input ----------------------------------------------------------------

/// Takes values off the front of the input; behind its end there are zeros.
class Bytes {
public:
    Bytes(const std::uint8_t* data, std::size_t size) : data_(data), left_(size) {}

    bool Empty() const { return left_ == 0; }
    std::uint8_t Byte() { return Raw<std::uint8_t>(); }

    template <typename Number>
    Number Raw()
    {
        Number number{};
        const std::size_t size = left_ < sizeof number ? left_ : sizeof number;
        if (size > 0) {
            std::memcpy(&number, data_, size);
        }
        data_ += size;
        left_ -= size;
        return number;
    }

private:
    const std::uint8_t* data_;
    std::size_t left_;
};

std::string_view TextOf(const std::uint8_t* data, std::size_t size);

/// The text of a file, with its repetitions written out. They bring small
/// inputs to the limits of the line reader:
///   \x01 c n   81,915 + n % 8 times c: with the digit 4 the longest line
///   \x02 c n   8,188 + n % 8 times c: with the digit 4 the reader's first block
/// Line feeds are not repeated, since many lines cost much and show little. The
/// fifth repetition and those behind it stand for themselves. Where lines have no
/// limit, lineLength tells what to use instead of 81,919.
std::string Expanded(std::string_view text);
std::string Expanded(std::string_view text, std::size_t lineLength);

// ---- Files ----------------------------------------------------------------

/// A file in memory that other code opens by its path. Nothing of it is left
/// behind, however the process ends. Linux only.
class MemoryFile {
public:
    MemoryFile();
    ~MemoryFile();
    MemoryFile(const MemoryFile&) = delete;
    MemoryFile& operator=(const MemoryFile&) = delete;

    std::string Folder() const { return "/proc/self/fd"; }
    std::string Name() const { return std::to_string(descriptor_); }
    std::string Path() const { return Folder() + "/" + Name(); }

    void Write(std::string_view bytes);
    std::string Read() const;

private:
    int descriptor_;
};

/// Lets the library print into nothing from here on.
void SilenceConsole();

// ---- Checks ---------------------------------------------------------------

/// Ends the process with rule on standard error when it does not hold.
void Check(bool holds, const char* rule);

/// The same for two texts that must be equal; shows where they part.
void CheckSame(std::string_view seen, std::string_view expected, const char* rule);

/// Equal to the bit, so that NaN is equal to itself and 0 not to -0.
bool SameBits(double a, double b);

} // namespace Vorlan::fuzz

#endif // VORLAN_FUZZ_SUPPORT_H
