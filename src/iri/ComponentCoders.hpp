#pragma once

#include "iri/PercentCoding.hpp"

#include <optional>
#include <string>
#include <string_view>

/// The conversions between the three forms of each component.
///
/// What differs from component to component stands in its rules: the characters that its decoded
/// text may not show in an IRI, the values whose escapes stay escapes, and what it has to know of
/// its neighbours. The conversions themselves are one template.
namespace foundation::network::iri {

/// For components whose conversions depend on nothing else.
struct NoContext {};

/// What a path has to know of its neighbours: whether its first segment could be taken for a
/// scheme.
struct PathContext {
    bool schemePresent = false;
    bool userInfoPresent = false;
    bool hostPresent = false;

    constexpr bool standsAlone() const noexcept
    {
        return !schemePresent && !userInfoPresent && !hostPresent;
    }
};

/// Whether a path shows a colon where that would end a scheme: before its first slash, with nothing
/// in front of the path (RFC 3986, 4.2).
/// @{
/// @param path  in UTF-32 or in lax UTF-8
bool looksLikeScheme(std::u32string_view path, const PathContext& context) noexcept;
bool looksLikeScheme(std::string_view path, const PathContext& context) noexcept;
/// @}

/// How the query was put together.
struct QueryContext {
    bool formEncoded = false; ///< from pairs, as application/x-www-form-urlencoded has it
};

struct UserInfoRules {
    using Context = NoContext;
    static constexpr AsciiSet escaped{" \"#/;<=>?@[\\]^`{|}"};
    static constexpr std::u32string_view keptEscapes = U" \"#/<;=>?@[\\]^`{|}%";
};

struct HostRules {
    using Context = NoContext;
    static constexpr AsciiSet escaped{" #%/:?@[\\]"};
    static constexpr std::u32string_view keptEscapes = U" #%/:?@[\\]";
};

struct PathRules {
    using Context = PathContext;
    static constexpr AsciiSet escaped{" \"#<>?[]`{}"};
    static constexpr std::u32string_view keptEscapes = U" \"#%<>?[]`{}";
};

struct QueryRules {
    using Context = QueryContext;
    static constexpr AsciiSet escaped{" \"#<>`"};
    static constexpr AsciiSet escapedInForm{"#[]"}; ///< a space becomes "+"
    static constexpr std::u32string_view keptEscapes = U" \"#<>`%";
};

struct FragmentRules {
    using Context = NoContext;
    static constexpr AsciiSet escaped{" \"<>`"};
    static constexpr std::u32string_view keptEscapes = U" \"<>`%";
};

/// The converted text, or nothing if the text could not be converted. Decoders give nothing for the
/// empty text.
using Conversion = std::optional<std::u32string>;

/// The six conversions of one component; pure functions.
///
/// A code point above U+10FFFF, and decoded bytes that are no UTF-8 by their values, throw as the
/// transcoders do.
template <class Rules>
struct ComponentCoder {
    using Context = typename Rules::Context;

    /// @{
    /// Whether a conversion gives the text as it is, as it mostly does: so that none is made. False
    /// does not say that it gives another.
    static bool isSameInIri(std::u32string_view decoded, const Context& context) noexcept;
    static bool isSameInAscii(std::u32string_view iri, const Context& context) noexcept;
    static bool isSameDecoded(std::u32string_view iri, const Context& context) noexcept;
    /// @}

    /// @{
    /// The same of texts in lax UTF-8. One that stands in an IRI is UTF-8.
    static bool isSameInIri(std::string_view decoded, const Context& context) noexcept;
    static bool isSameInAscii(std::string_view iri, const Context& context) noexcept;
    static bool isSameDecoded(std::string_view iri, const Context& context) noexcept;
    /// @}

    static Conversion decodedToIri(std::u32string_view text, const Context& context);
    static Conversion iriToAscii(std::u32string_view text, const Context& context);
    static Conversion decodedToAscii(std::u32string_view text, const Context& context);
    static Conversion iriToDecoded(std::u32string_view text, const Context& context);
    static Conversion asciiToIri(std::u32string_view text, const Context& context);
    static Conversion asciiToDecoded(std::u32string_view text, const Context& context);
};

using UserInfoCoder = ComponentCoder<UserInfoRules>;
using HostCoder = ComponentCoder<HostRules>;
using PathCoder = ComponentCoder<PathRules>;
using QueryCoder = ComponentCoder<QueryRules>;
using FragmentCoder = ComponentCoder<FragmentRules>;

extern template struct ComponentCoder<UserInfoRules>;
extern template struct ComponentCoder<HostRules>;
extern template struct ComponentCoder<PathRules>;
extern template struct ComponentCoder<QueryRules>;
extern template struct ComponentCoder<FragmentRules>;

} // namespace foundation::network::iri
