#include "Printing.hpp"
#include "SpiritGrammars.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace reference {

namespace {

    bool isReference(const std::u32string& text)
    {
        ReferenceParts parts;
        const Match match = parseIriReference(text, parts);
        return match.matched && match.consumed == text.size();
    }

    using Component = const char32_t*; // nullptr: absent

    struct Reading {
        const char32_t* text;
        Component scheme, userInfo, host, port, path, query, fragment;
    };

    constexpr Reading readings[] = {
        {U"", nullptr, nullptr, nullptr, nullptr, U"", nullptr, nullptr},
        {U"http://u:p@h:8/a/b?q#f", U"http", U"u:p", U"h", U"8", U"/a/b", U"q", U"f"},
        {U"a:b", U"a", nullptr, nullptr, nullptr, U"b", nullptr, nullptr},
        {U"a:", U"a", nullptr, nullptr, nullptr, U"", nullptr, nullptr},
        {U"a:/", U"a", nullptr, nullptr, nullptr, U"/", nullptr, nullptr},
        {U"a:/b/", U"a", nullptr, nullptr, nullptr, U"/b/", nullptr, nullptr},
        {U"\u00E9:x", U"\u00E9", nullptr, nullptr, nullptr, U"x", nullptr, nullptr},
        {U"a\u0663+-.:x", U"a\u0663+-.", nullptr, nullptr, nullptr, U"x", nullptr, nullptr},
        // A scheme without its colon leaves no trace.
        {U"abc/def", nullptr, nullptr, nullptr, nullptr, U"abc/def", nullptr, nullptr},
        {U"abc", nullptr, nullptr, nullptr, nullptr, U"abc", nullptr, nullptr},
        {U"a?", nullptr, nullptr, nullptr, nullptr, U"a", U"", nullptr},
        {U"a?#", nullptr, nullptr, nullptr, nullptr, U"a", U"", U""},
        {U"?", nullptr, nullptr, nullptr, nullptr, U"", U"", nullptr},
        {U"#?", nullptr, nullptr, nullptr, nullptr, U"", nullptr, U"?"},
        {U"?/?", nullptr, nullptr, nullptr, nullptr, U"", U"/?", nullptr},
        {U"//host", nullptr, nullptr, U"host", nullptr, U"", nullptr, nullptr},
        {U"///p", nullptr, nullptr, U"", nullptr, U"/p", nullptr, nullptr},
        {U"//@", nullptr, U"", U"", nullptr, U"", nullptr, nullptr},
        {U"//@:", nullptr, U"", U"", U"", U"", nullptr, nullptr},
        {U"http://host:", U"http", nullptr, U"host", U"", U"", nullptr, nullptr},
        {U"http://h:p@x", U"http", U"h:p", U"x", nullptr, U"", nullptr, nullptr},
        {U"http://1:2@3:4", U"http", U"1:2", U"3", U"4", U"", nullptr, nullptr},
        // The user info runs across what is a host and a port in the end, and is given up.
        {U"http://h:80/x@y", U"http", nullptr, U"h", U"80", U"/x@y", nullptr, nullptr},
        {U"http://1.2.3.4.5/", U"http", nullptr, U"1.2.3.4.5", nullptr, U"/", nullptr, nullptr},
        {U"http://1.2.3.256/", U"http", nullptr, U"1.2.3.256", nullptr, U"/", nullptr, nullptr},
        {U"http://1.2.3.4:80/", U"http", nullptr, U"1.2.3.4", U"80", U"/", nullptr, nullptr},
        {U"http://1.2.3.4@h", U"http", U"1.2.3.4", U"h", nullptr, U"", nullptr, nullptr},
        {U"http://h:\u0663/", U"http", nullptr, U"h", U"\u0663", U"/", nullptr, nullptr},
        // U+013A ends in the byte of a colon, but is a letter.
        {U"//h\u013A8", nullptr, nullptr, U"h\u013A8", nullptr, U"", nullptr, nullptr},
        {U"http://[::1]/", U"http", nullptr, U"[::1]", nullptr, U"/", nullptr, nullptr},
        {U"http://u@[::1]:8", U"http", U"u", U"[::1]", U"8", U"", nullptr, nullptr},
        {U"http://[v1.x:y]/", U"http", nullptr, U"[v1.x:y]", nullptr, U"/", nullptr, nullptr},
        {U"a%zzb", nullptr, nullptr, nullptr, nullptr, U"a%zzb", nullptr, nullptr},
        {U"%", nullptr, nullptr, nullptr, nullptr, U"%", nullptr, nullptr},
        {U"a:%?%#%", U"a", nullptr, nullptr, nullptr, U"%", U"%", U"%"},
        {U"//%\uFF21\uFF42/", nullptr, nullptr, U"%\uFF21\uFF42", nullptr, U"/", nullptr, nullptr},
        {U"?\U000E0001\uE000", nullptr, nullptr, nullptr, nullptr, U"", U"\U000E0001\uE000",
         nullptr},
    };

