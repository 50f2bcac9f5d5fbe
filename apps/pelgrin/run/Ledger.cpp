#include "run/Ledger.h"

#include <algorithm>
#include <iterator>
#include <map>
#include <stdexcept>
#include <string_view>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>

#include "common/Failure.h"
#include "common/Terminal.h"

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;

constexpr std::size_t kExamples = 5;

// Classes beside those of Unread and Reason.
constexpr char kRejected[] = "record_rejected";
constexpr char kRefused[] = "file_refused";
constexpr char kUnknown[] = "file_unknown";
constexpr char kCut[] = "row_cut";
constexpr char kBehindLongLine[] = "spectrum_behind_long_line";
constexpr char kBehindMark[] = "spectrum_behind_mark";
constexpr char kWithoutTitle[] = "spectrum_without_title";
constexpr char kHidden[] = "spectrum_hidden";
constexpr char kWithoutProteins[] = "without_proteins";
constexpr char kNotANumber[] = "score_not_a_number";

std::string PlaceText(const std::string& path, std::uint64_t line)
{
    return line == 0 ? path : fmt::format("{}:{}", path, line);
}

/// Adds a class of a file to the file and to the page.
void AddClass(LedgerPage& page, LedgerPage::File& file, LedgerClass entry)
{
    if (entry.count == 0) {
        return;
    }
    const auto same = std::find_if(page.classes.begin(), page.classes.end(),
                                   [&](const LedgerClass& one) { return one.key == entry.key; });
    if (same == page.classes.end()) {
        page.classes.push_back(entry);
    } else {
        same->count += entry.count;
        for (const std::string& example : entry.examples) {
            if (same->examples.size() < kExamples) {
                same->examples.push_back(example);
            }
        }
    }
    file.classes.push_back(std::move(entry));
}

LedgerClass ClassOf(const ResultFile& file, Unread reason)
{
    const ResultAudit::Count& count = file.audit.Of(reason);
    return {KeyOf(reason),  TextOf(reason),
            count.units,    IsHeld(reason),
            IsLoss(reason), {PlaceText(FileOf(file.files, reason), count.firstLine)}};
}

LedgerPage::File PageOf(const ResultFile& file, const Rejects& rejects, LedgerPage& page)
{
    LedgerPage::File entry{file.files.path, file.held, file.end - file.begin, {}};
    for (std::size_t i = 0; i < kUnread; ++i) {
        AddClass(page, entry, ClassOf(file, static_cast<Unread>(i)));
    }
    LedgerClass rejected{kRejected, "records that their reader did not give", 0, true, true, {}};
    LedgerClass refused{kRefused, "matches in files that cannot be read", 0, true, true, {}};
    for (const RejectedPart& part : rejects.parts) {
        LedgerClass& which = part.isFile ? refused : rejected;
        if (part.file == file.files.path) {
            which.count += part.records;
            if (which.examples.size() < kExamples) {
                which.examples.push_back(part.Text());
            }
        }
    }
    if (refused.count == 0) { // nobody knows what is lost with them
        refused = {kUnknown,
                   "files that cannot be read and hold nothing that can be counted",
                   refused.examples.size(),
                   false,
                   true,
                   std::move(refused.examples)};
    }
    AddClass(page, entry, rejected);
    AddClass(page, entry, refused);
    AddClass(page, entry,
             {kCut,
              "rows of more than 81919 characters",
              file.audit.cutsRow ? 1U : 0U,
              false,
              true,
              {PlaceText(file.files.path, file.audit.longLine)}});
    return entry;
}

LedgerPage::File PageOfFolder(const SpectraFile& file, LedgerPage& page)
{
    LedgerPage::File entry{file.path, file.spectra, file.spectra, {}};
    for (const auto& [names, reason] :
         {std::pair{&file.dta.notReadable, Reason::SpectrumNotReadable},
          {&file.dta.withoutPrecursor, Reason::SpectrumWithoutPrecursor},
          {&file.dta.withoutPeaks, Reason::SpectrumWithoutPeaks}}) {
        const std::string first = names->empty() ? std::string() : "/" + names->front();
        AddClass(page, entry,
                 {KeyOf(reason), TextOf(reason), names->size(), true, true, {file.path + first}});
        entry.kept -= names->size();
    }
    return entry;
}

