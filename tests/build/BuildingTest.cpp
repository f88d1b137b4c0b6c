#include <foundation/network/IRI.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"

#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;
    using iri::Encoding;
    using MaybeText = std::optional<std::string>;

    constexpr std::nullopt_t absent = std::nullopt;

    struct Bag {
        MaybeText scheme = absent;
        MaybeText userInfo = absent;
        MaybeText host = absent;
        std::optional<unsigned short> port = absent;
        MaybeText path = absent;
        MaybeText query = absent;
        MaybeText fragment = absent;

        IRIArgs make() const
        {
            IRIArgs args;
            if (scheme)
                args.setScheme(*scheme);
            if (userInfo)
                args.setUserInfo(*userInfo);
            if (host)
                args.setHost(*host);
            if (port)
                args.setPort(*port);
            if (path)
                args.setPath(*path);
            if (query)
                args.setQuery(*query);
            if (fragment)
                args.setFragment(*fragment);
            return args;
        }
    };

    // One letter for each predicate that holds, in the order of the class.
    std::string predicatesOf(const IRI& iri)
    {
        std::string result;
        const auto add = [&result](bool holds, char letter) { result += holds ? letter : '-'; };
        add(iri.isEmpty(), 'e');
        add(iri.hasScheme(), 's');
        add(iri.hasAuthority(), 'a');
        add(iri.hasQuery(), 'q');
        add(iri.hasFragment(), 'f');
        add(iri.hasAbsolutePath(), '/');
        add(iri.isAbsolute(), 'A');
        add(iri.isOpaque(), 'o');
        add(iri.hasPort(), 'p');
        add(iri.hasHost(), 'h');
        add(iri.hasUserInfo(), 'u');
        return result;
    }

} // namespace

