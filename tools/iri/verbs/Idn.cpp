#include "Idn.hpp"

#include "../Answers.hpp"
#include "../Blocks.hpp"
#include "../Colors.hpp"
#include "../MemberWriter.hpp"
#include "../Names.hpp"
#include "../Records.hpp"
#include "../RowFormat.hpp"

#include <algorithm>
#include <array>
#include <optional>
#include <string>
#include <string_view>

namespace tool::verbs {
namespace {

    constexpr std::string_view USAGE = "iri idn [OPTION...] [--] [NAME...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri idn 'пример.example' xn--fa-hia.example
  iri idn --json <names.txt | jq -r .ascii
)help";

    constexpr std::string_view DETAILS =
        R"help(Shows each domain name, given in either form, in ASCII and in Unicode (UTS #46,
non-transitional); or that of each line of standard input, if none is given. "-"
stands for the lines of standard input too; behind "--" it is a name like any
other.

What UTS #46 does not allow shows as "?" in ASCII and, if the name was in ASCII
before, as U+FFFD in Unicode; that is reported on standard error. Whether labels
are empty or too long for the name service is not looked at, nor whether other
ASCII characters stand in them than letters, digits and "-": a whole IRI passes.

Characters that a terminal obeys or cannot show are written as \n, \r, \t or
\u{202E}, and a backslash as \\. With --json, an object a line: name is the name
as it was given, valid tells whether it could be converted, ascii and unicode
are its forms; they are null if a label is too long to have any. Whatever is
wrong stands in error. A name that is not UTF-8 is given with each such byte as
\xFF and each backslash as \\, and escaped is true.

The answer is no if some name could not be converted.
)help";

    // What a record may have, in this order.
    constexpr std::array COLUMNS{std::string_view("name"),    std::string_view("escaped"),
                                 std::string_view("valid"),   std::string_view("ascii"),
                                 std::string_view("unicode"), std::string_view("error")};

    /// Shows one name after the other.
    class Converter {
    public:
        Converter(const FormatOptions& format, ColorMode color, Output& output)
            : answers_(format, output, COLUMNS, "name")
            , blocks_(color, output)
        {
        }

        ExitCode show(const Record& record);

    private:
        void give(const Record& record, const DomainName& name);

        Names names_;
        Answers answers_;
        Blocks blocks_;
    };

    ExitCode Converter::show(const Record& record)
    {
        if (answers_.refuseInvalidUtf8(record))
            return ExitCode::No;
        const DomainName name = names_.convert(record.text);
        give(record, name);
        if (name.problem.empty())
            return ExitCode::Yes;
        answers_.report(record, name.problem);
        return ExitCode::No;
    }

    void Converter::give(const Record& record, const DomainName& name)
    {
        if (!answers_.haveMembers()) {
            blocks_.begin(record.text);
            if (name.hasForms) {
                blocks_.add("ascii", Ink::Plain, name.ascii);
                blocks_.add("unicode", Ink::Plain, name.unicode);
            } else {
                blocks_.addAbsent("ascii");
                blocks_.addAbsent("unicode");
            }
            blocks_.end();
            return;
        }
        MemberWriter& writer = answers_.begin();
        writer.add("name", record.text);
        writer.addBool("valid", name.problem.empty());
        if (name.hasForms) {
            writer.add("ascii", name.ascii);
            writer.add("unicode", name.unicode);
        } else {
            writer.addNull("ascii");
            writer.addNull("unicode");
        }
        if (!name.problem.empty())
            writer.add("error", name.problem);
        answers_.end();
    }

} // namespace

ExitCode idn(const Arguments& arguments, Output& output)
{
    ColorMode color = ColorMode::Auto;
    CommandLine commandLine("idn", {EXAMPLES, USAGE, DETAILS});
    const FormatOptions format(commandLine, FormatOptions::Raw::Senseless);
    addColorOption(commandLine, color);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    Converter converter(format, color, output);
    Records records(commandLine.operands(), output);
    ExitCode code = ExitCode::Yes;
    for (Record record; records.next(record);)
        code = std::max(code, converter.show(record));
    return code;
}

} // namespace tool::verbs
