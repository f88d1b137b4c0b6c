#include "reference/SpecimenGenerator.hpp"

#include "text/NaiveUtf8.hpp"

#include <optional>
#include <string>
#include <vector>

namespace foundation::network::tests {

namespace {

    // The alphabets are small, so that two values often agree in a component.

    constexpr const char* schemes[] = {"http", "http", "http", "HTTP", "x", "é"};
    constexpr const char* userInfos[] = {"u", "u", "", "u:p", "%75", "é", "a%2F"};
    constexpr const char* hosts[] = {"h", "h", "h", "H", "", "é", "%68", "[::1]", "1.2.3.4"};
    constexpr const char* ports[] = {"80", "80", "080", "0", "8080"};
    constexpr const char* segments[] = {"a",      "a",     "a",
                                        "b",      "b",     "c",
                                        ".",      "..",    "..",
                                        "",       "x:y",   "a:",
                                        "%41",    "%2E",   "%2e%2E",
                                        ".%2E",   "a%2Fb", "%2F",
                                        "..%2Fa", "é",     "%zz",
                                        "%",      "%E9",   "%C3%A9",
                                        "%2541",  "%25",   "b;p=1",
                                        "...",    "a.",    "%3A",
                                        "%5B",    "%20",   "%FC%80%80%80%80%80"};
    constexpr const char* queries[] = {"q", "q", "",    "%71",    "/../", "a+b%26c",
                                       "?", "é", "%zz", "\uE000", "%",    "a%20b"};
    constexpr const char* fragments[] = {"f", "f", "", "%66", "/a", "é", "%"};

    // Plain text, of which anything may be built.
    constexpr const char* plainUserInfos[] = {"u", "u", "", "a b", "u@", "%41", "é", "[%zz"};
    constexpr const char* plainHosts[] = {"h", "h", "h", "", "a b", "é", "%41", "[::1]", "h/a"};
    constexpr const char* plainSegments[] = {"a",  "a",   "b",   "b",   "c",      ".",   "..", "..",
                                             "",   "x:y", "a b", "%41", "%",      "é",   "?",  "#",
                                             "[]", "%2F", "a:",  "\"",  "\uE000", "100%"};
    constexpr const char* plainQueries[] = {"q", "q",      "",    "a b", "a+b%26c", "%41",
                                            "é", "\uE000", "[]#", "%",   "/../?"};
    constexpr const char* plainFragments[] = {"f", "f", "", "a b", "%41", "é", "#", "\uE000"};

    template <std::size_t SIZE>
    std::string oneOf(const char* const (&texts)[SIZE], Random& random)
    {
        return texts[below(SIZE, random)];
    }

    bool oneIn(std::size_t count, Random& random)
    {
        return below(count, random) == 0;
    }

    using Optional = std::optional<std::string>;

    template <std::size_t SIZE>
    Optional perhaps(const char* const (&texts)[SIZE], Random& random)
    {
        return oneIn(2, random) ? Optional(oneOf(texts, random)) : std::nullopt;
    }

    // What a value is made of, as it stands in a text or as plain text.
    struct Draft {
        Optional scheme;
        Optional userInfo;
        Optional host;
        Optional port;
        bool pathIsRooted = false;
        std::vector<std::string> segments;
        Optional query;
        Optional fragment;

        std::string path() const
        {
            std::string result;
            for (const std::string& segment : segments)
                result +=
                    (result.empty() && !pathIsRooted && &segment == &segments.front() ? "" : "/")
                    + segment;
            return result;
        }
    };

    template <std::size_t SIZE>
    void drawSegments(Draft& draft, const char* const (&texts)[SIZE], Random& random)
    {
        draft.segments.clear();
        draft.pathIsRooted = !oneIn(3, random);
        for (std::size_t count = below(6, random); count > 0; --count)
            draft.segments.push_back(oneOf(texts, random));
        // "a/b//c" and the like are dead ends; most paths shall be longer ones.
        if (!oneIn(4, random))
            for (std::size_t i = 0; i + 1 < draft.segments.size(); ++i)
                if (draft.segments[i].empty())
                    draft.segments[i] = "a";
    }

    Draft drawn(bool isPlain, Random& random)
    {
        Draft draft;
        draft.scheme = perhaps(schemes, random);
        if (oneIn(2, random)) {
            draft.host = isPlain ? oneOf(plainHosts, random) : oneOf(hosts, random);
            if (oneIn(4, random))
                draft.userInfo = isPlain ? oneOf(plainUserInfos, random) : oneOf(userInfos, random);
            if (oneIn(4, random))
                draft.port = oneOf(ports, random);
        }
        isPlain ? drawSegments(draft, plainSegments, random)
                : drawSegments(draft, segments, random);
        draft.query = isPlain ? perhaps(plainQueries, random) : perhaps(queries, random);
        draft.fragment = isPlain ? perhaps(plainFragments, random) : perhaps(fragments, random);
        return draft;
    }

