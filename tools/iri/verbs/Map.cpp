#include "Map.hpp"

#include "../Nearest.hpp"
#include "../System.hpp"
#include "../Text.hpp"
#include "../Tsv.hpp"
#include "../bulk/Makers.hpp"
#include "../bulk/Pieces.hpp"
#include "../bulk/Pipeline.hpp"
#include "../bulk/Progress.hpp"
#include "../bulk/Row.hpp"
#include "../bulk/Source.hpp"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tool::verbs {
namespace {

    using bulk::BulkVerb;
    using bulk::Outcome;
    using bulk::Product;
    using bulk::RowMaker;
    using bulk::RowWriter;

    enum class Input { Lines, Nul, Tsv };

    struct Options {
        Input input = Input::Lines;
        std::uint64_t column = 1;
        std::uint64_t jobs = 1;
        bool json = false;
        bool tsv = false;
        bool print0 = false;
        bool header = false;
        bool withError = false;
        bool failOnInvalid = false;
        bool chunkHeader = false;
        bool hadoopCounters = false;

        char separator() const noexcept { return input == Input::Nul ? '\0' : '\n'; }

        RowFormat format() const noexcept
        {
            return json     ? RowFormat::Json
                   : print0 ? RowFormat::Raw
                   : tsv    ? RowFormat::Tsv
                            : RowFormat::Text;
        }
    };

    constexpr std::uint64_t MOST_JOBS = 1024;

    constexpr std::string_view USAGE = "iri map [OPTION...] VERB [ARGUMENT...]";

    constexpr std::string_view EXAMPLES =
        R"help(  iri map get host <links.txt
  iri map --with-error get scheme host path:decoded <links.txt
  iri map --in=tsv --column=3 --tsv resolve --base=http://h/ <pages.tsv
  iri map -j 4 --json parse <links.txt
)help";

    constexpr std::string_view DETAILS_BEFORE =
        R"help(Makes one record of each record of standard input, in the same order, whatever
is in it: a record for which there is no answer gets one with empty values. So
the output can be pasted beside the input, and the program can stand wherever
something sends rows through a program.

Verbs:
)help";

    constexpr std::string_view DETAILS_BEHIND = R"help(
A field is one of those that "iri parse --json" shows, or iri for the whole; a
form is one of those of "iri parse". In a TEMPLATE, {host} or {path:decoded}
stands for a field, {{ and }} for braces, and \t, \n, \0 and \\ for what they
mean in most languages.

A record is a line, of any length and with any bytes; a carriage return before
its end does not belong to it, nor does a byte order mark before the first. All
answers to what was read are written before more is waited for. What is written
is UTF-8: of a column that is carried through and is not, each such byte is
written as \xFF and each backslash as \\, and in JSON, escaped is true.

Values are printable by default (as with "iri parse"), and what is absent is
empty. The text of a TEMPLATE is one value, so that its tabs show as \t but with
-0; for columns, give several fields instead. With --tsv, what is absent is \N.
With --json, what is absent or has no answer is null.

--with-error adds the columns error and offset: what is wrong with the record,
as one of the codes of "iri help check" or as undecodable (a component whose
escapes are no text), no-result (no such result exists) or no-column (the record
has not so many columns), and at which byte.

