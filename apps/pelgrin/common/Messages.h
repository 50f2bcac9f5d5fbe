// What a run says on standard error and in a log file.
#ifndef PELGRIN_MESSAGES_H
#define PELGRIN_MESSAGES_H

#include <string>
#include <vector>

#include "common/Progress.h"

namespace pelgrin {

/// What the options of the whole program say.
struct MessageOptions {
    bool isQuiet = false;   ///< errors only, and no report
    bool isVerbose = false; ///< what happens inside, too
    std::string logFile;    ///< everything with times is added to it; empty: none
    ProgressMode progress = ProgressMode::Auto;
};

/// Messages go to standard error, as "pelgrin: warning: text".
void SetUpMessages();

/// The same, as the user wants it. Throws Failure for a log file that cannot be
/// opened, or that holds something else than a log.
void SetUpMessages(const MessageOptions& options);

/// The short report of a command is to be printed.
bool ReportIsWanted();

/// The path of the log file; empty: none.
const std::string& LogFile();

/// A line of the log file could not be written, which was told: a failure of the
/// program, though not of what it does.
bool LogHasFailed();

/// The first line of a log: the program, and what it was called with.
void LogBegin(const std::string& version, const std::vector<std::string>& arguments);

} // namespace pelgrin

#endif // PELGRIN_MESSAGES_H
