#include "prepare/MgfTitles.h"

#include <algorithm>
#include <functional>
#include <iterator>
#include <set>
#include <utility>

#include <fmt/format.h>

#include "common/Words.h"
#include "files/FileLines.h"
#include "files/MgfNames.h"
#include "prepare/TitleScan.h"
#include "run/DottedName.h"

namespace pelgrin {

namespace {

/// The different names of a title.
std::set<std::string> DifferentNames(const std::string& title)
{
    const MgfNames names = NamesOf("TITLE=" + title);
    std::set<std::string> different;
    for (std::size_t kind = 0; kind < kNameKinds; ++kind) {
        if (names.has[kind]) {
            different.insert(names.names[kind]);
        }
    }
    return different;
}

/// How many records have a name. By hashes, which take less room than names: two
/// names of one hash look shared, and their titles are rewritten without need.
class Owners {
public:
    void Add(const std::string& name) { ++owners_[std::hash<std::string>()(name)]; }
    std::uint32_t Of(const std::string& name) const
    {
        const auto known = owners_.find(std::hash<std::string>()(name));
        return known == owners_.end() ? 0 : known->second;
    }

private:
    std::unordered_map<std::size_t, std::uint32_t> owners_;
};

void AddOwner(const std::string& title, Owners& owners)
{
    for (const std::string& name : DifferentNames(title)) {
        owners.Add(name);
    }
}

/// Beside the owners that are known already.
Owners OwnersOf(const std::vector<std::string>& titles, Owners owners)
{
    for (const std::string& title : titles) {
        AddOwner(title, owners);
    }
    return owners;
}

bool AllOwn(const std::string& title, const Owners& owners)
{
    const std::set<std::string> names = DifferentNames(title);
    return std::all_of(names.begin(), names.end(),
                       [&owners](const std::string& name) { return owners.Of(name) == 1; });
}

void ReplaceAll(std::string& text, std::string_view from, std::string_view to)
{
    for (std::size_t hit = text.find(from); hit != std::string::npos;
         hit = text.find(from, hit + to.size())) {
        text.replace(hit, from.size(), to);
    }
}

/// Blanks, quotes and control characters, of which a file name may hold any.
bool IsOddInTitle(char c)
{
    return c == '"' || c == '\x7F' || static_cast<unsigned char>(c) <= ' ';
}

/// Steps away from the old title; each is taken when the one before shares a name.
enum Step : std::uint32_t {
    Stays,     ///< as it is
    KeepsWord, ///< its first word stays the first word
    Made,      ///< the first word is made of file, scan and charge
    Numbered,  ///< and of the place in the file; from here on more often
};

/// Of a line, for what stands around the old title.
constexpr std::size_t kRoom = 200;

/// "run.5.5.2", and "run.5.5." where the charge is unknown.
std::string DottedWord(const std::string& front, const TitledRecord& record)
{
    return fmt::format("{}.{}.{}.{}", front, record.scan, record.scan,
                       record.charge == 0 ? "" : std::to_string(record.charge));
}

// The rules, in the order in which they are asked. A name is shared when several records
// have it, or when it is reserved: see Reserve.
//
// The title of a record:
//
//     has a first word, shares no name, and tells the scan    stays
//         as its scan name, which no other record may have,
//         or has none where others have that scan
//     begins with a word that is not shared and is dotted     that word, file, old title
//         with the scan, or is the whole title
//     any other                                               "run.5.5.2", file, old title
//     one of these that shares a name after all               "run-7.5.5.2" for the seventh
//                                                             record, then "run-7-7.5.5.2"
//
// It gives the scan number as a name where the record alone has it. A name of a title that
// did not stay, in results:
//
//     was this record's alone and is not its name any more    the new first word
//     was shared, or is not this one's any more, and is a     nobody can tell, but for a
//         name in the copy                                    charge that one record has
//     any other                                               stays; it meets the record
//                                                             that had it, or none
class TitleMaker {
public:
    TitleMaker(const std::vector<TitledRecord>& records, const std::string& stem)
        : records_(records), stem_(stem)
    {
        std::replace_if(stem_.begin(), stem_.end(), IsOddInTitle, '_');
        ReplaceAll(stem_, "scan=", "scan_");
        std::vector<std::string> old;
        for (const TitledRecord& record : records) {
            old.push_back(record.title);
            ++scans_[record.scan];
            writtenScans_[record.scan] += record.isWritten ? 1 : 0;
        }
        Reserve();
        oldOwners_ = OwnersOf(old, reserved_);
    }

