#include "Completion.hpp"

#include "../Text.hpp"
#include "../completion/Tables.hpp"

#include <algorithm>
#include <iterator>
#include <optional>
#include <vector>

namespace tool::verbs {
namespace {

    constexpr std::string_view USAGE = "iri completion bash|zsh|fish";

    constexpr std::string_view EXAMPLES =
        R"help(  source <(iri completion bash)
  iri completion zsh >_iri
  iri completion fish >iri.fish
)help";

    constexpr std::string_view DETAILS =
        R"help(Prints a script from which a shell learns to complete the command lines of this
program: verbs, options, their values, fields and files. A packaged iri has
brought the scripts along. Otherwise:

  bash  read it in ~/.bashrc, as in the first example
  zsh   write it to a file _iri in a folder of $fpath, before compinit is called
  fish  write it to ~/.config/fish/completions/iri.fish
)help";

    constexpr Shell SHELLS[] = {
        {"bash", tool::completion::bashScript},
        {"zsh", tool::completion::zshScript},
        {"fish", tool::completion::fishScript},
    };

} // namespace

std::span<const Shell> allShells() noexcept
{
    return SHELLS;
}

ExitCode completion(const Arguments& arguments, Output& output)
{
    CommandLine commandLine("completion", {EXAMPLES, USAGE, DETAILS});
    if (const std::optional<ExitCode> end = commandLine.read(arguments, output))
        return *end;

    const std::vector<Operand>& operands = commandLine.operands();
    if (operands.size() != 1)
        return commandLine.refuse("name one shell: bash, zsh or fish", output);
    const std::string& name = operands.front().text;
    const auto* const shell = std::find_if(std::begin(SHELLS), std::end(SHELLS),
                                           [&](const Shell& each) { return each.name == name; });
    if (shell == std::end(SHELLS))
        return commandLine.refuse(
            "no such shell: " + text::excerpt(name) + "; there are bash, zsh and fish", output);
    output.text().append(shell->script());
    output.endRecord();
    return ExitCode::Yes;
}

} // namespace tool::verbs
