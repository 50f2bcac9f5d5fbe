#include <cstdio>
#include <exception>
#include <new>
#include <variant>

#include <fmt/format.h>
#include <spdlog/spdlog.h>

#include "CommandLine.h"
#include "Failure.h"
#include "Run.h"
#include "Terminal.h"

namespace {

int Run(int argc, const char* const* argv)
{
    const auto command = pelgrin::ReadCommandLine(argc, argv);
    if (const auto* const print = std::get_if<pelgrin::TextToPrint>(&command)) {
        if (std::fputs(print->text.c_str(), stdout) < 0 || std::fflush(stdout) != 0) {
            throw pelgrin::Failure("standard output: cannot be written");
        }
        return pelgrin::AllWell;
    }
    return pelgrin::RunAnnotate(std::get<pelgrin::Parameters>(command));
}

} // namespace

int main(int argc, char** argv)
{
    try {
        pelgrin::SetUpMessages();
        return Run(argc, argv);
    } catch (const pelgrin::UsageError& error) {
        spdlog::error("{} (see pelgrin annotate --help)", pelgrin::OneLine(error.what()));
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
