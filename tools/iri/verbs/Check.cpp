#include "Check.hpp"

#include "../MemberWriter.hpp"
#include "../Problem.hpp"
#include "../System.hpp"
#include "../Text.hpp"
#include "../bulk/Fields.hpp"
#include "../bulk/Pieces.hpp"
#include "../bulk/Pipeline.hpp"
#include "../bulk/Progress.hpp"
#include "../bulk/Source.hpp"

#include <foundation/network/iri/Diagnosis.hpp>

#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace tool::verbs {
namespace {

    using bulk::Finding;
    using bulk::Product;

    struct Options {
        bool json = false;
        bool quiet = false;
        bool nul = false;
        std::uint64_t jobs = 1;
        std::uint64_t mostErrors = std::numeric_limits<std::uint64_t>::max();

        char separator() const noexcept { return nul ? '\0' : '\n'; }
    };

    constexpr std::uint64_t MOST_JOBS = 1024;

    constexpr std::string_view USAGE = "iri check [OPTION...] [--] [FILE...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri check links.txt
  iri check --quiet links.txt && echo 'all of them are IRIs'
  iri check --json links.txt | jq -r '[.line, .code, .repaired] | @tsv'
)help";

    constexpr std::string_view DETAILS_BEFORE =
        R"help(Judges whether each line of the files is an IRI reference (RFC 3987), or each
line of standard input if no file is given; "-" stands for standard input too.
The empty line is one.

What is wrong is told on standard error as a compiler tells it: the file, the
line, the character, what it is with its code, the line with a mark under it,
what could have stood there, and a text that would be read. Offsets count from
0, lines and characters in front of "error" from 1.

With --json, an object for each line that is no IRI goes to standard output
instead: file, line, iri (as in "iri parse --json"), error in words, code,
component, offset and length in bytes, characterOffset, expected and repaired,
which are null if there is none.

Codes:
)help";

    constexpr std::string_view DETAILS_BEHIND = R"help(
The answer is no if some line is no IRI.
)help";

    /// Appends a line of words, broken before the width of a terminal.
    void appendWrapped(std::string& result, std::string_view text, std::size_t indent)
    {
        constexpr std::size_t LINE = 80;
        while (text.size() > LINE - indent) {
            const std::size_t space = text.rfind(' ', LINE - indent);
            result.append(text.substr(0, space)).append("\n").append(indent, ' ');
            text.remove_prefix(space + 1);
        }
        result.append(text).push_back('\n');
    }

    std::string detailsText()
    {
        namespace iri = foundation::network::iri;
        constexpr std::size_t WIDTH = 23;
        std::string result(DETAILS_BEFORE);
        for (int i = 0; iri::name(iri::Diagnosis::Code(i)) != "unknown"; ++i) {
            const auto code = iri::Diagnosis::Code(i);
            const std::string_view name = iri::name(code);
            result.append("  ").append(name).append(WIDTH - name.size(), ' ');
            appendWrapped(result, iri::describe(code), WIDTH + 2);
        }
        return result.append(DETAILS_BEHIND);
    }

    /// Judges one input after the other.
    class Checker {
    public:
        Checker(const Options& options, Output& output)
            : options_(options)
            , output_(output)
        {
        }

        void check(bulk::Source& source)
        {
            bulk::Progress progress(source.remainingSize());
            bulk::Pieces pieces(source, options_.separator(), false);
            std::uint64_t line = 1;
            std::uint64_t size = 0;
            bulk::runInOrder(
                pieces, static_cast<unsigned>(options_.jobs),
                [this](const std::string& piece) { return judge(piece); },
                [&](const std::string& piece, const Product& product) {
                    for (const Finding& finding : product.findings)
                        tell({source.name(), line + finding.number},
                             std::string_view(piece).substr(finding.begin, finding.length));
                    output_.flush();
                    line += product.records;
                    size += piece.size();
                    progress.show(line - 1, invalid_, size);
                });
            records_ += line - 1;
        }

        std::uint64_t records() const noexcept { return records_; }
        std::uint64_t invalid() const noexcept { return invalid_; }

    private:
        Product judge(std::string_view piece) const
        {
            Product product;
            std::string_view rest = piece;
            while (auto record = bulk::takeRecord(rest, options_.separator())) {
                if (options_.separator() == '\n' && record->ends_with('\r'))
                    record->remove_suffix(1);
                if (!bulk::viewOf(*record))
                    product.findings.push_back(
                        {product.records, static_cast<std::size_t>(record->data() - piece.data()),
                         record->size()});
                ++product.records;
            }
            return product;
        }

        void tell(const Place& place, std::string_view record)
        {
            ++invalid_;
            if (options_.quiet || invalid_ > options_.mostErrors)
                return;
            const std::optional<Problem> problem = problemOf(record);
            if (!problem)
                return; // what a view refuses is no IRI
            if (options_.json) {
                writeJson(place, record, *problem);
                return;
            }
            std::string message;
            appendProblem(message, place, record, *problem);
            output_.writeToErrors(message);
        }

        void writeJson(const Place& place, std::string_view record, const Problem& problem)
        {
            json_.begin();
            json_.add("file", printable(place.source));
            json_.addNumber("line", place.line);
            const bool isText = text::findInvalidUtf8(record) == std::string_view::npos;
            std::string escaped;
            if (!isText)
                text::appendEscapedBytes(escaped, record);
            json_.add("iri", isText ? record : std::string_view(escaped));
            if (!isText)
                json_.addBool("escaped", true);
            addProblem(json_, record, problem);
            json_.end(output_.text());
            output_.endRecord();
        }

        static std::string printable(std::string_view text)
        {
            std::string result;
            text::appendEscapedBytes(result, text);
            return result;
        }

        Options options_;
        Output& output_;
        MemberWriter json_{RowFormat::Json, {}};
        std::uint64_t records_ = 0;
        std::uint64_t invalid_ = 0;
    };

} // namespace

