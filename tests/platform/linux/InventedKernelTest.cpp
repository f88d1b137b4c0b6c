// What no test machine can be made to say: this program has its own getifaddrs and gethostname.

#include "platform/AdapterTable.hpp"
#include "platform/HostName.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <cstddef>
#include <cstring>
#include <deque>
#include <string>
#include <system_error>
#include <utility>
#include <vector>

#include <arpa/inet.h>
#include <ifaddrs.h>
#include <net/if.h>
#include <netinet/in.h>
#include <netpacket/packet.h>
#include <unistd.h>

namespace foundation::network::platform {

namespace {

    using Bytes = std::vector<unsigned char>;

    // The entries of a list, with what they point at.
    class Kernel {
    public:
        ifaddrs& add(const std::string& name)
        {
            Entry& entry = entries_.emplace_back();
            entry.name = name;
            entry.links.ifa_name = entry.name.data();
            if (entries_.size() > 1)
                entries_[entries_.size() - 2].links.ifa_next = &entry.links;
            return entry.links;
        }

        ifaddrs& addLink(const std::string& name, const Bytes& hardwareAddress, unsigned flags = 0)
        {
            ifaddrs& link = add(name);
            link.ifa_flags = flags;
            sockaddr_ll address{};
            address.sll_family = AF_PACKET;
            address.sll_halen = static_cast<unsigned char>(hardwareAddress.size());
            address.sll_ifindex = nextIndex_++;
            Entry& entry = entries_.back();
            std::memcpy(entry.address.data(), &address, sizeof address);
            std::ranges::copy(hardwareAddress,
                              entry.address.begin() + offsetof(sockaddr_ll, sll_addr));
            link.ifa_addr = pointer(entry.address);
            return link;
        }

        ifaddrs& addAddress(const std::string& label, const char* address, const char* mask)
        {
            ifaddrs& result = add(label);
            Entry& entry = entries_.back();
            fill(entry.address, address);
            fill(entry.mask, mask);
            result.ifa_addr = pointer(entry.address);
            result.ifa_netmask = pointer(entry.mask);
            return result;
        }

        ifaddrs* first() { return entries_.empty() ? nullptr : &entries_.front().links; }

        int failure = 0; // what getifaddrs leaves in errno, unless 0
        int freed = 0;   // how often the list was given back

    private:
        // Room for a link's address of any length, and laid out for all others.
        using Room = std::array<unsigned char, 512>;

        struct Entry {
            ifaddrs links{};
            std::string name;
            alignas(sockaddr_in6) Room address{};
            alignas(sockaddr_in6) Room mask{};
        };

        static sockaddr* pointer(Room& room) { return reinterpret_cast<sockaddr*>(room.data()); }

        static void fill(Room& room, const char* text)
        {
            sockaddr_in four{};
            sockaddr_in6 six{};
            if (inet_pton(AF_INET, text, &four.sin_addr) == 1) {
                four.sin_family = AF_INET;
                std::memcpy(room.data(), &four, sizeof four);
            } else if (inet_pton(AF_INET6, text, &six.sin6_addr) == 1) {
                six.sin6_family = AF_INET6;
                std::memcpy(room.data(), &six, sizeof six);
            }
        }

        std::deque<Entry> entries_;
        int nextIndex_ = 201;
    };

    Kernel* kernel = nullptr;

    std::string nodeName;
    int nodeNameFailure = 0;

    int indexFailure = 0; // what if_nametoindex leaves in errno, unless 0
    int indexQuestions = 0;

} // namespace

} // namespace foundation::network::platform

using namespace foundation::network::platform;

// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): glibc's names are reserved
extern "C" int getifaddrs(ifaddrs** first) noexcept
{
    errno = kernel->failure;
    *first = kernel->first();
    return kernel->failure == 0 ? 0 : -1;
}

extern "C" void freeifaddrs(ifaddrs*) noexcept
{
    ++kernel->freed;
}

extern "C" unsigned if_nametoindex(const char* name) noexcept
{
    ++indexQuestions;
    const std::string text = name;
    if (indexFailure == 0 && text.size() == 4 && text.starts_with("net"))
        return 100U + static_cast<unsigned>(text[3]) - '0';
    errno = indexFailure == 0 ? ENODEV : indexFailure;
    return 0;
}

// Like glibc's: a name that is too long is cut, and none ends it.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): glibc's names are reserved
extern "C" int gethostname(char* buffer, std::size_t size) noexcept
{
    if (nodeNameFailure != 0) {
        errno = nodeNameFailure;
        return -1;
    }
    std::strncpy(buffer, nodeName.c_str(), size);
    return 0;
}