    NewTitles Make()
    {
        NewTitles made;
        for (std::size_t i = 0; i < records_.size(); ++i) {
            steps_.push_back(FirstStep(records_[i]));
            made.titles.push_back(TitleAt(i));
        }
        while (StepOn(made.titles, OwnersOf(made.titles, reserved_))) {
        }
        AddRenamed(made, OwnersOfWritten(made.titles));
        for (const std::uint32_t step : steps_) {
            made.isShared.push_back(step >= Numbered);
        }
        return made;
    }

private:
    /// Results that tell scan and charge alone, or that an engine names by them, may mean
    /// a record that is left out: no other one gets such a name. An unknown charge is any.
    void Reserve()
    {
        std::unordered_map<std::uint32_t, std::set<std::uint32_t>> lost; // scan -> charges
        std::set<std::string> names;
        for (const TitledRecord& record : records_) {
            if (record.isWritten) {
                continue;
            }
            lost[record.scan].insert(record.charge);
            const std::string word = WordOf(record.title);
            names.insert({DottedWord(stem_, record), DottedWord(stem_, {{}, record.scan}),
                          word.substr(0, word.rfind('.') + 1)}); // less the charge
            // With its dotted name it would take one of a charge that is the scan number.
            reserved_.Add(fmt::format("{0}.{1}.{1}", stem_, record.scan));
            if (!ScanIsOwn(record)) {
                names.insert(std::to_string(record.scan));
            }
        }
        for (const TitledRecord& record : records_) {
            const auto charges = lost.find(record.scan);
            if (charges != lost.end() && charges->second.count(0) > 0) {
                names.insert(DottedWord(stem_, record));
            }
        }
        names.erase("");
        reserved_ = OwnersOf({names.begin(), names.end()}, std::move(reserved_));
    }

    /// In the copy.
    Owners OwnersOfWritten(const std::vector<std::string>& titles) const
    {
        Owners owners;
        for (std::size_t i = 0; i < titles.size(); ++i) {
            if (records_[i].isWritten) {
                AddOwner(titles[i], owners);
            }
        }
        return owners;
    }

    bool ScanIsOwn(const TitledRecord& record) const { return scans_.at(record.scan) == 1; }

    std::uint32_t FirstStep(const TitledRecord& record) const
    {
        if (IsGood(record)) {
            return Stays;
        }
        return CanKeepWord(record) ? KeepsWord : Made;
    }

    bool IsGood(const TitledRecord& record) const
    {
        const MgfNames names = NamesOf("TITLE=" + record.title);
        const bool scanIsRight =
            names.Has(NameKind::Scan)
                ? ScanIsOwn(record) && names.Of(NameKind::Scan) == std::to_string(record.scan)
                : writtenScans_.at(record.scan) > 1 || IsMade(record.title);
        return names.Has(NameKind::FirstWord) && scanIsRight && AllOwn(record.title, oldOwners_);
    }

    /// The form of a title that is given no scan name: in a copy the scan may be its own.
    bool IsMade(const std::string& title) const
    {
        const std::string made = fmt::format("{} File:\"{}\"", WordOf(title), stem_);
        return title == made || BeginsWith(title, made + ", Title:\"");
    }

    /// A dotted word tells the scan; any other one must be the whole title.
    bool CanKeepWord(const TitledRecord& record) const
    {
        const std::string word = WordOf(record.title);
        const bool isOdd = word.empty() || word.size() + stem_.size() + kRoom >= kLongestLine
                           || word.find("scan=") != std::string::npos || oldOwners_.Of(word) != 1
                           || (IsScanNumber(word) && word != std::to_string(record.scan));
        const auto scan = ScanOfDottedWord(word);
        const bool tells = scan && *scan == record.scan;
        return !isOdd && (tells || (word == record.title && ScanIsOwn(record)));
    }

    static std::string WordOf(const std::string& title) { return title.substr(0, title.find(' ')); }

