#include "Addr.hpp"

#include "../Answers.hpp"
#include "../Blocks.hpp"
#include "../Colors.hpp"
#include "../MemberWriter.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"

#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::InetAddress;
    using foundation::network::InterfaceAddress;

    constexpr std::string_view USAGE = "iri addr [OPTION...] [--] [ADDRESS[/LENGTH]...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri addr 192.168.1.5/24 fe80::1
  iri addr --json <addresses.txt | jq -r 'select(.loopback) | .address'
)help";

    constexpr std::string_view DETAILS =
        R"help(Tells about each IP address, or that of each line of standard input if none is
given. "-" stands for the lines of standard input too. An address is four
decimal numbers with dots between them, or of version 6 (RFC 4291, 2.2), which
may have a scope behind "%": the name of an interface or its number. Behind "/"
may stand how many of its bits name the network. No name is looked up.

The classes are loopback, link-local and multicast. The address is shown in its
shortest form (RFC 5952), and the network as the address whose other bits are 0.

With --json, an object a line: addr is the text as it was given, valid tells
whether it is an address. If so, there are version, address, bytes as a list of
numbers, loopback, linkLocal, multicast, scope, prefixlen and network; the last
three are null if absent. Whatever is wrong stands in error. A text that is not
UTF-8 is given with each such byte as \xFF and each backslash as \\, and escaped
is true.

