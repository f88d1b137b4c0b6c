#include "Edit.hpp"

#include "../Answers.hpp"
#include "../Components.hpp"
#include "../Composition.hpp"
#include "../Forms.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"
#include "../Text.hpp"

#include <foundation/network/IRI.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    constexpr std::string_view USAGE = "iri edit OPTION... [--] [IRI...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri edit 'http://h:8080/a#b' --set=scheme=https --clear=port --clear=fragment
  iri edit --set='path=/a b' --json <links.txt
)help";

    constexpr std::string_view DETAILS =
        R"help(Changes components of each IRI, or of each line of standard input if none is
given. "-" stands for the lines of standard input too; behind "--" it is an IRI
like any other. The components are scheme, user-info (or userInfo), host, port,
path, query and fragment. --set and --clear may stand there any number of times;
they work in the order of the command line. To clear the host clears the port.

What --set sets is escaped, as "iri build" does, and as --form=iri-strict does if
it cannot be read otherwise. A component that is not named stays as it is
written, with its escapes.

Prints the IRI, or with --json, an object a line as "iri parse --json" does, of
the changed IRI. If the components together are no IRI, or read as others, as a
path "//b" does without the host before it, there is none: that is reported on
standard error, and in JSON in error.

The answer is no if something is no IRI or cannot be changed like that.
)help";

    /// One thing to do to each IRI.
    struct Change {
        Part part;
        std::optional<std::string> text; ///< nothing to clear the component
    };

    std::string addChange(std::string_view name, std::optional<std::string> text,
                          std::vector<Change>& changes)
    {
        const std::optional<Part> part = findPart(name);
        if (!part)
            return "no such component: " + text::excerpt(name) + partSuggestion(name);
        changes.push_back({*part, std::move(text)});
        return "";
    }

    /// The IRI with other components. What nobody names stays as it is written.
    Reading applied(const std::vector<Change>& changes, const IRI& iri)
    {
        PartTexts written;
        const Components components = readComponents(iri, formAsGiven().encoding);
        for (std::size_t part = 0; part < PART_COUNT; ++part)
            if (components.parts[part].state == Component::State::Present)
                written[part] = components.parts[part].text;

        PartTexts plain;
        for (const auto& [part, text] : changes) {
            written[part].reset();
            plain[part] = text;
            if (part == HOST && !text) {
                written[PORT].reset();
                plain[PORT].reset();
            }
        }
        return buildIri(plain, std::move(written));
    }

    bool edit(const Record& record, const std::vector<Change>& changes, const Form& form,
              Answers& answers)
    {
        const Reading reading = readIri(record.text);
        if (!reading.iri) {
            answers.refuse(record, reading);
            return false;
        }
        const Reading result = applied(changes, *reading.iri);
        if (!result.iri) {
            answers.fail(record, result.why);
            return false;
        }
        bool isGiven = false;
        const auto refusal =
            refusalOf([&] { isGiven = answers.giveBuilt(record, *result.iri, form); });
        if (refusal)
            answers.fail(record, *refusal);
        return isGiven;
    }

} // namespace

ExitCode edit(const Arguments& arguments, Output& output)
{
    std::vector<Change> changes;
    const Form* form = &formAsGiven();
    CommandLine commandLine("edit", {EXAMPLES, USAGE, DETAILS});
    commandLine.addText(
        "--set", "NAME=TEXT", "set a component to a plain text",
        [&changes](const std::string& value) {
            const std::size_t equals = value.find('=');
            if (equals == std::string::npos)
                return "no \"=\" in it: " + text::excerpt(value);
            if (const std::string problem = text::describeInvalidUtf8(value); !problem.empty())
                return problem + ": " + text::excerpt(value);
            return addChange(value.substr(0, equals), value.substr(equals + 1), changes);
        });
    commandLine.addText(
        "--clear", "NAME", "make a component absent",
        [&changes](const std::string& name) { return addChange(name, std::nullopt, changes); });
    addWholeForms(commandLine, form);
    const FormatOptions format(commandLine, FormatOptions::Raw::Offered);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (changes.empty())
        return commandLine.refuse("neither --set nor --clear is given", output);

    Answers answers(format, output, componentColumns());
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        if (!edit(record, changes, *form, answers))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
