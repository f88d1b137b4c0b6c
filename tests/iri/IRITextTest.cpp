#include <foundation/network/IRI.hpp>

#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <iomanip>
#include <sstream>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    using ReaderUtf8 = std::string (IRI::*)(const Encoding&) const;
    using ReaderUtf16 = std::u16string (IRI::*)(const Encoding&) const;

    struct Reader {
        const char* name;
        ReaderUtf8 utf8;
        ReaderUtf16 utf16;
    };

    constexpr Reader userInfo{"user info", &IRI::getUserInfoUtf8, &IRI::getUserInfo};
    constexpr Reader host{"host", &IRI::getHostUtf8, &IRI::getHost};
    constexpr Reader path{"path", &IRI::getPathUtf8, &IRI::getPath};
    constexpr Reader query{"query", &IRI::getQueryUtf8, &IRI::getQuery};
    constexpr Reader fragment{"fragment", &IRI::getFragmentUtf8, &IRI::getFragment};
    constexpr Reader authority{"authority", &IRI::getAuthorityUtf8, &IRI::getAuthority};
    constexpr Reader ssp{"scheme-specific part", &IRI::getSchemeSpecificPartUtf8,
                         &IRI::getSchemeSpecificPart};

    // One component in all forms.
    struct Forms {
        const Reader& reader;
        const char* text;
        const char* iri;
        const char* iriStrict;
        const char* ascii;
        const char* asciiStrict;
        const char* decoded;
    };

    // U+FF21 and U+FF22 are the full-width digits A and B. They make an escape to the grammar, but
    // not to the decoder, nor to the repair of the strict forms.
    constexpr Forms forms[] = {
        // User information is never repaired.
        {userInfo, "x://a:b@h", "a:b", "a:b", "a:b", "a:b", "a:b"},
        {userInfo, "x://@h", "", "", "", "", ""},
        {userInfo, "x://a%3Ab@h", "a%3Ab", "a%3Ab", "a%3Ab", "a%3Ab", "a:b"},
        {userInfo, "x://é@h", "é", "é", "%C3%A9", "%C3%A9", "é"},
        {userInfo, "x://%c3%a9@h", "%c3%a9", "%c3%a9", "%c3%a9", "%c3%a9", "é"},
        {userInfo, "x://%ＡＢ@h", "%ＡＢ", "%ＡＢ", "%%EF%BC%A1%EF%BC%A2", "%%EF%BC%A1%EF%BC%A2",
         "%ＡＢ"},

        // The brackets of a host stay; a "%" that begins no escape of ASCII digits is repaired.
        {host, "x://", "", "", "", "", ""},
        {host, "x://[::1]", "[::1]", "[::1]", "[::1]", "[::1]", "[::1]"},
        {host, "x://[v1.é]", "[v1.é]", "[v1.é]", "[v1.%C3%A9]", "[v1.%C3%A9]", "[v1.é]"},
        {host, "x://[１::]", "[１::]", "[１::]", "[%EF%BC%91::]", "[%EF%BC%91::]", "[１::]"},
        {host, "x://%ＡＢ", "%ＡＢ", "%25ＡＢ", "%%EF%BC%A1%EF%BC%A2", "%25%EF%BC%A1%EF%BC%A2",
         "%ＡＢ"},
        {host, "x://例え", "例え", "例え", "%E4%BE%8B%E3%81%88", "%E4%BE%8B%E3%81%88", "例え"},
        {host, "x://a%2Fb%20", "a%2Fb%20", "a%2Fb%20", "a%2Fb%20", "a%2Fb%20", "a/b "},
        {host, "x://😀", "😀", "😀", "%F0%9F%98%80", "%F0%9F%98%80", "😀"},
        {host, "x://%F0%9F%98%80", "%F0%9F%98%80", "%F0%9F%98%80", "%F0%9F%98%80", "%F0%9F%98%80",
         "😀"},

        // A "%" alone, in its several places.
        {path, "/100%", "/100%", "/100%25", "/100%", "/100%25", "/100%"},
        {path, "%", "%", "%25", "%", "%25", "%"},
        {path, "%%", "%%", "%25%25", "%%", "%25%25", "%%"},
        {path, "%4", "%4", "%254", "%4", "%254", "%4"},
        {path, "%zz", "%zz", "%25zz", "%zz", "%25zz", "%zz"},
        {path, "%4g", "%4g", "%254g", "%4g", "%254g", "%4g"},
        {path, "%%41", "%%41", "%25%41", "%%41", "%25%41", "%A"},
        {path, "%é", "%é", "%25é", "%%C3%A9", "%25%C3%A9", "%é"},
        {path, "%4é", "%4é", "%254é", "%4%C3%A9", "%254%C3%A9", "%4é"},
        {path, "%ＡＢ", "%ＡＢ", "%25ＡＢ", "%%EF%BC%A1%EF%BC%A2", "%25%EF%BC%A1%EF%BC%A2",
         "%ＡＢ"},
        {path, "x:%?41", "%", "%25", "%", "%25", "%"}, // the digits stand in the next component

        // Escapes.
        {path, "%41", "%41", "%41", "%41", "%41", "A"},
        {path, "%2541", "%2541", "%2541", "%2541", "%2541", "%41"}, // decoded once
        {path, "%25%34%31", "%25%34%31", "%25%34%31", "%25%34%31", "%25%34%31", "%41"},
        {path, "a%2fb%2F", "a%2fb%2F", "a%2fb%2F", "a%2fb%2F", "a%2fb%2F", "a/b/"},
        {path, "%C3%A9", "%C3%A9", "%C3%A9", "%C3%A9", "%C3%A9", "é"},
        {path, "\u00A0~", "\u00A0~", "\u00A0~", "%C2%A0~", "%C2%A0~", "\u00A0~"},
        {path, "%7F%1f", "%7F%1f", "%7F%1f", "%7F%1f", "%7F%1f", "\x7F\x1F"},
        {path, "é/a:b", "é/a:b", "é/a:b", "%C3%A9/a:b", "%C3%A9/a:b", "é/a:b"},
        {path, "%3A", "%3A", "%3A", "%3A", "%3A", ":"},

        // Bytes that form no UTF-8 stand for the code point of the same value. Where there are
        // such,
        // what the first pass made an escape is decoded again.
        {path, "%E9", "%E9", "%E9", "%E9", "%E9", "é"},
        {path, "%C3", "%C3", "%C3", "%C3", "%C3", "Ã"},
        {path, "%C3(", "%C3(", "%C3(", "%C3(", "%C3(", "Ã("},
        {path, "%E2%82", "%E2%82", "%E2%82", "%E2%82", "%E2%82", "â\u0082"},
        {path, "%80", "%80", "%80", "%80", "%80", "\u0080"},
        {path, "é%E9", "é%E9", "é%E9", "%C3%A9%E9", "%C3%A9%E9", "éé"},
        {path, "%E9%2541", "%E9%2541", "%E9%2541", "%E9%2541", "%E9%2541", "éA"},
        {path, "%FE%FF", "%FE%FF", "%FE%FF", "%FE%FF", "%FE%FF", "þÿ"},
        {path, "%F8%90%80%80", "%F8%90%80%80", "%F8%90%80%80", "%F8%90%80%80", "%F8%90%80%80",
         "\U00010000"}, // a lead byte from F8 up counts as one of four bytes

        // Queries may show private use characters; "+" is no space here.
        {query, "?", "", "", "", "", ""},
        {query, "?a+b%26c", "a+b%26c", "a+b%26c", "a+b%26c", "a+b%26c", "a+b&c"},
        {query, "?\uE000", "\uE000", "\uE000", "%EE%80%80", "%EE%80%80", "\uE000"},
        {query, "?\U000E0001", "\U000E0001", "\U000E0001", "%F3%A0%80%81", "%F3%A0%80%81",
         "\U000E0001"},
        {query, "?a=%&b=%zz", "a=%&b=%zz", "a=%25&b=%25zz", "a=%&b=%zz", "a=%25&b=%25zz",
         "a=%&b=%zz"},
        {query, "?é=%C3%a9#%", "é=%C3%a9", "é=%C3%a9", "%C3%A9=%C3%a9", "%C3%A9=%C3%a9", "é=é"},
        {fragment, "#", "", "", "", "", ""},
        {fragment, "#%", "%", "%25", "%", "%25", "%"},
        {fragment, "#é%20/?", "é%20/?", "é%20/?", "%C3%A9%20/?", "%C3%A9%20/?", "é /?"},
        {fragment, "#%EE%80%80", "%EE%80%80", "%EE%80%80", "%EE%80%80", "%EE%80%80", "\uE000"},

        // The authority repairs user information too. The port is as it was written.
        {authority, "x://h", "h", "h", "h", "h", "h"},
        {authority, "x://", "", "", "", "", ""},
        {authority, "x://@", "@", "@", "@", "@", "@"},
        {authority, "x://host:80/", "host:80", "host:80", "host:80", "host:80", "host:80"},
        {authority, "//@:00", "@:00", "@:00", "@:00", "@:00", "@:00"},
        {authority, "x://é%40@[::1]:080", "é%40@[::1]:080", "é%40@[::1]:080", "%C3%A9%40@[::1]:080",
         "%C3%A9%40@[::1]:080", "é@@[::1]:080"},
        {authority, "x://a%ＡＢ@host", "a%ＡＢ@host", "a%25ＡＢ@host", "a%%EF%BC%A1%EF%BC%A2@host",
         "a%25%EF%BC%A1%EF%BC%A2@host", "a%ＡＢ@host"},
        {authority, "x://%ＡＢ@%ＡＢ:1", "%ＡＢ@%ＡＢ:1", "%25ＡＢ@%25ＡＢ:1",
         "%%EF%BC%A1%EF%BC%A2@%%EF%BC%A1%EF%BC%A2:1",
         "%25%EF%BC%A1%EF%BC%A2@%25%EF%BC%A1%EF%BC%A2:1", "%ＡＢ@%ＡＢ:1"},

        // Neither the scheme nor the fragment.
        {ssp, "x:a/b?q#c", "a/b?q", "a/b?q", "a/b?q", "a/b?q", "a/b?q"},
        {ssp, "x:", "", "", "", "", ""},
        {ssp, "#c", "", "", "", "", ""},
        {ssp, "?", "?", "?", "?", "?", "?"},
        {ssp, "x://u@é:8/%?%#%", "//u@é:8/%?%", "//u@é:8/%25?%25", "//u@%C3%A9:8/%?%",
         "//u@%C3%A9:8/%25?%25", "//u@é:8/%?%"},
        {ssp, "//[::1]/%5B%3F?%23", "//[::1]/%5B%3F?%23", "//[::1]/%5B%3F?%23",
         "//[::1]/%5B%3F?%23", "//[::1]/%5B%3F?%23", "//[::1]/[??#"},
    };

    void expectText(const IRI& iri, const Reader& reader, Encoding encoding, const char* text)
    {
        SCOPED_TRACE(static_cast<unsigned>(encoding));
        EXPECT_EQ((iri.*reader.utf8)(encoding), text);
        EXPECT_EQ((iri.*reader.utf16)(encoding), utf16(text));
    }

    // A whole text in all its forms.
    struct Whole {
        const char* iri; // and what is parsed
        const char* iriStrict;
        const char* ascii;
        const char* asciiStrict;
        const char* asciiAfterStrict; // nullptr: as before
    };

    constexpr Whole wholes[] = {
        {"", "", "", "", nullptr},
        {"?", "?", "?", "?", nullptr},
        {"a?#", "a?#", "a?#", "a?#", nullptr},
        {"X://Host/%7e", "X://Host/%7e", "X://Host/%7e", "X://Host/%7e", nullptr},
        {"http://u:p@h:00080/a/b?q#f", "http://u:p@h:00080/a/b?q#f", "http://u:p@h:00080/a/b?q#f",
         "http://u:p@h:00080/a/b?q#f", nullptr},
        {"http://é@例え:80/ü?ß#ö", "http://é@例え:80/ü?ß#ö",
         "http://%C3%A9@%E4%BE%8B%E3%81%88:80/%C3%BC?%C3%9F#%C3%B6",
         "http://%C3%A9@%E4%BE%8B%E3%81%88:80/%C3%BC?%C3%9F#%C3%B6", nullptr},
        {"x:%?%#%", "x:%25?%25#%25", "x:%?%#%", "x:%25?%25#%25", nullptr},
        {"//[::1]/", "//[::1]/", "//[::1]/", "//[::1]/", nullptr},
        {"é:é", "é:é", "é:%C3%A9", "é:%C3%A9", nullptr}, // a scheme has no escapes
        {"//@:1", "//@:1", "//@:1", "//@:1", nullptr},
        {"x://%ＡＢ/100%", "x://%25ＡＢ/100%25", "x://%%EF%BC%A1%EF%BC%A2/100%",
         "x://%25%EF%BC%A1%EF%BC%A2/100%25", "x://%25%EF%BC%A1%EF%BC%A2/100%"},
        {"//%ＡＢ@h?%ＡＢ", "//%25ＡＢ@h?%25ＡＢ", "//%%EF%BC%A1%EF%BC%A2@h?%%EF%BC%A1%EF%BC%A2",
         "//%25%EF%BC%A1%EF%BC%A2@h?%25%EF%BC%A1%EF%BC%A2",
         "//%25%EF%BC%A1%EF%BC%A2@h?%%EF%BC%A1%EF%BC%A2"},
    };

    void expectWhole(const IRI& iri, const Whole& row, const char* ascii)
    {
        EXPECT_EQ(iri.toStringUtf8(), row.iri);
        EXPECT_EQ(iri.toString(), utf16(row.iri));
        EXPECT_EQ(iri.toStringUtf8(false), row.iri);
        EXPECT_EQ(iri.toAsciiStringUtf8(), ascii);
        EXPECT_EQ(iri.toAsciiString(), utf16(ascii));
        EXPECT_EQ(iri.toStringUtf8(true), row.iriStrict);
        EXPECT_EQ(iri.toString(true), utf16(row.iriStrict));
        EXPECT_EQ(iri.toAsciiStringUtf8(true), row.asciiStrict);
        EXPECT_EQ(iri.toAsciiString(true), utf16(row.asciiStrict));
    }

} // namespace

