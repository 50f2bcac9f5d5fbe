#include "inspect/PepXmlFacts.h"

#include <string_view>

#include <fmt/format.h>

#include "files/FileKind.h"
#include "files/XmlTags.h"

namespace pelgrin {

namespace {

/// An attribute; a long one is cut: a file may hold many of them.
std::string Clipped(const XmlTags& tags, std::string_view name)
{
    constexpr std::size_t kLongest = 1000;
    return std::string(tags.Attribute(name).substr(0, kLongest));
}

/// "M +15.994900 variable", "protein N-terminus +42.010565 variable".
std::string ModificationText(const XmlTags& tags)
{
    std::string site = Clipped(tags, "aminoacid");
    if (tags.Name() == "terminal_modification") {
        // "Y" or "N"; the schema has "n" and "c" for the terminus of a protein
        const std::string_view protein = tags.Attribute("protein_terminus");
        const bool isProteins = protein == "Y" || protein == "n" || protein == "c";
        site =
            fmt::format("{}{}-terminus", isProteins ? "protein " : "", Clipped(tags, "terminus"));
    }
    const std::string shift = Clipped(tags, "massdiff");
    const bool hasSign = !shift.empty() && (shift.front() == '-' || shift.front() == '+');
    const bool isVariable = tags.Attribute("variable") == "Y";
    return fmt::format("{} {}{} {}", site, hasSign ? "" : "+", shift,
                       isVariable ? "variable" : "fixed");
}

/// Follows the tags of a file.
class Walk {
public:
    explicit Walk(PepXmlFacts& facts) : facts_(facts) {}

    void Take(const XmlTags& tags)
    {
        const std::string_view name = tags.Name();
        if (name == "msms_run_summary") {
            BeginRun(tags);
        } else if (name == "spectrum_query") {
            ++facts_.queries;
            ++run_->queries;
        } else if (name == "search_hit") {
            ++facts_.hits;
            ++run_->hits;
            facts_.decoys.Add(tags.Attribute("protein"));
        } else {
            TakeSearch(name, tags);
        }
    }

private:
    void BeginRun(const XmlTags& tags)
    {
        ++facts_.runCount;
        if (facts_.runs.size() < PepXmlFacts::kMostRuns) {
            facts_.runs.emplace_back();
            run_ = &facts_.runs.back(); // the others are not asked any more
            run_->baseName = Clipped(tags, "base_name");
        } else {
            rest_ = PepXmlRun();
            run_ = &rest_;
        }
    }

    void TakeSearch(std::string_view name, const XmlTags& tags)
    {
        if (name == "sample_enzyme") {
            run_->enzyme = Clipped(tags, "name");
        } else if (name == "search_summary") {
            const PepXmlEngine engine =
                EngineOf(Clipped(tags, "search_engine"), Clipped(tags, "search_engine_version"));
            run_->engine = engine.name;
            run_->version = engine.version;
        } else if (name == "search_database") {
            run_->database = Clipped(tags, "local_path");
        } else if ((name == "aminoacid_modification" || name == "terminal_modification")
                   && run_->modifications.size() < PepXmlRun::kMostModifications) {
            run_->modifications.push_back(ModificationText(tags));
        }
    }

    PepXmlFacts& facts_;
    PepXmlRun rest_; ///< of what is not kept
    PepXmlRun* run_ = &rest_;
};

Facts FactsOfRun(const PepXmlRun& run)
{
    Facts facts;
    const auto add = [&](const char* key, const char* label, const std::string& text) {
        facts.push_back({key, text.empty() ? "" : label, text});
    };
    add("base_name", "base_name", run.baseName);
    add("engine", "engine", run.engine);
    add("version", "version", run.version);
    add("enzyme", "enzyme", run.enzyme);
    add("database", "database", run.database);
    facts.push_back({"queries", "queries", run.queries});
    facts.push_back({"hits", "hits", run.hits});
    facts.push_back({"modifications", "modification", run.modifications});
    return facts;
}

} // namespace

PepXmlFacts PepXmlFactsOf(const std::string& path)
{
    PepXmlFacts facts;
    Walk walk(facts);
    XmlTags tags(path);
    while (tags.Next()) {
        walk.Take(tags);
    }
    return facts;
}

void Tell(const PepXmlFacts& pepXml, Facts& facts)
{
    facts.push_back({"run_count", "Runs", pepXml.runCount});
    std::vector<Facts> runs;
    for (const PepXmlRun& run : pepXml.runs) {
        runs.push_back(FactsOfRun(run));
    }
    facts.push_back({"runs", "Run", runs});
    facts.push_back({"queries", "Queries", pepXml.queries});
    facts.push_back({"hits", "Hits", pepXml.hits});
    pepXml.decoys.Tell(facts);
}

} // namespace pelgrin
