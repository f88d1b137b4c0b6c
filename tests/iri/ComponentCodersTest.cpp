#include "iri/ComponentCoders.hpp"

#include "iri/NaiveCoding.hpp"
#include "text/Failure.hpp"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace foundation::network::iri {
namespace {

    using network::tests::failureOf;
    using network::tests::invalidCodePoint;
    using network::tests::invalidUtf8;

    using Text = std::u32string;

    // One conversion with its context, so that a table can hold it.
    using Convert = Conversion (*)(std::u32string_view);

    template <auto CONVERSION, auto CONTEXT>
    Conversion with(std::u32string_view text)
    {
        return CONVERSION(text, CONTEXT);
    }

    constexpr NoContext NONE{};
    constexpr PathContext ALONE{};
    constexpr PathContext BEHIND_SCHEME{.schemePresent = true};
    constexpr PathContext BEHIND_USER_INFO{.userInfoPresent = true};
    constexpr PathContext BEHIND_HOST{.hostPresent = true};
    constexpr QueryContext PLAIN{};
    constexpr QueryContext FORM{.formEncoded = true};

    struct Row {
        Convert convert;
        Text text;
        Conversion converted; // nothing: the conversion reports a failure
    };

    template <std::size_t SIZE>
    void expectConverted(const Row (&rows)[SIZE])
    {
        int number = 0;
        for (const Row& row : rows) {
            SCOPED_TRACE(testing::Message()
                         << "row " << number++ << ": " << testing::PrintToString(row.text));
            EXPECT_EQ(row.convert(row.text), row.converted);
        }
    }

    const Row userInfoRows[] = {
        // ":" is in no table here.
        {with<UserInfoCoder::decodedToIri, NONE>, U"a:b", U"a:b"},
        {with<UserInfoCoder::asciiToIri, NONE>, U"a%3Ab", U"a:b"},
        {with<UserInfoCoder::asciiToIri, NONE>, U"%2f", U"%2f"}, // kept, with its digits
        {with<UserInfoCoder::asciiToIri, NONE>, U"%3d%3B%5e%7C", U"%3d%3B%5e%7C"},
        {with<UserInfoCoder::decodedToIri, NONE>, U" /;=@|", U"%20%2F%3B%3D%40%7C"},
        {with<UserInfoCoder::decodedToIri, NONE>, U"%41%", U"%2541%"},
        {with<UserInfoCoder::decodedToIri, NONE>, U"\uE000", U"%EE%80%80"},
        {with<UserInfoCoder::decodedToAscii, NONE>, U"\u00E9 ", U"%C3%A9%20"},
        {with<UserInfoCoder::asciiToDecoded, NONE>, U"a%3Ab%2F", U"a:b/"},
    };

    TEST(UserInfoCoder, converts)
    {
        expectConverted(userInfoRows);
    }

    const Row hostRows[] = {
        {with<HostCoder::decodedToIri, NONE>, U"a b", U"a%20b"},
        {with<HostCoder::iriToDecoded, NONE>, U"a%20b", U"a b"},
        // The host's own table holds "%", so what protected an escape is escaped as well.
        {with<HostCoder::decodedToIri, NONE>, U"%41", U"%252541"},
        {with<HostCoder::decodedToIri, NONE>, U"%", U"%25"},
        {with<HostCoder::decodedToIri, NONE>, U"[::1]", U"%5B%3A%3A1%5D"},
        {with<HostCoder::decodedToIri, NONE>, U"\"<|", U"%22%3C%7C"}, // forbidden in any IRI
        {with<HostCoder::asciiToIri, NONE>, U"%3a%2F%41", U"%3a%2FA"},
        {with<HostCoder::asciiToIri, NONE>, U"%22", U"%22"}, // undone, then escaped again
        {with<HostCoder::asciiToIri, NONE>, U"%7c", U"%7C"},
        {with<HostCoder::iriToAscii, NONE>, U"\u043F\u0440", U"%D0%BF%D1%80"}, // no Punycode
        {with<HostCoder::decodedToAscii, NONE>, U"%\u00E9", U"%25%C3%A9"},
        {with<HostCoder::asciiToDecoded, NONE>, U"%D0%BF%25", U"\u043F%"},
    };

    TEST(HostCoder, converts)
    {
        expectConverted(hostRows);
    }

