#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/Encoding.hpp>
#include <foundation/network/iri/detail/Component.hpp>
#include <foundation/network/iri/detail/ComponentRanges.hpp>
#include <foundation/network/iri/detail/LazyHash.hpp>

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::iri {

struct PathContext;

}

namespace foundation::network::iri::detail {

enum class Form : std::uint8_t;

class ComponentText;

template <class It>
struct Parts;

template <class String>
class StringParts;

template <class String>
class ArgsBase;

// What works on the inside of values: see src/iri/Assembly.hpp, src/reference and src/build.
template <class String>
class Assembly;
template <class String>
class Resolution;
template <class String>
class Relativisation;
template <class String>
class Building;

/// Which components an IRI has, and what follows from that.
struct ComponentFlags {
    bool hasScheme = false;       ///< never empty
    bool hasQuery = false;        ///< may be empty
    bool hasFragment = false;     ///< may be empty
    bool hasAuthority = false;    ///< the same as hasHost
    bool hasAbsolutePath = false; ///< the path begins with "/"
    bool isAbsolute = false;      ///< has a scheme
    bool isOpaque = false;        ///< has a scheme, but neither an authority nor an absolute path
    bool hasPort = false;         ///< never without a host
    bool hasHost = false;         ///< may be empty
    bool hasUserInfo = false;     ///< may be empty; never without a host
    bool pathHasDotSegments = false; ///< of a built value; a parsed one looks at its text
    bool pathIsEmpty = true;         ///< or absent
    bool formEncoded = false;        ///< the query was put together from pairs
    bool queryReadsAsForm = false;   ///< and is converted as such; mostly the same as formEncoded
    bool partsAreEmpty = true;       ///< a built value was given a scheme and a port at most
    bool readsTheSame = false;       ///< ASCII without "%": all forms are as the text has them
    bool exceedsUnicode = false;     ///< of a built value: some element lies above U+10FFFF
    ComponentSet plain;              ///< what the text holds decoded; the rest is as in an IRI
};

/// What is known about the dot segments of a path.
enum class DotSegments : std::uint8_t { Unknown, None, Some };

/// The working class behind `foundation::network::IRI`, which tells what the operations mean.
///
/// A value is one text, with the ranges of the components in it. It is UTF-8, or what comes next
/// to it where a built value has elements that are no code points. A parsed value has the text that
/// was parsed. That of a built value is laid out in the same way, but some components stand in
/// it as plain text, in which anything may occur; only the ranges tell where they end. Everything
/// else, which is other forms of components, whole texts in other forms and the hash, comes into
/// being when somebody asks for it, and stays.
///
/// Any number of threads may call const members of one value: what they make is published whole, by
/// one of them, and never changed afterwards. Assignment and `swap` may not run beside anything
/// else on the same value.
///
/// @tparam String  `std::u32string`
template <class String>
class TemplateIRI {
public:
    /// The empty value.
    TemplateIRI() noexcept;

    /// @{
    /// The value of a text (RFC 3987, 2.2: `IRI-reference`).
    /// @throws AnonymousInternalException<std::logic_error> "IRI parsing failed"
    /// @throws what the transcoders throw for a text that is not valid in its encoding
    explicit TemplateIRI(const String& text); // NOLINT(modernize-pass-by-value): like its kin
    explicit TemplateIRI(const std::u16string& text);
    explicit TemplateIRI(const std::string& text);
    /// @}

    /// The value of some components; see `IRI(const IRIArgs&)`.
    explicit TemplateIRI(const ArgsBase<String>& args);

    /// A copy with all that the other has made so far.
    TemplateIRI(const TemplateIRI& other);

    /// Takes the other's text over and leaves it empty.
    TemplateIRI(TemplateIRI&& other) noexcept;

    /// @{
    /// Assigns; see the assignments of `IRI` for the hash and for what is left of the other.
    TemplateIRI& operator=(const TemplateIRI& other);
    TemplateIRI& operator=(
        TemplateIRI&& other); // NOLINT(performance-noexcept-move-constructor): may hash
    /// @}

    /// Frees the text and all that was made of it.
    virtual ~TemplateIRI();

    /// Exchanges two values.
    void swap(TemplateIRI& other) noexcept;

