// How a call ends that may end the process, in a process of its own.
#ifndef VORLAN_TESTS_ENDOF_H
#define VORLAN_TESTS_ENDOF_H

#include <exception>

#include <fcntl.h>
#include <sys/wait.h>
#include <unistd.h>

namespace Vorlan::test {

/// The call came back, or threw what is no failure of the program itself.
inline constexpr int kCameBack = 0;
/// The library ended the process, as it says it may.
inline constexpr int kEnded = 1;

/// kCameBack, kEnded, or 128 + the signal that ended the process, which SIGALRM does
/// after two minutes. What is printed is dropped.
template <typename Call>
int EndOf(Call call)
{
    const pid_t process = ::fork();
    if (process == 0) {
        ::alarm(120);
        const int nowhere = ::open("/dev/null", O_WRONLY);
        ::dup2(nowhere, STDOUT_FILENO);
        ::dup2(nowhere, STDERR_FILENO);
        try {
            call();
        } catch (const std::exception&) {
            ::_exit(kCameBack);
        }
        ::_exit(kCameBack);
    }
    int status = 0;
    ::waitpid(process, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : 128 + WTERMSIG(status);
}

} // namespace Vorlan::test

#endif // VORLAN_TESTS_ENDOF_H
