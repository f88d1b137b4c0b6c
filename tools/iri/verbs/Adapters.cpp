#include "Adapters.hpp"

#include "../Colors.hpp"
#include "../DisplayWidth.hpp"
#include "../Json.hpp"
#include "../MemberWriter.hpp"
#include "../Reading.hpp"
#include "../RowFormat.hpp"
#include "../Text.hpp"

#include <foundation/network/NetworkInterface.hpp>

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::InetAddress;
    using foundation::network::InterfaceAddress;
    using foundation::network::NetworkInterface;

    constexpr std::string_view USAGE = "iri adapters [OPTION...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri adapters --all
  iri adapters --json | jq -r '.addr_info[] | select(.family=="inet") | .local'
)help";

    constexpr std::string_view DETAILS =
        R"help(Lists the network adapters of this machine in the order of the system: those
that are up and have an address, or with --all, every one. An adapter is up if
the system says that it is and that it runs. Each address is followed by how
many of its bits name the network, and stands on a line of its own. The
description is the alias that somebody gave the adapter, or else its driver.

With --json, an object a line. As with "ip -j addr", ifindex is the number of
the adapter, ifname its name, address its hardware address, and addr_info the
list of its addresses, each with family (inet or inet6), local and prefixlen;
link_type is there if it is loopback. Besides, up, loopback and multicast tell
whether it is up, leads back to this machine, and can send to groups;
description is what it is. address and description are null if absent.
)help";

    // The members of a record, in their order.
    constexpr std::array MEMBERS{std::string_view("ifindex"),    std::string_view("ifname"),
                                 std::string_view("up"),         std::string_view("loopback"),
                                 std::string_view("multicast"),  std::string_view("link_type"),
                                 std::string_view("address"),    std::string_view("addr_info"),
                                 std::string_view("description")};

    enum Column : std::size_t {
        NAME,
        INDEX,
        STATE,
        HARDWARE,
        ADDRESSES,
        DESCRIPTION,
        COLUMN_COUNT
    };

    struct ColumnStyle {
        std::string_view heading;
        Ink ink;
        bool isAlignedRight;
    };

    constexpr std::array<ColumnStyle, COLUMN_COUNT> COLUMNS{{
        {"NAME", Ink::Name, false},
        {"INDEX", Ink::Plain, true},
        {"STATE", Ink::Plain, false},
        {"HARDWARE ADDRESS", Ink::Plain, false},
        {"ADDRESSES", Ink::Address, false},
        {"DESCRIPTION", Ink::Plain, false},
    }};

    /// A cell of the table. Only that of the addresses has several lines.
    struct Cell {
        std::string text;
        Ink ink;
    };

    using Row = std::array<Cell, COLUMN_COUNT>;

    std::string printable(const std::u16string& text)
    {
        std::string result;
        text::appendPrintable(result, text::toUtf8(text));
        return result;
    }

    std::string stateOf(const NetworkInterface& adapter)
    {
        std::string result = adapter.isUp() ? "up" : "down";
        if (adapter.isLoopback())
            result.append(" loopback");
        if (adapter.supportsMulticast())
            result.append(" multicast");
        return result;
    }

    /// The lines of the table for one adapter: as many as it has addresses, and at least one.
    void addRows(const NetworkInterface& adapter, std::vector<Row>& rows)
    {
        const auto addresses = adapter.getInterfaceAddresses();
        const std::array<std::string, COLUMN_COUNT> texts{printable(adapter.getFriendlyName()),
                                                          adapter.getIdentifier(),
                                                          stateOf(adapter),
                                                          adapter.getHardwareAddress().toString(),
                                                          "",
                                                          printable(adapter.getDescription())};
        Row first;
        for (std::size_t column = 0; column < COLUMN_COUNT; ++column)
            first.at(column) = {texts.at(column), COLUMNS.at(column).ink};
        first[STATE].ink = adapter.isUp() ? Ink::Good : Ink::Aside;

        const std::size_t begin = rows.size();
        rows.push_back(std::move(first));
        rows.resize(begin + std::max<std::size_t>(addresses.size(), 1));
        std::size_t row = begin;
        for (const InterfaceAddress& address : addresses)
            rows[row++][ADDRESSES] = {address.toString(), Ink::Address};
    }

    std::string table(const std::vector<Row>& rows, const Colors& colors)
    {
        constexpr std::size_t GAP = 2;

        std::array<std::size_t, COLUMN_COUNT> widths{};
        for (const Row& row : rows)
            for (std::size_t column = 0; column < COLUMN_COUNT; ++column)
                widths.at(column) =
                    std::max(widths.at(column), text::displayWidth(row.at(column).text));

        std::string result;
        for (const Row& row : rows) {
            // What is missing to the right of a cell is written in front of the next one, so that
            // no line ends in spaces.
            std::size_t missing = 0;
            for (std::size_t column = 0; column < COLUMN_COUNT; ++column) {
                const auto& [text, ink] = row.at(column);
                const std::size_t rest = widths.at(column) - text::displayWidth(text);
                const bool isAlignedRight = COLUMNS.at(column).isAlignedRight;
                if (!text.empty()) {
                    result.append(missing + (isAlignedRight ? rest : 0), ' ');
                    colors.append(result, ink, text);
                    missing = 0;
                }
                missing += GAP + (text.empty() ? widths.at(column) : isAlignedRight ? 0 : rest);
            }
            result.push_back('\n');
        }
        return result;
    }

    template <class Adapters>
    std::string asText(const Adapters& adapters, const Colors& colors)
    {
        Row headings;
        for (std::size_t column = 0; column < COLUMN_COUNT; ++column)
            headings.at(column) = {std::string(COLUMNS.at(column).heading), Ink::Aside};
        std::vector<Row> rows{std::move(headings)};
        for (const NetworkInterface& adapter : adapters)
            addRows(adapter, rows);
        return table(rows, colors);
    }

    void addOptional(JsonLines& json, std::string_view name, std::string_view value)
    {
        if (value.empty())
            json.addNull(name);
        else
            json.add(name, value);
    }

    void appendJson(const NetworkInterface& adapter, JsonLines& json, std::string& out)
    {
        const std::string identifier = adapter.getIdentifier();
        std::uint32_t index = 0;
        std::from_chars(identifier.data(), identifier.data() + identifier.size(), index);

        json.begin();
        json.addNumber("ifindex", index);
        json.add("ifname", text::toUtf8(adapter.getFriendlyName()));
        json.addBool("up", adapter.isUp());
        json.addBool("loopback", adapter.isLoopback());
        json.addBool("multicast", adapter.supportsMulticast());
        if (adapter.isLoopback())
            json.add("link_type", "loopback");
        addOptional(json, "address", adapter.getHardwareAddress().toString());
        json.beginList("addr_info");
        for (const InterfaceAddress& each : adapter.getInterfaceAddresses()) {
            const InetAddress address = each.getInetAddress();
            json.beginElement();
            json.add("family", address.getVersion() == 4 ? "inet" : "inet6");
            json.add("local", address.getHostAddress());
            json.addNumber("prefixlen", each.prefixLength());
            json.endElement();
        }
        json.endList();
        addOptional(json, "description", text::toUtf8(adapter.getDescription()));
        json.end(out);
    }

    // In tab-separated values, an address stands with its prefix length as one text.
    void appendTsv(const NetworkInterface& adapter, MemberWriter& writer, std::string& out)
    {
        writer.begin();
        writer.add("ifindex", adapter.getIdentifier());
        writer.add("ifname", text::toUtf8(adapter.getFriendlyName()));
        writer.addBool("up", adapter.isUp());
        writer.addBool("loopback", adapter.isLoopback());
        writer.addBool("multicast", adapter.supportsMulticast());
        if (adapter.isLoopback())
            writer.add("link_type", "loopback");
        writer.addUnlessEmpty("address", adapter.getHardwareAddress().toString());
        writer.beginList("addr_info");
        for (const InterfaceAddress& each : adapter.getInterfaceAddresses())
            writer.addElement(each.toString());
        writer.endList();
        writer.addUnlessEmpty("description", text::toUtf8(adapter.getDescription()));
        writer.end(out);
    }

} // namespace

