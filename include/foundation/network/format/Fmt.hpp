#pragma once

/// @file
/// Values of this library for `fmt::format` and its kin, of fmt 9 or later:
///
/// @code
/// fmt::print("{:>40}\n", IRI("http://пример.example/"));
/// @endcode
///
/// It needs no header of the classes, and adds nothing to what is linked but fmt.

#include <foundation/network/format/TextFormatter.hpp>

#include <fmt/format.h> // fmt/core.h only declares how texts are formatted

/// The text of an IRI, as `toStringUtf8` gives it.
template <>
struct fmt::formatter<foundation::network::IRI>
    : foundation::network::format::TextFormatter<fmt::formatter<fmt::string_view>,
                                                 foundation::network::IRI> {
};

/// The text of an address, as `toString` gives it.
template <>
struct fmt::formatter<foundation::network::InetAddress>
    : foundation::network::format::TextFormatter<fmt::formatter<fmt::string_view>,
                                                 foundation::network::InetAddress> {
};

/// The text of an address with its prefix, as `toString` gives it.
template <>
struct fmt::formatter<foundation::network::InterfaceAddress>
    : foundation::network::format::TextFormatter<fmt::formatter<fmt::string_view>,
                                                 foundation::network::InterfaceAddress> {
};

/// The text of an address, as `toString` gives it.
template <>
struct fmt::formatter<foundation::network::HardwareAddress>
    : foundation::network::format::TextFormatter<fmt::formatter<fmt::string_view>,
                                                 foundation::network::HardwareAddress> {
};
