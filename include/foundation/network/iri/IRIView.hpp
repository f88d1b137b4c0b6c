#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/detail/ComponentRanges.hpp>

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace foundation::network::iri {

/// Where the components of an IRI reference lie in a text of the caller's: what a program needs that
/// only looks at IRIs.
///
/// A view holds no text. It and all that it hands out are views of the caller's UTF-8, as it was
/// written, and valid as long as that stays where it is. Nothing allocates and nothing fails.
///
/// A text is taken if, and only if, `IRI(const std::string&)` takes it, and its components are those
/// that the `Utf8` readers of that value give, with one difference: the reader of UTF-8 takes a lead
/// byte F8 to FF for that of a sequence of four, an `IRI` prints such a sequence as it should be,
/// and a view shows it as it is.
///
/// An ordinary value, cheap to copy. Any number of threads may read one.
class IRIView {
public:
    /// The view of a text, or nothing if it is no IRI reference, or no UTF-8.
    ///
    /// @param utf8  need not end in a zero
    /// @complexity Linear; no allocation.
    /// @rfc{3987,2.2}
    ZKFLNETWORK_API static std::optional<IRIView> parse(std::string_view utf8) noexcept;

    /// Not of a text that is about to go.
    template <class Text>
    requires std::same_as<std::remove_cv_t<Text>, std::string>
    static std::optional<IRIView> parse(Text&& utf8) = delete;

    /// Whether the text is empty.
    bool isEmpty() const noexcept { return text_.empty(); }

    /// Whether there is a scheme.
    bool hasScheme() const noexcept { return ranges_.schemeEnd > 0; }

    /// Whether there is an authority, and so a host, which may be empty.
    bool hasAuthority() const noexcept { return ranges_.hostBegin > afterScheme(); }

    /// Whether there is user information, be it empty, as in "//@h".
    bool hasUserInfo() const noexcept
    {
        return hasAuthority() && ranges_.hostBegin > authorityBegin();
    }

    /// The same as `hasAuthority`.
    bool hasHost() const noexcept { return hasAuthority(); }

    /// Whether there is a port.
    bool hasPort() const noexcept { return ranges_.pathBegin > ranges_.hostEnd; }

    /// Whether there is a query, be it an empty one, as in "a?".
    bool hasQuery() const noexcept { return ranges_.queryEnd > ranges_.pathEnd; }

    /// Whether there is a fragment, be it an empty one, as in "a#".
    bool hasFragment() const noexcept { return text_.size() > ranges_.queryEnd; }

    /// The whole text.
    std::string_view text() const noexcept { return text_; }

    /// The scheme without its ":".
    std::optional<std::string_view> scheme() const noexcept
    {
        return present(hasScheme(), 0, ranges_.schemeEnd);
    }

    /// User information, host and port, with "@" and ":".
    std::optional<std::string_view> authority() const noexcept
    {
        return present(hasAuthority(), authorityBegin(), ranges_.pathBegin);
    }

    /// The user information without its "@".
    std::optional<std::string_view> userInfo() const noexcept
    {
        return present(hasUserInfo(), authorityBegin(), ranges_.hostBegin - 1);
    }

    /// The host; an IP literal keeps its brackets.
    std::optional<std::string_view> host() const noexcept
    {
        return present(hasHost(), ranges_.hostBegin, ranges_.hostEnd);
    }

    /// The port with its leading zeros, without its ":".
    std::optional<std::string_view> port() const noexcept
    {
        return present(hasPort(), ranges_.hostEnd + 1, ranges_.pathBegin);
    }

    /// The port as a number.
    std::optional<std::uint16_t> portNumber() const noexcept
    {
        return hasPort() ? std::optional(portNumber_) : std::nullopt;
    }

    /// The path, which may be empty but is never absent.
    std::string_view path() const noexcept { return between(ranges_.pathBegin, ranges_.pathEnd); }

    /// The query without its "?".
    std::optional<std::string_view> query() const noexcept
    {
        return present(hasQuery(), ranges_.pathEnd + 1, ranges_.queryEnd);
    }

    /// The fragment without its "#".
    std::optional<std::string_view> fragment() const noexcept
    {
        return present(hasFragment(), ranges_.queryEnd + 1, text_.size());
    }

private:
    template <class It>
    static std::optional<IRIView> parseBy(std::string_view utf8) noexcept;

    IRIView(std::string_view text, const detail::ComponentRanges& ranges,
            std::uint16_t portNumber) noexcept
        : text_(text)
        , ranges_(ranges)
        , portNumber_(portNumber)
    {
    }

    // No delimiter is counted in a range, so each that is there is a gap between two of them.
    std::size_t afterScheme() const noexcept { return hasScheme() ? ranges_.schemeEnd + 1 : 0; }
    std::size_t authorityBegin() const noexcept { return afterScheme() + 2; }

    std::string_view between(std::size_t begin, std::size_t end) const noexcept
    {
        std::string_view part = text_;
        part.remove_suffix(part.size() - end);
        part.remove_prefix(begin);
        return part;
    }

    std::optional<std::string_view> present(bool isPresent, std::size_t begin,
                                            std::size_t end) const noexcept
    {
        return isPresent ? std::optional(between(begin, end)) : std::nullopt;
    }

    std::string_view text_;
    detail::ComponentRanges ranges_;
    std::uint16_t portNumber_ = 0;
};

} // namespace foundation::network::iri