    const Row pathRows[] = {
        {with<PathCoder::decodedToIri, ALONE>, U"a:b/c", U"a%3Ab/c"},
        {with<PathCoder::decodedToIri, BEHIND_SCHEME>, U"a:b/c", U"a:b/c"},
        {with<PathCoder::decodedToIri, BEHIND_USER_INFO>, U"a:b/c", U"a:b/c"},
        {with<PathCoder::decodedToIri, BEHIND_HOST>, U"a:b/c", U"a:b/c"},
        {with<PathCoder::decodedToIri, ALONE>, U"/a:b", U"/a:b"},
        {with<PathCoder::decodedToIri, ALONE>, U":a:b/c:d", U"%3Aa%3Ab/c:d"},
        {with<PathCoder::decodedToIri, ALONE>, U"a:b", U"a%3Ab"}, // without a slash the whole text
        {with<PathCoder::decodedToIri, ALONE>, U":", U"%3A"},
        {with<PathCoder::decodedToIri, ALONE>, U"", U""},
        {with<PathCoder::decodedToAscii, ALONE>, U"\u00E9:b", U"%C3%A9%3Ab"},
        {with<PathCoder::decodedToAscii, BEHIND_SCHEME>, U"\u00E9:b", U"%C3%A9:b"},
        {with<PathCoder::asciiToIri, ALONE>, U"a%3ab:/c%3A", U"a%3Ab%3A/c:"},
        {with<PathCoder::asciiToIri, ALONE>, U"%2Fa:b", U"/a:b"}, // begins with "/" once undone
        {with<PathCoder::asciiToIri, ALONE>, U"a%2Fb:c", U"a/b:c"},
        {with<PathCoder::asciiToIri, BEHIND_HOST>, U"a%3ab:", U"a:b:"},
        {with<PathCoder::asciiToDecoded, ALONE>, U"a%3ab:", U"a:b:"},
        // Neither of these two knows the rule of the first segment.
        {with<PathCoder::iriToAscii, ALONE>, U"a:b", U"a:b"},
        {with<PathCoder::iriToDecoded, ALONE>, U"a:b", U"a:b"},
        {with<PathCoder::asciiToIri, BEHIND_HOST>, U"%2f", U"/"}, // "/" is not kept in a path
        {with<PathCoder::asciiToIri, BEHIND_HOST>, U"%3f%5b%25", U"%3f%5b%25"},
        {with<PathCoder::decodedToIri, BEHIND_HOST>, U"[?]#%", U"%5B%3F%5D%23%"},
        {with<PathCoder::decodedToIri, BEHIND_HOST>, U"\uE000\\", U"%EE%80%80%5C"},
    };

    TEST(PathCoder, converts)
    {
        expectConverted(pathRows);
    }

    const Row queryRows[] = {
        {with<QueryCoder::decodedToIri, FORM>, U"a b", U"a+b"},
        {with<QueryCoder::decodedToIri, PLAIN>, U"a b", U"a%20b"},
        {with<QueryCoder::decodedToIri, PLAIN>, U"a+b", U"a+b"},
        {with<QueryCoder::decodedToIri, FORM>, U"%26[#]", U"%26%5B%23%5D"}, // its escapes stay
        {with<QueryCoder::decodedToIri, PLAIN>, U"%26[#]", U"%2526[%23]"},
        {with<QueryCoder::decodedToIri, FORM>, U"\"\u00E9", U"%22\u00E9"},
        {with<QueryCoder::decodedToAscii, FORM>, U"\u00E9 b%", U"%C3%A9+b%"},
        {with<QueryCoder::iriToDecoded, FORM>, U"a+b%26c", U"a+b%26c"},
        {with<QueryCoder::iriToDecoded, PLAIN>, U"a+b%26c", U"a+b&c"},
        {with<QueryCoder::iriToDecoded, FORM>, U"\u00E9 ", U"%C3%A9%20"},
        {with<QueryCoder::iriToDecoded, FORM>, U"", U""},
        {with<QueryCoder::asciiToIri, FORM>, U"%41%E9+\u00E9", U"%41%E9+\u00E9"}, // unchanged
        {with<QueryCoder::asciiToIri, PLAIN>, U"%41%E9+", U"A%E9+"},
        {with<QueryCoder::asciiToDecoded, FORM>, U"%C3%A9+%26", U"%C3%A9+%26"},
        {with<QueryCoder::asciiToDecoded, PLAIN>, U"%C3%A9+%26", U"\u00E9+&"},
        // Private use characters may stand in a query.
        {with<QueryCoder::decodedToIri, PLAIN>, U"\uE000", U"\uE000"},
        {with<QueryCoder::decodedToIri, FORM>, U"\uE000", U"\uE000"},
        {with<QueryCoder::asciiToIri, PLAIN>, U"%EE%80%80", U"\uE000"},
        {with<QueryCoder::asciiToIri, PLAIN>, U"%3c%2F", U"%3c/"},
    };

