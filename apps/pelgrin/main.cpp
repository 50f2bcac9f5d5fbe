#include <csignal>
#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include <spdlog/spdlog.h>

#include "commands/CommandLine.h"
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
        return command.run();
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

} // namespace

int main(int argc, char** argv)
{
    // A file that may not grow is a failure with path and reason, not a signal.
    std::signal(SIGXFSZ, SIG_IGN);
    Command command;
    const pelgrin::ExitStatus status = RunCommandLine(argc, argv, command);
    spdlog::debug("exit status {}", static_cast<int>(status));
    return status;
}
