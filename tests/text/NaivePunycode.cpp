#include "text/NaivePunycode.hpp"

#include <algorithm>
#include <cstdint>

namespace foundation::network::tests {

namespace {

    // RFC 3492, 5
    constexpr std::uint64_t BASE = 36, TMIN = 1, TMAX = 26, SKEW = 38, DAMP = 700;
    constexpr std::uint64_t INITIAL_BIAS = 72, INITIAL_N = 128;

    char digitOf(std::uint64_t value)
    {
        return static_cast<char>(value < 26 ? 'a' + value : '0' + (value - 26));
    }

    // RFC 3492, 6.1
    std::uint64_t adapt(std::uint64_t delta, std::uint64_t points, bool isFirst)
    {
        delta = isFirst ? delta / DAMP : delta / 2;
        delta += delta / points;
        std::uint64_t k = 0;
        for (; delta > ((BASE - TMIN) * TMAX) / 2; k += BASE)
            delta /= BASE - TMIN;
        return k + (((BASE - TMIN + 1) * delta) / (delta + SKEW));
    }

    std::string variableLength(std::uint64_t delta, std::uint64_t bias)
    {
        std::string digits;
        for (std::uint64_t k = BASE;; k += BASE) {
            const std::uint64_t t = k <= bias ? TMIN : std::clamp(k - bias, TMIN, TMAX);
            if (delta < t)
                return digits + digitOf(delta);
            digits += digitOf(t + (delta - t) % (BASE - t));
            delta = (delta - t) / (BASE - t);
        }
    }

} // namespace

std::string naivePunycode(const std::u32string& label)
{
    std::string output;
    for (const char32_t c : label)
        output += c < 0x80 ? std::string(1, static_cast<char>(c)) : "";
    const std::uint64_t basic = output.size();
    std::uint64_t handled = basic;
    if (basic > 0)
        output += '-';

    std::uint64_t n = INITIAL_N, delta = 0, bias = INITIAL_BIAS;
    while (handled < label.size()) {
        char32_t next = 0x110000;
        for (const char32_t c : label)
            next = c >= n ? std::min(next, c) : next;
        delta += (next - n) * (handled + 1);
        n = next;
        for (const char32_t c : label) {
            delta += c < n ? 1 : 0;
            if (c != n)
                continue;
            output += variableLength(delta, bias);
            bias = adapt(delta, handled + 1, handled == basic);
            delta = 0;
            ++handled;
        }
        ++delta;
        ++n;
    }
    return output;
}

} // namespace foundation::network::tests
