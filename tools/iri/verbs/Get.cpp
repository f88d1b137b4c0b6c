#include "Get.hpp"

#include "../Answers.hpp"
#include "../Records.hpp"
#include "../Text.hpp"
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
    using bulk::RowFormat;
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
on a line each. "-" stands for the lines of standard input too; behind "--" it is
an IRI like any other.

A field is scheme, authority, userInfo, host, port, portNumber, path, query,
fragment, or iri for the whole; a form is one of those of "iri parse". In a
TEMPLATE, {host} or {path:decoded} stands for a field, and nothing if that is
absent; {{ and }} for braces, and \t, \n, \0 and \\ for what they mean in most
languages.

A field that is absent gives an empty line, and the exit code tells. What is no
IRI is reported on standard error and gives no line. To keep a line for each
line, use "iri map get".

Exit codes: 0 every field is there; 1 some field is absent or cannot be decoded,
or something is no IRI; 2 the command line makes no sense; 3 input could not be
read, or output not written.
)help";

    struct Options {
        std::optional<std::string> pattern;
        bool json = false;
        bool tsv = false;
        bool print0 = false;

        RowFormat format() const noexcept
        {
            return json     ? RowFormat::Json
                   : print0 ? RowFormat::Raw
                   : tsv    ? RowFormat::Tsv
                            : RowFormat::Text;
        }
    };

    /// Writes what is asked for of one IRI after the other.
    class Getter {
    public:
        Getter(std::optional<Template> pattern, std::optional<Field> field, std::string name,
               RowFormat format, Output& output)
            : template_(std::move(pattern))
            , field_(field)
            , columns_{std::move(name)}
            , row_(format, columns_)
            , format_(format)
            , output_(output)
            , answers_(format == RowFormat::Json, output)
        {
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
            write(text, state == FieldReader::State::Present);
            return state == FieldReader::State::Present;
        }

    private:
        void write(std::string_view text, bool isPresent)
        {
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

} // namespace

ExitCode get(const Arguments& arguments, Output& output)
{
    Options options;
    CommandLine commandLine("get", {EXAMPLES, USAGE, DETAILS});
    commandLine.addText("-f,--format", "TEMPLATE",
                        "write a text made of several fields, instead of one", options.pattern);
    commandLine.addFlag("--json", options.json, "write a JSON object a line");
    commandLine.addFlag("--tsv", options.tsv,
                        "write \\t, \\n, \\\\ for tab, line feed and backslash, \\N for what is\n"
                        "absent");
    commandLine.addFlag("-0,--print0", options.print0,
                        "write values as they are, and NUL behind each");
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (int{options.json} + int{options.tsv} + int{options.print0} > 1)
        return commandLine.refuse("one of --json, --tsv and --print0 at most", output);

    std::vector<Operand> operands = commandLine.operands();
    std::optional<Template> pattern;
    std::optional<Field> field;
    std::string name = "text";
    if (options.pattern) {
        std::string why;
        pattern = Template::read(*options.pattern, why);
        if (!pattern)
            return commandLine.refuse("--format: " + why, output);
    } else {
        if (operands.empty())
            return commandLine.refuse("a FIELD is missing: " + bulk::fieldNames(), output);
        name = operands.front().text;
        field = bulk::findField(name);
        if (!field)
            return commandLine.refuse("no such field: " + text::excerpt(name) + "; there are "
                                          + bulk::fieldNames(),
                                      output);
        operands.erase(operands.begin());
    }

    Getter getter(std::move(pattern), field, std::move(name), options.format(), output);
    Records records(std::move(operands), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        if (!getter.get(record))
            code = ExitCode::No;
    return code;
}

} // namespace tool::verbs
