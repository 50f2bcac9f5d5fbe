#include "util/WholeFile.h"

#include <algorithm>

#include "platform/InputFile.h"
#include "platform/Memory.h"
#include "util/TextMode.h"

namespace Vorlan {

namespace {

/// Memory is asked for in parts: a file may hold less than its size says.
constexpr std::size_t kPart = std::size_t{16} * 1024 * 1024;

void Grow(WholeFile& file, std::size_t& room)
{
    room = 2 * room + 4096;
    std::unique_ptr<char[]> larger(new char[room + 1]);
    std::copy(file.text.get(), file.text.get() + file.size, larger.get());
    file.text = std::move(larger);
}

} // namespace

bool WholeFile::Read(const std::string& path)
{
    platform::InputFile file;
    if (!file.Open(path) || !file.IsRegular()) {
        return false;
    }
    // One more than the size that the system tells: the end is found without
    // growing. Some files tell 0 and hold something.
    std::size_t room = static_cast<std::size_t>(file.Size()) + 1;
    text.reset(new char[room + 1]);
    size = 0;
    for (;;) {
        const std::size_t part = std::min(room - size, kPart);
        platform::ProvidePages(text.get() + size, part);
        const std::size_t got = file.ReadAt(size, text.get() + size, part);
        size += got;
        if (got < part) {
            break;
        }
        if (size == room) {
            Grow(*this, room);
        }
    }
    size = DropByteOrderMark(text.get(), size);
    size = DropCarriageReturns(text.get(), size);
    return true;
}

} // namespace Vorlan
