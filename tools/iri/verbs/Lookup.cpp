#include "Lookup.hpp"

#include "../Answers.hpp"
#include "../Blocks.hpp"
#include "../Colors.hpp"
#include "../MemberWriter.hpp"
#include "../Names.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"
#include "../System.hpp"
#include "../Text.hpp"

#include <foundation/network/InetAddress.hpp>

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>
#include <system_error>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::InetAddress;

    constexpr std::string_view USAGE = "iri lookup [OPTION...] [--] [NAME|ADDRESS...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri lookup example.org 192.0.2.1
  iri lookup --json 'пример.example' | jq -r '.addresses[]'
)help";

    constexpr std::string_view DETAILS =
        R"help(Asks the name service of the system for the addresses of each host name, and for
the name of each address; or for those of each line of standard input, if none
is given. "-" stands for the lines of standard input too. The addresses stand in
the order of the name service. The canonical name is that of the host that has
the first of them: the name of that address is looked up, and then what it is
called properly; it is absent where there is no such name.

A name with characters outside ASCII is converted first (UTS #46, as "iri idn"
does) and the name that was asked for is shown. There is no time-out but that of
the name service. Answers are written one by one.

With --json, an object a line: name is the name or address as it was given,
found tells whether there is an answer, and is null if the name service failed.
With a name, ascii is the name that was asked for; with an address, reverseName
is its name. addresses is a list; canonicalName is null if absent, and left out
if that could not be found out. Whatever is wrong stands in error. A name that
is not UTF-8 is given with each such byte as \xFF and each backslash as \\, and
escaped is true.

