#pragma once

#include <foundation/core/except/Exception.hpp>

#include <boost/throw_exception.hpp>

#include <exception>
#include <stdexcept>
#include <string>
#include <system_error>
#include <typeinfo>
#include <vector>

/// Which handlers take an exception. Compiled into the test program and into a shared library of
/// the tests, so that each of them brings its own view of the types.
namespace foundation::core::except::tests {

template <class Handler, class Operation>
bool isTakenBy(const Operation& operation)
{
    try {
        operation();
    } catch (const Handler&) {
        return true;
    } catch (...) {
        return false;
    }
    return false;
}

/// The names of all handlers that take what @p operation throws, in a fixed order.
template <class Operation>
std::vector<std::string> handlersThatTake(const Operation& operation)
{
    std::vector<std::string> names;
    const auto addIf = [&names](bool taken, const char* name) {
        if (taken)
            names.emplace_back(name);
    };
#define ADD_HANDLER(...) addIf(isTakenBy<__VA_ARGS__>(operation), #__VA_ARGS__)
    ADD_HANDLER(boost::exception_detail::clone_base);
    ADD_HANDLER(boost::exception);
    ADD_HANDLER(IException);
    ADD_HANDLER(IInternalException);
    ADD_HANDLER(Exception<IInternalException, std::exception, void>);
    ADD_HANDLER(Exception<IInternalException, std::logic_error, void>);
    ADD_HANDLER(Exception<IInternalException, std::runtime_error, void>);
    ADD_HANDLER(Exception<IInternalException, std::invalid_argument, void>);
    ADD_HANDLER(Exception<IInternalException, std::system_error, void>);
    ADD_HANDLER(AnonymousInternalException<std::exception>);
    ADD_HANDLER(AnonymousInternalException<std::logic_error>);
    ADD_HANDLER(AnonymousInternalException<std::runtime_error>);
    ADD_HANDLER(AnonymousInternalException<std::invalid_argument>);
    ADD_HANDLER(AnonymousInternalException<std::system_error>);
    ADD_HANDLER(boost::wrapexcept<std::out_of_range>);
    ADD_HANDLER(std::exception);
    ADD_HANDLER(std::logic_error);
    ADD_HANDLER(std::invalid_argument);
    ADD_HANDLER(std::out_of_range);
    ADD_HANDLER(std::runtime_error);
    ADD_HANDLER(std::system_error);
#undef ADD_HANDLER
    return names;
}

/// The type information of the family as it looks from where this is compiled.
template <class... Standard>
std::vector<const std::type_info*> typesOf()
{
    return {&typeid(IException), &typeid(IInternalException),
            &typeid(Exception<IInternalException, Standard, void>)...,
            &typeid(AnonymousInternalException<Standard>)...};
}

inline std::vector<const std::type_info*> typesOfTheFamily()
{
    return typesOf<std::exception, std::logic_error, std::runtime_error, std::invalid_argument,
                   std::system_error>();
}

} // namespace foundation::core::except::tests