    /// @{
    /// Makes a fresh value that of a text, as the constructors from text do.
    /// @returns false, with the value fit for destruction only, if the text is refused
    bool tryRead(std::string_view utf8);
    bool tryRead(std::u16string_view utf16);
    /// @}

    /// @{
    /// What the value is and has; see the predicates of `IRI`.
    bool isEmpty() const noexcept { return isEmpty_.load(std::memory_order_acquire); }
    bool hasScheme() const noexcept { return flags_.hasScheme; }
    bool hasAuthority() const noexcept { return flags_.hasAuthority; }
    bool hasQuery() const noexcept { return flags_.hasQuery; }
    bool hasFragment() const noexcept { return flags_.hasFragment; }
    bool hasAbsolutePath() const noexcept { return flags_.hasAbsolutePath; }
    bool isAbsolute() const noexcept { return flags_.isAbsolute; }
    bool isOpaque() const noexcept { return flags_.isOpaque; }
    bool hasPort() const noexcept { return flags_.hasPort; }
    bool hasHost() const noexcept { return flags_.hasHost; }
    bool hasUserInfo() const noexcept { return flags_.hasUserInfo; }
    /// @}

    /// @{
    /// The scheme and the port as they were written, and the port as a number; see `IRI`.
    /// @throws AnonymousInternalException<std::runtime_error> "No scheme" or "No port"
    std::u16string getScheme() const;
    std::string getSchemeUtf8() const;
    std::u16string getPort() const;
    std::string getPortUtf8() const;
    std::uint16_t getPortNumber() const;
    /// @}

    /// @{
    /// The components in the form that @p encoding names; see the readers of `IRI`, which tell the
    /// failures.
    std::u16string getUserInfo(const Encoding& encoding) const;
    std::string getUserInfoUtf8(const Encoding& encoding) const;
    std::u16string getHost(const Encoding& encoding) const;
    std::string getHostUtf8(const Encoding& encoding) const;
    std::u16string getAuthority(const Encoding& encoding) const;
    std::string getAuthorityUtf8(const Encoding& encoding) const;
    std::u16string getPath(const Encoding& encoding) const;
    std::string getPathUtf8(const Encoding& encoding) const;
    std::u16string getQuery(const Encoding& encoding) const;
    std::string getQueryUtf8(const Encoding& encoding) const;
    std::u16string getFragment(const Encoding& encoding) const;
    std::string getFragmentUtf8(const Encoding& encoding) const;
    std::u16string getSchemeSpecificPart(const Encoding& encoding) const;
    std::string getSchemeSpecificPartUtf8(const Encoding& encoding) const;
    /// @}

    /// @{
    /// The whole IRI; see `IRI::toString` and `IRI::toAsciiString`.
    std::u16string toString(bool strict) const;
    std::u16string toAsciiString(bool strict) const;
    /// @}

    /// @{
    /// The whole IRI in the form that @p encoding names. The two are the same: neither name
    /// promises ASCII.
    std::string toStringUtf8(const Encoding& encoding) const;
    std::string toAsciiStringUtf8(const Encoding& encoding) const;
    /// @}

    /// What this denotes as a reference against @p base; see `IRI::resolveAgainst`.
    TemplateIRI doResolve(const TemplateIRI& base) const
    {
        TemplateIRI target;
        doResolve(base, target);
        return target;
    }

    /// A reference that names this in terms of @p base; see `IRI::makeRelativeTo`.
    TemplateIRI doRelativise(const TemplateIRI& base) const
    {
        TemplateIRI target;
        doRelativise(base, target);
        return target;
    }

    /// @{
    /// The same, made of @p target, a fresh value. After a failure that is fit for destruction only.
    void doResolve(const TemplateIRI& base, TemplateIRI& target) const;
    void doRelativise(const TemplateIRI& base, TemplateIRI& target) const;
    /// @}

    /// Puts the components into @p args; see `IRI::toArgs`.
    void toArgs(ArgsBase<String>& args) const;

    /// @{
    /// Compares by exact texts; see the operators of `IRI`.
    bool operator==(const TemplateIRI& other) const;
    bool operator!=(const TemplateIRI& other) const;
    bool operator<(const TemplateIRI& other) const;
    /// @}

