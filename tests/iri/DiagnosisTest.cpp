#include <foundation/network/iri/Diagnosis.hpp>

#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <ostream>
#include <set>
#include <string>
#include <string_view>

namespace foundation::network::iri {

namespace {

    using tests::utf16;
    using Code = Diagnosis::Code;
    using Part = Diagnosis::Component;

    struct Row {
        std::string text;
        const char* code;
        const char* component;
        std::size_t offset;
        std::size_t length;
        std::size_t codePointOffset;
        std::optional<std::string> repaired;
    };

    constexpr std::nullopt_t NONE = std::nullopt;

    const Row rows[] = {
        // White space around the text.
        {" http://h/", "surrounding-space", "none", 0, 1, 0, "http://h/"},
        {"\t\r\n a b", "surrounding-space", "none", 0, 4, 0, "a%20b"},
        {"http://h/\n", "surrounding-space", "none", 9, 1, 9, "http://h/"},
        {"http://é \n", "surrounding-space", "none", 9, 2, 8, "http://é"},
        {"//h:80 ", "surrounding-space", "none", 6, 1, 6, "//h:80"},
        {"//h: ", "surrounding-space", "none", 4, 1, 4, "//h"},
        {"//[::1] ", "surrounding-space", "none", 7, 1, 7, "//[::1]"},
        {"//[::1 ", "surrounding-space", "none", 6, 1, 6, "//[::1]"},
        {" ", "surrounding-space", "none", 0, 1, 0, ""},
        {"\v\f", "surrounding-space", "none", 0, 2, 0, ""},
        {"a b ", "bad-character", "path", 1, 1, 1, "a%20b"}, // the first trouble comes first

        // Schemes, and what looks like one.
        {":", "missing-scheme", "scheme", 0, 1, 0, "./:"},
        {":a/b?c#d", "missing-scheme", "scheme", 0, 1, 0, "./:a/b?c#d"},
        {"://h/", "missing-scheme", "scheme", 0, 1, 0, NONE},
        {"://", "missing-scheme", "scheme", 0, 1, 0, NONE},
        {"1a:b", "bad-scheme", "scheme", 0, 1, 0, "./1a:b"},
        {"my_x:b", "bad-scheme", "scheme", 2, 1, 2, "./my_x:b"},
        {"é_x:b", "bad-scheme", "scheme", 2, 1, 1, "./é_x:b"},
        {"a b:c d", "bad-scheme", "scheme", 1, 1, 1, "./a%20b:c%20d"},
        {"see http://h/", "bad-scheme", "scheme", 3, 1, 3, NONE},
        {"\u2028:x", "bad-scheme", "scheme", 0, 3, 0, "./\u2028:x"},
        {"10:30", "bad-scheme", "scheme", 0, 1, 0, "./10:30"},
        {"a%:b", "bad-scheme", "scheme", 1, 1, 1, "./a%:b"},

        // User information.
        {"//a b@h", "bad-character", "user-info", 3, 1, 3, "//a%20b@h"},
        {"//é:p[]s@h:80", "bad-character", "user-info", 6, 1, 5, "//é:p%5B%5Ds@h:80"},
        {"//u%zz@h", "bad-escape", "user-info", 3, 1, 3, "//u%25zz@h"},
        {"//u@h@x", "extra-at-sign", "user-info", 3, 1, 3, "//u%40h@x"},
        {"//@@@", "extra-at-sign", "user-info", 2, 1, 2, "//%40%40@"},
        {"//u:%@h:", "bad-escape", "user-info", 4, 1, 4, "//u:%25@h"},
        {"//\uE000@h", "bad-character", "user-info", 2, 3, 2, "//%EE%80%80@h"},

        // Hosts.
        {"http://a b/", "bad-character", "host", 8, 1, 8, "http://a%20b/"},
        {"http://ab^\\/", "bad-character", "host", 9, 1, 9, "http://ab%5E%5C/"},
        {"http://a%zzb/", "bad-escape", "host", 8, 1, 8, "http://a%25zzb/"},
        {"http://h%", "bad-escape", "host", 8, 1, 8, "http://h%25"},
        {"//h%4", "bad-escape", "host", 3, 1, 3, "//h%254"},
        {"//a[b]", "bad-character", "host", 3, 1, 3, "//a%5Bb%5D"},
        {"//a]", "bad-character", "host", 3, 1, 3, "//a%5D"},
        {"//u@\"h\"", "bad-character", "host", 4, 1, 4, "//u@%22h%22"},
        {"//::1/", "unbracketed-ipv6", "host", 2, 3, 2, "//[::1]/"},
        {"x://u@2001:db8::7", "unbracketed-ipv6", "host", 6, 11, 6, "x://u@[2001:db8::7]"},
        {"//1:2:3:4:5:6:7:8", "unbracketed-ipv6", "host", 2, 15, 2, "//[1:2:3:4:5:6:7:8]"},
        {"//[::1", "unclosed-ip-literal", "host", 6, 0, 6, "//[::1]"},
        {"//[::1/a]", "unclosed-ip-literal", "host", 6, 0, 6,
         "//[::1]/a%5D"}, // the "]" is in the path
        {"//[::1/a", "unclosed-ip-literal", "host", 6, 0, 6, "//[::1]/a"},
        {"//[", "unclosed-ip-literal", "host", 3, 0, 3, NONE},
        {"//[1:2", "unclosed-ip-literal", "host", 6, 0, 6, NONE},
        {"//[v1.a", "unclosed-ip-literal", "host", 7, 0, 7, "//[v1.a]"},
        {"//[]", "bad-ip-literal", "host", 3, 1, 3, NONE},
        {"//[1:::2]/", "bad-ip-literal", "host", 6, 1, 6, NONE},
        {"//[1:2:3:4:5:6:7:8:9]", "bad-ip-literal", "host", 18, 1, 18, NONE},
        {"//[1:2]", "bad-ip-literal", "host", 6, 1, 6, NONE},
        {"//[12345::]", "bad-ip-literal", "host", 7, 1, 7, NONE},
        {"//[::g]", "bad-ip-literal", "host", 5, 1, 5, NONE},
        {"//[fe80::1%25eth0]", "bad-ip-literal", "host", 10, 1, 10, NONE},
        {"//[V1.x]", "bad-ip-literal", "host", 3, 1, 3, NONE},
        {"//[v.x]", "bad-ip-literal", "host", 4, 1, 4, NONE},
        {"//[1.2.3.4]", "bad-ip-literal", "host", 4, 1, 4, NONE},
        {"//[::1]x", "text-after-ip-literal", "host", 7, 1, 7, NONE},
        {"//[::1]x y:80/", "text-after-ip-literal", "host", 7, 3, 7, NONE},
        {"//[::1]]", "text-after-ip-literal", "host", 7, 1, 7, NONE},

        // Ports.
        {"//h:", "empty-port", "port", 3, 1, 3, "//h"},
        {"http://h:/a b", "empty-port", "port", 8, 1, 8, "http://h/a%20b"},
        {"//[::1]:", "empty-port", "port", 7, 1, 7, "//[::1]"},
        {"//:", "empty-port", "port", 2, 1, 2, "//"},
        {"//h:80a", "bad-port", "port", 6, 1, 6, NONE},
        {"//h:abc/", "bad-port", "port", 4, 1, 4, NONE},
        {"//h:-1", "bad-port", "port", 4, 1, 4, NONE},
        {"//é:٣", "bad-port", "port", 5, 2, 4, NONE},
        {"//h:80:90", "bad-port", "port", 6, 1, 6, NONE},
        {"//h:65536", "port-too-large", "port", 4, 5, 4, NONE},
        {"//h:0099999/ ", "port-too-large", "port", 4, 7, 4, NONE},
        {"//h:99999a", "bad-port", "port", 9, 1, 9, NONE},

        // Paths.
        {"a b", "bad-character", "path", 1, 1, 1, "a%20b"},
        {"x:a b", "bad-character", "path", 3, 1, 3, "x:a%20b"},
        {"C:\\Users\\x", "bad-character", "path", 2, 1, 2, "C:%5CUsers%5Cx"},
        {"/a/{b}/[c]", "bad-character", "path", 3, 1, 3, "/a/%7Bb%7D/%5Bc%5D"},
        {"//h/é\uE000\U000E0001", "bad-character", "path", 6, 3, 5, "//h/é%EE%80%80%F3%A0%80%81"},
        {"/%zz ", "surrounding-space", "none", 4, 1, 4, "/%zz"},
        {"/😀\u0080", "bad-character", "path", 5, 2, 2, "/😀%C2%80"},
        {std::string("/a\0b", 4), "bad-character", "path", 2, 1, 2, "/a%00b"},
        {"a b/c:d", "bad-character", "path", 1, 1, 1, "a%20b/c:d"},

        // Queries and fragments.
        {"?a b", "bad-character", "query", 2, 1, 2, "?a%20b"},
        {"?a[]=1&b[]=2", "bad-character", "query", 2, 1, 2, "?a%5B%5D=1&b%5B%5D=2"},
        {"?é\uFDD0", "bad-character", "query", 3, 3, 2, "?é%EF%B7%90"},
        {"#a#b#", "bad-character", "fragment", 2, 1, 2, "#a%23b%23"},
        {"?#\uE000", "bad-character", "fragment", 2, 3, 2, "?#%EE%80%80"},
        {"x:#|", "bad-character", "fragment", 3, 1, 3, "x:#%7C"},
    };

