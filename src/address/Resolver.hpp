#pragma once

#include <boost/asio/io_context.hpp>
#include <boost/asio/ip/tcp.hpp>

#include <string>

/// The synchronous questions to the name service. Nothing is shared between two of them, and each
/// blocks until it is answered.
namespace foundation::network::address {

using Tcp = boost::asio::ip::tcp;

/// The entries for a name, in the order of the name service; at least one.
/// @throws core::except::AnonymousInternalException<std::system_error> what the name service reports
Tcp::resolver::results_type lookUp(const std::string& name, Tcp::resolver::flags flags);

/// The name of an address, or its text if it has none.
/// @throws core::except::AnonymousInternalException<std::system_error> what the name service reports
std::string lookUp(const boost::asio::ip::address& address);

} // namespace foundation::network::address
