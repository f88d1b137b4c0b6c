#pragma once

#include <foundation/network/iri/Encoding.hpp>

#include <optional>
#include <string>
#include <string_view>

/// A second reading of IRIs, as short as it gets, which the tests hold the library against.
///
/// All text is UTF-8. Nothing is checked here: only texts that are IRI references are given to it.
namespace foundation::network::tests {

/// The code points of valid UTF-8.
std::u32string codePoints(std::string_view utf8);

/// Valid UTF-8 as UTF-16.
std::u16string utf16(std::string_view utf8);

/// The components of an IRI reference, as the regular expression of RFC 3986, appendix B finds
/// them.
struct NaiveIri {
    explicit NaiveIri(const std::string& text);

    std::optional<std::string> scheme;
    std::optional<std::string> userInfo;
    std::optional<std::string> host;
    std::optional<std::string> port;
    std::string path;
    std::optional<std::string> query;
    std::optional<std::string> fragment;

    /// The whole text in a form other than `Decoded`. The two arguments differ for the plain text
    /// of a form whose strict text was read first.
    std::string print(iri::Encoding form, iri::Encoding authorityForm) const;
    std::string print(iri::Encoding form) const { return print(form, form); }

    std::string authority(iri::Encoding form) const;
};

/// One component in a form, without the repairs of the strict forms. Nothing, if it cannot be
/// decoded because its escapes denote wrong UTF-8.
std::optional<std::string> converted(const std::string& component, iri::Encoding form);

/// The text with "%25" for each "%" that begins no escape of ASCII digits, and its brackets
/// escaped.
std::string repaired(const std::string& text, bool brackets);

/// 64-bit FNV-1a over the code points, four bytes each with the low byte first.
std::uint64_t naiveHash(std::string_view utf8);

} // namespace foundation::network::tests
