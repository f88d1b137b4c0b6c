#pragma once

#include "CommandLine.hpp"

#include <string>
#include <string_view>

namespace tool {

/// When to colour: if a person looks at it, in any case, or never.
enum class ColorMode { Auto, Always, Never };

/// Adds the option that chooses when to colour.
void addColorOption(CommandLine& commandLine, ColorMode& target);

/// What a text is. The components of an IRI have each a colour of its own.
enum class Ink {
    Scheme,
    UserInfo,
    Host,
    Port,
    Path,
    Query,
    Fragment,
    Name,    ///< of an adapter or a host
    Address, ///< of either kind
    Good,    ///< in working order
    Plain,   ///< without a colour
    Aside,
    Failure,
};

/// Writes text in colour, or without.
class Colors {
public:
    /// `ColorMode::Auto` colours what goes to a terminal, unless TERM says that it cannot show it,
    /// or NO_COLOR, if it is not empty, that nobody wants it.
    explicit Colors(ColorMode mode);

    /// Appends @p text, which is printable.
    void append(std::string& result, Ink ink, std::string_view text) const;

private:
    bool areOn_;
};

} // namespace tool
