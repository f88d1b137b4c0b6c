// Long names, which the converter takes some labels at a time: that they become what ICU makes of them
// in one go.

#include <foundation/network/IdnConverter.hpp>

#include <gtest/gtest.h>
#include <unicode/idna.h>
#include <unicode/unistr.h>

#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <string>
#include <string_view>

namespace foundation::network {
namespace {

    // What ICU makes of a whole name, or the name of its error.
    struct Converted {
        std::u16string ascii;
        std::u16string unicode;
        std::string error;

        bool operator==(const Converted&) const = default;
    };

    std::u16string textOf(const icu::UnicodeString& text)
    {
        return {text.getBuffer(), static_cast<std::size_t>(text.length())};
    }

    // The bytes of a text of ASCII characters, and something else for each that is none.
    std::string bytesOf(const std::u16string& text)
    {
        std::string result;
        for (const char16_t c : text)
            result += c < 0x80 ? static_cast<char>(c) : '\xFF';
        return result;
    }

    Converted inOneGo(const std::u16string& name, const std::u16string& asciiName)
    {
        UErrorCode code = U_ZERO_ERROR;
        const std::unique_ptr<const icu::IDNA> idna(icu::IDNA::createUTS46Instance(
            UIDNA_NONTRANSITIONAL_TO_ASCII | UIDNA_NONTRANSITIONAL_TO_UNICODE, code));
        icu::IDNAInfo findings;
        icu::UnicodeString ascii;
        icu::UnicodeString unicode;
        idna->nameToASCII(icu::UnicodeString(name.data(), static_cast<std::int32_t>(name.size())),
                          ascii, findings, code);
        icu::IDNAInfo others;
        idna->nameToUnicode(
            icu::UnicodeString(asciiName.data(), static_cast<std::int32_t>(asciiName.size())),
            unicode, others, code);
        if (U_FAILURE(code))
            return {{}, {}, u_errorName(code)};
        return {textOf(ascii), textOf(unicode), {}};
    }

    Converted byTheConverter(const std::u16string& name, const std::string& asciiName)
    {
        static const IdnConverter kept;
        try {
            const std::string ascii = kept.toAscii(name);
            return {{ascii.begin(), ascii.end()}, kept.toUnicode(asciiName), {}};
        } catch (const IdnConverterException& failure) {
            return {{}, {}, failure.what()};
        }
    }

    // What is to be seen of a character that is none of ASCII in the result of toAscii.
    std::u16string withQuestionMarks(std::u16string text)
    {
        for (char16_t& c : text)
            c = c < 0x80 ? c : u'?';
        return text;
    }

    // Answers whether the name could be converted.
    bool expectSame(const std::u16string& name)
    {
        const std::string asciiName = bytesOf(name);
        std::u16string seen;
        for (const char c : asciiName)
            seen += c == '\xFF' ? u'\uFFFD' : static_cast<char16_t>(c);
        Converted expected = inOneGo(name, seen);
        expected.ascii = withQuestionMarks(expected.ascii);
        EXPECT_TRUE(byTheConverter(name, asciiName) == expected) << "a name of " << name.size();
        return expected.error.empty();
    }

    std::u16string repeated(std::u16string_view piece, std::size_t length)
    {
        std::u16string result;
        while (result.size() < length)
            result += piece;
        return result;
    }

    // Dots of all kinds, letters that are mapped, marks that want a letter before them, letters of
    // both directions, joiners, half characters, labels that only look like Punycode.
    constexpr std::u16string_view pieces[] = {
        u".",      u".",      u".",      u"\u3002", u"\uFF0E",  u"\u2488", u"a",          u"A",
        u"1",      u"-",      u"--",     u"xn--",   u"xn--tda", u"xn--a",  u"xn--\u00FC", u"\u00FC",
        u"\u00DF", u"\u0301", u"\u0338", u"\u0644", u"\u05D0",  u"\u0661", u"\u200D",     u"\u200C",
        u"\u094D", u"\u1100", u"\u1161", u"\u00AD", u"\xD83D",  u"\xDE00", u"\U0001F600", u"_",
        u" ",      u"\u2260", u"\uFB01", u"\u212B",
    };

    TEST(IdnConverterLongNames, becomeWhatTheyBecomeInOneGo)
    {
        std::mt19937 random(20); // NOLINT(cert-msc32-c,cert-msc51-cpp): the same in each run
        int converted = 0;
        for (int round = 0; round < 400; ++round) {
            const std::size_t length = 900 + random() % 3000;
            // Some names have hardly any dots, and some hardly anything else.
            const std::size_t kinds = 3 + random() % (std::size(pieces) - 3);
            std::u16string name;
            while (name.size() < length)
                name += pieces[random() % 8 == 0 ? random() % 3 : random() % kinds];
            SCOPED_TRACE(round);
            converted += expectSame(name) ? 1 : 0;
        }
        EXPECT_GT(converted, 100);
    }

    TEST(IdnConverterLongNames, mayHaveTheirDotsAnywhere)
    {
        for (const std::size_t length : {1022U, 1023U, 1024U, 1025U, 1026U, 2049U, 2050U}) {
            SCOPED_TRACE(length);
            for (const std::u16string_view end : {u"", u".", u"..", u".b", u".\u0301", u".\u0644",
                                                  u"\u0301.", u".xn--tda", u"\u3002x"}) {
                expectSame(std::u16string(length, u'a') + std::u16string(end));
                expectSame(repeated(u"\u00FC.", length) + std::u16string(end));
                expectSame(std::u16string(length, u'.') + std::u16string(end));
            }
        }
    }

    TEST(IdnConverterLongNames, failWhereOneOfTheirLabelsDoes)
    {
        const std::u16string name =
            repeated(u"\u00FC.", 3000) + std::u16string(1001, u'\u00FC') + u".a";
        try {
            idn_to_ascii(name);
            FAIL() << "converted";
        } catch (const IdnConverterException& failure) {
            EXPECT_STREQ(failure.what(), "U_INPUT_TOO_LONG_ERROR");
        }
    }

} // namespace
} // namespace foundation::network
