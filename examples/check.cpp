#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include <iostream>
#include <string>

namespace iri = foundation::network::iri;

// Looks at each argument: shows its host, or what is wrong with it and what would do.
int main(int count, char** arguments)
{
    for (int i = 1; i < count; ++i) {
        const std::string text = arguments[i];
        if (const auto view = iri::IRIView::parse(text)) {
            std::cout << view->host().value_or("(no host)") << '\n';
            continue;
        }
        const auto diagnosis = iri::diagnose(text);
        std::cout << text << '\n'
                  << std::string(diagnosis->codePointOffset, ' ') << "^ "
                  << describe(diagnosis->code) << " [" << name(diagnosis->code) << "]\n";
        if (const auto repaired = iri::repair(text))
            std::cout << "this would do: " << *repaired << '\n';
    }
}
