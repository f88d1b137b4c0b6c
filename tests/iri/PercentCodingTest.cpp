#include "iri/PercentCoding.hpp"

#include "iri/CodingTables.hpp"
#include "iri/ComponentCoders.hpp"
#include "iri/NaiveCoding.hpp"
#include "text/Failure.hpp"
#include "text/LaxUtf8.hpp"
#include "text/Utf.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::iri {
namespace {

    using network::tests::failureOf;
    using network::tests::invalidCodePoint;

    using Text = std::u32string;

    // All texts of up to so many characters over an alphabet.
    template <class String, class Check>
    void forAllTexts(const String& alphabet, std::size_t longest, Check check)
    {
        for (std::size_t length = 0; length <= longest; ++length) {
            std::size_t count = 1;
            for (std::size_t i = 0; i < length; ++i)
                count *= alphabet.size();
            for (std::size_t number = 0; number < count; ++number) {
                String text(length, alphabet.front());
                std::size_t rest = number;
                for (auto& c : text) {
                    c = alphabet[rest % alphabet.size()];
                    rest /= alphabet.size();
                }
                check(text);
                if (testing::Test::HasFatalFailure())
                    return;
            }
        }
    }

    TEST(AsciiSet, holdsItsMembersAndNothingElse)
    {
        const AsciiSet set(" %@\x7F");
        const std::u32string_view members = U" %@\x7F";
        for (char32_t c = 0; c < 0x200; ++c)
            EXPECT_EQ(set.contains(c), members.find(c) != members.npos)
                << static_cast<std::uint32_t>(c);
        EXPECT_FALSE(set.contains(0x10000 + U'%'));
        EXPECT_FALSE(set.contains(0x80000000U + U'%'));
    }

    struct Change {
        Text text;
        Text changed;
    };

    const Change protections[] = {
        {U"", U""},
        {U"abc", U"abc"},
        {U"%", U"%"}, // too short for an escape
        {U"%4", U"%4"},
        {U"100%", U"100%"},
        {U"50%zz", U"50%zz"},
        {U"%4z", U"%4z"},
        {U"%z4", U"%z4"},
        {U"%41", U"%2541"},
        {U"a%41", U"a%2541"},
        {U"%41b", U"%2541b"},
        {U"%aF%Fa", U"%25aF%25Fa"},
        {U"%%41", U"%%2541"},
        {U"%2541", U"%252541"},
        {U"%41%4", U"%2541%4"},
        {U"%gg%00", U"%gg%2500"},
        {U"%\uFF14\uFF11", U"%\uFF14\uFF11"},             // full-width digits are no digits here
        {{U'%', U'4', 0x110000}, {U'%', U'4', 0x110000}}, // nothing is written as UTF-8 here
    };

