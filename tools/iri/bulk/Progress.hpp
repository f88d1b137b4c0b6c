#pragma once

#include <chrono>
#include <cstdint>
#include <optional>

namespace tool::bulk {

/// A line on standard error that tells how far a long run is: only if that is a terminal and standard
/// output is none, and only after a second.
class Progress {
public:
    /// @param size  how many bytes the input has, if that is known
    explicit Progress(std::optional<std::uint64_t> size);
    Progress(const Progress&) = delete;
    Progress& operator=(const Progress&) = delete;

    /// Takes the line away.
    ~Progress();

    /// Shows these figures if it is time for that.
    void show(std::uint64_t records, std::uint64_t invalid, std::uint64_t bytes);

private:
    using Clock = std::chrono::steady_clock;

    std::optional<std::uint64_t> size_;
    bool isWanted_;
    bool isShown_ = false;
    Clock::time_point begin_ = Clock::now();
    Clock::time_point next_ = begin_ + std::chrono::seconds(1);
};

} // namespace tool::bulk
