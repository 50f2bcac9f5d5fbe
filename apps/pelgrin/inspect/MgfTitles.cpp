#include "inspect/MgfTitles.h"

#include <string>
#include <vector>

#include "common/Words.h"

namespace pelgrin {

namespace {

struct FormTexts {
    const char* key;
    const char* text;
};

constexpr FormTexts kTexts[kTitleForms] = {
    {"empty", "empty"},
    {"tpp", "msconvert with TPP titles: run.5.5.2 File:\"...\", NativeID:\"...\""},
    {"thermo_native_id", "ThermoRawFileParser: controllerType=0 controllerNumber=1 scan=5"},
    {"file_converter", "OpenMS FileConverter: mz_rt_..._run"},
    {"pparse", "pParse: run.5.5.2.0.dta"},
    {"dotted_with_charge", "run.5.5.2"},
    {"dotted", "run.5.5"},
    {"mascot_distiller", "Mascot Distiller: 1: Scan 5 (rt=...)"},
    {"cmpd", "Bruker: Cmpd 5, +MSn(...), ... min"},
    {"protein_pilot", "ProteinPilot: File: ..., Sample: ..."},
    {"native_id", "a spectrum ID alone: scan=5"},
    {"other", "other forms"},
};

constexpr std::string_view kDigits = "0123456789";
constexpr std::string_view kLetters = "abcdefghijklmnopqrstuvwxyzABCDEFGHIJKLMNOPQRSTUVWXYZ";

bool IsDigits(std::string_view text)
{
    return !text.empty() && text.find_first_not_of(kDigits) == std::string_view::npos;
}

bool Holds(std::string_view text, std::string_view part)
{
    return text.find(part) != std::string_view::npos;
}

/// The last count pieces at dots, the last one first.
std::vector<std::string_view> LastPieces(std::string_view word, std::size_t count)
{
    std::vector<std::string_view> pieces;
    while (pieces.size() < count) {
        const std::size_t dot = word.rfind('.');
        if (dot == std::string_view::npos) {
            break; // the run itself is no piece
        }
        pieces.push_back(word.substr(dot + 1));
        word = word.substr(0, dot);
    }
    return pieces;
}

TitleForm FormOfDotted(std::string_view word)
{
    const std::vector<std::string_view> last = LastPieces(word, 5);
    const auto number = [&](std::size_t i) { return i < last.size() && IsDigits(last[i]); };
    if (!last.empty() && last[0] == "dta" && number(1) && number(2) && number(3) && number(4)) {
        return TitleForm::PParse;
    }
    if (last.size() >= 3 && (last[0].empty() || (number(0) && last[0].size() <= 2)) && number(1)
        && number(2)) {
        return TitleForm::DottedWithCharge;
    }
    return number(0) && number(1) ? TitleForm::Dotted : TitleForm::Other;
}

/// "617.3_5000.1_" in front.
bool IsFileConverters(std::string_view title)
{
    const std::size_t first = title.find('_');
    const std::size_t second = first == std::string_view::npos ? first : title.find('_', first + 1);
    return second != std::string_view::npos && ParseNumber(title.substr(0, first))
           && ParseNumber(title.substr(first + 1, second - first - 1));
}

/// "1: Scan 73 (", "12: Sum of 2 scans ".
bool IsDistillers(std::string_view title)
{
    const std::size_t colon = title.find(": ");
    if (colon == std::string_view::npos || !IsDigits(title.substr(0, colon))) {
        return false;
    }
    const std::string_view rest = title.substr(colon + 2);
    return BeginsWith(rest, "Scan ") || BeginsWith(rest, "Sum of ");
}

/// "scan=5", "sample=1 period=1 cycle=3 experiment=2": words with numbers alone.
bool IsNativeId(std::string_view title)
{
    while (!title.empty()) {
        const std::string_view word = title.substr(0, title.find(' '));
        const std::size_t sign = word.find_first_not_of(kLetters);
        if (sign == 0 || sign == std::string_view::npos || word[sign] != '='
            || !IsDigits(word.substr(sign + 1))) {
            return false;
        }
        title = WithoutBlanks(title.substr(word.size()));
    }
    return true;
}

} // namespace

const char* KeyOf(TitleForm form)
{
    return kTexts[static_cast<std::size_t>(form)].key;
}

const char* TextOf(TitleForm form)
{
    return kTexts[static_cast<std::size_t>(form)].text;
}

TitleForm FormOf(std::string_view title)
{
    title = WithoutBlanks(title.substr(0, title.find_last_not_of(" \t\r") + 1));
    if (title.empty()) {
        return TitleForm::Empty;
    }
    if (BeginsWith(title, "Locus:") || (BeginsWith(title, "File: ") && Holds(title, "Sample: "))) {
        return TitleForm::ProteinPilot;
    }
    if (Holds(title, " File:\"") || Holds(title, "NativeID:\"")) {
        return TitleForm::Tpp;
    }
    if (BeginsWith(title, "controllerType=")) {
        return TitleForm::Thermo;
    }
    if (IsFileConverters(title)) {
        return TitleForm::FileConverter;
    }
    if (IsDistillers(title)) {
        return TitleForm::Distiller;
    }
    if (BeginsWith(title, "Cmpd ")) {
        return TitleForm::Cmpd;
    }
    if (IsNativeId(title)) {
        return TitleForm::NativeId;
    }
    return FormOfDotted(title.substr(0, title.find(' ')));
}

} // namespace pelgrin
