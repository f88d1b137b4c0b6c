#include "../../System.hpp"

#include "../../Text.hpp"
#include "Console.hpp"
#include "Interrupts.hpp"
#include "WideText.hpp"

#include <algorithm>
#include <cstdlib>
#include <memory>

#include <winsock2.h>

#include <windows.h>

#include <shellapi.h>

namespace tool::system {
namespace {

    constexpr std::size_t MOST_BYTES = std::size_t{1} << 30; // in one call

    HANDLE handleOf(Descriptor descriptor) noexcept
    {
        return reinterpret_cast<HANDLE>(descriptor);
    }

    Descriptor descriptorOf(HANDLE handle) noexcept
    {
        return reinterpret_cast<Descriptor>(handle);
    }

    HANDLE handleOf(Stream stream) noexcept
    {
        switch (stream) {
        case Stream::Input:
            return GetStdHandle(STD_INPUT_HANDLE);
        case Stream::Output:
            return GetStdHandle(STD_OUTPUT_HANDLE);
        case Stream::Error:
            break;
        }
        return GetStdHandle(STD_ERROR_HANDLE);
    }

    // In the words of every other system, where there are some for it.
    std::error_code codeOf(DWORD error)
    {
        switch (error) {
        case ERROR_BROKEN_PIPE: // nobody reads it any more, in three ways
        case ERROR_NO_DATA:
        case ERROR_PIPE_NOT_CONNECTED:
            return std::make_error_code(std::errc::broken_pipe);
        case ERROR_INVALID_HANDLE:
            return std::make_error_code(std::errc::bad_file_descriptor);
        case ERROR_DISK_FULL:
        case ERROR_HANDLE_DISK_FULL:
            return std::make_error_code(std::errc::no_space_on_device);
        default:
            break;
        }
        const std::error_code code(static_cast<int>(error), std::system_category());
        const std::error_condition condition = code.default_error_condition();
        return condition.category() == std::generic_category()
                   ? std::error_code(condition.value(), std::generic_category())
                   : code;
    }

    [[noreturn]] void fail(DWORD error, const std::string& what)
    {
        throw std::system_error(codeOf(error), what);
    }

    DWORD readOnce(HANDLE handle, std::span<char> buffer, std::size_t& count)
    {
        count = 0;
        if (console::isConsole(handle))
            return console::read(handle, buffer, count);
        DWORD read = 0;
        const auto room = static_cast<DWORD>(std::min(buffer.size(), MOST_BYTES));
        const BOOL isRead = ReadFile(handle, buffer.data(), room, &read, nullptr);
        const DWORD error = isRead != 0 ? ERROR_SUCCESS : GetLastError();
        count = read;
        // The end of a pipe.
        return error == ERROR_BROKEN_PIPE || error == ERROR_HANDLE_EOF ? ERROR_SUCCESS : error;
    }

} // namespace

std::vector<std::string> arguments(int /*count*/, char** /*words*/)
{
    // What main is given has been squeezed into the encoding of the system's language.
    int count = 0;
    const std::unique_ptr<wchar_t*, decltype(&LocalFree)> words(
        CommandLineToArgvW(GetCommandLineW(), &count), &LocalFree);
    std::vector<std::string> result;
    for (int i = 1; words && i < count; ++i)
        result.push_back(toUtf8(words.get()[i]));
    return result;
}

bool isTerminal(Stream stream) noexcept
{
    return console::isConsole(handleOf(stream));
}

bool terminalHasColors()
{
    // Windows sets no TERM, but who does has a reason.
    const char* const name = std::getenv("TERM"); // NOLINT(concurrency-mt-unsafe): one thread
    return (name == nullptr || std::string_view(name) != "dumb")
           && console::obeysEscapeSequences(handleOf(Stream::Output));
}

std::size_t readSome(std::span<char> buffer)
{
    return readSome(inputDescriptor(), "standard input", buffer);
}

Descriptor inputDescriptor() noexcept
{
    return descriptorOf(handleOf(Stream::Input));
}

Descriptor openForReading(const std::string& path)
{
    const HANDLE handle = CreateFileW(toWide(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_ATTRIBUTE_NORMAL, nullptr);
    if (handle == INVALID_HANDLE_VALUE)
        fail(GetLastError(), "cannot open " + text::excerpt(path));
    return descriptorOf(handle);
}

std::size_t readSome(Descriptor descriptor, const std::string& name, std::span<char> buffer)
{
    if (buffer.empty())
        return 0;
    std::size_t count = 0;
    DWORD error = ERROR_SUCCESS;
    {
        const InterruptibleRead interruptible;
        // Asked before each read: a file is never waited for.
        if (wasInterrupted())
            return 0;
        error = readOnce(handleOf(descriptor), buffer, count);
    }
    if (error == ERROR_OPERATION_ABORTED && wasInterrupted())
        return 0;
    if (error != ERROR_SUCCESS)
        fail(error, "cannot read " + text::excerpt(name));
    return count;
}

void close(Descriptor descriptor) noexcept
{
    CloseHandle(handleOf(descriptor));
}

std::optional<std::uint64_t> remainingSize(Descriptor descriptor) noexcept
{
    const HANDLE handle = handleOf(descriptor);
    LARGE_INTEGER size{};
    LARGE_INTEGER position{};
    if (GetFileType(handle) != FILE_TYPE_DISK || GetFileSizeEx(handle, &size) == 0
        || SetFilePointerEx(handle, {}, &position, FILE_CURRENT) == 0
        || position.QuadPart > size.QuadPart)
        return std::nullopt;
    return static_cast<std::uint64_t>(size.QuadPart - position.QuadPart);
}

void writeAll(Stream stream, std::string_view text)
{
    const HANDLE handle = handleOf(stream);
    DWORD error = ERROR_SUCCESS;
    if (console::isConsole(handle)) {
        // The line that tells how far a long run is moves the cursor.
        if (stream == Stream::Error)
            console::obeysEscapeSequences(handle);
        error = console::write(handle, text);
        text = {};
    }
    while (error == ERROR_SUCCESS && !text.empty()) {
        DWORD count = 0;
        const auto size = static_cast<DWORD>(std::min(text.size(), MOST_BYTES));
        if (WriteFile(handle, text.data(), size, &count, nullptr) == 0)
            error = GetLastError();
        text.remove_prefix(count);
    }
    if (error != ERROR_SUCCESS)
        fail(error, stream == Stream::Error ? "cannot write to standard error"
                                            : "cannot write to standard output");
}

bool meansNoSuchName(const std::error_code& failure) noexcept
{
    return failure.category() == std::system_category()
           && (failure.value() == WSAHOST_NOT_FOUND || failure.value() == WSANO_DATA);
}

} // namespace tool::system
