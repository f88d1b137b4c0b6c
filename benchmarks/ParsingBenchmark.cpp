// Times of foundation::network::IRI and of its peers on the same texts.
//
// A benchmark is named operation/corpus/subject. One iteration is one pass over all texts of the
// corpus that the subject accepts; the counter time_per_text is what a text took, and accepted
// tells how many there were, so that nobody is fast by refusing.

#include "Corpus.hpp"
#include "subjects/All.hpp"

#include <foundation/network/IRI.hpp>

#include <benchmark/benchmark.h>

#include <array>
#include <cstddef>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace benchmarks {
namespace {

    using foundation::network::IRI;
    using foundation::network::iri::Encoding;

    /// The texts of one corpus that one subject accepts.
    struct Accepted {
        std::vector<std::string> texts;
        std::size_t outOf = 0;
    };
    using Texts = std::shared_ptr<const Accepted>;

    template <class Subject>
    Texts acceptedBy(const Corpus& corpus)
    {
        Accepted accepted{{}, corpus.texts.size()};
        for (const std::string& text : corpus.texts)
            if (Subject::accepts(text))
                accepted.texts.push_back(text);
        return std::make_shared<const Accepted>(std::move(accepted));
    }

    void countTexts(benchmark::State& state, const Accepted& texts)
    {
        using benchmark::Counter;
        const auto count = static_cast<double>(texts.texts.size());
        state.counters["time_per_text"] =
            Counter(count, Counter::kIsIterationInvariantRate | Counter::kInvert);
        state.counters["accepted"] = Counter(count);
        state.counters["texts"] = Counter(static_cast<double>(texts.outOf));
    }

    /// Registers a benchmark that calls `work` once for each accepted text.
    template <class Work>
    void registerPasses(const std::string& name, const Texts& texts, Work work)
    {
        benchmark::RegisterBenchmark(name.c_str(), [texts, work](benchmark::State& state) {
            if (texts->texts.empty()) {
                const std::string refusal =
                    "accepts 0 of " + std::to_string(texts->outOf) + " texts";
                state.SkipWithError(refusal.c_str());
                return;
            }
            for (auto _ : state)
                for (const std::string& text : texts->texts)
                    work(text);
            countTexts(state, *texts);
        });
    }

    /// Keeps the compiler from dropping what makes a component, and the component itself.
    struct Keep {
        template <class Component>
        void operator()(const Component& component) const
        {
            benchmark::DoNotOptimize(component);
        }
    };

    template <class Subject>
    void registerSubject(const Corpus& corpus)
    {
        const Texts texts = acceptedBy<Subject>(corpus);
        const std::string where = "/" + corpus.name + "/" + Subject::name;

        registerPasses("Parse" + where, texts, [](const std::string& text) {
            const auto value = Subject::parse(text);
            benchmark::DoNotOptimize(value);
        });
        registerPasses("ParseReadAll" + where, texts, [](const std::string& text) {
            const auto value = Subject::parse(text);
            Subject::readStrings(value, Keep());
        });
        if constexpr (ShowsViews<Subject>)
            registerPasses("ParseViewAll" + where, texts, [](const std::string& text) {
                const auto value = Subject::parse(text);
                Subject::readViews(value, Keep());
            });
        registerPasses("ParsePrint" + where, texts, [](const std::string& text) {
            const auto value = Subject::parse(text);
            benchmark::DoNotOptimize(Subject::print(value));
        });
    }

    /// What no parser that owns its text can undercut: one copy of the text.
    void registerCopy(const Corpus& corpus)
    {
        const auto all =
            std::make_shared<const Accepted>(Accepted{corpus.texts, corpus.texts.size()});
        registerPasses("Parse/" + corpus.name + "/string_copy", all, [](const std::string& text) {
            benchmark::DoNotOptimize(std::string(text));
        });
    }

