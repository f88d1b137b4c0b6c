#pragma once

#include "ExitCode.hpp"
#include "Output.hpp"

#include <cstddef>
#include <cstdint>
#include <exception>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace CLI {
class App;
}

namespace tool {

/// The words of a command line behind the verb.
using Arguments = std::vector<std::string>;

/// A word of the command line that is no option.
struct Operand {
    std::string text;
    bool isVerbatim; ///< it stood behind "--": not even "-" means anything else than itself
};

/// An option, for those who tell of it elsewhere than in the help.
struct OptionDescription {
    std::vector<std::string> names;  ///< "-f" and "--format"
    std::string placeholder;         ///< what the help calls its value; empty, if it takes none
    std::vector<std::string> values; ///< all that it may have, if they have names
    std::string help;                ///< as in the help, lines
};

/// Thrown to answer `CommandLine::QUESTION`: the options of a verb, in the order of its help.
class OptionDescriptions : public std::exception {
public:
    explicit OptionDescriptions(std::vector<OptionDescription> options)
        : options_(std::move(options))
    {
    }

    const char* what() const noexcept override { return "the options of a verb"; }
    const std::vector<OptionDescription>& options() const noexcept { return options_; }

private:
    std::vector<OptionDescription> options_;
};

/// The options of one verb, and its help.
class CommandLine {
public:
    /// The texts of the help, which has no other source but these and the options' own.
    struct Help {
        std::string_view examples; ///< lines; this is what it begins with
        std::string_view usage;    ///< one line
        std::string_view details;  ///< lines
    };

    /// The argument that asks for the options of a verb. Nobody can type it, since it is a NUL.
    static constexpr std::string_view QUESTION{"\0", 1};

    CommandLine(std::string verb, Help help);
    CommandLine(const CommandLine&) = delete;
    CommandLine& operator=(const CommandLine&) = delete;
    ~CommandLine();

    /// Adds an option without a value, which sets @p target.
    void addFlag(const std::string& name, bool& target, std::string help);

    /// Adds an option whose value is any text, the empty one too. It may stand there any number of
    /// times: @p take gets the values of all such options in the order of the command line, and
    /// answers what is wrong with one, or nothing.
    void addText(const std::string& name, const std::string& placeholder, std::string help,
                 std::function<std::string(std::string value)> take);

    /// As above, for an option of which the last value counts.
    void addText(const std::string& name, const std::string& placeholder, std::string help,
                 std::optional<std::string>& target);

    /// Adds an option whose value is one of some names; if it stands there twice, the last counts.
    template <class Value>
    void addChoice(const std::string& name, const std::string& placeholder,
                   std::vector<std::pair<std::string, Value>> values, Value& target,
                   const std::string& help)
    {
        std::vector<std::string> names;
        names.reserve(values.size());
        for (const auto& [valueName, value] : values)
            names.push_back(valueName);
        addChoiceByIndex(name, placeholder, std::move(names), help,
                         [values = std::move(values), &target](std::size_t index) {
                             target = values[index].second;
                         });
    }

    /// Adds an option whose value is a number in a range; if it stands there twice, the last counts.
    void addNumber(const std::string& name, const std::string& placeholder, std::string help,
                   std::uint64_t least, std::uint64_t most, std::uint64_t& target);

    /// Adds a question that is asked once all options were read: what makes no sense about them
    /// together. The answer is empty if all does.
    void addCheck(std::function<std::string_view()> check);

    /// From now on, the first word that is no option ends the options: it and all words behind it are
    /// operands. Options with any text (`addText`) do not go with this.
    void endOptionsAtOperand();

    /// Reads the arguments; what follows "--" is operands.
    /// @returns with what code to end now, because help was asked for, or what was asked for makes
    ///          no sense; nothing, if the verb is to do its work
    /// @throws OptionDescriptions, if that is the `QUESTION`
    std::optional<ExitCode> read(const Arguments& arguments, Output& output);

    /// What is left beside the options, in order.
    const std::vector<Operand>& operands() const noexcept { return operands_; }

    /// Says that the command line makes no sense.
    /// @returns with what code to end
    ExitCode refuse(std::string_view why, Output& output) const;

private:
    struct OptionHelp {
        std::string option;
        std::string text;
        std::vector<std::string> values{};
    };

    /// Says that an option is none, and what it may have been meant to be.
    std::string noSuchOption(std::string_view word) const;

    struct TextOption {
        std::string name;
        std::function<std::string(std::string)> take;
    };

    void addChoiceByIndex(const std::string& name, const std::string& placeholder,
                          std::vector<std::string> names, const std::string& help,
                          std::function<void(std::size_t)> choose);
    const TextOption* findTextOption(std::string_view name) const noexcept;
    std::string helpText() const;
    std::vector<OptionHelp> allOptionHelps() const;
    std::vector<OptionDescription> describeOptions() const;

    std::string verb_;
    Help help_;
    std::vector<OptionHelp> optionHelps_;
    std::vector<TextOption> textOptions_;
    std::vector<std::string> flags_;
    std::vector<std::function<std::string_view()>> checks_;
    std::unique_ptr<CLI::App> app_;
    std::vector<Operand> operands_;
    bool endsAtOperand_ = false;
};

} // namespace tool
