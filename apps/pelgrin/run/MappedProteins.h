// The proteins of a run, between identification and annotation.
#ifndef PELGRIN_MAPPEDPROTEINS_H
#define PELGRIN_MAPPEDPROTEINS_H

#include <functional>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json_fwd.hpp>

#include "proteins/ProteinMap.h"
#include "proteins/ProteinTable.h"

namespace pelgrin {

class MappedProteins {
public:
    using Record = Vorlan::PeptideIdentification;

    /// Reads the database of plan. What it lacks is told on standard error. Throws
    /// Failure, with file and line, when it is none.
    explicit MappedProteins(ProteinPlan plan);

    /// Finds the peptides of the records, and fills in their evidences.
    void Fill(std::vector<Record>& records);
    /// Makes proteins.tsv, line by line, from the records that were filled.
    void WriteTable(const std::vector<Record>& records,
                    const std::function<void(std::string_view)>& write);

    // What follows is known when the table is made.
    std::uint64_t Listed() const { return listed_; }
    /// Something was not found, does not agree or was left out.
    bool HasLosses() const { return counts_.Losses() > 0; }

    /// Lines of a report: everything, or only what is found and lost.
    enum class Details { All, Few };
    std::string Text(Details details) const;
    /// The sites with most matches; empty without modifications.
    std::string SitesText() const;
    /// "proteins" of summary.json.
    nlohmann::ordered_json Summary() const;

private:
    ProteinPlan plan_;
    ProteinDatabase database_;
    std::unique_ptr<const ProteinMap> map_; ///< from Fill to WriteTable
    ProteinCounts counts_;
    TopSites sites_;
    std::uint64_t listed_ = 0;
};

} // namespace pelgrin

#endif // PELGRIN_MAPPEDPROTEINS_H