    std::string FirstWordAt(std::size_t i) const
    {
        const TitledRecord& record = records_[i];
        if (steps_[i] == KeepsWord) {
            return WordOf(record.title);
        }
        std::string word = stem_;
        for (std::uint32_t step = Numbered; step <= steps_[i]; ++step) {
            word += fmt::format("-{}", i + 1);
        }
        return DottedWord(word, record);
    }

    std::string TitleAt(std::size_t i) const
    {
        const TitledRecord& record = records_[i];
        if (steps_[i] == Stays) {
            return record.title;
        }
        std::string title = fmt::format("{} File:\"{}\"", FirstWordAt(i), stem_);
        const bool hasOld = !record.title.empty() && record.title != FirstWordAt(i)
                            && record.title.size() + title.size() + kRoom < kLongestLine;
        if (hasOld) {
            std::string old = record.title;
            ReplaceAll(old, "scan=", "scan:"); // the first one gives the name
            ReplaceAll(old, "\"", "'");
            title += fmt::format(", Title:\"{}\"", old);
        }
        return ScanIsOwn(record) ? fmt::format("{}, NativeID:\"scan={}\"", title, record.scan)
                                 : title;
    }

    /// Changes the titles that share a name; false when there is none.
    bool StepOn(std::vector<std::string>& titles, const Owners& owners)
    {
        bool any = false;
        for (std::size_t i = 0; i < titles.size(); ++i) {
            if (!AllOwn(titles[i], owners)) {
                steps_[i] = std::max<std::uint32_t>(steps_[i] + 1, Made);
                titles[i] = TitleAt(i);
                any = true;
            }
        }
        return any;
    }

    /// Names such as "run.00007.00007.2" of several records, one of which alone has that
    /// charge, and keeps the name.
    std::set<std::string> NamesByCharge(const std::vector<std::string>& titles) const
    {
        Owners fitting;
        std::set<std::string> names;
        for (std::size_t i = 0; i < records_.size(); ++i) {
            const TitledRecord& record = records_[i];
            const std::string name = NamesOf("TITLE=" + record.title).Of(NameKind::Dotted);
            const auto dotted = ParseDottedName(name);
            const bool fits = dotted && oldOwners_.Of(name) > 1
                              && (record.charge == 0 // may be that one
                                  || dotted->charge == std::to_string(record.charge));
            if (fits) {
                fitting.Add(name);
                if (record.charge != 0 && record.isWritten
                    && DifferentNames(titles[i]).count(name) > 0) {
                    names.insert(name);
                }
            }
        }
        for (auto name = names.begin(); name != names.end();) {
            name = fitting.Of(*name) == 1 ? std::next(name) : names.erase(name);
        }
        return names;
    }

    /// A name may be another record's now: "100" was the title of one, and is the scan
    /// number of the other.
    void AddRenamed(NewTitles& made, const Owners& owners) const
    {
        const std::set<std::string> byCharge = NamesByCharge(made.titles);
        for (std::size_t i = 0; i < records_.size(); ++i) {
            if (steps_[i] == Stays) {
                continue;
            }
            const MgfNames old = NamesOf("TITLE=" + records_[i].title);
            const std::set<std::string> now = DifferentNames(made.titles[i]);
            for (const NameKind kind : {NameKind::Title, NameKind::FirstWord, NameKind::Dotted}) {
                const std::string& name = old.Of(kind);
                if (!old.Has(kind) || name.empty()) {
                    continue;
                }
                const bool wasOwn = oldOwners_.Of(name) == 1;
                if (wasOwn && now.count(name) == 0 && records_[i].isWritten) {
                    made.renamed.emplace(name, WordOf(made.titles[i]));
                } else if ((!wasOwn || now.count(name) == 0) && owners.Of(name) > 0
                           && (kind != NameKind::Dotted || byCharge.count(name) == 0)) {
                    made.renamed.emplace(name, "");
                }
            }
        }
    }

    const std::vector<TitledRecord>& records_;
    std::string stem_;
    std::unordered_map<std::uint32_t, std::uint32_t> scans_; ///< scan -> records
    std::unordered_map<std::uint32_t, std::uint32_t> writtenScans_;
    Owners reserved_; ///< of names that nobody gets
    Owners oldOwners_;
    std::vector<std::uint32_t> steps_;
};

} // namespace

NewTitles TitlesOf(const std::vector<TitledRecord>& records, const std::string& stem)
{
    return TitleMaker(records, stem).Make();
}

} // namespace pelgrin
