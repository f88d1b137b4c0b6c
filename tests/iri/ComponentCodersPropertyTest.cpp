#include "iri/ComponentCoders.hpp"

#include "iri/CoderPairs.hpp"
#include "text/Failure.hpp"
#include "text/LaxUtf8.hpp"
#include "text/NaiveUtf8.hpp"
#include "text/WellFormed.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <iterator>
#include <map>
#include <random>
#include <string>
#include <string_view>

// The conversions against a second, naive implementation, on generated texts.
namespace foundation::network::iri {
namespace {

    using naive::CoderPair;
    using naive::coderPairs;
    using naive::Component;
    using naive::contextFor;
    using naive::Text;

    // Texts of what the conversions look at: escapes whole and broken, the bytes of characters,
    // delimiters, the limits of all ranges.
    class Generator {
    public:
        explicit Generator(std::uint32_t seed)
            : random_(seed)
        {
        }

        std::uint32_t below(std::size_t limit)
        {
            return static_cast<std::uint32_t>(random_() % limit);
        }

        Text text()
        {
            // Texts with a value above the last code point mostly fail, so they are few.
            mayExceed_ = below(16) == 0;
            Text result;
            for (std::uint32_t length = below(12); length > 0; --length)
                result += piece();
            return result;
        }

        naive::Context context()
        {
            const std::uint32_t bits = below(2) == 0 ? 0 : below(16);
            return {(bits & 1) != 0, (bits & 2) != 0, (bits & 4) != 0, (bits & 8) != 0};
        }

    private:
        template <class Choices>
        char32_t oneOf(const Choices& choices)
        {
            return choices[below(std::size(choices))];
        }

        Text piece()
        {
            static constexpr std::u32string_view delimiters = U" \"#%/:;<=>?@[\\]^`{|}&+!.";
            static constexpr std::u32string_view digits = U"0123456789abcdefABCDEF";
            switch (below(16)) {
            case 0:
                return Text(1, U'%');
            case 1:
                return {U'%', oneOf(digits)};
            case 2:
                return {U'%', oneOf(digits), oneOf(digits)};
            case 3:
                return U"%25";
            case 4:
                return Text(1, oneOf(digits));
            case 5:
                return escape(static_cast<unsigned char>(below(0x80)));
            case 6:
                return escape(static_cast<unsigned char>(oneOf(delimiters)));
            case 7:
                return escapes(tests::writeUtf8(codePoint()));
            case 8:
                return brokenEscapes();
            case 9:
                return escape(static_cast<unsigned char>(0x80 + below(0x80)));
            case 10:
                return Text(1, oneOf(delimiters));
            case 11:
                return Text(1, below(0x100));
            case 12:
                return Text(1, U'\uFF10' + below(10)); // a full-width digit
            case 13:
                return mayExceed_ ? Text(1, excess()) : Text(1, U'/');
            default:
                return Text(1, codePoint());
            }
        }

        // The limits of the ranges with their neighbours, or any other code point.
        char32_t codePoint()
        {
            static constexpr char32_t limits[] = {
                0x20,    0x7F,    0x80,    0xA0,    0x100,   0x7FF,    0x200E,   0x200F,
                0x202A,  0x202E,  0xD800,  0xDBFF,  0xDC00,  0xDFFF,   0xE000,   0xF8FF,
                0xFDD0,  0xFDEF,  0xFFF0,  0xFFFE,  0xFFFF,  0x10000,  0x1FFFE,  0xE0000,
                0xE0FFF, 0xF0000, 0xFFFFD, 0xFFFFF, 0x10000, 0x100000, 0x10FFFD, 0x10FFFE,
            };
            if (below(2) == 0)
                return oneOf(limits) - 1 + below(3);
            return below(4) == 0 ? below(0x110000) : below(0x800);
        }

        char32_t excess()
        {
            static constexpr char32_t values[] = {0x110000, 0x11FFFD, 0x11FFFE, 0x7FFFFFFF,
                                                  0xFFFFFFFF};
            return oneOf(values);
        }