TEST(Building, putsTheComponentsTogether)
{
    struct Row {
        Bag bag;
        const char* text;
        const char* predicates;
    };
    const Row rows[] = {
        {{}, "", "e----------"},
        {{.path = ""}, "", "e----------"},
        {{.scheme = "http", .host = "h"}, "http://h", "-sa---A--h-"},
        {{.scheme = "mailto", .path = "a"}, "mailto:a", "-s----Ao---"},
        {{.scheme = "x", .path = "/a"}, "x:/a", "-s---/A----"},
        {{.scheme = "x"}, "x:", "-s----Ao---"},
        {{.scheme = "x", .path = ""}, "x:", "-s----Ao---"},
        {{.scheme = "x", .query = ""}, "x:?", "-s-q--Ao---"},
        {{.scheme = "x", .path = "a/b"}, "x:a/b", "-s----Ao---"},
        {{.scheme = "x", .path = "a:b"}, "x:a:b", "-s----Ao---"},
        {{.scheme = "X+.-1", .path = "a"}, "X+.-1:a", "-s----Ao---"},
        {{.scheme = "é", .host = "é"}, "é://é", "-sa---A--h-"},
        {{.host = "h"}, "//h", "--a------h-"},
        {{.host = "h", .path = ""}, "//h", "--a------h-"},
        {{.host = "h", .path = "/"}, "//h/", "--a--/---h-"},
        {{.host = ""}, "//", "--a------h-"},
        {{.userInfo = "", .host = ""}, "//@", "--a------hu"},
        {{.userInfo = "", .host = "", .port = 0}, "//@:0", "--a-----phu"},
        {{.host = "h", .port = 65535}, "//h:65535", "--a-----ph-"},
        {{.host = "h", .query = "q"}, "//h?q", "--aq-----h-"},
        {{.path = "a"}, "a", "-----------"},
        {{.path = "/a"}, "/a", "-----/-----"},
        {{.path = "//a"}, "//a", "-----/-----"}, // which reads back as a host
        {{.path = "a:b"}, "a%3Ab", "-----------"},
        {{.path = "a:b:/c:d"}, "a%3Ab%3A/c:d", "-----------"},
        {{.path = "/a:b"}, "/a:b", "-----/-----"},
        {{.path = "a/b:c"}, "a/b:c", "-----------"},
        {{.path = "a/../b"}, "a/../b", "-----------"}, // no dots are removed
        {{.path = "a b"}, "a%20b", "-----------"},
        {{.path = "%41"}, "%2541", "-----------"},
        {{.path = "%2F"}, "%252F", "-----------"},
        {{.query = ""}, "?", "---q-------"},
        {{.fragment = ""}, "#", "----f------"},
        {{.query = "", .fragment = ""}, "?#", "---qf------"},
        {{.path = "a:b", .query = "c:d", .fragment = "e:f"}, "a%3Ab?c:d#e:f", "---qf------"},
        {{"s", "u", "h", 8, "/p", "q", "f"}, "s://u@h:8/p?q#f", "-saqf/A-phu"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const IRI iri(row.bag.make());
        EXPECT_EQ(predicatesOf(iri), row.predicates);
        EXPECT_EQ(iri.toStringUtf8(), row.text);
    }
}

TEST(Building, escapesWhatAComponentMayNotShow)
{
    // All that is special anywhere, and characters that no IRI may hold.
    const std::string special = " \"#%/:;<=>?@[\\]^`{|}%41\x7F";
    struct Row {
        Bag bag;
        const char* text;
    };
    const Row rows[] = {
        {{.userInfo = special, .host = ""},
         "//%20%22%23%%2F:%3B%3C%3D%3E%3F%40%5B%5C%5D%5E%60%7B%7C%7D%2541%7F@"},
        // An escape in a host is protected, and then the protection as well.
        {{.host = special}, "//%20%22%23%25%2F%3A;%3C=%3E%3F%40%5B%5C%5D%5E%60%7B%7C%7D%252541%7F"},
        {{.host = "", .path = "/" + special},
         "///%20%22%23%/:;%3C=%3E%3F@%5B%5C%5D%5E%60%7B%7C%7D%2541%7F"},
        {{.query = special}, "?%20%22%23%/:;%3C=%3E?@[%5C]%5E%60%7B%7C%7D%2541%7F"},
        {{.fragment = special}, "#%20%22#%/:;%3C=%3E?@[%5C]%5E%60%7B%7C%7D%2541%7F"},
        {{.host = "[::1]"}, "//%5B%3A%3A1%5D"}, // a host is a name, never an address
        {{.host = "例え.jp"}, "//例え.jp"},
        {{.host = "a%b"}, "//a%25b"},
        {{.userInfo = "a:b", .host = "h"}, "//a:b@h"},
        {{.userInfo = "\uE000", .host = "\uE000"}, "//%EE%80%80@%EE%80%80"},
        {{.path = "\uE000", .query = "\uE000", .fragment = "\uE000"}, "%EE%80%80?\uE000#%EE%80%80"},
        {{.path = "\u200E\uFDD0"}, "%E2%80%8E%EF%B7%90"},
        {{.path = "é例😀"}, "é例😀"},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        EXPECT_EQ(IRI(row.bag.make()).toStringUtf8(), row.text);
    }
}

TEST(Building, givesItsTextInEveryForm)
{
    const IRIArgs args = Bag{"é", "ü%", "ö%[", 80, "/ä%[%41", "ß%]", "\uE000%[ "}.make();
    const std::string iri = "é://ü%@ö%25%5B:80/ä%%5B%2541?ß%]#%EE%80%80%[%20";
    const std::string iriStrict = "é://ü%25@ö%25%5B:80/ä%25%5B%2541?ß%25%5D#%EE%80%80%25%5B%20";
    const std::string ascii = "é://%C3%BC%@%C3%B6%25%5B:80/%C3%A4%%5B%2541?%C3%9F%]#%EE%80%80%[%20";
    const std::string asciiStrict =
        "é://%C3%BC%25@%C3%B6%25%5B:80/%C3%A4%25%5B%2541?%C3%9F%25%5D#%EE%80%80%25%5B%20";
    EXPECT_EQ(IRI(args).toStringUtf8(), iri);
    EXPECT_EQ(IRI(args).toStringUtf8(true), iriStrict);
    EXPECT_EQ(IRI(args).toAsciiStringUtf8(), ascii);
    EXPECT_EQ(IRI(args).toAsciiStringUtf8(true), asciiStrict);
    const iri::detail::TemplateIRI<std::u32string> value(args);
    EXPECT_EQ(value.toStringUtf8(Encoding::Decoded), "é://ü%@ö%[:80/ä%[%41?ß%]#\uE000%[ ");

    // A strict text that is read first repairs the authority of the plain one.
    const IRI strictFirst(args);
    EXPECT_EQ(strictFirst.toStringUtf8(true), iriStrict);
    EXPECT_EQ(strictFirst.toStringUtf8(), "é://ü%25@ö%25%5B:80/ä%%5B%2541?ß%]#%EE%80%80%[%20");
    const IRI plainFirst(args);
    EXPECT_EQ(plainFirst.toStringUtf8(), iri);
    EXPECT_EQ(plainFirst.toStringUtf8(true), iriStrict);
    EXPECT_EQ(plainFirst.toStringUtf8(), iri);
}

// Also where all of it is written as it shows, so that there is nothing else to convert.
// Each form of the whole text is kept, and none in the place of another.
TEST(Building, keepsTheTextsOfAllFormsApart)
{
    const iri::detail::TemplateIRI<std::u32string> iri(IRIArgs().setHost("h").setPath("/\u00E4 %"));
    const std::pair<Encoding, const char*> forms[] = {
        {Encoding::Decoded, "//h/\u00E4 %"},         {Encoding::Iri, "//h/\u00E4%20%"},
        {Encoding::Ascii, "//h/%C3%A4%20%"},         {Encoding::IriStrict, "//h/\u00E4%20%25"},
        {Encoding::AsciiStrict, "//h/%C3%A4%20%25"},
    };
    for (const auto& first : forms)
        for (const auto& second : forms) {
            const auto copy = iri;
            EXPECT_EQ(copy.toStringUtf8(first.first), first.second);
            EXPECT_EQ(copy.toStringUtf8(second.first), second.second) << first.second;
            EXPECT_EQ(copy.toStringUtf8(first.first), first.second) << second.second;
        }
}

TEST(Building, showsARepairedAuthorityAfterAStrictText)
{
    const IRIArgs args = IRIArgs().setScheme("x").setUserInfo("a%zz").setHost("h");
    EXPECT_EQ(IRI(args).toStringUtf8(), "x://a%zz@h");
    EXPECT_EQ(IRI(args).toAsciiStringUtf8(), "x://a%zz@h");
    const IRI iri(args);
    EXPECT_EQ(iri.toStringUtf8(true), "x://a%25zz@h");
    EXPECT_EQ(iri.toStringUtf8(), "x://a%25zz@h");
    EXPECT_EQ(iri.toAsciiStringUtf8(), "x://a%zz@h");
    EXPECT_EQ(iri.hashValue(), IRI(std::string("x://a%25zz@h")).hashValue());
    const IRI inAscii(args);
    EXPECT_EQ(inAscii.toAsciiStringUtf8(true), "x://a%25zz@h");
    EXPECT_EQ(inAscii.toAsciiStringUtf8(), "x://a%25zz@h");
    EXPECT_EQ(inAscii.toStringUtf8(), "x://a%zz@h");
}

TEST(Building, storesThePortAsItsNumber)
{
    IRIArgs args;
    args.setHost("h").setPort("00080");
    const IRI iri(args);
    EXPECT_EQ(iri.getPort(), u"80");
    EXPECT_EQ(iri.getPortUtf8(), "80");
    EXPECT_EQ(iri.getPortNumber(), 80);
    EXPECT_EQ(iri.getAuthorityUtf8(), "h:80");
    EXPECT_EQ(IRI(args.setPort(0)).getPortUtf8(), "0");
}

TEST(Building, keepsTheCaseOfTheScheme)
{
    const IRI iri(Bag{.scheme = "HtTp"}.make());
    EXPECT_EQ(iri.getScheme(), u"HtTp");
    EXPECT_EQ(iri.getSchemeUtf8(), "HtTp");
    EXPECT_EQ(IRI(Bag{.scheme = "𐐀"}.make()).getScheme(), u"𐐀");
}

// Unlike the bare empty value, what is built has a path, which can be read.
TEST(Building, anEmptyBagHasAnEmptyPath)
{
    for (const Bag& bag : {Bag{}, Bag{.path = ""}}) {
        const IRI iri(bag.make());
        EXPECT_TRUE(iri.isEmpty());
        EXPECT_EQ(iri.getPathUtf8(), "");
        EXPECT_EQ(iri.getSchemeSpecificPartUtf8(), "");
        EXPECT_EQ(iri.toAsciiStringUtf8(true), "");
        EXPECT_EQ(iri.hashValue(), 0U);
        EXPECT_TRUE(iri == IRI());
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getHost(); }, "Item not set: Host"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getQuery(); }, "Item not set: Query"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getScheme(); }, "No scheme"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPortNumber(); }, "No port"));
    }
}

