// Resolving a reference against a parsed base, and naming a value in terms of a parsed base.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"
#include "subjects/All.hpp"

#include <benchmark/benchmark.h>

#include <exception>
#include <memory>
#include <string>
#include <vector>

namespace benchmarks {
namespace {

    /// Runs `make`, and tells whether that went without an exception.
    template <class Make>
    bool succeeds(Make make)
    {
        try {
            make();
            return true;
        } catch (const std::exception&) {
            return false;
        }
    }

    /// A reference as a text, and a base that is parsed already.
    template <class Subject>
    struct Reference {
        std::string text;
        std::shared_ptr<const typename Subject::Value> base;
    };

    /// Some classes cannot be moved, but made in place.
    template <class Subject>
    std::shared_ptr<const typename Subject::Value> parsed(const std::string& text)
    {
        using Value = typename Subject::Value;
        return std::shared_ptr<const Value>(new Value(Subject::parse(text)));
    }

    template <class Subject>
    void registerResolution(const Corpus& corpus)
    {
        const std::vector<TextPair> pairs = referencesWithBases(corpus);
        Taken<Reference<Subject>> references{{}, pairs.size()};
        for (const auto& [text, base] : pairs) {
            if (!Subject::accepts(base))
                continue;
            const auto value = parsed<Subject>(base);
            if (succeeds([&, &reference = text] { Subject::resolve(reference, *value); }))
                references.items.push_back({text, value});
        }
        registerPasses("Resolve/" + corpus.name + "/" + Subject::name,
                       std::make_shared<const Taken<Reference<Subject>>>(references),
                       [](const Reference<Subject>& reference) {
                           benchmark::DoNotOptimize(
                               Subject::resolve(reference.text, *reference.base));
                       });
    }

    template <class Subject>
    struct Target {
        std::shared_ptr<const typename Subject::Value> value;
        std::shared_ptr<const typename Subject::Value> base;
    };

    template <class Subject>
    void registerRelativisation(const Corpus& corpus)
    {
        const std::vector<TextPair> pairs = targetsWithBases(corpus);
        Taken<Target<Subject>> targets{{}, pairs.size()};
        for (const auto& [text, base] : pairs) {
            if (!Subject::accepts(text) || !Subject::accepts(base))
                continue;
            const Target<Subject> target{parsed<Subject>(text), parsed<Subject>(base)};
            if (succeeds([&] { Subject::relativise(*target.value, *target.base); }))
                targets.items.push_back(target);
        }
        registerPasses("Relativise/" + corpus.name + "/" + Subject::name,
                       std::make_shared<const Taken<Target<Subject>>>(targets),
                       [](const Target<Subject>& target) {
                           benchmark::DoNotOptimize(
                               Subject::relativise(*target.value, *target.base));
                       });
    }

} // namespace

void registerReferences()
{
    for (const Corpus* corpus : {&urls(), &iris(), &encodedIris()})
        forEachSubject([corpus]<class Subject>() {
            if constexpr (Resolves<Subject>)
                registerResolution<Subject>(*corpus);
            if constexpr (Relativises<Subject>)
                registerRelativisation<Subject>(*corpus);
        });
}

} // namespace benchmarks