The answer is yes, but with --fail-on-invalid it is no if some record has none.
Chunks that are not as announced are a failure of the input.
)help";

    std::string detailsText()
    {
        constexpr std::size_t MARGIN = 2;
        std::size_t width = 0;
        const auto usageOf = [](const BulkVerb& verb) {
            return std::string(verb.name)
                .append(verb.arguments.empty() ? "" : " ")
                .append(verb.arguments);
        };
        for (const BulkVerb& verb : bulk::allBulkVerbs())
            width = std::max(width, usageOf(verb).size() + MARGIN);

        std::string result(DETAILS_BEFORE);
        for (const BulkVerb& verb : bulk::allBulkVerbs()) {
            const std::string usage = usageOf(verb);
            result.append(MARGIN, ' ').append(usage).append(width - usage.size(), ' ');
            result.append(verb.summary).push_back('\n');
        }
        return result.append(DETAILS_BEHIND);
    }

    /// The columns of a record of tab-separated values.
    std::vector<std::string_view> splitColumns(std::string_view record)
    {
        std::vector<std::string_view> columns;
        for (;;) {
            const std::size_t tab = record.find('\t');
            columns.push_back(record.substr(0, tab));
            if (tab == std::string_view::npos)
                return columns;
            record.remove_prefix(tab + 1);
        }
    }

    /// Makes rows of records. Any number of threads may use one.
    class Mapper {
    public:
        Mapper(const Options& options, std::unique_ptr<RowMaker> maker)
            : options_(options)
            , maker_(std::move(maker))
            , columns_(maker_->columns())
            , answerCount_(columns_.size())
        {
            if (options.withError) {
                columns_.emplace_back("error");
                columns_.emplace_back("offset");
            }
        }

        /// The first record of the input names its columns.
        void setHeader(std::string_view header)
        {
            if (header.ends_with('\r'))
                header.remove_suffix(1);
            for (const std::string_view name : splitColumns(header)) {
                carriedNames_.emplace_back(name);
                memberNames_.push_back(memberName(name));
            }
        }

        /// The first record of the output, which names its columns.
        std::string header() const
        {
            std::string result;
            if (options_.format() == RowFormat::Json)
                return result; // each object has the names
            RowWriter row(options_.format(), columns_);
            row.begin(result);
            for (const std::string& name : carriedNames_)
                row.addCarried("", name);
            for (const std::string& name : columns_)
                row.add(name);
            row.end();
            return result;
        }

        Product map(std::string_view piece) const
        {
            Product product;
            RowWriter row(options_.format(), columns_);
            while (auto record = bulk::takeRecord(piece, options_.separator())) {
                if (options_.separator() == '\n' && record->ends_with('\r'))
                    record->remove_suffix(1);
                ++product.records;
                row.begin(product.output);
                const bool isAnswered = options_.input == Input::Tsv ? mapColumns(*record, row)
                                                                     : makeRow(*record, {}, row);
                if (!isAnswered)
                    ++product.invalid;
            }
            return product;
        }

    private:
        bool mapColumns(std::string_view record, RowWriter& row) const
        {
            const std::vector<std::string_view> columns = splitColumns(record);
            if (columns.size() < options_.column)
                return makeRow(std::nullopt, columns, row);
            const std::string_view given = columns[options_.column - 1];
            if (given.find('\\') == std::string_view::npos)
                return makeRow(given, columns, row);
            return makeRow(undoTsv(given), columns, row);
        }

        bool makeRow(std::optional<std::string_view> text,
                     std::span<const std::string_view> carried, RowWriter& row) const
        {
            carry(carried, row);
            Outcome outcome{"no-column", std::nullopt};
            if (text)
                outcome = maker_->make(*text, row);
            if (!outcome.isValid()) {
                row.restart();
                carry(carried, row);
                for (std::size_t i = 0; i < answerCount_; ++i)
                    row.addNothing();
            }
            if (options_.withError && outcome.isValid()) {
                row.addAbsent();
                row.addAbsent();
            } else if (options_.withError) {
                row.add(outcome.code);
                if (outcome.offset)
                    row.addNumber(*outcome.offset);
                else
                    row.addAbsent();
            }
            row.end();
            return outcome.isValid();
        }

        void carry(std::span<const std::string_view> columns, RowWriter& row) const
        {
            for (std::size_t i = 0; i < columns.size(); ++i)
                row.addCarried(i < memberNames_.size()
                                   ? memberNames_[i]
                                   : memberName("column" + std::to_string(i + 1)),
                               columns[i]);
        }

        /// What a column is called in JSON, where no two members may have one name.
        std::string memberName(std::string_view given) const
        {
            std::string name = undoTsv(given);
            if (text::findInvalidUtf8(name) != std::string::npos) {
                name.clear();
                text::appendEscapedBytes(name, undoTsv(given));
            }
            const auto isTaken = [this](const std::string& each) {
                return each == "escaped" // what the record says of itself
                       || std::count(columns_.begin(), columns_.end(), each) != 0
                       || std::count(memberNames_.begin(), memberNames_.end(), each) != 0;
            };
            std::string result = name;
            for (std::size_t i = 2; isTaken(result); ++i)
                result = name + "_" + std::to_string(i);
            return result;
        }

        Options options_;
        std::unique_ptr<RowMaker> maker_;
        std::vector<std::string> columns_;      // those that are added to a record
        std::size_t answerCount_;               // how many of them are not about errors
        std::vector<std::string> carriedNames_; // as the input has them
        std::vector<std::string> memberNames_;  // the same in JSON
    };

    void addOptions(CommandLine& commandLine, Options& options)
    {
        commandLine.addChoice<Input>(
            "--in", "FORMAT", {{"lines", Input::Lines}, {"nul", Input::Nul}, {"tsv", Input::Tsv}},
            options.input,
            "what a record of the input is: a line, the default; nul, a\n"
            "text that ends in NUL; or tsv, tab-separated values, which\n"
            "are carried through, with the answers behind them");
        commandLine.addNumber("--column", "N",
                              "the column that holds the IRI, with --in=tsv; 1 is the\n"
                              "first, and the default",
                              1, std::numeric_limits<std::uint64_t>::max(), options.column);
        commandLine.addFlag("--json", options.json, "write a JSON object a line");
        commandLine.addFlag("--tsv", options.tsv,
                            "write tab-separated values, with \\t, \\n, \\\\ and \\N");
        commandLine.addFlag("-0,--print0", options.print0,
                            "write values as they are, and NUL behind each record");
        commandLine.addFlag("--header", options.header,
                            "write the names of the columns first; with --in=tsv, the\n"
                            "first line of the input holds its own");
        commandLine.addFlag("--with-error", options.withError, "add the columns error and offset");
        commandLine.addFlag("--fail-on-invalid", options.failOnInvalid,
                            "exit 1 if some record has no answer");
        commandLine.addNumber("-j,--jobs", "N", "work on so many pieces of the input at once", 1,
                              MOST_JOBS, options.jobs);
        commandLine.addFlag("--chunk-header", options.chunkHeader,
                            "a line with a number stands before as many records");
        commandLine.addFlag("--hadoop-counters", options.hadoopCounters,
                            "write counters of records to standard error at the end, as\n"
                            "Hadoop Streaming reads them");
    }

    /// What makes no sense about the options together; empty if all does.
    std::string_view conflictOf(const Options& options)
    {
        if (int{options.json} + int{options.tsv} + int{options.print0} > 1)
            return "of --json, --tsv and --print0, only one can be chosen";
        if (options.header && options.chunkHeader)
            return "--header and --chunk-header do not go together";
        if (options.column != 1 && options.input != Input::Tsv)
            return "--column goes with --in=tsv only";
        return {};
    }

    bool hasTwins(std::vector<std::string> names)
    {
        std::sort(names.begin(), names.end());
        return std::adjacent_find(names.begin(), names.end()) != names.end();
    }

    std::string noSuchVerb(std::string_view word)
    {
        std::string known;
        std::vector<std::string_view> names;
        for (const BulkVerb& verb : bulk::allBulkVerbs()) {
            known.append(names.empty() ? "" : ", ").append(verb.name);
            names.push_back(verb.name);
        }
        return "no such verb here: " + text::excerpt(word) + "; there are " + known
               + suggestion(word, names);
    }

    void writeCounters(std::uint64_t records, std::uint64_t invalid, Output& output)
    {
        const auto counter = [](std::string_view name, std::uint64_t count) {
            return std::string("reporter:counter:iri,").append(name) + ',' + std::to_string(count)
                   + '\n';
        };
        output.writeToErrors(counter("records", records) + counter("invalid", invalid));
    }

} // namespace

