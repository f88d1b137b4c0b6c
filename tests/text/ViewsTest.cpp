// The conversions between the encodings, of parts of a text: they take several units at a time, and
// keep to the part that they are given.

#include "text/Utf.hpp"

#include "text/NaiveUtf8.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace foundation::network::text {
namespace {

    /// One text in the three encodings, and where its characters begin in each; the ends are last.
    struct Text {
        std::string utf8;
        std::u16string utf16;
        std::u32string utf32;
        std::vector<std::size_t> begins8;
        std::vector<std::size_t> begins16;

        explicit Text(std::u32string characters)
            : utf32(std::move(characters))
        {
            for (const char32_t c : utf32) {
                begins8.push_back(utf8.size());
                begins16.push_back(utf16.size());
                utf8 += tests::writeUtf8(c);
                if (c < 0x10000) {
                    utf16 += static_cast<char16_t>(c);
                } else {
                    utf16 += static_cast<char16_t>(0xD7C0 + (c >> 10));
                    utf16 += static_cast<char16_t>(0xDC00 + (c & 0x3FF));
                }
            }
            begins8.push_back(utf8.size());
            begins16.push_back(utf16.size());
        }
    };

    const Text texts[] = {
        Text(U"nothing but ASCII, and of that a little more than two blocks"),
        Text(U"runs of it\u00E9, longer \u20AC\U0001F600 than a step, and "
             U"\u0416shorter\uFFFD\u07FF"),
        Text(
            U"\u00E9\u00E8\u00E7\u0436\u4F8B\u4F8C\U0001F601\u4F8D\u4F8E\u4F8F\u4F90\u4F91\u4F92z"),
    };

    /// Converts a part of a text where it lies, and alone in memory that ends where it ends. A result
    /// ends with a zero, as all strings do, whatever follows the part.
    template <class Result, class View>
    void expectConversion(Result (*convert)(View), View part, const Result& expected)
    {
        using Unit = typename View::value_type;
        const auto alone = std::make_unique<Unit[]>(part.size());
        std::copy(part.begin(), part.end(), alone.get());
        for (const View source : {part, View(alone.get(), part.size())}) {
            const Result result = convert(source);
            EXPECT_TRUE(result == expected);
            EXPECT_EQ(result.c_str()[result.size()], typename Result::value_type());
        }
    }

    TEST(Views, areConvertedAndNothingBehindThem)
    {
        using To32From8 = std::u32string (*)(std::string_view);
        using To32From16 = std::u32string (*)(std::u16string_view);
        for (const Text& text : texts)
            for (std::size_t begin = 0; begin < text.utf32.size(); ++begin)
                for (std::size_t end = begin; end <= text.utf32.size(); ++end) {
                    SCOPED_TRACE(testing::Message() << "from " << begin << " to " << end);
                    const std::size_t begin8 = text.begins8[begin];
                    const std::size_t begin16 = text.begins16[begin];
                    const auto utf8 =
                        std::string_view(text.utf8).substr(begin8, text.begins8[end] - begin8);
                    const auto utf16 = std::u16string_view(text.utf16)
                                           .substr(begin16, text.begins16[end] - begin16);
                    const auto utf32 = std::u32string_view(text.utf32).substr(begin, end - begin);
                    const std::string expected8(utf8);
                    const std::u16string expected16(utf16);
                    const std::u32string expected32(utf32);
                    expectConversion<std::u32string>(To32From8(toUtf32), utf8, expected32);
                    expectConversion<std::u32string>(To32From16(toUtf32), utf16, expected32);
                    expectConversion<std::string>(toUtf8, utf32, expected8);
                    expectConversion<std::u16string>(toUtf16, utf32, expected16);
                    if (HasFailure())
                        return;
                }
    }

} // namespace
} // namespace foundation::network::text