    // Takes over most of another draft.
    Draft varied(const Draft& original, bool isPlain, Random& random)
    {
        Draft draft = original;
        const Draft other = drawn(isPlain, random);
        for (std::size_t changes = below(4, random); changes > 0; --changes)
            switch (below(8, random)) {
            case 0:
                draft.scheme = other.scheme;
                break;
            case 1:
                draft.userInfo = other.userInfo;
                draft.host = other.host;
                draft.port = other.port;
                break;
            case 2:
                draft.query = other.query;
                break;
            case 3:
                draft.fragment = other.fragment;
                break;
            case 4:
                draft.segments = other.segments;
                draft.pathIsRooted = other.pathIsRooted;
                break;
            case 5:
                if (!draft.segments.empty())
                    draft.segments.pop_back();
                break;
            case 6:
                draft.segments.insert(draft.segments.end(), other.segments.begin(),
                                      other.segments.end());
                break;
            default:
                if (!draft.segments.empty())
                    draft.segments.back() =
                        isPlain ? oneOf(plainSegments, random) : oneOf(segments, random);
                break;
            }
        return draft;
    }

    // Makes the components go together.
    std::string fittingPath(const Draft& draft, bool isText)
    {
        std::string path = draft.path();
        if (draft.host && !path.empty() && path.front() != '/')
            path.insert(0, "/");
        if (!isText || draft.host)
            return path;
        // A text in which the path would be taken for an authority or a scheme says something else.
        if (path.substr(0, 2) == "//")
            path.insert(0, "/.");
        const std::string first = path.substr(0, path.find('/'));
        if (!draft.scheme && first.find(':') != std::string::npos)
            path.insert(0, "./");
        return path;
    }

    Specimen parsedFrom(const Draft& draft)
    {
        std::string text;
        if (draft.scheme)
            text += *draft.scheme + ":";
        if (draft.host) {
            text += "//";
            if (draft.userInfo)
                text += *draft.userInfo + "@";
            text += *draft.host;
            if (draft.port)
                text += ":" + *draft.port;
        }
        text += fittingPath(draft, true);
        if (draft.query)
            text += "?" + *draft.query;
        if (draft.fragment)
            text += "#" + *draft.fragment;
        return parsedSpecimen(text);
    }

    std::optional<Text> utf32(const Optional& text)
    {
        return text ? readUtf8(*text) : std::nullopt;
    }

    Specimen builtFrom(const Draft& draft, Random& random)
    {
        NaiveArguments arguments;
        arguments.scheme = utf32(draft.scheme);
        arguments.host = utf32(draft.host);
        if (draft.host) {
            arguments.userInfo = utf32(draft.userInfo);
            if (draft.port)
                arguments.port = static_cast<std::uint16_t>(std::stoul(*draft.port));
        }
        const std::string path = fittingPath(draft, false);
        if (!path.empty() || oneIn(2, random))
            arguments.path = utf32(path);
        arguments.query = utf32(draft.query);
        if (draft.query) {
            arguments.queryIsFormEncoded = oneIn(3, random);
            arguments.queryHasEscapes = oneIn(3, random);
        }
        arguments.fragment = utf32(draft.fragment);
        return builtSpecimen(arguments);
    }

    // Goes on with the result of an operation, and with the first operand where it refuses.
    Specimen resultOr(Specimen operand, Outcome outcome)
    {
        return outcome.result ? std::move(*outcome.result) : std::move(operand);
    }

    Specimen madeFrom(const Draft& draft, bool isPlain, Random& random)
    {
        Specimen specimen = isPlain ? builtFrom(draft, random) : parsedFrom(draft);
        if (!oneIn(5, random))
            return specimen;
        const Draft other = varied(draft, isPlain, random);
        Specimen second = isPlain ? builtFrom(other, random) : parsedFrom(other);
        Outcome outcome =
            oneIn(2, random) ? resolve(specimen, second) : relativise(specimen, second);
        return resultOr(std::move(specimen), std::move(outcome));
    }

} // namespace

std::pair<Specimen, Specimen> relatedSpecimens(Random& random)
{
    const bool firstIsPlain = oneIn(4, random);
    const bool secondIsPlain = oneIn(4, random);
    const Draft draft = drawn(firstIsPlain, random);
    // A text cannot hold all that may stand in plain text.
    const Draft other = firstIsPlain == secondIsPlain && oneIn(2, random)
                            ? varied(draft, firstIsPlain, random)
                            : drawn(secondIsPlain, random);
    Specimen first = madeFrom(draft, firstIsPlain, random);
    Specimen second = madeFrom(other, secondIsPlain, random);
    return {std::move(first), std::move(second)};
}

} // namespace foundation::network::tests
