// What values are for: comparing, hashing, copying, sorting them.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"
#include "subjects/All.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cstddef>
#include <functional>
#include <memory>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {
namespace {

    /// The measure of all: std::string itself, for which nothing is parsed.
    struct PlainString {
        static constexpr const char* name = "std_string";
        using Value = std::string;

        static bool accepts(const std::string&) { return true; }
        static Value parse(const std::string& text) { return text; }
        static Value copy(const Value& value) { return value; }
        static bool equal(const Value& a, const Value& b) { return a == b; }
        static bool less(const Value& a, const Value& b) { return a < b; }
        static std::size_t hash(const Value& value) { return std::hash<std::string>()(value); }
    };

    template <class Value>
    using Kept = std::shared_ptr<const Value>;

    template <class Value>
    struct Two {
        Kept<Value> first;
        Kept<Value> second;
    };

    template <class Subject>
    Kept<typename Subject::Value> parsed(const std::string& text)
    {
        using Value = typename Subject::Value;
        return Kept<Value>(new Value(Subject::parse(text)));
    }

    /// Pairs of the texts that `makePair` makes of a text and of the one behind it, as values that
    /// are compared for the first time: some keep what they have found out.
    template <class Subject, class MakePair>
    void registerEqual(const std::string& operation, const Corpus& corpus, MakePair makePair)
    {
        using Pair = Two<typename Subject::Value>;
        Taken<TextPair> pairs{{}, corpus.texts.size()};
        for (std::size_t i = 0; i < corpus.texts.size(); ++i) {
            TextPair texts = makePair(corpus.texts[i], corpus.texts[(i + 1) % corpus.texts.size()]);
            if (Subject::accepts(texts.first) && Subject::accepts(texts.second))
                pairs.items.push_back(std::move(texts));
        }
        registerFirstUses(
            operation + "/" + corpus.name + "/" + Subject::name,
            std::make_shared<const Taken<TextPair>>(std::move(pairs)),
            [](const TextPair& texts) {
                return Pair{parsed<Subject>(texts.first), parsed<Subject>(texts.second)};
            },
            [](const Pair& pair) {
                benchmark::DoNotOptimize(Subject::equal(*pair.first, *pair.second));
            });
    }

    /// Pairs of equal values that were compared before.
    template <class Subject>
    void registerEqualAgain(const Corpus& corpus)
    {
        using Pair = Two<typename Subject::Value>;
        Taken<Pair> pairs{{}, corpus.texts.size()};
        for (const std::string& text : corpus.texts)
            if (Subject::accepts(text)) {
                pairs.items.push_back({parsed<Subject>(text), parsed<Subject>(text)});
                const Pair& pair = pairs.items.back();
                benchmark::DoNotOptimize(Subject::equal(*pair.first, *pair.second));
            }
        registerPasses("EqualAgain/" + corpus.name + "/" + Subject::name,
                       std::make_shared<const Taken<Pair>>(std::move(pairs)), [](const Pair& pair) {
                           benchmark::DoNotOptimize(Subject::equal(*pair.first, *pair.second));
                       });
    }

    template <class Subject>
    void registerComparison(const Corpus& corpus)
    {
        registerEqual<Subject>("EqualSame", corpus,
                               [](const std::string& text, const std::string&) {
                                   return TextPair{text, text};
                               });
        registerEqual<Subject>("EqualOther", corpus,
                               [](const std::string& text, const std::string& next) {
                                   return TextPair{text, next};
                               });
        registerEqualAgain<Subject>(corpus);
        // Of one length, and different in the last character only.
        registerEqual<Subject>("EqualLate", corpus,
                               [](const std::string& text, const std::string&) {
                                   return TextPair{text + 'x', text + 'y'};
                               });
    }

    template <class Subject>
    void registerCopy(const Corpus& corpus)
    {
        using Value = Kept<typename Subject::Value>;
        Taken<Value> values{{}, corpus.texts.size()};
        for (const std::string& text : corpus.texts)
            if (Subject::accepts(text))
                values.items.push_back(parsed<Subject>(text));
        registerPasses("Copy/" + corpus.name + "/" + Subject::name,
                       std::make_shared<const Taken<Value>>(std::move(values)),
                       [](const Value& value) {
                           const auto copy = Subject::copy(*value);
                           benchmark::DoNotOptimize(copy);
                       });
    }

    /// Hashes are kept by some: what is measured is the first on each value.
    template <class Subject>
    void registerHash(const Corpus& corpus)
    {
        registerFirstUses(
            "Hash/" + corpus.name + "/" + Subject::name, acceptedBy<Subject>(corpus),
            [](Text text) { return Subject::parse(*text); },
            [](const typename Subject::Value& value) {
                benchmark::DoNotOptimize(Subject::hash(value));
            });
    }

    /// Values that were parsed one after the other and then shuffled, so that neighbours in the
    /// vector lie apart in memory.
    template <class Subject>
    void registerSort(const Corpus& corpus, std::size_t limit)
    {
        using Value = typename Subject::Value;
        const std::string name = "Sort/" + corpus.name + "/" + Subject::name;
        const auto sort = [&corpus, limit](benchmark::State& state) {
            std::vector<Value> shuffled;
            for (const std::string& text : corpus.texts)
                if (shuffled.size() < limit && Subject::accepts(text))
                    shuffled.push_back(Subject::parse(text));
            std::minstd_rand random(1);
            std::shuffle(shuffled.begin(), shuffled.end(), random);
            for (auto _ : state) {
                std::vector<Value> values;
                values.reserve(shuffled.size());
                for (const Value& value : shuffled)
                    values.push_back(Subject::copy(value));
                const Stopwatch stopwatch;
                std::sort(values.begin(), values.end(), Subject::less);
                state.SetIterationTime(stopwatch.seconds());
            }
            countItems(state, shuffled.size(), shuffled.size(),
                       std::min(limit, corpus.texts.size()));
        };
        benchmark::RegisterBenchmark(name.c_str(), sort)->UseManualTime()->Iterations(1);
    }

    template <class Subject>
    void registerSubject()
    {
        for (const Corpus* corpus : {&urls(), &iris()}) {
            if constexpr (Compares<Subject>)
                registerComparison<Subject>(*corpus);
            if constexpr (Copies<Subject>)
                registerCopy<Subject>(*corpus);
            if constexpr (Hashes<Subject>)
                registerHash<Subject>(*corpus);
        }
        if constexpr (Orders<Subject>)
            for (const Corpus* corpus : {&largeUrls(), &largeIris()})
                if (!corpus->texts.empty())
                    registerSort<Subject>(*corpus, 100000);
    }

} // namespace

void registerValues()
{
    registerSubject<PlainString>();
    forEachSubject([]<class Subject>() { registerSubject<Subject>(); });
}

} // namespace benchmarks
