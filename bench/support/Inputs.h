// What the inputs of the benchmarks are made with: the same bytes on every run.
#ifndef PELGRIN_BENCH_INPUTS_H
#define PELGRIN_BENCH_INPUTS_H

#include <cstddef>
#include <cstdint>
#include <fstream>
#include <streambuf>
#include <string>
#include <utility>

#include <malloc.h>

namespace bench {

/// PELGRIN_BENCH_SCALE, a number above 0; 1, the full size, without it.
double Scale();

/// A full-size count at that scale, at least 1.
std::size_t Scaled(std::size_t fullSize);

/// A folder below TMPDIR (or /tmp) that goes with the object.
class TemporaryFolder {
public:
    TemporaryFolder();
    ~TemporaryFolder();
    TemporaryFolder(const TemporaryFolder&) = delete;
    TemporaryFolder& operator=(const TemporaryFolder&) = delete;

    const std::string& Path() const { return path_; }
    std::string File(const std::string& name) const { return path_ + "/" + name; }

private:
    std::string path_;
};

/// Equal numbers on every system (splitmix64).
class Random {
public:
    explicit Random(std::uint64_t seed) : state_(seed) {}

    std::uint64_t Next()
    {
        std::uint64_t z = state_ += 0x9E3779B97F4A7C15u;
        z = (z ^ (z >> 30)) * 0xBF58476D1CE4E5B9u;
        z = (z ^ (z >> 27)) * 0x94D049BB133111EBu;
        return z ^ (z >> 31);
    }

    /// A number from low to high, both included.
    std::uint64_t Between(std::uint64_t low, std::uint64_t high)
    {
        return low + Next() % (high - low + 1);
    }

    /// std::shuffle is not the same on every system.
    template <typename Container>
    void Shuffle(Container& values)
    {
        for (std::size_t i = values.size(); i > 1; --i) {
            std::swap(values[i - 1], values[Next() % i]);
        }
    }

private:
    std::uint64_t state_;
};

/// Appends units / 10^decimals: (1234567, 5) is "12.34567".
void AppendDecimal(std::string& text, std::uint64_t units, std::size_t decimals);

/// Appends count peaks, a line each: m/z ascends, with 5 decimals; intensities have
/// 1 to 3.
void AppendPeaks(std::string& text, Random& random, std::size_t count);

/// Empties value and gives the freed memory back to the system, so that every
/// repetition starts with the same heap. For use while the timing is paused.
template <typename Value>
void LetGo(Value& value)
{
    value = Value();
    ::malloc_trim(0);
}

/// While it lives, std::cout writes to the null device: what the library
/// prints still costs its time.
class CoutToNull {
public:
    CoutToNull();
    ~CoutToNull();
    CoutToNull(const CoutToNull&) = delete;
    CoutToNull& operator=(const CoutToNull&) = delete;

private:
    std::ofstream null_;
    std::streambuf* former_;
};

} // namespace bench

#endif // PELGRIN_BENCH_INPUTS_H
