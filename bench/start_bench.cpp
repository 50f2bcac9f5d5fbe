// The start of a program: one that links OpenMS and the library beside one that
// links OpenMS alone. Both are start_program.cpp.
#include <algorithm>
#include <chrono>

#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <benchmark/benchmark.h>

#include "support/Claims.h"

namespace {

/// From the start of a process to its end.
struct Duration {
    double cpu = 0.0;  ///< seconds, the system's for it included
    double wall = 0.0; ///< seconds
    bool isGood = false;
};

double SecondsOf(const timeval& time)
{
    return static_cast<double>(time.tv_sec) + 1e-6 * static_cast<double>(time.tv_usec);
}

Duration Start(const char* program)
{
    using Clock = std::chrono::steady_clock;
    char* arguments[] = {const_cast<char*>(program), nullptr};
    char* environment[] = {nullptr};
    const Clock::time_point begin = Clock::now();
    pid_t process = -1;
    int status = -1;
    rusage usage{};
    if (::posix_spawn(&process, program, nullptr, nullptr, arguments, environment) != 0
        || ::wait4(process, &status, 0, &usage) != process || status != 0) {
        return {};
    }
    const std::chrono::duration<double> wall = Clock::now() - begin;
    return {SecondsOf(usage.ru_utime) + SecondsOf(usage.ru_stime), wall.count(), true};
}

/// The shortest of some starts: other work on the machine only makes them longer.
void StartOften(benchmark::State& state, const char* program)
{
    constexpr int kStarts = 10;
    double cpu = 1e9;
    double wall = 1e9;
    for (auto _ : state) {
        for (int i = 0; i < kStarts; ++i) {
            const Duration duration = Start(program);
            if (!duration.isGood) {
                state.SkipWithError("the program does not run");
                return;
            }
            cpu = std::min(cpu, duration.cpu);
            wall = std::min(wall, duration.wall);
        }
    }
    state.counters["own_cpu_s"] = cpu;
    state.counters["own_wall_s"] = wall;
}

void Register(const char* name, const char* program)
{
    benchmark::RegisterBenchmark(name, StartOften, program)
        ->Unit(benchmark::kMillisecond)
        ->Iterations(1)
        ->Repetitions(15);
}

} // namespace

int main(int argc, char** argv)
{
    Register("Start", START_WITH_PELGRIN);
    Register("Start/OpenMS", START_WITH_OPENMS);
    return bench::Run(argc, argv,
                      {{"start of a program that links the library", "Start", "OpenMS alone",
                        "Start/OpenMS", bench::Claim::MillisecondsMore, 1.0}});
}
