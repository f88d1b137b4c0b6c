#include "build/NaiveBuilt.hpp"

#include "iri/NaiveCoding.hpp"

#include <foundation/core/except/Exception.hpp>

#include <algorithm>
#include <stdexcept>

namespace foundation::network::tests {

using iri::Encoding;

namespace {

    [[noreturn]] void refuse(const std::string& text)
    {
        throw core::except::AnonymousInternalException<std::logic_error>(std::logic_error(text));
    }

    [[noreturn]] void failToRead(const std::string& text)
    {
        throw core::except::AnonymousInternalException<std::runtime_error>(
            std::runtime_error(text));
    }

    bool isOneOf(char32_t c, const Text& set)
    {
        return set.find(c) != Text::npos;
    }

    // Letters and digits of the other scripts, as far as the tests use them.
    bool isLetter(char32_t c)
    {
        return (c >= U'a' && c <= U'z') || (c >= U'A' && c <= U'Z') || isOneOf(c, U"éЯ例𐐀");
    }

    bool isSchemeText(const Text& text)
    {
        if (text.empty() || !isLetter(text.front()))
            return false;
        return std::all_of(text.begin(), text.end(), [](char32_t c) {
            return isLetter(c) || (c >= U'0' && c <= U'9') || isOneOf(c, U"٣+.-");
        });
    }

    bool isStrict(Encoding form)
    {
        return form == Encoding::IriStrict || form == Encoding::AsciiStrict;
    }

    Text fixedIf(bool isWanted, const Text& text, bool escapeBrackets)
    {
        return isWanted ? iri::naive::fixEscapes(text, escapeBrackets) : text;
    }

    iri::naive::Component componentOf(Field field)
    {
        using iri::naive::Component;
        switch (field) {
        case USER_INFO:
            return Component::UserInfo;
        case HOST:
            return Component::Host;
        case PATH:
            return Component::Path;
        case QUERY:
            return Component::Query;
        default:
            return Component::Fragment;
        }
    }

    const char* nameOf(Field field)
    {
        constexpr const char* names[] = {"Scheme", "UserInfo", "Host", "Path", "Query", "Fragment"};
        return names[field];
    }

} // namespace

NaiveBuilt::NaiveBuilt(const NaiveBag& bag)
{
    components_.texts = bag.texts;
    components_.port = bag.port;
    if (has(SCHEME) && !bag.schemeFromIri && !isSchemeText(*bag.texts[SCHEME]))
        refuse("Malformed scheme");
    if (has(USER_INFO) && !has(HOST))
        refuse("User Info requires a host");
    if (bag.port && !has(HOST))
        refuse("Port requires a host");
    std::optional<Text>& path = components_.texts[PATH];
    path = path.value_or(Text());
    if (has(HOST) && !path->empty() && path->front() != U'/')
        refuse("Path cannot be relative if authority present");
    if (!has(QUERY))
        return;
    if (bag.queryFormEncoded)
        components_.texts[QUERY] = iri::naive::encodeNonAscii(*components_.texts[QUERY]);
    components_.formEncoded = bag.queryFormEncoded || bag.queryHasEscapes;
}

bool NaiveBuilt::isEmpty() const
{
    return !has(SCHEME) && !has(HOST) && components_.texts[PATH]->empty() && !has(QUERY)
           && !has(FRAGMENT);
}

std::string NaiveBuilt::predicates() const
{
    const Text& path = *components_.texts[PATH];
    const bool isRooted = !path.empty() && path.front() == U'/';
    std::string result;
    const auto add = [&result](bool holds, char letter) { result += holds ? letter : '-'; };
    add(isEmpty(), 'e');
    add(has(SCHEME), 's');
    add(has(HOST), 'a');
    add(has(QUERY), 'q');
    add(has(FRAGMENT), 'f');
    add(isRooted, '/');
    add(has(SCHEME), 'A');
    add(has(SCHEME) && !has(HOST) && !isRooted, 'o');
    add(components_.port.has_value(), 'p');
    add(has(HOST), 'h');
    add(has(USER_INFO), 'u');
    return result;
}

Text NaiveBuilt::converted(Field field, Encoding form) const
{
    const Text& stored = *components_.texts[field];
    if (form == Encoding::Decoded)
        return stored;
    const iri::naive::Context context{has(SCHEME), has(USER_INFO), has(HOST),
                                      components_.formEncoded};
    const auto convert = form == Encoding::Iri || form == Encoding::IriStrict
                             ? iri::naive::decodedToIri
                             : iri::naive::decodedToAscii;
    return convert(componentOf(field), stored, context).value();
}

Text NaiveBuilt::scheme() const
{
    if (!has(SCHEME))
        failToRead("No scheme");
    return *components_.texts[SCHEME];
}

Text NaiveBuilt::port() const
{
    if (!components_.port)
        failToRead("No port");
    const std::string digits = std::to_string(*components_.port);
    return Text(digits.begin(), digits.end());
}

Text NaiveBuilt::component(Field field, Encoding form) const
{
    if (!has(field))
        failToRead(std::string("Item not set: ") + nameOf(field));
    const bool isFixed = isStrict(form) && field != USER_INFO;
    return fixedIf(isFixed, converted(field, form), field != HOST);
}

Text NaiveBuilt::authority(Encoding form) const
{
    if (!has(HOST))
        failToRead("Item not set: Host: Host (in getAuthority)");
    Text result;
    if (has(USER_INFO))
        result += converted(USER_INFO, form) + U"@";
    result += converted(HOST, form);
    result = fixedIf(isStrict(form), result, false);
    return components_.port ? result + U":" + port() : result;
}

Text NaiveBuilt::schemeSpecificPart(Encoding form) const
{
    Text result;
    if (has(HOST))
        result += U"//" + authority(form);
    result += component(PATH, form);
    if (has(QUERY))
        result += U"?" + component(QUERY, form);
    return result;
}

Text NaiveBuilt::text(Encoding form, Encoding authorityForm) const
{
    Text result;
    if (has(SCHEME))
        result += *components_.texts[SCHEME] + U":";
    if (has(HOST))
        result += U"//" + authority(authorityForm);
    result += component(PATH, form);
    if (has(QUERY))
        result += U"?" + component(QUERY, form);
    if (has(FRAGMENT))
        result += U"#" + component(FRAGMENT, form);
    return result;
}

std::uint64_t NaiveBuilt::hash() const
{
    return isEmpty() ? 0 : hashOf(text(Encoding::Iri));
}

// The texts of the components count, not how they are shown.
bool NaiveBuilt::equals(const NaiveBuilt& other) const
{
    return components_.texts == other.components_.texts
           && components_.port == other.components_.port;
}

bool NaiveBuilt::isLess(const NaiveBuilt& other) const
{
    return text(Encoding::Decoded) < other.text(Encoding::Decoded);
}

std::uint64_t hashOf(const Text& text)
{
    std::uint64_t hash = 0xcbf29ce484222325U;
    for (const char32_t c : text)
        for (unsigned shift = 0; shift < 32; shift += 8)
            hash = (hash ^ ((c >> shift) & 0xFF)) * 0x100000001b3U;
    return hash;
}

} // namespace foundation::network::tests
