#pragma once

#include "../CommandLine.hpp"
#include "RowMaker.hpp"

#include <memory>
#include <optional>
#include <span>
#include <string_view>

namespace tool::bulk {

/// A verb that makes one record of each.
struct BulkVerb {
    std::string_view name;
    std::string_view arguments; ///< for the help
    std::string_view summary;

    /// Reads the words behind the verb.
    /// @param[out] why  what is wrong with them
    /// @returns null if something is wrong
    std::unique_ptr<RowMaker> (*read)(const Arguments& words, std::string& why);
};

/// All of them, in the order of the help.
std::span<const BulkVerb> allBulkVerbs() noexcept;

} // namespace tool::bulk