/// A spectrum is kept when a name finds it and no other, and the library reads it
/// under that name.
LedgerPage::File PageOfMgf(const SpectraFile& file, LedgerPage& page)
{
    const MgfAudit& audit = file.mgf;
    LedgerPage::File entry{file.path, audit.spectra + (audit.hidesFirst ? 1 : 0), 0, {}};
    const auto& records = file.index.Records();
    LedgerClass hidden{kHidden, "spectra that no name finds alone", 0, true, true, {}};
    std::map<Reason, LedgerClass> unusable;
    const std::vector<std::string_view> names = file.index.NamesThatFind();
    for (std::size_t i = 0; i < names.size(); ++i) {
        LedgerClass* lost = names[i].empty() ? &hidden : nullptr;
        const auto hit = file.unusable.find(std::string(names[i]));
        if (lost == nullptr && hit != file.unusable.end()) {
            lost = &unusable[hit->second];
        }
        if (lost == nullptr) {
            ++entry.kept;
        } else if (++lost->count <= kExamples) {
            lost->examples.push_back(PlaceText(file.path, records[i].line));
        }
    }
    for (auto& [reason, one] : unusable) {
        one.key = KeyOf(reason);
        one.text = TextOf(reason);
        AddClass(page, entry, one);
    }
    AddClass(page, entry, hidden);
    AddClass(page, entry,
             {kWithoutTitle,
              "spectra without a title of their own",
              audit.spectra - audit.spectraBehindLongLine - records.size(),
              true,
              true,
              {PlaceText(file.path, audit.firstWithoutTitle)}});
    AddClass(page, entry,
             {kBehindMark,
              "spectra that a byte order mark hides",
              audit.hidesFirst ? 1U : 0U,
              true,
              true,
              {PlaceText(file.path, 1)}});
    AddClass(page, entry,
             {kBehindLongLine,
              "spectra behind a line of more than 81919 characters",
              audit.spectraBehindLongLine,
              true,
              true,
              {PlaceText(file.path, audit.longLine)}});
    return entry;
}

Json LedgerJson(const std::vector<LedgerClass>& classes, const std::set<std::string>& allowed)
{
    Json json = Json::object();
    for (const LedgerClass& one : classes) {
        json[one.key] = {{"count", one.count},
                         {"text", one.text},
                         {"in_sum", one.isInSum},
                         {"loss", one.isLoss},
                         {"allowed", allowed.count(one.key) > 0},
                         {"examples", one.examples}};
    }
    return json;
}

Json LedgerJson(const LedgerPage::File& file)
{
    Json classes = Json::object();
    for (const LedgerClass& one : file.classes) {
        classes[one.key] = one.count;
    }
    return {{"path", file.path}, {"held", file.held}, {"kept", file.kept}, {"classes", classes}};
}

} // namespace

void Ledger::AddPrepared(const std::vector<PreparedInput>& inputs)
{
    if (inputs.empty()) {
        return;
    }
    LedgerPage page{"inputs", "records of the inputs that were prepared", 0, 0, {}, {}};
    for (const PreparedInput& input : inputs) {
        LedgerPage::File file{input.path, input.held, input.written, {}};
        for (const PreparedInput::LeftOut& left : input.leftOut) {
            AddClass(page, file,
                     {left.key, left.text, left.records, left.isHeld, true, {left.example}});
        }
        page.held += input.held;
        page.kept += input.written;
        page.files.push_back(std::move(file));
    }
    Add(std::move(page));
}

void Ledger::AddMatches(const ResultsRead& results, const Counts& counts)
{
    LedgerPage page{"matches", "matches in the result files", counts.held, counts.read, {}, {}};
    for (const ResultFile& file : results.files) {
        page.files.push_back(PageOf(file, results.rejects, page));
    }
    Add(std::move(page));
}

void Ledger::AddSpectra(const std::vector<SpectraFile>& files)
{
    LedgerPage page{"spectra", "spectra in the files of spectra", 0, 0, {}, {}};
    for (const SpectraFile& file : files) {
        const bool isFolder = file.format == Vorlan::DatasetType::Dta;
        page.files.push_back(isFolder ? PageOfFolder(file, page) : PageOfMgf(file, page));
        page.held += page.files.back().held;
        page.kept += page.files.back().kept;
    }
    Add(std::move(page));
}

void Ledger::AddRecords(const Counts& counts)
{
    // Decoys and matches above the threshold have done what they are there for.
    const std::uint64_t judged = counts.aboveThreshold + counts.decoys;
    LedgerPage page{"records", "records of the run", counts.read, counts.annotated + judged, {},
                    {}};
    LedgerPage::File none;
    AddClass(page, none,
             {kWithoutProteins,
              "matches without proteins, which FDR control cannot judge",
              counts.withoutProteins,
              true,
              true,
              {}});
    AddClass(page, none,
             {kNotANumber,
              "matches with a score that is no number",
              counts.scoreNotANumber,
              true,
              true,
              {}});
    for (std::size_t i = 0; i < kReasons; ++i) {
        const auto reason = static_cast<Reason>(i);
        LedgerClass one{KeyOf(reason), TextOf(reason), counts.notUsed[i], true, true, {}};
        for (const auto& [detail, records] : counts.details[i]) {
            if (one.examples.size() < kExamples) {
                one.examples.push_back(detail);
            }
        }
        AddClass(page, none, std::move(one));
    }
    Add(std::move(page));
}

