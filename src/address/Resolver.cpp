#include "address/Resolver.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/system/system_error.hpp>

namespace foundation::network::address {

namespace {

    // Turns Boost's exception into the library's, with the code's value and the standard form of its
    // category.
    template <class Question>
    Tcp::resolver::results_type ask(Question question)
    {
        try {
            boost::asio::io_context context;
            Tcp::resolver resolver(context);
            return question(resolver);
        } catch (const boost::system::system_error& failure) {
            const boost::system::error_code& code = failure.code();
            const std::error_category& category = code.category();
            throw core::except::AnonymousInternalException<std::system_error>(
                std::system_error(code.value(), category));
        }
    }

} // namespace

Tcp::resolver::results_type lookUp(const std::string& name, Tcp::resolver::flags flags)
{
    return ask([&](Tcp::resolver& resolver) { return resolver.resolve(name, "", flags); });
}

std::string lookUp(const boost::asio::ip::address& address)
{
    const auto results =
        ask([&](Tcp::resolver& resolver) { return resolver.resolve(Tcp::endpoint(address, 0)); });
    return results.begin()->host_name();
}

} // namespace foundation::network::address
