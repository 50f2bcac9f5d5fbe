#include "inspect/EntryFacts.h"

#include <algorithm>
#include <charconv>
#include <string_view>

#include "common/Words.h"
#include "files/FileLines.h"
#include "files/XmlTags.h"

namespace pelgrin {

namespace {

/// Follows the lines of a file of one kind.
class Walk {
public:
    Walk(FileKind kind, EntryFacts& facts) : kind_(kind), facts_(facts) {}

    void Take(const FileLines::Line& line)
    {
        const std::string_view text = WithoutBlanks(line.begin);
        if (text.empty()) {
            return;
        }
        switch (kind_) {
        case FileKind::PFind3Modifications: TakeOfPFind3(text); break;
        case FileKind::ModificationTable: facts_.entries += line.number > 1 ? 1 : 0; break;
        case FileKind::MsgfModifications: TakeOfMsgf(text.substr(0, text.find('#'))); break;
        default: TakeParameter(text, line.number); break;
        }
    }

private:
    /// "@NUMBER_MODIFICATION=1616", "name1=Oxidation[M] 0".
    void TakeOfPFind3(std::string_view text)
    {
        constexpr std::string_view kNumber = "@NUMBER_MODIFICATION=";
        if (BeginsWith(text, kNumber)) {
            std::uint64_t number = 0;
            const auto read =
                std::from_chars(text.data() + kNumber.size(), text.data() + text.size(), number);
            if (read.ec == std::errc()) {
                facts_.declared = number;
            }
        }
        facts_.entries += BeginsWith(text, "name") ? 1 : 0;
    }

    /// "O1,M,opt,any,Oxidation".
    void TakeOfMsgf(std::string_view text)
    {
        if (std::count(text.begin(), text.end(), ',') != 4
            || text.find('=') != std::string_view::npos) {
            return;
        }
        ++facts_.entries;
        const std::size_t first = text.find(',', text.find(',') + 1) + 1;
        const std::string sort =
            Lower(WithoutBlanks(text.substr(first, text.find(',', first) - first)));
        facts_.sorts.Add(sort == "fix" ? "fixed" : sort == "opt" ? "variable" : "others");
    }

    void TakeParameter(std::string_view text, std::uint64_t line)
    {
        constexpr std::string_view kComet = "# comet_version ";
        constexpr std::string_view kFragger = "# MSFragger-";
        if (line == 1 && BeginsWith(text, kComet)) {
            facts_.engine = "Comet";
            facts_.version = text.substr(kComet.size());
        } else if (line == 1 && BeginsWith(text, kFragger)) {
            facts_.engine = "MSFragger";
            facts_.version = text.substr(kFragger.size());
        } else if (text.front() == '[') {
            section_ = text.substr(0, text.find(']') + 1);
        } else if (text.front() != '#' && text.find('=') != std::string_view::npos) {
            ++facts_.entries;
            if (!section_.empty()) {
                facts_.sorts.Add(section_);
            }
        }
    }

    FileKind kind_;
    EntryFacts& facts_;
    std::string section_;
};

/// Elements umod:mod with their umod:specificity.
EntryFacts UnimodFactsOf(const std::string& path)
{
    EntryFacts facts;
    XmlTags tags(path);
    while (tags.Next()) {
        const std::string_view name = tags.Name();
        const std::string_view local = name.substr(name.find(':') + 1);
        if (name.front() == '/') {
            continue;
        }
        facts.entries += local == "mod" ? 1 : 0;
        if (local == "specificity") {
            facts.sorts.Add("specificities");
        }
    }
    return facts;
}

} // namespace

EntryFacts EntryFactsOf(FileKind kind, const std::string& path)
{
    if (kind == FileKind::Unimod) {
        return UnimodFactsOf(path);
    }
    EntryFacts facts;
    Walk walk(kind, facts);
    FileLines lines(path, FileLines::Mode::Text);
    FileLines::Line line;
    while (lines.Next(line)) {
        walk.Take(line);
    }
    return facts;
}

void Tell(const EntryFacts& entries, Facts& facts)
{
    if (!entries.engine.empty()) {
        facts.push_back({"engine", "Engine", entries.engine});
        facts.push_back({"version", "Version", entries.version});
    }
    facts.push_back({"entries", "Entries", entries.entries});
    if (entries.declared) {
        facts.push_back({"declared_entries", "Declared", *entries.declared});
    }
    facts.push_back({"entry_sorts", "Of these", entries.sorts.Counts()});
}

} // namespace pelgrin
