#include <foundation/network/IdnConverter.hpp>

#include "text/Failure.hpp"
#include "text/NaivePunycode.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network {
namespace {

    using namespace tests;

    // Names in both forms; the ASCII ones are those of another encoder of RFC 3492.
    struct Sample {
        const char16_t* unicode;
        const char* ascii;
    };

    const Sample samples[] = {
        {u"", ""},
        {u"example", "example"},
        {u"www.example.com", "www.example.com"},
        {u"xn", "xn"},
        // Non-transitional: these letters stay what they are.
        {u"stra\u00DFe", "xn--strae-oqa"},
        {u"fa\u00DF.de", "xn--fa-hia.de"},
        {u"\u03B2\u03CC\u03BB\u03BF\u03C2.com", "xn--nxasmm1c.com"},
        // Latin
        {u"b\u00FCcher.example", "xn--bcher-kva.example"},
        {u"m\u00FCnchen", "xn--mnchen-3ya"},
        {u"ma\u00F1ana.com", "xn--maana-pta.com"},
        {u"\u00FC", "xn--tda"},
        // Cyrillic
        {u"\u043F\u043E\u0447\u0435\u043C\u0443\u0436\u0435\u043E\u043D\u0438\u043D\u0435\u0433"
         u"\u043E\u0432\u043E\u0440\u044F\u0442\u043F\u043E\u0440\u0443\u0441\u0441\u043A\u0438",
         "xn--b1abfaaepdrnnbgefbadotcwatmq2g4l"},
        {u"\u043F\u0440\u0438\u043C\u0435\u0440.\u0438\u0441\u043F\u044B\u0442\u0430\u043D\u0438"
         u"\u0435",
         "xn--e1afmkfd.xn--80akhbyknj4f"},
        // Arabic, Hebrew
        {u"\u0645\u062B\u0627\u0644.\u0625\u062E\u062A\u0628\u0627\u0631",
         "xn--mgbh0fb.xn--kgbechtv"},
        {u"\u0644\u064A\u0647\u0645\u0627\u0628\u062A\u0643\u0644\u0645\u0648\u0634\u0639\u0631"
         u"\u0628\u064A\u061F",
         "xn--egbpdaj6bu4bxfgehfvwxn"},
        {u"\u05D8\u05E2\u05E1\u05D8", "xn--deba0ad"},
        // Han, Kana, Hangul
        {u"\u4ED6\u4EEC\u4E3A\u4EC0\u4E48\u4E0D\u8BF4\u4E2D\u6587", "xn--ihqwcrb4cv8a8dqg056pqjye"},
        {u"\u4F8B\u3048.\u30C6\u30B9\u30C8", "xn--r8jz45g.xn--zckzah"},
        {u"\uC138\uACC4\uC758\uBAA8\uB4E0\uC0AC\uB78C\uB4E4\uC774\uD55C\uAD6D\uC5B4\uB97C\uC774"
         u"\uD574\uD55C\uB2E4\uBA74\uC5BC\uB9C8\uB098\uC88B\uC744\uAE4C",
         "xn--989aomsvi5e83db1d2a355cv1e0vak1dwrv93d5xbh15a0dt30a5jpsd879ccm6fea98c"},
        // Thai, Tamil
        {u"\u0E44\u0E17\u0E22", "xn--o3cw4h"},
        {u"\u0B89\u0BA4\u0BBE\u0BB0\u0BA3\u0BAE\u0BCD.\u0BAA\u0BB0\u0BBF\u0B9F\u0BCD\u0B9A\u0BC8",
         "xn--zkc6cc5bi7f6e.xn--hlcj6aya9esc7a"},
        // Devanagari and Malayalam; Sinhala and Persian with the joiners U+200D and U+200C
        {u"\u0939\u093F\u0928\u094D\u0926\u0940", "xn--j2bd4cyah0f"},
        {u"\u0926\u0947\u0935\u0928\u093E\u0917\u0930\u0940", "xn--31b3ag7aw9cq4c"},
        {u"\u0D1C\u0D4D\u0D1E", "xn--iwce4l"},
        {u"\u0DC1\u0DCA\u200D\u0DBB\u0DD3.com", "xn--10cl1a0b660p.com"},
        {u"\u0646\u0627\u0645\u0647\u200C\u0627\u06CC.com", "xn--mgba3gch31f060k.com"},
        // Emoji
        {u"\u2603", "xn--n3h"},
        {u"\U0001F4A9.la", "xn--ls8h.la"},
        {u"i\u2764.ws", "xn--i-7iq.ws"},
    };

