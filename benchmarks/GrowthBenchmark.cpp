// How the time grows with the length of the text: linearly, for whoever reads it a fixed number of
// times.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"
#include "subjects/All.hpp"

#include <foundation/network/IRI.hpp>

#include <benchmark/benchmark.h>

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>

namespace benchmarks {
namespace {

    using foundation::network::IRI;

    /// A kind of path, made of a segment that is repeated.
    struct Shape {
        const char* name;
        std::string_view segment;
    };
    constexpr Shape ascii{"ascii", "/segment"};
    constexpr Shape cyrillic{"cyrillic", "/часть"};
    constexpr Shape dots{"dots", "/a/.."};

    constexpr std::size_t SHORTEST = 10;
    constexpr std::size_t LONGEST = 10000000;
    /// The peers are asked for the parse alone, and for less: some refuse or suffer beyond.
    constexpr std::size_t LONGEST_OF_PEERS = 1000000;

    /// A text whose path is grown until it has `length` bytes.
    std::string textOfLength(std::size_t length, const Shape& shape)
    {
        std::string text = length < 40 ? "x://a" : "https://www.example.com";
        text.reserve(length);
        while (text.size() + shape.segment.size() <= length)
            text += shape.segment;
        text.append(length - text.size(), 'x');
        return text;
    }

    std::string sweepName(const Shape& shape, std::size_t length)
    {
        return "sweep_" + std::string(shape.name) + "_" + std::to_string(length);
    }

    /// The texts are made when they are measured: all at once they would fill the memory.
    template <class Work>
    void registerLength(const std::string& operation, const Shape& shape, std::size_t length,
                        const std::string& subject, Work work)
    {
        const std::string name = operation + "/" + sweepName(shape, length) + "/" + subject;
        benchmark::RegisterBenchmark(name.c_str(), [shape, length, work](benchmark::State& state) {
            work(state, textOfLength(length, shape));
        })->Repetitions(3);
    }

    template <class Subject>
    void measureParse(benchmark::State& state, const std::string& text)
    {
        if (!Subject::accepts(text))
            return refuseAll(state, 1);
        for (auto _ : state) {
            const auto value = Subject::parse(text);
            benchmark::DoNotOptimize(value);
        }
        countItems(state, 1, 1, 1);
    }

    /// What is measured with each length, beside parsing.
    struct Operation {
        const char* name;
        void (*step)(const std::string& text, const IRI& iri, const IRI& other);
    };
    // Forms and hashes are kept by a value, so a new one is made for each: the time is that of
    // parsing and of the operation, and linear only if both are.
    constexpr Operation operations[] = {
        {"Print", [](const std::string&, const IRI& iri,
                     const IRI&) { benchmark::DoNotOptimize(iri.toStringUtf8()); }},
        {"ParseEqual", [](const std::string& text, const IRI&,
                          const IRI&) { benchmark::DoNotOptimize(IRI(text) == IRI(text)); }},
        {"Less", [](const std::string&, const IRI& iri,
                    const IRI& other) { benchmark::DoNotOptimize(iri < other); }},
        {"ParseHash", [](const std::string& text, const IRI&,
                         const IRI&) { benchmark::DoNotOptimize(IRI(text).hashValue()); }},
        {"ParseAscii", [](const std::string& text, const IRI&,
                          const IRI&) { benchmark::DoNotOptimize(IRI(text).toAsciiStringUtf8()); }},
        {"ParseResolve",
         [](const std::string& text, const IRI&, const IRI& base) {
             // The text without its scheme and authority: a path that must be cleaned of dots.
             const std::size_t path = text.find('/', text.find("//") + 2);
             benchmark::DoNotOptimize(IRI(path == text.npos ? "b" : text.substr(path))
                                          .resolveAgainst(base)
                                          .toStringUtf8());
         }},
        {"ParseRelativise",
         [](const std::string& text, const IRI&, const IRI& base) {
             benchmark::DoNotOptimize(IRI(text + "y").makeRelativeTo(base).toStringUtf8());
         }},
    };

    void registerShape(const Shape& shape)
    {
        for (std::size_t length = SHORTEST; length <= LONGEST; length *= 10) {
            registerLength("Parse", shape, length, Zkflnetwork::name, measureParse<Zkflnetwork>);
            for (const Operation& operation : operations)
                registerLength(
                    operation.name, shape, length, Zkflnetwork::name,
                    [step = operation.step](benchmark::State& state, const std::string& text) {
                        const IRI iri(text);
                        const IRI other(text);
                        for (auto _ : state)
                            step(text, iri, other);
                        countItems(state, 1, 1, 1);
                    });
        }
    }

} // namespace

void registerGrowth()
{
    for (const Shape& shape : {ascii, cyrillic, dots})
        registerShape(shape);
    forEachSubject([]<class Subject>() {
        if (std::string_view(Subject::name) != Zkflnetwork::name)
            for (std::size_t length = SHORTEST; length <= LONGEST_OF_PEERS; length *= 10)
                registerLength("Parse", ascii, length, Subject::name, measureParse<Subject>);
    });
}

} // namespace benchmarks
