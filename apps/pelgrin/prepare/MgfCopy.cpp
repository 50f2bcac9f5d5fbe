#include "prepare/MgfCopy.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <optional>

#include "prepare/MgfTitles.h"
#include "prepare/MgfWalk.h"
#include "prepare/TextOutput.h"
#include "prepare/TitleScan.h"

namespace pelgrin {

namespace {

/// The values that a record must not take over from the one before it, in the
/// order in which they are written.
enum Value : std::size_t { PepMass, Charge, Time, Scans };
constexpr std::size_t kValues = 4;
constexpr std::array<const char*, kValues> kKeys = {"PEPMASS", "CHARGE", "RTINSECONDS", "SCANS"};

constexpr const char kWithoutPeaks[] = "without_peaks";
constexpr std::size_t kMostHeaders = 1000; // beside the title and the values

std::optional<Value> ValueOf(const std::string& key)
{
    for (std::size_t i = 0; i < kValues; ++i) {
        if (key == kKeys[i]) {
            return static_cast<Value>(i);
        }
    }
    return std::nullopt;
}

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

/// The library reads a number from its beginning.
bool BeginsWithNumber(std::string_view text)
{
    const std::size_t first = !text.empty() && (text[0] == '+' || text[0] == '-') ? 1 : 0;
    const std::size_t digit = text.size() > first && text[first] == '.' ? first + 1 : first;
    return text.size() > digit && IsDigit(text[digit]);
}

bool HasDecimalComma(std::string_view text)
{
    const std::size_t comma = text.find(',');
    return comma != std::string_view::npos && comma > 0 && comma + 1 < text.size()
           && text.find_first_not_of("+-0123456789") == comma && IsDigit(text[comma + 1]);
}

/// "2+ and 3+", "2,3": more than one number.
bool IsList(std::string_view charge)
{
    const std::size_t begin = charge.find_first_of("0123456789");
    const std::size_t end = std::min(charge.find_first_not_of("0123456789", begin), charge.size());
    return charge.find_first_of("0123456789", end) != std::string_view::npos;
}

/// A value as it is written, and whether it was there.
struct Given {
    std::string text; ///< empty: not there
    std::uint64_t line = 0;
};

/// A charge is unknown where several are listed: every one of them was searched.
std::string ChargeText(std::string_view value, std::uint64_t line, Copy& copy)
{
    if (!BeginsWithNumber(value)) {
        copy.Change("value_unreadable", line);
        return "0";
    }
    if (IsList(value)) {
        copy.Change("charge_list", line);
        return "0";
    }
    return std::string(value);
}

/// The text of a value in the copy; what the library cannot read is 0, unknown.
/// An unknown SCANS stays empty here: the scan stands for it.
std::string ValueText(Value which, std::string_view value, std::uint64_t line, Copy& copy)
{
    if (which == Charge) {
        return ChargeText(value, line, copy);
    }
    if (which == Scans) {
        return LeadingValue(value) ? std::string(value) : std::string();
    }
    if (!BeginsWithNumber(value)) {
        copy.Change("value_unreadable", line);
        return "0";
    }
    return std::string(value);
}

std::uint32_t ChargeNumber(std::string_view text)
{
    const std::size_t digit = text.find_first_of("0123456789");
    return digit == std::string_view::npos ? 0 : LeadingNumber(text.substr(digit)).value_or(0);
}

/// What the first pass keeps of a record.
struct Record {
    std::uint64_t line = 0;
    const char* leftOut = nullptr; ///< the reason
    bool hasPeaks = false;
    bool hasTitle = false;
    std::string title;
    std::uint32_t charge = 0;
    std::array<bool, kValues> has{};
    std::optional<std::uint32_t> scans;
};

/// The first pass: what the records are. Changes are counted in the second one.
class Survey {
public:
    explicit Survey(const std::string& source) : walk_(source) {}

    void Take()
    {
        while (walk_.Next()) {
            TakePart();
        }
    }

    std::vector<Record> records;
    std::string fileCharge; ///< CHARGE= before the first record
    std::uint64_t fileChargeLine = 0;

private:
    void TakePart()
    {
        switch (walk_.Part()) {
        case MgfPart::Begin:
            records.emplace_back().line = walk_.Line();
            headers_ = 0;
            break;
        case MgfPart::Header: TakeHeader(records.back()); break;
        case MgfPart::Peak: records.back().hasPeaks = true; break;
        case MgfPart::Comma: LeaveOut("decimal_comma"); break;
        case MgfPart::LongLine: LeaveOut("long_line"); break;
        case MgfPart::Nul: LeaveOut("nul_byte"); break;
        case MgfPart::FileHeader:
            if (walk_.Key() == "CHARGE" && !walk_.Value().empty()) {
                fileCharge = walk_.Value();
                fileChargeLine = walk_.Line();
            }
            break;
        case MgfPart::End:
        case MgfPart::EndMissing:
            if (!records.back().hasPeaks) {
                LeaveOut(kWithoutPeaks);
            }
            break;
        default: break;
        }
    }

