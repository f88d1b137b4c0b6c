#include "Composition.hpp"

#include "Forms.hpp"
#include "Text.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace tool {

using foundation::network::IRI;
using foundation::network::IRIArgs;

namespace {

    std::string compose(const PartTexts& written)
    {
        std::string result;
        if (written[SCHEME])
            result.append(*written[SCHEME]).push_back(':');
        if (written[HOST])
            result.append("//");
        if (written[USER_INFO])
            result.append(*written[USER_INFO]).push_back('@');
        if (written[HOST])
            result.append(*written[HOST]);
        if (written[PORT])
            result.append(":").append(*written[PORT]);
        if (written[PATH])
            result.append(*written[PATH]);
        if (written[QUERY])
            result.append("?").append(*written[QUERY]);
        if (written[FRAGMENT])
            result.append("#").append(*written[FRAGMENT]);
        return result;
    }

    Components componentsOf(const PartTexts& written)
    {
        Components result;
        for (std::size_t part = 0; part < PART_COUNT; ++part)
            if (written[part])
                result.parts[part] = {Component::State::Present, *written[part]};
        result.parts[PATH].state = Component::State::Present;
        return result;
    }

    bool isIpLiteral(const std::string& host)
    {
        if (!host.starts_with('['))
            return false;
        const Reading reading = readIri("//" + host);
        return reading.iri && reading.iri->getHostUtf8() == host;
    }

    /// What stands for a written component while the others are built: what it is matters to them
    /// no further than that it is there, and how a path begins.
    std::string standInFor(Part part, std::string_view written)
    {
        if (part == PORT)
            return "1";
        if (part == SCHEME || (part == PATH && !written.empty() && written.front() != '/'))
            return "x";
        return part == PATH && !written.empty() ? "/" : "";
    }

    /// The written components, and what the built IRI has in place of the others.
    PartTexts withBuilt(PartTexts written, const IRI& iri, IRI::Encoding form)
    {
        const Components built = readComponents(iri, form);
        for (std::size_t part = 0; part < PART_COUNT; ++part)
            if (!written[part] && built.parts[part].state == Component::State::Present)
                written[part] = built.parts[part].text;
        return written;
    }

} // namespace

Reading readWritten(const PartTexts& written)
{
    const std::string text = compose(written);
    Reading reading = readIri(text);
    if (reading.problem)
        return {std::nullopt, "the components together make no IRI: " + reading.why + " at byte "
                                  + std::to_string(reading.problem->offset) + " of "
                                  + text::excerpt(text)};
    const auto difference =
        findDifference(componentsOf(written), readComponents(*reading.iri, formAsGiven().encoding));
    if (difference)
        return {std::nullopt, std::string("the components together read as an IRI with another ")
                                  .append(PART_NAMES[*difference].label)};
    return reading;
}

Reading buildIri(const PartTexts& plain, PartTexts written, const std::vector<QueryPair>& pairs)
{
    if (plain[HOST] && !written[HOST] && isIpLiteral(*plain[HOST]))
        written[HOST] = plain[HOST];

    Reading result;
    const auto refusal = refusalOf([&] {
        IRIArgs args;
        for (std::size_t each = 0; each < PART_COUNT; ++each) {
            const auto part = static_cast<Part>(each);
            if (written[part])
                setPart(args, part, standInFor(part, *written[part]));
            else if (plain[part])
                setPart(args, part, *plain[part]);
        }
        for (const auto& [key, value] : pairs)
            args.appendQueryKeyValuePair(key, value, false, false);
        result.iri = IRI(args);
    });
    if (refusal)
        return {std::nullopt, *refusal};
    if (std::none_of(written.begin(), written.end(),
                     [](const auto& text) { return text.has_value(); }))
        return result;

    // Not every plain text can be read again as it is written by default ("[" in a fragment).
    Reading reading = readWritten(withBuilt(written, *result.iri, IRI::Encoding::Iri));
    if (!reading.iri)
        reading = readWritten(withBuilt(written, *result.iri, IRI::Encoding::IriStrict));
    return reading;
}

} // namespace tool
