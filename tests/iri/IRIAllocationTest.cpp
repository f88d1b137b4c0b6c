#include <foundation/network/IRI.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>

#include "iri/AllocationCounter.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <new>
#include <string>
#include <utility>

namespace foundation::network {

namespace {

    using tests::allocationCount;

    // A URL of 70 characters.
    const std::string url =
        "https://www.example.org/articles/2024/05/a-title?page=2&sort=asc#notes";

    // How many allocations an operation makes.
    template <class Operation>
    std::size_t allocationsOf(Operation operation)
    {
        const std::size_t before = allocationCount();
        operation();
        return allocationCount() - before;
    }

} // namespace

TEST(IRIAllocation, valueIsSmall)
{
    static_assert(sizeof(IRI) <= 256);
    EXPECT_EQ(url.size(), 70U);
}

// What the other tests rely on. The operators are called by name: a compiler may leave out a new
// expression.
TEST(IRIAllocation, isCounted)
{
    const std::size_t before = tests::bytesInUse();
    tests::forgetPeak();
    EXPECT_EQ(allocationsOf([] { ::operator delete(::operator new(1000)); }), 1U);
    EXPECT_EQ(tests::bytesInUse(), before);
    EXPECT_EQ(tests::peakBytes(), before + 1000);
}

TEST(IRIAllocation, parsingTakesOne)
{
    const std::u16string utf16(url.begin(), url.end());
    EXPECT_EQ(allocationsOf([] { const IRI iri(url); }), 1U);
    EXPECT_EQ(allocationsOf([&] { const IRI iri(utf16); }), 1U);
}

TEST(IRIAllocation, resolvingTakesOne)
{
    const IRI base(url);
    for (const std::string text :
         {"another-title?page=3#top", "/a/long/path/from/the/root", "#top", "?page=3",
          "//example.com/and/a/path/of/several/segments", "ftp://example.com/a"}) {
        const IRI reference(text);
        EXPECT_EQ(allocationsOf([&] { reference.resolveAgainst(base); }), 1U) << text;
    }
}

TEST(IRIAllocation, printingWhatWasResolvedTakesOne)
{
    const IRI built = IRI("another-title?page=3#top").resolveAgainst(IRI(url));
    const std::size_t count = allocationsOf([&] {
        EXPECT_EQ(built.toStringUtf8(),
                  "https://www.example.org/articles/2024/05/another-title?page=3#top");
    });
    EXPECT_LE(count, 2U); // the result, and the text to compare with
}

TEST(IRIAllocation, tryingTakesOneForWhatIsTaken)
{
    const std::string bad = url + "\\";
    const std::string broken = url + "\xFF";
    const std::u16string utf16(url.begin(), url.end());
    const std::u16string half = utf16 + char16_t(0xD800);
    const std::size_t inUse = tests::bytesInUse();
    EXPECT_EQ(allocationsOf([] { EXPECT_TRUE(IRI::tryParse(url)); }), 1U);
    EXPECT_EQ(allocationsOf([&] { EXPECT_FALSE(IRI::tryParse(bad)); }),
              0U); // refused where it lies
    EXPECT_EQ(allocationsOf([&] { EXPECT_FALSE(IRI::tryParse(broken)); }), 0U);
    EXPECT_EQ(allocationsOf([&] { EXPECT_TRUE(IRI::tryParse(utf16)); }), 1U);
    EXPECT_EQ(allocationsOf([&] { EXPECT_FALSE(IRI::tryParse(half)); }), 0U);
    EXPECT_EQ(tests::bytesInUse(), inUse);
}

TEST(IRIAllocation, lookingTakesNone)
{
    for (const std::string& text : {url, url + "é", url + "\\", url + "\xC3"})
        EXPECT_EQ(allocationsOf([&] { iri::IRIView::parse(text); }), 0U);
    const std::string long_ = url + std::string(1 << 20, 'a');
    EXPECT_EQ(allocationsOf([&] { EXPECT_TRUE(iri::IRIView::parse(long_)); }), 0U);
}

TEST(IRIAllocation, aDiagnosisTakesNone)
{
    const std::u16string utf16(url.begin(), url.end());
    for (const std::string& text : {url, url + "é", url + "\\", "//[:" + url, url + "\xC3"})
        EXPECT_EQ(allocationsOf([&] { iri::diagnose(text); }), 0U);
    for (const std::u16string& text : {utf16, utf16 + u"\\", utf16 + char16_t(0xD800)})
        EXPECT_EQ(allocationsOf([&] { iri::diagnose(text); }), 0U);
}

TEST(IRIAllocation, emptyValuesMovesAndSwapsTakeNone)
{
    EXPECT_EQ(allocationsOf([] { const IRI iri; }), 0U);
    IRI source(url);
    IRI other(url + "?");
    source.toAsciiString(true);
    EXPECT_EQ(allocationsOf([&] {
                  IRI target(std::move(source));
                  target.swap(other);
                  other = std::move(target);
              }),
              0U);
}

TEST(IRIAllocation, copyOfAnUnreadValueTakesOne)
{
    const IRI source(url);
    EXPECT_EQ(allocationsOf([&] { const IRI copy(source); }), 1U);
}

TEST(IRIAllocation, predicatesHashAndComparisonTakeNone)
{
    const IRI left(url);
    const IRI right(url);
    EXPECT_EQ(allocationsOf([&] {
                  EXPECT_TRUE(left == right);
                  EXPECT_FALSE(left < right);
                  EXPECT_TRUE(left.hasQuery());
                  EXPECT_NE(left.hashValue(), 0U);
              }),
              0U);
}

TEST(IRIAllocation, readingInTheFormOfTheTextTakesOneForTheResult)
{
    const IRI iri(url);
    EXPECT_EQ(allocationsOf([&] { iri.toStringUtf8(); }), 1U);
    EXPECT_EQ(allocationsOf([&] { iri.getHostUtf8(); }), 0U); // 15 bytes fit in a std::string
    EXPECT_EQ(allocationsOf([&] { iri.getPath(); }), 1U);
}

// A form is made once: whoever reads it again pays for the result only.
TEST(IRIAllocation, readingAgainTakesOneForTheResult)
{
    const IRI iri(std::string("https://www.example.org/caf\u00E9s/a%20title-of-an-article"));
    for (const IRI::Encoding form : {IRI::Encoding::Decoded, IRI::Encoding::Ascii}) {
        EXPECT_GT(allocationsOf([&] { iri.getPath(form); }), 1U);
        EXPECT_EQ(allocationsOf([&] { iri.getPath(form); }), 1U);
    }
    EXPECT_GT(allocationsOf([&] { iri.toAsciiStringUtf8(); }), 1U);
    EXPECT_EQ(allocationsOf([&] { iri.toAsciiStringUtf8(); }), 1U);
    const IRI copy(iri);
    EXPECT_EQ(allocationsOf([&] { copy.toAsciiStringUtf8(); }), 1U);
}

// Nothing is kept of what can be had as fast as a copy.
TEST(IRIAllocation, readingAComponentAsUtf8TakesOneForTheResult)
{
    const IRI iri(std::string("https://www.example.org/caf\u00E9s/a%20title-of-an-article"));
    for (const IRI::Encoding form : {IRI::Encoding::Decoded, IRI::Encoding::Ascii})
        EXPECT_EQ(allocationsOf([&] { iri.getPathUtf8(form); }), 1U);
}

// A form that is the text itself is not made at all.
TEST(IRIAllocation, readingAFormThatIsTheTextTakesOneForTheResult)
{
    const IRI iri(url);
    for (const IRI::Encoding form : {IRI::Encoding::Decoded, IRI::Encoding::Ascii})
        EXPECT_EQ(allocationsOf([&] { iri.getPathUtf8(form); }), 1U);
    EXPECT_EQ(allocationsOf([&] { iri.toAsciiStringUtf8(); }), 1U);
}

} // namespace foundation::network
