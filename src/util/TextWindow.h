// A file in memory, as much of it as is needed at a time.
#ifndef VORLAN_UTIL_TEXTWINDOW_H
#define VORLAN_UTIL_TEXTWINDOW_H

#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>

#include "platform/InputFile.h"

namespace Vorlan {

/// Shows a file, in text mode as WholeFile reads it, through a window that is
/// moved along. The window grows when nothing of it can be let go, so that any
/// part of the text can be seen as a whole.
///
///     while (window.More(used)) { used = ... [Begin(), End()) ... }
class TextWindow {
public:
    /// False when the file cannot be opened or is no ordinary file.
    bool Open(const std::string& path);

    /// Lets the first used characters go and reads on. False when the window
    /// holds the end of the file already.
    bool More(std::size_t used);

    const char* Begin() const { return text_.get() + begin_; }
    const char* End() const { return text_.get() + end_; }

    /// Nothing follows the window. A read error counts as the end.
    bool IsLast() const { return isLast_; }

private:
    void MakeRoom();
    void Read();

    static constexpr std::size_t kFirstRoom = std::size_t{1024} * 1024;

    platform::InputFile file_;
    std::uint64_t offset_ = 0;     ///< in the file, of what is read next
    std::unique_ptr<char[]> text_; ///< room_ characters
    std::size_t room_ = 0;
    std::size_t begin_ = 0;
    std::size_t end_ = 0;
    bool heldReturn_ = false; ///< a carriage return at the end of what was read
    bool isLast_ = false;
};

} // namespace Vorlan

#endif // VORLAN_UTIL_TEXTWINDOW_H
