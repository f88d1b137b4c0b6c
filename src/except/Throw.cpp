#include "except/Throw.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/throw_exception.hpp>

namespace foundation::core::except {

void throwLogicError(const char* message)
{
    throw AnonymousInternalException<std::logic_error>(std::logic_error(message));
}

void throwRuntimeError(const char* message)
{
    throw AnonymousInternalException<std::runtime_error>(std::runtime_error(message));
}

void throwInvalidArgument(const std::string& message)
{
    throw AnonymousInternalException<std::invalid_argument>(std::invalid_argument(message));
}

void throwSystemError(std::error_code code, const char* message)
{
    throw AnonymousInternalException<std::system_error>(std::system_error(code, message));
}

void throwOutOfRange(const std::string& message)
{
    boost::throw_exception(std::out_of_range(message));
}

void throwAnonymous(const char* message)
{
    throw AnonymousInternalException<std::exception>(std::runtime_error(message));
}

} // namespace foundation::core::except
