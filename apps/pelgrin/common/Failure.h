// The ways in which a run ends early.
#ifndef PELGRIN_FAILURE_H
#define PELGRIN_FAILURE_H

#include <stdexcept>
#include <string>

namespace pelgrin {

/// The command line cannot be understood: exit status 2.
class UsageError : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// The run cannot go on: exit status 1. The text says which file, where known
/// which line, and what was expected.
class Failure : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

} // namespace pelgrin

#endif // PELGRIN_FAILURE_H