TEST(Building, takesSchemesOfTheGrammar)
{
    for (const char* scheme : {"a", "Z", "a1", "a+.-", "aé", "é", "схема", "例", "a٣", "𐐀"})
        EXPECT_EQ(IRI(Bag{.scheme = scheme}.make()).toStringUtf8(), std::string(scheme) + ":");
    const std::string refused[] = {"",     "1a",  "+a", "-",  ".",        "٣",
                                   "a:",   "a b", " a", "a ", "a/b",      "a_",
                                   "a%41", "a\n", "a€", "*",  "http://h", std::string("a\0", 2)};
    for (const std::string& scheme : refused) {
        SCOPED_TRACE(scheme);
        const IRIArgs args = Bag{.scheme = scheme}.make();
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    }
}

TEST(Building, refusesWhatDoesNotGoTogetherInThisOrder)
{
    const std::string scheme = "Malformed scheme";
    const std::string userInfo = "User Info requires a host";
    const std::string port = "Port requires a host";
    const std::string path = "Path cannot be relative if authority present";
    struct Row {
        Bag bag;
        std::string message;
    };
    const Row rows[] = {
        {{.scheme = "1a"}, scheme},
        {{.scheme = ""}, scheme},
        {{.port = 80}, port},
        {{.port = 0}, port},
        {{.userInfo = "u"}, userInfo},
        {{.userInfo = ""}, userInfo},
        {{.host = "h", .path = "a"}, path},
        {{.host = "", .path = "a/b"}, path},
        {{.scheme = "x", .host = "h", .path = ":"}, path},
        {{.userInfo = "u", .host = "h", .port = 80, .path = "a"}, path},
        // Where several hold, the first in the order of the components is told.
        {{.scheme = "1", .userInfo = "u", .port = 80, .path = "a"}, scheme},
        {{.scheme = "1", .host = "h", .path = "a"}, scheme},
        {{.scheme = "x", .userInfo = "u", .port = 80, .path = "a"}, userInfo},
        {{.scheme = "x", .port = 80, .path = "a", .query = "q"}, port},
        {{.scheme = "x", .userInfo = "u", .path = "/a", .fragment = "f"}, userInfo},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.message);
        const IRIArgs args = row.bag.make();
        EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, row.message));
        EXPECT_TRUE(throwsExactly<LogicFailure>(
            [&] { iri::detail::TemplateIRI<std::u32string>{args}; }, row.message));
    }
}

