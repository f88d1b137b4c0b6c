#include "text/Utf.hpp"

#include "text/NaiveUtf8.hpp"

#include <gtest/gtest.h>

#include <string>
#include <vector>

// Byte sequences in great numbers, each read by the library and by a naive second reader.
namespace foundation::network::text {
namespace {

    using Bytes = std::vector<unsigned char>;

    // Both readers agree on a text: on its value, or that it has a defect.
    bool isReadAlike(const std::string& text)
    {
        static std::u32string read;
        const auto expected = tests::readUtf8(text);
        if (decodeUtf8(text, read) != expected.has_value())
            return false;
        return !expected || read == *expected;
    }

    Bytes range(unsigned first, unsigned last)
    {
        Bytes bytes;
        for (unsigned byte = first; byte <= last; ++byte)
            bytes.push_back(static_cast<unsigned char>(byte));
        return bytes;
    }

    // All texts with one byte of each set at its position.
    void expectReadAlike(const std::vector<Bytes>& sets)
    {
        std::vector<std::size_t> index(sets.size(), 0);
        std::string text(sets.size(), '\0');
        for (;;) {
            for (std::size_t i = 0; i < sets.size(); ++i)
                text[i] = static_cast<char>(sets[i][index[i]]);
            ASSERT_TRUE(isReadAlike(text)) << testing::PrintToString(text);
            std::size_t position = sets.size();
            while (position > 0 && ++index[position - 1] == sets[position - 1].size())
                index[--position] = 0;
            if (position == 0)
                return;
        }
    }

    const Bytes all = range(0x00, 0xFF);
    // Where something changes: the limits of the values, of the kinds of byte, and their
    // neighbours.
    const Bytes edges = {0x00, 0x41, 0x7F, 0x80, 0x81, 0x8F, 0x90, 0x9F,
                         0xA0, 0xBF, 0xC0, 0xC2, 0xE0, 0xF0, 0xF8, 0xFF};

    TEST(Utf8Sweep, oneByte)
    {
        expectReadAlike({all});
    }

    TEST(Utf8Sweep, allTextsOfTwoBytes)
    {
        expectReadAlike({all, all});
    }

    TEST(Utf8Sweep, allTextsOfThreeBytes)
    {
        expectReadAlike({all, all, all});
    }

    TEST(Utf8Sweep, fourBytesWithEveryLeadAndEverySecondByte)
    {
        expectReadAlike({all, all, edges, edges});
    }

    TEST(Utf8Sweep, fourBytesWithALeadOfFour)
    {
        expectReadAlike({range(0xF0, 0xFF), range(0x80, 0xBF), range(0x80, 0xBF), edges});
    }

    TEST(Utf8Sweep, fiveAndSixBytesWithALeadOfFour)
    {
        const Bytes leads = range(0xEF, 0xFF);
        const Bytes few = {0x41, 0x80, 0x88, 0x90, 0xBF, 0xC3};
        expectReadAlike({leads, few, few, few, few});
        expectReadAlike({leads, few, few, few, few, few});
    }

    TEST(Utf8Sweep, sequencesBehindARunOfAscii)
    {
        const Bytes letter = {'a'};
        const std::vector<Bytes> run(7, letter);
        std::vector<Bytes> sets = run;
        sets.push_back(range(0x60, 0xFF));
        sets.push_back(edges);
        sets.push_back(edges);
        sets.insert(sets.end(), run.begin(), run.end());
        expectReadAlike(sets);
    }

} // namespace
} // namespace foundation::network::text
