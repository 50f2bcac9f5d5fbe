#include "support/Inputs.h"

#include <algorithm>
#include <cstdlib>
#include <filesystem>
#include <iostream>

#include <stdlib.h> // NOLINT(modernize-deprecated-headers): mkdtemp is of POSIX

namespace bench {

double Scale()
{
    const char* const text = std::getenv("PELGRIN_BENCH_SCALE");
    const double scale = text == nullptr ? 1.0 : std::atof(text);
    return scale > 0.0 ? scale : 1.0;
}

std::size_t Scaled(std::size_t fullSize)
{
    const double scaled = static_cast<double>(fullSize) * Scale();
    return std::max<std::size_t>(1, static_cast<std::size_t>(scaled));
}

TemporaryFolder::TemporaryFolder()
{
    path_ = (std::filesystem::temp_directory_path() / "pelgrin-bench-XXXXXX").string();
    if (::mkdtemp(path_.data()) == nullptr) {
        std::cerr << "cannot make a temporary folder like " << path_ << '\n';
        std::exit(1);
    }
}

TemporaryFolder::~TemporaryFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

void AppendDecimal(std::string& text, std::uint64_t units, std::size_t decimals)
{
    std::string digits = std::to_string(units);
    if (digits.size() <= decimals) {
        digits.insert(0, decimals + 1 - digits.size(), '0');
    }
    const std::size_t whole = digits.size() - decimals;
    text.append(digits, 0, whole).append(1, '.').append(digits, whole, decimals);
}

void AppendPeaks(std::string& text, Random& random, std::size_t count)
{
    std::uint64_t mz = random.Between(10000000, 12000000);
    for (std::size_t i = 0; i < count; ++i) {
        AppendDecimal(text, mz, 5);
        text += ' ';
        AppendDecimal(text, random.Between(1000, 99999999), random.Between(1, 3));
        text += '\n';
        mz += random.Between(1000, 2000000);
    }
}

CoutToNull::CoutToNull() : null_("/dev/null"), former_(std::cout.rdbuf(null_.rdbuf())) {}

CoutToNull::~CoutToNull()
{
    std::cout.rdbuf(former_);
}

} // namespace bench
