#pragma once

#include "../System.hpp"

#include <cstddef>
#include <cstdint>
#include <optional>
#include <span>
#include <string>
#include <system_error>

namespace tool::bulk {

/// A file, or standard input, cannot be opened or read. The text names it.
class UnreadableSource : public std::system_error {
public:
    using std::system_error::system_error;
    explicit UnreadableSource(const std::system_error& error)
        : std::system_error(error)
    {
    }
};

/// A file, or standard input, from which bytes are read.
class Source {
public:
    /// Standard input, under the name "<stdin>".
    Source();

    /// @param path  of a file; "-" is one like any other
    /// @throws UnreadableSource if it cannot be opened
    explicit Source(const std::string& path);

    Source(const Source&) = delete;
    Source& operator=(const Source&) = delete;
    ~Source();

    /// How to call it in a message.
    const std::string& name() const noexcept { return name_; }

    /// How many bytes lie ahead, if that is known.
    std::optional<std::uint64_t> remainingSize() const;

    /// Waits for bytes and takes what there is, at most as much as @p buffer holds.
    /// @returns how many bytes that are; 0 at the end, and after an interrupt
    /// @throws UnreadableSource
    std::size_t read(std::span<char> buffer);

    /// Whether the input has ended because of an interrupt, anywhere in it.
    static bool isInterrupted() noexcept;

private:
    std::string name_;
    system::Descriptor descriptor_;
    bool isOwned_;
};

} // namespace tool::bulk
