#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <exception>
#include <iostream>
#include <stdexcept>
#include <string>

using foundation::core::except::IInternalException;
using foundation::network::IRI;

// A failure can be caught by what went wrong, as one of this library, or as any other.
int main()
{
    try {
        const IRI refused("http://a b/");
    } catch (const std::logic_error& failure) {
        std::cout << "the caller's text: " << failure.what() << '\n';
    }
    try {
        const std::string host = IRI("mailto:jane@example.org").getHostUtf8();
    } catch (const IInternalException& failure) {
        std::cout << "of this library: " << failure.what() << '\n';
    }
    try {
        const IRI broken("\xFF");
    } catch (const std::exception& failure) {
        std::cout << "any: " << failure.what() << '\n';
    }
}
