#include "Console.hpp"

#include "WideText.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <string>

#include <windows.h>

namespace tool::system::console {
namespace {

    // More in one call than a console of an older system takes is not written at all.
    constexpr std::size_t MOST_UNITS = 8192;

    constexpr wchar_t CTRL_Z = L'\x1A';

    bool isHighSurrogate(wchar_t unit) noexcept
    {
        return (unit & 0xFC00) == 0xD800;
    }

    // What a console was before it was made to obey, put back at the end of the program: others that
    // write to it then find it as it was.
    struct Before {
        void* handle = nullptr;
        DWORD mode = 0;
    };
    std::array<Before, 2> before;
    std::size_t beforeCount = 0;

    void putBack()
    {
        while (beforeCount != 0) {
            --beforeCount;
            SetConsoleMode(before[beforeCount].handle, before[beforeCount].mode);
        }
    }

    // What was typed and not yet handed out.
    std::string typed;
    wchar_t heldBack = L'\0'; // the first half of a pair of surrogates
    bool isLineBegin = true;

} // namespace

bool isConsole(void* handle) noexcept
{
    DWORD mode = 0;
    return GetConsoleMode(handle, &mode) != 0;
}

bool obeysEscapeSequences(void* handle) noexcept
{
    DWORD mode = 0;
    if (GetConsoleMode(handle, &mode) == 0)
        return false;
    if ((mode & ENABLE_VIRTUAL_TERMINAL_PROCESSING) != 0)
        return true;
    if (SetConsoleMode(handle, mode | ENABLE_VIRTUAL_TERMINAL_PROCESSING) == 0)
        return false;
    if (beforeCount == 0)
        std::atexit(putBack);
    if (beforeCount != before.size())
        before[beforeCount++] = {handle, mode};
    return true;
}

unsigned long write(void* handle, std::string_view text)
{
    const std::wstring wide = toWide(text);
    std::wstring_view rest = wide;
    while (!rest.empty()) {
        std::size_t size = std::min(rest.size(), MOST_UNITS);
        if (size < rest.size() && isHighSurrogate(rest[size - 1]))
            --size;
        DWORD count = 0;
        if (WriteConsoleW(handle, rest.data(), static_cast<DWORD>(size), &count, nullptr) == 0)
            return GetLastError();
        rest.remove_prefix(count);
    }
    return ERROR_SUCCESS;
}

unsigned long read(void* handle, std::span<char> buffer, std::size_t& count)
{
    count = 0;
    while (typed.empty()) {
        std::array<wchar_t, 4096> units{};
        std::size_t begin = 0;
        if (heldBack != L'\0')
            units[begin++] = heldBack;
        heldBack = L'\0';
        DWORD read = 0;
        if (ReadConsoleW(handle, units.data() + begin, static_cast<DWORD>(units.size() - begin),
                         &read, nullptr)
            == 0)
            return GetLastError();
        std::wstring_view wide(units.data(), begin + read);
        // An interrupt leaves nothing, and so does the key for the end.
        if (wide.empty() || (isLineBegin && wide.front() == CTRL_Z))
            return ERROR_SUCCESS;
        isLineBegin = wide.back() == L'\n';
        if (isHighSurrogate(wide.back())) {
            heldBack = wide.back();
            wide.remove_suffix(1);
        }
        typed = toUtf8(wide);
    }
    count = std::min(buffer.size(), typed.size());
    std::copy_n(typed.begin(), count, buffer.begin());
    typed.erase(0, count);
    return ERROR_SUCCESS;
}

} // namespace tool::system::console
