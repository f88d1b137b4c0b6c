#include "Get.hpp"

#include "../Answers.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"
#include "../bulk/Fields.hpp"
#include "../bulk/Row.hpp"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace tool::verbs {
namespace {

    using bulk::Field;
    using bulk::FieldReader;
    using bulk::RowWriter;
    using bulk::Template;

    constexpr std::string_view USAGE = "iri get [OPTION...] FIELD[:FORM] [--] [IRI...]\n"
                                       "       iri get [OPTION...] --format=TEMPLATE [--] [IRI...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri get host 'https://пример.example/путь'
  iri get path:decoded 'https://example.org/a%20b'
  iri get -f '{scheme}\t{host:ascii}' <links.txt
)help";

    constexpr std::string_view DETAILS =
        R"help(Shows one field of each IRI, or of each line of standard input if none is given,
on a line each. "-" stands for the lines of standard input too; behind "--" it
is an IRI like any other.

A field is scheme, authority, userInfo, host, port, portNumber, path, query,
fragment, or iri for the whole; a form is one of those of "iri parse". In a
TEMPLATE, {host} or {path:decoded} stands for a field, and nothing if that is
absent; {{ and }} for braces, and \t, \n, \0 and \\ for what they mean in most
languages.

A field is printable, as with "iri parse". The text of a TEMPLATE is not, so that
tabs are tabs: a decoded path may bring line feeds, and what a terminal obeys.

The word behind FIELD is an IRI already: for several fields, use a TEMPLATE or
"iri map get".

A field that is absent gives an empty line, and the exit code tells. What is no
IRI is reported on standard error and gives no line. To keep a line for each
line, use "iri map get".

With --json, an object a line: iri is the IRI as it was given, valid tells
whether it is one, and the field has its name, or text with a TEMPLATE; it is
null if absent. What is wrong stands in members as with "iri parse".

The answer is no if some field is absent or cannot be decoded, or something is
no IRI.
)help";

    /// Writes what is asked for of one IRI after the other.
    class Getter {
    public:
        Getter(std::optional<Template> pattern, std::optional<Field> field, std::string name,
               const FormatOptions& options, Output& output)
            : template_(std::move(pattern))
            , field_(field)
            , columns_{std::move(name)}
            , row_(options.format(), columns_)
            , format_(options.format())
            , output_(output)
            // Tab-separated values have the one column that is asked for.
            , answers_(format_ == RowFormat::Json ? RowFormat::Json : RowFormat::Text, output, {})
        {
            if (options.hasHeader())
                output.text().append(columns_.front()).push_back('\n');
        }

        /// @returns whether it was there
        bool get(const Record& record)
        {
            const auto view = bulk::viewOf(record.text);
            if (!view) {
                answers_.refuse(record, readIri(record.text));
                return false;
            }
            FieldReader reader(*view);
            std::string text;
            FieldReader::State state = FieldReader::State::Present;
            if (template_) {
                if (!template_->append(text, reader))
                    state = FieldReader::State::Undecodable;
            } else {
                std::string_view value;
                state = reader.read(*field_, value);
                text = value;
            }
            if (state == FieldReader::State::Undecodable) {
                answers_.fail(record, "cannot be decoded: the escapes stand for bytes that are not "
                                      "UTF-8");
                return false;
            }
            write(record, *view, text, state == FieldReader::State::Present);
            return state == FieldReader::State::Present;
        }

    private:
        void write(const Record& record, const foundation::network::iri::IRIView& view,
                   std::string_view text, bool isPresent)
        {
            if (format_ == RowFormat::Json) {
                MemberWriter& writer = answers_.begin();
                writer.add("iri", record.text);
                writer.addBool("valid", true);
                if (!isPresent)
                    writer.addNull(columns_.front());
                else if (field_ && field_->kind == bulk::FieldKind::PortNumber)
                    writer.addNumber(columns_.front(), *view.portNumber());
                else if (columns_.front() != "iri")
                    writer.add(columns_.front(), text);
                answers_.end();
                return;
            }
            row_.begin(output_.text());
            // A template gives a text that is meant as it is: its tabs and line feeds are.
            if (template_ && format_ == RowFormat::Text)
                output_.text().append(text);
            else if (isPresent)
                row_.add(text);
            else
                row_.addAbsent();
            row_.end();
            output_.endRecord();
        }

        std::optional<Template> template_;
        std::optional<Field> field_;
        std::vector<std::string> columns_;
        RowWriter row_;
        RowFormat format_;
        Output& output_;
        Answers answers_;
    };

    /// What to say if the first operand behind the field is the name of one too, and others follow:
    /// it reads as an IRI all the same. Behind "--", it is meant as one.
    std::string describeSecondField(const std::vector<Operand>& operands)
    {
        constexpr std::size_t FEWEST = 3;
        if (operands.size() < FEWEST || operands[1].isVerbatim
            || !bulk::findField(operands[1].text))
            return "";
        const std::string& first = operands[0].text;
        const std::string& second = operands[1].text;
        return second + " is taken for an IRI; for several fields: iri get -f '{" + first + "} {"
               + second + "}', or iri map get " + first + " " + second;
    }

} // namespace

ExitCode get(const Arguments& arguments, Output& output)
{
    std::optional<std::string> givenPattern;
    CommandLine commandLine("get", {EXAMPLES, USAGE, DETAILS});
    commandLine.addText("-f,--format", "TEMPLATE",
                        "write a text made of several fields, instead of one", givenPattern);
    const FormatOptions format(commandLine, FormatOptions::Raw::Offered);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    std::vector<Operand> operands = commandLine.operands();
    std::optional<Template> pattern;
    std::optional<Field> field;
    std::string name = "text";
    if (givenPattern) {
        std::string why;
        pattern = Template::read(*givenPattern, why);
        if (!pattern)
            return commandLine.refuse("--format: " + why, output);
    } else {
        if (operands.empty())
            return commandLine.refuse("a FIELD is missing: " + bulk::fieldNames(), output);
        field = bulk::findField(operands.front().text);
        if (!field)
            return commandLine.refuse(bulk::noSuchField(operands.front().text), output);
        name = bulk::nameOf(*field);
        if (const std::string remark = describeSecondField(operands); !remark.empty())
            output.reportError(remark);
        operands.erase(operands.begin());
    }

    Getter getter(std::move(pattern), field, std::move(name), format, output);
    Records records(std::move(operands), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        if (!getter.get(record))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
