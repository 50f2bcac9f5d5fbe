#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include <fcntl.h>
#include <sys/resource.h>
#include <unistd.h>

#include <spdlog/spdlog.h>

#include "commands/CommandLine.h"
#include "common/EndBySignal.h"
#include "common/Failure.h"
#include "common/Messages.h"
#include "common/Terminal.h"

namespace {

using pelgrin::Command;
using pelgrin::OneLine;

pelgrin::ExitStatus RunCommandLine(int argc, char** argv, Command& command)
{
    try {
        pelgrin::SetUpMessages();
        pelgrin::ReadCommandLine(argc, argv, command);
        pelgrin::SetUpMessages(command.messages);
        pelgrin::LogBegin(pelgrin::VersionLine(), command.arguments);
        return pelgrin::LogHasFailed() ? pelgrin::Failed : command.run();
    } catch (const pelgrin::UsageError& error) {
        spdlog::error("{} (see pelgrin {}--help)", OneLine(error.what()),
                      command.name.empty() ? "" : command.name + " ");
        return pelgrin::WrongUsage;
    } catch (const std::bad_alloc&) {
        std::fputs("pelgrin: error: out of memory\n", stderr);
    } catch (const std::exception& error) {
        spdlog::error("{}", OneLine(error.what()));
    } catch (...) {
        std::fputs("pelgrin: error: an unknown failure\n", stderr);
    }
    return pelgrin::Failed;
}

/// A file must not get the number of a standard stream that is closed: messages
/// would stand in it. What was closed stays something that cannot be written.
void FillStandardDescriptors()
{
    int descriptor = 0;
    while (descriptor >= 0 && descriptor <= STDERR_FILENO) {
        descriptor = ::open("/dev/null", O_RDONLY);
    }
    if (descriptor >= 0) {
        ::close(descriptor);
    }
}

/// A process for each file of spectra, and two descriptors for each of these: more
/// than the usual limit of 1024 where the files are many.
void RaiseDescriptorLimit()
{
    rlimit limit{};
    if (::getrlimit(RLIMIT_NOFILE, &limit) == 0) {
        limit.rlim_cur = limit.rlim_max;
        ::setrlimit(RLIMIT_NOFILE, &limit);
    }
}

} // namespace

int main(int argc, char** argv)
{
    FillStandardDescriptors();
    RaiseDescriptorLimit();
    // A file that may not grow is a failure with path and reason, not a signal.
    std::signal(SIGXFSZ, SIG_IGN);
    pelgrin::CleanUpOnSignals();
    Command command;
    const pelgrin::ExitStatus status = RunCommandLine(argc, argv, command);
    spdlog::debug("exit status {}", static_cast<int>(status));
    // A log that was asked for and is not there.
    return pelgrin::LogHasFailed() && status != pelgrin::WrongUsage ? pelgrin::Failed : status;
}
