#include "Parse.hpp"

#include "../Colors.hpp"
#include "../Components.hpp"
#include "../Json.hpp"
#include "../Records.hpp"
#include "../Text.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <algorithm>
#include <cstddef>
#include <iterator>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    struct Form {
        std::string_view name;
        IRI::Encoding encoding;
    };

    constexpr Form FORMS[] = {
        {"iri", IRI::Encoding::Iri},         {"iri-strict", IRI::Encoding::IriStrict},
        {"ascii", IRI::Encoding::Ascii},     {"ascii-strict", IRI::Encoding::AsciiStrict},
        {"decoded", IRI::Encoding::Decoded},
    };

    struct Options {
        const Form* form = std::begin(FORMS);
        ColorMode color = ColorMode::Auto;
        bool json = false;
    };

    constexpr std::string_view USAGE = "iri parse [OPTION...] [--] [IRI...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri parse 'https://пример.example/путь/a%20b?q=1#часть'
  iri parse --form=ascii 'https://пример.example/' 'mailto:jane@example.org'
  iri parse --form=decoded '/a%20b?q=%D0%B4%D0%B0'
  iri parse --json <links.txt | jq -r 'select(.valid) | .host'
)help";

    constexpr std::string_view DETAILS =
        R"help(Shows the components of each IRI (RFC 3987), or of each line of standard input
if none is given. "-" stands for the lines of standard input too; behind "--" it
is an IRI like any other.

The first line is the whole IRI in the form that was asked for; with
--form=decoded it stays as it was given, since a decoded IRI no longer shows
where its components end. Characters that a terminal obeys or cannot show are
written as \n, \r, \t or \u{202E}, and a backslash as \\. A text that could be
taken for "(absent)" or "(empty)" begins with \u{28}.

With --json, an object a line: iri is the text as it was given, valid tells
whether it is an IRI. If so, form names the form of scheme, authority, userInfo,
host, port, path, query and fragment, which are null if absent, and portNumber
is the port as a number. A component that cannot be decoded is left out.
Whatever is wrong stands in error. An iri that is not UTF-8 is given with each
such byte as \xFF and each backslash as \\, and escaped is true.

A line ends with LF or CR LF and may be empty, since the empty text is an IRI;
the last line needs no end. A byte order mark in front of the first line is
skipped. What is no IRI is reported on standard error; the rest goes on.

