#pragma once

#include <string>
#include <vector>

namespace benchmarks {

/// Texts that are measured together, in a fixed order.
struct Corpus {
    std::string name;
    std::vector<std::string> texts;
};

/// The addresses of the texts of a corpus that is kept.
std::vector<const std::string*> pointers(const Corpus& corpus);

/// The 3000 ASCII URLs of corpus/urls.txt.
const Corpus& urls();

/// Those of urls() that have 70 characters.
const Corpus& seventy();

/// The 2000 IRIs of corpus/iris.txt, each with a character outside ASCII.
const Corpus& iris();

/// The texts of iris() with each byte above 0x7F as an escape (RFC 3987, 3.1, step 2): URIs with
/// the same components, which a reader of RFC 3986 accepts too.
const Corpus& encodedIris();

/// The texts of a file of the folder that the environment names as ZKFLNETWORK_LARGE_CORPUS, which
/// corpus/generate.py writes: so many that no branch predictor learns them by heart. Empty without
/// that variable.
const Corpus& largeUrls();
const Corpus& largeIris();

/// Two texts that are used together.
struct TextPair {
    std::string first;
    std::string second;
};

/// A base with an authority, and a relative reference: what a page of a site may link to. One for
/// each text of the corpus that has an authority.
std::vector<TextPair> referencesWithBases(const Corpus& corpus);

/// A target and a base of one site, which differ in the last segments of their paths.
std::vector<TextPair> targetsWithBases(const Corpus& corpus);

/// Each text of a corpus with one character in it that no IRI may hold, at a place that differs
/// from text to text.
const Corpus& badTexts(const Corpus& corpus);

} // namespace benchmarks
