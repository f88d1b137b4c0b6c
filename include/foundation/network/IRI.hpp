#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <iosfwd>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network {

class IRIArgs;

/// An internationalised resource identifier, or a reference to one (RFC 3987).
///
/// A value is parsed from a text, which it keeps as it came (no case is folded, no escape undone,
/// no default port left out), or built: from an `IRIArgs`, or by `resolveAgainst` and
/// `makeRelativeTo`. It answers which components it has, and each of them in each form that
/// `iri::Encoding` names, and the whole in all of them but the decoded one. An absent component and
/// an empty one are different things: "a?" has a query, "a" has none.
///
/// Failures are exceptions; `catch (const std::exception&)` takes all of them. Most are of the family
/// in `foundation/core/except/Exception.hpp`, which says which are not.
///
/// A text is refused if RFC 3987, 2.2 (`IRI-reference`) does not allow it, with these departures
/// (`docs/departures.md` has examples):
/// @departure A scheme may hold letters and digits of any script.
/// @departure A "%" that begins no escape may stand in a path, a query or a fragment.
/// @departure U+E0000 to U+E0FFF may stand in a query.
/// @departure The hexadecimal digits of an escape and of an IP literal may be full-width.
/// @departure A port is a number from 0 to 65535; it may not be empty.
/// @departure The "v" of an address of a future version is lower case; its address may be any text.
/// @departure The directional formatting characters of RFC 3987, 4.1 may stand in a text.
///
/// Text goes in and comes out as UTF-16 (`std::u16string`) or, in the members with the suffix
/// `Utf8`, as UTF-8 (`std::string`).
///
/// A value does not change but by assignment and `swap`. Any number of threads may call const
/// members of one value; assignment and `swap` may not run beside anything else on that value. The
/// move constructor leaves the empty value behind. After a move assignment only assign to the source
/// or destroy it.
///
/// A component in another form than that of the text, a whole text in such a form, and the hash are
/// made when they are first asked for, and kept as long as the value.
///
/// Where memory runs out `std::bad_alloc` is thrown. Nothing is lost then, and nothing has changed
/// but what the failed call has already made and kept, as any reader does.
class ZKFLNETWORK_API IRI : private iri::detail::TemplateIRI<std::u32string> {
public:
    using Encoding = iri::Encoding; ///< for short

    /// The empty value, which has no component at all, not even an empty path. It equals the value
    /// of the empty text, which has one.
    IRI() noexcept;

    /// @{
    /// The value of a text. The empty text gives an empty value, with an empty path.
    ///
    /// @throws foundation::core::except::AnonymousInternalException<std::logic_error> "IRI parsing
    ///         failed", if the text is no IRI reference
    /// @throws core::except::AnonymousInternalException<std::exception> "Invalid UTF-8 sequence
    ///         encountered while trying to encode UTF-32 character", if @p utf8 is not valid
    /// @throws std::out_of_range (as `boost::wrapexcept`) "Misplaced UTF-16 surrogate U+0xd800
    ///         encountered while trying to encode UTF-32 sequence", if @p utf16 is not valid. It
    ///         names the unit at which that was seen: behind a high surrogate that stands alone it
    ///         is the next unit, or 0 at the end.
    /// @complexity Linear in the length of the text; one allocation.
    /// @rfc{3987,2.2}
    explicit IRI(const std::u16string& utf16);
    explicit IRI(const std::string& utf8);
    /// @}

    /// The value of some components. It is not put together as a text and parsed: what a component
    /// may not show is escaped when it is read, and a text that the value shows need not be one
    /// that the other constructors take. Only the scheme is checked, and that the components go
    /// together.
    ///
    /// @throws core::except::AnonymousInternalException<std::logic_error>, in this order:
    ///         "Malformed scheme";
    ///         "User Info requires a host";
    ///         "Port requires a host";
    ///         "Path cannot be relative if authority present"
    /// @throws std::out_of_range (as `boost::wrapexcept`) "Invalid UTF-32 code point U+0x110000
    ///         encountered while trying to encode UTF-16 sequence", after those, if the query is
    ///         form-encoded and was given such an element as UTF-32
    /// @complexity Linear in the length of the components.
    explicit IRI(const IRIArgs& args);

