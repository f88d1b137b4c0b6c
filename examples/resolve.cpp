#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <exception>
#include <iostream>

using foundation::network::IRI;
using foundation::network::IRIArgs;

int main()
{
    const IRI base("https://example.org/books/list?page=2");
    const IRI reference("../authors/zoë#works");
    std::cout << reference.resolveAgainst(base).toStringUtf8() << '\n';

    IRIArgs args(base); // all components as plain text, to change some of them
    args.setPath("/books/new list").clearQuery();
    args.appendQueryKeyValuePair("find", "salt & pepper", true, false);
    std::cout << IRI(args).toStringUtf8() << '\n';

    try {
        const IRI refused("https://example.org:65536/");
    } catch (const std::exception& failure) {
        std::cout << failure.what() << '\n';
    }
}
