// Linked into each program of the tests on Windows.

#include <cstdio>

#include <windows.h>

namespace {

constexpr UINT CRASHED = 99;

// Whatever else the system would do with a crash, such as to ask somebody, the program ends, and
// not with success.
LONG WINAPI endAsCrashed(EXCEPTION_POINTERS* crash)
{
    std::fprintf(stderr, "crashed with exception %08lx\n",
                 static_cast<unsigned long>(crash->ExceptionRecord->ExceptionCode));
    std::fflush(nullptr);
    TerminateProcess(GetCurrentProcess(), CRASHED);
    return EXCEPTION_EXECUTE_HANDLER;
}

// Before main, so that no program has to think of it.
[[maybe_unused]] const auto before = SetUnhandledExceptionFilter(endAsCrashed);

} // namespace
