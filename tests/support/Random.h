// Random inputs that are the same on every run.
#ifndef VORLAN_TESTS_RANDOM_H
#define VORLAN_TESTS_RANDOM_H

#include <cstddef>
#include <cstdint>
#include <random>
#include <string>
#include <string_view>

namespace Vorlan::test {

/// Numbers from the engine alone: the distributions of the standard library
/// differ from one implementation to the next.
class Random {
public:
    explicit Random(std::uint64_t seed) : engine_(seed) {}

    std::uint64_t Bits() { return engine_(); }
    /// 0 to count - 1.
    std::size_t Below(std::size_t count) { return static_cast<std::size_t>(engine_() % count); }
    bool OneIn(std::size_t count) { return Below(count) == 0; }
    /// At least low and below high.
    double Between(double low, double high)
    {
        return low + (high - low) * (static_cast<double>(engine_() >> 11) / 9007199254740992.0);
    }
    char OneOf(std::string_view alphabet) { return alphabet[Below(alphabet.size())]; }
    std::string Text(std::string_view alphabet, std::size_t length)
    {
        std::string text;
        for (std::size_t i = 0; i < length; ++i) {
            text.push_back(OneOf(alphabet));
        }
        return text;
    }

private:
    std::mt19937_64 engine_;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_RANDOM_H
