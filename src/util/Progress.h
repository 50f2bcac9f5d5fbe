// A counter of rows on the console, overwritten with backspaces.
#ifndef VORLAN_UTIL_PROGRESS_H
#define VORLAN_UTIL_PROGRESS_H

#include <cstdint>
#include <string>

#include "util/Console.h"

namespace Vorlan {

/// Shows "row/total (percent%)" at every 1000th row and at row total, rows
/// counted from 1. A total that was counted too low or too high only changes
/// what is shown; a total of 0 shows 0 percent.
///
///     Progress progress(console::Stream::Out, total);
///     for (each row that is there) {
///         progress.Begin();
///         ...
///         progress.End();
///     }
///     progress.Finish();
class Progress {
public:
    Progress(console::Stream stream, std::uint64_t total);

    /// Before a row that is there is worked on.
    void Begin();
    /// After it: sets the cursor back over the text.
    void End();
    /// When the rows are done: erases the last text.
    void Finish();

private:
    bool ShowsRow() const;

    console::Stream stream_;
    std::uint64_t total_;
    std::uint64_t row_ = 0;
    std::string text_; ///< the last text shown
};

} // namespace Vorlan

#endif // VORLAN_UTIL_PROGRESS_H
