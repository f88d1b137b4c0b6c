#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include <iostream>

namespace iri = foundation::network::iri;

// Shows the keys and values in the query of each argument.
int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        const auto view = iri::IRIView::parse(arguments[i]);
        if (!view || !view->hasQuery())
            continue;
        for (const iri::QueryPair& pair : iri::QueryPairs(*view->query()))
            std::cout << pair.key << (pair.hasValue ? " = " : "") << pair.value << '\n';
    }
}
