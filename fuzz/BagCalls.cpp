#include "BagCalls.hpp"

#include "build/BagTesting.hpp"
#include "build/NaiveText.hpp"
#include "text/CodePointIterator.hpp"

#include <numeric>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

namespace {

    using namespace tests;

    // The same in UTF-16, for about half of the texts. What cannot be read has no UTF-16.
    std::optional<std::u16string> asUtf16(const std::string& text)
    {
        const auto characters = readUtf8(text);
        const bool isOdd = std::accumulate(text.begin(), text.end(), 0U,
                                           [](unsigned sum, char c) {
                                               return sum + static_cast<unsigned char>(c);
                                           })
                               % 2
                           != 0;
        return characters && isOdd ? std::optional(toUtf16(*characters)) : std::nullopt;
    }

    testing::AssertionResult set(TwinBag& bag, Field field, const std::string& text)
    {
        Outcomes outcomes;
        // The naive bag knows the letters of ASCII only.
        if (field == SCHEME && !text::isAllAscii(text))
            return testing::AssertionSuccess();
        const TextComponent& component = textComponents[field];
        const auto utf16 = asUtf16(text);
        return failAlike(
            [&] {
                if (utf16)
                    (bag.library.*component.setUtf16)(*utf16);
                else
                    (bag.library.*component.setUtf8)(text);
            },
            [&] { bag.naive.set(field, text); }, outcomes);
    }

    testing::AssertionResult setPort(TwinBag& bag, const std::string& text)
    {
        Outcomes outcomes;
        const auto utf16 = asUtf16(text);
        return failAlike([&] { utf16 ? bag.library.setPort(*utf16) : bag.library.setPort(text); },
                         [&] { bag.naive.setPort(text); }, outcomes);
    }

    testing::AssertionResult append(TwinBag& bag, Input line, bool semicolonSeparator)
    {
        Outcomes outcomes;
        const bool formEncoded = line.byte() % 2 != 0;
        const std::string key = line.until('=');
        const std::string value = line.rest();
        const auto key16 = asUtf16(key + value) ? readUtf8(key) : std::nullopt;
        const auto value16 = key16 ? readUtf8(value) : std::nullopt;
        return failAlike(
            [&] {
                if (value16)
                    bag.library.appendQueryKeyValuePair(toUtf16(*key16), toUtf16(*value16),
                                                        formEncoded, semicolonSeparator);
                else
                    bag.library.appendQueryKeyValuePair(key, value, formEncoded,
                                                        semicolonSeparator);
            },
            [&] { bag.naive.append(key, value, formEncoded, semicolonSeparator); }, outcomes);
    }

} // namespace

testing::AssertionResult callAlike(TwinBag& bag, Input line)
{
    constexpr std::string_view setters = "suhpqf", clearers = "SUHPQF";
    const char call = static_cast<char>(line.byte());
    if (const std::size_t field = setters.find(call); field != setters.npos)
        return set(bag, static_cast<Field>(field), line.rest());
    if (const std::size_t field = clearers.find(call); field != clearers.npos) {
        (bag.library.*textComponents[field].clear)();
        bag.naive.clear(static_cast<Field>(field), Level::IRIArgs);
    } else if (call == '8') {
        return setPort(bag, line.rest());
    } else if (call == '@') {
        bag.library.clearPort();
        bag.naive.clearPort();
    } else if (call == '=' || call == '+') {
        return append(bag, line, call == '+');
    }
    return testing::AssertionSuccess();
}

} // namespace foundation::network::fuzz
