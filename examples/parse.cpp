#include <foundation/network/IRI.hpp>

#include <iostream>

int main()
{
    const foundation::network::IRI iri("https://пример.example/a%20b?q=ключ");

    std::cout << iri.getHostUtf8() << '\n'
              << iri.getPathUtf8(foundation::network::iri::Encoding::Decoded) << '\n'
              << iri.toAsciiStringUtf8() << '\n';
}
