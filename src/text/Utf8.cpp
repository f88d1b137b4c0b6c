#include "text/Utf.hpp"

#include "except/Throw.hpp"
#include "text/InvalidCodePoint.hpp"
#include "text/Utf8Decoding.hpp"

#include <algorithm>
#include <cstddef>
#include <cstring>

namespace foundation::network::text {

namespace {

    constexpr const char* INVALID_UTF8 =
        "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character";

    // Widens the ASCII characters at the front, eight at a time, and moves both positions past
    // them.
    void widenAsciiRun(const char*& at, const char* end, char32_t*& out) noexcept
    {
        constexpr std::ptrdiff_t STEP = 8;
        while (end - at >= STEP) {
            std::uint64_t word = 0;
            std::memcpy(&word, at, sizeof word);
            if ((word & 0x8080808080808080U) != 0)
                break;
            for (std::ptrdiff_t i = 0; i < STEP; ++i)
                out[i] = byteAt(at + i);
            at += STEP;
            out += STEP;
        }
        while (at != end && byteAt(at) < 0x80)
            *out++ = byteAt(at++);
    }

    // Decodes one sequence of more than one byte and moves past it. False if it has a defect.
    bool takeSequence(const char*& at, const char* end, char32_t& value) noexcept
    {
        const std::size_t count = continuationCount(byteAt(at));
        if (static_cast<std::size_t>(end - at) <= count || !decodeSequence(at, count, value))
            return false;
        at += count + 1;
        return true;
    }

} // namespace

bool decodeUtf8(std::string_view utf8, std::u32string& result)
{
    // Every sequence has one byte that is no continuation, so there are at most so many sequences.
    const auto leads = std::count_if(utf8.begin(), utf8.end(), [](char narrow) {
        return !isContinuation(static_cast<unsigned char>(narrow));
    });
    result.resize(static_cast<std::size_t>(leads));

    const char* at = utf8.data();
    const char* const end = at + utf8.size();
    char32_t* out = result.data();
    for (;;) {
        widenAsciiRun(at, end, out);
        if (at == end)
            return true;
        char32_t value = 0;
        if (!takeSequence(at, end, value))
            return false;
        *out++ = value;
    }
}

std::u32string toUtf32(std::string_view utf8)
{
    std::u32string result;
    if (!decodeUtf8(utf8, result))
        core::except::throwAnonymous(INVALID_UTF8);
    return result;
}

Utf8Sequence encodeUtf8(char32_t codePoint)
{
    const auto continuation = [codePoint](unsigned shift) {
        return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
    };
    const auto lead = [codePoint](unsigned marker, unsigned shift) {
        return static_cast<char>(marker | (codePoint >> shift));
    };
    if (codePoint < 0x80)
        return {{lead(0, 0)}, 1};
    if (codePoint < 0x800)
        return {{lead(0xC0, 6), continuation(0)}, 2};
    if (codePoint < 0x10000) // surrogates too: only UTF-16 has no way to write them
        return {{lead(0xE0, 12), continuation(6), continuation(0)}, 3};
    if (codePoint > MAX_CODE_POINT)
        throwInvalidCodePoint(codePoint);
    return {{lead(0xF0, 18), continuation(12), continuation(6), continuation(0)}, 4};
}

std::string toUtf8(std::u32string_view utf32)
{
    std::string result;
    result.reserve(utf32.size());
    for (const char32_t codePoint : utf32) {
        if (codePoint < 0x80)
            result.push_back(static_cast<char>(codePoint));
        else
            result.append(encodeUtf8(codePoint).view());
    }
    return result;
}

} // namespace foundation::network::text
