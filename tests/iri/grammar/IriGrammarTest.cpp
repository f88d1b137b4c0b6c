#include "GrammarReading.hpp"

namespace foundation::network::iri::grammar::test {
namespace {

    // text, left over; scheme, user info, host, port, path, query, fragment
    constexpr Reading structure[] = {
        {U"", U"", NO, NO, NO, NO, U"", NO, NO},
        {U"a:b", U"", U"a", NO, NO, NO, U"b", NO, NO},
        {U"a:", U"", U"a", NO, NO, NO, U"", NO, NO},
        {U"http://u:p@h:8/a/b?q#f", U"", U"http", U"u:p", U"h", U"8", U"/a/b", U"q", U"f"},
        {U"HTTP://H/", U"", U"HTTP", NO, U"H", NO, U"/", NO, NO},
        {U"urn:isbn:0-395", U"", U"urn", NO, NO, NO, U"isbn:0-395", NO, NO},
        {U"mailto:a@b?c", U"", U"mailto", NO, NO, NO, U"a@b", U"c", NO},
        {U"a+b-c.1:x", U"", U"a+b-c.1", NO, NO, NO, U"x", NO, NO},
        {U"a:/b", U"", U"a", NO, NO, NO, U"/b", NO, NO},
        {U"a:/", U"", U"a", NO, NO, NO, U"/", NO, NO},
        {U"a:b:c", U"", U"a", NO, NO, NO, U"b:c", NO, NO},
        {U"a::", U"", U"a", NO, NO, NO, U":", NO, NO},
        {U"a:?", U"", U"a", NO, NO, NO, U"", U"", NO},
        {U"a:#", U"", U"a", NO, NO, NO, U"", NO, U""},
        // relative references
        {U"//host", U"", NO, NO, U"host", NO, U"", NO, NO},
        {U"///p", U"", NO, NO, U"", NO, U"/p", NO, NO},
        {U"//", U"", NO, NO, U"", NO, U"", NO, NO},
        {U"////", U"", NO, NO, U"", NO, U"//", NO, NO},
        {U"//h//p//", U"", NO, NO, U"h", NO, U"//p//", NO, NO},
        {U"/", U"", NO, NO, NO, NO, U"/", NO, NO},
        {U"/a//b/", U"", NO, NO, NO, NO, U"/a//b/", NO, NO},
        {U"/a:b", U"", NO, NO, NO, NO, U"/a:b", NO, NO},
        {U"a/b:c", U"", NO, NO, NO, NO, U"a/b:c", NO, NO},
        {U"./a:b", U"", NO, NO, NO, NO, U"./a:b", NO, NO},
        {U"a//b", U"", NO, NO, NO, NO, U"a//b", NO, NO},
        {U"a@b", U"", NO, NO, NO, NO, U"a@b", NO, NO},
        {U"..", U"", NO, NO, NO, NO, U"..", NO, NO},
        // query and fragment, empty and absent
        {U"?", U"", NO, NO, NO, NO, U"", U"", NO},
        {U"#", U"", NO, NO, NO, NO, U"", NO, U""},
        {U"?#", U"", NO, NO, NO, NO, U"", U"", U""},
        {U"a?", U"", NO, NO, NO, NO, U"a", U"", NO},
        {U"a?#", U"", NO, NO, NO, NO, U"a", U"", U""},
        {U"a?b?c/d#e?f/g", U"", NO, NO, NO, NO, U"a", U"b?c/d", U"e?f/g"},
        {U"a#b?c", U"", NO, NO, NO, NO, U"a", NO, U"b?c"},
        {U"?a:b@c", U"", NO, NO, NO, NO, U"", U"a:b@c", NO},
        {U"a#b#c", U"#c", NO, NO, NO, NO, U"a", NO, U"b"},
        {U"a?[", U"[", NO, NO, NO, NO, U"a", U"", NO},
        {U"#]", U"]", NO, NO, NO, NO, U"", NO, U""},
        // outside ASCII
        {U"//\u043F\u0440@\u00FC/\u03B1\U00010000?\U000EFFFD#\u00A0", U"", NO, U"\u043F\u0440",
         U"\u00FC", NO, U"/\u03B1\U00010000", U"\U000EFFFD", U"\u00A0"},
        {U"a\uFDD0", U"\uFDD0", NO, NO, NO, NO, U"a", NO, NO},
    };