    struct WholeForm {
        const char* name;
        std::string (*print)(const IRI& iri);
    };
    constexpr std::array<WholeForm, 4> wholeForms = {{
        {"Iri", [](const IRI& iri) { return iri.toStringUtf8(false); }},
        {"IriStrict", [](const IRI& iri) { return iri.toStringUtf8(true); }},
        {"Ascii", [](const IRI& iri) { return iri.toAsciiStringUtf8(false); }},
        {"AsciiStrict", [](const IRI& iri) { return iri.toAsciiStringUtf8(true); }},
    }};

    struct ComponentForm {
        const char* name;
        Encoding encoding;
    };
    constexpr std::array<ComponentForm, 5> componentForms = {{
        {"Decoded", Encoding::Decoded},
        {"Iri", Encoding::Iri},
        {"IriStrict", Encoding::IriStrict},
        {"Ascii", Encoding::Ascii},
        {"AsciiStrict", Encoding::AsciiStrict},
    }};

    /// The forms that only this library has: a first reading, which makes the form, and another.
    void registerForms(const Corpus& corpus)
    {
        const Texts texts = acceptedBy<Zkflnetwork>(corpus);
        const std::string where = "/" + corpus.name + "/" + Zkflnetwork::name;

        for (const WholeForm& form : wholeForms) {
            registerPasses("ParsePrint" + std::string(form.name) + where, texts,
                           [print = form.print](const std::string& text) {
                               const IRI iri(text);
                               benchmark::DoNotOptimize(print(iri));
                           });
            const std::string again = "PrintAgain" + std::string(form.name) + where;
            const auto printAgain = [texts, print = form.print](benchmark::State& state) {
                std::vector<IRI> values;
                values.reserve(texts->texts.size());
                for (const std::string& text : texts->texts) {
                    values.emplace_back(text);
                    benchmark::DoNotOptimize(print(values.back()));
                }
                for (auto _ : state)
                    for (const IRI& iri : values)
                        benchmark::DoNotOptimize(print(iri));
                countTexts(state, *texts);
            };
            benchmark::RegisterBenchmark(again.c_str(), printAgain);
        }
        for (const ComponentForm& form : componentForms)
            registerPasses("ParsePath" + std::string(form.name) + where, texts,
                           [encoding = form.encoding](const std::string& text) {
                               const IRI iri(text);
                               benchmark::DoNotOptimize(iri.getPathUtf8(encoding));
                           });
    }

    /// A URL whose path of segments is grown until the text has `length` bytes.
    std::string urlOfLength(std::size_t length, const std::string& segment)
    {
        std::string url = "https://www.example.com";
        while (url.size() + segment.size() <= length)
            url += segment;
        url.append(length - url.size(), 'x');
        return url;
    }

    /// How the time grows with the length of the text: linearly, for whoever reads it once.
    template <class Subject>
    void registerSweep(const std::string& script, const std::string& segment)
    {
        for (std::size_t length = 64; length <= 65536; length *= 4) {
            Corpus corpus{"sweep_" + script + "_" + std::to_string(length),
                          {urlOfLength(length, segment)}};
            registerPasses("Parse/" + corpus.name + "/" + Subject::name,
                           acceptedBy<Subject>(corpus), [](const std::string& text) {
                               const auto value = Subject::parse(text);
                               benchmark::DoNotOptimize(value);
                           });
        }
    }

    void registerAll()
    {
        for (const Corpus* corpus : {&urls(), &iris(), &encodedIris()}) {
            forEachSubject([corpus]<class Subject>() { registerSubject<Subject>(*corpus); });
            registerCopy(*corpus);
        }
        registerForms(urls());
        registerForms(iris());
        forEachSubject([]<class Subject>() { registerSweep<Subject>("ascii", "/segment"); });
        registerSweep<Zkflnetwork>("cyrillic", "/часть");
    }

} // namespace
} // namespace benchmarks

int main(int argc, char** argv)
{
    benchmarks::registerAll();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