namespace foundation::network::platform {

namespace {

    using Texts = std::vector<std::string>;
    using Table = std::vector<AdapterRecord>;

    class InventedKernel : public testing::Test {
    public:
        InventedKernel()
        {
            kernel = &kernel_;
            nodeNameFailure = 0;
            indexFailure = 0;
            indexQuestions = 0;
        }
        ~InventedKernel() override { kernel = nullptr; }
        InventedKernel(const InventedKernel&) = delete;
        InventedKernel& operator=(const InventedKernel&) = delete;

    protected:
        Table table() const
        {
            Table result;
            EXPECT_EQ(readAdapterTable(result), std::error_code());
            EXPECT_EQ(kernel_.freed, 1);
            return result;
        }

        Kernel kernel_;
    };

    std::string textOf(const UnicastRecord& record)
    {
        if (record.family == Family::OTHER)
            return "other";
        char text[INET6_ADDRSTRLEN] = {};
        inet_ntop(record.family == Family::IPV4 ? AF_INET : AF_INET6, record.bytes.data(), text,
                  sizeof text);
        return text + ("/" + std::to_string(record.prefixLength));
    }

    Texts textsOf(const AdapterRecord& record)
    {
        Texts texts;
        for (const UnicastRecord& one : record.unicastAddresses)
            texts.push_back(textOf(one));
        return texts;
    }

    TEST_F(InventedKernel, hasLinksWithAddresses)
    {
        kernel_.addLink("lo", Bytes(6), IFF_UP | IFF_RUNNING | IFF_LOOPBACK);
        kernel_.addLink("net1", {2, 0, 0, 0, 0, 1}, IFF_UP | IFF_RUNNING | IFF_MULTICAST);
        kernel_.addAddress("lo", "127.0.0.1", "255.0.0.0");
        kernel_.addAddress("net1", "10.0.0.1", "255.255.254.0");
        kernel_.addAddress("lo", "::1", "ffff:ffff:ffff:ffff:ffff:ffff:ffff:ffff");
        kernel_.addAddress("net1", "fe80::1", "ffff:ffff:ffff:ffff::");
        kernel_.addAddress("net1", "2001:db8::1", "::");
        const Table found = table();
        ASSERT_EQ(found.size(), 2U);
        EXPECT_EQ(found[0].friendlyName, u"lo");
        EXPECT_EQ(found[0].physicalAddress, Bytes(6)); // what to make of it, others decide
        EXPECT_EQ(textsOf(found[0]), (Texts{"127.0.0.1/8", "::1/128"}));
        EXPECT_TRUE(found[0].loopback);
        EXPECT_FALSE(found[0].multicast);
        EXPECT_EQ(found[1].friendlyName, u"net1");
        EXPECT_EQ(found[0].index, 201U);
        EXPECT_EQ(found[1].index, 202U);
        EXPECT_EQ(found[1].physicalAddress, (Bytes{2, 0, 0, 0, 0, 1}));
        EXPECT_EQ(textsOf(found[1]), (Texts{"10.0.0.1/23", "fe80::1/64", "2001:db8::1/0"}));
        EXPECT_FALSE(found[1].loopback);
        EXPECT_TRUE(found[1].multicast);
    }

    struct Flags {
        unsigned flags;
        bool up, loopback, multicast;
    };

    const Flags flags[] = {
        {0, false, false, false},
        {IFF_UP, false, false, false}, // no carrier
        {IFF_RUNNING, false, false, false},
        {IFF_UP | IFF_RUNNING, true, false, false},
        {IFF_LOOPBACK, false, true, false},
        {IFF_MULTICAST, false, false, true},
        {IFF_UP | IFF_LOOPBACK | IFF_MULTICAST, false, true, true},
        {IFF_UP | IFF_RUNNING | IFF_LOOPBACK | IFF_MULTICAST, true, true, true},
        {IFF_BROADCAST | IFF_POINTOPOINT | IFF_NOARP | IFF_PROMISC | IFF_ALLMULTI | IFF_MASTER
             | IFF_SLAVE | IFF_DYNAMIC,
         false, false, false},
    };

