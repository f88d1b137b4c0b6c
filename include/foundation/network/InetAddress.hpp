#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <array>
#include <memory>
#include <string>
#include <vector>

namespace foundation::network {

class InetAddressImpl;
class InterfaceAddress;

/// An IP address, version 4 or 6, that may remember the host name under which it was looked up.
///
/// The address never changes, and copies share it: a copy costs a reference count and the name. Any
/// number of threads may call const members of one object and of its copies. A moved-from object may
/// only be destroyed or assigned to. Where memory runs out `std::bad_alloc` is thrown and nothing has
/// changed.
///
/// An IPv4-mapped IPv6 address (RFC 4291, 2.5.5.2) is an IPv6 address in every respect; the mapping
/// is never undone.
///
/// The look-ups (`getByName` and the other members with "Host" in their names) ask the name service
/// of the system on the calling thread and return when it has answered; there is no time-out of
/// their own, and nothing is kept between two calls.
class ZKFLNETWORK_API InetAddress {
public:
    /// The IPv4 address 0.0.0.0.
    InetAddress();

    /// The IPv4 address of four bytes in network order: the first is the first number of the text.
    explicit InetAddress(std::array<unsigned char, 4> bytes);

    /// The IPv6 address of sixteen bytes in network order, without a scope.
    explicit InetAddress(std::array<unsigned char, 16> bytes);

    /// The IPv4 address of four bytes, or the IPv6 address of sixteen, in network order. No bytes at
    /// all give 0.0.0.0.
    ///
    /// @throws core::except::AnonymousInternalException<std::invalid_argument> "Can not create
    ///         InetAddress from 5 elements. Vector must have 0, 4 or 16 elements.", with the number
    ///         of bytes, if there are neither 0, 4 nor 16
    explicit InetAddress(const std::vector<unsigned char>& bytes);

    /// The address that a text shows: IPv6 as in RFC 4291, 2.2, with "%" and a scope if need be, or
    /// four decimal numbers with dots between them. A text ends at its first NUL. Windows takes
    /// brackets around IPv6 as well, and a port behind either, and drops them.
    ///
    /// A scope is a number, or, with a link-local address or group (RFC 4007, 11), the name of an
    /// interface, if the system takes names there, as Linux does and Windows does not. Windows
    /// refuses all else; Linux reads the number with which it begins, and leaves it out if there is
    /// none.
    ///
    /// No name is looked up here; `getByName` takes both.
    ///
    /// @throws core::except::AnonymousInternalException<std::invalid_argument> "Invalid IP address
    ///         string: " and the text, if the system reads it as IPv4 though it has not four decimal
    ///         parts; the system's message, with its number, for a text that the system does not read
    explicit InetAddress(const std::string& text);

    /// Shares the address and copies the name.
    InetAddress(const InetAddress& other);
    /// Takes address and name over.
    InetAddress(InetAddress&& other) noexcept;
    /// Shares the address and copies the name.
    InetAddress& operator=(const InetAddress& other);
    /// Takes address and name over.
    InetAddress& operator=(InetAddress&& other) noexcept;
    /// The last of the copies frees the address.
    ~InetAddress();

    /// @{
    /// An address for which a name stands.
    ///
    /// The name goes to the name service as it is, without IDN conversion (`IdnConverter` makes an
    /// ASCII name) and up to its first NUL. The text of an address gives that address. An empty name
    /// is refused; it does not mean this machine.
    ///
    /// `getByName` gives the first of the addresses, `getAllByName` all of them, neither sorted nor
    /// rid of duplicates. Only such versions are given as the machine has an address of (the hint
    /// AI_ADDRCONFIG of RFC 3493, 6.1). Each result remembers @p name for `getHostName`.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> with the code and the
    ///         message of the name service, if it reports an error; also if it does not know the name
    static InetAddress getByName(const std::string& name);
    static detail::ImmutableIterableRange<InetAddress> getAllByName(const std::string& name);
    /// @}

    /// An address of this machine that others can reach, if it has one; it remembers the name that
    /// `getLocalHostName` gives.
    ///
    /// It is the address for which that name stands. If that is a loopback or link-local address, it
    /// is instead the first address of an adapter that is up and no loopback adapter; one that is not
    /// link-local goes before one that is. Without any such address it stays the one of the name.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> as `getLocalHostName`,
    ///         `getByName` and `NetworkInterface::list` do
    /// @throws IdnConverterException as `getLocalHostName` does
    static InetAddress getLocalHost();

    /// The name under which this address was looked up, or else the one that the name service has for
    /// the address. An address without one gives its text.
    ///
    /// A name that was looked up here is not remembered: the next call asks again.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> with the code and the
    ///         message of the name service, if it reports an error
    std::string getHostName() const;

    /// The canonical name of the host that has this address: the name of the address is looked up,
    /// and then the canonical form of that name. A remembered name plays no part.
    ///
    /// @throws core::except::AnonymousInternalException<std::system_error> with the code and the
    ///         message of the name service, if it reports an error
    std::string getCanonicalHostName() const;

    /// 4 or 6.
    unsigned int getVersion() const noexcept;

    /// Whether it is in 127.0.0.0/8 (RFC 1122, 3.2.1.3) or ::1 (RFC 4291, 2.5.3).
    bool isLoopback() const noexcept;

    /// Whether it is in 169.254.0.0/16 (RFC 3927) or fe80::/10 (RFC 4291, 2.5.6).
    bool isLinkLocal() const noexcept;

    /// Whether it is in 224.0.0.0/4 (RFC 5771) or ff00::/8 (RFC 4291, 2.7).
    bool isMulticast() const noexcept;

    /// @{
    /// The address as text, never the remembered name: decimal numbers and dots, or the short form of
    /// RFC 5952, with "%" and the scope if it has one. The scope of a link-local address or group
    /// shows as the name of that interface, if there is one, and on Windows always as its number.
    std::string toString() const;
    std::string getHostAddress() const;
    /// @}

    /// The 4 or 16 bytes in network order, without the scope.
    std::vector<unsigned char> bytes() const;

private:
    friend class InterfaceAddress;

    InetAddress(std::shared_ptr<const InetAddressImpl> impl, std::string hostName) noexcept;

    std::shared_ptr<const InetAddressImpl> impl_;
    std::string hostName_;
};

/// The host name of this machine without its domain part, in ASCII; a name with other characters
/// comes in the form of `idn_to_ascii`.
///
/// @throws core::except::AnonymousInternalException<std::system_error> "Call to GetComputerName
///         failed.", ": " and the system's text, with the system's code; on Windows also if the name
///         has more than 31 units of UTF-16
/// @throws IdnConverterException as `idn_to_ascii` does
ZKFLNETWORK_API std::string getLocalHostName();

} // namespace foundation::network
