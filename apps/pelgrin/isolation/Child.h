// A child process in which the library may end the process, throw or crash.
//
// The child is a copy of the host (fork), so that it knows all parameters; it talks
// to the host in messages over a socket. What it prints on standard output and
// standard error is kept from the host's own.
#ifndef PELGRIN_CHILD_H
#define PELGRIN_CHILD_H

#include <cstdint>
#include <functional>
#include <string>

#include <sys/types.h>

namespace pelgrin {

/// One end of the way between host and child.
class Channel {
public:
    struct Message {
        std::uint32_t type = 0;
        std::string bytes;
    };

    explicit Channel(int descriptor) : descriptor_(descriptor) {}
    ~Channel();
    Channel(const Channel&) = delete;
    Channel& operator=(const Channel&) = delete;

    /// False when nobody listens any more.
    bool Send(std::uint32_t type, const std::string& bytes = {});
    /// The next message, waiting for it; false when none will come.
    bool Receive(Message& message);

private:
    bool ReadAll(char* bytes, std::size_t size);
    bool WriteAll(const char* bytes, std::size_t size);

    int descriptor_;
};

/// How a child ended.
struct ChildEnd {
    bool isWell = false; ///< its work came to its end
    std::string text;    ///< else how: "ended by signal 9 (Killed)"
    std::string printed; ///< the first 64 KiB of what it printed
};

class Child {
public:
    /// What the child does. It is well when the function returns.
    using Work = std::function<void(Channel&)>;

    /// Starts the child. Throws Failure when the system has no room for it.
    explicit Child(const Work& work);
    /// Kills the child when it is still there.
    ~Child();
    Child(const Child&) = delete;
    Child& operator=(const Child&) = delete;

    Channel& Way() { return way_; }
    /// Waits for the end, which must be near: the child's work is done, or the
    /// way to it is closed.
    ChildEnd Wait();

private:
    struct Parts {
        pid_t process = -1;
        int way = -1;
        int printed = -1;
    };

    static Parts Start(const Work& work);
    explicit Child(const Parts& parts);
    std::string Printed() const;

    pid_t process_;
    int printed_; ///< a file in memory
    Channel way_;
};

/// The text with what a reader shows of its progress left out, as one line.
std::string WithoutProgress(const std::string& printed);

} // namespace pelgrin

#endif // PELGRIN_CHILD_H