    TEST_F(InventedKernel, tellsStates)
    {
        for (const Flags& row : flags)
            kernel_.addLink("link" + std::to_string(row.flags), {}, row.flags);
        const Table found = table();
        ASSERT_EQ(found.size(), std::size(flags));
        for (std::size_t i = 0; i < found.size(); ++i) {
            SCOPED_TRACE(flags[i].flags);
            EXPECT_EQ(found[i].up, flags[i].up);
            EXPECT_EQ(found[i].loopback, flags[i].loopback);
            EXPECT_EQ(found[i].multicast, flags[i].multicast);
        }
    }

    TEST_F(InventedKernel, tellsHardwareAddressesOfEveryLength)
    {
        for (const std::size_t length : {0U, 1U, 6U, 8U, 9U, 16U, 20U, 32U}) {
            Bytes bytes(length);
            for (std::size_t i = 0; i < length; ++i)
                bytes[i] = static_cast<unsigned char>(i + 1);
            kernel_.addLink("link" + std::to_string(length), bytes);
        }
        for (const AdapterRecord& record : table()) {
            EXPECT_EQ(u"link" + std::u16string(record.friendlyName.substr(4)), record.friendlyName);
            Bytes expected(record.physicalAddress.size());
            for (std::size_t i = 0; i < expected.size(); ++i)
                expected[i] = static_cast<unsigned char>(i + 1);
            EXPECT_EQ(record.physicalAddress, expected);
            const std::string length = std::to_string(expected.size());
            EXPECT_EQ(record.friendlyName.substr(4), std::u16string(length.begin(), length.end()));
        }
    }

    // As POSIX would have it, an entry need not have an address, nor a mask.
    TEST_F(InventedKernel, mayLeaveThingsOut)
    {
        kernel_.add("net1");
        kernel_.add("net1");
        kernel_.addAddress("net1", "10.0.0.1", "255.0.0.0").ifa_netmask = nullptr;
        kernel_.addAddress("net1", "10.0.0.2", "255.0.0.0");
        const Table found = table();
        ASSERT_EQ(found.size(), 1U);
        EXPECT_EQ(found[0].index, 101U);
        EXPECT_EQ(found[0].physicalAddress, Bytes());
        EXPECT_EQ(textsOf(found[0]), (Texts{"other", "10.0.0.2/8"}));
    }

    // Of the list itself, so that a link which is renamed, or which nobody can be asked about, is
    // not mistaken.
    TEST_F(InventedKernel, tellsTheNumberOfALinkAlongWithItsAddress)
    {
        indexFailure = EMFILE;
        kernel_.addLink("net1", {2, 0, 0, 0, 0, 1});
        kernel_.addLink("net2", {});
        const Table found = table();
        ASSERT_EQ(found.size(), 2U);
        EXPECT_EQ(found[0].index, 201U);
        EXPECT_EQ(found[1].index, 202U);
        EXPECT_EQ(indexQuestions, 0);
    }

    TEST_F(InventedKernel, mayRefuseToTellANumber)
    {
        for (const int code : {EMFILE, ENFILE, EACCES}) {
            SCOPED_TRACE(code);
            Kernel refusing;
            kernel = &refusing;
            indexFailure = code;
            refusing.addLink("net1", {});
            refusing.add("net2");
            Table result;
            EXPECT_EQ(readAdapterTable(result), std::error_code(code, std::system_category()));
            EXPECT_EQ(refusing.freed, 1);
        }
    }

    TEST_F(InventedKernel, leavesOutALinkThatIsGone)
    {
        kernel_.add("net1");
        kernel_.add("net1gone");
        kernel_.add("net2");
        kernel_.addAddress("net1", "10.0.0.1", "255.0.0.0");
        kernel_.addAddress("net1gone", "10.0.0.2", "255.0.0.0"); // no label of "net1"
        kernel_.addAddress("net1gone:1", "10.0.0.3", "255.0.0.0");
        kernel_.addAddress("net2", "10.0.0.4", "255.0.0.0");
        const Table found = table();
        ASSERT_EQ(found.size(), 2U);
        EXPECT_EQ(found[0].index, 101U);
        EXPECT_EQ(textsOf(found[0]), Texts{"10.0.0.1/8"});
        EXPECT_EQ(found[1].index, 102U);
        EXPECT_EQ(textsOf(found[1]), Texts{"10.0.0.4/8"});
    }

    TEST_F(InventedKernel, mayHaveAddressesOfOtherFamilies)
    {
        kernel_.addLink("net1", {});
        ifaddrs& entry = kernel_.addAddress("net1", "10.0.0.1", "255.0.0.0");
        entry.ifa_addr->sa_family = AF_APPLETALK;
        kernel_.addAddress("net1", "10.0.0.2", "255.0.0.0");
        EXPECT_EQ(textsOf(table().at(0)), (Texts{"other", "10.0.0.2/8"}));
    }

