#pragma once

#include <foundation/core/except/Exception.hpp>

#include <boost/core/demangle.hpp>
#include <boost/throw_exception.hpp>

#include <exception>
#include <optional>
#include <ostream>
#include <stdexcept>
#include <string>
#include <typeindex>
#include <typeinfo>

/// What tests say about an operation that throws.
namespace foundation::network::tests {

/// The complete type and the text of an exception.
struct Failure {
    std::type_index type;
    std::string text;

    bool operator==(const Failure&) const = default;
};

inline std::ostream& operator<<(std::ostream& stream, const Failure& failure)
{
    return stream << boost::core::demangle(failure.type.name()) << " \"" << failure.text << '"';
}

/// What @p operation throws, or nothing.
template <class Operation>
std::optional<Failure> failureOf(Operation operation)
{
    try {
        operation();
    } catch (const std::exception& thrown) {
        return Failure{typeid(thrown), thrown.what()};
    }
    return std::nullopt;
}

/// The failure of every reader of UTF-8.
inline Failure invalidUtf8()
{
    return {typeid(core::except::AnonymousInternalException<std::exception>),
            "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"};
}

/// The failure of the reader of UTF-16; @p unit as the text shows it, such as "0xdc00".
inline Failure misplacedSurrogate(const std::string& unit)
{
    return {typeid(boost::wrapexcept<std::out_of_range>),
            "Misplaced UTF-16 surrogate U+" + unit
                + " encountered while trying to encode UTF-32 sequence"};
}

/// The failure of every writer of UTF-16 and UTF-8; @p value as the text shows it.
inline Failure invalidCodePoint(const std::string& value)
{
    return {typeid(boost::wrapexcept<std::out_of_range>),
            "Invalid UTF-32 code point U+" + value
                + " encountered while trying to encode UTF-16 sequence"};
}

} // namespace foundation::network::tests
