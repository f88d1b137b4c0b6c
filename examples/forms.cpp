#include <foundation/network/IRI.hpp>

#include <iostream>

using foundation::network::IRI;
using foundation::network::iri::Encoding;

// One path in the forms in which it can be read.
int main()
{
    const IRI iri("https://h/caf%C3%A9/ü/100%");

    std::cout << "for people      " << iri.getPathUtf8(Encoding::Decoded) << '\n'
              << "as it came      " << iri.getPathUtf8(Encoding::Iri) << '\n'
              << "by RFC 3987     " << iri.getPathUtf8(Encoding::IriStrict) << '\n'
              << "in ASCII        " << iri.getPathUtf8(Encoding::Ascii) << '\n'
              << "by RFC 3986     " << iri.getPathUtf8(Encoding::AsciiStrict) << '\n'
              << "the whole       " << iri.toStringUtf8() << '\n'
              << "as a URI        " << iri.toAsciiStringUtf8(true) << '\n';
}