    TEST(IriGrammar, takesATextApart)
    {
        for (const Reading& row : structure)
            expectReading(row);
    }

    // A scheme that matched in front of a missing ":" is part of the path, and no scheme is left.
    constexpr Reading schemeOrPath[] = {
        {U"abc/def", U"", NO, NO, NO, NO, U"abc/def", NO, NO},
        {U"abc", U"", NO, NO, NO, NO, U"abc", NO, NO},
        {U"abc?a:b", U"", NO, NO, NO, NO, U"abc", U"a:b", NO},
        {U"abc#a:b", U"", NO, NO, NO, NO, U"abc", NO, U"a:b"},
        {U"a%41:b", U":b", NO, NO, NO, NO, U"a%41", NO, NO},
        {U"a@b:c", U":c", NO, NO, NO, NO, U"a@b", NO, NO},
        {U"1a:b", U":b", NO, NO, NO, NO, U"1a", NO, NO},
        {U"-a:b", U":b", NO, NO, NO, NO, U"-a", NO, NO},
        {U"+:b", U":b", NO, NO, NO, NO, U"+", NO, NO},
        {U"a_b:c", U":c", NO, NO, NO, NO, U"a_b", NO, NO},
        {U"\u0663:b", U":b", NO, NO, NO, NO, U"\u0663", NO, NO},
        {U":a", U":a", NO, NO, NO, NO, U"", NO, NO},
        {U"%41:", U":", NO, NO, NO, NO, U"%41", NO, NO},
    };

    TEST(IriGrammar, tellsASchemeFromAPathByTheColon)
    {
        for (const Reading& row : schemeOrPath)
            expectReading(row);
    }

    // Once scheme ":" has matched, the text is an IRI, even if it is left over.
    constexpr Reading committed[] = {
        {U"a:[", U"[", U"a", NO, NO, NO, U"", NO, NO},
        {U"a: b", U" b", U"a", NO, NO, NO, U"", NO, NO},
        {U"a://[", U"[", U"a", NO, U"", NO, U"", NO, NO},
        {U"a:b[", U"[", U"a", NO, NO, NO, U"b", NO, NO},
        {U"//[", U"[", NO, NO, U"", NO, U"", NO, NO}, // "//" commits to an authority
        {U"/[", U"[", NO, NO, NO, NO, U"/", NO, NO},
        {U"a:// b", U" b", U"a", NO, U"", NO, U"", NO, NO},
    };

    TEST(IriGrammar, keepsToAnAlternativeThatHasMatched)
    {
        for (const Reading& row : committed)
            expectReading(row);
    }

    constexpr Reading userInfos[] = {
        {U"http://u@h", U"", U"http", U"u", U"h", NO, U"", NO, NO},
        {U"http://u@h@x", U"@x", U"http", U"u", U"h", NO, U"", NO, NO},
        {U"x://@h", U"", U"x", U"", U"h", NO, U"", NO, NO},
        {U"x://@", U"", U"x", U"", U"", NO, U"", NO, NO},
        {U"x://:@:1", U"", U"x", U":", U"", U"1", U"", NO, NO},
        {U"x://a:1@b", U"", U"x", U"a:1", U"b", NO, U"", NO, NO},
        {U"x://u:p:q@h:8", U"", U"x", U"u:p:q", U"h", U"8", U"", NO, NO},
        {U"x://u%40v@h", U"", U"x", U"u%40v", U"h", NO, U"", NO, NO},
        {U"x://!$&'()*+,;=-._~@h", U"", U"x", U"!$&'()*+,;=-._~", U"h", NO, U"", NO, NO},
        {U"x://1.2.3.4@h", U"", U"x", U"1.2.3.4", U"h", NO, U"", NO, NO},
        // an "@" behind the authority is none of its own
        {U"x://h/@", U"", U"x", NO, U"h", NO, U"/@", NO, NO},
        {U"x://h?a@b", U"", U"x", NO, U"h", NO, U"", U"a@b", NO},
        // a "%" that begins no escape ends the user information before its "@"
        {U"http://u%zz@h/", U"%zz@h/", U"http", NO, U"u", NO, U"", NO, NO},
        {U"x://u%4@h", U"%4@h", U"x", NO, U"u", NO, U"", NO, NO},
        {U"x://[::1]@h", U"@h", U"x", NO, U"[::1]", NO, U"", NO, NO},
        {U"x://u[@h", U"[@h", U"x", NO, U"u", NO, U"", NO, NO},
    };