    TEST(ProtectEscapes, escapesThePercentSignOfEachEscape)
    {
        for (const Change& row : protections) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            EXPECT_EQ(protectEscapes(row.text), row.changed);
        }
    }

    TEST(ProtectEscapes, isThatOfTheNaiveOneForAllShortTexts)
    {
        forAllTexts(Text(U"%09fFgG"), 6, [](const Text& text) {
            ASSERT_EQ(protectEscapes(text), naive::protectEscapes(text));
        });
    }

    struct Repair {
        Text text;
        Text fixed;
        Text fixedWithBrackets;
    };

    const Repair fixes[] = {
        {U"", U"", U""},
        {U"100%", U"100%25", U"100%25"},
        {U"%zz", U"%25zz", U"%25zz"},
        {U"%4", U"%254", U"%254"},
        {U"%", U"%25", U"%25"},
        {U"%%", U"%25%25", U"%25%25"},
        {U"%41", U"%41", U"%41"},
        {U"%fF", U"%fF", U"%fF"}, // the case of the digits is kept
        {U"%%41", U"%25%41", U"%25%41"},
        {U"%4%41", U"%254%41", U"%254%41"},
        {U"%4z", U"%254z", U"%254z"},
        {U"%z4", U"%25z4", U"%25z4"},
        {U"%2541", U"%2541", U"%2541"},
        {U"[x]", U"[x]", U"%5Bx%5D"},
        {U"%[]", U"%25[]", U"%25%5B%5D"},
        {U"%\uFF14\uFF11", U"%25\uFF14\uFF11", U"%25\uFF14\uFF11"}, // ASCII digits only
        {U"a b\"\u00E9\uE000", U"a b\"\u00E9\uE000", U"a b\"\u00E9\uE000"},
        {{0xD800, 0x110000}, {0xD800, 0x110000}, {0xD800, 0x110000}},
    };

    TEST(FixEscapes, escapesEachPercentSignThatBeginsNoEscape)
    {
        for (const Repair& row : fixes) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            EXPECT_EQ(fixEscapes(row.text, false), row.fixed);
            EXPECT_EQ(fixEscapes(row.text, true), row.fixedWithBrackets);
        }
    }

    TEST(FixEscapes, isThatOfTheNaiveOneForAllShortTexts)
    {
        forAllTexts(Text(U"%4fg[]"), 6, [](const Text& text) {
            ASSERT_EQ(fixEscapes(text, false), naive::fixEscapes(text, false));
            ASSERT_EQ(fixEscapes(text, true), naive::fixEscapes(text, true));
        });
    }

    TEST(FixEscapes, ofAFixedTextIsThatText)
    {
        forAllTexts(Text(U"%4fg[]"), 5, [](const Text& text) {
            const Text fixed = fixEscapes(text, true);
            ASSERT_EQ(fixEscapes(fixed, true), fixed);
        });
    }

    template <class Rules>
    void expectEscapes(const naive::Table& table)
    {
        std::size_t escaped = 0;
        for (char32_t c = 0; c <= 0xFF; ++c) {
            SCOPED_TRACE(static_cast<std::uint32_t>(c));
            const Text text(1, c);
            const Text expected = naive::applyTable(text, table);
            EXPECT_EQ(escapeMembers(text, Rules::escaped), expected);
            EXPECT_EQ(escapeMembers(U"a" + text + U"b", Rules::escaped), U"a" + expected + U"b");
            escaped += escapeMembers(text, Rules::escaped) != text ? 1U : 0U;
        }
        EXPECT_EQ(escaped, table.size);
    }

    TEST(EscapeMembers, followsTheTableOfEachComponent)
    {
        expectEscapes<UserInfoRules>(naive::userInfoTable);
        expectEscapes<HostRules>(naive::hostTable);
        expectEscapes<PathRules>(naive::pathTable);
        expectEscapes<QueryRules>(naive::queryTable);
        expectEscapes<FragmentRules>(naive::fragmentTable);
    }

    struct Kept {
        const char* component;
        std::u32string_view ours;
        std::u32string_view expected;
    };

    constexpr Kept keepSets[] = {
        {"user information", UserInfoRules::keptEscapes, naive::userInfoKeep},
        {"host", HostRules::keptEscapes, naive::hostKeep},
        {"path", PathRules::keptEscapes, naive::pathKeep},
        {"query", QueryRules::keptEscapes, naive::queryKeep},
        {"fragment", FragmentRules::keptEscapes, naive::fragmentKeep},
    };

    // Every byte value as an escape, with digits of each case.
    TEST(DecodeEscapes, leavesTheEscapesOfTheKeepSetOfEachComponent)
    {
        constexpr std::u32string_view digits = U"0123456789abcdefABCDEF";
        for (const Kept& row : keepSets) {
            SCOPED_TRACE(row.component);
            std::size_t kept = 0;
            for (const char32_t high : digits) {
                for (const char32_t low : digits) {
                    const Text escape = {U'%', high, low};
                    const Text hex = {high, low};
                    const auto value = static_cast<char32_t>(
                        std::stoul(std::string(hex.begin(), hex.end()), nullptr, 16));
                    const bool isKept = row.expected.find(value) != row.expected.npos;
                    const Text expected = isKept ? escape : Text(1, value);
                    EXPECT_EQ(decodeEscapes(escape, row.ours), expected);
                    EXPECT_EQ(decodeEscapes(U"a" + escape + U"1", row.ours),
                              U"a" + expected + U"1");
                    EXPECT_EQ(decodeEscapes(escape, {}), Text(1, value));
                    const bool isUpper = high < U'a' && low < U'a';
                    kept += isKept && isUpper ? 1U : 0U;
                }
            }
            EXPECT_EQ(kept, row.expected.size());
            EXPECT_EQ(row.ours.size(), row.expected.size());
        }
    }

    struct Decoding {
        Text text;
        std::u32string_view keep;
        Text decoded;
    };

    const Decoding decodings[] = {
        {U"a", U"", U"a"},
        {U"%41", U"", U"A"},
        {U"%00", U"", Text(1, U'\0')},
        {U"%fF", U"", U"\u00FF"}, // a value, not yet a byte of UTF-8
        {U"%C3%A9", U"", U"\u00C3\u00A9"},
        {U"%41%42c%43", U"", U"ABcC"},
        {U"%", U"", U"%"}, // no escape, but no error either
        {U"%4", U"", U"%4"},
        {U"%4z", U"", U"%4z"},
        {U"%z4", U"", U"%z4"},
        {U"a%", U"", U"a%"},
        {U"%%41", U"", U"%A"},
        {U"%4%41", U"", U"%4A"},
        {U"%2541", U"", U"%41"}, // undone once
        {U"%25%34%31", U"", U"%41"},
        {U"%\uFF14\uFF11", U"", U"%\uFF14\uFF11"}, // full-width digits are none
        {U"\u00E9\U0010FFFF", U"", U"\u00E9\U0010FFFF"},
        {{0xD800, 0xFFFF}, U"", {0xD800, 0xFFFF}},
        {U"%2f%2F%2e", U"/", U"%2f%2F."}, // what is kept keeps its digits
        {U"%25", U"%", U"%25"},
        {U"%2541", U"%", U"%2541"}, // the digits behind a kept escape stay where they are
        {U"%%2541", U"%", U"%%2541"},
        {U"%41", U"a", U"A"}, // the keep set is compared exactly
        {U"%00", std::u32string_view(U"\0", 1), U"%00"},
        {U"%FF%C3", U"\u00FF", U"%FF\u00C3"},
    };

    TEST(DecodeEscapes, undoesEachEscapeThatIsNotKept)
    {
        for (const Decoding& row : decodings) {
            SCOPED_TRACE(testing::PrintToString(row.text));
            EXPECT_EQ(decodeEscapes(row.text, row.keep), row.decoded);
        }
    }

    TEST(DecodeEscapes, givesNothingForTheEmptyText)
    {
        EXPECT_EQ(decodeEscapes(U"", U""), std::nullopt);
        EXPECT_EQ(decodeEscapes(U"", U"%"), std::nullopt);
    }

    TEST(DecodeEscapes, givesNothingForATextWithAValueAboveTheLastCodePoint)
    {
        for (const char32_t value : {char32_t{0x110000}, char32_t{0xFFFFFFFF}}) {
            const Text excess(1, value);
            EXPECT_EQ(decodeEscapes(excess, {}), std::nullopt);
            EXPECT_EQ(decodeEscapes(excess + U"a", {}), std::nullopt);
            EXPECT_EQ(decodeEscapes(U"a" + excess, {}), std::nullopt);
            EXPECT_EQ(decodeEscapes(U"%41%4" + excess, {}), std::nullopt);
        }
    }

    TEST(DecodeEscapes, isThatOfTheNaiveOneForAllShortTexts)
    {
        forAllTexts(Text(U"%245fF\u00E9"), 6, [](const Text& text) {
            ASSERT_EQ(decodeEscapes(text, {}), naive::decodeEscapes(text, {}));
            ASSERT_EQ(decodeEscapes(text, U"%$"), naive::decodeEscapes(text, U"%$"));
        });
    }

    // By the other steps: the bytes, if they are UTF-8 and read back as they are.
    std::optional<std::string> decodedInSteps(const std::string& text)
    {
        Text narrow;
        for (const char c : text)
            narrow.push_back(static_cast<unsigned char>(c));
        const Text elements = decodeEscapes(narrow, {}).value_or(Text());
        std::string bytes;
        for (const char32_t element : elements)
            bytes.push_back(static_cast<char>(element));
        Text characters;
        if (!text::decodeUtf8(bytes, characters) || text::toUtf8(characters) != bytes)
            return std::nullopt;
        return bytes;
    }

    TEST(DecodeToUtf8, undoesEscapesOfUtf8)
    {
        EXPECT_EQ(decodeToUtf8(""), "");
        EXPECT_EQ(decodeToUtf8("a title"), "a title");
        EXPECT_EQ(decodeToUtf8("a%20title"), "a title");
        EXPECT_EQ(decodeToUtf8("%C3%A9%e4%Be%8b%F0%9F%98%80"), "é例😀");
        EXPECT_EQ(decodeToUtf8("é, a%41é%C3%A9"), "é, aAéé");
        EXPECT_EQ(decodeToUtf8("100%, 50%zz, %4, %"), "100%, 50%zz, %4, %");
        EXPECT_EQ(decodeToUtf8("%é%4é"), "%é%4é");
        EXPECT_EQ(decodeToUtf8("%2541"), "%41"); // never twice
        EXPECT_EQ(decodeToUtf8("a%00b"), std::string("a\0b", 3));
    }

    TEST(DecodeToUtf8, leavesTheRestToTheOthers)
    {
        for (const char* text :
             {"%C3é", "é%A9", "%E9", "%C3", "%C3%A9%A9", "%C0%80", "%ED%A0%80", "%F4%90%80%80",
              "%F8%90%80%80", "%FF%90%80%80", "%F8%88%80%80%80"}) {
            SCOPED_TRACE(text);
            EXPECT_EQ(decodeToUtf8(text), std::nullopt);
        }
    }

    TEST(DecodeToUtf8, isThatOfTheOtherSteps)
    {
        forAllTexts(Text(U"%24aCf"), 6, [](const Text& text) {
            const std::string utf8 = text::toUtf8(text);
            ASSERT_EQ(decodeToUtf8(utf8), decodedInSteps(utf8));
        });
        forAllTexts(Text(U"%C3A9\u00E9\u4F8B"), 5, [](const Text& text) {
            const std::string utf8 = text::toUtf8(text);
            ASSERT_EQ(decodeToUtf8(utf8), decodedInSteps(utf8));
        });
        // Two and three bytes of every kind.
        const auto escaped = [](unsigned byte) {
            constexpr std::string_view DIGITS = "0123456789abcdef";
            return std::string{'%', DIGITS[byte / 16], DIGITS[byte % 16]};
        };
        constexpr unsigned continuations[] = {0x41, 0x7F, 0x80, 0x8F, 0x90,
                                              0x9F, 0xA0, 0xBF, 0xC0, 0xFF};
        for (unsigned lead = 0; lead < 0x100; ++lead)
            for (const unsigned second : continuations)
                for (const unsigned third : continuations) {
                    const std::string two = escaped(lead) + escaped(second);
                    const std::string three = two + escaped(third);
                    ASSERT_EQ(decodeToUtf8(two), decodedInSteps(two)) << lead;
                    ASSERT_EQ(decodeToUtf8(three), decodedInSteps(three)) << lead;
                    ASSERT_EQ(decodeToUtf8(three + escaped(0x80)),
                              decodedInSteps(three + escaped(0x80)))
                        << lead;
                }
        for (std::size_t before = 0; before <= 20; ++before)
            for (std::size_t behind = 0; behind <= 20; ++behind) {
                const std::string text =
                    std::string(before, 'x') + "%C3%a9%%" + std::string(behind, '7');
                ASSERT_EQ(decodeToUtf8(text), decodedInSteps(text)) << before << behind;
            }
    }

    // In UTF-32 and in the UTF-8 of the values.
    TEST(EncodeNonAscii, isTheSameOfBothEncodings)
    {
        for (char32_t c = 0; c <= 0x10FFFF; ++c) {
            const Text text{U'a', c, U'z'};
            ASSERT_EQ(encodeNonAscii(std::string_view(text::toLaxUtf8(text))),
                      text::toLaxUtf8(encodeNonAscii(text)));
        }
    }

    TEST(FixEscapes, isTheSameOfBothEncodings)
    {
        forAllTexts(Text(U"%4a[]\u00E9"), 6, [](const Text& text) {
            for (const bool brackets : {false, true})
                ASSERT_EQ(fixEscapes(std::string_view(text::toLaxUtf8(text)), brackets),
                          text::toLaxUtf8(fixEscapes(text, brackets)));
        });
    }

    TEST(EncodeNonAscii, escapesSpaceControlsAndWhatIsNotAscii)
    {
        EXPECT_EQ(encodeNonAscii(U""), U"");
        EXPECT_EQ(encodeNonAscii(U"\u00E9"), U"%C3%A9");
        EXPECT_EQ(encodeNonAscii(U"a b"), U"a%20b");
        EXPECT_EQ(encodeNonAscii(U"!~"), U"!~");
        EXPECT_EQ(encodeNonAscii(U"\x01\x1F\x20\x7F"), U"%01%1F%20%7F");
        EXPECT_EQ(encodeNonAscii(Text(1, U'\0')), U"%00");
        EXPECT_EQ(encodeNonAscii(U"%\"<>\\^`{|}[]#"), U"%\"<>\\^`{|}[]#"); // left alone
        EXPECT_EQ(encodeNonAscii(U"%c3%20%zz"), U"%c3%20%zz");             // never escaped again
        EXPECT_EQ(encodeNonAscii(Text{0xD800, 0xDFFF}), U"%ED%A0%80%ED%BF%BF");
        EXPECT_EQ(encodeNonAscii(U"\U0001F600"), U"%F0%9F%98%80");
    }

    TEST(EncodeNonAscii, failsAboveTheLastCodePoint)
    {
        const Text text = {U'a', 0x110001, 0x110000};
        EXPECT_EQ(failureOf([&] { encodeNonAscii(text); }), invalidCodePoint("0x110001"));
    }

    TEST(EncodeNonAscii, isThatOfTheNaiveOneForEveryCodePoint)
    {
        for (char32_t c = 0; c <= 0x10FFFF; ++c)
            ASSERT_EQ(encodeNonAscii({&c, 1}), naive::encodeNonAscii(Text(1, c)))
                << static_cast<std::uint32_t>(c);
    }

} // namespace
} // namespace foundation::network::iri