    TEST(ReferenceIri, isAWholeReferenceWhosePortIsANumberOf16Bits)
    {
        EXPECT_TRUE(isIri(U"//h:65535/"));
        EXPECT_TRUE(isIri(U""));
        EXPECT_FALSE(isIri(U"//h:65536/"));
        EXPECT_FALSE(isIri(U"//h:/"));
        EXPECT_FALSE(isIri(U"//h:\u0663/"));
        EXPECT_FALSE(isIri(U"//h:8/ "));
    }

    TEST(Reference, takesAnIriApart)
    {
        for (const Reading& row : readings) {
            const std::u32string text = row.text;
            SCOPED_TRACE(printed(text));
            ReferenceParts parts;
            EXPECT_EQ((Match{true, text.size()}), parseIriReference(text, parts));

            const auto expectComponent = [&](const char* name, Component expected,
                                             const std::optional<Range>& range) {
                ASSERT_EQ(expected != nullptr, range.has_value()) << name;
                if (range) {
                    EXPECT_EQ(expected, text.substr(range->begin, range->end - range->begin))
                        << name;
                }
            };
            expectComponent("scheme", row.scheme, parts.scheme);
            expectComponent("userInfo", row.userInfo, parts.userInfo);
            expectComponent("host", row.host, parts.host);
            expectComponent("port", row.port, parts.port);
            expectComponent("path", row.path, parts.path);
            expectComponent("query", row.query, parts.query);
            expectComponent("fragment", row.fragment, parts.fragment);
        }
    }

    TEST(Reference, countsOffsetsFromTheFront)
    {
        ReferenceParts parts;
        parseIriReference(U"s://@:/?#", parts);
        const ReferenceParts expected{Range{0, 1}, Range{4, 4}, Range{5, 5}, Range{6, 6},
                                      Range{6, 7}, Range{8, 8}, Range{9, 9}};
        EXPECT_EQ(expected, parts);
    }

    TEST(Reference, discardsThePartsOfAnEarlierText)
    {
        ReferenceParts parts;
        parseIriReference(U"s://u@h:1/?q#f", parts);
        parseIriReference(U"", parts);
        ReferenceParts expected;
        expected.path = Range{0, 0};
        EXPECT_EQ(expected, parts);
    }

    struct Remainder {
        const char32_t* text;
        std::size_t consumed;
    };

    constexpr Remainder remainders[] = {
        {U"1a:b", 2},             // no scheme, and no colon in a first segment
        {U":", 0},                // likewise
        {U"http://u@h@x", 10},    // the first "@" decides
        {U"http://[::1", 7},      // a literal that does not end
        {U"http://[v.x]/", 7},    // no version
        {U"http://[V1.x]/", 7},   // lower case only
        {U"http://[v1.]/", 7},    // nothing behind the version
        {U"http://1.2.3.4[", 14}, // an address, and then no path
        {U"http://a%zzb/", 8},    // a host takes whole escapes only
        {U"http://u%zz@h/", 8},   // and so does a user info
        {U"http://h:8a", 10},     // a port is digits
        {U"http://h:8:9", 10},    // once
        {U"a#b#c", 3},            // one fragment
        {U"a:b[", 3},             // brackets in authorities only
        {U"//[::1]x", 7},         // nothing between a literal and the path
        {U"a\U000E0001", 1},      // private use in queries only
        {U"a#\U000E0001", 2},     // likewise
        {U"a\uE000", 1},          // likewise
        {U"a?\uFDD0", 2},         // noncharacters nowhere
        {U"a?\U0001FFFE", 2},     // likewise
        {U"a?\U0010FFFE", 2},     // likewise
        {U"//\u0BF0x:\u0BF0", 5}, // U+0BF0 is a number, but no decimal digit
        {U"ab c", 2},             // a space nowhere
    };

    TEST(Reference, leavesWhatItDoesNotTake)
    {
        for (const Remainder& row : remainders) {
            SCOPED_TRACE(printed(row.text));
            ReferenceParts parts;
            EXPECT_EQ((Match{true, row.consumed}), parseIriReference(row.text, parts));
        }
    }

    TEST(Reference, refusesForbiddenCharactersInEveryComponent)
    {
        for (const char32_t c : std::u32string(U"\t\n \"\\`<>^{|}\u007F\uFFFE\uFFFF")) {
            for (const std::u32string before : {U"", U"//", U"//h:", U"//u@", U"/", U"?", U"#"}) {
                const std::u32string text = before + c;
                EXPECT_FALSE(isReference(text)) << printed(text);
            }
        }
    }