    TEST(IriGrammar, endsUserInformationAtTheFirstAt)
    {
        for (const Reading& row : userInfos)
            expectReading(row);
    }

    constexpr Reading hosts[] = {
        {U"http://1.2.3.4/", U"", U"http", NO, U"1.2.3.4", NO, U"/", NO, NO},
        {U"http://1.2.3.4:80/", U"", U"http", NO, U"1.2.3.4", U"80", U"/", NO, NO},
        {U"http://1.2.3.4.5/", U"", U"http", NO, U"1.2.3.4.5", NO, U"/", NO, NO},
        {U"http://1.2.3.256/", U"", U"http", NO, U"1.2.3.256", NO, U"/", NO, NO},
        // a dotted quad is a registered name where the host goes on behind it
        {U"//1.2.3.4a", U"", NO, NO, U"1.2.3.4a", NO, U"", NO, NO},
        {U"//1.2.3.4%41", U"", NO, NO, U"1.2.3.4%41", NO, U"", NO, NO},
        {U"//1.2.3.4!", U"", NO, NO, U"1.2.3.4!", NO, U"", NO, NO},
        {U"//1.2.3.4\u00E9", U"", NO, NO, U"1.2.3.4\u00E9", NO, U"", NO, NO},
        {U"//1.2.3.4\u0665", U"", NO, NO, U"1.2.3.4\u0665", NO, U"", NO, NO},
        {U"//1.2.3.4%zz", U"%zz", NO, NO, U"1.2.3.4", NO, U"", NO, NO},
        {U"//u@1.2.3.4@x", U"@x", NO, U"u", U"1.2.3.4", NO, U"", NO, NO},
        {U"//1.2.3.4[", U"[", NO, NO, U"1.2.3.4", NO, U"", NO, NO},
        {U"http://a%zzb/", U"%zzb/", U"http", NO, U"a", NO, U"", NO, NO},
        {U"//%41%c3%A9", U"", NO, NO, U"%41%c3%A9", NO, U"", NO, NO},
        {U"//%", U"%", NO, NO, U"", NO, U"", NO, NO},
        {U"//a%4", U"%4", NO, NO, U"a", NO, U"", NO, NO},
        {U"//!$&'()*+,;=-._~", U"", NO, NO, U"!$&'()*+,;=-._~", NO, U"", NO, NO},
        // literals keep their brackets
        {U"http://[::1]/", U"", U"http", NO, U"[::1]", NO, U"/", NO, NO},
        {U"http://[1:2:3:4:5:6:7:8]/", U"", U"http", NO, U"[1:2:3:4:5:6:7:8]", NO, U"/", NO, NO},
        {U"http://[::ffff:1.2.3.4]/", U"", U"http", NO, U"[::ffff:1.2.3.4]", NO, U"/", NO, NO},
        {U"//u:p@[::]:80", U"", NO, U"u:p", U"[::]", U"80", U"", NO, NO},
        {U"http://[v1.x:y]/", U"", U"http", NO, U"[v1.x:y]", NO, U"/", NO, NO},
        // what begins with "[" and is no literal is left over as a whole
        {U"http://[1:2:3:4:5:6:7:8:9]/", U"[1:2:3:4:5:6:7:8:9]/", U"http", NO, U"", NO, U"", NO,
         NO},
        {U"http://[1:::2]/", U"[1:::2]/", U"http", NO, U"", NO, U"", NO, NO},
        {U"http://[::1", U"[::1", U"http", NO, U"", NO, U"", NO, NO},
        {U"http://[v.x]/", U"[v.x]/", U"http", NO, U"", NO, U"", NO, NO},
        {U"http://[V1.x]/", U"[V1.x]/", U"http", NO, U"", NO, U"", NO, NO},
        {U"//[1.2.3.4]", U"[1.2.3.4]", NO, NO, U"", NO, U"", NO, NO},
        {U"//[]", U"[]", NO, NO, U"", NO, U"", NO, NO},
        {U"//[::1]a", U"a", NO, NO, U"[::1]", NO, U"", NO, NO},
        {U"//a[::1]", U"[::1]", NO, NO, U"a", NO, U"", NO, NO},
    };