    /// A copy with all that the other has made so far.
    IRI(const IRI& other);

    /// Takes the other's text over and leaves it empty.
    IRI(IRI&& other) noexcept;

    /// Assigns a copy.
    ///
    /// If the hash of this value was computed, and that of the other was not, it is computed here.
    /// The empty value, once assigned, goes on answering the hash that was computed on this object.
    /// @throws what `hashValue` throws; nothing has changed then
    IRI& operator=(const IRI& other);

    /// Takes the other's text over. The other still answers its old predicates, but its texts are
    /// gone. Of the hash, the same holds as in the assignment of a copy.
    /// @throws what `hashValue` throws; nothing has changed then
    IRI& operator=(IRI&& other); // NOLINT(performance-noexcept-move-constructor): may hash

    /// Frees the text and all that was made of it; copies have their own.
    ~IRI() override;

    /// Exchanges two values.
    void swap(IRI& other) noexcept;

    /// Whether the text is empty, or there is none.
    bool isEmpty() const noexcept { return Base::isEmpty(); }

    /// Whether the IRI has a scheme. If not, it is a relative reference, or empty.
    bool hasScheme() const noexcept { return Base::hasScheme(); }

    /// Whether the IRI has an authority. It then has a host too, which may be empty.
    bool hasAuthority() const noexcept { return Base::hasAuthority(); }

    /// Whether there is a query, be it an empty one, as in "a?".
    bool hasQuery() const noexcept { return Base::hasQuery(); }

    /// Whether there is a fragment, be it an empty one, as in "a#".
    bool hasFragment() const noexcept { return Base::hasFragment(); }

    /// Whether the path begins with "/".
    bool hasAbsolutePath() const noexcept { return Base::hasAbsolutePath(); }

    /// Whether the IRI has a scheme.
    /// @departure RFC 3987 calls an IRI absolute only if it has no fragment besides.
    /// @rfc{3987,2.2}
    bool isAbsolute() const noexcept { return Base::isAbsolute(); }

    /// Whether the IRI has a scheme, but neither an authority nor a path that begins with "/". So
    /// "mailto:a@b" is opaque, and "mailto:" is too.
    bool isOpaque() const noexcept { return Base::isOpaque(); }

    /// Whether there is a port; it is not taken from the scheme.
    bool hasPort() const noexcept { return Base::hasPort(); }

    /// The same as `hasAuthority`: a host may be empty, as in "file:///".
    bool hasHost() const noexcept { return Base::hasHost(); }

    /// Whether there is user information, be it empty, as in "//@h".
    bool hasUserInfo() const noexcept { return Base::hasUserInfo(); }

    /// @{
    /// The scheme as it was written, without its ":".
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "No scheme"
    /// @rfc{3986,3.1}
    std::u16string getScheme() const;
    std::string getSchemeUtf8() const;
    /// @}

    /// @{
    /// What stands between the scheme and the fragment, with the "//" and the "?". For the strict
    /// forms the parts are repaired as in `toString`.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set: Path",
    ///         for `IRI()` and for a value that was emptied or moved from
    std::u16string getSchemeSpecificPart(const Encoding& encoding = Encoding::Iri) const;
    std::string getSchemeSpecificPartUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// User information, host and port, with "@" and ":". For the strict forms, each "%" that
    /// begins no escape is escaped in user information and host; brackets stay.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set: Host:
    ///         Host (in getAuthority)", without an authority
    /// @rfc{3987,2.2}
    std::u16string getAuthority(const Encoding& encoding = Encoding::Iri) const;
    std::string getAuthorityUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The user information without its "@". It is not repaired in the strict forms.
    ///
    /// What is said of failures and cost here holds for all readers of components.
    ///
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set:
    ///         UserInfo", if there is none
    /// @throws core::except::AnonymousInternalException<std::exception> the message for invalid
    ///         UTF-8, if the text must be decoded and its escapes stand for a byte sequence that
    ///         looks like UTF-8 but denotes no character, such as "%C0%80"
    /// @throws std::out_of_range (as `boost::wrapexcept`) "Invalid UTF-32 code point U+0xd800
    ///         encountered while trying to encode UTF-16 sequence", if a built value was given such
    ///         a code point
    /// @complexity In another form than that in which the component is stored, which is `Iri` for a
    ///             parsed value, the first call converts and later ones copy what was kept.
    std::u16string getUserInfo(const Encoding& encoding = Encoding::Iri) const;
    std::string getUserInfoUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The host; an IP literal keeps its brackets. The ASCII forms are percent-encoded UTF-8, not
    /// Punycode. For the strict forms, each "%" that begins no escape is escaped.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set: Host"
    /// @rfc{3986,3.2.2}
    std::u16string getHost(const Encoding& encoding = Encoding::Iri) const;
    std::string getHostUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The port as it was written, with its leading zeros, without its ":".
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "No port"
    std::u16string getPort() const;
    std::string getPortUtf8() const;
    /// @}

