#pragma once

#include "UnicodeSets.hpp"

#include <boost/range/iterator_range_core.hpp>
#include <boost/spirit/include/qi.hpp>

#include <string>

/// The five grammars that the main grammar is put together from.
///
/// A rule without an attribute only consumes: what the library answers is ranges of the text, so
/// that the characters themselves are never collected.
namespace reference {

namespace qi = boost::spirit::qi;

using It = std::u32string::const_iterator;
using ItRange = boost::iterator_range<It>;

/// A single code point, an inclusive range of code points, or one of a set of ASCII characters.
///
/// Characters are compared as code points throughout. A bare 'x' would be read in Spirit's 8-bit
/// encoding, which also takes the last 256 values of char32_t for characters. In a set "-" stands
/// for a range unless it comes first or last.
using boost::spirit::unicode::char_;

// The four classes are those of Unicode, not of ASCII, and come from ICU: Spirit's own tables are
// older than the ones that the library promises. An action may refuse what its parser matched.
inline void requireAlpha(char32_t c, qi::unused_type, bool& pass)
{
    pass = isAlphabetic(c);
}

inline void requireAlnum(char32_t c, qi::unused_type, bool& pass)
{
    pass = isAlphabetic(c) || isDecimalDigit(c);
}

inline void requireDigit(char32_t c, qi::unused_type, bool& pass)
{
    pass = isDecimalDigit(c);
}

inline void requireXdigit(char32_t c, qi::unused_type, bool& pass)
{
    pass = isHexDigit(c);
}

// RFC 3986, 2.2:  sub-delims = "!" / "$" / "&" / "'" / "(" / ")"
//                            / "*" / "+" / "," / ";" / "="
struct SubDelimsGrammar : qi::grammar<It> {
    SubDelimsGrammar()
        : SubDelimsGrammar::base_type(sub_delims)
    {
        sub_delims = char_("!$&'()*+,;=");
    }

    qi::rule<It> sub_delims;
};

struct UnreservedGrammar : qi::grammar<It> {
    UnreservedGrammar()
        : UnreservedGrammar::base_type(iunreserved)
    {
        // RFC 3987, 2.2:  ucschar = %xA0-D7FF / %xF900-FDCF / %xFDF0-FFEF
        //                         / %x10000-1FFFD / %x20000-2FFFD / %x30000-3FFFD
        //                         / %x40000-4FFFD / %x50000-5FFFD / %x60000-6FFFD
        //                         / %x70000-7FFFD / %x80000-8FFFD / %x90000-9FFFD
        //                         / %xA0000-AFFFD / %xB0000-BFFFD / %xC0000-CFFFD
        //                         / %xD0000-DFFFD / %xE1000-EFFFD
        ucschar = char_(0xA0, 0xD7FF) | char_(0xF900, 0xFDCF) | char_(0xFDF0, 0xFFEF)
                  | char_(0x10000, 0x1FFFD) | char_(0x20000, 0x2FFFD) | char_(0x30000, 0x3FFFD)
                  | char_(0x40000, 0x4FFFD) | char_(0x50000, 0x5FFFD) | char_(0x60000, 0x6FFFD)
                  | char_(0x70000, 0x7FFFD) | char_(0x80000, 0x8FFFD) | char_(0x90000, 0x9FFFD)
                  | char_(0xA0000, 0xAFFFD) | char_(0xB0000, 0xBFFFD) | char_(0xC0000, 0xCFFFD)
                  | char_(0xD0000, 0xDFFFD) | char_(0xE1000, 0xEFFFD);

        // RFC 3987, 2.2:  iunreserved = ALPHA / DIGIT / "-" / "." / "_" / "~" / ucschar
        // Departure: letters and digits are those of Unicode.
        iunreserved = char_[&requireAlnum] | char_("-._~") | ucschar;
    }

    qi::rule<It> ucschar, iunreserved;
};

// RFC 3986, 2.1:  pct-encoded = "%" HEXDIG HEXDIG
// Departure: the digits may be full-width.
struct PctEncodedGrammar : qi::grammar<It> {
    PctEncodedGrammar()
        : PctEncodedGrammar::base_type(pct_encoded)
    {
        pct_encoded = char_('%') >> qi::repeat(2)[char_[&requireXdigit]];
    }

    qi::rule<It> pct_encoded;
};

// RFC 3987, 2.2:  ipchar = iunreserved / pct-encoded / sub-delims / ":" / "@"
// Departure: a "%" may stand by itself.
struct IpcharGrammar : qi::grammar<It> {
    IpcharGrammar()
        : IpcharGrammar::base_type(ipchar)
    {
        ipchar = iunreserved | pct_encoded | sub_delims | char_(":@%");
    }

    PctEncodedGrammar pct_encoded;
    SubDelimsGrammar sub_delims;
    UnreservedGrammar iunreserved;
    qi::rule<It> ipchar;
};

// RFC 3986, 3.1:  scheme = ALPHA *( ALPHA / DIGIT / "+" / "-" / "." )
// Departure: letters and digits are those of Unicode.
struct SchemeGrammar : qi::grammar<It, ItRange()> {
    SchemeGrammar()
        : SchemeGrammar::base_type(scheme)
    {
        // With an action inside, "=" would hand on no result; "%=" does.
        scheme %= qi::raw[char_[&requireAlpha] >> *(char_[&requireAlnum] | char_("+.-"))];
    }

    qi::rule<It, ItRange()> scheme;
};

} // namespace reference
