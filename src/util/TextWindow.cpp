#include "util/TextWindow.h"

#include <algorithm>

#include "util/TextMode.h"

namespace Vorlan {

bool TextWindow::Open(const std::string& path)
{
    return file_.Open(path) && file_.IsRegular();
}

bool TextWindow::More(std::size_t used)
{
    begin_ += used;
    if (isLast_) {
        return false;
    }
    MakeRoom();
    Read();
    return true;
}

/// Room for what is in the window and at least as much again.
void TextWindow::MakeRoom()
{
    const std::size_t kept = end_ - begin_;
    if (text_ == nullptr || 2 * kept > room_) {
        const std::size_t room = std::max(kFirstRoom, 2 * room_);
        std::unique_ptr<char[]> larger(new char[room]);
        std::copy(text_.get() + begin_, text_.get() + end_, larger.get());
        text_ = std::move(larger);
        room_ = room;
    } else {
        std::copy(text_.get() + begin_, text_.get() + end_, text_.get());
    }
    begin_ = 0;
    end_ = kept;
}

void TextWindow::Read()
{
    char* const fresh = text_.get() + end_;
    std::size_t size = 0;
    if (heldReturn_) {
        fresh[size++] = '\r';
    }
    const std::size_t wanted = room_ - end_ - size;
    const std::size_t got = file_.ReadAt(offset_, fresh + size, wanted);
    isLast_ = got < wanted;
    size += got;
    if (offset_ == 0) {
        size = DropByteOrderMark(fresh, size);
    }
    offset_ += got;
    heldReturn_ = !isLast_ && fresh[size - 1] == '\r';
    end_ += DropCarriageReturns(fresh, heldReturn_ ? size - 1 : size);
}

} // namespace Vorlan
