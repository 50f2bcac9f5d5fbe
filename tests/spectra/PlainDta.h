// The slow twin of the DTA reader: getline and string streams, written as plainly
// as the rules are told.
#ifndef VORLAN_TESTS_PLAINDTA_H
#define VORLAN_TESTS_PLAINDTA_H

#include <cstddef>
#include <fstream>
#include <locale>
#include <sstream>
#include <string>

#include <OpenMS/CONCEPT/Constants.h>

#include "DataStructures.h"

namespace Vorlan::test {

class PlainDta {
public:
    explicit PlainDta(const std::string& path) : file_(path, std::ios::in | std::ios::binary) {}

    Spectrum Load(const std::string& source, const std::string& title)
    {
        Spectrum spectrum;
        spectrum.strSource = source;
        spectrum.strTitle = title;
        NextLine();
        DropByteOrderMark();
        ReadFirstLine(spectrum);
        while (NextLine() && !line_.empty()) {
            ReadPeakLine(spectrum);
        }
        return spectrum;
    }

private:
    static std::istringstream StreamOf(const std::string& line)
    {
        std::istringstream stream(line);
        stream.imbue(std::locale::classic());
        return stream;
    }

    /// An empty line at the end of the file.
    bool NextLine()
    {
        constexpr std::size_t kLongestLine = 81919;
        if (isCut_ || !std::getline(file_, line_)) {
            line_.clear();
            return false;
        }
        if (!file_.eof() && !line_.empty() && line_.back() == '\r') {
            line_.pop_back();
        }
        isCut_ = line_.size() > kLongestLine;
        line_.resize(isCut_ ? kLongestLine : line_.size());
        line_ = line_.c_str(); // a NUL ends a line
        return true;
    }

    void DropByteOrderMark()
    {
        if (line_.compare(0, 3, "\xEF\xBB\xBF") == 0) {
            line_.erase(0, 3);
        }
    }

    void ReadFirstLine(Spectrum& spectrum) const
    {
        std::istringstream stream = StreamOf(line_);
        double mh = 0.0;
        std::uint64_t charge = 0;
        if (!(stream >> mh)) {
            mh = 0.0; // the stream writes into what it fails to read
        } else if (!(stream >> charge)) {
            charge = 0;
        }
        const double proton = OpenMS::Constants::PROTON_MASS_U;
        spectrum.nCharge = charge;
        spectrum.dPrecursorMz = (mh - proton) / static_cast<double>(charge) + proton;
    }

    void ReadPeakLine(Spectrum& spectrum)
    {
        std::istringstream stream = StreamOf(line_);
        double mz = 0.0;
        double intensity = 0.0;
        if (stream >> mz) {
            mz_ = mz;
            if (stream >> intensity) {
                intensity_ = intensity;
            }
        }
        Peak peak;
        peak.dMz = mz_;
        peak.dIntensity = intensity_;
        spectrum.vPeaks.push_back(peak);
    }

    std::ifstream file_;
    std::string line_;
    bool isCut_ = false;
    double mz_ = 0.0; ///< of the line before
    double intensity_ = 0.0;
};

} // namespace Vorlan::test

#endif // VORLAN_TESTS_PLAINDTA_H
