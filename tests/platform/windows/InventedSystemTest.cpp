// The system's functions are replaced for the whole program, so that it answers what the tests
// want: it calls them through pointers, which the import library would else bring.

#include "platform/AdapterTable.hpp"
#include "platform/HostName.hpp"
#include "platform/StrictIPv4.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstdint>
#include <cstring>
#include <deque>
#include <initializer_list>
#include <string>
#include <utility>
#include <vector>

#include <winsock2.h>

#include <iphlpapi.h>
#include <ws2tcpip.h>

namespace {

using Bytes = std::vector<unsigned char>;

// What the next calls answer, and what they were asked.

struct TableAnswer {
    ULONG result = ERROR_SUCCESS;
    ULONG size = 0;                              // what the call leaves as the size
    const IP_ADAPTER_ADDRESSES* first = nullptr; // put at the front of the caller's buffer
};

struct TableQuestion {
    ULONG family;
    ULONG flags;
    bool hasReserved;
    ULONG size;
    bool isZero; // the buffer

    bool operator==(const TableQuestion&) const = default;
};

std::deque<TableAnswer> tableAnswers;
std::vector<TableQuestion> tableQuestions;

ULONG WINAPI adaptersAddresses(ULONG family, ULONG flags, void* reserved,
                               IP_ADAPTER_ADDRESSES* addresses, ULONG* size)
{
    const auto* const bytes = reinterpret_cast<const unsigned char*>(addresses);
    tableQuestions.push_back(
        {family, flags, reserved != nullptr, *size,
         std::all_of(bytes, bytes + *size, [](auto byte) { return byte == 0; })});
    const TableAnswer answer = tableAnswers.front();
    tableAnswers.pop_front();
    if (answer.first != nullptr)
        *addresses = *answer.first;
    else
        std::memset(addresses, 0xA5, std::min<std::size_t>(*size, 100)); // of no use
    *size = answer.size;
    return answer.result;
}

std::wstring computerName;
std::vector<std::pair<int, unsigned long>> nameQuestions;
unsigned long nameFailure = ERROR_SUCCESS;

BOOL WINAPI computerNameEx(COMPUTER_NAME_FORMAT format, wchar_t* buffer, DWORD* size)
{
    nameQuestions.emplace_back(format, *size);
    const bool fits = computerName.size() < *size;
    SetLastError(nameFailure != ERROR_SUCCESS ? nameFailure
                 : fits                       ? ERROR_SUCCESS
                                              : ERROR_MORE_DATA);
    if (nameFailure != ERROR_SUCCESS || !fits) {
        *size = static_cast<DWORD>(computerName.size() + 1);
        return FALSE;
    }
    std::copy_n(computerName.c_str(), computerName.size() + 1, buffer);
    *size = static_cast<DWORD>(computerName.size());
    return TRUE;
}

LONG addressAnswer = 0;
std::vector<std::pair<std::string, bool>> addressQuestions;

LONG WINAPI ipv4StringToAddress(const char* text, BOOLEAN strict, const char** end, in_addr*)
{
    addressQuestions.emplace_back(text, strict != FALSE);
    *end = text; // nothing of it was read
    return addressAnswer;
}

} // namespace

extern "C" {

// The one that is declared as a function of this program, though it comes from a library.
ULONG WINAPI GetAdaptersAddresses(ULONG family, ULONG flags, void* reserved,
                                  IP_ADAPTER_ADDRESSES* addresses, ULONG* size)
{
    return adaptersAddresses(family, flags, reserved, addresses, size);
}

extern const decltype(&computerNameEx) __imp_GetComputerNameExW;

const decltype(&computerNameEx) __imp_GetComputerNameExW = computerNameEx;

extern const decltype(&ipv4StringToAddress) __imp_RtlIpv4StringToAddressA;

const decltype(&ipv4StringToAddress) __imp_RtlIpv4StringToAddressA = ipv4StringToAddress;
}

namespace foundation::network::platform {
namespace {

    constexpr ULONG FIRST_SIZE = 15000;

