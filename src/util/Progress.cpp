#include "util/Progress.h"

namespace Vorlan {

Progress::Progress(console::Stream stream, std::uint64_t total) : stream_(stream), total_(total) {}

void Progress::Begin()
{
    ++row_;
    if (!ShowsRow()) {
        return;
    }
    const std::uint64_t percent = total_ == 0 ? 0 : 100 * row_ / total_;
    text_ =
        std::to_string(row_) + "/" + std::to_string(total_) + " (" + std::to_string(percent) + "%)";
    console::Print(stream_, text_);
}

void Progress::End()
{
    if (ShowsRow()) {
        console::Print(stream_, std::string(text_.size(), '\b'));
    }
}

void Progress::Finish()
{
    if (!text_.empty()) {
        console::Print(stream_, std::string(text_.size(), ' ') + std::string(text_.size(), '\b'));
    }
}

bool Progress::ShowsRow() const
{
    return row_ % 1000 == 0 || row_ == total_;
}

} // namespace Vorlan
