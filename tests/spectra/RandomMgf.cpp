#include "spectra/RandomMgf.h"

#include <algorithm>
#include <cstdio>
#include <vector>

namespace Vorlan::test {

namespace {

class Writer {
public:
    explicit Writer(std::mt19937& random) : random_(random) {}

    std::string Text()
    {
        lineEnd_ = OneIn(6) ? "\r\n" : "\n";
        text_ = OneIn(40) ? "\xEF\xBB\xBF" : "";
        while (OneIn(3)) {
            Line(Pick({"COM=x", "# comment", "", "TOL=0.2", "CHARGE=2+ and 3+", "BATCH"}));
        }
        for (std::size_t records = random_() % 6; records > 0; --records) {
            Record();
        }
        if (!text_.empty() && OneIn(4)) {
            text_.resize(text_.size() - random_() % text_.size() % 30);
        }
        return text_;
    }

private:
    bool OneIn(unsigned n) { return random_() % n == 0; }

    std::string Pick(const std::vector<std::string>& texts)
    {
        return texts[random_() % texts.size()];
    }

    void Line(const std::string& line)
    {
        text_ += line;
        if (OneIn(60)) {
            Spoil();
        }
        text_ += lineEnd_;
    }

    /// Puts a stray byte somewhere into the last ones.
    void Spoil()
    {
        if (text_.empty()) {
            return;
        }
        const std::size_t place =
            text_.size() - 1 - random_() % std::min<std::size_t>(8, text_.size());
        text_[place] = std::string("\0\t \r\n.E9B\xFFT-", 12)[random_() % 12];
    }

    void Record()
    {
        if (!OneIn(25)) {
            Line(OneIn(20) ? Pick({"BEGIN", "B", "BOGUS", " BEGIN IONS", "begin ions"})
                           : "BEGIN IONS");
        }
        if (!OneIn(15)) {
            Line((OneIn(20) ? Pick({"T", "TITLE", "title=", "TOL=", " TITLE="}) : "TITLE=")
                 + Title());
        }
        while (!OneIn(4)) {
            HeaderLine();
        }
        if (!OneIn(10)) {
            for (std::size_t peaks = random_() % 6; peaks > 0; --peaks) {
                PeakLine();
            }
        }
        if (!OneIn(20)) {
            Line(OneIn(20) ? Pick({"END", "E", "end ions", " END IONS"}) : "END IONS");
        }
        while (OneIn(4)) {
            Line(Pick({"", "# comment", "  "}));
        }
    }

    std::string Title()
    {
        const std::string scan = std::to_string(random_() % 30);
        switch (random_() % 6) {
        case 0: return "run." + scan + "." + scan + ".2.dta";
        case 1: return "run." + scan + "." + scan + ".2 File:\"a\", NativeID:\"scan=" + scan + "\"";
        case 2: return " Cmpd " + scan;
        case 3: return "scan=" + scan;
        case 4: return Pick({"", ".", "a.b", "a.b.c.7.2.0.dta", "\xC3\xA9.1.2", "a..b", "same"});
        default: return "controllerType=0 controllerNumber=1 scan=" + scan;
        }
    }

    std::string Number()
    {
        switch (random_() % 8) {
        case 0: return std::to_string(random_() % 2000);
        case 1: return Pick({"1e3", "2.5E-2", "-7", "+8.5", ".5", "9.", "0", "1e999", "1e-400"});
        case 2:
            return Pick({"nan", "inf", "0x1F", "1,5", "1e", "1e+", "x", "", "-", ".", "0x", "5x"});
        default: return Decimal();
        }
    }

    std::string Decimal()
    {
        char text[64];
        std::snprintf(text, sizeof text, "%u.%0*u", static_cast<unsigned>(random_() % 3000),
                      static_cast<int>(1 + random_() % 12),
                      static_cast<unsigned>(random_() % 10000));
        return text;
    }

    void HeaderLine()
    {
        const std::string key = Pick({"PEPMASS=", "CHARGE=", "RTINSECONDS=", "SCANS=", "PEPMASS=",
                                      "CHARGE=", "SEQ=", "RT=", "PEP", "C"});
        if (key == "CHARGE=") {
            Line(key + Pick({"2+", "3", "+2", "-2", "2+ and 3+", "99999999999+", "", " 4+", "x"}));
        } else if (key == "SCANS=") {
            Line(key + Pick({"17", "3-5", "-1", "99999999999", "", "+9", "x", " 6"}));
        } else {
            Line(key + Number() + (OneIn(4) ? Pick({" 12.5", "\t7", "-9.5", ","}) : ""));
        }
    }

    void PeakLine()
    {
        if (OneIn(15)) {
            Line(Pick({"", "# 1 2", "TITLE=late", "BEGIN IONS", "SCANS=3", "\t", "five"}));
            return;
        }
        const std::string lead = OneIn(20) ? Pick({" ", "\t", "+"}) : "";
        const std::string gap = OneIn(4) ? Pick({"\t", "  ", " \t ", ",", ";", "\v", ""}) : " ";
        Line(lead + Number() + gap + Number() + (OneIn(6) ? Pick({" 2+", "\t", " ", "e5"}) : ""));
    }

    std::mt19937& random_;
    std::string text_;
    std::string lineEnd_;
};

} // namespace

std::string RandomMgf(std::mt19937& random)
{
    return Writer(random).Text();
}

} // namespace Vorlan::test
