#include "Corpus.hpp"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <fstream>
#include <iterator>
#include <map>
#include <optional>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace benchmarks {
namespace {

    Corpus readLines(std::string name, const std::string& path)
    {
        std::ifstream lines(path, std::ios::binary);
        Corpus corpus{std::move(name), {}};
        for (std::string line; std::getline(lines, line);)
            corpus.texts.push_back(line);
        if (corpus.texts.empty())
            throw std::runtime_error("No texts in " + path);
        return corpus;
    }

    std::string percentEncoded(std::string_view text)
    {
        constexpr std::string_view digits = "0123456789ABCDEF";
        std::string encoded;
        for (const char c : text) {
            const auto byte = static_cast<unsigned char>(c);
            if (byte < 0x80)
                encoded += c;
            else
                (encoded += '%').append({digits[byte >> 4], digits[byte & 0xF]});
        }
        return encoded;
    }

    Corpus percentEncoded(const Corpus& corpus, std::string name)
    {
        Corpus encoded{std::move(name), {}};
        for (const std::string& text : corpus.texts)
            encoded.texts.push_back(percentEncoded(text));
        return encoded;
    }

    Corpus readLarge(std::string name, std::string_view file)
    {
        const char* folder = std::getenv("ZKFLNETWORK_LARGE_CORPUS");
        if (!folder)
            return {std::move(name), {}};
        return readLines(std::move(name), std::string(folder).append("/").append(file));
    }

    /// A text of a corpus, cut where a relative reference may begin and end.
    struct Cut {
        std::string_view text;
        std::size_t pathBegin;
        std::size_t pathEnd;
    };

    /// Nothing for a text without an authority or with an empty path.
    std::optional<Cut> cut(std::string_view text)
    {
        const std::size_t slashes = text.find("//");
        const std::size_t scheme = text.find(':');
        if (scheme == std::string_view::npos || slashes != scheme + 1)
            return std::nullopt;
        const std::size_t pathBegin = std::min(text.find_first_of("/?#", slashes + 2), text.size());
        const std::size_t pathEnd = std::min(text.find_first_of("?#", pathBegin), text.size());
        if (pathBegin == pathEnd)
            return std::nullopt;
        return Cut{text, pathBegin, pathEnd};
    }

    std::vector<Cut> cuts(const Corpus& corpus)
    {
        std::vector<Cut> found;
        for (const std::string& text : corpus.texts)
            if (const auto parts = cut(text))
                found.push_back(*parts);
        return found;
    }

    /// The last segment of the path, with query and fragment. A colon in it would look like a
    /// scheme's.
    std::string lastSegment(const Cut& parts)
    {
        const std::size_t slash = parts.text.rfind('/', parts.pathEnd - 1);
        std::string segment(parts.text.substr(slash + 1));
        const std::size_t colon = segment.find(':');
        return colon < segment.find_first_of("?#") ? "./" + segment : segment;
    }

} // namespace

std::vector<const std::string*> pointers(const Corpus& corpus)
{
    std::vector<const std::string*> texts;
    texts.reserve(corpus.texts.size());
    for (const std::string& text : corpus.texts)
        texts.push_back(&text);
    return texts;
}

const Corpus& urls()
{
    static const Corpus corpus = readLines("urls", ZKFLNETWORK_CORPUS_FOLDER "/urls.txt");
    return corpus;
}

const Corpus& seventy()
{
    static const Corpus corpus = [] {
        Corpus found{"seventy", {}};
        std::ranges::copy_if(urls().texts, std::back_inserter(found.texts),
                             [](const std::string& text) { return text.size() == 70; });
        return found;
    }();
    return corpus;
}

const Corpus& iris()
{
    static const Corpus corpus = readLines("iris", ZKFLNETWORK_CORPUS_FOLDER "/iris.txt");
    return corpus;
}

const Corpus& encodedIris()
{
    static const Corpus corpus = percentEncoded(iris(), "encoded_iris");
    return corpus;
}

const Corpus& largeUrls()
{
    static const Corpus corpus = readLarge("large_urls", "urls.txt");
    return corpus;
}

const Corpus& largeIris()
{
    static const Corpus corpus = readLarge("large_iris", "iris.txt");
    return corpus;
}

std::vector<TextPair> referencesWithBases(const Corpus& corpus)
{
    const std::vector<Cut> parts = cuts(corpus);
    std::vector<TextPair> pairs;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const Cut& other = parts[(i + 1) % parts.size()];
        std::string reference;
        switch (i % 4) {
        case 0:
            reference = other.text.substr(other.pathBegin); // "/path?query"
            break;
        case 1:
            reference = lastSegment(other);
            break;
        case 2:
            reference = "../" + lastSegment(other);
            break;
        default:
            reference = other.text.substr(other.text.find("//")); // "//host/path"
        }
        pairs.push_back({std::move(reference), std::string(parts[i].text)});
    }
    return pairs;
}

std::vector<TextPair> targetsWithBases(const Corpus& corpus)
{
    const std::vector<Cut> parts = cuts(corpus);
    std::vector<TextPair> pairs;
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::string_view text = parts[i].text;
        const std::size_t slash = text.rfind('/', parts[i].pathEnd - 1);
        const std::string folder(text.substr(0, slash + 1));
        // The target lies beside the base, below it, or two folders above.
        constexpr std::array<std::string_view, 3> bases = {"index.html", "", "one/two/index.html"};
        pairs.push_back({std::string(text), folder + std::string(bases[i % bases.size()])});
    }
    return pairs;
}

const Corpus& badTexts(const Corpus& corpus)
{
    static std::map<const Corpus*, Corpus> made;
    const auto [at, isNew] = made.try_emplace(&corpus, Corpus{"bad_" + corpus.name, {}});
    if (isNew)
        for (std::size_t i = 0; i < corpus.texts.size(); ++i) {
            std::string text = corpus.texts[i];
            std::size_t place = i * 7919 % (text.size() + 1);
            while (place < text.size() && (static_cast<unsigned char>(text[place]) & 0xC0) == 0x80)
                ++place; // not inside a sequence of UTF-8
            text.insert(place, 1, " <^"[i % 3]);
            at->second.texts.push_back(std::move(text));
        }
    return at->second;
}

} // namespace benchmarks
