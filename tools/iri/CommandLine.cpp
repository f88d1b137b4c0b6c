#include "CommandLine.hpp"

#include "HelpLayout.hpp"
#include "Nearest.hpp"
#include "Text.hpp"

#include <CLI/CLI.hpp>

#include <algorithm>
#include <charconv>
#include <iterator>
#include <limits>

namespace tool {
namespace {

    // An option may have two names, as in "-f,--format".
    bool isNameOf(std::string_view name, std::string_view names) noexcept
    {
        const std::size_t comma = names.find(',');
        return name == names.substr(0, comma)
               || (comma != std::string_view::npos && name == names.substr(comma + 1));
    }

    // The one by which messages call it.
    std::string longName(std::string_view names)
    {
        return std::string(names.substr(names.rfind(',') + 1));
    }

    constexpr std::uint64_t NO_LIMIT = std::numeric_limits<std::uint64_t>::max();

    // Where no number is too large for its use, the largest that is read is no news to anyone.
    std::string rangeName(std::uint64_t least, std::uint64_t most)
    {
        if (most == NO_LIMIT)
            return "a whole number of at least " + std::to_string(least);
        return "a number from " + std::to_string(least) + " to " + std::to_string(most);
    }

    std::string joined(const std::vector<std::string>& names)
    {
        std::string result;
        for (const std::string& name : names)
            result.append(result.empty() ? "" : ", ").append(name);
        return result;
    }

} // namespace

CommandLine::CommandLine(std::string verb, Help help)
    : verb_(std::move(verb))
    , help_(help)
    , app_(std::make_unique<CLI::App>("", verb_))
{
    app_->set_help_flag("-h,--help");
    // An IRI may begin with "/" everywhere.
    app_->allow_windows_style_options(false);
    // Operands are no option of the parser's: it would take "[a,b]" for a list.
    app_->allow_extras();
}

CommandLine::~CommandLine() = default;

void CommandLine::addFlag(const std::string& name, bool& target, std::string help)
{
    app_->add_flag(name, target);
    flags_.push_back(name);
    optionHelps_.push_back({name, std::move(help)});
}

void CommandLine::addText(const std::string& name, const std::string& placeholder, std::string help,
                          std::function<std::string(std::string)> take)
{
    optionHelps_.push_back({name + "=" + placeholder, std::move(help)});
    textOptions_.push_back({name, std::move(take)});
}

void CommandLine::addText(const std::string& name, const std::string& placeholder, std::string help,
                          std::optional<std::string>& target)
{
    addText(name, placeholder, std::move(help), [&target](std::string value) {
        target = std::move(value);
        return std::string();
    });
}

void CommandLine::addNumber(const std::string& name, const std::string& placeholder,
                            std::string help, std::uint64_t least, std::uint64_t most,
                            std::uint64_t& target)
{
    optionHelps_.push_back({name + "=" + placeholder, std::move(help)});
    const auto read = [name, least, most, &target](const std::string& value) {
        std::uint64_t number = 0;
        const char* const end = value.data() + value.size();
        const auto [stop, error] = std::from_chars(value.data(), end, number);
        const bool isTooLarge =
            error == std::errc::result_out_of_range && stop == end && most == NO_LIMIT;
        if (error != std::errc() || stop != end || number < least || number > most)
            throw CLI::ValidationError(
                longName(name),
                (isTooLarge ? "too large a number: " : "not " + rangeName(least, most) + ": ")
                    + text::excerpt(value));
        target = number;
    };
    app_->add_option_function<std::string>(name, read)
        ->type_name(placeholder)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

void CommandLine::addCheck(std::function<std::string_view()> check)
{
    checks_.push_back(std::move(check));
}

void CommandLine::endOptionsAtOperand()
{
    endsAtOperand_ = true;
    app_->prefix_command();
}

void CommandLine::addChoiceByIndex(const std::string& name, const std::string& placeholder,
                                   std::vector<std::string> names, const std::string& help,
                                   std::function<void(std::size_t)> choose)
{
    optionHelps_.push_back({name + "=" + placeholder, help, names});
    const auto read = [name, names = std::move(names),
                       choose = std::move(choose)](const std::string& value) {
        const auto found = std::find(names.begin(), names.end(), value);
        if (found == names.end())
            throw CLI::ValidationError(
                name,
                "not one of " + joined(names) + ": " + text::excerpt(value)
                    + suggestion(value, std::vector<std::string_view>(names.begin(), names.end())));
        choose(static_cast<std::size_t>(std::distance(names.begin(), found)));
    };
    app_->add_option_function<std::string>(name, read)
        ->type_name(placeholder)
        ->multi_option_policy(CLI::MultiOptionPolicy::TakeLast);
}

std::optional<ExitCode> CommandLine::read(const Arguments& arguments, Output& output)
{
    if (arguments.size() == 1 && arguments.front() == QUESTION)
        throw OptionDescriptions(describeOptions());

    // Options with any text are no options of the parser's either: it would not take an empty value
    // behind "=", and it forgets in which order different options came.
    Arguments others;
    std::vector<std::pair<const TextOption*, std::string>> values;
    auto word = arguments.begin();
    for (; word != arguments.end() && (*word != "--" || endsAtOperand_); ++word) {
        const std::size_t equals = word->find('=');
        const std::string name = word->substr(0, equals);
        // The parser would take "=false" for the contrary of what a flag says.
        if (equals != std::string::npos
            && std::any_of(flags_.begin(), flags_.end(),
                           [&](const std::string& names) { return isNameOf(name, names); }))
            return refuse(name + ": it takes no value", output);
        const TextOption* const option = findTextOption(name);
        if (option == nullptr) {
            others.push_back(*word);
        } else if (equals != std::string::npos) {
            values.emplace_back(option, word->substr(equals + 1));
        } else if (std::next(word) == arguments.end()) {
            return refuse(longName(option->name) + ": the value is missing", output);
        } else {
            values.emplace_back(option, *++word);
        }
    }

    try {
        // The parser takes its arguments from the back.
        app_->parse(Arguments(others.rbegin(), others.rend()));
    } catch (const CLI::CallForHelp&) {
        output.text().append(helpText());
        output.endRecord();
        return ExitCode::Yes;
    } catch (const CLI::ValidationError& error) {
        return refuse(error.what(), output); // our own words
    } catch (const CLI::ArgumentMismatch& error) {
        const std::string_view what = error.what();
        return refuse(std::string(what.substr(0, what.find(':'))) + ": the value is missing",
                      output);
    } catch (const CLI::ParseError& error) {
        return refuse(text::excerpt(error.what()), output);
    }

    for (std::string& text : app_->remaining()) {
        if (endsAtOperand_ && !operands_.empty()) {
            operands_.push_back({std::move(text), true});
            continue;
        }
        if (endsAtOperand_ && text == "--")
            continue; // the verb behind it is an operand anyway
        if (text.size() > 1 && text.front() == '-')
            return refuse(noSuchOption(text), output);
        operands_.push_back({std::move(text), false});
    }
    if (word != arguments.end())
        for (++word; word != arguments.end(); ++word)
            operands_.push_back({*word, true});

    for (auto& [option, value] : values)
        if (const std::string problem = option->take(std::move(value)); !problem.empty())
            return refuse(longName(option->name) + ": " + problem, output);
    for (const auto& check : checks_)
        if (const std::string_view problem = check(); !problem.empty())
            return refuse(problem, output);
    return std::nullopt;
}

const CommandLine::TextOption* CommandLine::findTextOption(std::string_view name) const noexcept
{
    const auto found =
        std::find_if(textOptions_.begin(), textOptions_.end(),
                     [name](const TextOption& option) { return isNameOf(name, option.name); });
    return found == textOptions_.end() ? nullptr : &*found;
}

std::string CommandLine::noSuchOption(std::string_view word) const
{
    std::vector<std::string_view> names{"--help"};
    for (const OptionHelp& help : optionHelps_) {
        const std::string_view option = help.option;
        const std::string_view optionNames = option.substr(0, option.find('='));
        names.push_back(optionNames.substr(optionNames.rfind(',') + 1));
    }
    const std::string meant = suggestion(word.substr(0, word.find('=')), names);
    return "no such option: " + text::excerpt(word)
           + (meant.empty() ? R"(; what is none but begins with "-" goes behind "--")" : meant);
}

ExitCode CommandLine::refuse(std::string_view why, Output& output) const
{
    output.reportError(why);
    output.reportError("see: iri " + verb_ + " --help");
    return ExitCode::Usage;
}

std::vector<CommandLine::OptionHelp> CommandLine::allOptionHelps() const
{
    std::vector<OptionHelp> options = optionHelps_;
    options.push_back({"-h,--help", "this text"});
    return options;
}

std::vector<OptionDescription> CommandLine::describeOptions() const
{
    std::vector<OptionDescription> result;
    for (const OptionHelp& help : allOptionHelps()) {
        const std::size_t equals = help.option.find('=');
        OptionDescription option{{}, {}, help.values, help.text};
        if (equals != std::string::npos)
            option.placeholder = help.option.substr(equals + 1);
        const std::string names = help.option.substr(0, equals);
        const std::size_t comma = names.find(',');
        option.names.push_back(names.substr(0, comma));
        if (comma != std::string::npos)
            option.names.push_back(names.substr(comma + 1));
        result.push_back(std::move(option));
    }
    return result;
}

std::string CommandLine::helpText() const
{
    constexpr std::size_t MARGIN = 2;

    std::vector<OptionHelp> options = allOptionHelps();
    std::size_t width = 0;
    for (OptionHelp& option : options) {
        if (const std::size_t comma = option.option.find(','); comma != std::string::npos)
            option.option.insert(comma + 1, " ");
        width = std::max(width, option.option.size() + MARGIN);
    }

    std::string result = "Examples:\n";
    result.append(help_.examples);
    result.append("\nUsage: ").append(help_.usage).append("\n\n");
    help::appendParagraphs(result, help_.details);
    result.append("\nOptions:\n");
    for (const auto& [option, text, values] : options) {
        result.append(MARGIN, ' ').append(option).append(width - option.size(), ' ');
        const std::size_t column = MARGIN + width;
        std::string_view rest = text;
        for (;;) {
            const std::size_t end = std::min(rest.find('\n'), rest.size());
            help::appendWrapped(result, rest.substr(0, end), column, column);
            if (end == rest.size())
                break;
            result.append("\n").append(column, ' ');
            rest.remove_prefix(end + 1);
        }
        result.push_back('\n');
    }
    return result.append("\n").append(EXIT_CODES);
}

} // namespace tool