ExitCode check(const Arguments& arguments, Output& output)
{
    Options options;
    const std::string details = detailsText();
    CommandLine commandLine("check", {EXAMPLES, USAGE, details});
    commandLine.addFlag("--json", options.json, "write a JSON object for each line that is no IRI");
    commandLine.addFlag("-q,--quiet", options.quiet, "tell nothing; the exit code does");
    commandLine.addFlag("-0,--null", options.nul, "records end in NUL instead of a line feed");
    commandLine.addNumber("-j,--jobs", "N", "work on so many pieces of the input at once", 1,
                          MOST_JOBS, options.jobs);
    commandLine.addNumber("--max-errors", "N", "tell of so many at most", 0,
                          std::numeric_limits<std::uint64_t>::max(), options.mostErrors);
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    system::catchInterrupts();
    std::vector<Operand> operands = commandLine.operands();
    if (operands.empty())
        operands.push_back({"-", false});
    Checker checker(options, output);
    bool areAllRead = true;
    for (const Operand& operand : operands) {
        const bool isStandardInput = !operand.isVerbatim && operand.text == "-";
        try {
            const auto source = isStandardInput ? std::make_unique<bulk::Source>()
                                                : std::make_unique<bulk::Source>(operand.text);
            checker.check(*source);
        } catch (const bulk::UnreadableSource& error) { // the others are judged all the same
            output.reportError(error.what());
            areAllRead = false;
        }
        if (system::wasInterrupted())
            break;
    }
    if (system::wasInterrupted()) {
        output.flush();
        system::endAsInterrupted();
    }
    if (checker.invalid() == 0)
        return areAllRead ? ExitCode::Yes : ExitCode::InputOutput;
    if (!options.quiet)
        output.reportError("records that are no IRI: " + std::to_string(checker.invalid()) + " of "
                           + std::to_string(checker.records()));
    return areAllRead ? ExitCode::No : ExitCode::InputOutput;
}

} // namespace tool::verbs
