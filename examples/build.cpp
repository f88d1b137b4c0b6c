#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <iostream>

using foundation::network::IRI;
using foundation::network::IRIArgs;

// Puts an IRI together from plain text. Nothing is escaped here; the IRI sees to that.
int main()
{
    IRIArgs args;
    args.setScheme("https").setHost("пример.example").setPort(8080).setPath("/a b/50%?");
    args.appendQueryKeyValuePair("find", "salt & pepper", true, false);
    const IRI iri(args);

    std::cout << iri.toStringUtf8(true) << '\n' << iri.toAsciiStringUtf8(true) << '\n';
}