    TEST(IriGrammar, takesEveryKindOfHostAsARange)
    {
        for (const Reading& row : hosts)
            expectReading(row);
    }

    constexpr Reading ports[] = {
        {U"http://host:", U"", U"http", NO, U"host", U"", U"", NO, NO},
        {U"http://host:/", U"", U"http", NO, U"host", U"", U"/", NO, NO},
        {U"//h:0080?q", U"", NO, NO, U"h", U"0080", U"", U"q", NO},
        {U"//h:999999999999#f", U"", NO, NO, U"h", U"999999999999", U"", NO, U"f"},
        {U"//:1", U"", NO, NO, U"", U"1", U"", NO, NO},
        {U"//h:a", U"a", NO, NO, U"h", U"", U"", NO, NO},
        {U"//h:1a", U"a", NO, NO, U"h", U"1", U"", NO, NO},
        {U"//h:1:2", U":2", NO, NO, U"h", U"1", U"", NO, NO},
        {U"//h:-1", U"-1", NO, NO, U"h", U"", U"", NO, NO},
        {U"//h/p:1", U"", NO, NO, U"h", NO, U"/p:1", NO, NO},
    };

    TEST(IriGrammar, hasAPortAsSoonAsItsColonIsThere)
    {
        for (const Reading& row : ports)
            expectReading(row);
    }

    TEST(IriGrammar, refusesACharacterThatNoComponentMayHold)
    {
        struct Place {
            std::u32string before, behind;
        };
        const Place places[] = {
            {U"", U""},       {U"a", U"b:"},       {U"x:", U""},       {U"x:/", U"a"},
            {U"a/b", U"c"},   {U"//u", U"v@h"},    {U"//h", U"i/p"},   {U"//h:8", U"0"},
            {U"//h/p", U"q"}, {U"x://h/p?q", U""}, {U"x://h/#f", U""}, {U"?", U"#"},
        };
        std::u32string refused = U"\t \"\\`<>^{|}";
        refused +=
            {U'\0',  U'\n',  U'\r',  U'\x7F', U'\x80', U'\x9F',  0xD800,   0xDFFF,   0xFDD0,
             0xFDEF, 0xFFF0, 0xFFFF, 0x1FFFE, 0xFFFFE, 0x10FFFE, 0x10FFFF, 0x110000, 0xFFFFFFFF};
        for (const char32_t c : refused) {
            for (const Place& place : places) {
                const std::u32string text = place.before + c + place.behind;
                SCOPED_TRACE(testing::PrintToString(text));
                EXPECT_EQ(matchedLength(text), place.before.size());
            }
        }
    }

    // The end that is given is the end, even where more text lies behind it.
    TEST(IriGrammar, readsNothingBehindItsEnd)
    {
        const std::u32string text = U"//[::1]:80";
        for (std::size_t length = 0; length <= text.size(); ++length) {
            const std::u32string alone = text.substr(0, length);
            auto first = text.begin();
            iri::detail::Parts<It> parts;
            EXPECT_TRUE(parseIriReference(first, text.begin() + static_cast<std::ptrdiff_t>(length),
                                          parts));
            EXPECT_EQ(static_cast<std::size_t>(first - text.begin()), matchedLength(alone));
        }
    }

} // namespace
} // namespace foundation::network::iri::grammar::test
