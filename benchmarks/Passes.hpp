#pragma once

#include "Corpus.hpp"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <utility>
#include <vector>

/// What all benchmarks here have in common: passes over many items, named
/// operation/corpus/subject, with the time that an item took and how many the subject takes.
namespace benchmarks {

/// The items of one corpus that one subject takes, such as the texts that it accepts.
template <class Item>
struct Taken {
    std::vector<Item> items;
    std::size_t outOf = 0;
};
template <class Item>
using Items = std::shared_ptr<const Taken<Item>>;

/// A text of a corpus, which lives as long as the program.
using Text = const std::string*;

/// The items that `takes` answers true for.
template <class Item, class Takes>
Items<Item> taken(const std::vector<Item>& items, Takes takes)
{
    Taken<Item> result{{}, items.size()};
    for (const Item& item : items)
        if (takes(item))
            result.items.push_back(item);
    return std::make_shared<const Taken<Item>>(std::move(result));
}

/// The texts of a corpus that `Subject` accepts.
template <class Subject>
Items<Text> acceptedBy(const Corpus& corpus)
{
    return taken<Text>(pointers(corpus), [](Text text) { return Subject::accepts(*text); });
}

/// All texts of a corpus, for what refuses none.
inline Items<Text> allOf(const Corpus& corpus)
{
    return taken<Text>(pointers(corpus), [](Text) { return true; });
}

/// Sets the counters of a benchmark: an iteration handles `count` items, and the subject takes
/// `accepted` of `outOf`.
void countItems(benchmark::State& state, std::size_t count, std::size_t accepted,
                std::size_t outOf);

/// Ends a benchmark that has nothing to measure, and says so.
void refuseAll(benchmark::State& state, std::size_t outOf);

/// A pass that can be run once under a program that counts instructions.
struct CountablePass {
    std::string name;
    std::size_t items;
    std::function<void()> run;
};

/// Seconds since it was made.
class Stopwatch {
public:
    double seconds() const
    {
        return std::chrono::duration<double>(std::chrono::steady_clock::now() - start_).count();
    }

private:
    std::chrono::steady_clock::time_point start_ = std::chrono::steady_clock::now();
};

/// The passes that --instructions counts, in the order of registration.
std::vector<CountablePass>& countablePasses();

/// How many items of a corpus are counted: instructions do not vary, so a few are enough.
constexpr std::size_t COUNTED_ITEMS = 200;

/// Registers a benchmark that calls `work` once for each item.
template <class Item, class Work>
benchmark::internal::Benchmark* registerPasses(const std::string& name, const Items<Item>& items,
                                               Work work)
{
    const auto pass = [items, work](benchmark::State& state) {
        if (items->items.empty())
            return refuseAll(state, items->outOf);
        for (auto _ : state)
            for (const Item& item : items->items)
                work(item);
        countItems(state, items->items.size(), items->items.size(), items->outOf);
    };
    const std::size_t counted = std::min(COUNTED_ITEMS, items->items.size());
    if (counted > 0)
        countablePasses().push_back({name, counted, [items, counted, work] {
                                         for (std::size_t i = 0; i < counted; ++i)
                                             work(items->items[i]);
                                     }});
    return benchmark::RegisterBenchmark(name.c_str(), pass);
}

/// Registers a benchmark that gives each item to `make` outside the measured time and measures only
/// what `work` does with the value: for what a value does once, on first use.
template <class Item, class Make, class Work>
benchmark::internal::Benchmark* registerFirstUses(const std::string& name, const Items<Item>& items,
                                                  Make make, Work work)
{
    const auto pass = [items, make, work](benchmark::State& state) {
        using Value = decltype(make(items->items.front()));
        if (items->items.empty())
            return refuseAll(state, items->outOf);
        // So few that they still lie in the cache when they are used.
        constexpr std::size_t TOGETHER = 64;
        const std::size_t count = items->items.size();
        std::size_t first = 0;
        std::vector<Value> values;
        values.reserve(TOGETHER);
        for (auto _ : state) {
            values.clear();
            for (std::size_t i = 0; i < TOGETHER; ++i)
                values.push_back(make(items->items[(first + i) % count]));
            first = (first + TOGETHER) % count;
            const Stopwatch stopwatch;
            for (Value& value : values)
                work(value);
            state.SetIterationTime(stopwatch.seconds());
        }
        countItems(state, TOGETHER, count, items->outOf);
    };
    // What is not measured may take a hundred times as long as what is.
    constexpr double SECONDS = 0.001;
    return benchmark::RegisterBenchmark(name.c_str(), pass)->UseManualTime()->MinTime(SECONDS);
}

/// Keeps the compiler from dropping what makes a component, and the component itself.
struct Keep {
    template <class Component>
    void operator()(const Component& component) const
    {
        benchmark::DoNotOptimize(component);
    }
};

} // namespace benchmarks
