#include "Build.hpp"

#include "../Answers.hpp"
#include "../Components.hpp"
#include "../Composition.hpp"
#include "../Forms.hpp"
#include "../Json.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"
#include "../Text.hpp"

#include <foundation/network/IRI.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <variant>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    constexpr std::string_view USAGE = "iri build OPTION...";

    constexpr std::string_view EXAMPLES =
        R"help(  iri build --scheme=https --host=example.org --path='/a b' --pair=q=1
  iri build --scheme=mailto --path=jane@example.org
  iri parse --json <links.txt | jq -c '.fragment = null' | iri build --json
)help";

    constexpr std::string_view DETAILS =
        R"help(Puts an IRI together from components, which are plain text: what cannot stand in
one is escaped, and a "%" where two hexadecimal digits follow it. An option that is not given leaves its component
out; an empty value makes it present and empty. If an option stands there twice,
the last counts; but each --pair adds to the query, behind --query, and once a
pair needed an escape, all of the query is taken to hold escapes already. A host that is an IP literal, "[::1]",
stays as it is.

With --json and no component, each line of standard input is read as an object
that "iri parse --json" writes: the members scheme, userInfo, host, port, path,
query and fragment, each a text, or null or missing if absent. They are in the
form that the member form names, by default iri: then they are put together as
they are. With form decoded they are plain text as above. Other members do not
matter; but an object with an error, or with valid false, is passed on.

Prints the IRI, or with --json, an object a line as "iri parse --json" does. If
the text of an IRI is none, or reads as other components, as "//h" does that was
built from a path, that is reported on standard error, and in JSON in error.

The answer is no if something makes no IRI, or its text does not read as it was
built.
)help";

    /// Takes the components out of an object.
    /// @returns what is wrong with one; empty if nothing is
    std::string takeComponents(const JsonObject& object, PartTexts& given)
    {
        for (std::size_t part = 0; part < PART_COUNT; ++part) {
            const std::string_view name = PART_NAMES[part].field;
            const auto member = object.find(name);
            if (member == object.end() || std::holds_alternative<std::nullptr_t>(member->second))
                continue;
            const auto* const text = std::get_if<std::string>(&member->second);
            if (text == nullptr)
                return std::string(name).append(" is neither a text nor null");
            given[part] = *text;
        }
        return "";
    }

    const std::string* findText(const JsonObject& object, std::string_view name)
    {
        const auto member = object.find(name);
        return member == object.end() ? nullptr : std::get_if<std::string>(&member->second);
    }

    bool isMember(const JsonObject& object, std::string_view name, bool value)
    {
        const auto member = object.find(name);
        const auto* const found =
            member == object.end() ? nullptr : std::get_if<bool>(&member->second);
        return found != nullptr && *found == value;
    }

    /// Reads an object of components.
    Reading readObject(const JsonObject& object)
    {
        // An object with an error lacks what could not be decoded, though it may be of an IRI.
        if (const std::string* const error = findText(object, "error"))
            return {std::nullopt, *error};
        if (isMember(object, "valid", false))
            return {std::nullopt, "not a valid IRI"};

        const Form* form = &formAsGiven();
        if (object.contains("form")) {
            const std::string* const name = findText(object, "form");
            form = name == nullptr ? nullptr : findForm(*name);
            if (form == nullptr)
                return {std::nullopt, "form is none of those that \"iri parse\" knows"};
        }
        PartTexts given;
        if (const std::string problem = takeComponents(object, given); !problem.empty())
            return {std::nullopt, problem};
        if (form->encoding == IRI::Encoding::Decoded)
            return buildIri(given, {});
        if (given[USER_INFO] && !given[HOST])
            return {std::nullopt, "User Info requires a host"};
        if (given[PORT] && !given[HOST])
            return {std::nullopt, "Port requires a host"};
        return readWritten(given);
    }

    bool answerObject(const Record& record, const Form& form, Answers& answers)
    {
        JsonObject object;
        const std::string problem = readJsonObject(record.text, object);
        if (!problem.empty()) {
            answers.refuse(record, nullptr, false, problem);
            return false;
        }
        const Reading reading = readObject(object);
        if (!reading.iri) {
            const std::string* const iri = findText(object, "iri");
            answers.refuse(record, iri, iri != nullptr && isMember(object, "escaped", true),
                           reading.why);
            return false;
        }
        bool isRead = false;
        const auto refusal =
            refusalOf([&] { isRead = answers.giveBuilt(record, *reading.iri, form); });
        if (refusal)
            answers.refuse(record, findText(object, "iri"), false, *refusal);
        return !refusal && isRead;
    }

} // namespace

ExitCode build(const Arguments& arguments, Output& output)
{
    PartTexts given;
    std::vector<QueryPair> pairs;
    const Form* form = &formAsGiven();
    CommandLine commandLine("build", {EXAMPLES, USAGE, DETAILS});
    for (std::size_t part = 0; part < PART_COUNT; ++part)
        commandLine.addText(std::string("--").append(PART_NAMES[part].word), "TEXT",
                            std::string("the ").append(PART_NAMES[part].label),
                            [&given, part](std::string value) {
                                std::string problem = text::describeInvalidUtf8(value);
                                given[part] = std::move(value);
                                return problem;
                            });
    commandLine.addText("--pair", "KEY=VALUE", "a pair for the query, as a form sends it",
                        [&pairs](const std::string& pair) {
                            const std::size_t equals = pair.find('=');
                            if (equals == std::string::npos)
                                return "no \"=\" in it: " + text::excerpt(pair);
                            pairs.push_back({pair.substr(0, equals), pair.substr(equals + 1)});
                            return text::describeInvalidUtf8(pair);
                        });
    addWholeForms(commandLine, form);
    const FormatOptions format(commandLine, FormatOptions::Raw::Offered);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (!commandLine.operands().empty())
        return commandLine.refuse("build takes no arguments but options: "
                                      + text::excerpt(commandLine.operands().front().text),
                                  output);

    Answers answers(format, output, componentColumns());
    const bool isGiven = !pairs.empty()
                         || std::any_of(given.begin(), given.end(),
                                        [](const auto& each) { return each.has_value(); });
    if (!isGiven && !answers.haveMembers())
        return commandLine.refuse("no component is given", output);
    ExitCode code = ExitCode::Yes;
    if (isGiven) {
        const Record nowhere;
        const Reading reading = buildIri(given, {}, pairs);
        if (!reading.iri)
            answers.refuse(nowhere, nullptr, false, reading.why);
        if (!reading.iri || !answers.giveBuilt(nowhere, *reading.iri, *form))
            code = ExitCode::No;
        return code;
    }
    Records records({}, output);
    for (Record record; records.next(record);)
        if (!answerObject(record, *form, answers))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
