#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>
#include <foundation/network/IdnConverter.hpp>

#include <algorithm>
#include <iostream>
#include <optional>
#include <string>

using foundation::core::except::IInternalException;
using foundation::network::IdnConverter;
using foundation::network::IdnConverterException;
using foundation::network::IRI;
using foundation::network::iri::Encoding;

namespace {

// The host in ASCII as the DNS wants it, or nothing if it cannot be a name there.
std::optional<std::string> asciiHost(const IRI& iri, const IdnConverter& converter)
{
    const std::string written = iri.getHostUtf8();
    if (written.starts_with('['))
        return written; // an IP literal
    try {
        std::string ascii = converter.toAscii(iri.getHost(Encoding::Decoded));
        // The converter does not judge names; what it could not convert holds a "?".
        if (ascii.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789-._") == std::string::npos)
            return ascii;
    } catch (const IInternalException&) {
        // The escapes stand for no text, as "%C0%80" does.
    } catch (const IdnConverterException&) {
        // A label is far too long.
    }
    return std::nullopt;
}

// The URI (RFC 3986) for an IRI, with Punycode in its host, or nothing if there is none.
std::optional<std::string> toUri(const IRI& iri, const IdnConverter& converter)
{
    std::string uri;
    if (iri.hasScheme())
        uri += iri.getSchemeUtf8() + ':';
    if (iri.hasHost()) {
        const auto host = asciiHost(iri, converter);
        if (!host)
            return std::nullopt;
        uri += "//";
        if (iri.hasUserInfo())
            uri += iri.getUserInfoUtf8(Encoding::AsciiStrict) + '@';
        uri += *host;
        if (iri.hasPort())
            uri += ':' + std::to_string(iri.getPortNumber());
    }
    uri += iri.getPathUtf8(Encoding::AsciiStrict);
    if (iri.hasQuery())
        uri += '?' + iri.getQueryUtf8(Encoding::AsciiStrict);
    if (iri.hasFragment())
        uri += '#' + iri.getFragmentUtf8(Encoding::AsciiStrict);
    // A scheme and an IP literal may hold what a URI may not, and are not escaped.
    if (!std::ranges::all_of(uri, [](unsigned char c) { return c < 0x80; }))
        return std::nullopt;
    return uri;
}

} // namespace

int main(int count, char** arguments)
{
    const IdnConverter converter; // takes some time to make; one serves all
    for (int i = 1; i < count; ++i)
        if (const auto iri = IRI::tryParse(arguments[i]))
            std::cout << toUri(*iri, converter).value_or("(none)") << '\n';
}
