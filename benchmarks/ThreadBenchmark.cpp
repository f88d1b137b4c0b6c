// The same work on one thread and on two, each of which does all of it. Where nothing is shared and
// nothing is locked, two take the time of one.

#include "Corpus.hpp"
#include "Passes.hpp"
#include "Registration.hpp"

#include <foundation/network/IRI.hpp>

#include <benchmark/benchmark.h>

#include <atomic>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <thread>
#include <vector>

namespace benchmarks {
namespace {

    using foundation::network::IRI;
    using foundation::network::iri::Encoding;

    /// The time from the moment at which all threads may begin until the last is ready.
    double secondsOf(std::size_t threads, const std::function<void()>& work)
    {
        std::atomic<std::size_t> waiting{0};
        std::atomic<bool> begun{false};
        std::vector<std::thread> others;
        const auto run = [&] {
            ++waiting;
            while (!begun)
                std::this_thread::yield();
            work();
        };
        for (std::size_t i = 0; i < threads; ++i)
            others.emplace_back(run);
        while (waiting < threads)
            std::this_thread::yield();
        const Stopwatch stopwatch;
        begun = true;
        for (std::thread& thread : others)
            thread.join();
        return stopwatch.seconds();
    }

    /// `work` is done for each item, by each thread; `name` gets the number of threads.
    template <class Item, class Work>
    void registerThreads(const std::string& operation, const std::string& corpus,
                         const std::string& subject, const Items<Item>& items, Work work)
    {
        for (const std::size_t threads : {1U, 2U}) {
            const std::string name =
                operation + std::to_string(threads) + "/" + corpus + "/" + subject;
            const auto pass = [items, work, threads](benchmark::State& state) {
                // Long enough that starting the threads does not count.
                constexpr std::size_t PASSES = 4;
                for (auto _ : state)
                    state.SetIterationTime(secondsOf(threads, [&] {
                        for (std::size_t i = 0; i < PASSES; ++i)
                            for (const Item& item : items->items)
                                work(item);
                    }));
                countItems(state, PASSES * items->items.size(), items->items.size(), items->outOf);
            };
            benchmark::RegisterBenchmark(name.c_str(), pass)->UseManualTime();
        }
    }

    Items<IRI> valuesOf(const Corpus& corpus)
    {
        Taken<IRI> values{{}, corpus.texts.size()};
        values.items.reserve(corpus.texts.size());
        for (const std::string& text : corpus.texts)
            values.items.emplace_back(text);
        return std::make_shared<const Taken<IRI>>(std::move(values));
    }

    void registerCorpus(const Corpus& corpus)
    {
        const std::string& name = corpus.name;
        registerThreads("ThreadsParse", name, "zkflnetwork", allOf(corpus), [](Text text) {
            const IRI iri(*text);
            benchmark::DoNotOptimize(iri);
        });
        // What the machine itself makes of two threads that allocate and copy.
        registerThreads("ThreadsParse", name, "string_copy", allOf(corpus),
                        [](Text text) { benchmark::DoNotOptimize(std::string(*text)); });

        const Items<IRI> values = valuesOf(corpus);
        const auto read = [](const IRI& iri) {
            benchmark::DoNotOptimize(iri.getPathUtf8(Encoding::Decoded));
        };
        const auto print = [](const IRI& iri) {
            benchmark::DoNotOptimize(iri.toAsciiStringUtf8());
        };
        const auto hash = [](const IRI& iri) { benchmark::DoNotOptimize(iri.hashValue()); };
        for (const IRI& iri : values->items) {
            read(iri);
            print(iri);
            hash(iri);
        }
        registerThreads("ThreadsReadDecoded", name, "zkflnetwork", values, read);
        registerThreads("ThreadsPrintAscii", name, "zkflnetwork", values, print);
        registerThreads("ThreadsHash", name, "zkflnetwork", values, hash);

        // All threads on one value, whose guards they all touch at the same time.
        const auto one = std::make_shared<Taken<const IRI*>>();
        one->items.assign(1000, &values->items.front());
        one->outOf = one->items.size();
        registerThreads("ThreadsReadOne", name, "zkflnetwork", Items<const IRI*>(one),
                        [values, read](const IRI* iri) { read(*iri); });
    }

} // namespace

void registerThreads()
{
    registerCorpus(urls());
    registerCorpus(iris());
}

} // namespace benchmarks
