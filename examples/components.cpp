#include <foundation/network/IRI.hpp>

#include <iostream>

using foundation::network::IRI;

// Takes each argument apart. A reader throws where its component is absent, so ask first.
int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        const auto iri = IRI::tryParse(arguments[i]);
        if (!iri)
            continue;
        if (iri->hasScheme())
            std::cout << "scheme    " << iri->getSchemeUtf8() << '\n';
        if (iri->hasHost())
            std::cout << "host      " << iri->getHostUtf8() << '\n';
        if (iri->hasPort())
            std::cout << "port      " << iri->getPortNumber() << '\n';
        std::cout << "path      " << iri->getPathUtf8() << '\n';
        if (iri->hasQuery())
            std::cout << "query     " << iri->getQueryUtf8() << '\n';
        if (iri->hasFragment())
            std::cout << "fragment  " << iri->getFragmentUtf8() << '\n';
    }
}
