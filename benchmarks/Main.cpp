// One program for all times, so that this library and its peers are measured in turns, on one
// machine in one state. With --instructions it runs under callgrind instead:
//
//     valgrind --tool=callgrind --callgrind-out-file=FILE zkflnetwork_benchmarks --instructions

#include "Passes.hpp"
#include "Registration.hpp"

#include <benchmark/benchmark.h>

#ifdef ZKFLNETWORK_BENCHMARK_CALLGRIND
#    include <valgrind/callgrind.h>
#endif

#include <iostream>
#include <string_view>

namespace benchmarks {
namespace {

    void registerAll()
    {
        registerParsing();
        registerReferences();
        registerValues();
        registerCoding();
        registerAddresses();
        registerThreads();
        registerGrowth();
    }

#ifdef ZKFLNETWORK_BENCHMARK_CALLGRIND
    bool isCounted(std::string_view name)
    {
        for (const std::string_view operation :
             {"Parse/", "ParseReadAll/", "ParsePrint/", "ParseAscii/", "Ranges/", "Refuse/",
              "Resolve/", "EqualAgain/", "Copy/", "Utf8To32/", "Utf32To8/"})
            for (const std::string_view corpus : {"urls/", "iris/", "bad_urls/"})
                if (name.starts_with(operation)
                    && name.substr(operation.size()).starts_with(corpus))
                    return true;
        return false;
    }

    /// Leaves one dump of callgrind for each pass, under its name and the number of its items.
    int countInstructions()
    {
        if (!RUNNING_ON_VALGRIND) {
            std::cerr << "--instructions works under valgrind --tool=callgrind only\n";
            return 2;
        }
        for (const CountablePass& pass : countablePasses()) {
            if (!isCounted(pass.name))
                continue;
            // The first pass binds symbols and makes what is made once.
            pass.run();
            CALLGRIND_ZERO_STATS;
            pass.run();
            const std::string label = pass.name + " " + std::to_string(pass.items);
            CALLGRIND_DUMP_STATS_AT(label.c_str());
        }
        return 0;
    }
#else
    int countInstructions()
    {
        std::cerr << "built without valgrind/callgrind.h\n";
        return 2;
    }
#endif

} // namespace
} // namespace benchmarks

int main(int argc, char** argv)
{
    benchmarks::registerAll();
    if (argc == 2 && std::string_view(argv[1]) == "--instructions")
        return benchmarks::countInstructions();
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 2;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
