#include "build/BagGenerator.hpp"

#include <array>
#include <cstdlib>
#include <string_view>
#include <utility>

namespace foundation::network::tests {

std::size_t caseCount(std::size_t usual)
{
    const char* const factor =
        std::getenv("ZKFLNETWORK_TEST_FACTOR"); // NOLINT(concurrency-mt-unsafe)
    const double times = factor == nullptr ? 1.0 : std::strtod(factor, nullptr);
    return static_cast<std::size_t>(static_cast<double>(usual) * times);
}

Text BagGenerator::piece(bool charactersOnly)
{
    static constexpr std::u32string_view delimiters = U" \"#%&+/:;<=>?@[\\]^`{|}.!'";
    static constexpr std::u32string_view hexDigits = U"0123456789abcdefABCDEF";
    static constexpr char32_t others[] = {0x00,    0x09,    0x1F,    0x7F,    0x9F,    0xA0,
                                          0xE9,    0x7FF,   0x800,   0x200E,  0x202A,  0x4F8B,
                                          0xE000,  0xF8FF,  0xFDD0,  0xFFF0,  0xFFFF,  0x10000,
                                          0x1F600, 0x1FFFE, 0xE0001, 0xE0FFF, 0xF0000, 0x10FFFF};
    static constexpr char32_t noCharacters[] = {0xD800, 0xDFFF, 0x110000, 0x11FFFE, 0xFFFFFFFF};
    switch (below(10)) {
    case 0:
    case 1:
    case 2:
        return Text(1, oneOf(delimiters));
    case 3:
        return U"%";
    case 4:
        return {U'%', oneOf(hexDigits), oneOf(hexDigits)};
    case 5:
    case 6:
        return Text(1, oneOf(others));
    case 7:
        if (!charactersOnly && oneIn(12))
            return Text(1, oneOf(noCharacters));
        [[fallthrough]];
    default:
        return Text(1, U'a' + below(26));
    }
}

Text BagGenerator::repeated(std::size_t longest, bool charactersOnly)
{
    Text result;
    for (std::uint32_t count = below(longest + 1); count > 0; --count)
        result += piece(charactersOnly);
    return result;
}

Text BagGenerator::text()
{
    return repeated(6, false);
}

Text BagGenerator::characters()
{
    return repeated(6, true);
}

Text BagGenerator::scheme()
{
    static constexpr std::u32string_view good[] = {U"a",    U"http", U"X",  U"a1",
                                                   U"a+.-", U"é",    U"Я٣", U"例𐐀"};
    static constexpr std::u32string_view bad[] = {U"",   U"1a", U"٣",  U"a:", U"a_",
                                                  U"a ", U"+",  U"a%", U"€"};
    return Text(oneIn(6) ? oneOf(bad) : oneOf(good));
}

Text BagGenerator::textFor(Field field)
{
    if (field == SCHEME)
        return scheme();
    if (field == PATH && oneIn(20))
        return U"//h:8"; // which without an authority reads as one
    if (field == PATH && !oneIn(4))
        return U"/" + text();
    return text();
}

Text BagGenerator::charactersFor(Field field)
{
    if (field == SCHEME)
        return scheme();
    return field == PATH ? U"/" + characters() : characters();
}

Text BagGenerator::digits()
{
    static constexpr std::u32string_view odd[] = {
        U"",   U"0", U"00080", U"65535",       U"65536", U"80x", U"x",
        U" 8", U"٣", U"8٣",    U"99999999999", U"-1",    U"+1"};
    if (oneIn(2))
        return Text(oneOf(odd));
    const std::string number = std::to_string(below(70000));
    return Text(number.begin(), number.end());
}

std::string BagGenerator::utf8(Field field)
{
    static constexpr std::string_view broken[] = {"\x80",     "\xC3",         "a\xFF",
                                                  "\xC0\x80", "\xED\xA0\x80", "&=\xF4\x90\x80\x80"};
    if (oneIn(10))
        return std::string(oneOf(broken));
    return toUtf8(charactersFor(field));
}

std::u16string BagGenerator::utf16(Field field)
{
    static const std::u16string broken[] = {
        {0xDC00}, {0xD800}, {u'a', 0xD83D, u'='}, {u'&', 0xDFFF}, {0xD800, 0xD800}};
    return oneIn(10) ? oneOf(broken) : toUtf16(charactersFor(field));
}

std::string BagGenerator::iri()
{
    static constexpr const char* schemes[] = {"http:", "X:", "é:"};
    static constexpr const char* authorities[] = {
        "//",        "//h",       "//u@h",          "//@:80",  "//%41:00",
        "//%3a@%2F", "//[::1]:8", "//ü@例え:65535", "//%C0%80"};
    static constexpr const char* paths[] = {"",    "/",     "/a/../b", "/%2F%41%zz",
                                            "//x", "/a:b%", "/%E9é",   "/%C0%80"};
    static constexpr const char* firsts[] = {"a", "a%3Ab", "%2541", "..", "%20"};
    static constexpr const char* tails[] = {"",   "q",      "a=b&c=d", "%26+%2B",
                                            "%é", "%00%7F", "%C0%80"};
    std::string result;
    if (oneIn(2))
        result += oneOf(schemes);
    if (oneIn(2))
        result += oneOf(authorities);
    else if (oneIn(2))
        result += oneOf(firsts);
    const std::string path = oneOf(paths);
    // Without an authority or a segment before it, a path may not begin with two slashes.
    const bool wouldBeHost = path.starts_with("//") && (result.empty() || result.back() == ':');
    result += wouldBeHost ? "/" : path;
    if (oneIn(2))
        result += std::string("?") + oneOf(tails);
    if (oneIn(2))
        result += std::string("#") + oneOf(tails);
    return result;
}

} // namespace foundation::network::tests
