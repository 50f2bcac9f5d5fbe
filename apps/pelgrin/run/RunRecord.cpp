#include "run/RunRecord.h"

#include <cmath>
#include <cstdint>
#include <ctime>
#include <filesystem>
#include <sstream>

#include <OpenMS/CONCEPT/VersionInfo.h>
#include <fmt/chrono.h>
#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

namespace pelgrin {

namespace {

using Json = nlohmann::ordered_json;

RunMoment SystemNow()
{
    return {std::chrono::system_clock::now(), std::chrono::steady_clock::now()};
}

double SecondsBetween(const RunMoment& begin, const RunMoment& end)
{
    return std::chrono::duration<double>(end.steady - begin.steady).count();
}

/// Whole milliseconds: more would be noise.
double Rounded(double seconds)
{
    return std::round(seconds * 1000.0) / 1000.0;
}

Json VersionsOf()
{
#if defined(__clang__)
    const std::string compiler = __VERSION__;
#else
    const std::string compiler = std::string("GCC ") + __VERSION__;
#endif
    const std::string openMs = OpenMS::VersionInfo::getVersion();
    return {{"pelgrin", PELGRIN_VERSION}, {"OpenMS", openMs}, {"compiler", compiler}};
}

Json TimesOf(const RunClock& clock)
{
    Json steps = Json::array();
    for (const auto& [step, seconds] : clock.Steps()) {
        steps.push_back({{"step", step}, {"seconds", Rounded(seconds)}});
    }
    return {{"start", UtcOf(clock.Started().date)},
            {"end", UtcOf(clock.Ended().date)},
            {"seconds", Rounded(SecondsBetween(clock.Started(), clock.Ended()))},
            {"steps", steps}};
}

Json InputJson(const RunInput& input)
{
    Json json = {{"role", input.role}, {"path", input.path}, {"size", input.size}};
    if (input.files) {
        json["files"] = *input.files;
    }
    json["sha256"] = input.sha256.empty() ? Json() : Json(input.sha256);
    json["has_changed"] = input.hasChanged;
    return json;
}

Json KeysOf(const Parameters& parameters)
{
    Json sections = Json::object();
    for (const FileKey& key : parameters.fileKeys) {
        sections[key.section][key.key] = key.value ? Json(*key.value) : Json();
    }
    return sections;
}

Json LinesOf(const std::string& text)
{
    Json lines = Json::array();
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

/// The main counts of a summary.
Json CountsOf(const Json& summary)
{
    Json counts = Json::object();
    for (const auto& [name, place] : std::vector<std::pair<const char*, const char*>>{
             {"spectra", "/spectra/total"},
             {"records_read", "/records/read"},
             {"records_left_by_fdr_control", "/records/fdr_control/total"},
             {"records_joined", "/records/joined/total"},
             {"records_not_joined", "/records/not_joined/total"},
             {"records_skipped", "/records/skipped/total"},
             {"records_annotated", "/records/annotated"},
             {"rows_not_read", "/rows_not_read"},
             {"rows_cut", "/rows_cut"},
             {"ions_asked", "/ions/asked"},
             {"ions_matched", "/ions/matched"}}) {
        const Json::json_pointer pointer(place);
        if (!summary.contains(pointer)) {
            continue;
        }
        const Json& count = summary[pointer];
        std::uint64_t sum = 0;
        for (const Json& part : count.is_object() ? count : Json::array({count})) {
            sum += part.get<std::uint64_t>();
        }
        counts[name] = sum;
    }
    return counts;
}

} // namespace

// ---- RunClock -----------------------------------------------------------------

RunClock::RunClock(Now now) : now_(now ? std::move(now) : SystemNow), start_(now_()) {}

void RunClock::Begin(std::string step)
{
    spdlog::debug("step: {}", step);
    const RunMoment now = now_();
    EndStep(now);
    step_ = std::move(step);
    stepStart_ = now;
}

void RunClock::End()
{
    end_ = now_();
    EndStep(end_);
}

void RunClock::EndStep(const RunMoment& now)
{
    if (!step_.empty()) {
        steps_.emplace_back(std::exchange(step_, {}), SecondsBetween(stepStart_, now));
    }
}

// ---- RunJsonOf ----------------------------------------------------------------

std::string UtcOf(std::chrono::system_clock::time_point date)
{
    const auto milliseconds =
        std::chrono::floor<std::chrono::milliseconds>(date.time_since_epoch()).count();
    const std::int64_t seconds =
        milliseconds >= 0 ? milliseconds / 1000 : (milliseconds - 999) / 1000;
    return fmt::format("{:%Y-%m-%dT%H:%M:%S}.{:03}Z",
                       fmt::gmtime(static_cast<std::time_t>(seconds)),
                       milliseconds - 1000 * seconds);
}

std::string RunJsonOf(const RunFacts& facts)
{
    const Json summary = Json::parse(facts.summary);
    Json inputs = Json::array();
    for (const RunInput& input : facts.inputs) {
        inputs.push_back(InputJson(input));
    }
    Json json = {{"program", facts.parameters.program},
                 {"exit_status", static_cast<int>(facts.status)},
                 {"arguments", facts.parameters.arguments},
                 {"working_folder", facts.workingFolder},
                 {"versions", VersionsOf()},
                 {"time", TimesOf(facts.clock)},
                 {"inputs", inputs},
                 {"parameters", summary.value("parameters", Json::object())}};
    if (!facts.parameters.fileKeys.empty()) {
        json["parameter_file"] = KeysOf(facts.parameters);
    }
    if (!facts.parameters.plan.empty()) {
        json["plan"] = LinesOf(facts.parameters.plan);
    }
    json["counts"] = CountsOf(summary);
    // Paths may hold any bytes; what is no UTF-8 becomes U+FFFD.
    return json.dump(2, ' ', false, Json::error_handler_t::replace) + "\n";
}

// ---- RunRecord ----------------------------------------------------------------

RunRecord::RunRecord(const Parameters& parameters, std::string step) : stamps_(parameters)
{
    clock_.Begin(std::move(step));
}

std::string RunRecord::End(const Parameters& parameters, std::string summary, ExitStatus status)
{
    clock_.Begin("SHA-256 of the inputs");
    std::vector<RunInput> inputs = stamps_.Inputs();
    clock_.End();
    std::error_code ignored;
    return RunJsonOf({parameters, clock_, std::move(inputs),
                      std::filesystem::current_path(ignored).string(), std::move(summary), status});
}

} // namespace pelgrin