    /// The port as a number.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "No port"
    std::uint16_t getPortNumber() const;

    /// @{
    /// The path, which may be empty. For the strict forms, each "%" that begins no escape, "[" and
    /// "]" are escaped.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set: Path",
    ///         for `IRI()` and for a value that was emptied or moved from
    /// @rfc{3986,3.3}
    std::u16string getPath(const Encoding& encoding = Encoding::Iri) const;
    std::string getPathUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The query without its "?". For the strict forms it is repaired as the path.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set: Query"
    /// @rfc{3986,3.4}
    std::u16string getQuery(const Encoding& encoding = Encoding::Iri) const;
    std::string getQueryUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The fragment without its "#". For the strict forms it is repaired as the path.
    /// @throws core::except::AnonymousInternalException<std::runtime_error> "Item not set:
    ///         Fragment"
    /// @rfc{3986,3.5}
    std::u16string getFragment(const Encoding& encoding = Encoding::Iri) const;
    std::string getFragmentUtf8(const Encoding& encoding = Encoding::Iri) const;
    /// @}

    /// @{
    /// The whole IRI. A parsed value gives its text, unchanged.
    ///
    /// @param strict  whether to repair what RFC 3987 does not allow: each "%" that begins no
    ///                escape is escaped, and so are "[" and "]" behind the authority. A strict text
    ///                that is read from a built value before the first plain one of the same kind
    ///                leaves the authority repaired in that one, too.
    /// @throws what the readers throw, but a missing component is a plain `std::runtime_error` from
    ///         the UTF-16 members
    /// @complexity Linear. But for the text of a parsed value, it is built by the first call and
    ///             kept.
    std::u16string toString(bool strict = false) const;
    std::string toStringUtf8(bool strict = false) const;
    /// @}

    /// @{
    /// The whole IRI with all characters outside ASCII percent-encoded from UTF-8 (RFC 3987, 3.1),
    /// but for those of the scheme. It is a URI if the IRI departs nowhere from RFC 3987. Hosts are
    /// not converted to Punycode.
    ///
    /// @param strict  as in `toString`. What is said there of built values, holds for all here.
    /// @throws as `toString`
    /// @complexity Linear; the text is built by the first call and kept.
    std::u16string toAsciiString(bool strict = false) const;
    std::string toAsciiStringUtf8(bool strict = false) const;
    /// @}

    /// What this IRI, as a reference, denotes against @p base. Any base will do; the result is
    /// relative if neither has a scheme.
    ///
    /// @departure Paths are merged as plain text: an escaped slash or dot becomes a real one.
    /// @departure Dot segments stay in a path that ends in "/./" and has no others, and in a
    ///            reference against a base with an authority and no path.
    /// @departure A path with an empty segment in it adds nothing, where dot segments are removed.
    /// @departure An empty reference gives a copy of the base without its fragment, but with the
    ///            texts that the base was made from or has made so far, which show it: such a text
    ///            is what `toString`, `==` and the hash then go by.
    /// @throws what the readers throw, if a path cannot be decoded
    /// @complexity Linear in the length of both.
    /// @rfc{3986,5.2}
    IRI resolveAgainst(const IRI& base) const;