// A form-encoded query is escaped at once; any other text only fails when it is read.
TEST(Building, failsOnAFormEncodedQueryThatIsNoText)
{
    IRIArgs args;
    args.appendQueryKeyValuePair("a", "b", true, false);
    static_cast<Base&>(args).setQuery(std::u32string{U'a', 0x110000});
    const std::string message =
        "Invalid UTF-32 code point U+0x110000 encountered while trying to encode UTF-16 sequence";
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { IRI{args}; }, message));
    args.setHost("h").setPath("a");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; },
                                            "Path cannot be relative if authority present"));

    IRIArgs plain;
    static_cast<Base&>(plain).setQuery(std::u32string{U'a', 0x110000});
    const IRI iri(plain);
    EXPECT_TRUE(iri.hasQuery());
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { iri.toStringUtf8(); }, message));
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { iri.getQuery(Encoding::Ascii); }, message));
}

// That a built path has dot segments shows in a merge, and nowhere else.
TEST(Building, noticesDotSegmentsInThePlainPath)
{
    const IRI base(std::string("http://h/x/y"));
    const auto resolved = [&base](const char* path) {
        return IRI(Bag{.path = path}.make()).resolveAgainst(base).toStringUtf8();
    };
    EXPECT_EQ(resolved("a/../b"), "http://h/x/b");
    EXPECT_EQ(resolved("../b"), "http://h/b");
    EXPECT_EQ(resolved("b"), "http://h/x/b");
    EXPECT_EQ(resolved("b/./"), "http://h/x/b/./"); // the test for them does not see these
    EXPECT_EQ(resolved("%2E%2E/b"), "http://h/x/%252E%252E/b"); // plain text, no escapes
    EXPECT_EQ(resolved(""), "http://h/x/y");
    EXPECT_EQ(IRI(Bag{.query = "q"}.make()).resolveAgainst(base).toStringUtf8(), "http://h/x/y?q");
}

