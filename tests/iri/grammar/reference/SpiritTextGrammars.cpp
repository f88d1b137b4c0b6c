#include "CharacterGrammars.hpp"
#include "SpiritGrammars.hpp"

#include <boost/fusion/include/adapt_struct.hpp>
#include <boost/optional.hpp>

#include <utility>

namespace reference {

namespace {

    struct PathSegments {
        std::u32string first;
        std::vector<std::u32string> middle;
        boost::optional<std::u32string> last;
    };

} // namespace

} // namespace reference

BOOST_FUSION_ADAPT_STRUCT(reference::PathSegments, first, middle, last)

namespace reference {

namespace {

    using qi::eoi;
    using qi::hold;
    using qi::omit;

    // RFC 3986, 3.3, read for its segments: each keeps the slash in front of it.
    struct PathSegmentGrammar : qi::grammar<It, PathSegments()> {
        PathSegmentGrammar()
            : PathSegmentGrammar::base_type(start)
        {
            // ~char_ takes any value but the slash, one above U+10FFFF too.
            segmentBody = +~char_('/');
            slashSegment = char_('/') >> segmentBody;
            doubleSlashSegment = char_('/') >> char_('/') >> segmentBody;
            terminalSlash = char_('/') >> eoi;

            // Without hold, the slash of a failed alternative would stay in the first segment.
            start =
                (hold[segmentBody] | hold[slashSegment] | hold[terminalSlash] | doubleSlashSegment)
                >> *slashSegment >> -terminalSlash;
        }

        qi::rule<It, std::u32string()> segmentBody, slashSegment, doubleSlashSegment, terminalSlash;
        qi::rule<It, PathSegments()> start;
    };

    /// Refuses the values that are to stay escaped.
    struct DoNotDecodeMatching {
        template <class Context>
        void operator()(char32_t value, Context&, bool& pass) const
        {
            pass = excluded.find(value) == std::u32string::npos;
        }

        std::u32string excluded;
    };

    // RFC 3986, 2.1, backwards: each escape becomes the value of its byte.
    struct PercentDecodeGrammar : qi::grammar<It, std::u32string()> {
        explicit PercentDecodeGrammar(std::u32string excluded)
            : PercentDecodeGrammar::base_type(decoded_text)
        {
            const qi::uint_parser<char32_t, 16, 2, 2> hexPair;
            decoded_escape %= omit[char_('%')] >> hexPair[DoNotDecodeMatching{std::move(excluded)}];
            decoded_text = +(decoded_escape | char_);
        }

        qi::rule<It, char32_t()> decoded_escape;
        qi::rule<It, std::u32string()> decoded_text;
    };

    // RFC 3986, 3.2.3:  port = *DIGIT
    // Departure: at least one digit, and a value of at most 16 bits.
    struct PortGrammar : qi::grammar<It, std::uint16_t()> {
        PortGrammar()
            : PortGrammar::base_type(port_number)
        {
            port_number = qi::uint_parser<std::uint16_t, 10, 1, -1>();
        }

        qi::rule<It, std::uint16_t()> port_number;
    };

    template <class Grammar, class... Result>
    Match match(const std::u32string& text, const Grammar& grammar, Result&... result)
    {
        It first = text.begin();
        const bool matched = qi::parse(first, text.end(), grammar, result...);
        return {matched, static_cast<std::size_t>(first - text.begin())};
    }

} // namespace

Match parseScheme(const std::u32string& text)
{
    static const SchemeGrammar grammar;
    return match(text, grammar);
}

Match parseSubDelims(const std::u32string& text)
{
    static const SubDelimsGrammar grammar;
    return match(text, grammar);
}

Match parseIunreserved(const std::u32string& text)
{
    static const UnreservedGrammar grammar;
    return match(text, grammar);
}

Match parsePctEncoded(const std::u32string& text)
{
    static const PctEncodedGrammar grammar;
    return match(text, grammar);
}

Match parseIpchar(const std::u32string& text)
{
    static const IpcharGrammar grammar;
    return match(text, grammar);
}

bool splitPathSegments(const std::u32string& path, std::vector<std::u32string>& segments)
{
    static const PathSegmentGrammar grammar;
    PathSegments found;
    const Match read = match(path, grammar, found);
    if (!read.matched || read.consumed != path.size())
        return false;

    segments.clear();
    if (!found.first.empty())
        segments.push_back(found.first);
    segments.insert(segments.end(), found.middle.begin(), found.middle.end());
    if (found.last)
        segments.push_back(*found.last);
    return true;
}

Match percentDecode(const std::u32string& text, const std::u32string& excluded,
                    std::u32string& decoded)
{
    const PercentDecodeGrammar grammar(excluded);
    decoded.clear();
    return match(text, grammar, decoded);
}

Match parsePort(const std::u32string& text, std::uint16_t& number)
{
    static const PortGrammar grammar;
    std::uint16_t value = 0;
    const Match read = match(text, grammar, value);
    if (read.matched)
        number = value;
    return read;
}

} // namespace reference
