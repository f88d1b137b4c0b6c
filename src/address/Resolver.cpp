#include "address/Resolver.hpp"

#include <foundation/core/except/Exception.hpp>

#include <boost/system/system_error.hpp>

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

    template <class Question>
    Tcp::resolver::results_type ask(Question question)
    {
        try {
            boost::asio::io_context context;
            Tcp::resolver resolver(context);
            return question(resolver);
        } catch (const boost::system::system_error& failure) {
            fail(failure.code());
        }
    }

} // namespace

Tcp::resolver::results_type lookUp(const std::string& name, Tcp::resolver::flags flags)
{
    auto results = ask([&](Tcp::resolver& resolver) { return resolver.resolve(name, "", flags); });
    // For a failure that Boost has no code for it takes errno, which may say that there was none.
    if (results.empty())
        fail(boost::asio::error::no_recovery);
    return results;
}

std::string lookUp(const boost::asio::ip::address& address)
{
    const auto results =
        ask([&](Tcp::resolver& resolver) { return resolver.resolve(Tcp::endpoint(address, 0)); });
    return results.begin()->host_name();
}

} // namespace foundation::network::address