    TEST(QueryCoder, converts)
    {
        expectConverted(queryRows);
    }

    const Row fragmentRows[] = {
        {with<FragmentCoder::decodedToIri, NONE>, U"\uE000", U"%EE%80%80"},
        {with<FragmentCoder::asciiToIri, NONE>, U"%00", U"%00"}, // forbidden, so escaped again
        {with<FragmentCoder::asciiToIri, NONE>, U"%EE%80%80", U"%EE%80%80"},
        {with<FragmentCoder::decodedToIri, NONE>, U" \"#?", U"%20%22#?"},
        {with<FragmentCoder::asciiToIri, NONE>, U"%3c%60%23", U"%3c%60#"},
        {with<FragmentCoder::iriToDecoded, NONE>, U"%00a", Text(U"\0a", 2)},
        {with<FragmentCoder::decodedToAscii, NONE>, U"\u200E", U"%E2%80%8E"},
        {with<FragmentCoder::asciiToDecoded, NONE>, U"%E2%80%8E", U"\u200E"},
    };

    TEST(FragmentCoder, converts)
    {
        expectConverted(fragmentRows);
    }

    // What all five do alike.
    template <class Coder>
    class EveryCoder : public testing::Test {
    protected:
        static constexpr typename Coder::Context context{};
    };

    using Coders = testing::Types<UserInfoCoder, HostCoder, PathCoder, QueryCoder, FragmentCoder>;
    TYPED_TEST_SUITE(EveryCoder, Coders);

    TYPED_TEST(EveryCoder, joinsTheBytesOfACharacter)
    {
        EXPECT_EQ(TypeParam::iriToAscii(U"\u00E9", this->context), U"%C3%A9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%C3%A9", this->context), U"\u00E9");
        EXPECT_EQ(TypeParam::asciiToIri(U"%C3%A9", this->context), U"\u00E9");
        EXPECT_EQ(TypeParam::asciiToDecoded(U"%C3%A9", this->context), U"\u00E9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"\u00E9%C3%A9", this->context), U"\u00E9\u00E9");
    }

    TYPED_TEST(EveryCoder, decodersFailOnTheEmptyText)
    {
        EXPECT_EQ(TypeParam::iriToDecoded(U"", this->context), std::nullopt);
        EXPECT_EQ(TypeParam::asciiToIri(U"", this->context), std::nullopt);
        EXPECT_EQ(TypeParam::asciiToDecoded(U"", this->context), std::nullopt);
        EXPECT_EQ(TypeParam::decodedToIri(U"", this->context), U"");
        EXPECT_EQ(TypeParam::decodedToAscii(U"", this->context), U"");
        EXPECT_EQ(TypeParam::iriToAscii(U"", this->context), U"");
    }

    TYPED_TEST(EveryCoder, keepsBytesThatAreNoUtf8AsEscapesInAnIri)
    {
        EXPECT_EQ(TypeParam::asciiToIri(U"%E9", this->context), U"%E9");
        EXPECT_EQ(TypeParam::asciiToIri(U"%e9%C3%A9", this->context), U"%E9\u00E9");
        EXPECT_EQ(TypeParam::asciiToIri(U"%E2%82", this->context), U"%E2%82");
    }

