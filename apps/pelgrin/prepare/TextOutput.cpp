#include "prepare/TextOutput.h"

#include <cerrno>
#include <cstring>
#include <filesystem>

#include <fmt/format.h>

#include "common/Failure.h"

namespace pelgrin {

namespace {

namespace fs = std::filesystem;

const std::string& WithFolder(const std::string& target)
{
    RefuseBackslash(target);
    std::error_code error;
    fs::create_directories(fs::path(target).parent_path(), error);
    if (error) {
        throw Failure(fmt::format("{}: its folder cannot be made: {}", target, error.message()));
    }
    CheckTarget(target);
    return target;
}

} // namespace

TextOutput::TextOutput(const std::string& target)
    : target_(WithFolder(target)), file_(target),
      stream_(file_.Path(), std::ios::binary | std::ios::trunc)
{
    Check();
}

void TextOutput::Write(std::string_view text)
{
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
    Check();
}

void TextOutput::Line(std::string_view text)
{
    stream_.write(text.data(), static_cast<std::streamsize>(text.size()));
    stream_.put('\n');
    Check();
}

void TextOutput::Finish()
{
    stream_.close();
    Check();
    file_.MoveToTarget();
}

void TextOutput::Check() const
{
    if (!stream_) {
        throw Failure(
            fmt::format("{}: cannot be written to its end: {}", target_, std::strerror(errno)));
    }
}

} // namespace pelgrin