    // A record of the system, with the texts and addresses that it points to.
    class Adapter {
    public:
        Adapter() { record_.OperStatus = IfOperStatusUp; }
        Adapter(const Adapter&) = delete;
        Adapter& operator=(const Adapter&) = delete;

        IP_ADAPTER_ADDRESSES& record() { return record_; }

        Adapter& named(std::wstring friendlyName, std::wstring description)
        {
            friendlyName_ = std::move(friendlyName);
            description_ = std::move(description);
            record_.FriendlyName = friendlyName_.data();
            record_.Description = description_.data();
            return *this;
        }

        Adapter& withHardware(const Bytes& address)
        {
            std::copy(address.begin(), address.end(), record_.PhysicalAddress);
            record_.PhysicalAddressLength = static_cast<ULONG>(address.size());
            return *this;
        }

        Adapter& with(const std::string& digits, unsigned prefixLength)
        {
            sockaddr_storage address{};
            sockaddr_in four{};
            sockaddr_in6 six{};
            if (inet_pton(AF_INET, digits.c_str(), &four.sin_addr) == 1) {
                four.sin_family = AF_INET;
                std::memcpy(&address, &four, sizeof four);
            } else if (inet_pton(AF_INET6, digits.c_str(), &six.sin6_addr) == 1) {
                six.sin6_family = AF_INET6;
                six.sin6_scope_id = 7;
                std::memcpy(&address, &six, sizeof six);
            } else {
                address.ss_family = AF_IPX;
            }
            addresses_.push_back(address);
            IP_ADAPTER_UNICAST_ADDRESS entry{};
            entry.Address.lpSockaddr = reinterpret_cast<sockaddr*>(&addresses_.back());
            entry.Address.iSockaddrLength = sizeof(sockaddr_storage);
            entry.OnLinkPrefixLength = static_cast<UINT8>(prefixLength);
            entry.DadState = IpDadStateDeprecated; // of no account
            entries_.push_back(entry);
            if (entries_.size() == 1)
                record_.FirstUnicastAddress = &entries_.back();
            else
                entries_[entries_.size() - 2].Next = &entries_.back();
            return *this;
        }

        Adapter& before(Adapter& next)
        {
            record_.Next = &next.record_;
            return *this;
        }

    private:
        IP_ADAPTER_ADDRESSES record_{};
        std::wstring friendlyName_;
        std::wstring description_;
        std::deque<sockaddr_storage> addresses_; // which never move
        std::deque<IP_ADAPTER_UNICAST_ADDRESS> entries_;
    };

    // The library's records of what the system answers at once.
    std::vector<AdapterRecord> recordsOf(Adapter& first)
    {
        tableQuestions.clear();
        tableAnswers = {{ERROR_SUCCESS, FIRST_SIZE, &first.record()}};
        std::vector<AdapterRecord> records(3); // which are to go
        EXPECT_EQ(readAdapterTable(records), std::error_code());
        return records;
    }

    AdapterRecord recordOf(Adapter& adapter)
    {
        const auto records = recordsOf(adapter);
        EXPECT_EQ(records.size(), 1U);
        return records.front();
    }

    TEST(AdapterTable, isAskedForOnceWithRoomForMost)
    {
        Adapter adapter;
        recordsOf(adapter);
        const TableQuestion first = {AF_UNSPEC, GAA_FLAG_SKIP_DNS_SERVER, false, FIRST_SIZE, true};
        EXPECT_EQ(tableQuestions, std::vector<TableQuestion>{first});
        EXPECT_EQ(int{GAA_FLAG_SKIP_DNS_SERVER}, 8);
    }

    TEST(AdapterTable, isAskedForAgainAsLongAsItGrows)
    {
        Adapter adapter;
        adapter.record().IfIndex = 5;
        tableQuestions.clear();
        tableAnswers = {{ERROR_BUFFER_OVERFLOW, 20000, nullptr},
                        {ERROR_BUFFER_OVERFLOW, 100000, nullptr},
                        {ERROR_BUFFER_OVERFLOW, 30000, nullptr}, // it may shrink as well
                        {ERROR_SUCCESS, 25000, &adapter.record()}};
        std::vector<AdapterRecord> records;
        EXPECT_EQ(readAdapterTable(records), std::error_code());
        ASSERT_EQ(records.size(), 1U);
        EXPECT_EQ(records.front().index, 5U);
        std::vector<ULONG> sizes;
        for (const TableQuestion& question : tableQuestions)
            sizes.push_back(question.size);
        EXPECT_EQ(sizes, (std::vector<ULONG>{FIRST_SIZE, 20000, 100000, 30000}));
    }

