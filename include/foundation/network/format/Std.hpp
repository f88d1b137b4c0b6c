#pragma once

/// @file
/// Values of this library for `std::format` and its kin:
///
/// @code
/// std::string text = std::format("{:>40}", IRI("http://пример.example/"));
/// @endcode
///
/// It needs no header of the classes. The standard library has to have `<format>`, as those of g++
/// 13 and clang 17 do.

#include <foundation/network/format/TextFormatter.hpp>

#include <format>
#include <string_view>

/// The text of an IRI, as `toStringUtf8` gives it.
template <>
struct std::formatter<foundation::network::IRI>
    : foundation::network::format::TextFormatter<std::formatter<std::string_view>,
                                                 foundation::network::IRI> {
};

/// The text of an address, as `toString` gives it.
template <>
struct std::formatter<foundation::network::InetAddress>
    : foundation::network::format::TextFormatter<std::formatter<std::string_view>,
                                                 foundation::network::InetAddress> {
};

/// The text of an address with its prefix, as `toString` gives it.
template <>
struct std::formatter<foundation::network::InterfaceAddress>
    : foundation::network::format::TextFormatter<std::formatter<std::string_view>,
                                                 foundation::network::InterfaceAddress> {
};

/// The text of an address, as `toString` gives it.
template <>
struct std::formatter<foundation::network::HardwareAddress>
    : foundation::network::format::TextFormatter<std::formatter<std::string_view>,
                                                 foundation::network::HardwareAddress> {
};
