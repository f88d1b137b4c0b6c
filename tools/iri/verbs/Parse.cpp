#include "Parse.hpp"

#include "../Answers.hpp"
#include "../Colors.hpp"
#include "../Components.hpp"
#include "../Forms.hpp"
#include "../Reading.hpp"
#include "../Records.hpp"
#include "../Remarks.hpp"
#include "../RowFormat.hpp"
#include "../Text.hpp"

#include <foundation/network/IRI.hpp>

#include <algorithm>
#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace tool::verbs {
namespace {

    using foundation::network::IRI;

    struct Options {
        const Form* form = &formAsGiven();
        ColorMode color = ColorMode::Auto;
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
whether it is an IRI. If so, form names the form of text, which is the whole of
it, and of scheme, authority, userInfo, host, port, path, query and fragment,
which are null if absent; portNumber is the port as a number. With form decoded,
text too stays as it was given, and a component that cannot be decoded is left
out and named in the list undecodable.
Whatever is wrong stands in error; if that is not an IRI, code tells it to
programs, component, offset and length in bytes, and characterOffset where it
is, expected what could have stood there, and repaired is a text that would be
read; null if there is none (the codes: "iri help check"). An iri that is not
UTF-8 is given with each such byte as \xFF and each backslash as \\, and escaped
is true. With --tsv, the same are columns.

A line ends with LF or CR LF and may be empty, since the empty text is an IRI;
the last line needs no end. A byte order mark in front of the first line is
skipped. What is no IRI is reported on standard error; the rest goes on.

The answer is no if something is no IRI or cannot be decoded.
)help";

    /// Reads one record after the other and shows it.
    class Parser {
    public:
        Parser(const Options& options, const FormatOptions& format, Output& output)
            : options_(options)
            , colors_(options.color)
            , output_(output)
            , answers_(format, output, componentColumns())
        {
        }

        /// @returns whether it is an IRI that could be shown as asked
        bool show(const Record& record);

    private:
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
        Answers answers_;
        std::string value_; // spares an allocation for each value
        bool isFirst_ = true;
    };

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
        const Reading reading = readIri(record.text);
        if (!reading.iri) {
            answers_.refuse(record, reading);
            return false;
        }
        const IRI& iri = *reading.iri;

        const Components components = readComponents(iri, options_.form->encoding);
        const std::string error = describeUndecodable(components);
        if (answers_.haveMembers()) {
            answers_.giveComponents(record.text, iri, *options_.form, components, error);
        } else {
            appendText(iri, components);
            output_.endRecord();
        }
        if (!error.empty())
            answers_.report(record, error);
        return error.empty();
    }

    // Text for people.

    void Parser::appendText(const IRI& iri, const Components& components)
    {
        std::string& out = output_.text();

        if (!isFirst_)
            out.push_back('\n');
        isFirst_ = false;

        if (iri.isEmpty())
            colors_.append(out, Ink::Aside, remarks::EMPTY);
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
            colors_.append(out, Ink::Aside, remarks::ABSENT);
        } else if (component.state == Component::State::Undecodable) {
            colors_.append(out, Ink::Failure, remarks::UNDECODABLE);
        } else if (component.text.empty()) {
            colors_.append(out, Ink::Aside, remarks::EMPTY);
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
        if (isDistinct)
            remarks::tellApart(value_);
    }

} // namespace

ExitCode parse(const Arguments& arguments, Output& output)
{
    Options options;
    CommandLine commandLine("parse", {EXAMPLES, USAGE, DETAILS});

    addComponentForms(commandLine, options.form);
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    addColorOption(commandLine, options.color);

    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    Parser parser(options, format, output);
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        if (!parser.show(record))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
