// A letter that says how the name is encoded, and a domain name: a name that converts cleanly comes
// back, and all ways to ask agree.

#include "Target.hpp"

#include "build/NaiveText.hpp"
#include "text/WellFormed.hpp"

#include <foundation/network/IdnConverter.hpp>

#include <algorithm>
#include <optional>
#include <string>
#include <string_view>

namespace foundation::network::fuzz {

namespace {

    // Made once, and asked by every run.
    const IdnConverter& converter()
    {
        static const IdnConverter kept;
        return kept;
    }

    // What comes of a conversion; nothing if ICU does not take the name.
    template <class Convert>
    auto resultOf(Convert convert) -> std::optional<decltype(convert())>
    {
        try {
            return convert();
        } catch (const IdnConverterException& failure) {
            require(std::string(failure.what()) == "U_INPUT_TOO_LONG_ERROR", failure.what());
            return std::nullopt;
        }
    }

    void requireRoundTrip(const std::u16string& name)
    {
        const auto ascii = resultOf([&] { return converter().toAscii(name); });
        require(resultOf([&] { return idn_to_ascii(name); }) == ascii
                    && resultOf([&] { return converter().convert(name); }) == ascii,
                "all ways to ask agree");
        if (!ascii)
            return;
        require(std::ranges::all_of(*ascii,
                                    [](char c) { return static_cast<unsigned char>(c) < 0x80; }),
                "the ASCII form is ASCII");
        if (ascii->find('?') != std::string::npos)
            return;
        // Of a lone surrogate ICU may make half of another character, once it has dropped what stood
        // between the two.
        if (text::wellFormedLength(std::u16string_view(name)) < name.size())
            return;
        const std::u16string unicode = converter().toUnicode(*ascii);
        require(unicode.find(u'\uFFFD') == std::u16string::npos, "a clean name stays clean");
        require(converter().toAscii(unicode) == *ascii, "a clean name comes back");
    }

    // A name of letters, digits and dots has nothing to convert but its capitals.
    void requirePlain(const std::string& name)
    {
        if (!std::ranges::all_of(name, [](char c) {
                return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || (c >= '0' && c <= '9')
                       || c == '.';
            }))
            return;
        std::string lower = name;
        for (char& c : lower)
            if (c >= 'A' && c <= 'Z')
                c = static_cast<char>(c - 'A' + 'a');
        require(converter().toAscii(std::u16string(name.begin(), name.end())) == lower,
                "of a plain name the ASCII form is that in small letters");
        require(converter().toUnicode(name) == std::u16string(lower.begin(), lower.end()),
                "and so is the Unicode form");
    }

    void requireReading(const std::string& name)
    {
        const auto unicode = resultOf([&] { return converter().toUnicode(name); });
        require(resultOf([&] { return ascii_to_idn(name); }) == unicode
                    && resultOf([&] { return converter().convert(name); }) == unicode,
                "all ways to ask agree");
        if (unicode)
            requireRoundTrip(*unicode);
    }

} // namespace

void run(Input input)
{
    switch (input.byte() % 3) {
    case 0:
        if (const auto name = tests::readUtf8(input.rest()))
            requireRoundTrip(tests::toUtf16(*name));
        break;
    case 1:
        requireRoundTrip(input.units());
        break;
    default:
        const std::string name = input.rest();
        requirePlain(name);
        requireReading(name);
    }
}

} // namespace foundation::network::fuzz
