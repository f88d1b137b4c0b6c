#pragma once

#include <foundation/core/except/Exception.hpp>

#include <stdexcept>

/// What happens to a foreign exception where it would leave the library.
namespace foundation::core::except {

/// Calls @p operation and answers its result.
/// @throws AnonymousInternalException<std::runtime_error> with the same text in place of each
///         `std::runtime_error`, whose own type is dropped; others pass
template <class Operation>
auto asInternalRuntimeError(Operation operation)
{
    try {
        return operation();
    } catch (const std::runtime_error& failure) {
        throw AnonymousInternalException<std::runtime_error>(failure);
    }
}

/// Calls @p operation and answers its result.
/// @throws AnonymousInternalException<std::exception> with the same text in place of each `Caught`,
///         whose own type is dropped; others pass
template <class Caught, class Operation>
auto asInternalException(Operation operation)
{
    try {
        return operation();
    } catch (const Caught& failure) {
        throw AnonymousInternalException<std::exception>(failure);
    }
}

} // namespace foundation::core::except
