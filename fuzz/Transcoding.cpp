// Bytes, taken for UTF-8, UTF-16 and UTF-32: each is read and written as the naive crossings do it,
// and what was read is written back. What values hold comes back, too.

#include "Target.hpp"

#include "build/NaiveText.hpp"
#include "text/Failure.hpp"
#include "text/Fnv1a.hpp"
#include "text/LaxUtf8.hpp"
#include "text/Utf.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

namespace {

    using tests::failureOf;

    template <class Ours, class Theirs>
    void requireAlike(std::string_view what, Ours ours, Theirs theirs)
    {
        decltype(theirs()) read, expected;
        const auto failure = failureOf([&] { read = ours(); });
        const auto expectedFailure = failureOf([&] { expected = theirs(); });
        require(failure == expectedFailure && read == expected, what);
    }

    // Any elements, be they characters or not, as values hold them.
    void requireKept(const std::u32string& text)
    {
        const std::string lax = text::toLaxUtf8(text);
        require(text::fromLaxUtf8(lax) == text, "what a value holds comes back");
        require(text::fnv1a(lax) == text::fnv1a(text), "its hash is that of the elements");
        require(text::exceedsUnicode(lax)
                    == std::ranges::any_of(text, [](char32_t c) { return c > 0x10FFFF; }),
                "an element above U+10FFFF is noticed");
        requireAlike(
            "what a value holds is written as UTF-8", [&] { return text::laxToUtf8(lax); },
            [&] { return tests::toUtf8(text); });
        requireAlike(
            "and as UTF-16", [&] { return text::laxToUtf16(lax); },
            [&] { return tests::toUtf16(text); });
    }

} // namespace

void run(Input input)
{
    Input sameForUtf16 = input, sameForUtf32 = input;
    const std::string utf8 = input.rest();
    const std::u16string utf16 = sameForUtf16.units();
    const std::u32string utf32 = sameForUtf32.words();

    requireAlike(
        "UTF-8 is read", [&] { return text::toUtf32(utf8); },
        [&] { return tests::fromUtf8(utf8); });
    requireAlike(
        "UTF-16 is read", [&] { return text::toUtf32(utf16); },
        [&] { return tests::fromUtf16(utf16); });
    requireAlike(
        "UTF-8 is written", [&] { return text::toUtf8(utf32); },
        [&] { return tests::toUtf8(utf32); });
    requireAlike(
        "UTF-16 is written", [&] { return text::toUtf16(utf32); },
        [&] { return tests::toUtf16(utf32); });
    requireKept(utf32);

    std::u32string read;
    if (text::decodeUtf8(utf8, read)) {
        require(text::toUtf32(text::toUtf8(read)) == read, "what was read of UTF-8 is written");
        require(text::toUtf32(text::toUtf16(read)) == read, "also as UTF-16");
        requireKept(read);
    }
    if (!text::decodeUtf16(utf16, read))
        require(text::toUtf16(read) == utf16, "what was read of UTF-16 is written");
}

} // namespace foundation::network::fuzz
