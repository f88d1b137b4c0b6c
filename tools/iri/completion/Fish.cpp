#include "Tables.hpp"

namespace tool::completion {
namespace {

    constexpr std::string_view BEGIN =
        R"sh(# Completion of iri for fish. Printed by: iri completion fish

# The words before the cursor that are no options: iri, the verb, and what stands behind it.
function __iri_words
    string match -v -- '-*' (commandline -opc)
end

# Whether these are the first words behind iri.
function __iri_is
    set -l words (__iri_words)
    string match -q -- "iri $argv *" "$words "
end

# Whether these are all words behind iri.
function __iri_ends
    set -l words (__iri_words)
    test "$words" = (string trim -- "iri $argv")
end

complete -c iri -f
complete -c iri -n __iri_ends -s h -l help -d 'this text'
complete -c iri -n __iri_ends -s V -l version -d 'the version of the program'
)sh";

    /// A text of the script.
    std::string quotedText(std::string_view text)
    {
        std::string escaped;
        for (const char c : text) {
            if (c == '\\')
                escaped.push_back('\\');
            escaped.push_back(c);
        }
        return quoted(escaped, "\\'");
    }

    void appendTable(std::string& result, const std::string& place, const Table& table)
    {
        const std::string behind = place + table.verb;
        const std::string ends = "complete -c iri -n '__iri_ends " + behind + "'";
        const std::string is = "complete -c iri -n '__iri_is " + behind + "'";
        for (const OptionDescription& option : table.options) {
            // Behind another verb stand the options of that one.
            result.append(table.followers.empty() ? is : ends);
            for (const std::string& name : option.names)
                result.append(name.starts_with("--") ? " -l " + name.substr(2)
                                                     : " -s " + name.substr(1));
            if (!option.placeholder.empty())
                result.append(" -x");
            if (!option.values.empty())
                result.append(" -a ").append(quotedText(joined(option.values)));
            result.append(" -d ").append(quotedText(summaryOf(option))).push_back('\n');
        }
        if (table.takesFiles)
            result.append(is).append(" -F\n");
        const std::string& operand = table.takesMany ? is : ends;
        if (table.followers.empty() && !table.operands.empty())
            result.append(operand)
                .append(" -a ")
                .append(quotedText(joined(table.operands)))
                .append("\n");
        if (!table.qualifiers.empty()) {
            // These come up once the colon is there.
            result.append(operand).append(
                R"( -a '(string match -r "^[^:]*:" -- (commandline -ct)){)");
            for (const std::string& qualifier : table.qualifiers)
                result.append(&qualifier == &table.qualifiers.front() ? "" : ",").append(qualifier);
            result.append("}'\n");
        }
        for (const Table& follower : table.followers) {
            result.append(ends).append(" -a ").append(follower.verb).append(" -d ");
            result.append(quotedText(follower.summary)).push_back('\n');
            appendTable(result, behind + " ", follower);
        }
    }

} // namespace

std::string fishScript()
{
    std::string result(BEGIN);
    for (const Table& table : allTables()) {
        result.append("\ncomplete -c iri -n __iri_ends -a ").append(table.verb).append(" -d ");
        result.append(quotedText(table.summary)).push_back('\n');
        appendTable(result, "", table);
    }
    return result;
}

} // namespace tool::completion
