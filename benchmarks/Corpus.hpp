#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// Texts that are measured together, in a fixed order.
struct Corpus {
    std::string name;
    std::vector<std::string> texts;
};

/// The 3000 ASCII URLs of corpus/urls.txt.
const Corpus& urls();

/// The 2000 IRIs of corpus/iris.txt, each with a character outside ASCII.
const Corpus& iris();

/// The texts of iris() with each byte above 0x7F as an escape (RFC 3987, 3.1, step 2): URIs with
/// the same components, which a reader of RFC 3986 accepts too.
const Corpus& encodedIris();

} // namespace benchmarks
