#pragma once

#include "iri/CodingTables.hpp"

#include <optional>
#include <string>

/// A second, slow percent coding: each step makes a whole text, and the conversions put the steps
/// together one after the other, as their descriptions do.
namespace foundation::network::iri::naive {

using Text = std::u32string;
using MaybeText = std::optional<Text>;

enum class Component { UserInfo, Host, Path, Query, Fragment };

struct Context {
    bool schemePresent = false;
    bool userInfoPresent = false;
    bool hostPresent = false;
    bool formEncoded = false;
};

bool isAsciiHexDigit(char32_t c);
bool isPrivateUse(char32_t c);
bool isForbidden(char32_t c);

/// The escapes of the bytes of one character. @throws as the library does above U+10FFFF
Text escaped(char32_t c);

Text protectEscapes(const Text& text);
Text applyTable(const Text& text, const Table& table);
Text escapePrivateUse(const Text& text);
Text escapeForbidden(const Text& text);
Text encodeNonAscii(const Text& text);
MaybeText decodeEscapes(const Text& text, std::u32string_view keep);
Text fixEscapes(const Text& text, bool escapeBrackets);

struct Repaired {
    std::string bytes;
    bool repaired;
};

Repaired repairUtf8(const std::string& bytes);

MaybeText decodedToIri(Component component, const Text& text, const Context& context);
MaybeText iriToAscii(Component component, const Text& text, const Context& context);
MaybeText decodedToAscii(Component component, const Text& text, const Context& context);
MaybeText iriToDecoded(Component component, const Text& text, const Context& context);
MaybeText asciiToIri(Component component, const Text& text, const Context& context);
MaybeText asciiToDecoded(Component component, const Text& text, const Context& context);

} // namespace foundation::network::iri::naive
