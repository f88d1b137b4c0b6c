#pragma once

#include <string>
#include <vector>

/// The handlers that must take each exception of the library, in the order of `handlersThatTake`.
namespace foundation::core::except::tests {

using Names = std::vector<std::string>;

inline Names familyNames(const std::string& standard, const Names& chain)
{
    Names names = {
        "boost::exception_detail::clone_base",
        "boost::exception",
        "IException",
        "IInternalException",
        "Exception<IInternalException, " + standard + ", void>",
        "AnonymousInternalException<" + standard + ">",
    };
    names.insert(names.end(), chain.begin(), chain.end());
    return names;
}

inline Names namesForException()
{
    return familyNames("std::exception", {"std::exception"});
}

inline Names namesForLogicError()
{
    return familyNames("std::logic_error", {"std::exception", "std::logic_error"});
}

inline Names namesForRuntimeError()
{
    return familyNames("std::runtime_error", {"std::exception", "std::runtime_error"});
}

inline Names namesForInvalidArgument()
{
    return familyNames("std::invalid_argument",
                       {"std::exception", "std::logic_error", "std::invalid_argument"});
}

inline Names namesForSystemError()
{
    return familyNames("std::system_error",
                       {"std::exception", "std::runtime_error", "std::system_error"});
}

/// Outside the family: no handler for `IInternalException` takes it.
inline Names namesForOutOfRange()
{
    return {"boost::exception_detail::clone_base",
            "boost::exception",
            "boost::wrapexcept<std::out_of_range>",
            "std::exception",
            "std::logic_error",
            "std::out_of_range"};
}

} // namespace foundation::core::except::tests
