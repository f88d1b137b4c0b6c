#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>

using foundation::core::except::IInternalException;
using foundation::network::IRI;

namespace {

bool isOfTheWeb(std::string scheme)
{
    for (char& c : scheme)
        if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    return scheme == "http" || scheme == "https";
}

// The text of what a link denotes. It is empty if there is none: a path cannot be resolved if its
// escapes stand for no text, as "%C0%80" does.
std::string denoted(const IRI& link, const IRI& page)
{
    // An absolute link is left as it was written: resolving undoes escapes.
    if (link.hasScheme())
        return link.toStringUtf8();
    try {
        return link.resolveAgainst(page).toStringUtf8();
    } catch (const IInternalException&) {
        return {};
    }
}

// What a crawler fetches for a link of a page: an absolute IRI without a fragment, or nothing.
std::optional<IRI> target(std::string_view link, const IRI& page)
{
    const auto reference = IRI::tryParse(link);
    if (!reference)
        return std::nullopt;
    std::string text = denoted(*reference, page);
    if (const auto end = text.find('#'); end != std::string::npos)
        text.resize(end);
    // What was resolved is parsed, so that it can be a key beside what came as a text.
    auto result = IRI::tryParse(text);
    const bool isWanted =
        result && result->hasScheme() && result->hasHost() && isOfTheWeb(result->getSchemeUtf8());
    return isWanted ? result : std::nullopt;
}

} // namespace

// The arguments are links of a page. Each target is shown once.
int main(int count, char** arguments)
{
    const IRI page("https://example.org/books/list?page=2");
    std::unordered_set<IRI> known;
    for (int i = 1; i < count; ++i) {
        const auto iri = target(arguments[i], page);
        if (iri && known.insert(*iri).second)
            std::cout << iri->toStringUtf8() << '\n';
    }
}
