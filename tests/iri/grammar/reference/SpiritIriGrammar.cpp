#include "CharacterGrammars.hpp"
#include "SpiritGrammars.hpp"

#include <boost/fusion/include/adapt_struct.hpp>
#include <boost/optional.hpp>

namespace reference {

namespace {

    using OptionalRange = boost::optional<ItRange>;

    struct HierarchicalPart {
        OptionalRange userInfo, host, port, path;
    };

    struct Parts {
        OptionalRange scheme;
        HierarchicalPart hierarchicalPart;
        OptionalRange query, fragment;
    };

} // namespace

} // namespace reference

BOOST_FUSION_ADAPT_STRUCT(reference::HierarchicalPart, userInfo, host, port, path)
BOOST_FUSION_ADAPT_STRUCT(reference::Parts, scheme, hierarchicalPart, query, fragment)

namespace reference {

namespace {

    using qi::attr;
    using qi::eps;
    using qi::omit;
    using qi::raw;
    using qi::repeat;

    struct IriGrammar : qi::grammar<It, Parts()> {
        IriGrammar()
            : IriGrammar::base_type(IRI_reference, "IRI Grammar")
        {
            const OptionalRange absent;

            // RFC 3986, 2.2:  gen-delims = ":" / "/" / "?" / "#" / "[" / "]" / "@"
            gen_delims = char_(":/?#[]@");

            // RFC 3986, 2.2:  reserved = gen-delims / sub-delims
            reserved = gen_delims | sub_delims;

            // RFC 3987, 2.2:  iprivate = %xE000-F8FF / %xF0000-FFFFD / %x100000-10FFFD
            // Departure: the range %xE0000-E0FFF, which RFC 3987 leaves out everywhere.
            iprivate = char_(0xE000, 0xF8FF) | char_(0xE0000, 0xE0FFF) | char_(0xF0000, 0xFFFFD)
                       | char_(0x100000, 0x10FFFD);

            // RFC 3987, 2.2:  isegment = *ipchar
            isegment = *ipchar;

            // RFC 3987, 2.2:  isegment-nz = 1*ipchar
            isegment_nz = +ipchar;

            // RFC 3987, 2.2:  isegment-nz-nc = 1*( iunreserved / pct-encoded / sub-delims / "@" )
            // Departure: a "%" may stand by itself.
            isegment_nz_nc = +(iunreserved | pct_encoded | sub_delims | char_("@%"));

            // RFC 3987, 2.2:  ipath-abempty = *( "/" isegment )
            ipath_abempty = raw[*(char_('/') >> isegment)];

            // RFC 3987, 2.2:  ipath-absolute = "/" [ isegment-nz *( "/" isegment ) ]
            ipath_absolute = raw[char_('/') >> -(isegment_nz >> *(char_('/') >> isegment))];

            // RFC 3987, 2.2:  ipath-rootless = isegment-nz *( "/" isegment )
            ipath_rootless = raw[isegment_nz >> *(char_('/') >> isegment)];

            // RFC 3987, 2.2:  ipath-empty = 0<ipchar>
            ipath_empty = raw[eps];

            // RFC 3987, 2.2:  ipath-noscheme = isegment-nz-nc *( "/" isegment )
            ipath_noscheme = raw[isegment_nz_nc >> *(char_('/') >> isegment)];

            // RFC 3986, 3.2.2:  dec-octet = DIGIT                 ; 0-9
            //                             / %x31-39 DIGIT         ; 10-99
            //                             / "1" 2DIGIT            ; 100-199
            //                             / "2" %x30-34 DIGIT     ; 200-249
            //                             / "25" %x30-35          ; 250-255
            // Read as a number: up to three digits, and a value above 255 fails without a second
            // try on fewer digits. The digits of the number are ASCII; the one that must not stand
            // behind a zero is any of Unicode.
            dec_octet =
                !(char_('0') >> char_[&requireDigit]) >> qi::uint_parser<unsigned char, 10, 1, 3>();

            // RFC 3986, 3.2.2:  IPv4address = dec-octet "." dec-octet "." dec-octet "." dec-octet
            IPv4address = dec_octet >> repeat(3)[char_('.') >> dec_octet];

            // RFC 3987, 2.2:  ireg-name = *( iunreserved / pct-encoded / sub-delims )
            ireg_name = *(iunreserved | pct_encoded | sub_delims);

            // RFC 3986, 3.2.2:
            // IPv6address =                            6( h16 ":" ) ls32
            //             /                       "::" 5( h16 ":" ) ls32
            //             / [               h16 ] "::" 4( h16 ":" ) ls32
            //             / [ *1( h16 ":" ) h16 ] "::" 3( h16 ":" ) ls32
            //             / [ *2( h16 ":" ) h16 ] "::" 2( h16 ":" ) ls32
            //             / [ *3( h16 ":" ) h16 ] "::"    h16 ":"   ls32
            //             / [ *4( h16 ":" ) h16 ] "::"              ls32
            //             / [ *5( h16 ":" ) h16 ] "::"              h16
            //             / [ *6( h16 ":" ) h16 ] "::"
            // "Up to k groups" is k optional groups; a group does not take the first colon of "::".
            group = h16 >> char_(':') >> !char_(':');
            IPv6address =
                (repeat(6)[h16 >> char_(':')] >> ls32)
                | ("::" >> repeat(5)[h16 >> char_(':')] >> ls32)
                | (-h16 >> "::" >> repeat(4)[h16 >> char_(':')] >> ls32)
                | (-group >> -h16 >> "::" >> repeat(3)[h16 >> char_(':')] >> ls32)
                | (repeat(2)[-group] >> -h16 >> "::" >> repeat(2)[h16 >> char_(':')] >> ls32)
                | (repeat(3)[-group] >> -h16 >> "::" >> h16 >> char_(':') >> ls32)
                | (repeat(4)[-group] >> -h16 >> "::" >> ls32)
                | (repeat(5)[-group] >> -h16 >> "::" >> h16) | (repeat(6)[-group] >> -h16 >> "::");

            // RFC 3986, 3.2.2:  IPvFuture = "v" 1*HEXDIG "." 1*( unreserved / sub-delims / ":" )
            // Departure: iunreserved for unreserved; full-width digits; the "v" is lower case only.
            IPvFuture = char_('v') >> +char_[&requireXdigit] >> char_('.')
                        >> +(iunreserved | sub_delims | char_(':'));

            // RFC 3986, 3.2.2:  IP-literal = "[" ( IPv6address / IPvFuture ) "]"
            IP_literal = char_('[') >> (IPv6address | IPvFuture) >> char_(']');

            // RFC 3986, 3.2.2:  h16 = 1*4HEXDIG
            // Departure: the digits may be full-width.
            h16 = repeat(1, 4)[char_[&requireXdigit]];

            // RFC 3986, 3.2.2:  ls32 = ( h16 ":" h16 ) / IPv4address
            ls32 = (h16 >> char_(':') >> h16) | IPv4address;

            // RFC 3987, 2.2:  ihost = IP-literal / IPv4address / ireg-name
            // Four numbers at the front of a longer name, as in "1.2.3.4.example", are no address.
            ihost = raw[IP_literal
                        | (IPv4address >> !(iunreserved | pct_encoded | sub_delims | char_('@')))
                        | ireg_name];

            // RFC 3986, 3.2.3:  port = *DIGIT
            // Departure: the digits are those of Unicode.
            // With an action inside, "=" would hand on no result; "%=" does.
            port %= raw[*char_[&requireDigit]];

            // RFC 3987, 2.2:  iuserinfo = *( iunreserved / pct-encoded / sub-delims / ":" )
            iuserinfo = raw[*(iunreserved | pct_encoded | sub_delims | char_(':'))];

            // RFC 3987, 2.2:  iquery = *( ipchar / iprivate / "/" / "?" )
            iquery = raw[*(ipchar | char_("/?") | iprivate)];

            // RFC 3987, 2.2:  ifragment = *( ipchar / "/" / "?" )
            ifragment = raw[*(ipchar | char_("/?"))];

            // RFC 3987, 2.2:  ihier-part = "//" iauthority ipath-abempty
            //                            / ipath-absolute / ipath-rootless / ipath-empty
            //                 iauthority = [ iuserinfo "@" ] ihost [ ":" port ]
            ihier_part = ((("//" >> iuserinfo >> omit[char_('@')]) | "//") >> ihost
                          >> -(omit[char_(':')] >> port) >> ipath_abempty)
                         | (attr(absent) >> attr(absent) >> attr(absent)
                            >> (ipath_absolute | ipath_rootless | ipath_empty));

            // RFC 3987, 2.2:  irelative-part = "//" iauthority ipath-abempty
            //                                / ipath-absolute / ipath-noscheme / ipath-empty
            irelative_part = ((("//" >> iuserinfo >> omit[char_('@')]) | "//") >> ihost
                              >> -(omit[char_(':')] >> port) >> ipath_abempty)
                             | (attr(absent) >> attr(absent) >> attr(absent)
                                >> (ipath_absolute | ipath_noscheme | ipath_empty));

            // RFC 3987, 2.2:  IRI-reference = IRI / irelative-ref
            IRI_reference = IRI | irelative_ref;

            // RFC 3987, 2.2:  IRI = scheme ":" ihier-part [ "?" iquery ] [ "#" ifragment ]
            IRI = scheme >> omit[char_(':')] >> ihier_part >> -(omit[char_('?')] >> iquery)
                  >> -(omit[char_('#')] >> ifragment);

            // RFC 3987, 2.2:  irelative-ref = irelative-part [ "?" iquery ] [ "#" ifragment ]
            // A scheme without its ":" may have been left by the rule before.
            irelative_ref = attr(absent) >> irelative_part >> -(omit[char_('?')] >> iquery)
                            >> -(omit[char_('#')] >> ifragment);
        }