The answer is no if something was not found or is no name.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{std::string_view("name"),          std::string_view("escaped"),
                                 std::string_view("found"),         std::string_view("ascii"),
                                 std::string_view("addresses"),     std::string_view("reverseName"),
                                 std::string_view("canonicalName"), std::string_view("error")};

    /// What there is to tell of one name or address.
    struct Finding {
        ExitCode code = ExitCode::Yes; ///< System if the name service failed
        std::string error;             ///< what is wrong, though there may be addresses
        std::optional<std::string> ascii;
        std::vector<std::string> addresses;
        std::optional<std::string> reverseName;
        std::optional<std::string> canonicalName;
        bool isCanonicalNameKnown = false; ///< or that there is none
    };

    /// Asks the name service.
    /// @returns what it said against it, in @p finding as well; nothing if it has answered
    template <class Question>
    std::optional<std::error_code> ask(Finding& finding, Question&& question)
    {
        try {
            std::forward<Question>(question)();
            return std::nullopt;
        } catch (const std::system_error& failure) {
            finding.code =
                system::meansNoSuchName(failure.code()) ? ExitCode::No : ExitCode::System;
            finding.error = failure.what();
            return failure.code();
        }
    }

    void findCanonicalName(const InetAddress& address, Finding& finding)
    {
        std::string name;
        const auto failure = ask(finding, [&] { name = address.getCanonicalHostName(); });
        // The text of an address stands for its name where it has none.
        if (!failure && name != address.getHostAddress())
            finding.canonicalName = std::move(name);
        if (failure && finding.code == ExitCode::No) {
            // The name of an address need not have an address itself. The answer is whole without.
            finding.code = ExitCode::Yes;
            finding.error.clear();
        }
        finding.isCanonicalNameKnown = finding.code == ExitCode::Yes;
    }

    Finding findAddress(const InetAddress& address)
    {
        Finding finding;
        finding.addresses.push_back(address.getHostAddress());
        std::string name;
        if (ask(finding, [&] { name = address.getHostName(); }))
            return finding;
        if (name == finding.addresses.front()) {
            finding.code = ExitCode::No;
            finding.error = "the address has no name";
            return finding;
        }
        finding.reverseName = std::move(name);
        findCanonicalName(address, finding);
        return finding;
    }

    Finding findName(const std::string& name, const Names& names)
    {
        Finding finding;
        // What is ASCII goes as it is: the name service may know names that UTS #46 does not.
        if (std::all_of(name.begin(), name.end(),
                        [](char c) { return static_cast<unsigned char>(c) < 0x80; })) {
            finding.ascii = name;
        } else {
            DomainName converted = names.convert(name);
            if (!converted.problem.empty()) {
                finding.code = ExitCode::No;
                finding.error = std::move(converted.problem);
                return finding;
            }
            finding.ascii = std::move(converted.ascii);
        }

        std::optional<InetAddress> first;
        const auto failure = ask(finding, [&] {
            for (const InetAddress& address : InetAddress::getAllByName(*finding.ascii)) {
                finding.addresses.push_back(address.getHostAddress());
                if (!first)
                    first = address;
            }
        });
        if (!failure && first)
            findCanonicalName(*first, finding);
        return finding;
    }

    Finding find(const std::string& text, const Names& names)
    {
        // The library would take a NUL for the end of the text.
        if (text.find('\0') != std::string::npos) {
            Finding finding;
            finding.code = ExitCode::No;
            finding.error = "not a name: there is a NUL in it";
            return finding;
        }
        std::optional<InetAddress> address;
        const auto refusal = refusalOf([&] { address = InetAddress(text); });
        return refusal ? findName(text, names) : findAddress(*address);
    }

    /// Whether there is an answer, be it not a whole one.
    bool isFound(const Finding& finding)
    {
        return finding.reverseName || (finding.ascii && !finding.addresses.empty());
    }

    void giveText(const Record& record, const Finding& finding, Blocks& blocks)
    {
        blocks.begin(record.text);
        if (finding.ascii && *finding.ascii != record.text)
            blocks.add("ascii", Ink::Plain, *finding.ascii);
        for (const std::string& address : finding.addresses)
            blocks.add("address", Ink::Address, address);
        if (finding.reverseName)
            blocks.add("name", Ink::Plain, *finding.reverseName);
        if (finding.canonicalName)
            blocks.add("canonical", Ink::Plain, *finding.canonicalName);
        else if (finding.isCanonicalNameKnown)
            blocks.addAbsent("canonical");
        blocks.end();
    }

    void giveMembers(const Record& record, const Finding& finding, Answers& answers)
    {
        MemberWriter& writer = answers.begin();
        writer.add("name", record.text);
        if (isFound(finding) || finding.code != ExitCode::System)
            writer.addBool("found", isFound(finding));
        else
            writer.addNull("found");
        if (finding.ascii)
            writer.add("ascii", *finding.ascii);
        if (isFound(finding)) {
            writer.beginList("addresses");
            for (const std::string& address : finding.addresses)
                writer.addElement(address);
            writer.endList();
        }
        if (finding.reverseName)
            writer.add("reverseName", *finding.reverseName);
        if (finding.canonicalName)
            writer.add("canonicalName", *finding.canonicalName);
        else if (finding.isCanonicalNameKnown)
            writer.addNull("canonicalName");
        if (!finding.error.empty())
            writer.add("error", finding.error);
        answers.end();
    }

    /// What is no UTF-8 is no name that anything could be found by.
    void giveUnreadable(const Record& record, std::string_view problem, Answers& answers)
    {
        std::string escaped;
        text::appendEscapedBytes(escaped, record.text);
        MemberWriter& writer = answers.begin();
        writer.add("name", escaped);
        writer.addBool("escaped", true);
        writer.addBool("found", false);
        writer.add("error", problem);
        answers.end();
    }

} // namespace

ExitCode lookup(const Arguments& arguments, Output& output)
{
    ColorMode color = ColorMode::Auto;
    CommandLine commandLine("lookup", {EXAMPLES, USAGE, DETAILS});
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    addColorOption(commandLine, color);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    const Names names;
    Answers answers(format, output, COLUMNS, "name");
    Blocks blocks(color, output);
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);) {
        Finding finding;
        const std::string problem = text::describeInvalidUtf8(record.text);
        if (!problem.empty()) {
            finding.code = ExitCode::No;
            finding.error = problem;
            if (answers.haveMembers())
                giveUnreadable(record, problem, answers);
        } else {
            finding = find(record.text, names);
            if (answers.haveMembers())
                giveMembers(record, finding, answers);
            else if (isFound(finding))
                giveText(record, finding, blocks);
        }
        if (!finding.error.empty())
            answers.report(record, finding.error);
        code = std::max(code, finding.code);
        // The next answer may take its time.
        output.flush();
    }
    return code;
}

} // namespace tool::verbs
