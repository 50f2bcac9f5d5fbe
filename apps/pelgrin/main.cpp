#include <cstdio>
#include <exception>
#include <new>
#include <string>

#include <spdlog/spdlog.h>

#include "commands/CommandLine.h"
#include "common/Failure.h"
#include "common/Terminal.h"

int main(int argc, char** argv)
{
    pelgrin::Command command;
    try {
        pelgrin::SetUpMessages();
        pelgrin::ReadCommandLine(argc, argv, command);
        return command.run();
    } catch (const pelgrin::UsageError& error) {
        spdlog::error("{} (see pelgrin {}--help)", pelgrin::OneLine(error.what()),
                      command.name.empty() ? "" : command.name + " ");
        return pelgrin::WrongUsage;
    } catch (const std::bad_alloc&) {
        std::fputs("pelgrin: error: out of memory\n", stderr);
    } catch (const std::exception& error) {
        spdlog::error("{}", pelgrin::OneLine(error.what()));
    } catch (...) {
        std::fputs("pelgrin: error: an unknown failure\n", stderr);
    }
    return pelgrin::Failed;
}
