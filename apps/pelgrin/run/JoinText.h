// What JoinAudit tells: as lines of a report, and as JSON.
#ifndef PELGRIN_JOINTEXT_H
#define PELGRIN_JOINTEXT_H

#include <optional>
#include <string>

#include <nlohmann/json_fwd.hpp>

#include "run/JoinAudit.h"

namespace pelgrin {

/// Every file with its examples, behind a line for all.
std::string FullTextOf(const JoinAudit& audit);

/// A few lines for all files together: by which names, and how far apart.
std::string ShortTextOf(const JoinAudit& audit);

/// "join" of summary.json.
nlohmann::ordered_json JsonOf(const JoinAudit& audit, const std::optional<double>& minMatch);

} // namespace pelgrin

#endif // PELGRIN_JOINTEXT_H