    /// 64-bit FNV-1a over the text; see `IRI::hashValue`.
    std::uint64_t hashValue() const;

private:
    friend class Assembly<String>;
    friend class Resolution<String>;
    friend class Relativisation<String>;
    friend class Building<String>;

    using View = std::string_view; // in lax UTF-8

    static constexpr char FULL_STOP = '.';
    static constexpr char COLON = ':';
    static constexpr char HASH_SIGN = '#';
    static constexpr char FORWARD_SLASH = '/';
    static constexpr char COMMERCIAL_AT = '@';
    static constexpr char QUESTION_MARK = '?';

    /// The text of a component with the form in which it is stored.
    struct StoredText {
        View text;
        Encoding encoding;
    };

    /// What was made because somebody asked for it.
    struct OnDemand;

    // Reading a text.

    template <class Unit>
    void readOrThrow(std::basic_string_view<Unit> text);

    /// Takes a text apart, without keeping it.
    /// @returns false, with the value half filled, if it is no IRI
    bool takeApart(std::string_view utf8);

    template <class TextIt>
    bool takeApartBy(std::string_view utf8);
    template <class TextIt>
    void setPartFlags(const Parts<TextIt>& parts);

    // Reading components.

    bool hasText(Component component) const noexcept;
    std::size_t authorityBegin() const noexcept;
    View textBetween(std::size_t begin, std::size_t end) const noexcept;
    View storedText(Component component) const noexcept;
    View schemeText() const noexcept;
    View portText() const noexcept;
    bool isStoredIn(Form form, Component component) const noexcept;
    ComponentText componentText(Component component, const Encoding& encoding) const;
    ComponentText pathText(const Encoding& encoding) const;
    std::optional<std::string> convertedText(Component component, const Encoding& encoding) const;
    View laxText(Component component, const Encoding& encoding, std::string& made) const;
    View laxPath(const Encoding& encoding, std::string& made) const;
    StoredText readStoredForm(Component component) const;
    bool pathHasDotSegments() const noexcept;
    PathContext pathContext() const noexcept;
    const StringParts<String>& partsWith(Component component) const;
    OnDemand& onDemand() const;

    std::string componentUtf8(Component component, const Encoding& encoding) const;
    std::u16string componentUtf16(Component component, const Encoding& encoding) const;

    template <class Convert>
    auto readComponent(Component component, const Encoding& encoding, Convert convert) const;

    // Writing texts.

    bool areStoredIn(Form form) const noexcept;
    bool isTextIn(Form form) const noexcept;
    std::string toUtf8(View lax) const;
    View hostInAuthority(const Encoding& encoding, std::string& made) const;
    std::string getNativeAuthority(const Encoding& encoding) const;
    std::string getNativeSsp(const Encoding& encoding) const;
    const std::string& toNativeStringFromParts(const Encoding& encoding) const;
    std::u16string toStringFromParts(const Encoding& encoding) const;
    std::string buildText(const Encoding& encoding, bool strictRest) const;
    void appendComponent(std::string& result, Component component, const Encoding& encoding,
                         bool strict) const;

    std::uint64_t generateHash() const;
    void clear() noexcept;

    // Comparing.

    bool differsInSchemeOrPort(const TemplateIRI& other) const noexcept;
    bool differsInText(const TemplateIRI& other) const;
    bool differsIn(Component component, const TemplateIRI& other) const;
    bool differsInComponents(const TemplateIRI& other) const;

    std::string text_; // in lax UTF-8, which is UTF-8 for what was parsed
    ComponentRanges ranges_;
    ComponentFlags flags_;
    std::uint16_t portNumber_ = 0;
    std::atomic<bool> isEmpty_{true};
    std::atomic<bool> hasSourceText_{false};
    bool hasComponents_ =
        false; // in text_; not of a value that was moved from by assignment, which
               // leaves the flags but not the text
    mutable std::atomic<std::uint8_t> formsOfText_{0}; // which it is, and was read as: they stay so
    mutable std::atomic<DotSegments> dotSegments_{DotSegments::Unknown}; // in a parsed text's path
    mutable LazyHash hash_;
    mutable std::atomic<OnDemand*> onDemand_{nullptr}; // owned; published once
};

extern template class ZKFLNETWORK_API_EXTERN TemplateIRI<std::u32string>;

} // namespace foundation::network::iri::detail