    // Bytes that are no UTF-8. They are told first, wherever they stand.
    const Row brokenRows[] = {
        {"\xFF", "bad-utf8", "path", 0, 1, 0, "%FF"},
        {"//h/caf\xE9", "bad-utf8", "path", 7, 1, 7, "//h/caf%E9"},
        {"a b\xE9?", "bad-utf8", "path", 3, 1, 3, "a%20b%E9?"},
        {"/é\xC3", "bad-utf8", "path", 3, 1, 2, "/é%C3"},
        {"/\xE2\x82", "bad-utf8", "path", 1, 2, 1, "/%E2%82"},
        {"/\xE2\x82z", "bad-utf8", "path", 1, 2, 1, "/%E2%82z"},
        {"/é\xC3z", "bad-utf8", "path", 3, 1, 2, "/é%C3z"},
        {"/é\xE1z\x80", "bad-utf8", "path", 3, 1, 2, "/é%E1z%80"},
        {"/\xF0\x9F\x98\xC3\xA9", "bad-utf8", "path", 1, 3, 1, "/%F0%9F%98é"},
        {"/\x80\x80", "bad-utf8", "path", 1, 1, 1, "/%80%80"},
        {"/\xC0\x80", "bad-utf8", "path", 1, 2, 1, "/%C0%80"},
        {"/\xED\xA0\x80-", "bad-utf8", "path", 1, 3, 1, "/%ED%A0%80-"},
        {"/\xF4\x90\x80\x80\x80", "bad-utf8", "path", 1, 4, 1, "/%F4%90%80%80%80"},
        {"/\xF8\x88\x80\x80\x80", "bad-utf8", "path", 1, 4, 1, "/%F8%88%80%80%80"},
        {"\xE9:x", "bad-utf8", "scheme", 0, 1, 0, "./%E9:x"},
        {"x\xE9://h", "bad-utf8", "scheme", 1, 1, 1, NONE},
        {"x:\xE9", "bad-utf8", "path", 2, 1, 2, "x:%E9"},
        {"//\xE9@h", "bad-utf8", "user-info", 2, 1, 2, "//%E9@h"},
        {"//u@\xE9", "bad-utf8", "host", 4, 1, 4, "//u@%E9"},
        {"//[\xE9]", "bad-utf8", "host", 3, 1, 3, NONE},
        {"//h:\xE9", "bad-utf8", "port", 4, 1, 4, NONE},
        {"?\xE9", "bad-utf8", "query", 1, 1, 1, "?%E9"},
        {"?#\xE9", "bad-utf8", "fragment", 2, 1, 2, "?#%E9"},
    };

