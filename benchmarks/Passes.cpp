#include "Passes.hpp"

namespace benchmarks {

void countItems(benchmark::State& state, std::size_t count, std::size_t accepted, std::size_t outOf)
{
    using benchmark::Counter;
    state.counters["time_per_text"] =
        Counter(static_cast<double>(count), Counter::kIsIterationInvariantRate | Counter::kInvert);
    state.counters["accepted"] = Counter(static_cast<double>(accepted));
    state.counters["texts"] = Counter(static_cast<double>(outOf));
}

void refuseAll(benchmark::State& state, std::size_t outOf)
{
    const std::string refusal = "accepts 0 of " + std::to_string(outOf) + " texts";
    state.SkipWithError(refusal.c_str());
}

std::vector<CountablePass>& countablePasses()
{
    static std::vector<CountablePass> passes;
    return passes;
}

} // namespace benchmarks
