#pragma once

#include <cstddef>
#include <span>
#include <string_view>

/// What the standard library does not do with the three standard streams. Another operating system
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

/// Writes all of @p text to the output or to the errors.
/// @throws std::system_error
void writeAll(Stream stream, std::string_view text);

} // namespace tool::system
