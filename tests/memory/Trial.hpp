#pragma once

#include "memory/FailingMemory.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <exception>
#include <functional>
#include <memory>
#include <new>
#include <string>
#include <vector>

namespace foundation::network::tests {

/// What is left of the values that an operation works on where memory has run out.
enum class Guarantee {
    Strong, ///< they are as they were before, or in one of the states that the operation lists
    Reading, ///< or in part as the operation leaves them: what was read may show in what is read next
};

/// An operation, with values of its own for each attempt.
struct Operation {
    /// One attempt.
    struct Attempt {
        std::function<std::string()> run;  ///< does it, and gives what came of it beside the values
        std::function<std::string()> look; ///< all that can be seen of the values
    };

    std::string name;
    std::function<Attempt()> prepare;
    Guarantee guarantee = Guarantee::Strong;
    std::vector<std::function<Attempt()>> leftovers; ///< on values in those states
};

/// An operation on values that @p make gives.
template <class Make, class Run, class Look>
Operation operation(std::string name, Make make, Run run, Look look,
                    Guarantee guarantee = Guarantee::Strong)
{
    return {std::move(name),
            [make, run, look]() -> Operation::Attempt {
                using Values = decltype(make());
                const std::shared_ptr<Values> values(new Values(make()));
                return {[values, run] { return run(*values); },
                        [values, look] { return look(*values); }};
            },
            guarantee,
            {}};
}

/// An operation that has nothing to work on.
template <class Run>
Operation operation(std::string name, Run run)
{
    return operation(
        std::move(name), [] { return 0; }, [run](int) { return run(); },
        [](int) { return std::string(); });
}

/// Runs an operation with its first request for memory failing, its second, and so on, until it gets
/// all that it wants. Each time it throws std::bad_alloc, or what @p isShortage takes for that; leaves
/// its values as its guarantee says; succeeds at the second try, which gives what it gives on such
/// values; and no memory is lost.
///
/// @returns how many requests were made to fail
std::size_t expectSurvival(const Operation& operation, Shortage shortage,
                           bool (*isShortage)(const std::exception&));

/// The same for a table of them, with both kinds of shortage. Most operations of a table take memory.
/// Where the environment variable ZKFLNETWORK_TEST_FACTOR is below 1, that part of a large table.
void expectSurvival(const std::vector<Operation>& operations,
                    bool (*isShortage)(const std::exception&) = nullptr);

} // namespace foundation::network::tests