        SubDelimsGrammar sub_delims;
        qi::rule<It> gen_delims, reserved;
        UnreservedGrammar iunreserved;
        qi::rule<It> iprivate;
        PctEncodedGrammar pct_encoded;
        IpcharGrammar ipchar;
        qi::rule<It> isegment, isegment_nz, isegment_nz_nc;
        qi::rule<It, ItRange()> ipath_abempty, ipath_absolute, ipath_rootless, ipath_empty,
            ipath_noscheme;
        qi::rule<It> dec_octet, IPv4address, ireg_name, group, IPv6address, IPvFuture, IP_literal,
            h16, ls32;
        qi::rule<It, ItRange()> ihost, port, iuserinfo, iquery, ifragment;
        SchemeGrammar scheme;
        qi::rule<It, HierarchicalPart()> ihier_part, irelative_part;
        qi::rule<It, Parts()> IRI_reference, IRI, irelative_ref;
    };

    std::optional<Range> offsets(const std::u32string& text, const OptionalRange& range)
    {
        if (!range)
            return std::nullopt;
        return Range{static_cast<std::size_t>(range->begin() - text.begin()),
                     static_cast<std::size_t>(range->end() - text.begin())};
    }

} // namespace

Match parseIriReference(const std::u32string& text, ReferenceParts& parts)
{
    static const IriGrammar grammar;
    Parts found;
    It first = text.begin();
    const bool matched = qi::parse(first, text.end(), grammar, found);

    const HierarchicalPart& hierarchicalPart = found.hierarchicalPart;
    parts.scheme = offsets(text, found.scheme);
    parts.userInfo = offsets(text, hierarchicalPart.userInfo);
    parts.host = offsets(text, hierarchicalPart.host);
    parts.port = offsets(text, hierarchicalPart.port);
    parts.path = offsets(text, hierarchicalPart.path);
    parts.query = offsets(text, found.query);
    parts.fragment = offsets(text, found.fragment);
    return {matched, static_cast<std::size_t>(first - text.begin())};
}

bool isIri(const std::u32string& text)
{
    ReferenceParts parts;
    const Match match = parseIriReference(text, parts);
    return isIri(text, match, parts);
}

bool isIri(const std::u32string& text, const Match& match, const ReferenceParts& parts)
{
    if (match != Match{true, text.size()})
        return false;
    if (!parts.port)
        return true;
    const std::u32string port = text.substr(parts.port->begin, parts.port->end - parts.port->begin);
    std::uint16_t number = 0;
    return parsePort(port, number) == Match{true, port.size()};
}

} // namespace reference
