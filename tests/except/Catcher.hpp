#pragma once

#include <CatcherApi.hpp> // which CMake makes: each system marks these functions in its own way

#include <string>
#include <typeinfo>
#include <vector>

/// A shared library that hides everything but these functions and catches what others throw.
namespace catcher {

/// The names of all handlers, compiled here, that take what @p operation throws.
CATCHER_API std::vector<std::string> handlersThatTake(void (*operation)());

/// What `what()` answers in a handler for `IException` here.
CATCHER_API std::string textTakenAsIException(void (*operation)());

/// The code that a handler for `std::system_error` here finds.
CATCHER_API int codeTakenAsSystemError(void (*operation)());

/// The type information of the classes of the family, as this library sees it.
CATCHER_API std::vector<const std::type_info*> typesOfTheFamily();

/// Parses @p text as an IRI here.
CATCHER_API void parse(const std::string& text);

/// Throws an exception of the family that was made here.
CATCHER_API void throwSystemError(int code);

} // namespace catcher
