// What goes along when a signal ends the program: files that have not got their
// names, scratch folders, processes that write there.
//
// A program that is interrupted runs no destructor. So what has to be removed is
// known here as well, and the handler of the ending signals removes it, then lets
// the signal end the program as if it had never been caught. For a program with one
// thread: the lists are changed only while these signals wait.
#ifndef PELGRIN_ENDBYSIGNAL_H
#define PELGRIN_ENDBYSIGNAL_H

#include <string>

#include <signal.h> // NOLINT(modernize-deprecated-headers): sigset_t is of POSIX
#include <sys/types.h>

namespace pelgrin {

/// From now on SIGINT, SIGTERM, SIGHUP, SIGPIPE and SIGXCPU clean up, unless
/// whoever started the program has them ignored.
void CleanUpOnSignals();

/// For a child process: these signals are its host's affair, which kills it.
void IgnoreSignals();

/// The ending signals wait while it lives.
class SignalsWait {
public:
    SignalsWait();
    ~SignalsWait();
    SignalsWait(const SignalsWait&) = delete;
    SignalsWait& operator=(const SignalsWait&) = delete;

private:
    sigset_t former_{};
};

/// A file, or a folder with all that is in it, to be removed. It need not exist yet.
void RemoveOnSignal(const std::string& path);
void KeepOnSignal(const std::string& path);

/// A child process to be killed before anything is removed.
void KillOnSignal(pid_t process);
void SpareOnSignal(pid_t process);

} // namespace pelgrin

#endif // PELGRIN_ENDBYSIGNAL_H
