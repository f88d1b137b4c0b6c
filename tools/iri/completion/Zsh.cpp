#include "Tables.hpp"

namespace tool::completion {
namespace {

    constexpr std::string_view BEGIN = R"sh(#compdef iri
# Completion of iri for zsh. Printed by: iri completion zsh

# _iri_qualified QUALIFIER... -- WORD...: one of the words, with a colon and a qualifier behind it.
_iri_qualified()
{
    local -a qualifiers=("${(@)argv[1,${argv[(i)--]}-1]}")
    local -a names=("${(@)argv[${argv[(i)--]}+1,-1]}")
    if compset -P '*:'; then
        compadd -- $qualifiers
    else
        compadd -- $names
    fi
}

# For arguments that can be anything. A message instead would keep options from being completed.
_iri_nothing()
{
    return 1
}

_iri()
{
    local curcontext="$curcontext" state line ret=1
    local -A opt_args
    local -a verbs

    _arguments -C -S \
        '(- *)'{-h,--help}'[this text]' \
        '(- *)'{-V,--version}'[the version of the program]' \
        '1:verb:->verb' \
        '*::argument:->argument' && ret=0

    case $state in
        (verb)
            verbs=(
)sh";

    constexpr std::string_view BEHIND_VERBS = R"sh(            )
            _describe -t verbs verb verbs && ret=0
            ;;
        (argument)
            curcontext="${curcontext%:*:*}:iri-$words[1]:"
            case $words[1] in
)sh";

    constexpr std::string_view END = R"sh(            esac
            ;;
    esac
    return ret
}

# Either zsh loads this file as the function, or somebody reads it as a script.
if [[ $funcstack[1] == _iri ]]; then
    _iri "$@"
else
    compdef _iri iri
fi
)sh";

    constexpr std::string_view APOSTROPHE = R"('\'')";

    /// A text between the brackets of an entry of _arguments.
    std::string bracketed(std::string_view text)
    {
        std::string result = "[";
        for (const char c : text) {
            if (c == '[' || c == ']' || c == '\\')
                result.push_back('\\');
            result.push_back(c);
        }
        return result.append("]");
    }

    /// The words as one of zsh's lists, "(a b)".
    std::string listed(const std::vector<std::string>& words)
    {
        std::string result = "(";
        return result.append(joined(words)).append(")");
    }

    void appendOption(std::string& result, std::string_view margin, const OptionDescription& option)
    {
        const bool isValued = !option.placeholder.empty();
        for (const std::string& name : option.names) {
            // What takes a value may stand there again, for another one.
            std::string text = isValued                   ? "*"
                               : option.names.size() == 1 ? ""
                                                          : listed(option.names);
            text.append(name).append(isValued && name.starts_with("--") ? "=" : "");
            text.append(bracketed(summaryOf(option)));
            if (isValued) {
                text.append(":").append(option.placeholder).append(":");
                // Values that end so want something behind them, and not a space.
                const bool isOpen = !option.values.empty() && option.values.front().ends_with('=');
                text.append(option.values.empty() ? " "
                            : isOpen              ? "compadd -S \"\" -- " + joined(option.values)
                                                  : listed(option.values));
            }
            result.append(" \\\n").append(margin).append(quoted(text, APOSTROPHE));
        }
    }

    void appendTable(std::string& result, std::string margin, const Table& table)
    {
        result.append(margin).append("(").append(table.verb).append(")\n");
        margin.append("    ");
        const std::string deeper = margin + "    ";
        result.append(margin).append(table.followers.empty() ? "_arguments -S"
                                                             : "_arguments -C -S");
        for (const OptionDescription& option : table.options)
            appendOption(result, deeper, option);

        std::string operand = table.takesMany || table.takesFiles ? "*" : "1";
        operand.append(":argument:");
        if (table.takesFiles)
            operand.append("_files");
        else if (!table.qualifiers.empty())
            operand.append(" _iri_qualified ")
                .append(joined(table.qualifiers))
                .append(" -- ")
                .append(joined(table.operands));
        else if (!table.operands.empty())
            operand.append("(").append(joined(table.operands)).append(")");
        else
            operand = "*:argument:_iri_nothing";
        result.append(" \\\n").append(deeper).append(quoted(operand, APOSTROPHE));
        if (!table.followers.empty())
            result.append(" \\\n").append(deeper).append("'*::argument:->behind'");
        else if (!table.takesMany && !table.takesFiles && !table.operands.empty())
            result.append(" \\\n").append(deeper).append("'*:argument:_iri_nothing'");
        result.append(" && ret=0\n");

        if (!table.followers.empty()) {
            result.append(margin).append("[[ $state == behind ]] && case $words[1] in\n");
            for (const Table& follower : table.followers)
                appendTable(result, deeper, follower);
            result.append(margin).append("esac\n");
        }
        result.append(margin).append(";;\n");
    }

} // namespace

std::string zshScript()
{
    const std::vector<Table> tables = allTables();
    std::string result(BEGIN);
    for (const Table& table : tables)
        result.append("                ")
            .append(quoted(table.verb + ":" + table.summary, APOSTROPHE))
            .append("\n");
    result.append(BEHIND_VERBS);
    for (const Table& table : tables)
        appendTable(result, "                ", table);
    return result.append(END);
}

} // namespace tool::completion
