#include <foundation/network/IRI.hpp>

#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace foundation::network {

namespace {

    using namespace tests;
    using Text = std::optional<std::string>;

    struct Reading {
        const char* text;
        const char* scheme; // nullptr: absent, here and below
        const char* userInfo;
        const char* host;
        const char* port;
        const char* path;
        const char* query;
        const char* fragment;
        bool isOpaque;
        bool hasAbsolutePath;
    };

    constexpr const char* NONE = nullptr;

    constexpr Reading readings[] = {
        // All components, and each alone.
        {"http://u:p@h:8/a/b?q#f", "http", "u:p", "h", "8", "/a/b", "q", "f", false, true},
        {"//h", NONE, NONE, "h", NONE, "", NONE, NONE, false, false},
        {"?", NONE, NONE, NONE, NONE, "", "", NONE, false, false},
        {"#", NONE, NONE, NONE, NONE, "", NONE, "", false, false},
        {"a?#", NONE, NONE, NONE, NONE, "a", "", "", false, false},
        {"a?", NONE, NONE, NONE, NONE, "a", "", NONE, false, false},
        {"a", NONE, NONE, NONE, NONE, "a", NONE, NONE, false, false},
        {"/", NONE, NONE, NONE, NONE, "/", NONE, NONE, false, true},
        {"?q", NONE, NONE, NONE, NONE, "", "q", NONE, false, false},
        {"#f", NONE, NONE, NONE, NONE, "", NONE, "f", false, false},
        {"?q#f", NONE, NONE, NONE, NONE, "", "q", "f", false, false},
        {"//", NONE, NONE, "", NONE, "", NONE, NONE, false, false},
        {"///", NONE, NONE, "", NONE, "/", NONE, NONE, false, true},
        {"////", NONE, NONE, "", NONE, "//", NONE, NONE, false, true},

        // Authorities.
        {"http://h", "http", NONE, "h", NONE, "", NONE, NONE, false, false},
        {"http://", "http", NONE, "", NONE, "", NONE, NONE, false, false},
        {"http://h?q", "http", NONE, "h", NONE, "", "q", NONE, false, false},
        {"http://h#f", "http", NONE, "h", NONE, "", NONE, "f", false, false},
        {"http://@", "http", "", "", NONE, "", NONE, NONE, false, false},
        {"http://@h/", "http", "", "h", NONE, "/", NONE, NONE, false, true},
        {"http://u@/", "http", "u", "", NONE, "/", NONE, NONE, false, true},
        {"http://:@h/", "http", ":", "h", NONE, "/", NONE, NONE, false, true},
        {"http://a:b:c@h/", "http", "a:b:c", "h", NONE, "/", NONE, NONE, false, true},
        {"http://u:1@h:2/", "http", "u:1", "h", "2", "/", NONE, NONE, false, true},
        {"http://:8/", "http", NONE, "", "8", "/", NONE, NONE, false, true},
        {"http://@:8", "http", "", "", "8", "", NONE, NONE, false, false},
        {"//u@h:1?q", NONE, "u", "h", "1", "", "q", NONE, false, false},
        {"http://1.2.3.4:80/", "http", NONE, "1.2.3.4", "80", "/", NONE, NONE, false, true},
        {"http://1.2.3.256/", "http", NONE, "1.2.3.256", NONE, "/", NONE, NONE, false, true},
        {"http://1.2.3.4.5/", "http", NONE, "1.2.3.4.5", NONE, "/", NONE, NONE, false, true},
        {"http://1.2.3.4@h/", "http", "1.2.3.4", "h", NONE, "/", NONE, NONE, false, true},
        {"http://1.2.3.4%41/", "http", NONE, "1.2.3.4%41", NONE, "/", NONE, NONE, false, true},
        {"http://[::1]/", "http", NONE, "[::1]", NONE, "/", NONE, NONE, false, true},
        {"http://u@[::1]:8", "http", "u", "[::1]", "8", "", NONE, NONE, false, false},
        {"//[::ffff:1.2.3.4]", NONE, NONE, "[::ffff:1.2.3.4]", NONE, "", NONE, NONE, false, false},
        {"http://[v1.x:y]/", "http", NONE, "[v1.x:y]", NONE, "/", NONE, NONE, false, true},
        {"http://例え.jp/", "http", NONE, "例え.jp", NONE, "/", NONE, NONE, false, true},
        {"x://%ＡＢ/", "x", NONE, "%ＡＢ", NONE, "/", NONE, NONE, false, true},
        {"x://!$&'()*+,;=@!$&'()*+,;=", "x", "!$&'()*+,;=", "!$&'()*+,;=", NONE, "", NONE, NONE,
         false, false},

        // Paths, and what looks like something else.
        {"foo:", "foo", NONE, NONE, NONE, "", NONE, NONE, true, false},
        {"foo:?", "foo", NONE, NONE, NONE, "", "", NONE, true, false},
        {"foo:/bar", "foo", NONE, NONE, NONE, "/bar", NONE, NONE, false, true},
        {"foo://h", "foo", NONE, "h", NONE, "", NONE, NONE, false, false},
        {"foo:bar", "foo", NONE, NONE, NONE, "bar", NONE, NONE, true, false},
        {"foo:bar/", "foo", NONE, NONE, NONE, "bar/", NONE, NONE, true, false},
        {"mailto:a@b", "mailto", NONE, NONE, NONE, "a@b", NONE, NONE, true, false},
        {"urn:a:b#c", "urn", NONE, NONE, NONE, "a:b", NONE, "c", true, false},
        {"a:b:c", "a", NONE, NONE, NONE, "b:c", NONE, NONE, true, false},
        {"abc/def", NONE, NONE, NONE, NONE, "abc/def", NONE, NONE, false, false},
        {"a/b:c", NONE, NONE, NONE, NONE, "a/b:c", NONE, NONE, false, false},
        {"./a:b", NONE, NONE, NONE, NONE, "./a:b", NONE, NONE, false, false},
        {"/a//b", NONE, NONE, NONE, NONE, "/a//b", NONE, NONE, false, true},
        {"a//b", NONE, NONE, NONE, NONE, "a//b", NONE, NONE, false, false},
        {"/a:b@c", NONE, NONE, NONE, NONE, "/a:b@c", NONE, NONE, false, true},
        {"a@b", NONE, NONE, NONE, NONE, "a@b", NONE, NONE, false, false},
        {"x:a/../b", "x", NONE, NONE, NONE, "a/../b", NONE, NONE, true, false},
        {"x:/a//", "x", NONE, NONE, NONE, "/a//", NONE, NONE, false, true},
        {"x://h//a", "x", NONE, "h", NONE, "//a", NONE, NONE, false, true},
        {"%", NONE, NONE, NONE, NONE, "%", NONE, NONE, false, false},
        {"a%zzb", NONE, NONE, NONE, NONE, "a%zzb", NONE, NONE, false, false},
        {"x:100%?%#%", "x", NONE, NONE, NONE, "100%", "%", "%", true, false},

        // Queries and fragments hold delimiters and each other's.
        {"a?b?c/d:e@f", NONE, NONE, NONE, NONE, "a", "b?c/d:e@f", NONE, false, false},
        {"a#b?c/d:e@f", NONE, NONE, NONE, NONE, "a", NONE, "b?c/d:e@f", false, false},
        {"a?//u@h:1", NONE, NONE, NONE, NONE, "a", "//u@h:1", NONE, false, false},
        {"a?\uE000\U000E0001\U00100000", NONE, NONE, NONE, NONE, "a", "\uE000\U000E0001\U00100000",
         NONE, false, false},

        // Schemes.
        {"HTTP://h/", "HTTP", NONE, "h", NONE, "/", NONE, NONE, false, true},
        {"a1+.-:b", "a1+.-", NONE, NONE, NONE, "b", NONE, NONE, true, false},
        {"é:x", "é", NONE, NONE, NONE, "x", NONE, NONE, true, false},
        {"схема٣:", "схема٣", NONE, NONE, NONE, "", NONE, NONE, true, false},
        {"𐐀://h", "𐐀", NONE, "h", NONE, "", NONE, NONE, false, false},
    };