ExitCode map(const Arguments& arguments, Output& output)
{
    Options options;
    const std::string details = detailsText();
    CommandLine commandLine("map", {EXAMPLES, USAGE, details});
    addOptions(commandLine, options);
    commandLine.endOptionsAtOperand();
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;
    if (const std::string_view conflict = conflictOf(options); !conflict.empty())
        return commandLine.refuse(conflict, output);

    const std::vector<Operand>& operands = commandLine.operands();
    if (operands.empty())
        return commandLine.refuse("a VERB is missing", output);
    const auto verbs = bulk::allBulkVerbs();
    const auto verb = std::find_if(verbs.begin(), verbs.end(), [&](const BulkVerb& each) {
        return each.name == operands.front().text;
    });
    if (verb == verbs.end())
        return commandLine.refuse(noSuchVerb(operands.front().text), output);
    Arguments words;
    for (std::size_t i = 1; i < operands.size(); ++i)
        words.push_back(operands[i].text);
    std::string why;
    std::unique_ptr<RowMaker> maker = verb->read(words, why);
    if (!maker)
        return commandLine.refuse(why, output);
    if (options.format() == RowFormat::Json && hasTwins(maker->columns()))
        return commandLine.refuse("--json: an object cannot have a field twice", output);

    system::catchInterrupts();
    bulk::Source source;
    std::optional<bulk::Progress> progress(source.remainingSize());
    bulk::Pieces pieces(source, options.separator(), options.chunkHeader);
    Mapper mapper(options, std::move(maker));
    if (options.header) {
        if (options.input == Input::Tsv)
            if (const std::optional<std::string> header = pieces.takeFirst())
                mapper.setHeader(*header);
        output.text().append(mapper.header());
    }

    Product sum;
    std::uint64_t size = 0;
    try {
        bulk::runInOrder(
            pieces, static_cast<unsigned>(options.jobs),
            [&](const std::string& piece) { return mapper.map(piece); },
            [&](const std::string& piece, const Product& product) {
                output.text().append(product.output);
                output.flush();
                sum.records += product.records;
                sum.invalid += product.invalid;
                size += piece.size();
                progress->show(sum.records, sum.invalid, size);
            });
    } catch (const bulk::BadChunkHeader& error) {
        output.reportError(error.what());
        return ExitCode::InputOutput;
    }
    progress.reset();
    output.flush();
    if (options.hadoopCounters)
        writeCounters(sum.records, sum.invalid, output);
    if (system::wasInterrupted())
        system::endAsInterrupted();
    return options.failOnInvalid && sum.invalid != 0 ? ExitCode::No : ExitCode::Yes;
}

} // namespace tool::verbs
