#include <foundation/network/iri/Diagnosis.hpp>

#include "iri/Pieces.hpp"
#include "iri/ReferenceReading.hpp"
#include "text/WellFormed.hpp"

#include <algorithm>
#include <iterator>

namespace foundation::network::iri {

namespace {

    using namespace detail;
    using Code = Diagnosis::Code;
    using Part = Diagnosis::Component;

    template <class Unit>
    struct Trouble {
        Code code;
        Part component;
        TextView<Unit> where; // in the text; empty where something is missing
        const char* expected;
    };

    template <class Unit>
    using TroubleOrNone = std::optional<Trouble<Unit>>;

    // How far the grammar came.
    template <class Unit>
    struct Reach {
        bool isReference = false;
        const Unit* stop = nullptr;
        /// What it stopped in; `None`, if something before that may be at fault.
        Part component = Part::None;
        bool isAscii = false; ///< then each unit is a code point, and none a defect
    };

    template <class It, class Unit>
    Reach<Unit> reachBy(TextView<Unit> text) noexcept
    {
        const It last(text.data() + text.size());
        It at(text.data());
        Parts<It> parts;
        std::uint16_t number = 0;
        if (readReference(at, last, parts, number))
            return {true, at.base()};

        // Whatever comes before a component that has begun is in order, but for the port.
        const bool hasHost = parts.hierarchicalPart.host.has_value();
        if (at == last || (hasHost && !hasGoodPort(parts, number)))
            return {false, at.base()};
        if (parts.fragment)
            return {false, at.base(), Part::Fragment};
        if (parts.query)
            return {false, at.base(), Part::Query};
        // An authority may end before the first character that it cannot hold; and what is no scheme
        // is read as a path.
        const bool isInPath = hasHost ? !parts.hierarchicalPart.path->empty() : bool(parts.scheme);
        return {false, at.base(), isInPath ? Part::Path : Part::None};
    }

    Reach<char> reach(std::string_view utf8) noexcept
    {
        if (text::isAllAscii(utf8)) {
            Reach<char> reached = reachBy<text::AsciiIterator>(utf8);
            reached.isAscii = true;
            return reached;
        }
        if (text::endsInsideSequence(utf8))
            return {};
        return reachBy<text::Utf8Iterator>(utf8);
    }

    Reach<char16_t> reach(std::u16string_view utf16) noexcept
    {
        if (text::endsInsideSequence(utf16))
            return {};
        return reachBy<text::Utf16Iterator>(utf16);
    }

    // What stands behind the sets of characters.
    constexpr const char* IN_USER_INFO = "a letter, a digit, an escape or one of -._~!$&'()*+,;=:";
    constexpr const char* IN_HOST = "a letter, a digit, an escape or one of -._~!$&'()*+,;=";
    constexpr const char* IN_PATH = "a letter, a digit, an escape or one of -._~!$&'()*+,;=:@/";
    constexpr const char* IN_QUERY_OR_FRAGMENT =
        "a letter, a digit, an escape or one of -._~!$&'()*+,;=:@/?";

    // An iterator that notes the furthest place where a production has looked. Behind the last
    // character of the text it shows NO_CODE_POINT, so that a look at the end is noted, too.
    template <class It>
    class NotingIterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = char32_t;
        using difference_type = std::ptrdiff_t;
        using pointer = const char32_t*;
        using reference = char32_t;

        NotingIterator() = default;
        NotingIterator(It at, It last, It& furthest)
            : at_(at)
            , last_(last)
            , furthest_(&furthest)
        {
        }

        It base() const { return at_; }

        char32_t operator*() const
        {
            if (furthest_->base() < at_.base())
                *furthest_ = at_;
            return at_ == last_ ? text::NO_CODE_POINT : *at_;
        }

        NotingIterator& operator++()
        {
            ++at_;
            return *this;
        }

        NotingIterator operator++(int)
        {
            const NotingIterator before = *this;
            ++*this;
            return before;
        }

        friend bool operator==(const NotingIterator& left, const NotingIterator& right)
        {
            return left.at_ == right.at_;
        }

    private:
        It at_;
        It last_;
        It* furthest_ = nullptr;
    };

    // The code point that begins here, or nothing at the end of the text.
    template <class Unit>
    TextView<Unit> codePointOf(TextView<Unit> text, const Unit* at)
    {
        const TextView<Unit> rest = text.substr(static_cast<std::size_t>(at - text.data()));
        return rest.substr(0, rest.empty() ? 0 : text::sequenceLength(at));
    }

    // Where a component holds what its production does not take.
    template <class Unit, class Production>
    TextView<Unit> notTaken(TextView<Unit> component, Production production)
    {
        auto at = cursorOver(component);
        production(at);
        return codePointOf(component, at.position().base());
    }