    /// The first reason counts.
    void LeaveOut(const char* reason)
    {
        const char*& leftOut = records.back().leftOut;
        leftOut = leftOut == nullptr ? reason : leftOut;
    }

    void TakeHeader(Record& record)
    {
        if (walk_.Key() == "TITLE") {
            if (!record.hasTitle) {
                record.title = walk_.Value();
                record.hasTitle = true;
            }
            return;
        }
        const auto which = ValueOf(walk_.Key());
        if (!which) {
            if (++headers_ > kMostHeaders) {
                LeaveOut("header_too_long");
            }
            return;
        }
        if (walk_.IsCut()) {
            LeaveOut("nul_byte");
        }
        if ((*which == PepMass || *which == Time) && HasDecimalComma(walk_.Value())) {
            LeaveOut("decimal_comma");
        }
        Copy uncounted;
        const std::string text = ValueText(*which, walk_.Value(), walk_.Line(), uncounted);
        if (*which == Charge) {
            record.charge = ChargeNumber(text);
        } else if (*which == Scans) {
            record.scans = LeadingValue(text);
        }
        record.has[*which] = true;
    }

    MgfWalk walk_;
    std::size_t headers_ = 0; ///< of the record
};

/// Of the records that are written, in order.
struct Written {
    std::vector<std::string> titles;
    std::vector<std::uint32_t> scans;
};

/// The second pass writes.
class Writer {
public:
    Writer(const std::string& source, const std::string& target, const Survey& survey, Copy& copy)
        : source_(source), walk_(source), output_(target), survey_(survey), copy_(copy)
    {
        for (const Record& record : survey.records) {
            for (std::size_t i = 0; record.leftOut == nullptr && i < kValues; ++i) {
                wanted_[i] = wanted_[i] || record.has[i];
            }
        }
        wanted_[Charge] = wanted_[Charge] || !survey.fileCharge.empty();
    }

    void Write(const Written& written)
    {
        records_ = &written;
        if (!survey_.fileCharge.empty()) {
            fileCharge_ = ChargeText(survey_.fileCharge, survey_.fileChargeLine, copy_);
        }
        while (walk_.Next()) {
            TakePart();
        }
        output_.Finish();
    }

private:
    const Record& Current() const { return survey_.records[number_ - 1]; }
    bool IsWritten() const { return Current().leftOut == nullptr; }

    void TakePart()
    {
        const MgfPart part = walk_.Part();
        if (part == MgfPart::Begin) {
            Begin();
        } else if (part == MgfPart::FileHeader) {
            if (walk_.Key() != "CHARGE") {
                copy_.Change("line_outside", walk_.Line());
            }
        } else if (part == MgfPart::Outside) {
            copy_.Change(walk_.Text().empty() ? "blank_line" : "line_outside", walk_.Line());
        } else if (IsWritten()) {
            TakeInRecord(part);
        }
    }

    void Begin()
    {
        ++number_;
        ++copy_.held;
        if (number_ > survey_.records.size()) {
            FailAsChanged(source_);
        }
        if (!IsWritten()) {
            copy_.LeaveOut(Current().leftOut, Current().line);
            return;
        }
        values_ = {};
        others_.clear();
        hasHead_ = false;
    }

    void TakeInRecord(MgfPart part)
    {
        const bool isCut = walk_.IsCut() && (part == MgfPart::Header || part == MgfPart::End);
        copy_.Change("nul_cut", walk_.Line(), isCut ? 1 : 0);
        switch (part) {
        case MgfPart::Header: TakeHeader(); break;
        case MgfPart::Peak: TakePeak(); break;
        case MgfPart::EndMissing: copy_.Change("end_ions_added", Current().line); [[fallthrough]];
        case MgfPart::End:
            output_.Line("END IONS");
            ++copy_.written;
            break;
        case MgfPart::Blank: copy_.Change("blank_line", walk_.Line()); break;
        case MgfPart::Comment: copy_.Change("comment_line", walk_.Line()); break;
        case MgfPart::NoHeader: copy_.Change("line_no_header", walk_.Line()); break;
        default: copy_.Change("line_no_peak", walk_.Line()); break;
        }
    }