void Ledger::AddTable(const NotHeldCounts& notHeld, const std::string& path)
{
    const std::vector<NotHeldCounts::Loss> losses = notHeld.Losses();
    if (losses.empty()) {
        return;
    }
    const std::uint64_t records = notHeld.Records();
    LedgerPage page{"table", "records in the table that is written", records, records, {}, {}};
    LedgerPage::File file{path, records, records, {}};
    for (const NotHeldCounts::Loss& loss : losses) {
        AddClass(page, file,
                 {loss.key, loss.text, loss.count, false, true, {PlaceText(path, loss.firstLine)}});
    }
    page.files.push_back(std::move(file));
    Add(std::move(page));
}

void Ledger::Add(LedgerPage page)
{
    std::uint64_t sum = page.kept;
    for (const LedgerClass& one : page.classes) {
        sum += one.isInSum ? one.count : 0;
    }
    if (sum != page.held) {
        throw std::logic_error(fmt::format("the ledger does not add up: {}: {} held, {} named",
                                           page.text, page.held, sum));
    }
    pages_.push_back(std::move(page));
}

bool Ledger::HasLosses() const
{
    for (const LedgerPage& page : pages_) {
        for (const LedgerClass& one : page.classes) {
            if (one.isLoss && allowed_.count(one.key) == 0) {
                return true;
            }
        }
    }
    return false;
}

std::string Ledger::Text() const
{
    std::string text = "\nLedger                     held      kept\n";
    for (const LedgerPage& page : pages_) {
        fmt::format_to(std::back_inserter(text), "  {:<20}{:>9} {:>9}   {}\n", page.key, page.held,
                       page.kept, page.text);
        for (const LedgerClass& one : page.classes) {
            const char* const mark =
                !one.isLoss ? "no loss" : (allowed_.count(one.key) > 0 ? "allowed" : "lost");
            fmt::format_to(std::back_inserter(text), "    {:<8}{:>8}  {}: {}{}\n", mark, one.count,
                           one.key, one.text,
                           one.examples.empty() || one.examples.front().empty()
                               ? ""
                               : " (" + OneLine(one.examples.front()) + ")");
        }
    }
    return text;
}

std::string Ledger::Json() const
{
    pelgrin::Json pages = pelgrin::Json::object();
    for (const LedgerPage& page : pages_) {
        pelgrin::Json files = pelgrin::Json::array();
        for (const LedgerPage::File& file : page.files) {
            files.push_back(LedgerJson(file));
        }
        pages[page.key] = {{"text", page.text},
                           {"held", page.held},
                           {"kept", page.kept},
                           {"classes", LedgerJson(page.classes, allowed_)},
                           {"files", files}};
    }
    const pelgrin::Json json = {
        {"allowed", allowed_}, {"has_losses", HasLosses()}, {"pages", pages}};
    return json.dump(2, ' ', false, pelgrin::Json::error_handler_t::replace) + "\n";
}

std::vector<std::string> LossClasses()
{
    std::set<std::string> keys = {kRejected,        kRefused,    kUnknown,      kCut,
                                  kBehindLongLine,  kBehindMark, kWithoutTitle, kHidden,
                                  kWithoutProteins, kNotANumber};
    for (std::size_t i = 0; i < kUnread; ++i) {
        if (IsLoss(static_cast<Unread>(i))) {
            keys.insert(KeyOf(static_cast<Unread>(i)));
        }
    }
    for (std::size_t i = 0; i < kReasons; ++i) {
        keys.insert(KeyOf(static_cast<Reason>(i)));
    }
    for (const std::string& key : TableLossClasses()) {
        keys.insert(key);
    }
    return {keys.begin(), keys.end()};
}

std::set<std::string> ParseAllowed(const std::vector<std::string>& texts,
                                   const std::vector<std::string>& more)
{
    std::vector<std::string> classes = LossClasses();
    classes.insert(classes.end(), more.begin(), more.end());
    std::set<std::string> allowed;
    for (const std::string& text : texts) {
        for (std::size_t begin = 0; begin <= text.size();) {
            const std::size_t end = std::min(text.find(',', begin), text.size());
            const std::string key = text.substr(begin, end - begin);
            if (std::find(classes.begin(), classes.end(), key) == classes.end()) {
                throw UsageError(fmt::format("--allow: \"{}\" is no class of losses; there is: {}",
                                             key, fmt::join(classes, ", ")));
            }
            allowed.insert(key);
            begin = end + 1;
        }
    }
    return allowed;
}

} // namespace pelgrin
