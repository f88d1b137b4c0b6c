#include <foundation/network/IdnConverter.hpp>

#include "text/NaivePunycode.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <algorithm>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using namespace tests;

    // Made once, and asked by every case.
    const IdnConverter& converter()
    {
        static const IdnConverter kept;
        return kept;
    }

    void append(std::u16string& text, char32_t c)
    {
        if (c < 0x10000) {
            text += static_cast<char16_t>(c);
            return;
        }
        text += static_cast<char16_t>(0xD7C0 + (c >> 10U));
        text += static_cast<char16_t>(0xDC00 + (c & 0x3FFU));
    }

    std::u16string toUtf16(const std::u32string& text)
    {
        std::u16string result;
        for (const char32_t c : text)
            append(result, c);
        return result;
    }

    rc::Gen<char32_t> from(char32_t first, char32_t last)
    {
        return rc::gen::map(rc::gen::inRange<std::uint32_t>(first, last + 1),
                            [](std::uint32_t c) { return static_cast<char32_t>(c); });
    }

    // Letters that UTS #46 maps to themselves.
    rc::Gen<char32_t> settledLetter()
    {
        return rc::gen::oneOf(from(U'a', U'z'), from(U'0', U'9'), from(0xDF, 0xF6),
                              from(0x3B1, 0x3C9), from(0x430, 0x45F), from(0x5D0, 0x5EA),
                              from(0x621, 0x63A), from(0x905, 0x914), from(0xE01, 0xE30),
                              from(0x4E00, 0x9FA5), from(0xAC00, 0xD7A3), from(0x1F600, 0x1F64F),
                              from(0x20000, 0x2A6D6));
    }

    rc::Gen<std::u32string> settledLabel()
    {
        return rc::gen::nonEmpty(rc::gen::container<std::u32string>(settledLetter()));
    }

    RC_GTEST_PROP(IdnConverter, generatedLabelsAreThePunycodeOfTheNaiveEncoder, ())
    {
        const std::u32string label = *settledLabel();
        const bool isAscii = std::ranges::all_of(label, [](char32_t c) { return c < 0x80; });
        const std::string expected =
            isAscii ? std::string(label.begin(), label.end()) : "xn--" + naivePunycode(label);
        RC_ASSERT(converter().toAscii(toUtf16(label)) == expected);
        RC_ASSERT(converter().toUnicode(expected) == toUtf16(label));
    }

    RC_GTEST_PROP(IdnConverter, generatedNamesAreTheirLabels, ())
    {
        const auto labels = *rc::gen::container<std::vector<std::u32string>>(settledLabel());
        std::u16string name;
        std::string ascii;
        for (const std::u32string& label : labels) {
            name += toUtf16(label);
            ascii += converter().toAscii(toUtf16(label));
            append(name, *rc::gen::element<char32_t>(U'.', 0x3002, 0xFF0E, 0xFF61));
            ascii += '.';
        }
        RC_ASSERT(converter().toAscii(name) == ascii);
    }

    // Any units at all, some of which are no characters.
    rc::Gen<std::u16string> anyName()
    {
        const auto unit = rc::gen::map(
            rc::gen::oneOf(
                rc::gen::inRange<unsigned>(0, 0x80), rc::gen::inRange<unsigned>(0, 0x600),
                rc::gen::inRange<unsigned>(0, 0x10000), rc::gen::inRange<unsigned>(0xD7F0, 0xE010),
                rc::gen::element<unsigned>('.', '-', 'x', 'n', 0x3002, 0x200C, 0x200D, 0xFFFD, 0xDF,
                                           0x3C2)),
            [](unsigned c) { return static_cast<char16_t>(c); });
        const auto units = rc::gen::container<std::u16string>(unit);
        return rc::gen::oneOf(
            units, rc::gen::map(units, [](const std::u16string& rest) { return u"xn--" + rest; }));
    }

    RC_GTEST_PROP(IdnConverter, generatedNamesThatConvertCleanlyComeBack, ())
    {
        const std::u16string name = *anyName();
        const std::string ascii = converter().toAscii(name);
        RC_ASSERT(std::ranges::all_of(ascii,
                                      [](char c) { return static_cast<unsigned char>(c) < 0x80; }));
        if (ascii.find('?') != std::string::npos)
            return;
        const std::u16string unicode = converter().toUnicode(ascii);
        RC_ASSERT(unicode.find(u'\uFFFD') == std::u16string::npos);
        RC_ASSERT(converter().toAscii(unicode) == ascii);
        RC_ASSERT(converter().toUnicode(converter().toAscii(unicode)) == unicode);
    }

    RC_GTEST_PROP(IdnConverter, allWaysToAskAgreeOnGeneratedNames, ())
    {
        const std::u16string name = *anyName();
        const std::string bytes = *rc::gen::arbitrary<std::string>();
        const std::string ascii = converter().toAscii(name);
        const std::u16string unicode = converter().toUnicode(bytes);
        const IdnConverter other;
        RC_ASSERT(idn_to_ascii(name) == ascii);
        RC_ASSERT(converter().convert(name) == ascii);
        RC_ASSERT(other.toAscii(name) == ascii);
        RC_ASSERT(ascii_to_idn(bytes) == unicode);
        RC_ASSERT(converter().convert(bytes) == unicode);
        RC_ASSERT(other.toUnicode(bytes) == unicode);
    }

} // namespace
} // namespace foundation::network