    Text expected(const char* text)
    {
        return text != nullptr ? Text(text) : std::nullopt;
    }

    // What a pair of readers answers; nothing if both throw the message of an absent component.
    template <class Utf8, class Utf16>
    Text read(Utf8 utf8, Utf16 readUtf16, const std::string& messageOfAbsence)
    {
        if (throwsExactly<RuntimeFailure>(utf8, messageOfAbsence)
            && throwsExactly<RuntimeFailure>(readUtf16, messageOfAbsence))
            return std::nullopt;
        EXPECT_EQ(readUtf16(), utf16(utf8()));
        return utf8();
    }

    void expectReading(const IRI& iri, const Reading& row)
    {
        EXPECT_EQ(
            read([&] { return iri.getSchemeUtf8(); }, [&] { return iri.getScheme(); }, "No scheme"),
            expected(row.scheme));
        EXPECT_EQ(read([&] { return iri.getUserInfoUtf8(); }, [&] { return iri.getUserInfo(); },
                       "Item not set: UserInfo"),
                  expected(row.userInfo));
        EXPECT_EQ(read([&] { return iri.getHostUtf8(); }, [&] { return iri.getHost(); },
                       "Item not set: Host"),
                  expected(row.host));
        EXPECT_EQ(read([&] { return iri.getPortUtf8(); }, [&] { return iri.getPort(); }, "No port"),
                  expected(row.port));
        EXPECT_EQ(read([&] { return iri.getPathUtf8(); }, [&] { return iri.getPath(); }, "?"),
                  expected(row.path));
        EXPECT_EQ(read([&] { return iri.getQueryUtf8(); }, [&] { return iri.getQuery(); },
                       "Item not set: Query"),
                  expected(row.query));
        EXPECT_EQ(read([&] { return iri.getFragmentUtf8(); }, [&] { return iri.getFragment(); },
                       "Item not set: Fragment"),
                  expected(row.fragment));
    }