    TYPED_TEST(EveryCoder, readsBytesThatAreNoUtf8AsCodePointsOfTheirValues)
    {
        EXPECT_EQ(TypeParam::iriToDecoded(U"%E9", this->context), U"\u00E9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%e2%82", this->context), U"\u00E2\u0082");
        EXPECT_EQ(TypeParam::asciiToDecoded(U"%E9", this->context), U"\u00E9");
    }

    // What the first pass leaves as an escape is undone a second time, but only where bytes had to
    // be repaired.
    TYPED_TEST(EveryCoder, decodesTwiceWhereBytesAreNoUtf8)
    {
        EXPECT_EQ(TypeParam::iriToDecoded(U"%2541", this->context), U"%41");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%2541%E9", this->context), U"A\u00E9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%E9%25%34%31", this->context), U"\u00E9A");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%2541\u00E9", this->context), U"%41\u00E9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%252541%E9", this->context), U"%41\u00E9");
    }

    TYPED_TEST(EveryCoder, takesAPercentSignThatBeginsNoEscapeAsItself)
    {
        EXPECT_EQ(TypeParam::iriToDecoded(U"100%", this->context), U"100%");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%zz%4", this->context), U"%zz%4");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%%41", this->context), U"%A");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%\u00E9", this->context), U"%\u00E9");
        EXPECT_EQ(TypeParam::iriToDecoded(U"%\uFF14\uFF11", this->context), U"%\uFF14\uFF11");
        EXPECT_EQ(TypeParam::asciiToIri(U"100%", this->context), U"100%");
        EXPECT_EQ(TypeParam::iriToAscii(U"100%", this->context), U"100%");
    }

    // The decoder's elements are narrowed to bytes there, so what is not ASCII keeps its low byte.
    TYPED_TEST(EveryCoder, takesTheLowBytesOfWhatIsNotAsciiInAnAsciiText)
    {
        EXPECT_EQ(TypeParam::asciiToIri(U"\u0141", this->context), U"A");
        EXPECT_EQ(TypeParam::asciiToIri(U"\u00C3\u00A9", this->context), U"\u00E9");
        EXPECT_EQ(TypeParam::asciiToIri(U"\u00E9", this->context), U"%E9");
    }

    TYPED_TEST(EveryCoder, failsOnValuesThatAreNoCharacters)
    {
        // Overlong, a surrogate, too large, too large behind a lead of eight ones, five bytes.
        for (const Text text : {U"%C0%80", U"%ED%A0%80", U"%F4%90%80%80", U"%FF%80%80%80",
                                U"%F8%88%80%80%80", U"%FC%84%80%80%80%80"}) {
            SCOPED_TRACE(testing::PrintToString(text));
            EXPECT_EQ(failureOf([&] { TypeParam::iriToDecoded(text, this->context); }),
                      invalidUtf8());
            EXPECT_EQ(failureOf([&] { TypeParam::asciiToIri(text, this->context); }),
                      invalidUtf8());
            EXPECT_EQ(failureOf([&] { TypeParam::asciiToDecoded(text, this->context); }),
                      invalidUtf8());
        }
        // A lead from F8 up may stand for one of four bytes.
        EXPECT_EQ(TypeParam::iriToDecoded(U"%F9%80%80%80", this->context), U"\U00040000");
    }

    TYPED_TEST(EveryCoder, failsAboveTheLastCodePointWhereUtf8IsWritten)
    {
        const Text excess = {U'a', 0x110000};
        EXPECT_EQ(failureOf([&] { TypeParam::iriToAscii(excess, this->context); }),
                  invalidCodePoint("0x110000"));
        EXPECT_EQ(failureOf([&] { TypeParam::iriToDecoded(excess, this->context); }),
                  invalidCodePoint("0x110000"));
        EXPECT_EQ(failureOf([&] { TypeParam::decodedToAscii(excess, this->context); }),
                  invalidCodePoint("0x110000"));
        EXPECT_EQ(TypeParam::decodedToIri(excess, this->context), excess);
        EXPECT_EQ(TypeParam::asciiToIri(excess, this->context),
                  std::nullopt); // its decoder stops there
        EXPECT_EQ(TypeParam::asciiToDecoded(excess, this->context), std::nullopt);
        // The end of a plane is escaped, so there the first conversion fails as well.
        const Text end = {0x11FFFF};
        EXPECT_EQ(failureOf([&] { TypeParam::decodedToIri(end, this->context); }),
                  invalidCodePoint("0x11ffff"));
    }

    TYPED_TEST(EveryCoder, failsBeforeItLooksAtTheBytes)
    {
        const Text both = {U'%', U'C', U'0', U'%', U'8', U'0', 0x110000};
        EXPECT_EQ(failureOf([&] { TypeParam::iriToDecoded(both, this->context); }),
                  invalidCodePoint("0x110000"));
    }

    TYPED_TEST(EveryCoder, writesSurrogatesAsEscapes)
    {
        const Text surrogate = {0xD800};
        EXPECT_EQ(TypeParam::decodedToIri(surrogate, this->context), U"%ED%A0%80");
        EXPECT_EQ(TypeParam::iriToAscii(surrogate, this->context), U"%ED%A0%80");
        EXPECT_EQ(TypeParam::decodedToAscii(surrogate, this->context), U"%ED%A0%80");
        // Read as UTF-8 again, their bytes are refused.
        EXPECT_EQ(failureOf([&] { TypeParam::iriToDecoded(surrogate, this->context); }),
                  invalidUtf8());
    }

} // namespace
} // namespace foundation::network::iri