    TEST(Reference, comparesWholeCodePoints)
    {
        // Each of these holds the low bits of a delimiter, and none is in any class.
        for (const char32_t mask : {0xFFFFFF00u, 0x80000000u, 0x00200000u, 0x00110000u}) {
            for (const char32_t delimiter : std::u32string(U":/?#[]@%.v019aA!-")) {
                const char32_t c = mask | delimiter;
                for (const std::u32string before :
                     {U"", U"a", U"a:", U"//", U"//h:", U"//u@", U"//[", U"//[::1", U"//[v1", U"/",
                      U"?", U"#", U"%", U"%1"}) {
                    ReferenceParts parts;
                    ReferenceParts expected;
                    const Match match = parseIriReference(before, expected);
                    EXPECT_EQ(match, parseIriReference(before + c, parts)) << printed(before + c);
                    EXPECT_EQ(expected, parts) << printed(before + c);
                }
            }
        }
    }

    constexpr const char32_t* literals[] = {
        U"1:2:3:4:5:6:7:8",
        U"::2:3:4:5:6:7:8",
        U"::3:4:5:6:7:8",
        U"1::3:4:5:6:7:8",
        U"1:2::4:5:6:7:8",
        U"1:2:3::5:6:7:8",
        U"1:2:3:4::6:7:8",
        U"1:2:3:4:5::7:8",
        U"1:2:3:4:5:6::8",
        U"1:2:3:4:5:6:7::",
        U"::4:5:6:7:8",
        U"1::4:5:6:7:8",
        U"1::8",
        U"1::",
        U"::",
        U"::1",
        U"1:2:3:4:5:6:1.2.3.4",
        U"::2:3:4:5:6:1.2.3.4",
        U"1::3:4:5:6:1.2.3.4",
        U"1:2:3:4:5::1.2.3.4",
        U"::1.2.3.4",
        U"::ffff:1.2.3.4",
        U"::255.249.199.99",
        U"::0.0.0.0",
        U"FFFF:0:00:000:0000:a:B:c",
        U"\uFF11\uFF21\uFF46::\uFF10",
        U"v1.x:y",
        U"v\uFF11f.\u00E9:!",
        U"v1.~",
    };

    constexpr const char32_t* notLiterals[] = {
        U"",
        U":",
        U"1",
        U"1:2:3:4:5:6:7",
        U"1:2:3:4:5:6:7:8:9",
        U"1:2:3:4:5:6:7:8:",
        U"1:2:3:4:5:6:7::8",
        U"1:2:3:4:5:6:7:8::",
        U"::1:2:3:4:5:6:7:8",
        U"1:::2",
        U":::",
        U":1::",
        U"1::2::3",
        U"12345::",
        U"g::",
        U"::1:",
        U"1:2:3:4:5:6:7:1.2.3.4",
        U"1:2:3:4:5:6::1.2.3.4",
        U"::1.2.3.4:5",
        U"::1.2.3",
        U"::1.2.3.4.5",
        U"::1.2.3.256",
        U"::1.2.3.01",
        U"::1.2.3.00",
        U"::1.2.3.0\u0663", // the digit behind a zero is any of Unicode
        U"::1.2.3.\u0663",  // but a number has ASCII digits
        U"::1.2.3.1234",
        U"::1.2..4",
        U"::1.2.3.",
        U"fe80::1%25eth0",
        U"v1x",
        U"vg.x",
        U"v1.x/y",
        U"v1.x@y",
        U"v1.%41",
    };

    TEST(Reference, knowsIpLiterals)
    {
        for (const char32_t* literal : literals)
            EXPECT_TRUE(isReference(U"//[" + std::u32string(literal) + U"]")) << printed(literal);
        for (const char32_t* literal : notLiterals)
            EXPECT_FALSE(isReference(U"//[" + std::u32string(literal) + U"]")) << printed(literal);
    }

    std::u32string widened(const std::string& text)
    {
        return {text.begin(), text.end()};
    }

    TEST(Reference, readsOctetsWithOverflow)
    {
        for (int value = 0; value < 2000; ++value) {
            const std::string digits = std::to_string(value);
            EXPECT_EQ(value < 256, isReference(widened("//[::" + digits + ".2.3.4]"))) << value;
            EXPECT_EQ(value < 256, isReference(widened("//[::1.2.3." + digits + "]"))) << value;
            EXPECT_FALSE(isReference(widened("//[::1.2.3.0" + digits + "]"))) << value;
        }
    }

} // namespace

} // namespace reference
