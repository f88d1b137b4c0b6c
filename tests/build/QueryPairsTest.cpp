#include <foundation/network/IRIArgs.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;

    struct Call {
        std::string key;
        std::string value;
        bool semicolonSeparator = false;
    };

    std::string misplaced(const std::string& unit)
    {
        return "Misplaced UTF-16 surrogate U+" + unit
               + " encountered while trying to encode UTF-32 sequence";
    }

    // The four operations that append.
    using Append = void (*)(IRIArgs& args, const Call& call, bool formEncoded);

    constexpr Append appends[] = {
        [](IRIArgs& args, const Call& call, bool formEncoded) {
            EXPECT_EQ(&args.appendQueryKeyValuePair(call.key, call.value, formEncoded,
                                                    call.semicolonSeparator),
                      &args);
        },
        [](IRIArgs& args, const Call& call, bool formEncoded) {
            EXPECT_EQ(&args.appendQueryKeyValuePair(utf16(call.key), utf16(call.value), formEncoded,
                                                    call.semicolonSeparator),
                      &args);
        },
        [](IRIArgs& args, const Call& call, bool formEncoded) {
            static_cast<Base&>(args).appendQueryKeyValuePair(call.key, call.value, formEncoded,
                                                             call.semicolonSeparator);
        },
        [](IRIArgs& args, const Call& call, bool formEncoded) {
            static_cast<Base&>(args).appendQueryKeyValuePair(utf16(call.key), utf16(call.value),
                                                             formEncoded, call.semicolonSeparator);
        },
    };

    std::string queryOf(const IRIArgs& args)
    {
        return IRI(args).getQueryUtf8(IRI::Encoding::Decoded);
    }

    struct EscapingBag : Base {
        using Base::percentEncodeFormEncodedReservedChars;
    };

} // namespace

TEST(QueryPairs, escapeTheSeparatorInUseEqualsAndPlus)
{
    struct Row {
        std::string text;
        bool semicolonSeparator;
        std::string escaped;
        bool isEscaped;
    };
    const Row rows[] = {
        {"", false, "", false},
        {"", true, "", false},
        {"ab", false, "ab", false},
        {"&", false, "%26", true},
        {"&", true, "&", false},
        {";", false, ";", false},
        {";", true, "%3B", true},
        {"=", false, "%3D", true},
        {"=", true, "%3D", true},
        {"+", false, "%2B", true},
        {"+", true, "%2B", true},
        {" ", false, "+", false}, // no escape
        {" ", true, "+", false},
        {"a b", false, "a+b", false},
        {"a+b", false, "a%2Bb", true}, // so a second pass escapes what the first one wrote
        {"%", false, "%", false},
        {"a%26b", false, "a%26b", false}, // escapes are not looked for
        {"&=; +", false, "%26%3D;+%2B", true},
        {"&=; +", true, "&%3D%3B+%2B", true},
        {"  ", false, "++", false},
        {"==", false, "%3D%3D", true},
        {"\t\n\"#<>[]/?:@!$'()*,", false, "\t\n\"#<>[]/?:@!$'()*,", false},
        {"é例😀\uE000", false, "é例😀\uE000", false},
        // Each begins with a unit whose low byte is that of a reserved character.
        {"\u0126\u013D\u0120\u012B\u013B", false, "\u0126\u013D\u0120\u012B\u013B", false},
        {"\u0126\u013D\u0120\u012B\u013B", true, "\u0126\u013D\u0120\u012B\u013B", false},
        {std::string("a\0=", 3), false, std::string("a\0%3D", 5), true},
    };
    const EscapingBag bag;
    for (const Row& row : rows) {
        SCOPED_TRACE(row.text + (row.semicolonSeparator ? " with ;" : " with &"));
        const auto [utf8, isEscaped8] =
            bag.percentEncodeFormEncodedReservedChars(row.text, row.semicolonSeparator);
        EXPECT_EQ(utf8, row.escaped);
        EXPECT_EQ(isEscaped8, row.isEscaped);
        const auto [units, isEscaped16] =
            bag.percentEncodeFormEncodedReservedChars(utf16(row.text), row.semicolonSeparator);
        EXPECT_EQ(units, utf16(row.escaped));
        EXPECT_EQ(isEscaped16, row.isEscaped);
    }
}

TEST(QueryPairs, escapingDecodesNothing)
{
    const EscapingBag bag;
    const std::string broken = "\xFF=\xC3\x80\xC0";
    EXPECT_EQ(bag.percentEncodeFormEncodedReservedChars(broken, false),
              std::make_tuple(std::string("\xFF%3D\xC3\x80\xC0"), true));
    const std::u16string halves = {0xDC00, u' ', 0xD83D, u'+'};
    const std::u16string escaped = {0xDC00, u'+', 0xD83D, u'%', u'2', u'B'};
    EXPECT_EQ(bag.percentEncodeFormEncodedReservedChars(halves, false),
              std::make_tuple(escaped, true));
}

