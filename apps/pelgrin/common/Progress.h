// How far a long step is, on standard error.
//
//     Progress progress("annotating", records.size());
//     for (const auto& record : records) {
//         ...
//         progress.Step();
//     }
//
// A step costs an addition and a comparison: the clock is looked at about twenty
// times a second, whatever the steps cost.
#ifndef PELGRIN_PROGRESS_H
#define PELGRIN_PROGRESS_H

#include <cstdint>
#include <functional>
#include <string>

namespace pelgrin {

/// What --progress says.
enum class ProgressMode {
    Auto,  ///< a bar on a terminal, else a line every ten seconds
    None,  ///< nothing
    Plain, ///< a line at the start, every ten seconds, and at the end
    Json,  ///< one JSON object a line: at the start, every second, at the end
};

/// For all steps of the process that begin later.
void SetProgressMode(ProgressMode mode);
ProgressMode CurrentProgressMode();

/// How the progress of one step is shown.
struct ProgressStyle {
    enum class Form { None, Bar, Sparse, Plain, Json };

    Form form = Form::None;
    std::function<void(const std::string&)> write; ///< takes bytes as they should stand
    std::function<double()> seconds;               ///< a clock that never goes back
};

/// On standard error, as the mode and the terminal want it.
ProgressStyle CurrentProgressStyle();

/// Erases a bar that stands on the terminal; it comes back with the next step.
void HideProgressBar();

class Progress {
public:
    /// total may be 0, and less than the steps that come.
    Progress(std::string task, std::uint64_t total);
    Progress(std::string task, std::uint64_t total, ProgressStyle style);
    ~Progress();
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    void Step() { MoveTo(done_ + 1); }
    /// So many are done.
    void MoveTo(std::uint64_t done)
    {
        done_ = done;
        if (done_ >= nextLook_) {
            Look();
        }
    }

    std::uint64_t Done() const { return done_; }
    std::uint64_t Total() const { return total_; }

private:
    enum class Moment { Start, Middle, End };

    void Look();
    void Show(Moment moment);
    void DrawBar();
    std::uint64_t Percent() const;
    std::string LineOf(Moment moment) const;

    std::string task_;
    std::uint64_t total_;
    ProgressStyle style_;
    std::uint64_t done_ = 0;
    std::uint64_t nextLook_ = 1; ///< the clock is looked at when so many are done
    std::uint64_t stride_ = 1;
    double start_ = 0.0; ///< all times in seconds of the style's clock
    double lastLook_ = 0.0;
    double lastShown_ = 0.0;
    bool wasShown_ = false;
    std::uint64_t shownPercent_ = 101;
};

} // namespace pelgrin

#endif // PELGRIN_PROGRESS_H