    TEST(IdnConverter, convertsNamesOfManyScriptsBothWays)
    {
        const IdnConverter converter;
        for (const Sample& row : samples) {
            SCOPED_TRACE(row.ascii);
            const std::u16string unicode = row.unicode;
            const std::string ascii = row.ascii;
            EXPECT_EQ(converter.toAscii(unicode), ascii);
            EXPECT_EQ(converter.toUnicode(ascii), unicode);
            // Both forms may come where the other is asked for.
            EXPECT_EQ(converter.toAscii(std::u16string(ascii.begin(), ascii.end())), ascii);
            // The other ways to ask
            EXPECT_EQ(converter.convert(unicode), ascii);
            EXPECT_EQ(converter.convert(ascii), unicode);
            EXPECT_EQ(idn_to_ascii(unicode), ascii);
            EXPECT_EQ(ascii_to_idn(ascii), unicode);
        }
    }

    struct Mapped {
        std::u16string name;
        const char* ascii;
        std::u16string unicode; // of the ASCII form
    };

    // UTS #46, 4: what a name is mapped to before anything else
    const Mapped mapped[] = {
        {u"EXAMPLE.Com", "example.com", u"example.com"},
        {u"\u00DC", "xn--tda", u"\u00FC"},
        {u"u\u0308", "xn--tda", u"\u00FC"}, // normalised
        {u"\u03A3", "xn--4xa", u"\u03C3"},
        {u"\u1E9E", "ss", u"ss"}, // the capital letter is none of the deviations
        {u"\u0130", "xn--i-9bb", u"i\u0307"},
        {u"\uFB01", "fi", u"fi"},
        {u"\uFF21\uFF22", "ab", u"ab"},
        {u"a\u00ADb", "ab", u"ab"}, // a soft hyphen is dropped
        {u"\u00AD", "", u""},
        {u"XN--TDA", "xn--tda", u"\u00FC"},
        {u"xn--strae-oqa", "xn--strae-oqa", u"stra\u00DFe"},
        // Full stops: the ideographic one, the full-width and the half-width one
        {u"a\u3002b", "a.b", u"a.b"},
        {u"a\uFF0Eb\uFF61c\u3002", "a.b.c.", u"a.b.c."},
        {u"\u4F8B\u3002\u4F8B", "xn--fsq.xn--fsq", u"\u4F8B.\u4F8B"},
        {u"\u3002", ".", u"."},
        // Rules that are not applied: STD3,
        {u"a_b", "a_b", u"a_b"},
        {u"a b", "a b", u"a b"},
        {u"a/b:c@d", "a/b:c@d", u"a/b:c@d"},
        {u"[::1]", "[::1]", u"[::1]"},
        {u"\u00E9%20", "xn--%20-9la", u"\u00E9%20"},
        {u"\u00E9?", "xn--?-9fa", u"\u00E9?"},
        // CheckBidi (RFC 5893, 2),
        {u"\u05D0a", "xn--a-zhc", u"\u05D0a"},
        {u"a\u05D0", "xn--a-0hc", u"a\u05D0"},
        {u"1\u05D0", "xn--1-0hc", u"1\u05D0"},
        {u"\u0627\u0628\u0663x", "xn--x-ymcd0v", u"\u0627\u0628\u0663x"},
        // and CheckJoiners (RFC 5892, A.1 and A.2).
        {u"a\u200Db", "xn--ab-m1t", u"a\u200Db"},
        {u"a\u200Cb", "xn--ab-j1t", u"a\u200Cb"},
    };