    std::ostream& operator<<(std::ostream& stream, const Row& row)
    {
        return stream << testing::PrintToString(row.text);
    }

    void expectCode(const std::optional<Diagnosis>& diagnosis, const Row& row)
    {
        ASSERT_TRUE(diagnosis);
        EXPECT_EQ(name(diagnosis->code), row.code);
        EXPECT_EQ(name(diagnosis->component), row.component);
        EXPECT_EQ(diagnosis->codePointOffset, row.codePointOffset);
        EXPECT_FALSE(diagnosis->expected.empty());
    }

    template <std::size_t COUNT>
    void expectRows(const Row (&some)[COUNT])
    {
        for (const Row& row : some) {
            SCOPED_TRACE(row);
            const std::optional<Diagnosis> diagnosis = diagnose(row.text);
            expectCode(diagnosis, row);
            EXPECT_EQ(diagnosis->offset, row.offset);
            EXPECT_EQ(diagnosis->length, row.length);
            EXPECT_EQ(repair(row.text), row.repaired);
        }
    }

} // namespace

TEST(Diagnosis, tellsWhatAndWhere)
{
    expectRows(rows);
}

TEST(Diagnosis, tellsDefectsOfUtf8)
{
    expectRows(brokenRows);
}

TEST(Diagnosis, tellsTheSameOfUtf16)
{
    for (const Row& row : rows) {
        SCOPED_TRACE(row);
        const std::u16string text = utf16(row.text);
        const std::optional<Diagnosis> diagnosis = diagnose(text);
        expectCode(diagnosis, row);
        EXPECT_EQ(diagnosis->offset, utf16(row.text.substr(0, row.offset)).size());
        EXPECT_EQ(diagnosis->length, utf16(row.text.substr(row.offset, row.length)).size());
        const std::optional<std::u16string> repaired = repair(text);
        ASSERT_EQ(repaired.has_value(), row.repaired.has_value());
        if (repaired) {
            EXPECT_EQ(*repaired, utf16(*row.repaired));
        }
    }
}

TEST(Diagnosis, tellsDefectsOfUtf16)
{
    struct Halves {
        std::u16string text;
        Part component;
        std::size_t offset;
        std::size_t codePointOffset;
    };
    const Halves halves[] = {
        {{0xDC00}, Part::Path, 0, 0},
        {{0xD800}, Part::Path, 0, 0},
        {{u'?', 0xD800, u'a'}, Part::Query, 1, 1}, // the half itself, not what stands behind it
        {{u'a', u' ', 0xD83D, 0xDE00, 0xDE00}, Part::Path, 4, 3},
        {{u'/', u'/', 0xDBFF, 0xDBFF, 0xDC00, u'@', u'h'}, Part::UserInfo, 2, 2},
    };
    for (const Halves& row : halves) {
        SCOPED_TRACE(testing::PrintToString(row.text));
        const std::optional<Diagnosis> diagnosis = diagnose(row.text);
        ASSERT_TRUE(diagnosis);
        EXPECT_EQ(diagnosis->code, Code::BadUtf16);
        EXPECT_EQ(diagnosis->component, row.component);
        EXPECT_EQ(diagnosis->offset, row.offset);
        EXPECT_EQ(diagnosis->length, 1U);
        EXPECT_EQ(diagnosis->codePointOffset, row.codePointOffset);
        EXPECT_EQ(diagnosis->expected, "a high surrogate and a low one behind it");
        EXPECT_FALSE(repair(row.text));
    }
}

TEST(Diagnosis, tellsWhatCouldHaveStoodThere)
{
    struct Expectation {
        const char* text;
        const char* expected;
    };
    constexpr Expectation expectations[] = {
        {" a", "the first character of the text"},
        {"a ", "the end of the text"},
        {":", "a scheme"},
        {"1:", "a letter"},
        {"a_:", "a letter, a digit, \"+\", \"-\", \".\" or \":\""},
        {"//<@h", "a letter, a digit, an escape or one of -._~!$&'()*+,;=:"},
        {"//<", "a letter, a digit, an escape or one of -._~!$&'()*+,;="},
        {"/<", "a letter, a digit, an escape or one of -._~!$&'()*+,;=:@/"},
        {"?<", "a letter, a digit, an escape or one of -._~!$&'()*+,;=:@/?"},
        {"#<", "a letter, a digit, an escape or one of -._~!$&'()*+,;=:@/?"},
        {"//%", "\"%\" and two hexadecimal digits"},
        {"//%@h", "\"%\" and two hexadecimal digits"},
        {"//[::", "the rest of the address, if some is missing, and \"]\""},
        {"//[:1]", "the next character of an IPv6 address, or of \"v\" with a version, \".\" and "
                   "an address"},
        {"//[::]a", "\":\" and a port, \"/\", \"?\", \"#\" or the end"},
        {"//::", "\"[\", the address and \"]\""},
        {"//h:", "a number from 0 to 65535 behind it, or no \":\""},
        {"//h:a", "a digit from 0 to 9"},
        {"//h:70000", "a number from 0 to 65535"},
        {"\xFF", "well-formed UTF-8"},
    };
    for (const Expectation& row : expectations) {
        SCOPED_TRACE(row.text);
        ASSERT_TRUE(diagnose(row.text));
        EXPECT_EQ(diagnose(row.text)->expected, row.expected);
    }
}

TEST(Diagnosis, hasNothingToSayAboutAnIri)
{
    for (const char* text : {"", "a", "?", "#", "//", "x:", "//h:80", "//[::1]:0",
                             "é://ü@ö/ä?\uE000", "/%zz", "a/b:c", "/\xF8\x90\x80\x80"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(diagnose(text));
        EXPECT_EQ(repair(text), text);
    }
    EXPECT_FALSE(diagnose(std::string_view()));
    EXPECT_FALSE(diagnose(std::u16string_view()));
    EXPECT_FALSE(diagnose(u"é://ü@ö/ä"));
    EXPECT_EQ(repair(u"é://ü@ö/ä"), u"é://ü@ö/ä");
}

// What lies behind the text is not read.
TEST(Diagnosis, endsWhereTheTextEnds)
{
    const std::string_view text = "//h/a\xC3\xA9 b";
    EXPECT_FALSE(diagnose(text.substr(0, 7)));
    EXPECT_EQ(diagnose(text.substr(0, 6))->code, Code::BadUtf8);
    EXPECT_EQ(diagnose(text.substr(0, 8))->code, Code::SurroundingSpace);
    EXPECT_EQ(diagnose(text)->code, Code::BadCharacter);
}

// Programs store these.
TEST(Diagnosis, numbersAndNamesOfCodesStay)
{
    const std::string_view names[] = {
        "bad-utf8",
        "bad-utf16",
        "surrounding-space",
        "missing-scheme",
        "bad-scheme",
        "bad-character",
        "bad-escape",
        "extra-at-sign",
        "bad-ip-literal",
        "unclosed-ip-literal",
        "text-after-ip-literal",
        "unbracketed-ipv6",
        "empty-port",
        "bad-port",
        "port-too-large",
    };
    std::set<std::string_view> descriptions;
    int number = 0;
    for (const std::string_view expected : names) {
        const auto code = static_cast<Code>(number++);
        EXPECT_EQ(name(code), expected);
        const std::string_view description = describe(code);
        EXPECT_EQ(description.find('\n'), description.npos);
        EXPECT_NE(description.back(), '.');
        EXPECT_TRUE(descriptions.insert(description).second) << description;
    }
    EXPECT_EQ(name(static_cast<Code>(number)), "unknown");
    EXPECT_EQ(describe(static_cast<Code>(number)), "unknown");
    EXPECT_EQ(name(static_cast<Code>(-1)), "unknown");

    const std::string_view components[] = {"none", "scheme", "user-info", "host",
                                           "port", "path",   "query",     "fragment"};
    number = 0;
    for (const std::string_view expected : components)
        EXPECT_EQ(name(static_cast<Part>(number++)), expected);
    EXPECT_EQ(name(static_cast<Part>(number)), "unknown");
    EXPECT_EQ(name(static_cast<Part>(-1)), "unknown");
}

TEST(Diagnosis, everyCodeHasARow)
{
    std::set<std::string_view> seen{"bad-utf16"}; // has a test of its own
    for (const Row& row : rows)
        seen.insert(row.code);
    for (const Row& row : brokenRows)
        seen.insert(row.code);
    for (int number = 0; name(static_cast<Code>(number)) != "unknown"; ++number)
        EXPECT_TRUE(seen.contains(name(static_cast<Code>(number))));
}

} // namespace foundation::network::iri
