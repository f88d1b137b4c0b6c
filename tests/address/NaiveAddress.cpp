#include "address/NaiveAddress.hpp"

#include <algorithm>
#include <array>
#include <cstddef>
#include <sstream>

namespace foundation::network::tests {

namespace {

    using Groups = std::array<unsigned, 8>;

    std::string decimalText(const Bytes& bytes)
    {
        std::ostringstream text;
        for (std::size_t i = 0; i < bytes.size(); ++i)
            text << (i == 0 ? "" : ".") << unsigned{bytes[i]};
        return text.str();
    }

    std::string hexadecimalText(const unsigned* first, const unsigned* last)
    {
        std::ostringstream text;
        for (const unsigned* group = first; group != last; ++group)
            text << (group == first ? "" : ":") << std::hex << *group;
        return text.str();
    }

    // RFC 5952, 4.2: the longest run of at least two groups of zeros, the first of several.
    struct Run {
        std::size_t begin = 0;
        std::size_t length = 0;
    };

    Run longestRun(const Groups& groups)
    {
        Run longest;
        for (std::size_t begin = 0; begin < groups.size(); ++begin) {
            std::size_t end = begin;
            while (end < groups.size() && groups[end] == 0)
                ++end;
            if (end - begin >= 2 && end - begin > longest.length)
                longest = {begin, end - begin};
        }
        return longest;
    }

    std::string textOf(const Groups& groups, const Bytes& bytes)
    {
        const Run run = longestRun(groups);
        const Bytes tail(bytes.begin() + 12, bytes.end());
        if (run.begin == 0 && run.length == 6)
            return "::" + decimalText(tail);
        if (run.begin == 0 && run.length == 5 && groups[5] == 0xFFFF)
            return "::ffff:" + decimalText(tail);
        const unsigned* const first = groups.data();
        const unsigned* const last = first + groups.size();
        if (run.length == 0)
            return hexadecimalText(first, last);
        return hexadecimalText(first, first + run.begin)
               + "::" + hexadecimalText(first + run.begin + run.length, last);
    }

} // namespace

bool naiveIsLoopback(const Bytes& bytes)
{
    if (bytes.size() == 4)
        return bytes[0] == 127;
    return bytes == Bytes{0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 0, 1};
}

bool naiveIsLinkLocal(const Bytes& bytes)
{
    if (bytes.size() == 4)
        return bytes[0] == 169 && bytes[1] == 254;
    return bytes[0] == 0xFE && bytes[1] >= 0x80 && bytes[1] <= 0xBF;
}

bool naiveIsMulticast(const Bytes& bytes)
{
    if (bytes.size() == 4)
        return bytes[0] >= 224 && bytes[0] <= 239;
    return bytes[0] == 0xFF;
}

std::string naiveText(const Bytes& bytes)
{
    if (bytes.size() == 4)
        return decimalText(bytes);
    Groups groups{};
    for (std::size_t i = 0; i < groups.size(); ++i)
        groups[i] = bytes[2 * i] * 256U + bytes[2 * i + 1];
    return textOf(groups, bytes);
}

} // namespace foundation::network::tests