    TEST(IdnConverter, mapsNames)
    {
        const IdnConverter converter;
        for (const Mapped& row : mapped) {
            SCOPED_TRACE(row.ascii);
            EXPECT_EQ(converter.toAscii(row.name), row.ascii);
            EXPECT_EQ(converter.toUnicode(row.ascii), row.unicode);
        }
    }

    struct Broken {
        std::u16string name;
        std::string ascii;
    };

    // What breaks the rules of UTS #46 is no failure: it comes back as far as it goes.
    const Broken broken[] = {
        // Empty labels
        {u".", "."},
        {u"..", ".."},
        {u".a", ".a"},
        {u"a.", "a."},
        {u"a..b", "a..b"},
        {u"\u00FC..", "xn--tda.."},
        // Hyphens
        {u"-a", "-a"},
        {u"a-", "a-"},
        {u"ab--cd", "ab--cd"},
        // Labels that begin with "xn--" and are no Punycode
        {u"xn--", "xn--?"},
        {u"xn--a", "xn--a?"},
        {u"xn--0", "xn--0?"},
        {u"xn--a-", "xn--a-?"},
        {u"xn--zzzzzzzzzzzz", "xn--zzzzzzzzzzzz?"},
        {u"xn--\u00E9", "xn--?"},
        {u"\u00E9.xn--a.b", "xn--9ca.xn--a?.b"},
        // Disallowed: not assigned, for private use, no character, a line's end, more than a letter
        {u"\u0378", "?"},
        {u"\uE000", "?"},
        {u"\uFDD0", "?"},
        {u"\u2028", "?"},
        {u"\u2488", "?"},
        {u"a\uFFFDb", "a?b"},
        {u"\uFFFD\u00FC", "??"},
        {u"\u0301a", "?a"}, // begins with a combining mark
        // Surrogates without their other half
        {{0xD800}, "?"},
        {{0xDC00}, "?"},
        {{u'a', 0xD800}, "a?"},
        {{0xDC00, 0xD83D}, "??"},
        {{0xD83D, u'a', u'.', u'b'}, "?a.b"},
    };

    TEST(IdnConverter, takesNamesThatBreakTheRules)
    {
        const IdnConverter converter;
        for (const Broken& row : broken) {
            SCOPED_TRACE(row.ascii);
            EXPECT_EQ(converter.toAscii(row.name), row.ascii);
            EXPECT_EQ(idn_to_ascii(row.name), row.ascii);
        }
    }

    struct BrokenAscii {
        std::string name;
        std::u16string unicode;
    };

    using namespace std::string_literals;

    const BrokenAscii brokenAscii[] = {
        {".", u"."},
        {"a..b", u"a..b"},
        {"xn--tda.", u"\u00FC."},
        {"xn--tda..A", u"\u00FC..a"},
        {"xn--", u"xn--\uFFFD"},
        {"xn--a", u"xn--a\uFFFD"},
        {"xn--a-", u"xn--a-\uFFFD"},
        {"xn--99999999", u"xn--99999999\uFFFD"},
        {"xn--.a", u"xn--\uFFFD.a"},
        {"a b", u"a b"},
        {"a?b", u"a?b"},
        {"\x7F", u"\u007F"},
        {"a\0b"s, u"a\0b"s},
        // Bytes that are no ASCII, be they UTF-8 or not
        {"\xC3\xBC", u"\uFFFD\uFFFD"},
        {"a\xFF", u"a\uFFFD"},
        {"\x80.b", u"\uFFFD.b"},
        {"xn--a\xFF", u"xn--a\uFFFD"},
    };

