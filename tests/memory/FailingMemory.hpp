#pragma once

#include <cstddef>

/// An `operator new` that fails when it is told to, for the whole process, and ICU's memory with it.
namespace foundation::network::tests {

/// Which requests for memory fail: one of them, or also all that come after it.
enum class Shortage { OfOne, FromOneOn };

/// Lets the request of that number, beginning with 1, fail from here to the end of the block, on this
/// thread.
class FailingMemory {
public:
    FailingMemory(std::size_t number, Shortage kind) noexcept;
    FailingMemory(const FailingMemory&) = delete;
    FailingMemory& operator=(const FailingMemory&) = delete;
    ~FailingMemory();

    /// Whether some request has failed since the last one of these was made, on this thread.
    static bool hasFailed() noexcept;
};

/// How many pieces of memory are in use.
std::size_t piecesInUse() noexcept;

/// Gives ICU memory from here. Comes before anything that uses ICU.
void takeOverMemoryOfIcu();

} // namespace foundation::network::tests