    /// A reference that names this IRI in terms of @p base. As far as it goes, it resolves to this
    /// IRI again: see `docs/departures.md` for those that do not.
    ///
    /// @throws core::except::AnonymousInternalException<std::logic_error>, in this order:
    ///         "Cannot make relative to base. Already relative";
    ///         "Cannot make relative. Base is relative";
    ///         "Cannot make relative to base as base has scheme but this does not";
    ///         "Cannot make relative to base as base has authority but this does not";
    ///         "Cannot make relative to base as base has path but this does not";
    ///         "Cannot make relative to base as base has query but this does not"
    /// @throws what the readers throw, if a component cannot be decoded
    /// @complexity Linear in the length of both.
    IRI makeRelativeTo(const IRI& base) const;

    /// Puts the components into @p args, as plain text. Path, query and fragment are overwritten,
    /// or cleared; a scheme or an authority that @p args holds already stays, if this IRI has none.
    ///
    /// @departure What is built from the result need not be this IRI: an escaped delimiter becomes
    ///            a real one, an IP literal loses its brackets, a port its leading zeros;
    ///            `docs/departures.md` has a row for each kind.
    /// @throws what the readers throw, if a component cannot be decoded; nothing has changed then
    void toArgs(IRIArgs& args) const;

    /// Whether two values are the same, by the exact text of their components: "X://a" and "x://a"
    /// are not, nor are "x://a/%41" and "x://a/A". All empty values are the same.
    ///
    /// If at least one was parsed, their whole texts are compared. Two built values are compared by
    /// their components, in the form in which the left one stores them, and their ports as numbers.
    ///
    /// @throws what the readers throw, if a component cannot be converted
    /// @complexity Linear; constant for different parsed values once their hashes are known.
    bool operator==(const IRI& other) const;

    /// The opposite of `==`, but for two built values of which one is empty and the other shows
    /// nothing: then both hold.
    bool operator!=(const IRI& other) const;

    /// The order of the texts by code point; an empty value comes first. Two built values are
    /// ordered by their decoded texts. So this is a strict weak order over parsed values, and over
    /// built ones, but not over a mixture, which therefore belongs into no `std::set`.
    ///
    /// @throws what the readers throw, if a component cannot be converted
    bool operator<(const IRI& other) const;

    /// 64-bit FNV-1a over the code points of the text, four bytes each with the low byte first: the
    /// same on every machine. 0 for an empty value, unless it was emptied after the hash of what it
    /// held had been computed on it: then still that hash.
    ///
    /// @throws what the readers throw, if a component cannot be converted
    /// @complexity Linear on the first call, then constant.
    std::uint64_t hashValue() const;

    /// @{
    /// The value that the constructor gives for a text, or nothing where that throws because of the
    /// text. No exception is raised on the way. The text need not end in a zero, and may hold some.
    ///
    /// @complexity As the constructor; also where the text is refused.
    static std::optional<IRI> tryParse(std::string_view utf8);
    static std::optional<IRI> tryParse(std::u16string_view utf16);
    /// @}

private:
    using Base = iri::detail::TemplateIRI<std::u32string>;
};

/// Exchanges two values.
inline void swap(IRI& left, IRI& right) noexcept
{
    left.swap(right);
}

/// Writes `toAsciiString()` as narrow text, with the stream's width, fill and adjustment. A
/// character of the scheme outside ASCII shows as "?".
ZKFLNETWORK_API std::ostream& operator<<(std::ostream& stream, const IRI& iri);

} // namespace foundation::network

/// Equal values have equal hashes if one of them was parsed, but for an empty value that answers a
/// hash from before it was emptied.
///
/// Two built values may be equal and differ in their hashes wherever their texts differ: in the
/// zeros of a port, in an authority that a strict read has repaired, in a text that an empty
/// reference took from its base, in what a conversion loses. Keep such values in a map by the texts
/// that they show.
template <>
struct std::hash<foundation::network::IRI> {
    /// `hashValue`, as far as it fits.
    std::size_t operator()(const foundation::network::IRI& iri) const
    {
        return static_cast<std::size_t>(iri.hashValue());
    }
};
