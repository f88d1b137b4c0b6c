#pragma once

#include <string>
#include <system_error>

/// How the sources raise a failure: one readable line at the place where it is met.
namespace foundation::core::except {

/// @throws AnonymousInternalException<std::logic_error> with @p message
[[noreturn]] void throwLogicError(const char* message);

/// @throws AnonymousInternalException<std::runtime_error> with @p message
[[noreturn]] void throwRuntimeError(const char* message);

/// @throws AnonymousInternalException<std::invalid_argument> with @p message
[[noreturn]] void throwInvalidArgument(const std::string& message);

/// @throws AnonymousInternalException<std::system_error> with @p code, and with @p message, ": " and
///         the text of the code
[[noreturn]] void throwSystemError(std::error_code code, const char* message);

/// @throws boost::wrapexcept<std::out_of_range> with @p message
[[noreturn]] void throwOutOfRange(const std::string& message);

/// @throws AnonymousInternalException<std::exception> with @p message
[[noreturn]] void throwAnonymous(const char* message);

} // namespace foundation::core::except
