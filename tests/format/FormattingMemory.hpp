#pragma once

#include "memory/Said.hpp"
#include "memory/Trial.hpp"

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <string>
#include <vector>

namespace foundation::network::tests {

/// All that can be seen of a value. A copy is read, so that the value itself makes nothing.
inline std::string seen(const IRI& value)
{
    const IRI copy(value);
    return copy.toStringUtf8() + '\n' + copy.toAsciiStringUtf8() + '\n' + copy.getPathUtf8();
}

template <class Address>
std::string seen(const Address& address)
{
    return address.toString();
}

/// A value formatted in each way in which memory is asked for differently. @p format takes format
/// options and a value.
template <class Format, class Make>
void addFormatting(std::vector<Operation>& operations, const std::string& name, Format format,
                   Make make, Guarantee guarantee)
{
    using Value = decltype(make());
    // The last is longer than what a formatting library gathers without asking for memory; before it
    // come those that no text is formatted by.
    for (const char* const options : {"{}", "{:.3}", "{:x}", "{:+}", "{:*^3000}"})
        operations.push_back(operation(
            name + " by " + options, make,
            [format, options](Value& value) {
                return said([&] { return format(options, value); });
            },
            [](const Value& value) { return seen(value); }, guarantee));
}

/// Formats all that can be formatted while memory runs out.
template <class Format>
void checkFormattingMemory(Format format)
{
    std::vector<Operation> operations;
    const std::string address = "2001:db8:1111:2222:3333:4444:5555:6666";
    const auto parsed = [] {
        return IRI(std::string("http://é.example/a/path/of/some/length?%41#%C3%A9"));
    };
    // Its text is made when it is read first.
    const auto built = [] {
        IRIArgs args;
        args.setScheme("http").setHost("é.example").setPath("/a path/of/some/length/%41");
        return IRI(args);
    };
    addFormatting(operations, "a parsed IRI", format, parsed, Guarantee::Reading);
    addFormatting(operations, "a built IRI", format, built, Guarantee::Reading);
    addFormatting(
        operations, "an address", format, [address] { return InetAddress(address); },
        Guarantee::Strong);
    addFormatting(
        operations, "an address with a prefix", format,
        [address] { return InterfaceAddress(InetAddress(address), 64); }, Guarantee::Strong);
    addFormatting(
        operations, "a hardware address", format,
        [] {
            return HardwareAddress({1, 2, 3, 4, 5, 6, 7, 8});
        },
        Guarantee::Strong);
    expectSurvival(operations);
}

} // namespace foundation::network::tests
