#include <foundation/network/IRI.hpp>

#include <iostream>
#include <string>

int main()
{
    const foundation::network::IRI iri(std::string("http://example.org/a%20b"));
    std::cout << iri.getPathUtf8(foundation::network::iri::Encoding::Decoded) << '\n';
}
