#pragma once

#include "Input.hpp"

#include "build/TwinBag.hpp"

namespace foundation::network::fuzz {

/// Does what a line tells with both bags. The first letter is the call: one of "suhpqf" sets a
/// component, one of "SUHPQF" makes it absent, "8" and "@" set and clear the port, "=" and "+" append
/// "key=value" with "&", and with ";", in the form that the next letter chooses. Any other letter does
/// nothing.
///
/// The library's bag takes the texts in UTF-8, or, if their bytes add up to an odd number and they can
/// be read, in UTF-16.
///
/// @returns whether both did the same
testing::AssertionResult callAlike(tests::TwinBag& bag, Input line);

} // namespace foundation::network::fuzz