        static Text escape(unsigned char byte)
        {
            static constexpr std::u32string_view digits = U"0123456789abcdef";
            return {U'%', digits[byte / 16], digits[byte % 16]};
        }

        static Text escapes(std::string_view bytes)
        {
            Text result;
            for (const char byte : bytes)
                result += escape(static_cast<unsigned char>(byte));
            return result;
        }

        // A lead byte with too few, enough or too many continuations.
        Text brokenEscapes()
        {
            Text result = escape(static_cast<unsigned char>(0xC0 + below(0x40)));
            for (std::uint32_t count = below(7); count > 0; --count)
                result += escape(static_cast<unsigned char>(0x80 + below(0x40)));
            return result;
        }

        std::mt19937 random_;
        bool mayExceed_ = false;
    };

    // What a conversion comes to: a text, nothing, or a failure.
    struct Outcome {
        naive::MaybeText text;
        std::optional<tests::Failure> failure;

        bool operator==(const Outcome&) const = default;

        std::string kind() const
        {
            if (!failure)
                return text ? "a text" : "nothing";
            return failure->type == tests::invalidUtf8().type ? "invalid UTF-8"
                                                              : "invalid code point";
        }
    };

    std::ostream& operator<<(std::ostream& stream, const Outcome& outcome)
    {
        if (outcome.failure)
            return stream << *outcome.failure;
        return stream << testing::PrintToString(outcome.text);
    }

    template <class Operation>
    Outcome outcomeOf(Operation operation)
    {
        Outcome outcome;
        outcome.failure = tests::failureOf([&] { outcome.text = operation(); });
        return outcome;
    }

    // Where a coder tells beforehand that a conversion gives the text itself, it does. Text that
    // cannot be converted counts as empty.
    template <class Coder>
    int expectSameWhereTold(const Text& text, const typename Coder::Context& context)
    {
        int told = 0;
        const auto expect = [&](bool isSame, auto convert) {
            if (isSame) {
                EXPECT_EQ(convert(text, context).value_or(Text()), text);
                ++told;
            }
        };
        expect(Coder::isSameInIri(text, context), Coder::decodedToIri);
        expect(Coder::isSameInAscii(text, context), Coder::iriToAscii);
        expect(Coder::isSameDecoded(text, context), Coder::iriToDecoded);

        // It tells the same of the text as values hold it, which in an IRI is UTF-8.
        const std::string lax = text::toLaxUtf8(text);
        const std::string_view held = lax;
        EXPECT_EQ(Coder::isSameInIri(held, context), Coder::isSameInIri(text, context));
        EXPECT_EQ(Coder::isSameInAscii(held, context), Coder::isSameInAscii(text, context));
        if (text::wellFormedLength(held) == held.size()) {
            EXPECT_EQ(Coder::isSameDecoded(held, context), Coder::isSameDecoded(text, context));
        }
        return told;
    }