TEST(QueryPairs, areAppendedInOrder)
{
    struct Row {
        std::vector<Call> calls;
        std::string query;
        bool hasEscapes;
    };
    const Row rows[] = {
        {{{"a", "b"}}, "a=b", false},
        {{{"a", "b"}, {"c", "d"}}, "a=b&c=d", false},
        {{{"a", ""}}, "a=", false},
        {{{"a b", "c d"}}, "a+b=c+d", false},
        {{{"a=b", "c"}}, "a%3Db=c", true},
        {{{"a", "b&c"}}, "a=b%26c", true},
        {{{"a", "b;c"}}, "a=b;c", false},
        {{{"a", "1+1"}}, "a=1%2B1", true},
        {{{"a", "b&c", true}, {"d", "e;f", true}}, "a=b&c;d=e%3Bf", true},
        {{{"a", "b", true}, {"c", "d", true}}, "a=b;c=d", false},
        {{{"a", "b"}, {"c", "d", true}, {"e", "f"}}, "a=b;c=d&e=f", false}, // that of each call
        {{{"a", "b"}, {"a", "b"}}, "a=b&a=b", false},
        {{{"a", "="}, {"b", "c"}}, "a=%3D&b=c", true}, // the flag stays
        {{{"=", ""}}, "%3D=", true},
        {{{" ", " "}}, "+=+", false},
        {{{"a%26b", "100%"}}, "a%26b=100%", false},
        {{{"é", "例😀"}}, "é=例😀", false},
        {{{std::string("\0", 1), "b"}}, std::string("\0=b", 3), false},
    };
    for (const Row& row : rows) {
        SCOPED_TRACE(row.query);
        for (const Append append : appends) {
            IRIArgs args;
            for (const Call& call : row.calls)
                append(args, call, false);
            EXPECT_EQ(queryOf(args), row.query);
            EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, row.hasEscapes}));
        }
    }
}

TEST(QueryPairs, theLastCallSaysWhetherTheQueryIsFormEncoded)
{
    for (const Append append : appends) {
        IRIArgs args;
        append(args, {"a", "b"}, true);
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{true, false}));
        append(args, {"c", "d"}, false);
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, false}));
        append(args, {"e=", "f"}, true); // the other flag is set here ...
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{true, false}));
        append(args, {"g", "h"}, false); // ... and is still set
        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, true}));
        EXPECT_EQ(queryOf(args), "a=b&c=d&e%3D=f&g=h");
    }
}

TEST(QueryPairs, followATextThatIsThere)
{
    struct Row {
        const char* before;
        bool semicolonSeparator;
        const char* after;
    };
    constexpr Row rows[] = {
        {"", false, "c=d"}, // an empty text is not continued
        {"x", false, "x&c=d"},   {"x", true, "x;c=d"},     {"a=b;e=f", false, "a=b;e=f&c=d"},
        {"a&", false, "a&&c=d"}, {"é b", true, "é b;c=d"}, // nor is the text touched
    };
    for (const Row& row : rows)
        for (const Append append : appends) {
            SCOPED_TRACE(row.after);
            IRIArgs args;
            append(args.setQuery(row.before), {"c", "d", row.semicolonSeparator}, false);
            EXPECT_EQ(queryOf(args), row.after);
        }
}

TEST(QueryPairs, anEmptyKeyIsRefused)
{
    const std::string message = "Key must not be empty";
    for (const Append append : appends)
        for (const char* value : {"b", "", "&=+", " "}) {
            SCOPED_TRACE(value);
            IRIArgs args;
            EXPECT_TRUE(throwsExactly<LogicFailure>(
                [&] {
                    append(args, {"", value}, true);
                },
                message));
            EXPECT_TRUE(IRI(args).isEmpty());
            EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, false}));
            args.setQuery("x");
            EXPECT_TRUE(throwsExactly<LogicFailure>(
                [&] {
                    append(args, {"", value}, true);
                },
                message));
            EXPECT_EQ(queryOf(args), "x"); // no separator either
            EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, false}));
        }
    // The key is looked at first.
    IRIArgs args;
    EXPECT_TRUE(throwsExactly<LogicFailure>(
        [&] { args.appendQueryKeyValuePair("", "\xFF", true, true); }, message));
}

