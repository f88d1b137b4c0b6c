#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <iostream>

int main()
{
    const foundation::network::IRI iri(std::string("http://example.org:8080/a%20b?q"));
    std::cout << iri.getHostUtf8() << ' ' << iri.getPortNumber() << ' ' << iri << '\n';
    try {
        foundation::network::IRI(std::string("http://[/"));
    } catch (const foundation::core::except::IInternalException& refusal) {
        std::cout << refusal.what() << '\n';
    }
}