    void expectPredicates(const IRI& iri, const Reading& row)
    {
        EXPECT_FALSE(iri.isEmpty());
        EXPECT_EQ(iri.hasScheme(), row.scheme != nullptr);
        EXPECT_EQ(iri.isAbsolute(), row.scheme != nullptr);
        EXPECT_EQ(iri.hasAuthority(), row.host != nullptr);
        EXPECT_EQ(iri.hasHost(), row.host != nullptr);
        EXPECT_EQ(iri.hasUserInfo(), row.userInfo != nullptr);
        EXPECT_EQ(iri.hasPort(), row.port != nullptr);
        EXPECT_EQ(iri.hasQuery(), row.query != nullptr);
        EXPECT_EQ(iri.hasFragment(), row.fragment != nullptr);
        EXPECT_EQ(iri.isOpaque(), row.isOpaque);
        EXPECT_EQ(iri.hasAbsolutePath(), row.hasAbsolutePath);
    }

} // namespace

TEST(IRI, isTakenApartIntoItsComponents)
{
    for (const Reading& row : readings) {
        SCOPED_TRACE(row.text);
        expectReading(IRI(std::string(row.text)), row);
        expectReading(IRI(utf16(row.text)), row);
    }
}

TEST(IRI, knowsWhichComponentsItHas)
{
    for (const Reading& row : readings) {
        SCOPED_TRACE(row.text);
        expectPredicates(IRI(std::string(row.text)), row);
        expectPredicates(IRI(utf16(row.text)), row);
    }
}

// The tables are held against the regular expression of RFC 3986, so that a slip in one shows.
TEST(IRI, isTakenApartAsRfc3986AppendixBHasIt)
{
    for (const Reading& row : readings) {
        SCOPED_TRACE(row.text);
        const NaiveIri naive{std::string(row.text)};
        EXPECT_EQ(naive.scheme, expected(row.scheme));
        EXPECT_EQ(naive.userInfo, expected(row.userInfo));
        EXPECT_EQ(naive.host, expected(row.host));
        EXPECT_EQ(naive.port, expected(row.port));
        EXPECT_EQ(naive.path, row.path);
        EXPECT_EQ(naive.query, expected(row.query));
        EXPECT_EQ(naive.fragment, expected(row.fragment));
    }
}

