#include "spectra/PlainMgf.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <limits>

#include "CStringProcess.h"
#include "support/CLocale.h"

namespace Vorlan::test {

namespace {

constexpr std::size_t kLineBufferSize = 81920;

std::int32_t Saturated(long long value)
{
    constexpr long long lowest = std::numeric_limits<std::int32_t>::min();
    constexpr long long highest = std::numeric_limits<std::int32_t>::max();
    return static_cast<std::int32_t>(std::clamp(value, lowest, highest));
}

std::string FiveDigits(std::int32_t value)
{
    char text[32];
    std::snprintf(text, sizeof text, "%05d", value);
    return text;
}

void AppendDottedName(const std::string& word, std::vector<std::string>& names)
{
    const std::vector<std::string> pieces = CStringProcess::split(word, ".");
    const auto n = static_cast<std::int32_t>(pieces.size());
    const auto piece = [&pieces](std::int32_t i) { return pieces[static_cast<std::size_t>(i)]; };
    if (n < 2) {
        return;
    }
    std::string key = piece(0) + ".";
    if (n >= 5) {
        for (std::int32_t i = 1; i <= n - 4; ++i) {
            key += piece(i) + ".";
        }
    }
    const std::string f = FiveDigits(PlainAtoi(piece(n - 2)));
    key += f + "." + f + "." + piece(n - 1);
    names.push_back(key);
}

} // namespace

std::int32_t PlainAtoi(const std::string& text)
{
    return Saturated(std::strtoll(text.c_str(), nullptr, 10));
}

std::vector<std::string> PlainTitleNames(std::string line)
{
    CStringProcess::Trim(line);
    const std::string title = line.size() < 6 ? "" : line.substr(6);
    std::vector<std::string> names = {title};
    const std::size_t p = title.find("scan=");
    if (p != std::string::npos) {
        const auto length =
            static_cast<std::int64_t>(title.size()) - static_cast<std::int64_t>(p) - 6;
        if (length >= 0) {
            names.push_back(title.substr(p + 5, static_cast<std::size_t>(length)));
        }
    }
    std::string word = title;
    const std::size_t q = title.find(' ');
    if (q != std::string::npos) {
        word = title.substr(0, q);
        names.push_back(word);
    }
    AppendDottedName(word, names);
    return names;
}

PlainMgf::PlainMgf(const std::string& path)
    : file_(path, std::ios::in | std::ios::binary), buffer_(kLineBufferSize), line_(buffer_.data())
{
    SetMap();
}

const Spectrum& PlainMgf::Load(const std::string& name)
{
    file_.clear();
    file_.seekg(static_cast<std::streamoff>(index_.at(name)));
    current_.strTitle = name;
    GetOneSpec();
    return current_;
}

/// A failed read is no line at all.
bool PlainMgf::NextLine()
{
    return static_cast<bool>(
        file_.getline(buffer_.data(), static_cast<std::streamsize>(buffer_.size())));
}

void PlainMgf::SetMap()
{
    while (NextLine()) {
        if (line_[0] != 'B') {
            continue;
        }
        const auto position = static_cast<std::uint64_t>(file_.tellg());
        bool found = false;
        while (!found && NextLine()) {
            found = line_[0] == 'T';
        }
        if (!found) {
            break;
        }
        for (const std::string& name : PlainTitleNames(line_)) {
            index_[name] = position;
        }
    }
}

void PlainMgf::ReadHeaderLine()
{
    const CLocale plain;
    long long number = 0;
    if (line_[0] == 'C' && std::sscanf(line_, "CHARGE=%lld+", &number) == 1) {
        current_.nCharge =
            static_cast<std::uint64_t>(std::llabs(static_cast<long long>(Saturated(number))));
    } else if (line_[0] == 'P') {
        std::sscanf(line_, "PEPMASS=%lf", &current_.dPrecursorMz);
    } else if (line_[0] == 'R') {
        std::sscanf(line_, "RTINSECONDS=%lf", &current_.dRetentionTime);
    } else if (line_[0] == 'S' && std::sscanf(line_, "SCANS=%lld", &number) == 1) {
        current_.nScan = Saturated(number);
    }
}

void PlainMgf::GetOneSpec()
{
    bool hasLine = NextLine();
    while (hasLine && !(line_[0] >= '0' && line_[0] <= '9')) {
        ReadHeaderLine();
        hasLine = NextLine();
    }
    current_.vPeaks.clear();
    const CLocale plain;
    double mz = 0;
    double intensity = 0;
    while (hasLine && line_[0] != 'E') {
        std::sscanf(line_, "%lf%*[ \t]%lf", &mz, &intensity);
        Peak peak;
        peak.setMz(mz);
        peak.setIntensity(intensity);
        current_.vPeaks.push_back(peak);
        hasLine = NextLine();
    }
}

} // namespace Vorlan::test
