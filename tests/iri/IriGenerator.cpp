#include "iri/IriGenerator.hpp"

#include <utility>
#include <vector>

namespace foundation::network::tests {

namespace {

    using Texts = rc::Gen<std::string>;

    // Pieces that may stand in user information, a host, and everything behind them.
    Texts commonPieces()
    {
        return rc::gen::weightedOneOf<std::string>({
            {6, rc::gen::map(rc::gen::elementOf(std::string("abzAZ09-._~!$&'()*+,;=")),
                             [](char c) { return std::string(1, c); })},
            {2, rc::gen::element<std::string>("é", "ß", "е", "م", "अ", "例", "が", "😀", "𐐀",
                                              "\u00A0", "\uFFEF", "e\u0301", "٣", "\U000E1000")},
            {2,
             rc::gen::element<std::string>("%41", "%2f", "%2F", "%20", "%25", "%3a", "%40", "%23",
                                           "%C3%A9", "%e4%be%8b", "%F0%9F%98%80", "%EE%80%80")},
            {1, rc::gen::element<std::string>("%E9", "%00", "%7F", "%80", "%2541", "%25%34%31",
                                              "%FF", "%C3", "%F8%90%80%80", "%FC%80%80%80%80%80")},
            {1, rc::gen::element<std::string>("%ＡＢ", "%4１", "%ｆf")},
        });
    }

    Texts oneOf(std::size_t commonWeight, std::size_t ownWeight, std::vector<std::string> own)
    {
        return rc::gen::weightedOneOf<std::string>(
            {{commonWeight, commonPieces()}, {ownWeight, rc::gen::elementOf(std::move(own))}});
    }

    Texts joined(const Texts& pieces)
    {
        return rc::gen::map(
            rc::gen::scale(0.12, rc::gen::container<std::vector<std::string>>(pieces)),
            [](const std::vector<std::string>& all) {
                std::string result;
                for (const std::string& piece : all)
                    result += piece;
                return result;
            });
    }

    const std::vector<std::string> barePercents{"%",  "%4",     "%zz",      "%é",
                                                "%%", "%C0%80", "%ED%A0%80"};

    std::vector<std::string> withBarePercents(std::vector<std::string> own)
    {
        own.insert(own.end(), barePercents.begin(), barePercents.end());
        return own;
    }

    Texts segments()
    {
        return joined(oneOf(6, 2, withBarePercents({":", "@", "..", ".", "./"})));
    }

    Texts segmentsWithoutColon()
    {
        return rc::gen::map(joined(oneOf(6, 1, withBarePercents({"@", ".."}))),
                            [](std::string text) { return text.empty() ? "." : text; });
    }

    // "/" with a segment behind it, over and over; empty too.
    Texts pathsAfterAnAuthority()
    {
        return joined(rc::gen::map(segments(), [](std::string text) { return "/" + text; }));
    }

    Texts authorities()
    {
        const Texts userInfos = rc::gen::map(joined(oneOf(6, 1, {":", "::"})),
                                             [](std::string text) { return text + "@"; });
        const Texts hosts = rc::gen::weightedOneOf<std::string>({
            {5, joined(commonPieces())},
            {3, rc::gen::element<std::string>("", "h", "1.2.3.4", "1.2.3.256", "01.2.3.4",
                                              "1.2.3.4.5", "255.255.255.255", "例え.jp")},
            {3,
             rc::gen::element<std::string>("[::1]", "[::]", "[1:2:3:4:5:6:7:8]", "[1::7:8]",
                                           "[::ffff:1.2.3.4]", "[v1.a:b]", "[vF.é]", "[１::ＡＢ]")},
        });
        const Texts ports =
            rc::gen::element<std::string>(":0", ":80", ":0080", ":65535", ":00000001");
        const Texts none = rc::gen::just(std::string());
        return rc::gen::exec([=] {
            return "//" + *rc::gen::oneOf(none, userInfos) + *hosts
                   + *rc::gen::weightedOneOf<std::string>({{2, none}, {1, ports}});
        });
    }

    Texts schemes()
    {
        return rc::gen::element<std::string>("http", "HTTP", "x", "urn", "a1+.-", "é", "схема",
                                             "x٣", "𐐀");
    }

    Texts queries()
    {
        return joined(oneOf(
            5, 2, withBarePercents({"/", "?", ":", "@", "\uE000", "\U000E0001", "\U00100000"})));
    }

    Texts fragments()
    {
        return joined(oneOf(5, 1, withBarePercents({"/", "?", ":", "@"})));
    }

    Texts paths(bool hasScheme, bool hasAuthority)
    {
        if (hasAuthority)
            return pathsAfterAnAuthority();
        const Texts firsts =
            hasScheme ? rc::gen::map(segments(),
                                     [](std::string text) { return text.empty() ? ":" : text; })
                      : segmentsWithoutColon();
        return rc::gen::exec([=] {
            const bool isEmpty = *rc::gen::weightedElement<bool>({{1, true}, {4, false}});
            if (isEmpty)
                return std::string();
            const std::string slash = *rc::gen::element<std::string>("", "/");
            return slash + *firsts + *pathsAfterAnAuthority();
        });
    }

} // namespace

Texts iriReferences()
{
    return rc::gen::exec([] {
        std::string result;
        const bool hasScheme = *rc::gen::arbitrary<bool>();
        const bool hasAuthority = *rc::gen::arbitrary<bool>();
        if (hasScheme)
            result += *schemes() + ":";
        if (hasAuthority)
            result += *authorities();
        result += *paths(hasScheme, hasAuthority);
        if (*rc::gen::arbitrary<bool>())
            result += "?" + *queries();
        if (*rc::gen::arbitrary<bool>())
            result += "#" + *fragments();
        return result;
    });
}

} // namespace foundation::network::tests