TEST(IRI, portIsANumberAndKeepsItsText)
{
    struct Row {
        const char* port;
        int number; // -1: refused
    };
    constexpr Row rows[] = {
        {"0", 0},
        {"80", 80},
        {"080", 80},
        {"00080", 80},
        {"000000000000000000000000000000000000000000443", 443},
        {"65535", 65535},
        {"000065535", 65535},
        {"65536", -1},
        {"65540", -1},
        {"99999", -1},
        {"4294967376", -1},           // 2^32 + 80
        {"18446744073709551696", -1}, // 2^64 + 80
        {"", -1},                     // RFC 3986, 3.2.3 allows it
        {"+80", -1},
        {"-1", -1},
        {"8a", -1},
        {"8:0", -1},
        {"%38", -1},
        {"٣", -1}, // U+0663, a decimal digit, but not ASCII
        {"8٣", -1},
        {"８０", -1},
    };
    for (const Row& row : rows)
        for (const char* after : {"", "/", "/p", "?q", "#f"}) {
            const std::string text = std::string("http://h:") + row.port + after;
            SCOPED_TRACE(text);
            if (row.number < 0) {
                EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{text}; }, "IRI parsing failed"));
                continue;
            }
            const IRI iri(text);
            EXPECT_TRUE(iri.hasPort());
            EXPECT_EQ(iri.getPortNumber(), row.number);
            EXPECT_EQ(iri.getPortUtf8(), row.port);
            EXPECT_EQ(iri.getPort(), utf16(row.port));
        }
}

TEST(IRI, withoutASchemeOrPortSaysSo)
{
    const IRI iri(std::string("//h/"));
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getScheme(); }, "No scheme"));
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getSchemeUtf8(); }, "No scheme"));
    EXPECT_FALSE(iri.hasPort());
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPort(); }, "No port"));
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPortUtf8(); }, "No port"));
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPortNumber(); }, "No port"));
}

TEST(IRI, isRefusedIfItIsNoReference)
{
    constexpr const char* texts[] = {
        ":",
        ":a",
        "1a:b",
        "+a:b",
        "-:b",
        ".:b",
        "%41:b",
        "a b",
        "x: ",
        " x:",
        "x:a\tb",
        "x:a\nb",
        "x:a\x01",
        "x:\x7F",
        "x:\u0080",
        "x:\u009F",
        "x:\"",
        "x:<",
        "x:>",
        "x:\\",
        "x:^",
        "x:`",
        "x:{",
        "x:|",
        "x:}",
        "x://h/\\",
        "x:?{",
        "x:#^",
        "x:a#b#c",
        "x:##",
        "x:[",
        "x:]",
        "x:?[",
        "x:#]",
        "http://u@h@x",
        "http://@@",
        "http://a%zzb/",
        "http://u%zz@h/",
        "http://u%@h/",
        "http://h%",
        "http://h%4",
        "http://[::1",
        "http://::1]/",
        "http://[1:::2]/",
        "http://[1:2:3:4:5:6:7:8:9]/",
        "http://[1.2.3.4]/",
        "http://[v.x]/",
        "http://[v1.]/",
        "http://[V1.x]/",
        "http://[]/",
        "http://[::1]a/",
        "http://[::1]%41/",
        "http://a[::1]/",
        "http://[::1%25eth0]/",
        "http://a:b/",
        "//h:80:80",
        "//h::",
        "x:\uE000",
        "x:#\uE000",
        "x://\uE000/",
        "x://\uE000@h/",
        "x:\U000E0001",
        "x:#\U000E0001",
        "x:\uFDD0",
        "x:?\uFDD0",
        "x:#\uFDD0",
        "x:\uFFFE",
        "x:?\U0001FFFF",
        "\uE000",
        "\uFEFFx:", // a byte order mark is no letter
    };
    for (const char* text : texts) {
        SCOPED_TRACE(text);
        EXPECT_TRUE(
            throwsExactly<LogicFailure>([&] { IRI{std::string(text)}; }, "IRI parsing failed"));
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{utf16(text)}; }, "IRI parsing failed"));
    }
}

TEST(IRI, refusesTheNulCharacterAnywhere)
{
    for (const std::size_t at : {0U, 1U, 2U, 4U, 5U, 7U, 9U}) {
        std::string text = "x://h/p?q#f";
        text.insert(at, 1, '\0');
        SCOPED_TRACE(at);
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{text}; }, "IRI parsing failed"));
    }
}

