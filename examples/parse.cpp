#include <foundation/network/IRI.hpp>

#include <iostream>
#include <string>

int main()
{
    const foundation::network::IRI iri(std::string("https://пример.example/a%20b?q=ключ"));

    std::cout << iri.getHostUtf8() << '\n'
              << iri.getPathUtf8(foundation::network::iri::Encoding::Decoded) << '\n'
              << iri.toAsciiStringUtf8() << '\n';
}
