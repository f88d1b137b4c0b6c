#pragma once

#include "Problem.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <optional>
#include <string>
#include <utility>

namespace tool {

/// A text that was read as an IRI.
struct Reading {
    std::optional<foundation::network::IRI> iri{};
    std::string why{};                ///< why there is none; empty if there is
    std::optional<Problem> problem{}; ///< the same at length, if it is the text that is none
};

/// Reads a text as an IRI; unlike the library, takes nothing for UTF-8 that is not.
Reading readIri(const std::string& text);

/// Does something with the library.
/// @returns the library's own words, if it refuses; else nothing
template <class Work>
std::optional<std::string> refusalOf(Work&& work)
{
    try {
        std::forward<Work>(work)();
        return std::nullopt;
    } catch (const foundation::core::except::IException& refusal) {
        return refusal.what();
    }
}

} // namespace tool
