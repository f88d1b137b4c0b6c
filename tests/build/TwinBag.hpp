#pragma once

#include "build/NaiveBag.hpp"
#include "build/NaiveBuilt.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <functional>
#include <map>
#include <string>

namespace foundation::network::tests {

using Base = iri::detail::ArgsBase<std::u32string>;

/// A bag of the library and a naive one, for which the same calls are made.
struct TwinBag {
    IRIArgs library;
    NaiveBag naive;

    /// Sets a component of both, in UTF-32.
    void set(Field field, const Text& text);
};

/// How often which outcome was seen.
using Outcomes = std::map<std::string, std::size_t>;

/// Whether two calls fail alike, or both succeed.
testing::AssertionResult failAlike(const std::function<void()>& library,
                                   const std::function<void()>& naive, Outcomes& outcomes);

/// What is looked at: the predicates and one text, all texts, or components and hash as well.
enum class Depth { ONE_TEXT, TEXTS, EVERYTHING };

/// Whether both bags build the same, or are refused alike.
testing::AssertionResult buildAlike(const TwinBag& bag, Depth depth, Outcomes& outcomes);

} // namespace foundation::network::tests
