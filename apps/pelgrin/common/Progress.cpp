#include "common/Progress.h"

#include <chrono>
#include <cstdio>
#include <limits>
#include <utility>

#include <unistd.h>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <spdlog/spdlog.h>

namespace pelgrin {

namespace {

using Form = ProgressStyle::Form;

constexpr double kBetweenLooks = 0.05; // seconds, as all below
constexpr double kBetweenLines = 10.0;
constexpr double kBetweenObjects = 1.0;

constexpr const char kErase[] = "\r\x1b[K";

// One process, one terminal.
ProgressMode currentMode = ProgressMode::Auto;
bool barStands = false;

void WriteToStandardError(const std::string& text)
{
    std::fwrite(text.data(), 1, text.size(), stderr);
    std::fflush(stderr);
}

double SteadySeconds()
{
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch())
        .count();
}

Form FormOf(ProgressMode mode)
{
    switch (mode) {
    case ProgressMode::None: return Form::None;
    case ProgressMode::Plain: return Form::Plain;
    case ProgressMode::Json: return Form::Json;
    case ProgressMode::Auto: break;
    }
    return ::isatty(STDERR_FILENO) == 1 ? Form::Bar : Form::Sparse;
}

} // namespace

void SetProgressMode(ProgressMode mode)
{
    currentMode = mode;
}

ProgressMode CurrentProgressMode()
{
    return currentMode;
}

ProgressStyle CurrentProgressStyle()
{
    return {FormOf(currentMode), WriteToStandardError, SteadySeconds};
}

void HideProgressBar()
{
    if (std::exchange(barStands, false)) {
        WriteToStandardError(kErase);
    }
}

Progress::Progress(std::string task, std::uint64_t total)
    : Progress(std::move(task), total, CurrentProgressStyle())
{
}

Progress::Progress(std::string task, std::uint64_t total, ProgressStyle style)
    : task_(std::move(task)), total_(total), style_(std::move(style))
{
    start_ = lastLook_ = lastShown_ = style_.seconds();
    if (style_.form == Form::None) {
        nextLook_ = std::numeric_limits<std::uint64_t>::max();
    } else if (style_.form == Form::Plain || style_.form == Form::Json) {
        Show(Moment::Start);
    }
}

Progress::~Progress()
{
    try {
        if (style_.form == Form::Bar && std::exchange(barStands, false)) {
            style_.write(kErase);
        } else if (style_.form == Form::Plain || style_.form == Form::Json || wasShown_) {
            Show(Moment::End);
        }
        spdlog::debug("{}: {} of {} in {:.1f} s", task_, done_, total_, style_.seconds() - start_);
    } catch (const std::exception&) {
        // Progress that cannot be told is no reason to end a run.
    }
}

void Progress::Look()
{
    const double now = style_.seconds();
    if (now - lastLook_ < kBetweenLooks) {
        stride_ *= 2;
    } else if (now - lastLook_ > 4 * kBetweenLooks && stride_ > 1) {
        stride_ /= 2;
    }
    lastLook_ = now;
    nextLook_ = done_ + stride_;
    if (style_.form == Form::Bar) {
        DrawBar();
    } else if (now - lastShown_ >= (style_.form == Form::Json ? kBetweenObjects : kBetweenLines)) {
        Show(Moment::Middle);
    }
}

void Progress::Show(Moment moment)
{
    lastShown_ = style_.seconds();
    wasShown_ = true;
    style_.write(LineOf(moment));
}

std::uint64_t Progress::Percent() const
{
    if (done_ >= total_) {
        return 100;
    }
    return static_cast<std::uint64_t>(100.0 * static_cast<double>(done_)
                                      / static_cast<double>(total_));
}

void Progress::DrawBar()
{
    const std::uint64_t percent = Percent();
    if (percent == shownPercent_ && barStands) {
        return;
    }
    shownPercent_ = percent;
    barStands = true;
    const std::string bar(static_cast<std::size_t>(percent * 30 / 100), '#');
    style_.write(
        fmt::format("\r{} [{:<30}] {:3}% ({}/{})\x1b[K", task_, bar, percent, done_, total_));
}

std::string Progress::LineOf(Moment moment) const
{
    if (style_.form == Form::Json) {
        const char* const state = moment == Moment::Start ? "begin"
                                  : moment == Moment::End ? "end"
                                                          : "going on";
        const nlohmann::ordered_json object = {{"event", "progress"}, {"task", task_},
                                               {"state", state},      {"done", done_},
                                               {"total", total_},     {"percent", Percent()}};
        return object.dump() + "\n";
    }
    if (moment == Moment::Start) {
        return fmt::format("pelgrin: progress: {}: {} to do\n", task_, total_);
    }
    return fmt::format("pelgrin: progress: {}: {} of {} ({}%)\n", task_, done_, total_, Percent());
}

} // namespace pelgrin