    // To have no data is a failure as well.
    TEST(AdapterTable, failsWithTheCodeThatTheCallAnswers)
    {
        for (const ULONG code : std::initializer_list<ULONG>{
                 ERROR_NO_DATA, ERROR_ADDRESS_NOT_ASSOCIATED, ERROR_NOT_ENOUGH_MEMORY,
                 ERROR_INVALID_PARAMETER, 0xFFFFFFFF}) {
            tableAnswers = {{code, FIRST_SIZE, nullptr}};
            std::vector<AdapterRecord> records;
            EXPECT_EQ(readAdapterTable(records),
                      std::error_code(static_cast<int>(code), std::system_category()));
        }
    }

    TEST(AdapterTable, hasTheNamesAndTheHardwareAddress)
    {
        Adapter adapter;
        adapter.named(L"Ethernet \u2116 2", L"Card")
            .withHardware({0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E});
        adapter.record().AdapterName = nullptr; // never looked at
        const AdapterRecord record = recordOf(adapter);
        EXPECT_EQ(record.friendlyName, u"Ethernet \u2116 2");
        EXPECT_EQ(record.description, u"Card");
        EXPECT_EQ(record.physicalAddress, (Bytes{0, 0x1A, 0x2B, 0x3C, 0x4D, 0x5E}));

        Adapter bare;
        const AdapterRecord empty = recordOf(bare);
        EXPECT_EQ(empty.friendlyName, u"");
        EXPECT_EQ(empty.description, u"");
        EXPECT_EQ(empty.physicalAddress, Bytes());
        EXPECT_TRUE(empty.unicastAddresses.empty());
    }

    TEST(AdapterTable, hasBothIndexes)
    {
        Adapter adapter;
        adapter.record().IfIndex = 12;
        adapter.record().Ipv6IfIndex = 13;
        EXPECT_EQ(recordOf(adapter).index, 12U);
        EXPECT_EQ(recordOf(adapter).ipv6Index, 13U);
        adapter.record().IfIndex = 0;
        adapter.record().Ipv6IfIndex = 0xFFFFFFFF;
        EXPECT_EQ(recordOf(adapter).index, 0U);
        EXPECT_EQ(recordOf(adapter).ipv6Index, 0xFFFFFFFFU);
    }

    TEST(AdapterTable, hasTheFlags)
    {
        Adapter adapter;
        EXPECT_TRUE(recordOf(adapter).up);
        EXPECT_FALSE(recordOf(adapter).loopback);
        EXPECT_TRUE(recordOf(adapter).multicast);
        for (const auto status :
             {IfOperStatusDown, IfOperStatusTesting, IfOperStatusUnknown, IfOperStatusDormant,
              IfOperStatusNotPresent, IfOperStatusLowerLayerDown}) {
            adapter.record().OperStatus = status;
            EXPECT_FALSE(recordOf(adapter).up) << status;
        }
        adapter.record().IfType = IF_TYPE_SOFTWARE_LOOPBACK;
        EXPECT_TRUE(recordOf(adapter).loopback);
        adapter.record().IfType = IF_TYPE_ETHERNET_CSMACD;
        EXPECT_FALSE(recordOf(adapter).loopback);
        adapter.record().Flags = ~DWORD{IP_ADAPTER_NO_MULTICAST};
        EXPECT_TRUE(recordOf(adapter).multicast);
        adapter.record().Flags = IP_ADAPTER_NO_MULTICAST;
        EXPECT_FALSE(recordOf(adapter).multicast);
    }

