#include "address/Resolver.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/asio/detail/socket_ops.hpp>
#include <boost/system/system_error.hpp>

#include <array>

namespace foundation::network::address {

namespace {

    // Where Boost mistrusts the standard library's category of the system, as with MinGW, the
    // standard form of its own is another object, which no caller would know.
    const std::error_category& standardForm(const boost::system::error_category& category)
    {
        if (category == boost::system::system_category())
            return std::system_category();
        return category;
    }

    // As the library's exception, with the code's value and the standard form of its category.
    [[noreturn]] void fail(const boost::system::error_code& code)
    {
        const std::error_category& category = standardForm(code.category());
        throw core::except::AnonymousInternalException<std::system_error>(
            std::system_error(code.value(), category));
    }

} // namespace

Tcp::resolver::results_type lookUp(const std::string& name, Tcp::resolver::flags flags)
{
    try {
        boost::asio::io_context context;
        Tcp::resolver resolver(context);
        auto results = resolver.resolve(name, "", flags);
        // For a failure that Boost has no code for it takes errno, which may say that there was none.
        if (results.empty())
            fail(boost::asio::error::no_recovery);
        return results;
    } catch (const boost::system::system_error& failure) {
        fail(failure.code());
    }
}

// This asks as the resolver does, with what the resolver is made of: such a failure without a code
// the resolver takes for an answer, which is then whatever stood in a buffer that it never cleared.
std::string lookUp(const boost::asio::ip::address& address)
{
    const Tcp::endpoint endpoint(address, 0);
    std::array<char, NI_MAXHOST> host{};
    std::array<char, NI_MAXSERV> service{};
    boost::system::error_code failure;
    boost::asio::detail::socket_ops::sync_getnameinfo(endpoint.data(), endpoint.size(), host.data(),
                                                      host.size(), service.data(), service.size(),
                                                      endpoint.protocol().type(), failure);
    if (failure)
        fail(failure);
    // The service is told after the host, and always is, if only as "0".
    if (service.front() == '\0')
        fail(boost::asio::error::no_recovery);
    return host.data();
}

} // namespace foundation::network::address
