#include "iri/grammar/UnicodeClasses.hpp"

#include "iri/grammar/Characters.hpp"

#include <gtest/gtest.h>
#include <unicode/uset.h>

#include <stdexcept>
#include <string>

namespace foundation::network::iri::grammar {
namespace {

    /// The set of code points that a pattern of ICU describes.
    class UnicodeSet {
    public:
        explicit UnicodeSet(const std::u16string& pattern)
        {
            UErrorCode status = U_ZERO_ERROR;
            set_ = uset_openPattern(pattern.data(), static_cast<int32_t>(pattern.size()), &status);
            if (U_FAILURE(status))
                throw std::invalid_argument(u_errorName(status));
        }
        UnicodeSet(const UnicodeSet&) = delete;
        UnicodeSet& operator=(const UnicodeSet&) = delete;
        ~UnicodeSet() { uset_close(set_); }

        int size() const { return uset_size(set_); }
        bool contains(char32_t c) const
        {
            return c <= 0x10FFFF && uset_contains(set_, static_cast<UChar32>(c)) != 0;
        }

    private:
        USet* set_ = nullptr;
    };

    const char32_t beyondUnicode[] = {0x110000,   0x110041,   0x1FFFFF,
                                      0x7FFFFFFF, 0x80000041, 0xFFFFFFFF};

    // Holds a predicate against a set, over all code points; answers how many belong.
    template <class Predicate>
    int expectSame(Predicate predicate, const UnicodeSet& set)
    {
        int members = 0;
        for (char32_t c = 0; c <= 0x10FFFF; ++c) {
            const bool isMember = predicate(c);
            if (isMember != set.contains(c))
                ADD_FAILURE() << std::hex << static_cast<std::uint32_t>(c);
            members += isMember ? 1 : 0;
        }
        for (const char32_t c : beyondUnicode)
            EXPECT_FALSE(predicate(c)) << std::hex << static_cast<std::uint32_t>(c);
        return members;
    }

    TEST(UnicodeClasses, decimalDigitsAreThoseOfCategoryNd)
    {
        const UnicodeSet decimal(u"[:Nd:]");
        EXPECT_EQ(expectSame(isUnicodeDecimalDigit, decimal), 680);
        EXPECT_EQ(expectSame(digit, decimal), 680);
    }

    TEST(UnicodeClasses, hexadecimalDigitsAreAsciiAndFullWidth)
    {
        const UnicodeSet hexadecimal(u"[0-9A-Fa-f\\uFF10-\\uFF19\\uFF21-\\uFF26\\uFF41-\\uFF46]");
        EXPECT_EQ(expectSame(isUnicodeHexDigit, hexadecimal), 44);
        EXPECT_EQ(expectSame(xdigit, hexadecimal), 44);
    }

    TEST(UnicodeClasses, lettersHaveThePropertyAlphabetic)
    {
        const UnicodeSet alphabetic(u"[:Alphabetic:]");
        EXPECT_EQ(expectSame(isUnicodeAlphabetic, alphabetic), alphabetic.size());
        EXPECT_EQ(expectSame(alpha, alphabetic), alphabetic.size());
        EXPECT_GT(alphabetic.size(), 100000);
    }

    TEST(UnicodeClasses, alnumIsALetterOrADecimalDigit)
    {
        const UnicodeSet either(u"[[:Alphabetic:][:Nd:]]");
        EXPECT_EQ(expectSame(alnum, either), either.size());
    }

    struct Member {
        char32_t c;
        bool letter, decimal, hexadecimal;
    };
    constexpr Member members[] = {
        {U'a', true, false, true},           {U'g', true, false, false},
        {U'Z', true, false, false},          {U'0', false, true, true},
        {U'9', false, true, true},           {U'_', false, false, false},
        {U'\u00AA', true, false, false},     {U'\u00B2', false, false, false},
        {U'\u00E9', true, false, false},     {U'\u0660', false, true, false},
        {U'\u0669', false, true, false},     {U'\u0345', true, false, false},
        {U'\u0301', false, false, false},    {U'\u2160', true, false, false},
        {U'\u4E00', true, false, false},     {U'\uFF11', false, true, true},
        {U'\uFF26', true, false, true},      {U'\uFF27', true, false, false},
        {U'\U0001D7CE', false, true, false}, {U'\U0001F600', false, false, false},
        {U'\uE000', false, false, false},    {0xD800, false, false, false},
    };

    TEST(UnicodeClasses, knowSomeCharactersByName)
    {
        for (const Member& row : members) {
            SCOPED_TRACE(testing::PrintToString(row.c));
            EXPECT_EQ(alpha(row.c), row.letter);
            EXPECT_EQ(digit(row.c), row.decimal);
            EXPECT_EQ(xdigit(row.c), row.hexadecimal);
            EXPECT_EQ(alnum(row.c), row.letter || row.decimal);
        }
    }

    // So that iunreserved may ask for the letters and digits of ASCII alone.
    TEST(UnicodeClasses, lettersAndDigitsOutsideAsciiLieInUcschar)
    {
        for (char32_t c = 0x80; c <= 0x10FFFF; ++c)
            ASSERT_TRUE(ucschar(c) || !(isUnicodeAlphabetic(c) || isUnicodeDecimalDigit(c)))
                << std::hex << static_cast<std::uint32_t>(c);
    }

} // namespace
} // namespace foundation::network::iri::grammar
