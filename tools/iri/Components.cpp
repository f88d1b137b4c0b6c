#include "Components.hpp"

#include <foundation/core/except/Exception.hpp>

#include <exception>
#include <utility>

namespace tool {
namespace {

    using foundation::network::IRI;
    using Utf8Reader = std::string (IRI::*)(const IRI::Encoding&) const;

    Component present(std::string text)
    {
        return {Component::State::Present, std::move(text)};
    }

    Component read(const IRI& iri, bool isPresent, Utf8Reader reader, IRI::Encoding form)
    {
        if (!isPresent)
            return {};
        try {
            return present((iri.*reader)(form));
        } catch (const foundation::core::except::AnonymousInternalException<std::exception>&) {
            return {Component::State::Undecodable};
        }
    }

    /// The user information that stands in an authority, before "@", host and port.
    std::string userInfoOf(const Components& components)
    {
        const Component& port = components.parts[PORT];
        std::size_t behind = 1 + components.parts[HOST].text.size();
        if (port.state == Component::State::Present)
            behind += 1 + port.text.size();
        return components.authority.text.substr(0, components.authority.text.size() - behind);
    }

} // namespace

const std::array<PartName, PART_COUNT> PART_NAMES{{
    {"scheme", "scheme", Ink::Scheme},
    {"userInfo", "user info", Ink::UserInfo},
    {"host", "host", Ink::Host},
    {"port", "port", Ink::Port},
    {"path", "path", Ink::Path},
    {"query", "query", Ink::Query},
    {"fragment", "fragment", Ink::Fragment},
}};

Components readComponents(const IRI& iri, IRI::Encoding form)
{
    Components result;
    auto& parts = result.parts;

    if (iri.hasScheme())
        parts[SCHEME] = present(iri.getSchemeUtf8());
    if (iri.hasPort())
        parts[PORT] = present(iri.getPortUtf8());
    result.authority = read(iri, iri.hasAuthority(), &IRI::getAuthorityUtf8, form);
    parts[HOST] = read(iri, iri.hasHost(), &IRI::getHostUtf8, form);
    parts[PATH] = read(iri, true, &IRI::getPathUtf8, form);
    parts[QUERY] = read(iri, iri.hasQuery(), &IRI::getQueryUtf8, form);
    parts[FRAGMENT] = read(iri, iri.hasFragment(), &IRI::getFragmentUtf8, form);

    const bool isStrict = form == IRI::Encoding::IriStrict || form == IRI::Encoding::AsciiStrict;
    if (isStrict && iri.hasUserInfo())
        parts[USER_INFO] = present(userInfoOf(result));
    else
        parts[USER_INFO] = read(iri, iri.hasUserInfo(), &IRI::getUserInfoUtf8, form);
    return result;
}

} // namespace tool