TEST(Building, doesNotChangeTheBag)
{
    IRIArgs args = fullBag();
    args.appendQueryKeyValuePair("a&", "b c", true, false);
    const std::string text = IRI(args).toStringUtf8();
    EXPECT_EQ(text, "s://u@h:8/p?q&a%26=b+c#f");
    const IRI again(args);
    EXPECT_EQ(again.toStringUtf8(), text);
    EXPECT_TRUE(again == IRI(args));
}

TEST(Building, ofWhatAnIriWasTakenApartIntoGivesItBack)
{
    for (const std::string text :
         {"",          "?",           "#",     "?#",         "//",
          "//@",       "//h",         "//h/",  "///",        "x:",
          "x:?",       "x:#",         "x:/",   "x:a:b",      "X://u:p@h:80/a/b;c=d/?q=1&r=2#f",
          "a/b",       "./a:b",       "a%3Ab", "/a//b/../c", "100%",
          "%zz",       "%2541",       "a%20b", "//a%25b",    "é://ü@例え/😀?\uE000#ß",
          "%EE%80%80", "%22%23%3F%5B"}) {
        SCOPED_TRACE(text);
        const IRI iri(text);
        const IRI again{IRIArgs(iri)};
        EXPECT_EQ(again.toStringUtf8(), text);
        EXPECT_TRUE(again == iri);
        EXPECT_EQ(predicatesOf(again), predicatesOf(iri));
        EXPECT_EQ(again.hashValue(), iri.hashValue());
    }
}

// Escapes that were not needed are lost, and so is what a bag cannot hold.
TEST(Building, ofWhatAnIriWasTakenApartIntoMayDiffer)
{
    struct Row {
        const char* text;
        const char* again;
    };
    constexpr Row rows[] = {
        {"http://h/%41", "http://h/A"},
        {"http://h/%7e%3f", "http://h/~%3F"},
        {"http://h/a%2Fb", "http://h/a/b"}, // an escaped slash becomes a real one
        {"http://h?a%26b", "http://h?a&b"},
        {"http://h#%23", "http://h##"}, // which is no IRI any more
        {"//h:0080", "//h:80"},
        {"//[::1]", "//%5B%3A%3A1%5D"},
        {"//%41@%41", "//A@A"},
        {"//%2541", "//%252541"},
        {"//u;v@h", "//u%3Bv@h"},
        {"%C3%A9", "é"},
        {"%E9", "é"},
        {"%25", "%"},
        {"?%5B", "?["},
        {"%2F/h", "//h"}, // a path becomes a host
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text);
        const IRI iri{std::string(row.text)};
        EXPECT_EQ(IRI(IRIArgs(iri)).toStringUtf8(), row.again);
    }
}

} // namespace foundation::network