Exit codes: 0 all is well; 1 something is no IRI or cannot be decoded; 2 the
command line makes no sense; 3 input could not be read, or output not written.
)help";

    // What stands in place of a component.
    constexpr std::string_view ABSENT = "(absent)";
    constexpr std::string_view EMPTY = "(empty)";
    constexpr std::string_view UNDECODABLE = "(cannot be decoded)";

    /// Reads one record after the other and shows it.
    class Parser {
    public:
        Parser(const Options& options, Output& output)
            : options_(options)
            , colors_(options.color)
            , output_(output)
        {
        }

        /// @returns whether it is an IRI that could be shown as asked
        bool show(const Record& record);

    private:
        void refuse(const Record& record, const std::string& why, bool isUtf8);

        void appendJson(const Record& record, const IRI& iri, const Components& components,
                        const std::string& error);

        void appendText(const IRI& iri, const Components& components);
        void appendWhole(const Components& components);
        void appendPart(const Components& components, Part part, std::string_view before,
                        std::string_view after);
        void appendList(const Components& components);
        void appendValue(const Component& component, Ink ink);
        void setValue(std::string_view text, bool isDistinct);

        Options options_;
        Colors colors_;
        Output& output_;
        JsonLines json_;
        std::string value_; // spares an allocation for each value
        bool isFirst_ = true;
    };

    std::optional<IRI> parseText(const std::string& text)
    {
        try {
            return IRI(text);
        } catch (const foundation::core::except::AnonymousInternalException<std::logic_error>&) {
            return std::nullopt;
        }
    }

    /// What to say of the components that cannot be decoded; empty if all can.
    std::string describeFailures(const Components& components)
    {
        std::string result;
        for (std::size_t part = 0; part < PART_COUNT; ++part)
            if (components.parts[part].state == Component::State::Undecodable)
                result.append(result.empty() ? "cannot decode " : ", ")
                    .append(PART_NAMES[part].label);
        if (!result.empty())
            result.append(": the escapes stand for bytes that are not UTF-8");
        return result;
    }

    /// Whether an IRI consists of one component and nothing else, not even a delimiter.
    bool isWhole(const Components& components, Part part)
    {
        const auto isPresent = [](const Component& each) {
            return each.state != Component::State::Absent;
        };
        return part == PATH
               && std::count_if(components.parts.begin(), components.parts.end(), isPresent) == 1;
    }

    bool Parser::show(const Record& record)
    {
        // The library takes some bytes for UTF-8 that are not; what is printed must be.
        const std::size_t invalid = text::findInvalidUtf8(record.text);
        if (invalid != std::string_view::npos) {
            refuse(record, "not valid UTF-8 at byte " + std::to_string(invalid + 1), false);
            return false;
        }
        const std::optional<IRI> iri = parseText(record.text);
        if (!iri) {
            refuse(record, "not a valid IRI", true);
            return false;
        }

        const Components components = readComponents(*iri, options_.form->encoding);
        const std::string error = describeFailures(components);
        if (options_.json)
            appendJson(record, *iri, components, error);
        else
            appendText(*iri, components);
        output_.endRecord();
        if (!error.empty())
            output_.reportError(record.origin + ": " + error + ": " + text::excerpt(record.text));
        return error.empty();
    }

    void Parser::refuse(const Record& record, const std::string& why, bool isUtf8)
    {
        if (options_.json) {
            json_.begin();
            value_.clear();
            if (!isUtf8)
                text::appendEscapedBytes(value_, record.text);
            json_.add("iri", isUtf8 ? record.text : value_);
            if (!isUtf8)
                json_.addBool("escaped", true);
            json_.addBool("valid", false);
            json_.add("error", why);
            json_.end(output_.text());
            output_.endRecord();
        }
        output_.reportError(record.origin + ": " + why + ": " + text::excerpt(record.text));
    }

    // JSON.

    void Parser::appendJson(const Record& record, const IRI& iri, const Components& components,
                            const std::string& error)
    {
        const auto add = [this](std::string_view name, const Component& component) {
            if (component.state == Component::State::Present)
                json_.add(name, component.text);
            else if (component.state == Component::State::Absent)
                json_.addNull(name);
        };

        json_.begin();
        json_.add("iri", record.text);
        json_.addBool("valid", true);
        json_.add("form", options_.form->name);
        for (std::size_t part = 0; part < PART_COUNT; ++part) {
            if (part == USER_INFO)
                add("authority", components.authority);
            add(PART_NAMES[part].field, components.parts[part]);
            if (part == PORT && iri.hasPort())
                json_.addNumber("portNumber", iri.getPortNumber());
            else if (part == PORT)
                json_.addNull("portNumber");
        }
        if (!error.empty())
            json_.add("error", error);
        json_.end(output_.text());
    }

    // Text for people.

    void Parser::appendText(const IRI& iri, const Components& components)
    {
        std::string& out = output_.text();

        if (!isFirst_)
            out.push_back('\n');
        isFirst_ = false;

        if (iri.isEmpty())
            colors_.append(out, Ink::Aside, EMPTY);
        else if (options_.form->encoding == IRI::Encoding::Decoded)
            appendWhole(readComponents(iri, IRI::Encoding::Iri));
        else
            appendWhole(components);
        out.push_back('\n');
        appendList(components);
    }

    // RFC 3986, 5.3, with user information and port apart.
    void Parser::appendWhole(const Components& components)
    {
        appendPart(components, SCHEME, "", ":");
        if (components.authority.state != Component::State::Absent)
            colors_.append(output_.text(), Ink::Aside, "//");
        appendPart(components, USER_INFO, "", "@");
        appendPart(components, HOST, "", "");
        appendPart(components, PORT, ":", "");
        appendPart(components, PATH, "", "");
        appendPart(components, QUERY, "?", "");
        appendPart(components, FRAGMENT, "#", "");
    }

    void Parser::appendPart(const Components& components, Part part, std::string_view before,
                            std::string_view after)
    {
        const Component& component = components.parts[part];
        if (component.state == Component::State::Absent)
            return;
        setValue(component.text, isWhole(components, part));
        colors_.append(output_.text(), Ink::Aside, before);
        colors_.append(output_.text(), PART_NAMES[part].ink, value_);
        colors_.append(output_.text(), Ink::Aside, after);
    }

    void Parser::appendList(const Components& components)
    {
        constexpr std::size_t LABEL_WIDTH = 11;

        std::string& out = output_.text();
        for (std::size_t part = 0; part < PART_COUNT; ++part) {
            const std::string_view label = PART_NAMES[part].label;
            out.append("  ").append(label).append(LABEL_WIDTH - label.size(), ' ');
            appendValue(components.parts[part], PART_NAMES[part].ink);
            out.push_back('\n');
        }
    }

    void Parser::appendValue(const Component& component, Ink ink)
    {
        std::string& out = output_.text();

        if (component.state == Component::State::Absent) {
            colors_.append(out, Ink::Aside, ABSENT);
        } else if (component.state == Component::State::Undecodable) {
            colors_.append(out, Ink::Failure, UNDECODABLE);
        } else if (component.text.empty()) {
            colors_.append(out, Ink::Aside, EMPTY);
        } else {
            setValue(component.text, true);
            colors_.append(out, ink, value_);
        }
    }

    /// Makes a text printable, and if it is to be @p isDistinct, unlike each of the remarks.
    void Parser::setValue(std::string_view text, bool isDistinct)
    {
        value_.clear();
        text::appendPrintable(value_, text);
        if (isDistinct && (value_ == ABSENT || value_ == EMPTY || value_ == UNDECODABLE))
            value_.replace(0, 1, "\\u{28}");
    }

} // namespace

ExitCode parse(const Arguments& arguments, Output& output)
{
    Options options;
    CommandLine commandLine("parse", {EXAMPLES, USAGE, DETAILS});

    std::vector<std::pair<std::string, const Form*>> forms;
    for (const Form& form : FORMS)
        forms.emplace_back(form.name, &form);
    commandLine.addChoice("--form", "FORM", forms, options.form,
                          "how to write the components:\n"
                          "iri           as they were given; the default\n"
                          "iri-strict    with stray percent signs escaped\n"
                          "ascii         with characters outside ASCII escaped\n"
                          "ascii-strict  as ascii and iri-strict at once\n"
                          "decoded       as plain text, with the escapes undone");
    commandLine.addFlag("--json", options.json, "write a JSON object a line");
    commandLine.addChoice<ColorMode>(
        "--color", "WHEN",
        {{"auto", ColorMode::Auto}, {"always", ColorMode::Always}, {"never", ColorMode::Never}},
        options.color,
        "colour the text: auto, always or never. By default auto: on\n"
        "a terminal, unless NO_COLOR is set or TERM is dumb");

    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    Parser parser(options, output);
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        if (!parser.show(record))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
