#include "GrammarReading.hpp"

namespace foundation::network::iri::grammar::test {
namespace {

    // A text, whether it is accepted here, and whether RFC 3987 (with RFC 3986) accepts it.
    struct Departure {
        const char32_t* text;
        bool ours;
        bool rfc;
    };

    void expectAnswers(const Departure* rows, std::size_t count)
    {
        for (std::size_t i = 0; i < count; ++i) {
            SCOPED_TRACE(testing::PrintToString(std::u32string(rows[i].text)));
            EXPECT_EQ(accepts(rows[i].text), rows[i].ours) << "the RFC: " << rows[i].rfc;
        }
    }

    template <std::size_t COUNT>
    void expectAnswers(const Departure (&rows)[COUNT])
    {
        expectAnswers(rows, COUNT);
    }

    // RFC 3986, 3.1: scheme. Here letters and digits are those of Unicode.
    constexpr Departure schemes[] = {
        {U"\u00E9:x", true, false},
        {U"\u65E5\u672C:x", true, false},
        {U"\u0436+\u0663.\u00DF-a://h", true, false},
        {U"a\u0663:x", true, false},
        {U"\u00AA:", true, false},   // FEMININE ORDINAL INDICATOR has the property Alphabetic
        {U"\u2160:x", true, false},  // ROMAN NUMERAL ONE has it too
        {U"\u0663:x", false, false}, // a digit begins no scheme
        {U"\u00B2:x", false, false}, // SUPERSCRIPT TWO is neither letter nor decimal digit
        {U"a\u00B2:x", false, false},
        {U"\u00D7:x", false, false},  // MULTIPLICATION SIGN
        {U"a\u0301:x", false, false}, // COMBINING ACUTE ACCENT is not Alphabetic
        {U"\U0001F600:x", false, false},
    };

    TEST(IriGrammarDepartures, aSchemeMayBeOfAnyScript)
    {
        expectAnswers(schemes);
        expectReading({U"\u00E9:x", U"", U"\u00E9", NO, NO, NO, U"x", NO, NO});
        expectReading({U"a\u0663://h", U"", U"a\u0663", NO, U"h", NO, U"", NO, NO});
    }

    // RFC 3987, 2.2: ipchar and isegment-nz-nc. Here the bare "%" is a member.
    constexpr Departure percents[] = {
        {U"%", true, false},
        {U"a%zzb", true, false},
        {U"a%4", true, false},
        {U"%%%", true, false},
        {U"x:%", true, false},
        {U"x:a%/b%", true, false},
        {U"/%zz", true, false},
        {U"//h/%", true, false},
        {U"?%zz", true, false},
        {U"?a%", true, false},
        {U"#%zz", true, false},
        {U"#a%4", true, false},
        {U"a%41", true, true},
        // user information and registered names know escapes only
        {U"http://a%zzb/", false, false},
        {U"http://u%zz@h/", false, false},
        {U"//%", false, false},
        {U"//%@h", false, false},
        {U"//h%4", false, false},
        {U"//%41@h%41", true, true},
        {U"//[%41]", false, false},
        {U"x%41:", false, false},
    };

    TEST(IriGrammarDepartures, aBarePercentPassesInPathQueryAndFragment)
    {
        expectAnswers(percents);
        expectReading({U"a%zzb", U"", NO, NO, NO, NO, U"a%zzb", NO, NO});
    }

