#include "memory/Trial.hpp"

#include <cstdlib>
#include <optional>
#include <random>
#include <sstream>

namespace foundation::network::tests {

namespace {

    bool isBadAlloc(const std::exception& failure)
    {
        return dynamic_cast<const std::bad_alloc*>(&failure) != nullptr;
    }

    // What comes of an operation.
    struct Result {
        std::string answer;
        std::string values;

        bool operator==(const Result&) const = default;
    };

    // Whether each line is one of either text's.
    bool isBetween(const std::string& before, const std::string& after, const std::string& text)
    {
        std::istringstream begin(before);
        std::istringstream end(after);
        std::istringstream lines(text);
        const auto next = [](std::istringstream& from) {
            std::string line;
            return std::getline(from, line) ? std::optional(line) : std::nullopt;
        };
        for (;;) {
            const auto first = next(begin);
            const auto last = next(end);
            const auto line = next(lines);
            if (line != first && line != last)
                return false;
            if (!first && !last)
                return true;
        }
    }

    // What the operation gives on values that look so, if a failure may leave them.
    std::optional<Result> resultFrom(const Operation& operation, const std::string& values)
    {
        for (const auto& leftover : operation.leftovers) {
            const Operation::Attempt attempt = leftover();
            if (attempt.look() == values) {
                const std::string answer = attempt.run();
                return Result{answer, attempt.look()};
            }
        }
        return std::nullopt;
    }

    // One attempt. @returns whether no request was made to fail
    bool attempt(const Operation& operation, const Result& expected, std::size_t number,
                 Shortage shortage, bool (*isShortage)(const std::exception&))
    {
        const Operation::Attempt attempt = operation.prepare();
        const std::string before = attempt.look();
        std::optional<std::string> answer;
        bool isComplete = false;
        {
            const FailingMemory memory(number, shortage);
            try {
                answer = attempt.run();
            } catch (const std::exception& failure) {
                EXPECT_TRUE(FailingMemory::hasFailed() && isShortage(failure)) << failure.what();
            }
            isComplete = !FailingMemory::hasFailed();
        }
        const std::string after = attempt.look();
        if (answer) { // it can do without what it did not get
            EXPECT_TRUE((Result{*answer, after} == expected)) << *answer << '\n' << after;
        } else {
            const bool isTrace = operation.guarantee == Guarantee::Reading
                                 && isBetween(before, expected.values, after);
            const std::optional<Result> next =
                isTrace || after == before ? expected : resultFrom(operation, after);
            EXPECT_TRUE(next) << after << "\ninstead of\n" << before;
            const std::string again = attempt.run();
            EXPECT_TRUE((Result{again, attempt.look()} == next)) << "at the second try";
        }
        return isComplete;
    }

} // namespace

std::size_t expectSurvival(const Operation& operation, Shortage shortage,
                           bool (*isShortage)(const std::exception&))
{
    SCOPED_TRACE(operation.name);
    // Once before all counting, for what is made once in a process.
    const Operation::Attempt first = operation.prepare();
    const std::string answer = first.run();
    const Result expected{answer, first.look()};
    constexpr std::size_t most = 100000;
    for (std::size_t number = 1; number < most; ++number) {
        const std::size_t before = piecesInUse();
        const bool isComplete = attempt(operation, expected, number, shortage, isShortage);
        EXPECT_EQ(piecesInUse(), before) << "memory is lost, request " << number;
        if (isComplete)
            return number - 1;
        if (testing::Test::HasFailure()) {
            ADD_FAILURE() << "at request " << number;
            return number;
        }
    }
    ADD_FAILURE() << operation.name << " never ends";
    return most;
}

namespace {

    // Which operations of a large table a slow build tries, where ZKFLNETWORK_TEST_FACTOR is below 1.
    bool isDrawn(std::size_t tableSize, std::mt19937& random)
    {
        constexpr std::size_t LARGE = 100;
        const char* const factor =
            std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
        return tableSize < LARGE || factor == nullptr
               || std::uniform_real_distribution<>()(random) < std::stod(factor);
    }

} // namespace

void expectSurvival(const std::vector<Operation>& operations,
                    bool (*isShortage)(const std::exception&))
{
    std::mt19937 random; // NOLINT(cert-msc32-c,cert-msc51-cpp): the same each time
    std::size_t tried = 0;
    std::size_t failures = 0;
    for (const Operation& operation : operations) {
        if (!isDrawn(operations.size(), random))
            continue;
        ++tried;
        for (const Shortage shortage : {Shortage::OfOne, Shortage::FromOneOn}) {
            failures += expectSurvival(operation, shortage, isShortage ? isShortage : isBadAlloc);
            if (testing::Test::HasFailure())
                return; // one flaw shows in many operations
        }
    }
    EXPECT_GT(failures, tried);
}

} // namespace foundation::network::tests
