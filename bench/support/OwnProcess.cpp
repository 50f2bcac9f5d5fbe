#include "support/OwnProcess.h"

#include <cstdlib>
#include <ctime>
#include <fstream>
#include <iostream>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace bench {

namespace {

void SetLimit(__rlimit_resource resource, rlim_t value)
{
    const rlimit limit = {value, value};
    ::setrlimit(resource, &limit);
}

/// What the new process does; it does not come back.
[[noreturn]] void Become(const std::vector<std::string>& arguments, const Limits& limits,
                         int output)
{
    ::dup2(output, STDOUT_FILENO);
    ::close(output);
    SetLimit(RLIMIT_CORE, 0);
    if (limits.seconds != 0) {
        // The signal comes at the soft limit; behind the hard one it is SIGKILL.
        const rlimit time = {limits.seconds, limits.seconds + 1};
        ::setrlimit(RLIMIT_CPU, &time);
    }
    if (limits.bytes != 0) {
        SetLimit(RLIMIT_AS, limits.bytes);
    }
    std::vector<std::string> texts = arguments;
    texts.insert(texts.begin(), "/proc/self/exe");
    std::vector<char*> argv;
    argv.reserve(texts.size() + 1);
    for (std::string& text : texts) {
        argv.push_back(text.data());
    }
    argv.push_back(nullptr);
    ::execv("/proc/self/exe", argv.data());
    ::_exit(127);
}

} // namespace

OwnProcessResult RunMyself(const std::vector<std::string>& arguments, const Limits& limits)
{
    OwnProcessResult result;
    int ends[2] = {-1, -1};
    const pid_t process = ::pipe(ends) == 0 ? ::fork() : -1;
    if (process < 0) {
        std::cerr << "cannot start another process\n";
        std::exit(1);
    }
    if (process == 0) {
        ::close(ends[0]);
        Become(arguments, limits, ends[1]);
    }
    ::close(ends[1]);
    char block[4096];
    for (ssize_t got = 0; (got = ::read(ends[0], block, sizeof block)) > 0;) {
        result.output.append(block, static_cast<std::size_t>(got));
    }
    ::close(ends[0]);
    ::waitpid(process, &result.status, 0);
    return result;
}

double CpuSeconds()
{
    std::timespec time{};
    ::clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
}

double ResidentMegabytes()
{
    long total = 0;
    long resident = 0;
    std::ifstream("/proc/self/statm") >> total >> resident;
    return static_cast<double>(resident) * static_cast<double>(::sysconf(_SC_PAGESIZE)) / 1e6;
}

double PeakResidentMegabytes()
{
    std::ifstream status("/proc/self/status");
    for (std::string word; status >> word;) {
        if (word == "VmHWM:") {
            double kibibytes = 0.0;
            status >> kibibytes;
            return kibibytes * 1024 / 1e6;
        }
    }
    return 0.0;
}

} // namespace bench
