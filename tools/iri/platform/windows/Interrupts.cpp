#include "Interrupts.hpp"

#include "../../System.hpp"

#include <atomic>
#include <mutex>

#include <windows.h>

namespace tool::system {
namespace {

    // What a program ends with that does not catch its interrupt.
    constexpr UINT INTERRUPTED = 0xC000013A; // STATUS_CONTROL_C_EXIT

    std::atomic<bool> isCaught = false;
    std::atomic<bool> interrupted = false;

    std::mutex mutex;
    HANDLE reader = nullptr; // the thread that may be waiting; guarded by mutex

    bool cancelRead()
    {
        const std::lock_guard lock(mutex);
        if (reader == nullptr)
            return false;
        // Fails if the thread has not begun to wait, or is just about to go on.
        CancelSynchronousIo(reader);
        return true;
    }

    // Runs on a thread of the system's own.
    BOOL WINAPI noteInterrupt(DWORD event)
    {
        constexpr DWORD PATIENCE = 10; // milliseconds
        if (event != CTRL_C_EVENT)
            return FALSE;
        if (interrupted.exchange(true))
            endAsInterrupted(); // the second one, as if the first had not been caught
        while (cancelRead())
            Sleep(PATIENCE);
        return TRUE;
    }

} // namespace

InterruptibleRead::InterruptibleRead()
{
    if (!isCaught)
        return;
    HANDLE thread = nullptr;
    DuplicateHandle(GetCurrentProcess(), GetCurrentThread(), GetCurrentProcess(), &thread, 0, FALSE,
                    DUPLICATE_SAME_ACCESS);
    const std::lock_guard lock(mutex);
    reader = thread;
}

InterruptibleRead::~InterruptibleRead()
{
    const std::lock_guard lock(mutex);
    if (reader != nullptr)
        CloseHandle(reader);
    reader = nullptr;
}

void catchInterrupts()
{
    isCaught = true;
    // Where whoever started the program ignores interrupts, the system never calls it.
    if (SetConsoleCtrlHandler(noteInterrupt, TRUE) == 0)
        throw std::system_error(static_cast<int>(GetLastError()), std::system_category(),
                                "cannot catch interrupts");
}

bool wasInterrupted() noexcept
{
    return interrupted;
}

void endAsInterrupted() noexcept
{
    ExitProcess(INTERRUPTED);
}

} // namespace tool::system
