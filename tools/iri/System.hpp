#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

/// What the standard library does not do with arguments, files, the three standard streams and with
/// failures of the system. Each operating system has a folder in `platform` that does it.
namespace tool::system {

enum class Stream { Input, Output, Error };

/// An open file, as the system calls it.
using Descriptor = std::intptr_t;

/// The words behind the name of the program, in UTF-8 if the caller gave them so.
/// @param count, words  what `main` was given
std::vector<std::string> arguments(int count, char** words);

bool isTerminal(Stream stream) noexcept;

/// Whether the terminal, if there is one, can show colours: TERM and the system tell.
bool terminalHasColors();

/// Waits for input and takes what there is, at most as much as @p buffer holds.
/// @returns how many bytes that are; 0 at the end of the input
/// @throws std::system_error
std::size_t readSome(std::span<char> buffer);

/// @{
/// The same with a file; standard input is one, and need not be closed.
Descriptor inputDescriptor() noexcept;
Descriptor openForReading(const std::string& path);
std::size_t readSome(Descriptor descriptor, const std::string& name, std::span<char> buffer);
void close(Descriptor descriptor) noexcept;
/// @}

/// How much of a file lies ahead; nothing, if it is no file on a disk.
std::optional<std::uint64_t> remainingSize(Descriptor descriptor) noexcept;

/// From now on, an interrupt (Ctrl-C) ends the input instead of the program; the second one ends the
/// program. Does nothing where interrupts are ignored. To be called once, before there are other threads.
/// @throws std::system_error
void catchInterrupts();

/// Whether there was one.
bool wasInterrupted() noexcept;

/// Ends the program by the interrupt that was caught, so that who started it sees what happened.
void endAsInterrupted() noexcept;

/// Writes all of @p text to the output or to the errors.
/// @throws std::system_error
void writeAll(Stream stream, std::string_view text);

/// Whether the name service answers with this that there is nothing by that name; else it gave no
/// answer.
bool meansNoSuchName(const std::error_code& failure) noexcept;

} // namespace tool::system