ExitCode adapters(const Arguments& arguments, Output& output)
{
    bool all = false;
    ColorMode color = ColorMode::Auto;
    CommandLine commandLine("adapters", {EXAMPLES, USAGE, DETAILS});
    commandLine.addFlag("--all", all, "those too that are down or have no address");
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    addColorOption(commandLine, color);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (!commandLine.operands().empty())
        return commandLine.refuse("adapters takes no arguments but options: "
                                      + text::excerpt(commandLine.operands().front().text),
                                  output);

    foundation::network::detail::ImmutableIterableRange<NetworkInterface> listed;
    const auto failure =
        refusalOf([&] { listed = all ? NetworkInterface::listAll() : NetworkInterface::list(); });
    if (failure) {
        output.reportError(text::excerpt(*failure));
        return ExitCode::System;
    }

    if (format.format() == RowFormat::Json) {
        JsonLines json;
        for (const NetworkInterface& adapter : listed)
            appendJson(adapter, json, output.text());
    } else if (format.format() == RowFormat::Tsv) {
        MemberWriter writer(RowFormat::Tsv, MEMBERS);
        if (format.hasHeader())
            writer.appendHeader(output.text());
        for (const NetworkInterface& adapter : listed)
            appendTsv(adapter, writer, output.text());
    } else {
        output.text().append(asText(listed, Colors(color)));
    }
    output.endRecord();
    return ExitCode::Yes;
}

} // namespace tool::verbs