The answer is no if something is no address or has a scope that is not known
here.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{
        std::string_view("addr"),     std::string_view("escaped"),   std::string_view("valid"),
        std::string_view("version"),  std::string_view("address"),   std::string_view("bytes"),
        std::string_view("loopback"), std::string_view("linkLocal"), std::string_view("multicast"),
        std::string_view("scope"),    std::string_view("prefixlen"), std::string_view("network"),
        std::string_view("error")};

    /// A text that was read as an address.
    struct AddressReading {
        std::optional<InetAddress> address;
        std::optional<unsigned short> prefixLength;
        std::string error; ///< what is wrong with it, though it may be an address
    };

    /// What there is to tell of an address.
    struct Facts {
        std::string address;
        std::vector<unsigned char> bytes;
        std::optional<std::string> scope;
        std::optional<std::string> network; ///< with its prefix length
    };

    /// Reads how many bits name a network. What is too large for any address stays so.
    std::optional<unsigned short> readPrefixLength(std::string_view text)
    {
        unsigned short length = 0;
        const bool isNumber = !text.empty() && std::all_of(text.begin(), text.end(), [](char c) {
            return c >= '0' && c <= '9';
        });
        if (!isNumber)
            return std::nullopt;
        const auto end = std::from_chars(text.data(), text.data() + text.size(), length);
        if (end.ec == std::errc::result_out_of_range)
            return std::numeric_limits<unsigned short>::max();
        return length;
    }

    /// What the library says against an address with this prefix length, and which would be the
    /// largest; empty if nothing.
    std::string checkPrefixLength(const InetAddress& address, unsigned short length)
    {
        try {
            const InterfaceAddress carried(address, length);
            return "";
        } catch (const std::out_of_range& refusal) {
            constexpr std::size_t BITS = 8;
            return std::string(refusal.what()) + ", "
                   + std::to_string(BITS * address.bytes().size()) + " is the largest";
        }
    }

    std::optional<std::string> scopeOf(std::string_view address)
    {
        const std::size_t percent = address.find('%');
        if (percent == std::string_view::npos)
            return std::nullopt;
        return std::string(address.substr(percent + 1));
    }

    /// The library drops a scope that is neither a number nor the name of an interface; 0 is none.
    std::string checkScope(const InetAddress& address, std::string_view text)
    {
        const auto scope = scopeOf(text);
        const bool isDropped = scope && !scopeOf(address.toString());
        if (!isDropped || (!scope->empty() && scope->find_first_not_of('0') == std::string::npos))
            return "";
        return "the scope is not known here";
    }

    AddressReading readAddress(const std::string& text)
    {
        AddressReading result;
        // The library would take a NUL for the end of the text.
        if (text.find('\0') != std::string::npos)
            return {{}, {}, "not an address: there is a NUL in it"};

        const std::size_t slash = text.find('/');
        const std::string addressText = text.substr(0, slash);
        // What the library says here are the system's words for any argument that it refuses.
        if (refusalOf([&] { result.address = InetAddress(addressText); }))
            return {{}, {}, "not an address"};
        if (slash != std::string::npos) {
            result.prefixLength = readPrefixLength(std::string_view(text).substr(slash + 1));
            if (!result.prefixLength)
                return {{}, {}, R"(the prefix length behind "/" is not a number)"};
            if (std::string problem = checkPrefixLength(*result.address, *result.prefixLength);
                !problem.empty())
                return {{}, {}, std::move(problem)};
        }
        result.error = checkScope(*result.address, addressText);
        return result;
    }

    /// The bytes with all bits behind the first few set to 0.
    std::vector<unsigned char> masked(std::vector<unsigned char> bytes, std::size_t bits)
    {
        constexpr std::size_t BITS = 8;
        for (std::size_t i = 0; i < bytes.size(); ++i) {
            const std::size_t kept = std::min(bits - std::min(bits, i * BITS), BITS);
            bytes[i] = static_cast<unsigned char>(bytes[i] & (0xFF00U >> kept));
        }
        return bytes;
    }

    Facts factsOf(const AddressReading& reading)
    {
        const InetAddress& address = *reading.address;
        Facts facts{address.getHostAddress(), address.bytes(), {}, {}};
        facts.scope = scopeOf(facts.address);
        if (reading.prefixLength)
            facts.network =
                InterfaceAddress(InetAddress(masked(facts.bytes, *reading.prefixLength)),
                                 *reading.prefixLength)
                    .toString();
        return facts;
    }

    std::string classesOf(const InetAddress& address)
    {
        std::string result;
        const auto add = [&result](bool isMember, std::string_view name) {
            if (isMember)
                result.append(result.empty() ? "" : ", ").append(name);
        };
        add(address.isLoopback(), "loopback");
        add(address.isLinkLocal(), "link-local");
        add(address.isMulticast(), "multicast");
        return result;
    }

    std::string hexadecimal(const std::vector<unsigned char>& bytes)
    {
        constexpr std::string_view DIGITS = "0123456789abcdef";
        std::string result;
        for (const unsigned char byte : bytes) {
            result.append(result.empty() ? "" : " ");
            result.push_back(DIGITS[byte >> 4]);
            result.push_back(DIGITS[byte & 0xF]);
        }
        return result;
    }

    void addOptional(Blocks& blocks, std::string_view label,
                     const std::optional<std::string>& value)
    {
        if (value)
            blocks.add(label, Ink::Plain, *value);
        else
            blocks.addAbsent(label);
    }

    void giveText(const Record& record, const AddressReading& reading, Blocks& blocks)
    {
        const Facts facts = factsOf(reading);
        const std::string classes = classesOf(*reading.address);
        blocks.begin(record.text);
        blocks.add("address", Ink::Address, facts.address);
        blocks.add("version", Ink::Plain, std::to_string(reading.address->getVersion()));
        addOptional(blocks, "classes", classes.empty() ? std::nullopt : std::optional(classes));
        blocks.add("bytes", Ink::Plain, hexadecimal(facts.bytes));
        addOptional(blocks, "scope", facts.scope);
        if (reading.prefixLength)
            blocks.add("prefix", Ink::Plain, std::to_string(*reading.prefixLength));
        else
            blocks.addAbsent("prefix");
        addOptional(blocks, "network", facts.network);
        blocks.end();
    }

    void addOptional(MemberWriter& writer, std::string_view name,
                     const std::optional<std::string>& value)
    {
        if (value)
            writer.add(name, *value);
        else
            writer.addNull(name);
    }

    void giveMembers(const Record& record, const AddressReading& reading, Answers& answers)
    {
        const Facts facts = factsOf(reading);
        MemberWriter& writer = answers.begin();
        writer.add("addr", record.text);
        writer.addBool("valid", true);
        writer.addNumber("version", reading.address->getVersion());
        writer.add("address", facts.address);
        writer.beginList("bytes");
        for (const unsigned char byte : facts.bytes)
            writer.addElement(std::uint32_t{byte});
        writer.endList();
        writer.addBool("loopback", reading.address->isLoopback());
        writer.addBool("linkLocal", reading.address->isLinkLocal());
        writer.addBool("multicast", reading.address->isMulticast());
        addOptional(writer, "scope", facts.scope);
        if (reading.prefixLength)
            writer.addNumber("prefixlen", *reading.prefixLength);
        else
            writer.addNull("prefixlen");
        addOptional(writer, "network", facts.network);
        if (!reading.error.empty())
            writer.add("error", reading.error);
        answers.end();
    }

} // namespace

ExitCode addr(const Arguments& arguments, Output& output)
{
    ColorMode color = ColorMode::Auto;
    CommandLine commandLine("addr", {EXAMPLES, USAGE, DETAILS});
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    addColorOption(commandLine, color);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    Answers answers(format, output, COLUMNS, "addr");
    Blocks blocks(color, output);
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);) {
        if (answers.refuseInvalidUtf8(record)) {
            code = ExitCode::No;
            continue;
        }
        const AddressReading reading = readAddress(record.text);
        if (!reading.error.empty())
            code = ExitCode::No;
        if (!reading.address) {
            answers.refuse(record, &record.text, false, reading.error);
            continue;
        }
        if (answers.haveMembers())
            giveMembers(record, reading, answers);
        else
            giveText(record, reading, blocks);
        if (!reading.error.empty())
            answers.report(record, reading.error);
    }
    return code;
}

} // namespace tool::verbs
