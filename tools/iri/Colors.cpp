#include "Colors.hpp"

#include "System.hpp"

#include <cstdlib>

namespace tool {
namespace {

    /// Whether a person looks at the output who wants to see colours.
    bool areWelcome()
    {
        // https://no-color.org: the variable counts if it is not empty, whatever it holds.
        const char* const refusal = std::getenv("NO_COLOR"); // NOLINT(concurrency-mt-unsafe)
        return (refusal == nullptr || *refusal == '\0')
               && system::isTerminal(system::Stream::Output) && system::terminalHasColors();
    }

    // Of the sixteen colours, which every terminal has and whose user has made legible on his own
    // background. Plain black, white and grey are left out, since one of them is the background.
    // There are six others; the host, where one looks first, is bold.
    std::string_view codeOf(Ink ink) noexcept
    {
        switch (ink) {
        case Ink::Scheme:
            return "\x1B[35m";
        case Ink::UserInfo:
            return "\x1B[33m";
        case Ink::Host:
        case Ink::Name:
            return "\x1B[1m";
        case Ink::Port:
            return "\x1B[31m";
        case Ink::Path:
        case Ink::Good:
            return "\x1B[32m";
        case Ink::Query:
        case Ink::Address:
            return "\x1B[36m";
        case Ink::Fragment:
            return "\x1B[94m"; // bright: the plain blue of old terminals is lost on black
        case Ink::Aside:
            return "\x1B[2m";
        case Ink::Plain:
            return "";
        case Ink::Failure:
            break;
        }
        return "\x1B[1;31m";
    }

} // namespace

void addColorOption(CommandLine& commandLine, ColorMode& target)
{
    commandLine.addChoice<ColorMode>(
        "--color", "WHEN",
        {{"auto", ColorMode::Auto}, {"always", ColorMode::Always}, {"never", ColorMode::Never}},
        target,
        "colour the text: auto, always or never. By default auto: on\n"
        "a terminal, unless NO_COLOR is set or TERM is dumb");
}

Colors::Colors(ColorMode mode)
    : areOn_(mode == ColorMode::Always || (mode == ColorMode::Auto && areWelcome()))
{
}

void Colors::append(std::string& result, Ink ink, std::string_view text) const
{
    if (areOn_ && ink != Ink::Plain && !text.empty())
        result.append(codeOf(ink)).append(text).append("\x1B[0m");
    else
        result.append(text);
}

} // namespace tool
