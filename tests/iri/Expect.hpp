#pragma once

#include <foundation/core/except/Exception.hpp>

#include <boost/throw_exception.hpp>
#include <gtest/gtest.h>

#include <exception>
#include <stdexcept>
#include <string>
#include <typeinfo>

namespace foundation::network::tests {

using LogicFailure = core::except::AnonymousInternalException<std::logic_error>;
using RuntimeFailure = core::except::AnonymousInternalException<std::runtime_error>;
using AnyFailure = core::except::AnonymousInternalException<std::exception>;
using RangeFailure = boost::wrapexcept<std::out_of_range>;

inline const std::string invalidUtf8 =
    "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";

/// Whether @p operation throws an object whose complete type is `Exact` and which answers @p text.
template <class Exact, class Operation>
testing::AssertionResult throwsExactly(Operation operation, const std::string& text)
{
    try {
        operation();
    } catch (const std::exception& failure) {
        if (typeid(failure) != typeid(Exact))
            return testing::AssertionFailure() << "threw a " << typeid(failure).name();
        if (failure.what() != text)
            return testing::AssertionFailure() << "answers \"" << failure.what() << '"';
        return testing::AssertionSuccess();
    }
    return testing::AssertionFailure() << "threw nothing";
}

} // namespace foundation::network::tests
