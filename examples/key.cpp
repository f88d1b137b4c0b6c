#include <foundation/network/IRI.hpp>

#include <iostream>
#include <map>
#include <string>
#include <unordered_map>

using foundation::network::IRI;

// Counts how often each argument was given. Parsed values are the same if their texts are.
int main(int count, char** arguments)
{
    std::unordered_map<IRI, int> times;
    for (int i = 1; i < count; ++i)
        if (const auto iri = IRI::tryParse(arguments[i]))
            ++times[*iri];

    // Parsed values have an order, too. What was built goes by its text: map[built.toStringUtf8()].
    for (const auto& [iri, number] : std::map<IRI, int>(times.begin(), times.end()))
        std::cout << number << "  " << iri.toStringUtf8() << '\n';
}
