// Addresses, adapters and look-ups, the exceptions, and domain names.

#include "memory/Said.hpp"
#include "memory/Trial.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include <gtest/gtest.h>

#include <array>
#include <cstring>
#include <initializer_list>
#include <memory>
#include <stdexcept>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using namespace tests;
    using Operations = std::vector<Operation>;
    using Bytes = std::vector<unsigned char>;

    const std::string longText = "2001:db8:1111:2222:3333:4444:5555:6666";
    const std::string hostName = "a-name-that-is-long-enough-for-the-heap.example.com";

    std::string seen(const InetAddress& address)
    {
        return address.toString() + ' ' + address.getHostName() + ' '
               + std::to_string(address.getVersion())
               + (address.isLoopback() || address.isLinkLocal() || address.isMulticast() ? '+'
                                                                                         : '-');
    }

    std::string seen(const InterfaceAddress& address)
    {
        return address.toString() + ' ' + std::to_string(address.prefixLength()) + ' '
               + seen(address.getInetAddress());
    }

    std::string seen(const HardwareAddress& address)
    {
        return address.toString();
    }

    std::string seen(const NetworkInterface& adapter)
    {
        std::string result = adapter.getIdentifier() + ' ' + bytesOf(adapter.getFriendlyName())
                             + ' ' + bytesOf(adapter.getDescription()) + ' '
                             + seen(adapter.getHardwareAddress());
        for (const InterfaceAddress& address : adapter.getInterfaceAddresses())
            result += ' ' + address.toString();
        for (const InetAddress& address : adapter.getInetAddresses())
            result += ' ' + address.toString();
        return result;
    }

    using Addresses = detail::ImmutableIterableRange<InetAddress>;

    std::string seen(const Addresses& addresses)
    {
        std::string result;
        for (const InetAddress& address : addresses)
            result += seen(address) + '\n';
        return result;
    }

    // A copy, an assignment of a copy to another value and a move; and what is seen of it.
    template <class Make, class MakeOther>
    void addLifeCycle(Operations& operations, const std::string& name, Make make,
                      MakeOther makeOther)
    {
        using Value = decltype(make());
        const auto look = [](const std::pair<Value, Value>& both) {
            return seen(both.first) + '\n' + seen(both.second);
        };
        const auto makeBoth = [make, makeOther] { return std::pair(makeOther(), make()); };
        operations.push_back(operation(
            name + ", seen", make, [](Value& value) { return seen(value); },
            [](const Value& value) { return seen(value); }));
        operations.push_back(operation(
            name + ", copied", make, [](Value& value) { return seen(Value(value)); },
            [](const Value& value) { return seen(value); }));
        operations.push_back(operation(
            name + ", assigned", makeBoth,
            [](std::pair<Value, Value>& both) {
                both.first = both.second;
                return std::string();
            },
            look));
        operations.push_back(operation(
            name + ", moved", makeBoth,
            [](std::pair<Value, Value>& both) {
                Value taken(std::move(both.first));
                both.first = std::move(taken);
                return std::string();
            },
            look));
    }

    TEST(AddressMemory, mayFailWhereverAnAddressIsMade)
    {
        Operations operations;
        for (const std::string& text :
             {longText, std::string("192.168.111.222"), longText + "%1", std::string("1.2.3"),
              std::string("no address at all, in a text of some length")})
            operations.push_back(operation("InetAddress of a text, " + text, [text] {
                return said([&] { return InetAddress(text).toString(); });
            }));
        for (const std::size_t count : {0U, 4U, 5U, 16U})
            operations.push_back(operation("InetAddress of a vector", [count] {
                return said([&] { return InetAddress(Bytes(count, 77)).toString(); });
            }));
        operations.push_back(operation("InetAddress", [] { return InetAddress().toString(); }));
        operations.push_back(operation("InetAddress of four bytes", [] {
            return InetAddress(std::array<unsigned char, 4>{1, 2, 3, 4}).toString();
        }));
        operations.push_back(operation("InetAddress of sixteen bytes", [] {
            return bytesOf(InetAddress(std::array<unsigned char, 16>{0x20, 1, 2, 3, 4}).bytes()
                           == Bytes{0x20, 1, 2, 3, 4, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0});
        }));
        operations.push_back(
            operation("InterfaceAddress", [] { return seen(InterfaceAddress()); }));
        for (const auto prefix : std::initializer_list<unsigned short>{64, 129})
            operations.push_back(operation(
                "InterfaceAddress of an address", [] { return InetAddress(longText); },
                [prefix](InetAddress& address) {
                    return said([&] { return seen(InterfaceAddress(address, prefix)); });
                },
                [](const InetAddress& address) { return seen(address); }));
        addLifeCycle(
            operations, "InetAddress", [] { return InetAddress::getByName(hostName); },
            [] { return InetAddress(std::string("192.168.1.5")); });
        addLifeCycle(
            operations, "InterfaceAddress",
            [] { return InterfaceAddress(InetAddress(longText), 64); },
            [] { return InterfaceAddress(); });
        addLifeCycle(
            operations, "HardwareAddress",
            [] {
                return HardwareAddress(Bytes{1, 2, 3, 4, 5, 6, 7, 8});
            },
            [] {
                return HardwareAddress(Bytes{1, 2});
            });
        addLifeCycle(
            operations, "ImmutableIterableRange",
            [] { return InetAddress::getAllByName(hostName); },
            [] {
                const InetAddress another = InetAddress::getByName(hostName + ".another");
                return Addresses({another, another, another});
            });
        operations.push_back(
            operation("getHostAddress", [] { return InetAddress(longText).getHostAddress(); }));
        operations.push_back(operation("HardwareAddress", [] { return seen(HardwareAddress()); }));
        operations.push_back(operation("bytes of a hardware address", [] {
            return bytesOf(HardwareAddress(Bytes{1, 2, 3}).bytes() == Bytes{1, 2, 3});
        }));
        expectSurvival(operations);
    }

    // ICU tells with its own code that it has no memory.
    bool isShortageOfIcu(const std::exception& failure)
    {
        return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr
               || (dynamic_cast<const IdnConverterException*>(&failure) != nullptr
                   && std::strcmp(failure.what(), "U_MEMORY_ALLOCATION_ERROR") == 0);
    }

    TEST(AddressMemory, mayFailWhereverSomethingIsLookedUp)
    {
        Operations operations;
        operations.push_back(
            operation("getByName", [] { return seen(InetAddress::getByName(hostName)); }));
        operations.push_back(
            operation("getAllByName", [] { return seen(InetAddress::getAllByName(hostName)); }));
        operations.push_back(
            operation("getLocalHost", [] { return seen(InetAddress::getLocalHost()); }));
        operations.push_back(operation("getLocalHostName", [] { return getLocalHostName(); }));
        const auto make = [] { return InetAddress(longText); };
        const auto look = [](const InetAddress& address) { return seen(address); };
        operations.push_back(operation(
            "getHostName", make, [](InetAddress& address) { return address.getHostName(); }, look));
        operations.push_back(operation(
            "getCanonicalHostName", make,
            [](InetAddress& address) { return address.getCanonicalHostName(); }, look));
        expectSurvival(operations, isShortageOfIcu); // names that the machine has are converted
    }

    TEST(AddressMemory, mayFailWhereverAdaptersAreListed)
    {
        Operations operations;
        for (const auto list : {&NetworkInterface::list, &NetworkInterface::listAll})
            operations.push_back(operation("list", [list] {
                return said([list] {
                    std::string result;
                    for (const NetworkInterface& adapter : list())
                        result += seen(adapter) + '\n';
                    return result;
                });
            }));
        const auto first = [] { return *NetworkInterface::listAll().begin(); };
        addLifeCycle(operations, "NetworkInterface", first, first);
        expectSurvival(operations);
    }

    template <class Standard>
    void addException(Operations& operations, const std::string& name, Standard standard)
    {
        using Ours = core::except::AnonymousInternalException<Standard>;
        const auto shown = [](const Ours& failure) {
            return std::string(failure.what()) + bytesOf(failure.toUstring());
        };
        const auto make = [standard] { return Ours(standard); };
        operations.push_back(operation(
            name, make, [shown](Ours& failure) { return shown(failure); }, shown));
        operations.push_back(operation(
            name + ", made", [standard] { return standard; },
            [shown](Standard& from) { return shown(Ours(from)); },
            [](const Standard& from) { return std::string(from.what()); }));
        operations.push_back(operation(
            name + ", copied", make,
            [shown](Ours& failure) {
                Ours copy(failure);
                copy = failure;
                return shown(copy);
            },
            shown));
        operations.push_back(operation(
            name + ", cloned", make,
            [shown](Ours& failure) {
                const std::unique_ptr<const boost::exception_detail::clone_base> copy(
                    failure.clone());
                return shown(dynamic_cast<const Ours&>(*copy));
            },
            shown));
        operations.push_back(operation(
            name + ", thrown again", make,
            [shown](Ours& failure) {
                std::string again;
                try {
                    failure.rethrow();
                } catch (const Ours& caught) {
                    again = shown(caught);
                }
                return again;
            },
            shown));
    }

    TEST(AddressMemory, mayFailWhereverAnExceptionIsMade)
    {
        const std::string text = "a message that is long enough for the heap";
        Operations operations;
        addException(operations, "logic_error", std::logic_error(text));
        addException(operations, "runtime_error", std::runtime_error(text));
        addException(operations, "invalid_argument", std::invalid_argument(text));
        addException(operations, "system_error",
                     std::system_error(std::make_error_code(std::errc::io_error), text));
        addException(operations, "exception", std::exception());
        const auto make = [text] {
            return std::pair(IdnConverterException(text), IdnConverterException("short"));
        };
        const auto look = [](const std::pair<IdnConverterException, IdnConverterException>& both) {
            return std::string(both.first.what()) + both.second.what();
        };
        operations.push_back(operation(
            "IdnConverterException", make,
            [](std::pair<IdnConverterException, IdnConverterException>& both) {
                const IdnConverterException copy(both.first);
                both.second = copy;
                return std::string();
            },
            look));
        expectSurvival(operations);
    }

    TEST(AddressMemory, mayFailWhereverANameIsConverted)
    {
        // Longer than the room that ICU has without asking for memory.
        std::u16string name;
        std::string ascii;
        for (int i = 0; i < 40; ++i) {
            name += u"bücher-ΒΌΛΟΣ.";
            ascii += "xn--bcher-kva.";
        }
        const auto make = [] { return IdnConverter(); };
        const auto look = [](const IdnConverter& converter) {
            return converter.toAscii(u"ü") + bytesOf(converter.toUnicode("xn--tda"));
        };
        Operations operations;
        operations.push_back(operation(
            "toAscii", make, [name](IdnConverter& converter) { return converter.toAscii(name); },
            look));
        operations.push_back(operation(
            "toUnicode", make,
            [ascii](IdnConverter& converter) { return bytesOf(converter.toUnicode(ascii)); },
            look));
        operations.push_back(operation(
            "convert", make,
            [name, ascii](IdnConverter& converter) {
                return converter.convert(name) + bytesOf(converter.convert(ascii));
            },
            look));
        operations.push_back(operation("idn_to_ascii", [name] { return idn_to_ascii(name); }));
        operations.push_back(
            operation("ascii_to_idn", [ascii] { return bytesOf(ascii_to_idn(ascii)); }));
        operations.push_back(operation("a converter", [look] { return look(IdnConverter()); }));
        expectSurvival(operations, isShortageOfIcu);
    }

} // namespace
} // namespace foundation::network

int main(int count, char** arguments)
{
    testing::InitGoogleTest(&count, arguments);
    foundation::network::tests::takeOverMemoryOfIcu();
    return RUN_ALL_TESTS();
}
