#include "files/PepXmlAudit.h"

#include <cstdlib>

#include <fmt/format.h>

#include "common/Failure.h"
#include "files/XmlTags.h"

namespace pelgrin {

namespace {

/// Counts runs, queries and hits as their tags come.
class Walk {
public:
    Walk(const std::string& path, const OnRecord& onRecord)
        : path_(path), tags_(path), onRecord_(onRecord)
    {
    }

    ResultAudit Take()
    {
        while (tags_.Next()) {
            const std::string_view name = tags_.Name();
            if (name == "msms_run_summary") {
                EndQuery(tags_.Offset());
                ++runs_;
            } else if (name == "spectrum_query") {
                EndQuery(tags_.Offset());
                isInQuery_ = true;
                query_ = {tags_.Line(), tags_.Offset(), 0, 0, 0};
                results_ = hits_ = 0;
            } else if (isInQuery_) {
                TakeInQuery(name);
            } else if (name == "search_hit") {
                audit_.Add(Unread::StrayHit, tags_.Line());
            }
        }
        EndQuery(tags_.End());
        if (runs_ == 0) {
            throw Failure(
                fmt::format("{}: expected pepXML with an element msms_run_summary", path_));
        }
        return audit_;
    }

private:
    void TakeInQuery(std::string_view name)
    {
        if (name == "/spectrum_query") {
            EndQuery(tags_.End());
        } else if (name == "search_result") {
            ++results_;
        } else if (name == "search_hit") {
            TakeHit();
        } else if (name == "alternative_protein" && runs_ == 1 && results_ == 1 && hits_ == 1) {
            audit_.Add(Unread::FurtherProtein, tags_.Line());
        }
    }

    /// Only the first hit of the first search_result of a query is read.
    void TakeHit()
    {
        hits_ += results_ == 1 ? 1 : 0;
        if (runs_ != 1) {
            audit_.Add(Unread::FurtherRun, tags_.Line());
        } else if (results_ != 1 || hits_ != 1) {
            audit_.Add(Unread::FurtherHit, tags_.Line());
        }
    }

    void EndQuery(std::uint64_t end)
    {
        if (isInQuery_ && hits_ == 0) {
            audit_.Add(Unread::QueryWithoutHit, query_.line);
        } else if (isInQuery_ && runs_ == 1) {
            query_.end = end;
            audit_.AddRecord(query_, onRecord_);
        }
        isInQuery_ = false;
    }

    std::string path_;
    XmlTags tags_;
    const OnRecord& onRecord_;
    ResultAudit audit_;
    std::uint64_t runs_ = 0;
    bool isInQuery_ = false;
    RecordPlace query_;
    std::uint64_t results_ = 0;
    std::uint64_t hits_ = 0; ///< of the first search_result
};

/// "C2 (160.030649)".
std::string ResidueText(const XmlTags& tags, const std::string& peptide)
{
    const std::string position(tags.Attribute("position"));
    const std::size_t index = std::strtoull(position.c_str(), nullptr, 10);
    const std::string letter =
        index > 0 && index <= peptide.size() ? peptide.substr(index - 1, 1) : std::string();
    return fmt::format("{}{} ({})", letter, position, tags.Attribute("mass"));
}

} // namespace

ResultAudit AuditPepXml(const std::string& path, const OnRecord& onRecord)
{
    return Walk(path, onRecord).Take();
}

std::string HitText(const std::string& path, std::uint64_t record)
{
    std::uint64_t line = 0;
    std::uint64_t seen = 0;
    AuditPepXml(path,
                [&](const RecordPlace& query) { line = seen++ == record ? query.line : line; });
    XmlTags tags(path);
    std::string peptide;
    std::string residues;
    while (tags.Next()) {
        const std::string_view name = tags.Name();
        if (tags.Line() < line || line == 0) {
            continue;
        }
        if (name == "search_hit") {
            peptide = tags.Attribute("peptide");
        } else if (name == "mod_aminoacid_mass") {
            residues += (residues.empty() ? "" : ", ") + ResidueText(tags, peptide);
        } else if (name == "/search_hit" || name == "/spectrum_query") {
            break;
        }
    }
    return fmt::format("peptide \"{}\", modified residues {}", peptide, residues);
}

} // namespace pelgrin
