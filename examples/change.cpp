#include <foundation/network/IRI.hpp>

#include <iostream>
#include <string>

using foundation::network::IRI;

namespace {

// The IRI with another path; all else stays as it was written. The path is text of an IRI, with
// its escapes.
IRI withPath(const IRI& iri, const std::string& path)
{
    std::string text;
    if (iri.hasScheme())
        text += iri.getSchemeUtf8() + ':';
    if (iri.hasAuthority())
        text += "//" + iri.getAuthorityUtf8();
    text += path;
    if (iri.hasQuery())
        text += '?' + iri.getQueryUtf8();
    if (iri.hasFragment())
        text += '#' + iri.getFragmentUtf8();
    return IRI(text);
}

} // namespace

int main()
{
    const IRI iri("http://[2001:db8::1]:080/old?q=1%2B1#top");
    std::cout << withPath(iri, "/new%2Fname").toStringUtf8() << '\n';
}
