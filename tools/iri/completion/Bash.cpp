#include "Tables.hpp"

namespace tool::completion {
namespace {

    constexpr std::string_view BEGIN =
        R"sh(# Completion of iri for bash. Printed by: iri completion bash

# What may stand behind a verb, into the variables of the caller.
_iri_table()
{
    options='' valued='' operands='' qualifiers='' followers='' files='' many=''
    case $1 in
)sh";

    constexpr std::string_view MIDDLE = R"sh(    esac
}

# The values that an option of a verb may have.
_iri_values()
{
    case "$1 $2" in
)sh";

    constexpr std::string_view BEFORE_VERBS = R"sh(    esac
}

_iri()
{
    local options valued operands qualifiers followers files many
    local verb='' option='' ended='' candidates='' count=0 prefix='' separators='' i piece rest word
    local line=${COMP_LINE:0:COMP_POINT}
    local -a words=()

    # The words as they were typed: bash cuts them at "=" and ":" too.
    for ((i = 0; i <= COMP_CWORD; i++)); do
        rest=${line#"${line%%[![:blank:]]*}"}
        piece=${COMP_WORDS[i]}
        ((i < COMP_CWORD)) || piece=$rest
        if ((i == 0)) || [[ $rest != "$line" || -z $line ]]; then
            words+=("$piece")
        else
            words[${#words[@]} - 1]+=$piece
        fi
        line=${rest#"$piece"}
    done
    word=${words[${#words[@]} - 1]}

    if ((${#words[@]} <= 2)); then
        candidates=')sh";

    constexpr std::string_view END = R"sh('
        [[ $word != -* ]] || candidates='-h --help -V --version'
    else
        verb=${words[1]}
        _iri_table "$verb"
        for ((i = 2; i < ${#words[@]} - 1; i++)); do
            piece=${words[i]}
            if [[ -n $option ]]; then
                option=''
            elif [[ -z $ended && $piece == -- ]]; then
                ended=yes
            elif [[ -z $ended && $valued == *" $piece "* ]]; then
                option=$piece
            elif [[ -n $ended || $piece != -?* ]]; then
                if [[ $followers == *" $piece "* ]]; then
                    verb="$verb $piece"
                    _iri_table "$verb"
                else
                    ((count += 1))
                fi
            fi
        done

        if [[ -n $option ]]; then
            candidates=$(_iri_values "$verb" "$option")
        elif [[ -z $ended && $word == --*=* ]]; then
            for piece in $(_iri_values "$verb" "${word%%=*}"); do
                candidates+=" ${word%%=*}=$piece"
            done
        elif [[ -z $ended && $word == -* ]]; then
            candidates=$options
        elif [[ -n $files ]]; then
            compopt -o default
        elif ((count == 0)) || [[ -n $many ]]; then
            candidates=$operands
            if [[ $word == *:* ]]; then
                candidates=''
                for piece in $qualifiers; do
                    candidates+=" ${word%%:*}:$piece"
                done
            fi
        fi
    fi

    COMPREPLY=($(compgen -W "$candidates" -- "$word"))
    if [[ ${#COMPREPLY[@]} == 1 && ${COMPREPLY[0]} == *= ]]; then
        compopt -o nospace
    fi
    # What bash has cut off stays where it is.
    [[ $COMP_WORDBREAKS == *=* ]] && separators+='='
    [[ $COMP_WORDBREAKS == *:* ]] && separators+=':'
    if [[ -n $separators && $word == *["$separators"]* ]]; then
        prefix=${word%"${word##*["$separators"]}"}
        COMPREPLY=("${COMPREPLY[@]#"$prefix"}")
    fi
}

complete -F _iri iri
)sh";

    void appendTable(std::string& result, const std::string& verb, const Table& table)
    {
        std::string options;
        std::string valued;
        for (const OptionDescription& option : table.options) {
            for (const std::string& name : option.names) {
                const bool isValued = !option.placeholder.empty();
                const bool isLong = name.starts_with("--");
                options.append(options.empty() ? "" : " ").append(name);
                options.append(isValued && isLong ? "=" : "");
                if (isValued)
                    valued.append(" ").append(name);
            }
        }
        const auto assign = [&result](std::string_view variable, const std::string& words) {
            if (!words.empty())
                result.append("            ")
                    .append(variable)
                    .append("='")
                    .append(words)
                    .append("'\n");
        };
        result.append("        ").append(quoted(verb, "")).append(")\n");
        assign("options", options);
        assign("valued", valued.empty() ? "" : valued + " ");
        assign("operands", joined(table.operands));
        assign("qualifiers", joined(table.qualifiers));
        assign("followers", table.followers.empty()
                                ? ""
                                : std::string(" ").append(verbNames(table.followers)).append(" "));
        assign("files", table.takesFiles ? "yes" : "");
        assign("many", table.takesMany ? "yes" : "");
        result.append("            ;;\n");
        for (const Table& follower : table.followers)
            appendTable(result, verb + " " + follower.verb, follower);
    }

    void appendValues(std::string& result, const std::string& verb, const Table& table)
    {
        for (const OptionDescription& option : table.options) {
            if (option.values.empty())
                continue;
            std::string patterns;
            for (const std::string& name : option.names)
                patterns.append(patterns.empty() ? "" : " | ")
                    .append(quoted(std::string(verb).append(" ").append(name), ""));
            result.append("        ").append(patterns).append(") echo ");
            result.append(quoted(joined(option.values), "")).append(" ;;\n");
        }
        for (const Table& follower : table.followers)
            appendValues(result, verb + " " + follower.verb, follower);
    }

} // namespace

std::string bashScript()
{
    const std::vector<Table> tables = allTables();
    std::string result(BEGIN);
    for (const Table& table : tables)
        appendTable(result, table.verb, table);
    result.append(MIDDLE);
    for (const Table& table : tables)
        appendValues(result, table.verb, table);
    return result.append(BEFORE_VERBS).append(verbNames(tables)).append(END);
}

} // namespace tool::completion
