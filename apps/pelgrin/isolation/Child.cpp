#include "isolation/Child.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <exception>
#include <iostream>
#include <new>
#include <optional>
#include <streambuf>
#include <utility>

#include <fmt/format.h>
#include <spdlog/spdlog.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include "common/EndBySignal.h"
#include "common/Failure.h"
#include "common/Terminal.h"

namespace pelgrin {

namespace {

constexpr std::size_t kMostPrinted = std::size_t{64} * 1024;
/// A message is never larger; a longer one means that the other end is broken.
constexpr std::uint64_t kLongestMessage = std::uint64_t{1} << 31;

struct Head {
    std::uint32_t type;
    std::uint32_t size;
};

/// Writes at once what is printed: nothing is lost when the process crashes.
class DescriptorBuffer : public std::streambuf {
public:
    explicit DescriptorBuffer(int descriptor) : descriptor_(descriptor) {}

protected:
    int_type overflow(int_type value) override
    {
        const char c = traits_type::to_char_type(value);
        return traits_type::eq_int_type(value, traits_type::eof()) || xsputn(&c, 1) == 1
                   ? traits_type::not_eof(value)
                   : traits_type::eof();
    }
    std::streamsize xsputn(const char* text, std::streamsize size) override
    {
        return ::write(descriptor_, text, static_cast<std::size_t>(size));
    }

private:
    int descriptor_;
};

[[noreturn]] void NoRoom(const char* what)
{
    const char* const hint =
        errno == EMFILE ? "; the hard limit is reached (ulimit -Hn): give fewer files at a time"
                        : "";
    throw Failure(fmt::format("no process for reading can be started: {}: {}{}", what,
                              std::strerror(errno), hint));
}

/// The life of the child.
[[noreturn]] void Live(const Child::Work& work, int way, int printed, pid_t host)
{
    // A host that is killed takes its children with it.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != host) {
        ::_exit(1);
    }
    ::dup2(printed, STDOUT_FILENO);
    ::dup2(printed, STDERR_FILENO);
    // Never destroyed: the library may end the process while it prints.
    auto* const buffer = new DescriptorBuffer(printed);
    std::cout.rdbuf(buffer);
    std::cerr.rdbuf(buffer);
    bool isWell = false;
    try {
        Channel channel(way);
        work(channel);
        isWell = true;
    } catch (const std::bad_alloc&) { // that of OpenMS is no plain std::exception
        std::cerr << "out of memory\n";
    } catch (const std::exception& error) {
        std::cerr << error.what() << '\n';
    } catch (...) {
        std::cerr << "an unknown failure\n";
    }
    ::_exit(isWell ? 0 : 1);
}

} // namespace

// ---- Channel ----------------------------------------------------------------

Channel::~Channel()
{
    ::close(descriptor_);
}

bool Channel::Send(std::uint32_t type, const std::string& bytes)
{
    const Head head{type, static_cast<std::uint32_t>(bytes.size())};
    std::array<char, sizeof head> text{};
    std::memcpy(text.data(), &head, sizeof head);
    return bytes.size() < kLongestMessage && WriteAll(text.data(), text.size())
           && WriteAll(bytes.data(), bytes.size());
}

bool Channel::Receive(Message& message)
{
    std::array<char, sizeof(Head)> text{};
    if (!ReadAll(text.data(), text.size())) {
        return false;
    }
    Head head{};
    std::memcpy(&head, text.data(), sizeof head);
    if (head.size >= kLongestMessage) {
        return false;
    }
    message.type = head.type;
    message.bytes.resize(head.size);
    return ReadAll(message.bytes.data(), head.size);
}

bool Channel::ReadAll(char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = ::recv(descriptor_, bytes, size, 0);
        if (count > 0) {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        } else if (count == 0 || errno != EINTR) {
            return false;
        }
    }
    return true;
}

bool Channel::WriteAll(const char* bytes, std::size_t size)
{
    while (size > 0) {
        const ssize_t count = ::send(descriptor_, bytes, size, MSG_NOSIGNAL);
        if (count >= 0) {
            bytes += count;
            size -= static_cast<std::size_t>(count);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

// ---- Child ------------------------------------------------------------------

Child::Child(const Work& work) : Child(Start(work)) {}

Child::Child(const Parts& parts) : process_(parts.process), printed_(parts.printed), way_(parts.way)
{
}

Child::Parts Child::Start(const Work& work)
{
    const int printed = ::memfd_create("printed", MFD_CLOEXEC);
    if (printed < 0) {
        NoRoom("memory for what it prints");
    }
    std::array<int, 2> ends{};
    if (::socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC, 0, ends.data()) != 0) {
        ::close(printed);
        NoRoom("a socket");
    }
    // What stands in buffers would be written twice.
    std::cout.flush();
    std::fflush(nullptr);
    const pid_t host = ::getpid();
    // Until the host knows the child, and the child leaves them to the host.
    std::optional<SignalsWait> wait(std::in_place);
    const pid_t process = ::fork();
    if (process == 0) {
        IgnoreSignals();
        wait.reset();
        ::close(ends[0]);
        Live(work, ends[1], printed, host);
    }
    ::close(ends[1]);
    if (process < 0) {
        ::close(ends[0]);
        ::close(printed);
        NoRoom("fork");
    }
    KillOnSignal(process);
    return {process, ends[0], printed};
}

Child::~Child()
{
    if (process_ > 0) {
        ::kill(process_, SIGKILL);
        Wait();
    }
    ::close(printed_);
}

ChildEnd Child::Wait()
{
    int status = 0;
    while (process_ > 0 && ::waitpid(process_, &status, 0) < 0 && errno == EINTR) {
    }
    SpareOnSignal(process_);
    process_ = -1;
    ChildEnd end;
    end.printed = Printed();
    if (const std::string text = WithoutProgress(end.printed); !text.empty()) {
        spdlog::debug("the library: {}", OneLine(text));
    }
    if (WIFSIGNALED(status)) {
        end.text =
            fmt::format("ended by signal {} ({})", WTERMSIG(status), ::strsignal(WTERMSIG(status)));
    } else if (WEXITSTATUS(status) != 0) {
        end.text = fmt::format("ended with status {}", WEXITSTATUS(status));
    } else {
        end.isWell = true;
    }
    return end;
}

std::string Child::Printed() const
{
    std::string text(kMostPrinted, '\0');
    const ssize_t size = ::pread(printed_, text.data(), text.size(), 0);
    text.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return text;
}

std::string WithoutProgress(const std::string& printed)
{
    std::string text;
    for (std::size_t begin = 0; begin < printed.size();) {
        const std::size_t end = std::min(printed.find('\n', begin), printed.size());
        std::string line = printed.substr(begin, end - begin);
        begin = end + 1;
        // Progress takes itself back: what counts stands behind the last backspace.
        line.erase(0, line.rfind('\b') + 1);
        const bool isPercent = line.size() > 2 && line.compare(line.size() - 2, 2, "%)") == 0;
        if (!isPercent && line.find_first_not_of(" \r") != std::string::npos) {
            text += (text.empty() ? "" : "; ") + line;
        }
    }
    return text;
}

} // namespace pelgrin
