#include "System.hpp"

#include <cerrno>
#include <cstdlib>
#include <system_error>

#include <poll.h>
#include <unistd.h>

namespace tool::system {
namespace {

    constexpr int WAIT_FOR_EVER = -1;

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

    [[noreturn]] void fail(const char* what)
    {
        throw std::system_error(errno, std::generic_category(), what);
    }

} // namespace

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
    for (;;) {
        const ssize_t count = ::read(STDIN_FILENO, buffer.data(), buffer.size());
        if (count >= 0)
            return static_cast<std::size_t>(count);
        if (!isToBeRetried(STDIN_FILENO, POLLIN))
            fail("cannot read standard input");
    }
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

} // namespace tool::system
