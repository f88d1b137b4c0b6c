#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// A second, independent reading of the library's nine grammars, written with Boost.Spirit Qi.
///
/// It shares no line with `src/iri/grammar/` and takes the Unicode classes from ICU by itself, so
/// that a slip in one of the two readings shows as a difference between them. One function stands
/// for each grammar; each matches at the front of its text and leaves the rest alone. A text may
/// hold any `char32_t`, code point or not.
namespace reference {

/// A part of a text, from its first element to the one behind its last, counted from 0.
struct Range {
    std::size_t begin = 0;
    std::size_t end = 0;

    bool operator==(const Range&) const = default;
};

/// The components of an IRI reference; one that is absent has no range.
struct ReferenceParts {
    std::optional<Range> scheme;
    std::optional<Range> userInfo;
    std::optional<Range> host;
    std::optional<Range> port;
    std::optional<Range> path;
    std::optional<Range> query;
    std::optional<Range> fragment;

    bool operator==(const ReferenceParts&) const = default;
};

/// Whether a grammar matched, and how many elements it consumed, which are none if it did not.
struct Match {
    bool matched = false;
    std::size_t consumed = 0;

    bool operator==(const Match&) const = default;
};

/// Matches `IRI-reference`. What @p parts held before is discarded.
Match parseIriReference(const std::u32string& text, ReferenceParts& parts);

/// @{
/// Whether the whole text is an IRI reference that the library takes: one whose port, if it has one, is
/// a number of 16 bits. The second one asks what `parseIriReference` gave.
bool isIri(const std::u32string& text);
bool isIri(const std::u32string& text, const Match& match, const ReferenceParts& parts);
/// @}

/// Matches `scheme`.
Match parseScheme(const std::u32string& text);

/// Matches one code point of `sub-delims`.
Match parseSubDelims(const std::u32string& text);

/// Matches one code point of `iunreserved`.
Match parseIunreserved(const std::u32string& text);

/// Matches `pct-encoded`.
Match parsePctEncoded(const std::u32string& text);

/// Matches `ipchar`.
Match parseIpchar(const std::u32string& text);

/// Splits the whole of @p path into segments that carry their leading slash.
///
/// @returns whether it could be split; if not, @p segments is left as it was
bool splitPathSegments(const std::u32string& path, std::vector<std::u32string>& segments);

/// Undoes the percent escapes of all values but those among @p excluded.
///
/// What @p decoded held before is discarded.
Match percentDecode(const std::u32string& text, const std::u32string& excluded,
                    std::u32string& decoded);

/// Matches a decimal number of at most 16 bits; @p number is written only if it matched.
Match parsePort(const std::u32string& text, std::uint16_t& number);

} // namespace reference
