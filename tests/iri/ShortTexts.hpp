#pragma once

#include <cstddef>
#include <cstdlib>
#include <string>
#include <vector>

namespace foundation::network::tests {

/// Whether there is a ZKFLNETWORK_TEST_FACTOR below 1 in the environment, for slow builds.
inline bool hasLittleTime()
{
    const char* const factor =
        std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
    return factor != nullptr && std::strtod(factor, nullptr) < 1;
}

/// Calls @p check with every text of up to @p longest pieces, the empty one first; of one piece less,
/// if there is little time.
template <class Text, class Check>
void forEachShortText(const std::vector<Text>& pieces, std::size_t longest, Check check)
{
    if (hasLittleTime())
        --longest;
    std::vector<std::size_t> digits; // the text as a number: which piece stands where
    for (;;) {
        Text text;
        for (const std::size_t digit : digits)
            text += pieces[digit];
        check(text);

        std::size_t at = 0;
        while (at < digits.size() && digits[at] + 1 == pieces.size())
            digits[at++] = 0;
        if (at < digits.size())
            ++digits[at];
        else if (digits.size() < longest)
            digits.push_back(0);
        else
            return;
    }
}

} // namespace foundation::network::tests
