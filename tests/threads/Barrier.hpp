#pragma once

#include <condition_variable>
#include <cstddef>
#include <mutex>

namespace foundation::network::tests {

/// Where a number of threads wait for each other, again and again. That of the standard library may
/// sleep for ever where the system has no futex, with GCC 12.
class Barrier {
public:
    explicit Barrier(std::size_t threads)
        : threads_(threads)
    {
    }

    /// Waits until all threads have come here.
    void arriveAndWait()
    {
        std::unique_lock lock(mutex_);
        const std::size_t round = round_;
        if (++arrived_ == threads_) {
            arrived_ = 0;
            ++round_;
            changed_.notify_all();
        } else {
            changed_.wait(lock, [&] { return round_ != round; });
        }
    }

private:
    const std::size_t threads_;
    std::mutex mutex_;
    std::condition_variable changed_;
    std::size_t arrived_ = 0; // guarded by mutex_, as is the next
    std::size_t round_ = 0;
};

} // namespace foundation::network::tests
