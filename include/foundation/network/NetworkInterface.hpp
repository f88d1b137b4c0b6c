#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <memory>
#include <string>

namespace foundation::network {

class NetworkInterfaceImpl;

namespace adapter {
    class Listing;
}

/// A network adapter of this machine, as it was when it was listed.
///
/// A value never changes, even if the adapter does; its members ask the system nothing. Copies share
/// the facts: a copy costs a reference count. Any number of threads may call const members of one
/// object and of its copies. A moved-from object may only be destroyed or assigned to. Where memory
/// runs out `std::bad_alloc` is thrown.
class ZKFLNETWORK_API NetworkInterface {
public:
    /// @{
    /// The adapters of this machine, in the order of the system: `list` those that are up and have an
    /// address (a loopback adapter as well), `listAll` all that the system reports.
    ///
    /// Each call asks the system anew, on the calling thread.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> "Call to
    ///         GetAdaptersAddresses failed.", ": " and the system's text, with the system's code; also
    ///         if there is no adapter at all
    static detail::ImmutableIterableRange<NetworkInterface> list();
    static detail::ImmutableIterableRange<NetworkInterface> listAll();
    /// @}

    /// Shares the facts.
    NetworkInterface(const NetworkInterface& other) noexcept;
    /// Takes the facts over.
    NetworkInterface(NetworkInterface&& other) noexcept;
    /// Shares the facts.
    NetworkInterface& operator=(const NetworkInterface& other) noexcept;
    /// Takes the facts over.
    NetworkInterface& operator=(NetworkInterface&& other) noexcept;
    /// The last of the copies frees the facts.
    ~NetworkInterface();

    /// The system's number of the adapter, in decimal.
    std::string getIdentifier() const;

    /// The name under which people know the adapter, such as "eth0"; the identifier, if it has none.
    /// A name whose bytes are not UTF-8 shows U+FFFD in place of those outside ASCII, and on Windows
    /// one that is not UTF-16 in place of each surrogate that stands alone.
    std::u16string getFriendlyName() const;

    /// What the system tells about the adapter: on Linux the alias that somebody gave it, or else its
    /// driver, and on Windows what it calls the description. May be empty.
    std::u16string getDescription() const;

    /// The link-layer address; empty for a loopback adapter and for one that has none.
    HardwareAddress getHardwareAddress() const;

    /// The addresses with their prefix lengths, in the order of the system. No difference is made
    /// between tentative, deprecated and other addresses, and none shows a scope.
    detail::ImmutableIterableRange<InterfaceAddress> getInterfaceAddresses() const;

    /// The same addresses in the same order, without their prefix lengths. They remember no name.
    detail::ImmutableIterableRange<InetAddress> getInetAddresses() const;

    /// Whether the adapter was up and running.
    bool isUp() const noexcept;

    /// Whether it leads back to this machine.
    bool isLoopback() const noexcept;

    /// Whether it can send to groups.
    bool supportsMulticast() const noexcept;

private:
    friend class adapter::Listing;

    enum class FilterType {
        All = 0,    // every adapter that the platform reports
        Active = 1, // adapters that are up and have at least one address
    };

    static detail::ImmutableIterableRange<NetworkInterface> getAdapters(FilterType filter);

    explicit NetworkInterface(std::shared_ptr<const NetworkInterfaceImpl> impl) noexcept;

    std::shared_ptr<const NetworkInterfaceImpl> impl_;
};

} // namespace foundation::network
