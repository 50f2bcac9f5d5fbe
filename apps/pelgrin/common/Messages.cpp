#include "common/Messages.h"

#include <cctype>
#include <cerrno>
#include <cstdio>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <memory>
#include <utility>

#include <fmt/format.h>
#include <nlohmann/json.hpp>
#include <spdlog/pattern_formatter.h>
#include <spdlog/sinks/basic_file_sink.h>
#include <spdlog/sinks/stdout_color_sinks.h>
#include <spdlog/spdlog.h>

#include "common/Failure.h"
#include "common/Terminal.h"
#include "common/Words.h"

namespace pelgrin {

namespace {

constexpr const char kScreenPattern[] = "pelgrin: %^%l%$: %v";
constexpr const char kLogPattern[] = "[%Y-%m-%dT%H:%M:%S.%eZ] [%P] [%l] %v";

bool reportIsWanted = true;
bool logHasFailed = false;

std::string& LogPath()
{
    static std::string path;
    return path;
}

/// Standard error: a bar makes room for a message, and a program that reads JSON
/// gets nothing else.
class ScreenSink : public spdlog::sinks::ansicolor_stderr_sink_st {
public:
    void log(const spdlog::details::log_msg& message) override
    {
        HideProgressBar();
        if (CurrentProgressMode() != ProgressMode::Json) {
            spdlog::sinks::ansicolor_stderr_sink_st::log(message);
            return;
        }
        const auto level = spdlog::level::to_string_view(message.level);
        const nlohmann::ordered_json object = {
            {"event", "message"},
            {"level", std::string(level.data(), level.size())},
            {"text", std::string(message.payload.data(), message.payload.size())}};
        const std::string line =
            object.dump(-1, ' ', false, nlohmann::ordered_json::error_handler_t::replace) + "\n";
        std::fwrite(line.data(), 1, line.size(), stderr); // as spdlog: nobody may be there
    }
};

spdlog::level::level_enum ScreenLevel(const MessageOptions& options)
{
    if (options.isQuiet) {
        return spdlog::level::err;
    }
    return options.isVerbose ? spdlog::level::debug : spdlog::level::info;
}

/// "[2026-": how every line of a log begins. A mistyped name must not add lines to
/// somebody's data.
bool HoldsSomethingElse(const std::string& path)
{
    std::error_code ignored;
    if (!std::filesystem::is_regular_file(path, ignored)) {
        return false; // /dev/stderr: reading it would wait
    }
    std::ifstream file(path, std::ios::binary);
    char front[2] = {};
    file.read(front, 2);
    const bool isLog = front[0] == '[' && std::isdigit(static_cast<unsigned char>(front[1])) != 0;
    return file.gcount() > 0 && !isLog;
}

/// Tells on the screen, once, that a line of the log could not be written.
void TellLogFailure(const spdlog::sink_ptr& screen, const std::string& path,
                    const std::string& error)
{
    if (!std::exchange(logHasFailed, true)) {
        const std::size_t reason = error.rfind(": ");
        spdlog::logger("pelgrin", screen)
            .error("--log-file: {}: cannot be written{}", path,
                   reason == std::string::npos ? "" : error.substr(reason));
    }
}

spdlog::sink_ptr LogSink(const std::string& path)
{
    // Tried before: the reason is known here, and no folder is made.
    std::FILE* const file = std::fopen(path.c_str(), "ab");
    if (file == nullptr) {
        throw Failure(
            fmt::format("--log-file: {}: cannot be opened: {}", path, std::strerror(errno)));
    }
    std::fclose(file);
    if (HoldsSomethingElse(path)) {
        throw Failure(fmt::format("--log-file: {}: holds something else than a log; expected a "
                                  "new file or a log of pelgrin",
                                  path));
    }
    auto sink = std::make_shared<spdlog::sinks::basic_file_sink_st>(path);
    sink->set_formatter(
        std::make_unique<spdlog::pattern_formatter>(kLogPattern, spdlog::pattern_time_type::utc));
    sink->set_level(spdlog::level::debug);
    return sink;
}

} // namespace

void SetUpMessages()
{
    SetUpMessages(MessageOptions());
}

void SetUpMessages(const MessageOptions& options)
{
    const bool isSilent = options.isQuiet && options.progress == ProgressMode::Auto;
    SetProgressMode(isSilent ? ProgressMode::None : options.progress);
    reportIsWanted = !options.isQuiet;
    auto screen = std::make_shared<ScreenSink>();
    screen->set_pattern(kScreenPattern);
    screen->set_level(ScreenLevel(options));
    auto logger = std::make_shared<spdlog::logger>("pelgrin", screen);
    logger->set_level(ScreenLevel(options));
    if (!options.logFile.empty()) {
        logger->sinks().push_back(LogSink(options.logFile));
        LogPath() = options.logFile;
        logger->set_level(spdlog::level::debug);
        logger->set_error_handler([screen, path = options.logFile](const std::string& error) {
            TellLogFailure(screen, path, error);
        });
    }
    // Nothing waits in a buffer: not for a crash, nor for the exit of a child.
    logger->flush_on(spdlog::level::trace);
    spdlog::set_default_logger(std::move(logger));
}

const std::string& LogFile()
{
    return LogPath();
}

bool LogHasFailed()
{
    return logHasFailed;
}

bool ReportIsWanted()
{
    return reportIsWanted;
}

void LogBegin(const std::string& version, const std::vector<std::string>& arguments)
{
    std::string words;
    for (const std::string& argument : arguments) {
        words += " " + ShellWord(argument);
    }
    spdlog::debug("{}:{}", version, OneLine(words));
}

} // namespace pelgrin