    void TakeHeader()
    {
        if (walk_.Text().compare(0, walk_.Key().size() + 1, walk_.Key() + "=") != 0) {
            copy_.Change("key_spelling", walk_.Line());
        } else if (walk_.HasLeadingBlank()) {
            copy_.Change("leading_blank", walk_.Line());
        }
        if (walk_.Key() == "TITLE") {
            if (hasTitle_ == number_) {
                copy_.Change("header_repeated", walk_.Line());
            }
            hasTitle_ = number_;
        } else if (const auto which = ValueOf(walk_.Key())) {
            Given& given = values_[*which];
            if (given.line != 0) {
                copy_.Change("header_repeated", walk_.Line());
            }
            given = {ValueText(*which, walk_.Value(), walk_.Line(), copy_), walk_.Line()};
        } else if (walk_.Key().front() == 'B') {
            copy_.Change("line_no_header", walk_.Line()); // it would begin a record
        } else {
            others_.push_back(walk_.Key() + "=" + std::string(walk_.Value()));
        }
    }

    void TakePeak()
    {
        if (!hasHead_) {
            WriteHead();
        }
        if (walk_.HasLeadingBlank()) {
            copy_.Change("leading_blank", walk_.Line());
        }
        output_.Line(walk_.Text());
    }

    void WriteHead()
    {
        hasHead_ = true;
        const std::string& title = records_->titles[copy_.written];
        output_.Line("BEGIN IONS");
        output_.Line("TITLE=" + title);
        for (std::size_t i = 0; i < kValues; ++i) {
            const std::string text = TextOf(static_cast<Value>(i));
            if (!text.empty()) {
                output_.Line(std::string(kKeys[i]) + "=" + text);
            }
        }
        for (const std::string& line : others_) {
            output_.Line(line);
        }
    }

    /// Empty: no record of the file has this value.
    std::string TextOf(Value which)
    {
        if (!wanted_[which] || !values_[which].text.empty()) {
            return values_[which].text;
        }
        if (which == Charge && !fileCharge_.empty()) {
            copy_.Change("charge_of_file", Current().line);
            return fileCharge_;
        }
        copy_.Change("header_filled", Current().line);
        return which == Scans ? std::to_string(records_->scans[copy_.written]) : "0";
    }

    std::string source_;
    MgfWalk walk_;
    TextOutput output_;
    const Survey& survey_;
    Copy& copy_;
    const Written* records_ = nullptr;
    std::array<bool, kValues> wanted_{};
    std::string fileCharge_;
    std::size_t number_ = 0; ///< of the record, from 1
    std::size_t hasTitle_ = 0;
    bool hasHead_ = false;
    std::array<Given, kValues> values_;
    std::vector<std::string> others_;
};

std::uint32_t ScanOf(const Record& record, std::size_t number)
{
    if (const auto scan = ScanOfTitle(record.title)) {
        return *scan;
    }
    if (record.scans) {
        return *record.scans;
    }
    return CountOfTitle(record.title).value_or(static_cast<std::uint32_t>(number));
}

/// A spectrum with peaks, which an engine may have searched. Without peaks nothing is
/// found, and results that name such a record mean its twin.
bool MayBeMeant(const Record& record)
{
    return record.leftOut != kWithoutPeaks;
}

} // namespace

TitleChanges CopyMgf(const std::string& source, const std::string& target, const std::string& stem,
                     Copy& copy)
{
    Survey survey(source);
    survey.Take();
    Copy uncounted;
    const std::uint32_t fileCharge =
        survey.fileCharge.empty() ? 0 : ChargeNumber(ChargeText(survey.fileCharge, 0, uncounted));
    std::vector<TitledRecord> titled;
    std::vector<std::uint64_t> lines;
    for (std::size_t i = 0; i < survey.records.size(); ++i) {
        Record& record = survey.records[i];
        if (MayBeMeant(record)) {
            lines.push_back(record.line);
            const std::uint32_t scan = ScanOf(record, i + 1);
            titled.push_back({std::move(record.title), scan,
                              record.has[Charge] ? record.charge : fileCharge,
                              record.leftOut == nullptr});
        }
    }
    NewTitles titles = TitlesOf(titled, stem);
    TitleChanges changes;
    Written written;
    for (std::size_t i = 0; i < titled.size(); ++i) {
        if (!titled[i].isWritten) {
            continue;
        }
        if (titled[i].title != titles.titles[i]) {
            copy.Change(titled[i].title.empty() ? "title_made" : "title_rewritten", lines[i]);
            changes.rewritten.emplace_back(titled[i].title, titles.titles[i]);
        }
        copy.Change("name_made_unique", lines[i], titles.isShared[i] ? 1 : 0);
        written.titles.push_back(std::move(titles.titles[i]));
        written.scans.push_back(titled[i].scan);
    }
    changes.renamed = std::move(titles.renamed);
    Writer(source, target, survey, copy).Write(written);
    return changes;
}

} // namespace pelgrin
