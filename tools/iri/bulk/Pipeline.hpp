#pragma once

#include "Pieces.hpp"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

namespace tool::bulk {

/// A record of a piece with which something is wrong.
struct Finding {
    std::uint64_t number; ///< of the record in the piece; 0 is the first
    std::size_t begin;    ///< where it lies in the piece, in bytes
    std::size_t length;
};

/// What is made of a piece of the input.
struct Product {
    std::string output; ///< whole records
    std::vector<Finding> findings;
    std::uint64_t records = 0;
    std::uint64_t invalid = 0;
};

/// Makes something of each piece and hands that on in the order of the input.
///
/// With more than one worker, pieces are made into something at the same time; what is in work at any
/// time is bounded by a few pieces a worker.
///
/// @param workers  how many threads work; with one it is the calling thread
/// @param work  must be safe to call from several threads, if there are several workers
/// @param deliver  is called by one thread at a time
/// @throws what reading, @p work and @p deliver throw; what comes before that in the input has been
///         delivered
void runInOrder(
    Pieces& pieces, unsigned workers, const std::function<Product(const std::string& piece)>& work,
    const std::function<void(const std::string& piece, const Product& product)>& deliver);

} // namespace tool::bulk
