#include "iri/PercentCoding.hpp"

#include "iri/NaiveCoding.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace foundation::network::iri {
namespace {

    using namespace std::string_literals;

    struct Repair {
        std::string bytes;
        std::string result;
        bool repaired;
    };

    const Repair repairs[] = {
        // Whole sequences stay, whatever they denote.
        {"", "", false},
        {"a", "a", false},
        {"a\0b"s, "a\0b"s, false},
        {"\xC3\xA9", "\xC3\xA9", false},
        {"\xE2\x82\xAC", "\xE2\x82\xAC", false},
        {"\xF0\x9F\x98\x80", "\xF0\x9F\x98\x80", false},
        {"a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80z", false},
        {"\xC0\x80", "\xC0\x80", false},         // overlong
        {"\xED\xA0\x80", "\xED\xA0\x80", false}, // a surrogate
        {"\xF4\x90\x80\x80", "\xF4\x90\x80\x80", false},
        // The first test takes every lead from F0 up for one of four bytes.
        {"\xF8\x90\x80\x80", "\xF8\x90\x80\x80", false},
        {"\xFC\x80\x80\x80", "\xFC\x80\x80\x80", false},
        {"\xFE\x80\x80\x80", "\xFE\x80\x80\x80", false},
        {"\xFF\x80\x80\x80", "\xFF\x80\x80\x80", false},
        // A continuation byte without a lead.
        {"\x80", "%80", true},
        {"\xBF\xBF", "%BF%BF", true},
        {"\xA9z", "%A9z", true},
        {"z\xA9", "z%A9", true},
        {"\xC3\xA9\x80", "\xC3\xA9%80", true},
        {"\xE2\x82\xAC\x80", "\xE2\x82\xAC%80", true},
        // A lead without enough of them; the end of the text does not help.
        {"\xE9", "%E9", true},
        {"\xC3", "%C3", true},
        {"\xC3z", "%C3z", true},
        {"\xC3\0"s, "%C3\0"s, true},
        {"\xE2\x82", "%E2%82", true},
        {"\xE2\x82z", "%E2%82z", true},
        {"\xF0\x9F\x98", "%F0%9F%98", true},
        {"\xF0\x9F\x98z", "%F0%9F%98z", true},
        {"\xC3\xC3\xA9", "%C3\xC3\xA9", true},
        {"\xE2\x82\xC3\xA9", "%E2%82\xC3\xA9", true},
        {"\xC3\xA9\xE9\xC3\xA9", "\xC3\xA9%E9\xC3\xA9", true},
        {"abc\xFF", "abc%FF", true},
        {"\xFE", "%FE", true},
        // Sequences of five and six bytes fail the first test and are copied in the second pass.
        {"\xF8\x88\x80\x80\x80", "\xF8\x88\x80\x80\x80", true},
        {"\xFB\xBF\xBF\xBF\xBF", "\xFB\xBF\xBF\xBF\xBF", true},
        {"\xFC\x84\x80\x80\x80\x80", "\xFC\x84\x80\x80\x80\x80", true},
        {"\xFD\xBF\xBF\xBF\xBF\xBF", "\xFD\xBF\xBF\xBF\xBF\xBF", true},
        {"\xFC\x84\x80\x80\x80", "%FC%84%80%80%80", true},
        {"\xF8\x88\x80\x80\x80\x80", "\xF8\x88\x80\x80\x80%80", true},
        {"\xFE\x80\x80\x80\x80\x80\x80", "%FE%80%80%80%80%80%80", true},
        {"\xFF\x80\x80\x80\x80\x80\x80\x80", "%FF%80%80%80%80%80%80%80", true},
        // So a sequence of four with such a lead stays only while all else is whole.
        {"\xF8\x90\x80\x80\xE9", "%F8%90%80%80%E9", true},
        {"\xFF\x80\x80\x80\xE9", "%FF%80%80%80%E9", true},
        // A whole sequence stays beside a defect, and what looks like an escape does too.
        {"\xC0\x80\x80", "\xC0\x80%80", true},
        {"%41\xE9%E9", "%41%E9%E9", true},
        {"\x7F\x80", "\x7F%80", true},
    };

    TEST(RepairUtf8, escapesTheBytesOutsideWholeSequences)
    {
        for (const Repair& row : repairs) {
            SCOPED_TRACE(testing::PrintToString(row.bytes));
            const RepairedUtf8 result = repairUtf8(row.bytes);
            EXPECT_EQ(result.bytes, row.result);
            EXPECT_EQ(result.repaired, row.repaired);
        }
    }

    void expectRepairedAlike(const std::string& alphabet, std::size_t longest)
    {
        for (std::size_t length = 0; length <= longest; ++length) {
            std::string bytes(length, '\0');
            std::size_t count = 1;
            for (std::size_t i = 0; i < length; ++i)
                count *= alphabet.size();
            for (std::size_t number = 0; number < count; ++number) {
                std::size_t rest = number;
                for (char& byte : bytes) {
                    byte = alphabet[rest % alphabet.size()];
                    rest /= alphabet.size();
                }
                const RepairedUtf8 result = repairUtf8(bytes);
                const naive::Repaired expected = naive::repairUtf8(bytes);
                ASSERT_EQ(result.bytes, expected.bytes) << testing::PrintToString(bytes);
                ASSERT_EQ(result.repaired, expected.repaired) << testing::PrintToString(bytes);
            }
        }
    }

    TEST(RepairUtf8, isThatOfTheNaiveOneForAllShortTexts)
    {
        expectRepairedAlike("\x41\x80\xC3\xE2\xF0\xF8\xFC\xFE", 5);
        expectRepairedAlike("\x80\xBF\xFF\xE2\0"s, 6);
        expectRepairedAlike("\x80\xF8\xFC\x41", 8); // the longest sequences and what is left over
    }

    TEST(RepairUtf8, isThatOfTheNaiveOneForAllTextsOfTwoBytes)
    {
        for (unsigned first = 0; first <= 0xFF; ++first) {
            for (unsigned second = 0; second <= 0xFF; ++second) {
                const std::string bytes = {static_cast<char>(first), static_cast<char>(second)};
                const RepairedUtf8 result = repairUtf8(bytes);
                const naive::Repaired expected = naive::repairUtf8(bytes);
                ASSERT_EQ(result.bytes, expected.bytes) << first << ' ' << second;
                ASSERT_EQ(result.repaired, expected.repaired) << first << ' ' << second;
            }
        }
    }

} // namespace
} // namespace foundation::network::iri