    TEST(IdnConverter, takesAsciiNamesThatBreakTheRules)
    {
        const IdnConverter converter;
        for (const BrokenAscii& row : brokenAscii) {
            SCOPED_TRACE(testing::PrintToString(row.name));
            EXPECT_EQ(converter.toUnicode(row.name), row.unicode);
            EXPECT_EQ(ascii_to_idn(row.name), row.unicode);
        }
    }

    // Each byte above 0x7F, and each unit that no name may hold
    TEST(IdnConverter, neverTakesWhatIsNotAsciiForAnotherName)
    {
        const IdnConverter converter;
        for (unsigned byte = 0x80; byte <= 0xFF; ++byte) {
            const std::string name = {'a', static_cast<char>(byte)};
            ASSERT_EQ(converter.toUnicode(name), u"a\uFFFD") << byte;
        }
        for (unsigned unit = 0xD800; unit <= 0xF8FF; ++unit) { // surrogates, private use
            const std::u16string name = {u'a', static_cast<char16_t>(unit), u'b'};
            ASSERT_EQ(converter.toAscii(name), "a?b") << unit;
        }
    }

    std::u16string repeated(const std::u16string& text, std::size_t count)
    {
        std::u16string result;
        for (std::size_t i = 0; i < count; ++i)
            result += text;
        return result;
    }

    // Between two lone surrogates stands a character that the mapping drops. ICU then takes the two for
    // one character, which no name may hold, and says nothing. Who reads the ASCII form is told.
    TEST(IdnConverter, joinsLoneSurrogatesThatTheMappingBringsTogether)
    {
        const IdnConverter converter;
        const std::u16string apart{u'a', 0xD8BD, 0xFE00, 0xDED7};
        const std::u16string together{u'a', 0xD8BD, 0xDED7}; // U+3F6D7, which is not assigned
        const std::string ascii = converter.toAscii(apart);
        EXPECT_TRUE(ascii.starts_with("xn--a-")) << ascii;
        EXPECT_NE(converter.toUnicode(ascii).find(u'\uFFFD'), std::u16string::npos);
        EXPECT_EQ(converter.toAscii(together).find("xn--"), std::string::npos);
    }