TEST(IRIText, componentsReadInEachForm)
{
    for (const Forms& row : forms) {
        SCOPED_TRACE(std::string(row.reader.name) + " of " + row.text);
        const IRI iri{std::string(row.text)};
        expectText(iri, row.reader, Encoding::Decoded, row.decoded);
        expectText(iri, row.reader, Encoding::Iri, row.iri);
        expectText(iri, row.reader, Encoding::IriStrict, row.iriStrict);
        expectText(iri, row.reader, Encoding::Ascii, row.ascii);
        expectText(iri, row.reader, Encoding::AsciiStrict, row.asciiStrict);
        EXPECT_EQ((iri.*row.reader.utf8)(Encoding::Iri), row.iri); // whatever was read since
    }
}

TEST(IRIText, encodingsAboveTheLastReadTheAsciiFormUnrepaired)
{
    for (const Forms& row : forms) {
        SCOPED_TRACE(std::string(row.reader.name) + " of " + row.text);
        for (const unsigned value : {5U, 6U, 0x80000000U, 0xFFFFFFFFU})
            expectText(IRI{std::string(row.text)}, row.reader, static_cast<Encoding>(value),
                       row.ascii);
    }
}

TEST(IRIText, readersReadTheIriFormByDefault)
{
    const IRI iri(std::string("x://%ＡＢ@%ＡＢ/%ＡＢ?%ＡＢ#%ＡＢ"));
    EXPECT_EQ(iri.getUserInfoUtf8(), "%ＡＢ");
    EXPECT_EQ(iri.getHostUtf8(), "%ＡＢ");
    EXPECT_EQ(iri.getAuthorityUtf8(), "%ＡＢ@%ＡＢ");
    EXPECT_EQ(iri.getPathUtf8(), "/%ＡＢ");
    EXPECT_EQ(iri.getQueryUtf8(), "%ＡＢ");
    EXPECT_EQ(iri.getFragmentUtf8(), "%ＡＢ");
    EXPECT_EQ(iri.getSchemeSpecificPartUtf8(), "//%ＡＢ@%ＡＢ/%ＡＢ?%ＡＢ");
    EXPECT_EQ(iri.getSchemeSpecificPart(), u"//%ＡＢ@%ＡＢ/%ＡＢ?%ＡＢ");
}