    TEST(AdapterTable, hasTheAddressesInOrder)
    {
        Adapter adapter;
        adapter.with("192.168.1.5", 24).with("fe80::1", 64).with("other", 5).with("10.0.0.1", 33);
        const auto addresses = recordOf(adapter).unicastAddresses;
        ASSERT_EQ(addresses.size(), 4U);
        EXPECT_EQ(addresses[0].family, Family::IPV4);
        EXPECT_EQ(Bytes(addresses[0].bytes.begin(), addresses[0].bytes.begin() + 4),
                  (Bytes{192, 168, 1, 5}));
        EXPECT_EQ(addresses[0].prefixLength, 24);
        EXPECT_EQ(addresses[1].family, Family::IPV6);
        EXPECT_EQ(Bytes(addresses[1].bytes.begin(), addresses[1].bytes.end()),
                  (Bytes{0xFE, 0x80, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1}));
        EXPECT_EQ(addresses[1].prefixLength, 64);
        EXPECT_EQ(addresses[2].family, Family::OTHER);
        EXPECT_EQ(addresses[3].family, Family::IPV4);
        EXPECT_EQ(addresses[3].prefixLength, 33); // as the system has it
    }

    TEST(AdapterTable, hasTheAdaptersInOrder)
    {
        Adapter first, second, third;
        first.record().IfIndex = 9;
        second.record().IfIndex = 2;
        third.record().IfIndex = 5;
        third.before(first);
        second.before(third);
        const auto records = recordsOf(second);
        ASSERT_EQ(records.size(), 3U);
        EXPECT_EQ(records[0].index, 2U);
        EXPECT_EQ(records[1].index, 5U);
        EXPECT_EQ(records[2].index, 9U);
    }

    // Whatever else the system answers, and wherever it stops, the parser's word stands.
    TEST(StrictIPv4, isRefusedForOneAnswerOnly)
    {
        for (const auto status :
             std::initializer_list<DWORD>{0, 1, 0x7FFFFFFF, 0x80000005, 0xC0000001, 0xC000000C,
                                          0xC000000D, 0xC000000E, 0xC000A000, 0xFFFFFFFF}) {
            addressQuestions.clear();
            addressAnswer = static_cast<LONG>(status);
            EXPECT_EQ(isStrictIPv4("some text"), status != 0xC000000D) << std::hex << status;
            EXPECT_EQ(addressQuestions,
                      (std::vector<std::pair<std::string, bool>>{{"some text", true}}));
        }
    }

    class HostName : public testing::Test {
    protected:
        HostName()
        {
            nameQuestions.clear();
            nameFailure = ERROR_SUCCESS;
        }

        std::u16string name = u"before";
    };

    TEST_F(HostName, isThatOfTheMachineItself)
    {
        computerName = L"b\u00FCro";
        EXPECT_EQ(readHostName(name), std::error_code());
        EXPECT_EQ(name, u"b\u00FCro");
        EXPECT_EQ(nameQuestions, (std::vector<std::pair<int, unsigned long>>{{5, 32}}));
    }

    TEST_F(HostName, hasUpTo31Units)
    {
        for (std::size_t size = 0; size <= 40; ++size) {
            SCOPED_TRACE(size);
            computerName.assign(size, L'x');
            const std::error_code failure = readHostName(name);
            if (size < 32) {
                EXPECT_EQ(failure, std::error_code());
                EXPECT_EQ(name, std::u16string(size, u'x'));
            } else {
                EXPECT_EQ(failure, std::error_code(ERROR_MORE_DATA, std::system_category()));
            }
        }
        EXPECT_EQ(nameQuestions.size(), 41U); // there is no second attempt
    }

    TEST_F(HostName, failsWithTheLastErrorOfTheSystem)
    {
        computerName = L"box";
        for (const DWORD code : std::initializer_list<DWORD>{
                 ERROR_ACCESS_DENIED, ERROR_NOT_ENOUGH_MEMORY, ERROR_MORE_DATA}) {
            nameFailure = code;
            EXPECT_EQ(readHostName(name),
                      std::error_code(static_cast<int>(code), std::system_category()));
        }
    }

} // namespace
} // namespace foundation::network::platform