// By then escapes have been noticed, and the separator stands there.
TEST(QueryPairs, aTextThatDoesNotConvertLeavesASeparator)
{
    struct Row {
        const char* key;
        const char* value;
        const char* shortMessage; ///< of the UTF-16 flavour, if "\x01" stands for a lone half
        bool hasEscapes;
    };
    constexpr Row rows[] = {
        {"a\x01", "b", "0x3d", false}, // the "=" is appended before anything is converted
        {"a", "b\x01", "0", false},    {"\x01=", "b", "0x25", true}, {"a", "=\x01", "0", true},
        {"=", "\x01", "0", true},      {"\x01", "=", "0x3d", true},
    };
    for (const Row& row : rows)
        for (const bool semicolonSeparator : {false, true})
            for (const bool wide : {false, true})
                for (const bool formEncoded : {false, true}) {
                    SCOPED_TRACE(std::string(row.key) + "=" + row.value);
                    std::string key = row.key, value = row.value;
                    std::u16string key16 = utf16(key), value16 = utf16(value);
                    for (std::string* text : {&key, &value})
                        for (char& c : *text)
                            c = c == '\x01' ? '\xFF' : c;
                    for (std::u16string* text : {&key16, &value16})
                        for (char16_t& c : *text)
                            c = c == u'\x01' ? char16_t(0xD800) : c;
                    const auto expectFailure = [&](IRIArgs& args) {
                        if (wide) {
                            EXPECT_TRUE(throwsExactly<RangeFailure>(
                                [&] {
                                    args.appendQueryKeyValuePair(key16, value16, formEncoded,
                                                                 semicolonSeparator);
                                },
                                misplaced(row.shortMessage)));
                        } else {
                            EXPECT_TRUE(throwsExactly<AnyFailure>(
                                [&] {
                                    args.appendQueryKeyValuePair(key, value, formEncoded,
                                                                 semicolonSeparator);
                                },
                                invalidUtf8));
                        }
                        EXPECT_EQ(queryFlagsOf(args), (QueryFlags{false, row.hasEscapes}));
                    };
                    IRIArgs fresh;
                    expectFailure(fresh);
                    EXPECT_FALSE(IRI(fresh).hasQuery());
                    fresh.appendQueryKeyValuePair("c", "d", false, false);
                    EXPECT_EQ(queryOf(fresh), "c=d");

                    IRIArgs empty;
                    expectFailure(empty.setQuery(""));
                    EXPECT_EQ(queryOf(empty), "");

                    IRIArgs used;
                    expectFailure(used.setQuery("x"));
                    EXPECT_EQ(queryOf(used), semicolonSeparator ? "x;" : "x&");
                    used.appendQueryKeyValuePair("c", "d", false, false);
                    EXPECT_EQ(queryOf(used), semicolonSeparator ? "x;&c=d" : "x&&c=d");
                }
}

TEST(QueryPairs, areBuiltAsTheFlagsSay)
{
    struct Row {
        const char* key;
        const char* value;
        bool formEncoded;
        const char* iri;
        const char* ascii;
    };
    constexpr Row rows[] = {
        {"a b", "c", false, "?a+b=c", "?a+b=c"},
        {"é", "ü", false, "?é=ü", "?%C3%A9=%C3%BC"},
        {"é", "ü", true, "?%C3%A9=%C3%BC", "?%C3%A9=%C3%BC"},
        {"é", "a&b", false, "?é=a%26b", "?%C3%A9=a%26b"}, // the escape is not escaped again
        {"é", "a&b", true, "?%C3%A9=a%26b", "?%C3%A9=a%26b"},
        {"a", "%41", false, "?a=%2541", "?a=%2541"}, // plain text, as nothing was escaped
        {"a", "%41", true, "?a=%41", "?a=%41"},
        {"a", "%41&", false, "?a=%41%26", "?a=%41%26"},
        {"[#]", "<>", true, "?%5B%23%5D=%3C%3E", "?%5B%23%5D=%3C%3E"},
        {"[#]", "<>", false, "?[%23]=%3C%3E", "?[%23]=%3C%3E"},
        {"[#]", "+", false, "?%5B%23%5D=%2B", "?%5B%23%5D=%2B"},
        {"a", "\"`", true, "?a=%22%60", "?a=%22%60"},
        {"a", "\x7F\t", true, "?a=%7F%09", "?a=%7F%09"},
        {"a", "\uE000", false, "?a=\uE000", "?a=%EE%80%80"},
        {"a", "\uE000", true, "?a=%EE%80%80", "?a=%EE%80%80"},
    };
    for (const Row& row : rows)
        for (const Append append : appends) {
            SCOPED_TRACE(std::string(row.iri) + (row.formEncoded ? " form-encoded" : ""));
            IRIArgs args;
            append(args, {row.key, row.value}, row.formEncoded);
            EXPECT_EQ(IRI(args).toStringUtf8(), row.iri);
            EXPECT_EQ(IRI(args).toAsciiStringUtf8(), row.ascii);
        }
}

// "as if it were form-encoded": a plain text keeps what the pairs before it left behind.
TEST(QueryPairs, aLaterPlainTextIsBuiltAsTheyWere)
{
    IRIArgs args;
    args.appendQueryKeyValuePair("a+", "b", false, false).setQuery("x y%41 é");
    EXPECT_EQ(IRI(args).toStringUtf8(), "?x+y%41+é");
    args.clearQuery().appendQueryKeyValuePair("a", "b", true, false).setQuery("x y%41 é");
    EXPECT_EQ(IRI(args).toStringUtf8(), "?x%20y%41%20%C3%A9"); // a space is no longer one
}

} // namespace foundation::network
