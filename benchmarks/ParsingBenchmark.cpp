// Times of foundation::network::IRI and of its peers on the same texts: parse, read, print, refuse.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"
#include "subjects/All.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include <benchmark/benchmark.h>

#include <array>
#include <stdexcept>
#include <string>
#include <vector>

namespace benchmarks {
namespace {

    using foundation::network::IRI;
    using foundation::network::iri::Encoding;
    using foundation::network::iri::IRIView;

    template <class Subject>
    void registerSubject(const Corpus& corpus)
    {
        const Items<Text> texts = acceptedBy<Subject>(corpus);
        const std::string where = "/" + corpus.name + "/" + Subject::name;

        registerPasses("Parse" + where, texts, [](Text text) {
            const auto value = Subject::parse(*text);
            benchmark::DoNotOptimize(value);
        });
        registerPasses("ParseReadAll" + where, texts, [](Text text) {
            const auto value = Subject::parse(*text);
            Subject::readStrings(value, Keep());
        });
        if constexpr (ShowsViews<Subject>)
            registerPasses("ParseViewAll" + where, texts, [](Text text) {
                const auto value = Subject::parse(*text);
                Subject::readViews(value, Keep());
            });
        registerPasses("ParsePrint" + where, texts, [](Text text) {
            const auto value = Subject::parse(*text);
            benchmark::DoNotOptimize(Subject::print(value));
        });
        if constexpr (HasAsciiForm<Subject>)
            registerPasses("ParseAscii" + where, texts, [](Text text) {
                const auto value = Subject::parse(*text);
                benchmark::DoNotOptimize(Subject::asciiForm(value));
            });
    }

    /// What no parser that owns its text can undercut: one copy of the text. One that keeps UTF-32
    /// has the second.
    void registerBaselines(const Corpus& corpus)
    {
        registerPasses("Parse/" + corpus.name + "/string_copy", allOf(corpus),
                       [](Text text) { benchmark::DoNotOptimize(std::string(*text)); });
        registerPasses("Parse/" + corpus.name + "/widened_copy", allOf(corpus), [](Text text) {
            benchmark::DoNotOptimize(std::u32string(text->begin(), text->end()));
        });
    }

    /// The ranges of a text without a value of it.
    void registerRanges(const Corpus& corpus)
    {
        registerPasses("Ranges/" + corpus.name + "/zkflnetwork", acceptedBy<Zkflnetwork>(corpus),
                       [](Text text) { benchmark::DoNotOptimize(IRIView::parse(*text)); });
    }

    /// Texts that are refused. What a subject accepts all the same is left out, and so it has fewer.
    void registerRefusals(const Corpus& corpus)
    {
        const Corpus& bad = badTexts(corpus);
        const auto refused = []<class Subject>(const Corpus& texts) {
            return taken<Text>(pointers(texts), [](Text text) { return !Subject::accepts(*text); });
        };
        forEachSubject([&]<class Subject>() {
            registerPasses("Refuse/" + bad.name + "/" + Subject::name,
                           refused.template operator()<Subject>(bad),
                           [](Text text) { benchmark::DoNotOptimize(Subject::accepts(*text)); });
        });
        const Items<Text> ours = refused.operator()<Zkflnetwork>(bad);
        registerPasses("RefuseRanges/" + bad.name + "/zkflnetwork", ours,
                       [](Text text) { benchmark::DoNotOptimize(IRIView::parse(*text)); });
        registerPasses("RefuseDiagnose/" + bad.name + "/zkflnetwork", ours, [](Text text) {
            benchmark::DoNotOptimize(foundation::network::iri::diagnose(*text));
        });
        registerPasses("RefuseThrow/" + bad.name + "/zkflnetwork", ours, [](Text text) {
            try {
                const IRI iri(*text);
                benchmark::DoNotOptimize(iri);
            } catch (const std::logic_error& failure) {
                benchmark::DoNotOptimize(failure.what());
            }
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
        const Items<Text> texts = acceptedBy<Zkflnetwork>(corpus);
        const std::string where = "/" + corpus.name + "/" + Zkflnetwork::name;

        for (const WholeForm& form : wholeForms) {
            registerPasses("ParsePrint" + std::string(form.name) + where, texts,
                           [print = form.print](Text text) {
                               const IRI iri(*text);
                               benchmark::DoNotOptimize(print(iri));
                           });
            const std::string again = "PrintAgain" + std::string(form.name) + where;
            const auto printAgain = [texts, print = form.print](benchmark::State& state) {
                std::vector<IRI> values;
                values.reserve(texts->items.size());
                for (const Text text : texts->items) {
                    values.emplace_back(*text);
                    benchmark::DoNotOptimize(print(values.back()));
                }
                for (auto _ : state)
                    for (const IRI& iri : values)
                        benchmark::DoNotOptimize(print(iri));
                countItems(state, values.size(), values.size(), texts->outOf);
            };
            benchmark::RegisterBenchmark(again.c_str(), printAgain);
        }
        for (const ComponentForm& form : componentForms)
            registerPasses("ParsePath" + std::string(form.name) + where, texts,
                           [encoding = form.encoding](Text text) {
                               const IRI iri(*text);
                               benchmark::DoNotOptimize(iri.getPathUtf8(encoding));
                           });
    }

} // namespace

void registerParsing()
{
    for (const Corpus* corpus : {&urls(), &iris(), &encodedIris(), &largeUrls(), &largeIris()}) {
        if (corpus->texts.empty())
            continue;
        forEachSubject([corpus]<class Subject>() { registerSubject<Subject>(*corpus); });
        registerBaselines(*corpus);
        registerRanges(*corpus);
    }
    for (const Corpus* corpus : {&urls(), &iris()}) {
        registerRefusals(*corpus);
        registerForms(*corpus);
    }
}

} // namespace benchmarks
