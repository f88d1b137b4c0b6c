#pragma once

#include "Input.hpp"

#include <gtest/gtest.h>

#include <string_view>

/// Programs that try the library on generated input. Each target reads an input in its own way and
/// asserts what must hold; libFuzzer searches for inputs that break it, and the tests give it the
/// seeds again.
namespace foundation::network::fuzz {

/// One run. What it throws counts as a crash.
void run(Input input);

/// Ends the process if a property does not hold.
void require(bool holds, std::string_view property);
void require(const testing::AssertionResult& result);

} // namespace foundation::network::fuzz
