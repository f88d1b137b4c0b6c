#include "Corpus.hpp"

#include <fstream>
#include <stdexcept>
#include <string_view>
#include <utility>

namespace benchmarks {
namespace {

    Corpus readLines(std::string name, std::string_view file)
    {
        const std::string path = std::string(ZKFLNETWORK_CORPUS_FOLDER "/").append(file);
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

} // namespace

const Corpus& urls()
{
    static const Corpus corpus = readLines("urls", "urls.txt");
    return corpus;
}

const Corpus& iris()
{
    static const Corpus corpus = readLines("iris", "iris.txt");
    return corpus;
}

const Corpus& encodedIris()
{
    static const Corpus corpus = percentEncoded(iris(), "encoded_iris");
    return corpus;
}

} // namespace benchmarks
