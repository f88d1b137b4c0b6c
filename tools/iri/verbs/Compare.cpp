#include "Compare.hpp"

#include "../Answers.hpp"
#include "../Components.hpp"
#include "../Forms.hpp"
#include "../MemberWriter.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../Remarks.hpp"
#include "../RowFormat.hpp"
#include "../Text.hpp"

#include <foundation/network/IRI.hpp>

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    constexpr std::string_view USAGE = "iri compare [OPTION...] [--] IRI IRI";

    constexpr std::string_view EXAMPLES =
        R"help(  iri compare 'http://h/%41' 'http://h/A'
  iri compare --json 'http://h/' 'HTTP://h/' | jq -r .differs
)help";

    constexpr std::string_view DETAILS =
        R"help(Tells whether two IRIs, A and B, are equal, which is less, what their hashes
are, and in which component they differ first. They are compared as texts: case
and escapes count. The order is that of the code points.

Characters that a terminal obeys or cannot show are written as \n, \r, \t or
\u{202E}. With --json, one object: left and right are the IRIs; valid is true;
equal tells whether they are; order is "<", ">" or "=" if neither is less;
leftHash and rightHash are 16 hexadecimal digits; differs is the name of the
component, or null, and leftValue and rightValue are what each has there, or
null if it is absent. For what is no IRI, an object with iri, valid and error.

The answer is no if the IRIs differ, or one is none.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{std::string_view("left"),      std::string_view("right"),
                                 std::string_view("iri"),       std::string_view("escaped"),
                                 std::string_view("valid"),     std::string_view("equal"),
                                 std::string_view("order"),     std::string_view("leftHash"),
                                 std::string_view("rightHash"), std::string_view("differs"),
                                 std::string_view("leftValue"), std::string_view("rightValue"),
                                 std::string_view("error"),     std::string_view("code"),
                                 std::string_view("component"), std::string_view("offset"),
                                 std::string_view("length"),    std::string_view("characterOffset"),
                                 std::string_view("expected"),  std::string_view("repaired")};

    /// What there is to tell of two IRIs.
    struct Comparison {
        bool areEqual;
        std::string_view order;
        std::array<std::string, 2> hashes;
        std::optional<Part> difference;
        std::array<Component, 2> values; ///< of the component that differs
    };

    std::string hashText(std::uint64_t hash)
    {
        constexpr std::string_view DIGITS = "0123456789abcdef";
        std::string result(16, '0');
        for (auto digit = result.rbegin(); digit != result.rend(); ++digit, hash >>= 4)
            *digit = DIGITS[hash & 0xF];
        return result;
    }

    Comparison compareIris(const IRI& left, const IRI& right)
    {
        const std::string_view order = left < right ? "<" : right < left ? ">" : "=";
        Comparison result{left == right,
                          order,
                          {hashText(left.hashValue()), hashText(right.hashValue())},
                          {},
                          {}};
        Components lefts = readComponents(left, formAsGiven().encoding);
        Components rights = readComponents(right, formAsGiven().encoding);
        result.difference = findDifference(lefts, rights);
        if (result.difference)
            result.values = {std::move(lefts.parts.at(*result.difference)),
                             std::move(rights.parts.at(*result.difference))};
        return result;
    }

    void appendValue(std::string& out, const Component& value)
    {
        std::string shown;
        text::appendPrintable(shown, value.text);
        remarks::tellApart(shown);
        if (value.state == Component::State::Absent)
            out.append(remarks::ABSENT);
        else
            out.append(shown.empty() ? remarks::EMPTY : shown);
        out.push_back('\n');
    }

    void appendText(const Comparison& comparison, std::string& out)
    {
        out.append(comparison.areEqual ? "equal\n" : "different\n");
        out.append("  order      A ").append(comparison.order).append(" B\n");
        out.append("  hash of A  ").append(comparison.hashes[0]).push_back('\n');
        out.append("  hash of B  ").append(comparison.hashes[1]).push_back('\n');
        if (comparison.difference) {
            out.append("  differs    ")
                .append(PART_NAMES.at(*comparison.difference).label)
                .push_back('\n');
            out.append("    of A     ");
            appendValue(out, comparison.values[0]);
            out.append("    of B     ");
            appendValue(out, comparison.values[1]);
        }
    }

    void addMembers(const std::array<Record, 2>& records, const Comparison& comparison,
                    MemberWriter& writer)
    {
        writer.add("left", records[0].text);
        writer.add("right", records[1].text);
        writer.addBool("valid", true);
        writer.addBool("equal", comparison.areEqual);
        writer.add("order", comparison.order);
        writer.add("leftHash", comparison.hashes[0]);
        writer.add("rightHash", comparison.hashes[1]);
        if (comparison.difference)
            writer.add("differs", PART_NAMES.at(*comparison.difference).field);
        else
            writer.addNull("differs");
        const std::array<std::string_view, 2> names{"leftValue", "rightValue"};
        for (std::size_t i = 0; i < names.size(); ++i) {
            const Component& value = comparison.values.at(i);
            if (value.state == Component::State::Present)
                writer.add(names.at(i), value.text);
            else
                writer.addNull(names.at(i));
        }
    }

} // namespace

ExitCode compare(const Arguments& arguments, Output& output)
{
    CommandLine commandLine("compare", {EXAMPLES, USAGE, DETAILS});
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    const std::vector<Operand>& operands = commandLine.operands();
    if (operands.size() != 2)
        return commandLine.refuse(
            "two IRIs are to be given, not " + std::to_string(operands.size()), output);

    Answers answers(format, output, COLUMNS);
    std::array<Record, 2> records;
    std::array<Reading, 2> readings;
    bool areIris = true;
    for (std::size_t i = 0; i < records.size(); ++i) {
        const std::string origin = "argument " + std::to_string(i + 1);
        records.at(i) = {operands[i].text, origin, "<" + origin + ">"};
        readings.at(i) = readIri(operands[i].text);
        if (!readings.at(i).iri) {
            answers.refuse(records.at(i), readings.at(i));
            areIris = false;
        }
    }
    if (!areIris)
        return ExitCode::No;

    const Comparison comparison = compareIris(*readings[0].iri, *readings[1].iri);
    if (answers.haveMembers()) {
        addMembers(records, comparison, answers.begin());
        answers.end();
    } else {
        appendText(comparison, output.text());
        output.endRecord();
    }
    return comparison.areEqual ? ExitCode::Yes : ExitCode::No;
}

} // namespace tool::verbs