    // A label stands in place of the link's name.
    TEST_F(InventedKernel, mayLabelAddresses)
    {
        kernel_.addLink("net1", {});
        kernel_.addLink("net10", {});
        kernel_.addLink("net1x", {});
        kernel_.addAddress("net1", "10.0.0.1", "255.0.0.0");
        kernel_.addAddress("net1:0", "10.0.0.2", "255.0.0.0");
        kernel_.addAddress("net1:a:b", "10.0.0.3", "255.0.0.0");
        kernel_.addAddress("net10:0", "10.0.0.4", "255.0.0.0");
        kernel_.addAddress("net10", "10.0.0.5", "255.0.0.0");
        // A label need only begin with the link's name.
        kernel_.addAddress("net1-old", "10.0.0.6", "255.0.0.0");
        kernel_.addAddress("net10_old:1", "10.0.0.7", "255.0.0.0");
        // Of a link that came after the kernel had named all links: no label of the link "net"
        kernel_.addLink("net", {});
        kernel_.addAddress("net9", "10.0.0.8", "255.0.0.0");
        // Of one that came and went
        kernel_.addAddress("late", "10.0.0.9", "255.0.0.0");
        const Table found = table();
        ASSERT_EQ(found.size(), 4U);
        EXPECT_EQ(textsOf(found[0]),
                  (Texts{"10.0.0.1/8", "10.0.0.2/8", "10.0.0.3/8", "10.0.0.6/8"}));
        EXPECT_EQ(textsOf(found[1]), (Texts{"10.0.0.4/8", "10.0.0.5/8", "10.0.0.7/8"}));
        EXPECT_EQ(textsOf(found[2]), Texts());
        EXPECT_EQ(textsOf(found[3]), Texts());
    }

    TEST_F(InventedKernel, forgetsWhatTheTableHeldBefore)
    {
        kernel_.addLink("net1", {});
        Table result(5);
        EXPECT_EQ(readAdapterTable(result), std::error_code());
        ASSERT_EQ(result.size(), 1U);
        EXPECT_EQ(result[0].index, 201U);
    }

    TEST_F(InventedKernel, withoutAnyLinkIsAFailure)
    {
        Table result;
        EXPECT_EQ(readAdapterTable(result), std::error_code(ENODATA, std::system_category()));
        EXPECT_TRUE(result.empty());
    }

    TEST_F(InventedKernel, mayRefuse)
    {
        for (const int code : {EMFILE, ENOMEM, EACCES}) {
            kernel_.failure = code;
            Table result;
            EXPECT_EQ(readAdapterTable(result), std::error_code(code, std::system_category()));
            EXPECT_EQ(kernel_.freed, 0);
        }
    }

    struct Node {
        std::string node;
        std::u16string name;
    };

    const Node nodes[] = {
        {"box", u"box"},
        {"Box.example.org", u"Box"},
        {"box.", u"box"},
        {".example", u""},
        {"", u""},
        {"b\xC3\xBC"
         "cher.example",
         u"b\u00FCcher"},
        {"\xFF.example", u"\uFFFD"},
        {std::string(64, 'a'), std::u16string(64, u'a')}, // the longest that Linux knows
        {std::string(60, 'a') + ".org", std::u16string(60, u'a')},
    };

    TEST_F(InventedKernel, givesTheNodeNameUpToItsFirstDot)
    {
        for (const Node& row : nodes) {
            SCOPED_TRACE(row.node);
            nodeName = row.node;
            std::u16string name = u"before";
            EXPECT_EQ(readHostName(name), std::error_code());
            EXPECT_EQ(name, row.name);
        }
    }

    TEST_F(InventedKernel, cannotGiveALongerName)
    {
        std::u16string name;
        nodeName = std::string(65, 'a');
        EXPECT_EQ(readHostName(name), std::error_code(ENAMETOOLONG, std::system_category()));
        nodeName = "a." + std::string(300, 'a');
        EXPECT_EQ(readHostName(name), std::error_code(ENAMETOOLONG, std::system_category()));
    }

    TEST_F(InventedKernel, mayHideItsName)
    {
        for (const int code : {EFAULT, EPERM, ENAMETOOLONG}) {
            nodeNameFailure = code;
            std::u16string name;
            EXPECT_EQ(readHostName(name), std::error_code(code, std::system_category()));
        }
    }

} // namespace
} // namespace foundation::network::platform
