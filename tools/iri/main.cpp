#include "CommandLine.hpp"
#include "ExitCode.hpp"
#include "Nearest.hpp"
#include "Output.hpp"
#include "Reading.hpp"
#include "System.hpp"
#include "Text.hpp"
#include "Verbs.hpp"

#include <foundation/network/IdnConverter.hpp>

#include <array>
#include <new>
#include <string>
#include <string_view>
#include <system_error>
#include <vector>

namespace {

using tool::Arguments;
using tool::ExitCode;
using tool::Output;
using tool::Verb;

constexpr std::string_view VERSION = "iri " ZKFLNETWORK_VERSION "\n";

std::string helpText()
{
    std::string result = R"help(Examples:
  iri parse 'https://пример.example/путь/a%20b?q=1#часть'
  iri get host 'https://example.org/a?q'
  iri resolve --base='http://a.example/b/c' '../d?q'
  iri build --scheme=https --host=example.org --path=/a --pair=q=1
  iri check links.txt
  iri map get host <links.txt
  iri lookup example.org
  iri help parse

Usage: iri VERB [ARGUMENT...]

Verbs:
)help";
    constexpr std::size_t WIDTH = 12;
    const auto append = [&result](std::string_view name, std::string_view summary) {
        result.append("  ").append(name).append(WIDTH - name.size(), ' ').append(summary);
        result.push_back('\n');
    };
    for (const Verb& verb : tool::allVerbs())
        append(verb.name, verb.summary);
    append("help", tool::HELP_SUMMARY);
    result.append(R"help(
Options:
  -h, --help     this text
  -V, --version  the version of the program

)help");
    return result.append(tool::EXIT_CODES);
}

ExitCode refuse(std::string_view why, std::string_view word, std::string_view meant, Output& output)
{
    output.reportError(
        std::string(why).append(": ").append(tool::text::excerpt(word)).append(meant));
    output.reportError("see: iri --help");
    return ExitCode::Usage;
}

/// What to say of an IRI that stands where a verb belongs; empty if it is none, or has no scheme, so
/// that it may be anything.
std::string suggestionForIri(const std::string& word)
{
    const tool::Reading reading = tool::readIri(word);
    if (!reading.iri || !reading.iri->hasScheme())
        return "";
    // What a shell would read otherwise, or what is too long to be shown, is not repeated.
    const bool isPlain = word.find('\'') == std::string::npos && tool::text::excerpt(word) == word;
    return "; did you mean: iri parse " + (isPlain ? "'" + word + "'" : "IRI");
}

ExitCode refuseVerb(const std::string& word, Output& output)
{
    std::vector<std::string_view> names{"help"};
    for (const Verb& verb : tool::allVerbs())
        names.push_back(verb.name);
    const std::string meant = tool::suggestion(word, names);
    return refuse("no such verb", word, meant.empty() ? suggestionForIri(word) : meant, output);
}

ExitCode help(const Arguments& words, Output& output)
{
    const auto asksForThis = [](const std::string& word) {
        return word == "help" || word == "-h" || word == "--help";
    };
    if (words.empty() || asksForThis(words.front())) {
        output.text().append(helpText());
        return ExitCode::Yes;
    }
    const Verb* const verb = tool::findVerb(words.front());
    if (verb == nullptr)
        return refuseVerb(words.front(), output);
    return verb->run({"--help"}, output);
}

ExitCode run(const Arguments& words, Output& output)
{
    if (words.empty()) {
        output.writeToErrors(helpText());
        return ExitCode::Usage;
    }
    const std::string& first = words.front();
    const Arguments rest(words.begin() + 1, words.end());
    if (first == "help" || first == "-h" || first == "--help")
        return help(rest, output);
    if (first == "-V" || first == "--version") {
        output.text().append(VERSION);
        return ExitCode::Yes;
    }
    if (first.starts_with('-'))
        return refuse(
            "no such option", first,
            tool::suggestion(first, std::array<std::string_view, 2>{"--help", "--version"}),
            output);
    const Verb* const verb = tool::findVerb(first);
    if (verb == nullptr)
        return refuseVerb(first, output);
    try {
        return verb->run(rest, output);
    } catch (const foundation::network::IdnConverterException& failure) {
        output.reportError(failure.what());
        return ExitCode::System;
    }
}

} // namespace

int main(int count, char** words)
{
    Output output;
    ExitCode code = ExitCode::InputOutput;
    try {
        code = run(tool::system::arguments(count, words), output);
        output.flush();
    } catch (const std::system_error& error) {
        code = ExitCode::InputOutput;
        // Who closes the pipe has seen enough, and knows it.
        if (error.code() != std::errc::broken_pipe)
            output.reportFailure(error.what());
    } catch (const std::bad_alloc&) {
        code = ExitCode::InputOutput;
        output.reportFailure("not enough memory");
    }
    return static_cast<int>(code);
}
