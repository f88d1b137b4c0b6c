#include "Resolve.hpp"

#include "../Answers.hpp"
#include "../Base.hpp"
#include "../Forms.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"

#include <foundation/network/IRI.hpp>

#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    constexpr std::string_view USAGE = "iri resolve --base=IRI [OPTION...] [--] [REFERENCE...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri resolve --base='http://a.example/b/c?q' '../g' '?y' '#s'
  iri resolve --base='http://a.example/b/' --json <references.txt
)help";

    constexpr std::string_view DETAILS =
        R"help(Shows what each reference denotes against the base (RFC 3986, 5.2), a line each;
or each line of standard input, if no reference is given. "-" stands for the
lines of standard input too; behind "--" it is a reference like any other.
Paths are merged as plain text: an escaped slash becomes a real one.

Characters that a terminal obeys or cannot show are written as \n, \r, \t or
\u{202E}. With --json, an object a line: iri is the reference as it was given,
valid tells whether it is one, and result is what it denotes. Whatever is wrong
stands in error, and there is no result then.

The answer is no if some reference is none or cannot be resolved.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{std::string_view("iri"),       std::string_view("escaped"),
                                 std::string_view("valid"),     std::string_view("result"),
                                 std::string_view("error"),     std::string_view("code"),
                                 std::string_view("component"), std::string_view("offset"),
                                 std::string_view("length"),    std::string_view("characterOffset"),
                                 std::string_view("expected"),  std::string_view("repaired")};

} // namespace

ExitCode resolve(const Arguments& arguments, Output& output)
{
    const Form* form = &formAsGiven();
    CommandLine commandLine("resolve", {EXAMPLES, USAGE, DETAILS});
    Base base(commandLine);
    addWholeForms(commandLine, form);
    const FormatOptions format(commandLine, FormatOptions::Raw::Offered);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (const std::optional<ExitCode> end = base.read(commandLine, output))
        return *end;

    Answers answers(format, output, COLUMNS);
    Records records(commandLine.operands(), output);
    return base.relateEach(
        records, answers,
        [&](const IRI& reference) {
            return wholeText(reference.resolveAgainst(base.iri()), *form);
        },
        [&](const Record& record, const IRI&, const std::string& result) {
            answers.give(record, result);
            return true;
        });
}

} // namespace tool::verbs