TEST(IRIText, decodedTextMayHoldTheNulCharacter)
{
    const IRI iri(std::string("a%00b?%00"));
    EXPECT_EQ(iri.getPathUtf8(Encoding::Decoded), std::string("a\0b", 3));
    EXPECT_EQ(iri.getQuery(Encoding::Decoded), std::u16string(1, u'\0'));
}

TEST(IRIText, wholeTextsInEachForm)
{
    for (const Whole& row : wholes) {
        SCOPED_TRACE(row.iri);
        const IRI iri{std::string(row.iri)};
        EXPECT_EQ(iri.toAsciiStringUtf8(), row.ascii); // first, before a strict text is read
        expectWhole(iri, row, row.ascii);
        expectWhole(iri, row, row.ascii);
    }
}

TEST(IRIText, aStrictTextReadFirstRepairsTheAuthorityOfThePlainAsciiTextToo)
{
    for (const Whole& row : wholes) {
        SCOPED_TRACE(row.iri);
        const char* after = row.asciiAfterStrict != nullptr ? row.asciiAfterStrict : row.ascii;
        const IRI iri{std::string(row.iri)};
        EXPECT_EQ(iri.toAsciiStringUtf8(true), row.asciiStrict);
        expectWhole(iri, row, after);

        // The strict text of the other form does not count.
        const IRI other{std::string(row.iri)};
        EXPECT_EQ(other.toStringUtf8(true), row.iriStrict);
        expectWhole(other, row, row.ascii);
    }
}

