#include "Components.hpp"

#include "Nearest.hpp"

#include <foundation/core/except/Exception.hpp>

#include <algorithm>
#include <exception>
#include <utility>

namespace tool {

using foundation::network::IRI;
using foundation::network::IRIArgs;

namespace {

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

    using Setter = void (*)(IRIArgs& args, const std::string& text);

    // In the order of `Part`.
    constexpr std::array<Setter, PART_COUNT> SETTERS{
        [](IRIArgs& args, const std::string& text) { args.setScheme(text); },
        [](IRIArgs& args, const std::string& text) { args.setUserInfo(text); },
        [](IRIArgs& args, const std::string& text) { args.setHost(text); },
        [](IRIArgs& args, const std::string& text) { args.setPort(text); },
        [](IRIArgs& args, const std::string& text) { args.setPath(text); },
        [](IRIArgs& args, const std::string& text) { args.setQuery(text); },
        [](IRIArgs& args, const std::string& text) { args.setFragment(text); },
    };

} // namespace

const std::array<PartName, PART_COUNT> PART_NAMES{{
    {"scheme", "scheme", "scheme", Ink::Scheme},
    {"userInfo", "user info", "user-info", Ink::UserInfo},
    {"host", "host", "host", Ink::Host},
    {"port", "port", "port", Ink::Port},
    {"path", "path", "path", Ink::Path},
    {"query", "query", "query", Ink::Query},
    {"fragment", "fragment", "fragment", Ink::Fragment},
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

std::optional<Part> findDifference(const Components& left, const Components& right)
{
    for (std::size_t part = 0; part < PART_COUNT; ++part)
        if (left.parts[part].state != right.parts[part].state
            || left.parts[part].text != right.parts[part].text)
            return static_cast<Part>(part);
    return std::nullopt;
}

std::string describeUndecodable(const Components& components)
{
    std::string result;
    for (std::size_t part = 0; part < PART_COUNT; ++part)
        if (components.parts[part].state == Component::State::Undecodable)
            result.append(result.empty() ? "cannot decode " : ", ").append(PART_NAMES[part].label);
    if (!result.empty())
        result.append(": the escapes stand for bytes that are not UTF-8");
    return result;
}

std::optional<Part> findPart(std::string_view name) noexcept
{
    for (std::size_t part = 0; part < PART_COUNT; ++part)
        if (PART_NAMES[part].field == name || PART_NAMES[part].word == name)
            return static_cast<Part>(part);
    return std::nullopt;
}

std::string partSuggestion(std::string_view name)
{
    std::array<std::string_view, PART_COUNT> words;
    std::transform(PART_NAMES.begin(), PART_NAMES.end(), words.begin(),
                   [](const PartName& part) { return part.word; });
    return suggestion(name, words);
}

void setPart(IRIArgs& args, Part part, const std::string& text)
{
    SETTERS.at(part)(args, text);
}

} // namespace tool
