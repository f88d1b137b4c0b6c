#include "BagCalls.hpp"

#include "build/BagTesting.hpp"

#include <algorithm>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

namespace {

    using namespace tests;

    // The naive bag knows the letters of ASCII only.
    bool isAscii(const std::string& text)
    {
        return std::ranges::all_of(text,
                                   [](char c) { return static_cast<unsigned char>(c) < 0x80; });
    }

    testing::AssertionResult set(TwinBag& bag, Field field, const std::string& text)
    {
        Outcomes outcomes;
        if (field == SCHEME && !isAscii(text))
            return testing::AssertionSuccess();
        return failAlike([&] { (bag.library.*textComponents[field].setUtf8)(text); },
                         [&] { bag.naive.set(field, text); }, outcomes);
    }

    testing::AssertionResult append(TwinBag& bag, Input line, bool semicolonSeparator)
    {
        Outcomes outcomes;
        const bool formEncoded = line.byte() % 2 != 0;
        const std::string key = line.until('=');
        const std::string value = line.rest();
        return failAlike(
            [&] {
                bag.library.appendQueryKeyValuePair(key, value, formEncoded, semicolonSeparator);
            },
            [&] { bag.naive.append(key, value, formEncoded, semicolonSeparator); }, outcomes);
    }

} // namespace

testing::AssertionResult callAlike(TwinBag& bag, Input line)
{
    constexpr std::string_view setters = "suhpqf", clearers = "SUHPQF";
    Outcomes outcomes;
    const char call = static_cast<char>(line.byte());
    if (const std::size_t field = setters.find(call); field != setters.npos)
        return set(bag, static_cast<Field>(field), line.rest());
    if (const std::size_t field = clearers.find(call); field != clearers.npos) {
        (bag.library.*textComponents[field].clear)();
        bag.naive.clear(static_cast<Field>(field), Level::IRIArgs);
    } else if (call == '8') {
        const std::string text = line.rest();
        return failAlike([&] { bag.library.setPort(text); }, [&] { bag.naive.setPort(text); },
                         outcomes);
    } else if (call == '@') {
        bag.library.clearPort();
        bag.naive.clearPort();
    } else if (call == '=' || call == '+') {
        return append(bag, line, call == '+');
    }
    return testing::AssertionSuccess();
}

} // namespace foundation::network::fuzz