TEST(IRIText, streamsAsAsciiWithTheFieldOfTheStream)
{
    const IRI iri(std::string("x:é"));
    const auto written = [&iri](auto... manipulators) {
        std::ostringstream stream;
        (stream << ... << manipulators) << iri << '|';
        return stream.str();
    };
    EXPECT_EQ(written(""), "x:%C3%A9|");
    EXPECT_EQ(written(std::setw(10)), "  x:%C3%A9|"); // of the "|" the width is none again
    EXPECT_EQ(written(std::setw(10), std::setfill('*')), "**x:%C3%A9|");
    EXPECT_EQ(written(std::setw(10), std::setfill('*'), std::left), "x:%C3%A9**|");
    EXPECT_EQ(written(std::setw(10), std::setfill('*'), std::right), "**x:%C3%A9|");
    EXPECT_EQ(written(std::setw(3)), "x:%C3%A9|");

    std::ostringstream empty;
    empty << std::setw(3) << std::setfill('.') << IRI();
    EXPECT_EQ(empty.str(), "...");
}

TEST(IRIText, streamShowsAQuestionMarkForASchemeOutsideAscii)
{
    std::ostringstream stream;
    stream << IRI(std::string("é:é")) << ' ' << IRI(std::string("s𐐀:")); // two units of UTF-16
    EXPECT_EQ(stream.str(), "?:%C3%A9 s??:");
}