    template <class Coder>
    void expectSameOutcomes(Component component)
    {
        constexpr int CASES = 40000;
        const std::uint32_t seed = 3987 + static_cast<std::uint32_t>(component);
        Generator generator(seed);
        std::map<std::string, std::map<std::string, int>> kinds;
        int told = 0;
        for (int i = 0; i < CASES; ++i) {
            const Text text = generator.text();
            const naive::Context context = generator.context();
            const auto ourContext = contextFor(typename Coder::Context{}, context);
            told += expectSameWhereTold<Coder>(text, ourContext);
            for (const CoderPair<Coder>& pair : coderPairs<Coder>) {
                const Outcome ours = outcomeOf([&] { return pair.ours(text, ourContext); });
                const Outcome theirs =
                    outcomeOf([&] { return pair.theirs(component, text, context); });
                ASSERT_EQ(ours, theirs)
                    << pair.name << ", seed " << seed << ", case " << i << ": "
                    << testing::PrintToString(text) << ", scheme " << context.schemePresent
                    << ", user information " << context.userInfoPresent << ", host "
                    << context.hostPresent << ", form-encoded " << context.formEncoded;
                ++kinds[pair.name][ours.kind()];
            }
        }
        EXPECT_GT(told, CASES / 100);
        // The generated texts reach all that can happen, often, and nothing else happens.
        const auto expectKind = [](int count, bool canHappen) {
            if (canHappen) {
                EXPECT_GT(count, 100);
            } else {
                EXPECT_EQ(count, 0);
            }
        };
        for (const auto& [name, counts] : kinds) {
            SCOPED_TRACE(name);
            const auto countOf = [&counts = counts](const char* kind) {
                const auto found = counts.find(kind);
                return found == counts.end() ? 0 : found->second;
            };
            const bool decodes =
                name != "decodedToIri" && name != "iriToAscii" && name != "decodedToAscii";
            EXPECT_GT(countOf("a text"), CASES / 2);
            expectKind(countOf("nothing"), decodes);
            expectKind(countOf("invalid UTF-8"), decodes);
            const bool writes = name != "asciiToIri" && name != "asciiToDecoded";
            expectKind(countOf("invalid code point"), writes);
        }
    }

    TEST(ComponentCodersProperty, userInfoIsConvertedAsTheNaiveCoderDoes)
    {
        expectSameOutcomes<UserInfoCoder>(Component::UserInfo);
    }

    TEST(ComponentCodersProperty, hostIsConvertedAsTheNaiveCoderDoes)
    {
        expectSameOutcomes<HostCoder>(Component::Host);
    }

    TEST(ComponentCodersProperty, pathIsConvertedAsTheNaiveCoderDoes)
    {
        expectSameOutcomes<PathCoder>(Component::Path);
    }

    TEST(ComponentCodersProperty, queryIsConvertedAsTheNaiveCoderDoes)
    {
        expectSameOutcomes<QueryCoder>(Component::Query);
    }

    TEST(ComponentCodersProperty, fragmentIsConvertedAsTheNaiveCoderDoes)
    {
        expectSameOutcomes<FragmentCoder>(Component::Fragment);
    }

    // Closer where characters are treated differently, so that each range is met.
    char32_t nextCodePoint(char32_t c)
    {
        const bool isDense = c < 0x2100 || (c >= 0xF8F0 && c < 0x10010);
        return c + (isDense ? 1 : c < 0x10000 ? 0x3F : 0x1FF);
    }

    template <class Coder>
    void expectSameForCodePoints(Component component)
    {
        for (char32_t c = 0; c <= 0x11FFFF; c = nextCodePoint(c)) {
            const Text text(1, c);
            for (const bool bit : {false, true}) {
                const naive::Context context{bit, false, false, bit};
                const auto ourContext = contextFor(typename Coder::Context{}, context);
                expectSameWhereTold<Coder>(text, ourContext);
                for (const CoderPair<Coder>& pair : coderPairs<Coder>) {
                    const Outcome ours = outcomeOf([&] { return pair.ours(text, ourContext); });
                    const Outcome theirs =
                        outcomeOf([&] { return pair.theirs(component, text, context); });
                    ASSERT_EQ(ours, theirs) << pair.name << ' ' << static_cast<std::uint32_t>(c);
                }
            }
        }
    }

    TEST(ComponentCodersProperty, singleCodePointsAreConvertedAsTheNaiveCodersDo)
    {
        expectSameForCodePoints<UserInfoCoder>(Component::UserInfo);
        expectSameForCodePoints<HostCoder>(Component::Host);
        expectSameForCodePoints<PathCoder>(Component::Path);
        expectSameForCodePoints<QueryCoder>(Component::Query);
        expectSameForCodePoints<FragmentCoder>(Component::Fragment);
    }

} // namespace
} // namespace foundation::network::iri
