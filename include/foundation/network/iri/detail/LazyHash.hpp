#pragma once

#include <atomic>
#include <cstdint>

namespace foundation::network::iri::detail {

/// A hash that is computed when it is first asked for, once, on whichever thread comes first.
///
/// Const use from many threads is safe; taking over, exchanging and forgetting are not beside it.
class LazyHash {
public:
    /// Not computed yet.
    LazyHash() = default;

    /// @{
    /// Not copied: whether a hash was computed here stays with the object. See `assign`.
    LazyHash(const LazyHash&) = delete;
    LazyHash& operator=(const LazyHash&) = delete;
    /// @}

    /// Whether the hash belongs to the value and was computed, or promised.
    bool isValid() const noexcept
    {
        return isComputed() || isPromised_.load(std::memory_order_relaxed);
    }

    /// Whether `promise` may be called: there is no hash yet, or one that was promised only.
    bool isOpen() const noexcept { return state_.load(std::memory_order_acquire) == UNKNOWN; }

    /// From now on the hash counts as computed here, though nobody needs it yet. Whoever changes
    /// what it is computed of calls `keepPromise` before. For a computation that cannot throw.
    void promise() noexcept
    {
        if (isPromised_.load(std::memory_order_relaxed))
            return; // one that was taken over does not count as computed here
        wasComputedHere_.store(true, std::memory_order_relaxed);
        isPromised_.store(true, std::memory_order_relaxed);
    }

    /// Computes the hash, if it was promised.
    template <class Compute>
    void keepPromise(Compute compute) noexcept
    {
        if (isOpen() && isPromised_.load(std::memory_order_relaxed))
            set(compute());
    }

    /// The hash, for which @p compute is called if there is none yet. The others wait. If it
    /// throws, the next caller tries again.
    template <class Compute>
    std::uint64_t get(Compute compute)
    {
        for (;;) {
            int state = state_.load(std::memory_order_acquire);
            if (state == VALID || state == LEFT_BEHIND)
                return hash_.load(std::memory_order_relaxed);
            if (state == COMPUTING)
                waitWhileComputing();
            else if (state_.compare_exchange_strong(state, COMPUTING, std::memory_order_acquire))
                fill(compute);
        }
    }

    /// Takes over the hash of another value, if it was computed, and what was promised, along with
    /// what it is computed of.
    void assign(const LazyHash& other) noexcept
    {
        const bool isKnown = other.isComputed();
        const bool isPromised = other.isPromised_.load(std::memory_order_relaxed);
        hash_.store(other.hash_.load(std::memory_order_relaxed), std::memory_order_relaxed);
        isPromised_.store(isPromised, std::memory_order_relaxed);
        state_.store(isKnown ? VALID : UNKNOWN, std::memory_order_release);
    }

    /// Takes a hash that was computed elsewhere.
    void set(std::uint64_t hash) noexcept
    {
        hash_.store(hash, std::memory_order_relaxed);
        isPromised_.store(false, std::memory_order_relaxed);
        state_.store(VALID, std::memory_order_release);
    }

    /// Exchanges the hashes with another value's, as far as they were computed.
    void swap(LazyHash& other) noexcept
    {
        LazyHash mine;
        mine.assign(*this);
        assign(other);
        other.assign(mine);
    }

    /// Whether a hash would be answered still, if the value were gone: one that was computed here.
    bool wouldBeLeftBehind() const noexcept
    {
        return isValid() && wasComputedHere_.load(std::memory_order_relaxed);
    }

    /// The value is gone. A hash that was computed here is still answered, but belongs to nothing;
    /// one that was only taken over is forgotten. What was promised here has been kept.
    void leaveBehind() noexcept
    {
        if (isValid())
            state_.store(wouldBeLeftBehind() ? LEFT_BEHIND : UNKNOWN, std::memory_order_release);
        isPromised_.store(false, std::memory_order_relaxed);
    }

private:
    enum State : int { UNKNOWN, COMPUTING, VALID, LEFT_BEHIND };

    bool isComputed() const noexcept { return state_.load(std::memory_order_acquire) == VALID; }

    // Ends a computation, whether it succeeded or threw.
    class Settlement {
    public:
        explicit Settlement(std::atomic<int>& state) noexcept
            : state_(state)
        {
        }
        Settlement(const Settlement&) = delete;
        Settlement& operator=(const Settlement&) = delete;
        ~Settlement() { state_.store(result, std::memory_order_release); }

        int result = UNKNOWN;

    private:
        std::atomic<int>& state_;
    };

    // Not std::atomic::wait: where the system has no futex, that of GCC 12 may sleep for ever.
    void waitWhileComputing() const noexcept;

    template <class Compute>
    void fill(Compute compute)
    {
        Settlement settlement(state_);
        hash_.store(compute(), std::memory_order_relaxed);
        if (!isPromised_.load(std::memory_order_relaxed))
            wasComputedHere_.store(true, std::memory_order_relaxed);
        settlement.result = VALID;
    }

    std::atomic<int> state_{UNKNOWN};
    std::atomic<std::uint64_t> hash_{0};
    std::atomic<bool> isPromised_{false};
    std::atomic<bool> wasComputedHere_{false}; // stays with the object, whatever it takes over
};

} // namespace foundation::network::iri::detail