TEST(IRIText, streamsNothingToAStreamThatHasFailed)
{
    std::ostringstream stream;
    stream.setstate(std::ios::failbit);
    stream << IRI(std::string("x:y"));
    EXPECT_EQ(stream.str(), "");
    stream.clear();
    EXPECT_EQ(&(stream << IRI(std::string("x:y"))), &stream);
    EXPECT_EQ(stream.str(), "x:y");
}

TEST(IRIText, absentComponentsAreNamed)
{
    struct Row {
        const char* text;
        const Reader& reader;
        const char* message;
    };
    const Row rows[] = {
        {"x:a", userInfo, "Item not set: UserInfo"},
        {"//h", userInfo, "Item not set: UserInfo"},
        {"x:a", host, "Item not set: Host"},
        {"x:a", authority, "Item not set: Host: Host (in getAuthority)"},
        {"", authority, "Item not set: Host: Host (in getAuthority)"},
        {"//h#q", query, "Item not set: Query"},
        {"//h?f", fragment, "Item not set: Fragment"},
        {"", host, "Item not set: Host"},
        {"", query, "Item not set: Query"},
    };
    for (const Row& row : rows)
        for (unsigned value = 0; value < 6; ++value) {
            SCOPED_TRACE(testing::Message() << row.text << ", " << row.reader.name << value);
            const IRI iri{std::string(row.text)};
            const auto encoding = static_cast<Encoding>(value);
            EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { (iri.*row.reader.utf8)(encoding); },
                                                      row.message));
            EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { (iri.*row.reader.utf16)(encoding); },
                                                      row.message));
        }
}

