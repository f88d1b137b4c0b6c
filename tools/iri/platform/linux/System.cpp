#include "../../System.hpp"

#include "../../Text.hpp"

#include <array>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <string_view>
#include <system_error>

#include <fcntl.h>
#include <netdb.h>
#include <poll.h>
#include <sys/stat.h>
#include <unistd.h>

namespace tool::system {
namespace {

    constexpr int WAIT_FOR_EVER = -1;

    volatile std::sig_atomic_t interrupted = 0;

    // An interrupt writes to this pipe, so that it ends a wait for input even if it comes just
    // before that begins, or to another thread. -1 where nobody catches interrupts.
    std::array<int, 2> interruptPipe{-1, -1};

    void noteInterrupt(int /*signal*/)
    {
        const int before = errno;
        interrupted = 1;
        [[maybe_unused]] const ssize_t count = ::write(interruptPipe[1], "", 1);
        errno = before;
    }

    /// Waits for input or an interrupt.
    void waitForInput(int descriptor) noexcept
    {
        if (interruptPipe[0] < 0)
            return;
        std::array<pollfd, 2> awaited{{{descriptor, POLLIN, 0}, {interruptPipe[0], POLLIN, 0}}};
        while (::poll(awaited.data(), awaited.size(), WAIT_FOR_EVER) < 0 && errno == EINTR)
            ;
    }

    int descriptorOf(Stream stream) noexcept
    {
        switch (stream) {
        case Stream::Input:
            return STDIN_FILENO;
        case Stream::Output:
            return STDOUT_FILENO;
        case Stream::Error:
            break;
        }
        return STDERR_FILENO;
    }

    /// Whether a failed call is worth another try. Somebody else may have made the stream
    /// non-blocking, since its mode is shared with all programs that hold it; then it waits.
    bool isToBeRetried(int descriptor, short event) noexcept
    {
        if (errno == EAGAIN) {
            pollfd awaited{descriptor, event, 0};
            return ::poll(&awaited, 1, WAIT_FOR_EVER) >= 0 || errno == EINTR;
        }
        return errno == EINTR;
    }

    [[noreturn]] void fail(const std::string& what)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }

    /// The same under another number, if it has that of a standard stream which whoever started the
    /// program has closed: nothing of ours may be taken for that stream.
    int awayFromStandardStreams(int descriptor)
    {
        if (descriptor > STDERR_FILENO)
            return descriptor;
        const int other = ::fcntl(descriptor, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        const int error = errno;
        ::close(descriptor);
        if (other < 0) {
            errno = error;
            fail("cannot move a file descriptor");
        }
        return other;
    }

    /// The system's own numbers are smaller than what holds those of every system.
    int numberOf(Descriptor descriptor) noexcept
    {
        return static_cast<int>(descriptor);
    }

} // namespace

std::vector<std::string> arguments(int count, char** words)
{
    return {words + (count > 0 ? 1 : 0), words + count};
}

bool isTerminal(Stream stream) noexcept
{
    return ::isatty(descriptorOf(stream)) == 1;
}

bool terminalHasColors()
{
    const char* const name = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): one thread
    return name != nullptr && *name != '\0' && std::string_view(name) != "dumb";
}

std::size_t readSome(std::span<char> buffer)
{
    return readSome(STDIN_FILENO, "standard input", buffer);
}

Descriptor inputDescriptor() noexcept
{
    return STDIN_FILENO;
}

Descriptor openForReading(const std::string& path)
{
    int descriptor = -1;
    do
        descriptor = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    while (descriptor < 0 && errno == EINTR);
    if (descriptor < 0)
        fail("cannot open " + text::excerpt(path));
    return awayFromStandardStreams(descriptor);
}

std::size_t readSome(Descriptor descriptor, const std::string& name, std::span<char> buffer)
{
    const int number = numberOf(descriptor);
    for (;;) {
        waitForInput(number);
        // Asked before each read: a file is never waited for.
        if (wasInterrupted())
            return 0;
        const ssize_t count = ::read(number, buffer.data(), buffer.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (!isToBeRetried(number, POLLIN))
            fail("cannot read " + text::excerpt(name));
    }
}

void close(Descriptor descriptor) noexcept
{
    ::close(numberOf(descriptor));
}

std::optional<std::uint64_t> remainingSize(Descriptor descriptor) noexcept
{
    const int number = numberOf(descriptor);
    struct stat status {};
    if (::fstat(number, &status) != 0 || !S_ISREG(status.st_mode))
        return std::nullopt;
    const off_t position = ::lseek(number, 0, SEEK_CUR);
    if (position < 0 || position > status.st_size)
        return std::nullopt;
    return static_cast<std::uint64_t>(status.st_size - position);
}

void catchInterrupts()
{
    struct sigaction before {};
    // Whoever started the program in the background has made it deaf to interrupts.
    if (::sigaction(SIGINT, nullptr, &before) == 0 && before.sa_handler == SIG_IGN)
        return;
    if (::pipe2(interruptPipe.data(), O_CLOEXEC | O_NONBLOCK) != 0)
        fail("cannot make a pipe");
    for (int& end : interruptPipe)
        end = awayFromStandardStreams(end);
    struct sigaction action {};
    action.sa_handler = noteInterrupt;
    action.sa_flags = static_cast<int>(SA_RESETHAND);
    ::sigaction(SIGINT, &action, nullptr);
}

bool wasInterrupted() noexcept
{
    return interrupted != 0;
}

void endAsInterrupted() noexcept
{
    ::signal(SIGINT, SIG_DFL);
    ::raise(SIGINT);
}

void writeAll(Stream stream, std::string_view text)
{
    const int descriptor = descriptorOf(stream);

    while (!text.empty()) {
        const ssize_t count = ::write(descriptor, text.data(), text.size());
        if (count >= 0)
            text.remove_prefix(static_cast<std::size_t>(count));
        else if (!isToBeRetried(descriptor, POLLOUT))
            fail(stream == Stream::Error ? "cannot write to standard error"
                                         : "cannot write to standard output");
    }
}

bool meansNoSuchName(const std::error_code& failure) noexcept
{
    // The category has no other sign by which a caller of the library could know it.
    return std::string_view(failure.category().name()) == "asio.netdb"
           && (failure.value() == HOST_NOT_FOUND || failure.value() == NO_DATA);
}

} // namespace tool::system
