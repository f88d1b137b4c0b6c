#include "Tables.hpp"

#include "../Components.hpp"
#include "../Verbs.hpp"
#include "../bulk/Fields.hpp"
#include "../bulk/Makers.hpp"
#include "../verbs/Completion.hpp"

#include <algorithm>
#include <cstddef>
#include <iterator>

namespace tool::completion {
namespace {

    using Words = std::vector<std::string>;

    /// The parts of a list that was written for people.
    Words split(std::string_view list)
    {
        constexpr std::string_view COMMA = ", ";
        Words result;
        for (;;) {
            const std::size_t comma = list.find(COMMA);
            result.emplace_back(list.substr(0, comma));
            if (comma == std::string_view::npos)
                return result;
            list.remove_prefix(comma + COMMA.size());
        }
    }

    template <class Range>
    Words namesOf(const Range& named)
    {
        Words result;
        for (const auto& each : named)
            result.emplace_back(each.name);
        return result;
    }

    /// What the value of an option begins with, if what the help calls it says that.
    Words valuesOf(std::string_view placeholder)
    {
        Words result;
        if (!placeholder.starts_with("NAME"))
            return result;
        for (const PartName& part : PART_NAMES)
            result.push_back(std::string(part.word).append(placeholder == "NAME" ? "" : "="));
        return result;
    }

    std::vector<OptionDescription> optionsOf(const Verb& verb)
    {
        Output nowhere;
        std::vector<OptionDescription> result;
        try {
            verb.run({std::string(CommandLine::QUESTION)}, nowhere);
        } catch (const OptionDescriptions& answer) {
            result = answer.options();
        }
        for (OptionDescription& option : result)
            if (option.values.empty())
                option.values = valuesOf(option.placeholder);
        return result;
    }

    /// The forms that the table of "parse" knows.
    Words formsOf(const std::vector<Table>& tables)
    {
        for (const Table& table : tables)
            for (const OptionDescription& option : table.options)
                if (table.verb == "parse" && option.placeholder == "FORM")
                    return option.values;
        return {};
    }

    /// What may stand behind a verb that stands behind "map": the options that its help there names.
    Table followerOf(const bulk::BulkVerb& verb, const std::vector<Table>& tables)
    {
        Table result{std::string(verb.name), std::string(verb.summary)};
        const auto whole = std::find_if(tables.begin(), tables.end(),
                                        [&](const Table& each) { return each.verb == verb.name; });
        if (whole == tables.end())
            return result;
        for (const OptionDescription& option : whole->options) {
            OptionDescription kept = option;
            kept.names.clear();
            for (const std::string& name : option.names)
                if (verb.arguments.find(name + (name.starts_with("--") ? "=" : " "))
                    != std::string_view::npos)
                    kept.names.push_back(name);
            if (!kept.names.empty())
                result.options.push_back(std::move(kept));
        }
        if (verb.arguments.starts_with("FIELD")) {
            result.operands = whole->operands;
            result.qualifiers = whole->qualifiers;
            result.takesMany = true;
        }
        return result;
    }

    void addOperands(std::vector<Table>& tables)
    {
        for (Table& table : tables) {
            if (table.verb == "get") {
                table.operands = split(bulk::fieldNames());
                table.qualifiers = formsOf(tables);
            } else if (table.verb == "check") {
                table.takesFiles = true;
            } else if (table.verb == "completion") {
                table.operands = namesOf(verbs::allShells());
            } else if (table.verb == "map") {
                table.operands = namesOf(bulk::allBulkVerbs());
                for (const bulk::BulkVerb& verb : bulk::allBulkVerbs())
                    table.followers.push_back(followerOf(verb, tables));
            }
        }
    }

} // namespace

std::vector<Table> allTables()
{
    std::vector<Table> result;
    for (const Verb& verb : allVerbs())
        result.push_back({std::string(verb.name), std::string(verb.summary), optionsOf(verb)});
    addOperands(result);

    Table help{"help", std::string(HELP_SUMMARY)};
    help.operands = namesOf(allVerbs());
    result.push_back(std::move(help));
    return result;
}

std::string verbNames(const std::vector<Table>& tables)
{
    Words names;
    std::transform(tables.begin(), tables.end(), std::back_inserter(names),
                   [](const Table& table) { return table.verb; });
    return joined(names);
}

std::string joined(const std::vector<std::string>& words)
{
    std::string result;
    for (const std::string& word : words)
        result.append(result.empty() ? "" : " ").append(word);
    return result;
}

std::string summaryOf(const OptionDescription& option)
{
    std::string result = option.help;
    std::replace(result.begin(), result.end(), '\n', ' ');
    for (const std::string_view end : {": ", "; ", ". "})
        result.resize(std::min(result.size(), result.find(end)));
    return result;
}

std::string quoted(std::string_view text, std::string_view apostrophe)
{
    std::string result = "'";
    for (const char c : text)
        if (c == '\'')
            result.append(apostrophe);
        else
            result.push_back(c);
    result.push_back('\'');
    return result;
}

} // namespace tool::completion
