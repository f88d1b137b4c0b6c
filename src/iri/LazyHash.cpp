#include <foundation/network/iri/detail/LazyHash.hpp>

#include <chrono>
#include <thread>

namespace foundation::network::iri::detail {

void LazyHash::waitWhileComputing() const noexcept
{
    // Most texts are done within the first few rounds. The pauses are for those of many megabytes,
    // and for a thread that computes and has a lower priority than this one.
    constexpr int EAGER_ROUNDS = 64;
    constexpr std::chrono::microseconds PAUSE(100);

    for (int round = 0; state_.load(std::memory_order_acquire) == COMPUTING; ++round) {
        if (round < EAGER_ROUNDS)
            std::this_thread::yield();
        else
            std::this_thread::sleep_for(PAUSE);
    }
}

} // namespace foundation::network::iri::detail
