#pragma once

#include <foundation/network/NetworkInterface.hpp>

#include "platform/AdapterTable.hpp"

#include <functional>
#include <system_error>
#include <vector>

namespace foundation::network::adapter {

/// A way to read the system's table: `platform::readAdapterTable`, or what a test puts in its place.
using TableReader = std::function<std::error_code(std::vector<platform::AdapterRecord>&)>;

/// From the system's table to the library's values.
///
/// The adapters and their addresses stay in the order of the table. Addresses of families other than
/// IPv4 and IPv6 are left out.
class Listing {
public:
    using Range = detail::ImmutableIterableRange<NetworkInterface>;

    /// @{
    /// The adapters of a table: all of them, or those that are up and have an address.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> "Call to
    ///         GetAdaptersAddresses failed.", ": " and the system's text
    /// @throws boost::wrapexcept<std::out_of_range> "prefix length too large"
    static Range all(const TableReader& read);
    static Range active(const TableReader& read);
    /// @}
};

} // namespace foundation::network::adapter
