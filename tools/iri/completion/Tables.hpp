#pragma once

#include "../CommandLine.hpp"

#include <string>
#include <string_view>
#include <vector>

/// What completes command lines in the shells. It has no tables of its own: all is asked of the
/// verbs.
namespace tool::completion {

/// What may stand behind a verb.
struct Table {
    std::string verb;
    std::string summary;
    std::vector<OptionDescription> options{};
    std::vector<std::string> operands{};   ///< what they may be; empty, if that can be anything
    std::vector<std::string> qualifiers{}; ///< what an operand may have behind a colon
    std::vector<Table> followers{};        ///< of what the first operand may be, if it is a verb
    bool takesFiles = false;               ///< whether operands are files
    bool takesMany = false;                ///< whether `operands` is for more than the first
};

/// The tables of all verbs, in the order of the help, and last that of `help`.
std::vector<Table> allTables();

/// The names of verbs, with spaces between.
std::string verbNames(const std::vector<Table>& tables);

/// The words, with spaces between.
std::string joined(const std::vector<std::string>& words);

/// What an option does, in a few words.
std::string summaryOf(const OptionDescription& option);

/// A text between apostrophes, with @p apostrophe for each that is in it.
std::string quoted(std::string_view text, std::string_view apostrophe);

/// The scripts.
std::string bashScript();
std::string fishScript();
std::string zshScript();

} // namespace tool::completion
