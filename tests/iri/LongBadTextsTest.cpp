// Bad texts of a mebibyte, of the sorts that a parser with a second thought looks at twice. One that
// takes time by the square of the length would not come to an end here, and one that recurses would
// not fit on the stack.

#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include "iri/AllocationCounter.hpp"

#include <gtest/gtest.h>
#include <pthread.h>

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

namespace foundation::network {

namespace {

    using namespace tests;

    constexpr std::size_t LENGTH = 1 << 20;

    struct LongText {
        const char* before;
        std::string piece;
        const char* after;
        const char* code;
        bool isRepaired;

        std::string text() const
        {
            std::string result = before;
            while (result.size() < LENGTH)
                result += piece;
            return result + after;
        }
    };

    const LongText longTexts[] = {
        {"", " ", "", "surrounding-space", true},
        {"", " ", "x", "surrounding-space", true},
        {"x", " ", "", "surrounding-space", true},
        {"x", " ", "x", "bad-character", true},
        {"", " x", " ", "surrounding-space", true},
        {"", "a", ":_:\"", "bad-character", true},
        {"1", "a", ":", "bad-scheme", true},
        {"", ":", "", "missing-scheme", true},
        {"1", ":", "", "bad-scheme", true},
        {"//", ":", "", "bad-port", false},
        {"//", "@", "", "extra-at-sign", true},
        {"//", "a@", ":", "extra-at-sign", true},
        {"//", "%", "", "bad-escape", true},
        {"//", "%41", "%4", "bad-escape", true},
        {"//u:", "%41", "%4@h", "bad-escape", true},
        {"//", "1.", "[", "bad-character", true},
        {"//", "[", "", "bad-ip-literal", false},
        {"//[", "::", "", "bad-ip-literal", false},
        {"//[", "1:", "", "bad-ip-literal", false},
        {"//[", "1", "]", "bad-ip-literal", false},
        {"//[v1.", "a", "", "unclosed-ip-literal", true},
        {"//[v", "1", "", "unclosed-ip-literal", false},
        {"//[v1.", "a", "/]", "unclosed-ip-literal", true},
        {"//", "[::1]", "", "text-after-ip-literal", false},
        {"//h:", "0", "x", "bad-port", false},
        {"//h:", "9", "", "port-too-large", false},
        {"//h:", "٣", "", "bad-port", false},
        {"/", "[]", "", "bad-character", true},
        {"", "/", "//:\\", "bad-character", true},
        {"", "é", "\"", "bad-character", true},
        {"?", "\uFDD0", "", "bad-character", true},
        {"#", "#", "", "bad-character", true},
        {"", "é", "\xC3", "bad-utf8", true},
        {"", "\xC3", "", "bad-utf8", true},
        {"", "\xF0\x9F\x98", "", "bad-utf8", true},
        {"//", "\x80", "@h:x", "bad-utf8", false},
    };

    // Runs on a stack that holds no frame for each of a million characters.
    void runOnASmallStack(std::function<void()> operation)
    {
        pthread_attr_t attributes;
        ASSERT_EQ(pthread_attr_init(&attributes), 0);
        ASSERT_EQ(pthread_attr_setstacksize(&attributes, std::size_t{256} * 1024), 0);
        pthread_t thread = 0;
        const auto run = [](void* task) -> void* {
            (*static_cast<std::function<void()>*>(task))();
            return nullptr;
        };
        ASSERT_EQ(pthread_create(&thread, &attributes, run, &operation), 0);
        ASSERT_EQ(pthread_join(thread, nullptr), 0);
        ASSERT_EQ(pthread_attr_destroy(&attributes), 0);
    }

} // namespace

TEST(LongBadTexts, areRefusedAndRepairedInLinearTimeAndMemory)
{
    for (const LongText& row : longTexts) {
        SCOPED_TRACE(std::string(row.before) + testing::PrintToString(row.piece) + row.after);
        const std::string text = row.text();
        runOnASmallStack([&] {
            const std::size_t before = allocationCount();
            const std::optional<iri::Diagnosis> diagnosis = iri::diagnose(text);
            const bool isSeen = iri::IRIView::parse(text).has_value();
            EXPECT_EQ(allocationCount(), before);
            ASSERT_TRUE(diagnosis);
            EXPECT_EQ(name(diagnosis->code), row.code);
            EXPECT_FALSE(isSeen);
            EXPECT_FALSE(IRI::tryParse(text));

            // A byte becomes three at most; a text that grows doubles its memory.
            const std::size_t inUse = bytesInUse();
            forgetPeak();
            EXPECT_EQ(iri::repair(text).has_value(), row.isRepaired);
            EXPECT_LE(peakBytes() - inUse, 16 * text.size());
            EXPECT_LE(allocationCount() - before, 100U);
            EXPECT_EQ(bytesInUse(), inUse);
        });
    }
}

} // namespace foundation::network
