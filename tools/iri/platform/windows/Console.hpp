#pragma once

#include <cstddef>
#include <span>
#include <string_view>

/// The console window, which speaks UTF-16 and not bytes.
namespace tool::system::console {

/// Whether a handle of a standard stream, as the system has it, is a console.
bool isConsole(void* handle) noexcept;

/// Makes a console obey escape sequences, until the program ends.
/// @returns false if it is none that does
bool obeysEscapeSequences(void* handle) noexcept;

/// Writes UTF-8; what is none is shown as U+FFFD.
/// @returns the error code of the system; 0 if all is written
unsigned long write(void* handle, std::string_view text);

/// Waits for input and takes what there is as UTF-8, at most as much as @p buffer holds, which must
/// not be empty. A line that begins with Ctrl-Z ends the input.
/// @param[out] count  how many bytes that are; 0 at the end of the input
/// @returns the error code of the system; 0 if there was no error
unsigned long read(void* handle, std::span<char> buffer, std::size_t& count);

} // namespace tool::system::console
