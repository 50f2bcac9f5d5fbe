#include "run/Rejects.h"

#include <algorithm>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "common/Terminal.h"

namespace pelgrin {

std::string RejectedPart::Text() const
{
    return OneLine(fmt::format("{}{}: {}{}", file, line > 0 ? fmt::format(":{}", line) : "",
                               spectrum.empty() ? "" : fmt::format("spectrum \"{}\": ", spectrum),
                               reason));
}

std::string Rejects::Table() const
{
    std::string text = "File\tLine\tSpectrum\tRecords\tReason\n";
    for (const RejectedPart& part : parts) {
        text += fmt::format("{}\t{}\t{}\t{}\t{}\n", OneLine(part.file),
                            part.line > 0 ? std::to_string(part.line) : "", OneLine(part.spectrum),
                            part.records, OneLine(part.reason));
    }
    return text;
}

void Rejects::Warn(const std::string& place) const
{
    constexpr std::size_t kShown = 3;
    for (std::size_t i = 0; i < std::min(kShown, parts.size()); ++i) {
        spdlog::warn("{}; {}", parts[i].Text(),
                     parts[i].isFile ? "the file is not read" : "the record is left out");
    }
    if (parts.size() > kShown) {
        spdlog::warn("{} more records or files cannot be read{}", parts.size() - kShown,
                     place.empty() ? "" : "; all are in " + OneLine(place));
    }
    for (const std::string& text : inPieces) {
        spdlog::warn("{}; it was read in pieces, and every record could be read", OneLine(text));
    }
    for (const std::string& text : restarts) {
        spdlog::info("{}; it was started again", OneLine(text));
    }
}

} // namespace pelgrin