// A value whose texts were moved out by assignment is the one parsed value that lacks components.
TEST(IRIText, onlySomeReadersOfWholeTextsConvertTheFailureOfAComponent)
{
    IRI noAuthority(std::string("x:y"));
    IRI noHost(std::string("//h"));
    IRI target;
    target = std::move(noAuthority);
    target = std::move(noHost);
    const std::pair<const IRI&, const char*> rows[] = {
        {noAuthority, "Item not set: Path"}, // NOLINT(bugprone-use-after-move)
        {noHost, "Item not set: Host: Host (in getAuthority)"},
    };
    for (const auto& [iri, message] : rows) {
        EXPECT_TRUE(
            throwsExactly<std::runtime_error>([&iri = iri] { iri.toString(true); }, message));
        EXPECT_TRUE(
            throwsExactly<std::runtime_error>([&iri = iri] { iri.toAsciiString(false); }, message));
        EXPECT_TRUE(
            throwsExactly<std::runtime_error>([&iri = iri] { iri.toAsciiString(true); }, message));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&iri = iri] { iri.toStringUtf8(true); }, message));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&iri = iri] { iri.toAsciiStringUtf8(false); }, message));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&iri = iri] { iri.toAsciiStringUtf8(true); }, message));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&iri = iri] { iri.getSchemeSpecificPart(); }, message));
    }
}

TEST(IRIText, whatDecodesToWrongUtf8FailsInTheDecodedFormOnlyAndAgainAndAgain)
{
    for (const std::string wrong : {"%C0%80", "%ED%A0%80", "%F4%90%80%80", "%F5%80%80%80",
                                    "%F8%88%80%80%80", "a%E9%C0%80", "é%c1%bf"}) {
        const IRI iri("x://" + wrong + "@" + wrong + "/" + wrong + "?" + wrong + "#" + wrong);
        for (const Reader& reader : {userInfo, host, path, query, fragment, authority, ssp}) {
            SCOPED_TRACE(wrong + " in " + reader.name);
            const std::string before = (iri.*reader.utf8)(Encoding::Iri);
            for (int time = 0; time < 2; ++time) {
                EXPECT_TRUE(throwsExactly<AnyFailure>(
                    [&] { (iri.*reader.utf8)(Encoding::Decoded); }, invalidUtf8));
                EXPECT_TRUE(throwsExactly<AnyFailure>(
                    [&] { (iri.*reader.utf16)(Encoding::Decoded); }, invalidUtf8));
            }
            EXPECT_TRUE(throwsExactly<AnyFailure>(
                [&] { (IRI(iri).*reader.utf8)(Encoding::Decoded); }, invalidUtf8));
            EXPECT_EQ((iri.*reader.utf8)(Encoding::Iri), before);
        }
        EXPECT_EQ(iri.getPathUtf8(Encoding::Ascii), *converted("/" + wrong, Encoding::Ascii));
        EXPECT_EQ(IRI(iri.toAsciiStringUtf8(true)).toStringUtf8(), iri.toAsciiStringUtf8());
    }
}

} // namespace foundation::network