    // RFC 1035, 2.3.4 allows 63 octets for a label and, as text, 253 for a name.
    TEST(IdnConverter, takesLabelsAndNamesOfAnyLength)
    {
        const IdnConverter converter;
        for (const std::size_t length : {63U, 64U, 253U, 254U, 1000U, 1001U, 100'000U}) {
            SCOPED_TRACE(length);
            const std::u16string label(length, u'a');
            EXPECT_EQ(converter.toAscii(label), std::string(length, 'a'));
            EXPECT_EQ(converter.toUnicode(std::string(length, 'a')), label);
        }
        for (const std::size_t labels : {30U, 31U, 32U, 2000U}) {
            SCOPED_TRACE(labels);
            const std::u16string name = repeated(u"\u00FC.", labels) + u"a";
            const std::string ascii = converter.toAscii(name);
            EXPECT_EQ(ascii.size(), 8 * labels + 1);
            EXPECT_EQ(ascii.substr(8 * labels - 8), "xn--tda.a");
            EXPECT_EQ(converter.toUnicode(ascii), name);
        }
        for (const std::size_t length : {63U, 64U, 253U, 254U, 1000U}) {
            SCOPED_TRACE(length);
            const std::u16string label(length, u'\u00FC');
            const std::string ascii = "xn--" + naivePunycode(std::u32string(length, U'\u00FC'));
            EXPECT_EQ(converter.toAscii(label), ascii);
            EXPECT_EQ(converter.toUnicode(ascii), label);
        }
        const std::string bad = "xn--" + std::string(100'000, 'a');
        EXPECT_EQ(converter.toUnicode(bad).back(), u'\uFFFD');
    }

    // ICU makes no Punycode of more than 1000 units in one label.
    TEST(IdnConverter, failsWithIcuAndCanStillBeUsed)
    {
        const IdnConverter converter;
        const Failure expected{typeid(IdnConverterException), "U_INPUT_TOO_LONG_ERROR"};
        for (const std::u16string& name :
             {std::u16string(1001, u'\u00FC'), std::u16string(100'000, u'\u00FC'),
              u"a." + std::u16string(1000, u'a') + u"\u00FC.b", repeated(u"\U0001F4A9", 501)}) {
            EXPECT_EQ(failureOf([&] { converter.toAscii(name); }), expected);
            EXPECT_EQ(failureOf([&] { converter.convert(name); }), expected);
            EXPECT_EQ(failureOf([&] { idn_to_ascii(name); }), expected);
            EXPECT_EQ(converter.toAscii(u"\u00FC.b"), "xn--tda.b");
            EXPECT_EQ(converter.toUnicode("xn--tda.b"), u"\u00FC.b");
        }
    }

    TEST(IdnConverter, copiesAndMovesConvertAlike)
    {
        std::optional<IdnConverter> original(std::in_place);
        IdnConverter copy(*original);
        IdnConverter assigned;
        assigned = copy;
        original.reset(); // a copy lives on by itself
        EXPECT_EQ(copy.toAscii(u"\u00FC"), "xn--tda");
        EXPECT_EQ(assigned.toUnicode("xn--tda"), u"\u00FC");

        IdnConverter moved(std::move(copy));
        EXPECT_EQ(moved.toAscii(u"\u00FC"), "xn--tda");
        copy = moved; // what was moved from may be assigned to
        EXPECT_EQ(copy.toAscii(u"\u00FC"), "xn--tda");
        IdnConverter other(std::move(copy));
        copy = std::move(other);
        EXPECT_EQ(copy.toAscii(u"\u00FC"), "xn--tda");
    }

    static_assert(std::is_nothrow_copy_constructible_v<IdnConverter>);
    static_assert(std::is_nothrow_copy_assignable_v<IdnConverter>);
    static_assert(std::is_nothrow_move_constructible_v<IdnConverter>);
    static_assert(std::is_nothrow_move_assignable_v<IdnConverter>);
    static_assert(!std::is_polymorphic_v<IdnConverter>);
    // The type of the argument alone says which way.
    static_assert(std::is_same_v<decltype(std::declval<const IdnConverter&>().convert(
                                     std::declval<const std::u16string&>())),
                                 std::string>);
    static_assert(std::is_same_v<decltype(std::declval<const IdnConverter&>().convert(
                                     std::declval<const std::string&>())),
                                 std::u16string>);

    TEST(IdnConverterException, holdsItsMessage)
    {
        const IdnConverterException failure("U_SOME_ERROR");
        EXPECT_STREQ(failure.what(), "U_SOME_ERROR");
        IdnConverterException copy(failure);
        EXPECT_STREQ(copy.what(), "U_SOME_ERROR");
        const IdnConverterException moved(std::move(copy));
        EXPECT_STREQ(moved.what(), "U_SOME_ERROR");
        copy = IdnConverterException("other");
        EXPECT_STREQ(copy.what(), "other");
        copy = failure;
        EXPECT_STREQ(copy.what(), "U_SOME_ERROR");
        EXPECT_STREQ(IdnConverterException("").what(), "");
    }

    static_assert(std::is_base_of_v<std::exception, IdnConverterException>);
    static_assert(std::has_virtual_destructor_v<IdnConverterException>);
    static_assert(!std::is_base_of_v<core::except::IException, IdnConverterException>);
    static_assert(!std::is_convertible_v<IdnConverterException*, boost::exception*>);
    static_assert(!std::is_convertible_v<std::string, IdnConverterException>);

} // namespace
} // namespace foundation::network