    template <class Unit, class Production>
    TroubleOrNone<Unit> troubleIn(Part part, TextView<Unit> component, Production production,
                                  const char* expected)
    {
        const TextView<Unit> where = notTaken(component, production);
        if (where.empty())
            return std::nullopt;
        return Trouble<Unit>{Code::BadCharacter, part, where, expected};
    }

    template <class Unit>
    TroubleOrNone<Unit> troubleInScheme(const Pieces<Unit>& pieces)
    {
        if (!pieces.notAScheme)
            return std::nullopt;
        const TextView<Unit> scheme = *pieces.notAScheme;
        if (scheme.empty())
            return Trouble<Unit>{Code::MissingScheme, Part::Scheme, {scheme.data(), 1}, "a scheme"};
        const TextView<Unit> where = notTaken(scheme, [](auto& at) { grammar::scheme(at); });
        return Trouble<Unit>{Code::BadScheme, Part::Scheme, where,
                             where.data() == scheme.data()
                                 ? "a letter"
                                 : "a letter, a digit, \"+\", \"-\", \".\" or \":\""};
    }

    template <class Unit>
    TroubleOrNone<Unit> troubleInUserInfo(const Pieces<Unit>& pieces)
    {
        if (!pieces.userInfo)
            return std::nullopt;
        auto trouble = troubleIn(
            Part::UserInfo, *pieces.userInfo, [](auto& at) { grammar::iuserinfo(at); },
            IN_USER_INFO);
        if (trouble && trouble->where.front() == '@')
            trouble->code = Code::ExtraAtSign;
        if (trouble && trouble->where.front() == '%')
            trouble = {Code::BadEscape, Part::UserInfo, trouble->where,
                       "\"%\" and two hexadecimal digits"};
        return trouble;
    }

    template <class Unit>
    TroubleOrNone<Unit> troubleInIpLiteral(TextView<Unit> host)
    {
        using It = text::CodePointIterator<Unit>;
        const It first(host.data());
        const It last(host.data() + host.size());
        It furthest = first;
        // The end of the cursor is no place in the text, so that it looks at the end of the host.
        grammar::Cursor<NotingIterator<It>> at({first, last, furthest}, {});
        if (grammar::IP_literal(at)) {
            const auto length = static_cast<std::size_t>(at.position().base().base() - host.data());
            if (length == host.size())
                return std::nullopt;
            return Trouble<Unit>{Code::TextAfterIpLiteral, Part::Host, host.substr(length),
                                 "\":\" and a port, \"/\", \"?\", \"#\" or the end"};
        }
        if (furthest == last)
            return Trouble<Unit>{Code::UnclosedIpLiteral, Part::Host, host.substr(host.size()),
                                 "the rest of the address, if some is missing, and \"]\""};
        return Trouble<Unit>{Code::BadIpLiteral, Part::Host, codePointOf(host, furthest.base()),
                             "the next character of an IPv6 address, or of \"v\" with a version, "
                             "\".\" and an address"};
    }

    template <class Unit>
    TroubleOrNone<Unit> troubleInHost(const Pieces<Unit>& pieces)
    {
        const TextView<Unit> host = pieces.host;
        if (pieces.isBareIpv6)
            return Trouble<Unit>{Code::UnbracketedIpv6, Part::Host, host,
                                 "\"[\", the address and \"]\""};
        if (!host.empty() && host.front() == '[')
            return troubleInIpLiteral(host);
        auto trouble = troubleIn(
            Part::Host, host, [](auto& at) { grammar::ireg_name(at); }, IN_HOST);
        if (trouble && trouble->where.front() == '%')
            trouble = {Code::BadEscape, Part::Host, trouble->where,
                       "\"%\" and two hexadecimal digits"};
        return trouble;
    }

    template <class Unit>
    TroubleOrNone<Unit> troubleInPort(const Pieces<Unit>& pieces)
    {
        if (!pieces.port)
            return std::nullopt;
        const TextView<Unit> port = *pieces.port;
        if (port.empty())
            return Trouble<Unit>{Code::EmptyPort,
                                 Part::Port,
                                 {port.data() - 1, 1},
                                 "a number from 0 to 65535 behind it, or no \":\""};
        const auto isDigit = [](char32_t c) { return c >= U'0' && c <= U'9'; };
        const TextView<Unit> other = notTaken(port, [isDigit](auto& at) { at.skipWhile(isDigit); });
        if (!other.empty())
            return Trouble<Unit>{Code::BadPort, Part::Port, other, "a digit from 0 to 9"};
        // A text whose port is good has its trouble elsewhere, where it was looked for before.
        return Trouble<Unit>{Code::PortTooLarge, Part::Port, port, "a number from 0 to 65535"};
    }

    template <class Unit>
    Trouble<Unit> badCharacter(Part component, TextView<Unit> where)
    {
        return {Code::BadCharacter, component, where,
                component == Part::Path ? IN_PATH : IN_QUERY_OR_FRAGMENT};
    }

