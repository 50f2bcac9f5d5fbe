#include "common/EndBySignal.h"

#include <algorithm>
#include <string_view>
#include <vector>

#include <dirent.h>
#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace pelgrin {

namespace {

constexpr int kEndingSignals[] = {SIGINT, SIGTERM, SIGHUP, SIGPIPE, SIGXCPU};
/// Scratch folders have two levels.
constexpr int kMostLevels = 8;

/// Never destroyed: a signal may come when the program is about to end.
std::vector<std::string>& Paths()
{
    static auto* const paths = new std::vector<std::string>;
    return *paths;
}

std::vector<pid_t>& Processes()
{
    static auto* const processes = new std::vector<pid_t>;
    return *processes;
}

sigset_t EndingSignals()
{
    sigset_t set;
    ::sigemptyset(&set);
    for (const int signal : kEndingSignals) {
        ::sigaddset(&set, signal);
    }
    return set;
}

template <typename Value>
void Forget(std::vector<Value>& values, const Value& value)
{
    const auto hit = std::find(values.begin(), values.end(), value);
    if (hit != values.end()) {
        values.erase(hit);
    }
}

// ---- The handler: nothing but what may be called at any moment ---------------

// NOLINTNEXTLINE(misc-no-recursion): kMostLevels bounds it
void Remove(int parent, const char* name, int levels)
{
    if (::unlinkat(parent, name, 0) == 0 || levels == 0) {
        return;
    }
    const int folder = ::openat(parent, name, O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC);
    if (folder < 0) {
        return;
    }
    alignas(dirent64) char block[4096];
    for (ssize_t size = 0; (size = ::getdents64(folder, block, sizeof block)) > 0;) {
        for (ssize_t at = 0; at < size;) {
            const auto* const entry = reinterpret_cast<const dirent64*>(block + at);
            const std::string_view entryName = entry->d_name;
            if (entryName != "." && entryName != "..") {
                Remove(folder, entry->d_name, levels - 1);
            }
            at += entry->d_reclen;
        }
    }
    ::close(folder);
    ::unlinkat(parent, name, AT_REMOVEDIR);
}

void CleanUp(int signal)
{
    for (const pid_t process : Processes()) {
        ::kill(process, SIGKILL);
        ::waitpid(process, nullptr, 0);
    }
    for (const std::string& path : Paths()) {
        Remove(AT_FDCWD, path.c_str(), kMostLevels);
    }
    // Comes when the handler is left, and finds nobody who catches it.
    ::signal(signal, SIG_DFL);
    ::raise(signal);
}

} // namespace

// ---- Outside of the handler ----------------------------------------------------

void CleanUpOnSignals()
{
    Paths();
    Processes();
    for (const int signal : kEndingSignals) {
        struct sigaction former = {};
        ::sigaction(signal, nullptr, &former);
        if (former.sa_handler == SIG_DFL) {
            struct sigaction action = {};
            action.sa_handler = CleanUp;
            action.sa_mask = EndingSignals();
            ::sigaction(signal, &action, nullptr);
        }
    }
}

void IgnoreSignals()
{
    for (const int signal : kEndingSignals) {
        ::signal(signal, signal == SIGXCPU ? SIG_DFL : SIG_IGN); // its own time is its own
    }
}

SignalsWait::SignalsWait()
{
    const sigset_t set = EndingSignals();
    ::sigprocmask(SIG_BLOCK, &set, &former_);
}

SignalsWait::~SignalsWait()
{
    ::sigprocmask(SIG_SETMASK, &former_, nullptr);
}

void RemoveOnSignal(const std::string& path)
{
    const SignalsWait wait;
    Paths().push_back(path);
}

void KeepOnSignal(const std::string& path)
{
    const SignalsWait wait;
    Forget(Paths(), path);
}

void KillOnSignal(pid_t process)
{
    const SignalsWait wait;
    Processes().push_back(process);
}

void SpareOnSignal(pid_t process)
{
    const SignalsWait wait;
    Forget(Processes(), process);
}

} // namespace pelgrin
