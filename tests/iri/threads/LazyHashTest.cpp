#include <foundation/network/iri/detail/LazyHash.hpp>

#include "threads/Barrier.hpp"

#include <gtest/gtest.h>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <stdexcept>
#include <thread>
#include <vector>

namespace foundation::network::iri::detail {
namespace {

    constexpr std::size_t threadCount = 8;

    void onAllThreads(const std::function<void()>& body)
    {
        tests::Barrier start(threadCount);
        std::vector<std::thread> threads;
        for (std::size_t i = 0; i < threadCount; ++i)
            threads.emplace_back([&] {
                start.arriveAndWait();
                body();
            });
        for (std::thread& thread : threads)
            thread.join();
    }

    // Short enough to be over before anyone waits, and long enough to make all others sleep.
    constexpr std::chrono::milliseconds durations[] = {std::chrono::milliseconds(0),
                                                       std::chrono::milliseconds(20)};

    TEST(LazyHash, isComputedOnceHoweverManyAsk)
    {
        for (const auto duration : durations)
            for (int round = 0; round < 5; ++round) {
                LazyHash hash;
                std::atomic<int> computed = 0;
                std::atomic<int> wrong = 0;
                onAllThreads([&] {
                    const std::uint64_t answer = hash.get([&] {
                        ++computed;
                        std::this_thread::sleep_for(duration);
                        return std::uint64_t{42};
                    });
                    wrong += answer == 42 ? 0 : 1;
                });
                EXPECT_EQ(computed, 1);
                EXPECT_EQ(wrong, 0);
                EXPECT_TRUE(hash.isValid());
            }
    }

    TEST(LazyHash, isComputedByAnotherIfTheFirstFails)
    {
        for (const auto duration : durations) {
            LazyHash hash;
            std::atomic<int> computed = 0;
            std::atomic<int> failed = 0;
            std::atomic<int> wrong = 0;
            onAllThreads([&] {
                try {
                    const std::uint64_t answer = hash.get([&]() -> std::uint64_t {
                        const bool isFirst = ++computed == 1;
                        std::this_thread::sleep_for(duration);
                        if (isFirst)
                            throw std::runtime_error("no hash");
                        return 42;
                    });
                    wrong += answer == 42 ? 0 : 1;
                } catch (const std::runtime_error&) {
                    ++failed;
                }
            });
            EXPECT_EQ(computed, 2);
            EXPECT_EQ(failed, 1);
            EXPECT_EQ(wrong, 0);
        }
    }

} // namespace
} // namespace foundation::network::iri::detail