    // The first trouble of a well-formed text that is no IRI reference.
    template <class Unit>
    Trouble<Unit> firstTrouble(TextView<Unit> text, const Reach<Unit>& reached)
    {
        TextView<Unit> rest = text;
        if (const TextView<Unit> space = takeUntil(rest, [](Unit c) { return !isWhiteSpace(c); });
            !space.empty())
            return {Code::SurroundingSpace, Part::None, space, "the first character of the text"};
        if (reached.component != Part::None)
            return badCharacter(reached.component, codePointOf(text, reached.stop));

        Pieces<Unit> pieces;
        splitFront(text, text.size(), pieces);
        if (const auto trouble = troubleInScheme(pieces))
            return *trouble;
        if (const auto trouble = troubleInUserInfo(pieces))
            return *trouble;
        if (const auto trouble = troubleInHost(pieces))
            return *trouble;
        if (const auto trouble = troubleInPort(pieces))
            return *trouble;
        // What is left is a path that nothing precedes, with no ":" in its first segment.
        return badCharacter(Part::Path, codePointOf(text, reached.stop));
    }

    // Whatever is wrong with white space, if only white space follows, is that it stands there.
    template <class Unit>
    void noticeSpaceBehind(TextView<Unit> text, Trouble<Unit>& trouble)
    {
        const auto begin = static_cast<std::size_t>(trouble.where.data() - text.data());
        const TextView<Unit> tail = text.substr(begin);
        if (!trouble.where.empty() && trouble.code != Code::SurroundingSpace
            && std::all_of(tail.begin(), tail.end(), isWhiteSpace<Unit>))
            trouble = {Code::SurroundingSpace, Part::None, tail, "the end of the text"};
    }

    // The component that holds a place, which is no delimiter.
    template <class Unit>
    Part componentAt(const Pieces<Unit>& pieces, const Unit* place)
    {
        const auto holds = [place](const std::optional<TextView<Unit>>& piece) {
            return piece && place >= piece->data() && place < piece->data() + piece->size();
        };
        if (holds(pieces.notAScheme))
            return Part::Scheme; // a good one holds no defect
        if (holds(pieces.userInfo))
            return Part::UserInfo;
        if (pieces.hasAuthority && holds(pieces.host))
            return Part::Host;
        if (holds(pieces.port))
            return Part::Port;
        if (holds(pieces.query))
            return Part::Query;
        return holds(pieces.fragment) ? Part::Fragment : Part::Path;
    }

    Trouble<char> brokenEncoding(Part component, std::string_view where)
    {
        return {Code::BadUtf8, component, where, "well-formed UTF-8"};
    }

    Trouble<char16_t> brokenEncoding(Part component, std::u16string_view where)
    {
        return {Code::BadUtf16, component, where, "a high surrogate and a low one behind it"};
    }

    template <class Unit>
    Trouble<Unit> troubleOf(TextView<Unit> text, const Reach<Unit>& reached)
    {
        // What the grammar has matched is well-formed.
        const std::size_t matched =
            reached.stop ? static_cast<std::size_t>(reached.stop - text.data()) : 0;
        const std::size_t wellFormed =
            reached.isAscii ? text.size() : matched + text::wellFormedLength(text.substr(matched));
        if (wellFormed < text.size()) {
            const Pieces<Unit> pieces = splitAtDelimiters(text, wellFormed);
            return brokenEncoding(
                componentAt(pieces, text.data() + wellFormed),
                text.substr(wellFormed, text::defectLength(text.substr(wellFormed))));
        }
        Trouble<Unit> trouble = firstTrouble(text, reached);
        noticeSpaceBehind(text, trouble);
        return trouble;
    }

    template <class Unit>
    std::optional<Diagnosis> diagnoseText(TextView<Unit> text) noexcept
    {
        const Reach<Unit> reached = reach(text);
        if (reached.isReference)
            return std::nullopt;
        const Trouble<Unit> trouble = troubleOf(text, reached);
        Diagnosis diagnosis;
        diagnosis.code = trouble.code;
        diagnosis.component = trouble.component;
        diagnosis.offset = static_cast<std::size_t>(trouble.where.data() - text.data());
        diagnosis.length = trouble.where.size();
        diagnosis.codePointOffset = reached.isAscii
                                        ? diagnosis.offset
                                        : text::codePointCount(text.substr(0, diagnosis.offset));
        diagnosis.expected = trouble.expected;
        return diagnosis;
    }

} // namespace

std::optional<Diagnosis> diagnose(std::string_view utf8) noexcept
{
    return diagnoseText(utf8);
}

std::optional<Diagnosis> diagnose(std::u16string_view utf16) noexcept
{
    return diagnoseText(utf16);
}

} // namespace foundation::network::iri
