#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <system_error>

/// What the standard library does not do with the three standard streams and with failures of the
/// system. Another operating system
/// needs another System.cpp and nothing else.
namespace tool::system {

enum class Stream { Input, Output, Error };

bool isTerminal(Stream stream) noexcept;

/// Whether the terminal that TERM names can show colours, if there is one.
bool terminalHasColors();

/// Waits for input and takes what there is, at most as much as @p buffer holds.
/// @returns how many bytes that are; 0 at the end of the input
/// @throws std::system_error
std::size_t readSome(std::span<char> buffer);

/// @{
/// The same with a file; standard input is one, and need not be closed.
int inputDescriptor() noexcept;
int openForReading(const std::string& path);
std::size_t readSome(int descriptor, const std::string& name, std::span<char> buffer);
void close(int descriptor) noexcept;
/// @}

/// How much of a file lies ahead; nothing, if it is no file on a disk.
std::optional<std::uint64_t> remainingSize(int descriptor) noexcept;

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