TEST(IRI, refusesInvalidUtf8WithTheFailureOfTheTranscoder)
{
    for (const char* text : {"\x80", "x:\xC3", "x:\xC0\x80", "x:\xED\xA0\x80", "x:\xF4\x90\x80\x80",
                             "x:\xC3(", "x:\xF8\x88\x80\x80", "\xFF", " \xFF"}) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_TRUE(throwsExactly<AnyFailure>([&] { IRI{std::string(text)}; }, invalidUtf8));
    }
}

TEST(IRI, takesALeadByteFromF8UpForOneOfFourBytes)
{
    const IRI unusual(std::string("x:\xF8\x90\x80\x80"));
    const IRI usual(std::string("x:\xF0\x90\x80\x80"));
    EXPECT_EQ(unusual.toStringUtf8(), "x:\xF0\x90\x80\x80");
    EXPECT_EQ(unusual.getPathUtf8(), "\xF0\x90\x80\x80");
    EXPECT_EQ(unusual, usual);
    EXPECT_EQ(unusual.hashValue(), usual.hashValue());
    EXPECT_FALSE(unusual < usual || usual < unusual);
}

TEST(IRI, refusesInvalidUtf16WithTheUnitAtFault)
{
    struct Row {
        std::u16string text;
        const char* value;
    };
    const Row rows[] = {
        {{u'x', u':', 0xD800, u'A'}, "0x41"},
        {{u'x', u':', 0xD800, 0xD801}, "0xd801"},
        {{u'x', u':', 0xDC00}, "0xdc00"},
        {{u'x', u':', 0xDFFF, 0xD800}, "0xdfff"},
        {{u'x', u':', 0xDBFF}, "0"}, // the zero that ends the text
        {{0xDC00}, "0xdc00"},
        {{u' ', 0xD800, u' '}, "0x20"}, // before the grammar sees the blank
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.value);
        EXPECT_TRUE(throwsExactly<RangeFailure>(
            [&] { IRI{row.text}; }, std::string("Misplaced UTF-16 surrogate U+") + row.value
                                        + " encountered while trying to encode UTF-32 sequence"));
    }
}

// What an IRI is made of takes UTF-32, too.
TEST(IRI, isReadFromUtf32)
{
    using Base = iri::detail::TemplateIRI<std::u32string>;
    const Base iri(U"x://h\u00E4/p?\uE000#\U0001F600");
    EXPECT_EQ(iri.toStringUtf8(iri::Encoding::Iri), "x://h\u00E4/p?\uE000#\U0001F600");
    EXPECT_EQ(iri, Base(std::string("x://h\u00E4/p?\uE000#\U0001F600")));
    for (const char32_t* text : {U":", U"x:\uE000", U"x://h:65536", U"x: "}) {
        SCOPED_TRACE(testing::PrintToString(std::u32string(text)));
        EXPECT_TRUE(
            throwsExactly<LogicFailure>([&] { Base{std::u32string(text)}; }, "IRI parsing failed"));
    }
}

TEST(IRI, ofUtf32IsResolvedAndMadeRelative)
{
    using Base = iri::detail::TemplateIRI<std::u32string>;
    const Base base(U"x://h/a/\u00E4?q");
    const Base target = Base(U"../b#f").doResolve(base);
    EXPECT_EQ(target.toStringUtf8(iri::Encoding::Iri), "x://h/b#f");
    EXPECT_EQ(Base(U"x://h/a/b").doRelativise(base).toStringUtf8(iri::Encoding::Iri), "b");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { Base(U"b").doRelativise(base); },
                                            "Cannot make relative to base. Already relative"));
}

TEST(IRI, failuresAreCaughtByTheirStandardBasesToo)
{
    EXPECT_THROW(IRI(std::string(":")), std::logic_error);
    EXPECT_THROW(IRI(std::string(":")), core::except::IInternalException);
    EXPECT_THROW(IRI(std::u16string{0xDC00}), std::out_of_range);
    EXPECT_THROW(IRI(std::string("\x80")), core::except::IInternalException);
    EXPECT_THROW(IRI().getPort(), std::runtime_error);
}

} // namespace foundation::network
