#pragma once

#include <foundation/network/API.hpp>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::iri {

/// What is wrong with a text that is no IRI reference, and where: what "IRI parsing failed" does not
/// say. It tells of the first trouble only, from the left.
struct Diagnosis {
    /// What is wrong. The numbers and the names that `name` gives stay; more may come.
    enum class Code {
        /// The bytes are no UTF-8. Looked for first, as by the constructor, wherever it stands.
        BadUtf8,
        /// A surrogate stands alone in UTF-16. Looked for first, as by the constructor.
        BadUtf16,
        /// Spaces, tabs or line ends stand before the text or behind it.
        SurroundingSpace,
        /// A ":" stands in front of all else, where a scheme should.
        MissingScheme,
        /// What stands before the first ":" is no scheme (RFC 3986, 3.1). Where it is not meant as
        /// one, a path may not hold the ":" there (RFC 3986, 4.2).
        BadScheme,
        /// A character may not stand in its component but as an escape.
        BadCharacter,
        /// A "%" in user information or a host begins no escape.
        BadEscape,
        /// An authority has a second "@".
        ExtraAtSign,
        /// The "[" of a host does not begin an address (RFC 3986, 3.2.2).
        BadIpLiteral,
        /// The "]" of an address in brackets is missing.
        UnclosedIpLiteral,
        /// An address in brackets is followed by something other than a port.
        TextAfterIpLiteral,
        /// An IPv6 address stands without its brackets.
        UnbracketedIpv6,
        /// A ":" behind the host is followed by no port.
        EmptyPort,
        /// A port holds something other than ASCII digits.
        BadPort,
        /// A port is above 65535.
        PortTooLarge,
    };

    /// The part of the text that the trouble is in.
    enum class Component { None, Scheme, UserInfo, Host, Port, Path, Query, Fragment };

    Code code = Code::BadCharacter;        ///< what is wrong
    Component component = Component::None; ///< where, as the grammar sees it

    /// Where the trouble begins, in units of the text (bytes of UTF-8, units of UTF-16).
    std::size_t offset = 0;

    /// How many units are at fault; 0 if something is missing at `offset`.
    std::size_t length = 0;

    /// Where it begins, in code points.
    std::size_t codePointOffset = 0;

    /// What could have stood there, in English, such as "a digit from 0 to 9". Lives for ever.
    std::string_view expected;
};

/// @{
/// Why a text is no IRI reference, or nothing if it is one.
///
/// Nothing is the answer if, and only if, the constructor of `IRI` takes the text. `Code::BadUtf8`
/// and `Code::BadUtf16` stand for its failures of these encodings, all others for "IRI parsing
/// failed".
///
/// Any number of threads may call this.
/// @complexity Linear in the length of the text; no allocation.
/// @rfc{3987,2.2}
ZKFLNETWORK_API std::optional<Diagnosis> diagnose(std::string_view utf8) noexcept;
ZKFLNETWORK_API std::optional<Diagnosis> diagnose(std::u16string_view utf16) noexcept;
/// @}

/// @{
/// A text that is an IRI reference and close to this one, or nothing if none suggests itself.
///
/// All troubles are repaired, not just the first: characters are escaped where they stand, as UTF-8
/// (RFC 3987, 3.1), and so are bytes that are no UTF-8; all "@" of an authority but the last are
/// escaped; white space around the text and the ":" of an empty port are taken away; "]", or both
/// brackets, are added to an IPv6 address; "./" is put before a path whose first segment holds a ":"
/// (RFC 3986, 4.2). A text that is an IRI reference comes back unchanged.
///
/// The result is a proposal, to be shown to somebody: only they know what was meant. Nothing is
/// proposed for a scheme in front of "//", for other addresses and ports, and for broken UTF-16.
///
/// @returns a text that `diagnose` has nothing to say about
/// @throws std::bad_alloc and std::length_error, but nothing on account of the text
/// @complexity Linear in the length of the text.
ZKFLNETWORK_API std::optional<std::string> repair(std::string_view utf8);
ZKFLNETWORK_API std::optional<std::u16string> repair(std::u16string_view utf16);
/// @}

/// The name of a code, for programs: lower-case words with hyphens, such as "bad-character". It
/// stays the same from version to version. "unknown" for a value that is no code.
ZKFLNETWORK_API std::string_view name(Diagnosis::Code code) noexcept;

/// The name of a component, for programs: "none", "scheme", "user-info", "host", "port", "path",
/// "query" or "fragment"; "unknown" for a value that is no component.
ZKFLNETWORK_API std::string_view name(Diagnosis::Component component) noexcept;

/// What a code means, for people: one line of English without a full stop. The wording may change.
ZKFLNETWORK_API std::string_view describe(Diagnosis::Code code) noexcept;

} // namespace foundation::network::iri