    // RFC 3987, 2.2: iprivate. Here %xE0000-E0FFF belongs to it.
    constexpr Departure privates[] = {
        {U"?\U000E0000", true, false},
        {U"?\U000E0001", true, false},
        {U"?\U000E0FFF", true, false},
        {U"?\uE000", true, true},
        {U"?\uF8FF", true, true},
        {U"?\U000F0000", true, true},
        {U"?\U0010FFFD", true, true},
        {U"?\U000E1000", true, true},
        {U"\U000E1000", true, true},
        // nowhere else
        {U"\U000E0001", false, false},
        {U"/a\U000E0001", false, false},
        {U"x:\U000E0001", false, false},
        {U"#\U000E0001", false, false},
        {U"//\U000E0001", false, false},
        {U"//\U000E0001@h", false, false},
        {U"//[v1.\U000E0001]", false, false},
        {U"\uE000", false, false},
        {U"#\uE000", false, false},
        {U"//\uE000", false, false},
        {U"#\U0010FFFD", false, false},
        {U"?\U000EFFFE", false, false},
        {U"?\uFDD0", false, false},
    };

    TEST(IriGrammarDepartures, tagCharactersPassInAQuery)
    {
        expectAnswers(privates);
    }

    // RFC 3986, 2.1 and 3.2.2: HEXDIG. Here the full-width forms are digits too.
    constexpr Departure hexDigits[] = {
        {U"//%\uFF21\uFF22", true, false},
        {U"//%\uFF41\uFF10", true, false},
        {U"//%\uFF26a@h", true, false},
        {U"//%a\uFF19@%\uFF461", true, false},
        {U"//[::\uFF11]", true, false},
        {U"//[\uFF41bcd::\uFF11.2.3.4]", false, false}, // the octets of IPv4 are ASCII digits
        {U"//[v\uFF11.x]", true, false},
        {U"//[\uFF561.x]", false, false},   // FULLWIDTH v
        {U"//%\uFF27\uFF10", false, false}, // FULLWIDTH G
        {U"//%\u0663\u0663", false, false}, // decimal, but not hexadecimal
        {U"//[::\u0663]", false, false},
    };

    TEST(IriGrammarDepartures, fullWidthFormsAreHexadecimalDigits)
    {
        expectAnswers(hexDigits);
        expectReading({U"//%\uFF21\uFF22:1", U"", NO, NO, U"%\uFF21\uFF22", U"1", U"", NO, NO});
    }

    // RFC 3986, 3.2.3: port. Here the digits are those of Unicode.
    constexpr Departure ports[] = {
        {U"//h:\u0663", true, false},
        {U"//h:8\u0660\uFF11\U0001D7CE", true, false},
        {U"//h:\u00B2", false, false}, // SUPERSCRIPT TWO is no decimal digit
        {U"//h:\uFF21", false, false},
    };

    TEST(IriGrammarDepartures, aPortMayBeOfAnyDigits)
    {
        expectAnswers(ports);
        expectReading({U"//h:8\u0663/", U"", NO, NO, U"h", U"8\u0663", U"/", NO, NO});
    }

    // RFC 3986, 3.2.2: IPvFuture. Here iunreserved stands for unreserved, and "v" is lower case
    // only (RFC 5234, 2.3: strings of the RFC match either case).
    constexpr Departure futures[] = {
        {U"//[v1.\u00E9]", true, false},  {U"//[vF.a\U00010000:]", true, false},
        {U"//[v1.x]", true, true},        {U"//[V1.x]", false, true},
        {U"//[v1.\uE000]", false, false}, {U"//[v\u00E9.x]", false, false},
    };

    TEST(IriGrammarDepartures, aFutureLiteralMayHoldNonAsciiAndNoUpperCaseV)
    {
        expectAnswers(futures);
    }

    // Language of RFC 3986 otherwise, and neither wider nor narrower than it.
    constexpr Departure others[] = {
        {U"//h:", true, true}, // an empty port is the caller's to refuse
        {U"//[::1%25eth0]", false, false},
        {U"a b", false, false},
        {U"a[b", false, false},
        {U"?[]", false, false},
        {U"#[]", false, false},
    };

    TEST(IriGrammarDepartures, areNoMore)
    {
        expectAnswers(others);
        for (const Departure& row : others)
            EXPECT_EQ(row.ours, row.rfc);
    }

} // namespace
} // namespace foundation::network::iri::grammar::test
