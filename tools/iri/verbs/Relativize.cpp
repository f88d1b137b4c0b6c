#include "Relativize.hpp"

#include "../Answers.hpp"
#include "../Base.hpp"
#include "../Forms.hpp"
#include "../Reading.hpp"
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

    constexpr std::string_view USAGE = "iri relativize --base=IRI [OPTION...] [--] [IRI...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri relativize --base='http://a.example/b/c' 'http://a.example/b/d?q'
  iri relativize --base='http://a.example/b/c' --prove --json <links.txt
)help";

    constexpr std::string_view DETAILS =
        R"help(Shows a reference that names each IRI in terms of the base, a line each; or each
line of standard input, if no IRI is given. "-" stands for the lines of standard
input too; behind "--" it is an IRI like any other. An empty line is the empty
reference.

With --prove, the reference is read and resolved against the base again; behind
a tab stands whether that gives the very text of the IRI: "resolves back" or
"does not resolve back".

Characters that a terminal obeys or cannot show are written as \n, \r, \t or
\u{202E}. With --json, an object a line: iri is the IRI as it was given, valid
tells whether it is one, result is the reference, and with --prove, resolvesBack
tells whether it resolves to the IRI. Whatever is wrong stands in error, and
there is no result then.

The answer is no if something is no IRI, cannot be made relative to the base, or
does not resolve back.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{std::string_view("iri"),
                                 std::string_view("escaped"),
                                 std::string_view("valid"),
                                 std::string_view("result"),
                                 std::string_view("resolvesBack"),
                                 std::string_view("error"),
                                 std::string_view("code"),
                                 std::string_view("component"),
                                 std::string_view("offset"),
                                 std::string_view("length"),
                                 std::string_view("characterOffset"),
                                 std::string_view("expected"),
                                 std::string_view("repaired")};

    /// Whether a reference, as it is written, resolves to an IRI again.
    bool resolvesTo(const std::string& reference, const IRI& base, const IRI& iri)
    {
        bool result = false;
        const std::optional<std::string> refusal = refusalOf([&] {
            result = IRI(reference).resolveAgainst(base).toStringUtf8() == iri.toStringUtf8();
        });
        return !refusal && result;
    }

} // namespace

ExitCode relativize(const Arguments& arguments, Output& output)
{
    const Form* form = &formAsGiven();
    bool proves = false;
    CommandLine commandLine("relativize", {EXAMPLES, USAGE, DETAILS});
    Base base(commandLine);
    commandLine.addFlag("--prove", proves, "resolve the result again, and tell what comes of it");
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
        [&](const IRI& iri) { return wholeText(iri.makeRelativeTo(base.iri()), *form); },
        [&](const Record& record, const IRI& iri, const std::string& result) {
            if (!proves) {
                answers.give(record, result);
                return true;
            }
            const bool isProven = resolvesTo(result, base.iri(), iri);
            answers.giveProven(record, result, isProven);
            return isProven;
        });
}

} // namespace tool::verbs
