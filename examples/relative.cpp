#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <iostream>
#include <string>

using foundation::core::except::IInternalException;
using foundation::network::IRI;

namespace {

// A short link from a page to an IRI, or the whole IRI where a short one would lead elsewhere.
std::string link(const IRI& iri, const IRI& page)
{
    try {
        const IRI relative = iri.makeRelativeTo(page);
        if (relative.resolveAgainst(page).toStringUtf8() == iri.toStringUtf8())
            return relative.toStringUtf8();
    } catch (const IInternalException&) {
        // There is no short one where the escapes of a path stand for no text, as "%C0%80" does.
    }
    return iri.toStringUtf8();
}

} // namespace

int main(int count, char** arguments)
{
    const IRI page("https://example.org/books/list?page=2");
    for (int i = 1; i < count; ++i) {
        const auto iri = IRI::tryParse(arguments[i]);
        if (iri && iri->hasScheme() && iri->hasHost())
            std::cout << link(*iri, page) << '\n';
    }
}
