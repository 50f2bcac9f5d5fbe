// run.json: what a run was, for people who ask that a year later.
//
// It is written last, so that a folder with a run.json holds a run that finished.
// Everything that is another in every run, such as times, stands here and in no
// other file.
#ifndef PELGRIN_RUNRECORD_H
#define PELGRIN_RUNRECORD_H

#include <chrono>
#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "common/Command.h"
#include "run/Parameters.h"
#include "run/RunInputs.h"

namespace pelgrin {

/// One moment by both clocks: the one tells when it was, the other how long it took.
struct RunMoment {
    std::chrono::system_clock::time_point date;
    std::chrono::steady_clock::time_point steady;
};

/// When a run began, and how long each of its steps takes.
class RunClock {
public:
    using Now = std::function<RunMoment()>;

    /// Begins the run. now is the time of the system unless a test knows better.
    explicit RunClock(Now now = {});

    /// Begins a step, and ends the one before it.
    void Begin(std::string step);
    /// Ends the last step and the run.
    void End();

    const RunMoment& Started() const { return start_; }
    const RunMoment& Ended() const { return end_; } ///< good after End
    /// Step -> its seconds, in order.
    const std::vector<std::pair<std::string, double>>& Steps() const { return steps_; }

private:
    void EndStep(const RunMoment& now);

    Now now_;
    RunMoment start_;
    RunMoment end_;
    RunMoment stepStart_;
    std::string step_; ///< that goes on; empty: none
    std::vector<std::pair<std::string, double>> steps_;
};

/// "2026-03-01T12:00:00.250Z".
std::string UtcOf(std::chrono::system_clock::time_point date);

/// Everything that run.json tells.
struct RunFacts {
    const Parameters& parameters;
    const RunClock& clock; ///< ended
    std::vector<RunInput> inputs;
    std::string workingFolder;
    std::string summary; ///< the text of summary.json: parameters and counts are its
    ExitStatus status = AllWell;
};

/// The text of run.json, with a line feed at its end.
std::string RunJsonOf(const RunFacts& facts);

/// What a run fills in while it goes on.
class RunRecord {
public:
    /// Begins the run's first step.
    RunRecord(const Parameters& parameters, std::string step);

    void Begin(std::string step) { clock_.Begin(std::move(step)); }

    /// Ends the run and gives the text of run.json. Reads all inputs.
    std::string End(const Parameters& parameters, std::string summary, ExitStatus status);

private:
    RunClock clock_;
    InputStamps stamps_;
};

} // namespace pelgrin

#endif // PELGRIN_RUNRECORD_H
