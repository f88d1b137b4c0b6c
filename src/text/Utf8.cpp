#include "text/Utf.hpp"

#include "except/Throw.hpp"
#include "text/CodePointIterator.hpp"
#include "text/InvalidCodePoint.hpp"
#include "text/SameUnits.hpp"
#include "text/Utf8Decoding.hpp"
#include "text/WellFormed.hpp"

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

    // How many bytes it takes. A value that cannot be written counts as four.
    std::size_t utf8Length(char32_t c) noexcept
    {
        return 1U + unsigned{c >= 0x80} + unsigned{c >= 0x800} + unsigned{c >= 0x10000};
    }

    std::size_t utf8Length(std::u32string_view utf32) noexcept
    {
        std::size_t length = 0;
        for (const char32_t c : utf32)
            length += utf8Length(c);
        return length;
    }

    // Narrows the ASCII characters at the front, eight at a time, and moves both positions past
    // them.
    void narrowAsciiRun(const char32_t*& at, const char32_t* end, char*& out) noexcept
    {
        constexpr std::ptrdiff_t STEP = 8;
        while (end - at >= STEP) {
            char32_t bits = 0;
            for (std::ptrdiff_t i = 0; i < STEP; ++i)
                bits |= at[i];
            if (bits >= 0x80)
                break;
            for (std::ptrdiff_t i = 0; i < STEP; ++i)
                out[i] = static_cast<char>(at[i]);
            at += STEP;
            out += STEP;
        }
        while (at != end && *at < 0x80)
            *out++ = static_cast<char>(*at++);
    }

    // Writes one code point; gives the place behind it. There is room for four bytes, or for as many
    // as it takes.
    char* put(char* out, char32_t codePoint)
    {
        const auto continuation = [codePoint](unsigned shift) {
            return static_cast<char>(0x80U | ((codePoint >> shift) & 0x3FU));
        };
        const auto lead = [codePoint](unsigned marker, unsigned shift) {
            return static_cast<char>(marker | (codePoint >> shift));
        };
        if (codePoint < 0x80) {
            *out++ = lead(0, 0);
        } else if (codePoint < 0x800) {
            *out++ = lead(0xC0, 6);
            *out++ = continuation(0);
        } else if (codePoint < 0x10000) { // surrogates too: only UTF-16 has no way to write them
            *out++ = lead(0xE0, 12);
            *out++ = continuation(6);
            *out++ = continuation(0);
        } else {
            if (codePoint > MAX_CODE_POINT)
                throwInvalidCodePoint(codePoint);
            *out++ = lead(0xF0, 18);
            *out++ = continuation(12);
            *out++ = continuation(6);
            *out++ = continuation(0);
        }
        return out;
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
    if (isAllAscii(utf8)) {
        result = widenAscii(utf8);
        return true;
    }
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
        do { // what is not ASCII seldom comes alone
            char32_t value = 0;
            if (!takeSequence(at, end, value))
                return false;
            *out++ = value;
        } while (at != end && byteAt(at) >= 0x80);
    }
}

std::optional<std::string> encodeUtf8(std::u16string_view utf16)
{
    if (isAllBelow(0x80, utf16))
        return copyUnits<std::string>(utf16);
    if (wellFormedLength(utf16) < utf16.size())
        return std::nullopt;
    const Utf16Iterator begin(utf16.data());
    const Utf16Iterator end(utf16.data() + utf16.size());
    std::size_t length = 0;
    for (Utf16Iterator at = begin; at != end; ++at)
        length += utf8Length(*at);
    std::string result(length, '\0');
    char* out = result.data();
    for (Utf16Iterator at = begin; at != end; ++at)
        out = put(out, *at);
    return result;
}

std::string withUsualLeads(std::string_view utf8)
{
    std::string result(utf8);
    for (char& narrow : result) {
        const auto byte = static_cast<unsigned char>(narrow);
        narrow = static_cast<char>(byte & (byte >= 0xF8 ? 0xF7U : 0xFFU));
    }
    return result;
}

std::u32string widenAscii(std::string_view ascii)
{
    return copyUnits<std::u32string>(ascii);
}

std::u32string toUtf32(std::string_view utf8)
{
    std::u32string result;
    if (!decodeUtf8(utf8, result))
        core::except::throwAnonymous(INVALID_UTF8);
    return result;
}

void requireWellFormed(std::string_view utf8)
{
    if (wellFormedLength(utf8) < utf8.size())
        core::except::throwAnonymous(INVALID_UTF8);
}

Utf8Sequence encodeUtf8(char32_t codePoint)
{
    Utf8Sequence sequence{};
    sequence.length = static_cast<std::uint8_t>(put(sequence.bytes, codePoint) - sequence.bytes);
    return sequence;
}

std::string toUtf8(std::u32string_view utf32)
{
    if (isAllBelow(0x80, utf32))
        return copyUnits<std::string>(utf32);
    std::string result(utf8Length(utf32), '\0');
    const char32_t* at = utf32.data();
    const char32_t* const end = at + utf32.size();
    char* out = result.data();
    for (;;) {
        narrowAsciiRun(at, end, out);
        if (at == end)
            return result;
        do
            out = put(out, *at++);
        while (at != end && *at >= 0x80);
    }
}

} // namespace foundation::network::text
