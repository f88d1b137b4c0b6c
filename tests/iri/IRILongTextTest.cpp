// Texts whose lengths and offsets need more than 32 bits. They take hardly any memory, because one
// piece of it is seen at many addresses; what is made of them takes up to ten GiB.

#include <foundation/network/IRI.hpp>
#include <foundation/network/IdnConverter.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include "iri/PercentCoding.hpp"

#include <gtest/gtest.h>
#include <sys/mman.h>
#include <unistd.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>

namespace foundation::network {

namespace {

    constexpr std::size_t OVER_32_BITS = std::size_t{std::numeric_limits<std::uint32_t>::max()} + 1;
    constexpr std::size_t OVER_31_BITS = std::size_t{std::numeric_limits<std::int32_t>::max()} + 1;

    // A character over and over between two ends.
    template <class Char>
    class LongText {
    public:
        using View = std::basic_string_view<Char>;

        LongText(View before, Char repeated, std::size_t times, View after)
            : size_(before.size() + times + after.size())
            , mapped_((size_ * sizeof(Char) + PIECE - 1) / PIECE * PIECE)
        {
            const int file = memfd_create("text", 0);
            if (file < 0 || ftruncate(file, PIECE) != 0)
                throw std::runtime_error("memfd_create");
            begin_ =
                map(nullptr, mapped_, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_NORESERVE, -1);
            for (std::size_t at = 0; at < mapped_; at += PIECE)
                map(begin_ + at, PIECE, PROT_READ | PROT_WRITE, MAP_SHARED | MAP_FIXED, file);
            close(file);
            std::fill_n(data(), PIECE / sizeof(Char), repeated);
            // The ends have pieces of their own; the second of them may lie in two.
            for (const std::size_t at : {std::size_t{0}, mapped_ - 2 * PIECE, mapped_ - PIECE})
                own(at, repeated);
            std::copy(before.begin(), before.end(), data());
            std::copy(after.begin(), after.end(), data() + size_ - after.size());
        }

        LongText(const LongText&) = delete;
        LongText& operator=(const LongText&) = delete;
        ~LongText() { munmap(begin_, mapped_); }

        View view() const { return {data(), size_}; }

    private:
        static constexpr std::size_t PIECE = std::size_t{1} << 21U;

        static char* map(char* address, std::size_t size, int protection, int flags, int file)
        {
            void* const mapped = mmap(address, size, protection, flags, file, 0);
            if (mapped == MAP_FAILED) // NOLINT: a macro with a cast
                throw std::runtime_error("mmap");
            return static_cast<char*>(mapped);
        }

        Char* data() const { return reinterpret_cast<Char*>(begin_); } // NOLINT: aligned to pages

        void own(std::size_t at, Char repeated)
        {
            map(begin_ + at, PIECE, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED,
                -1);
            std::fill_n(data() + at / sizeof(Char), PIECE / sizeof(Char), repeated);
        }

        std::size_t size_;
        std::size_t mapped_;
        char* begin_ = nullptr;
    };

} // namespace

TEST(IRILongText, isSeenWhole)
{
    const LongText<char> text("x://h/", 'a', OVER_32_BITS, "?q#f");
    const std::optional<iri::IRIView> view = iri::IRIView::parse(text.view());
    ASSERT_TRUE(view);
    EXPECT_EQ(view->path().size(), OVER_32_BITS + 1);
    EXPECT_EQ(view->path().data(), text.view().data() + 5);
    EXPECT_EQ(view->query(), "q");
    EXPECT_EQ(view->fragment(), "f");
}

TEST(IRILongText, isDiagnosedAtItsEnd)
{
    const LongText<char> text("x:", 'a', OVER_32_BITS, "é>#");
    const std::optional<iri::Diagnosis> found = iri::diagnose(text.view());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->code, iri::Diagnosis::Code::BadCharacter);
    EXPECT_EQ(found->offset, OVER_32_BITS + 4);
    EXPECT_EQ(found->codePointOffset, OVER_32_BITS + 3);
    EXPECT_EQ(found->length, 1U);
    EXPECT_FALSE(IRI::tryParse(text.view()));
}

TEST(IRILongText, isDiagnosedInUtf16)
{
    const LongText<char16_t> text(u"x:", u'a', OVER_32_BITS, u">");
    const std::optional<iri::Diagnosis> found = iri::diagnose(text.view());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->offset, OVER_32_BITS + 2);
}

TEST(IRILongText, isRefusedForItsLastByte)
{
    const LongText<char> text("x:", 'a', OVER_32_BITS, "\xC3");
    const std::optional<iri::Diagnosis> found = iri::diagnose(text.view());
    ASSERT_TRUE(found);
    EXPECT_EQ(found->code, iri::Diagnosis::Code::BadUtf8);
    EXPECT_EQ(found->offset, OVER_32_BITS + 2);
}

// A port that overflows 32 bits, and its count of digits too, is no smaller for that.
TEST(IRILongText, hasAPortOfAnyLength)
{
    const LongText<char> zeros("//h:", '0', OVER_32_BITS, "81");
    EXPECT_EQ(iri::IRIView::parse(zeros.view())->portNumber(), 81);
    const LongText<char> ones("//h:", '1', OVER_32_BITS, "");
    EXPECT_EQ(iri::diagnose(ones.view())->code, iri::Diagnosis::Code::PortTooLarge);
}

TEST(IRILongText, isAQueryOfPairs)
{
    const LongText<char> text("", 'a', OVER_32_BITS, "=b&c=d");
    const iri::QueryPairs pairs(text.view());
    iri::QueryPairs::Iterator at = pairs.begin();
    ++at;
    EXPECT_EQ((*at).key, "c");
    EXPECT_EQ((*at).value, "d");
    EXPECT_EQ((*at).writtenKey.data(), text.view().data() + OVER_32_BITS + 3);
    EXPECT_EQ(++at, pairs.end());
}

// The value and what is printed of it take two GiB each, besides the text.
TEST(IRILongText, isAValue)
{
    const LongText<char> text("//u@h/", 'a', OVER_31_BITS, "?q");
    const std::optional<IRI> iri = IRI::tryParse(text.view());
    ASSERT_TRUE(iri);
    EXPECT_EQ(iri->getQueryUtf8(), "q");
    EXPECT_EQ(iri->getHostUtf8(), "h");
    EXPECT_TRUE(iri->toStringUtf8() == text.view());
}

// RFC 3986, 2.4: what a bare "%" becomes does not depend on where it stands.
TEST(IRILongText, hasItsEscapesFixedToItsEnd)
{
    const LongText<char32_t> text(U"%", U'x', OVER_31_BITS, U"[%41%4");
    const std::u32string fixed = iri::fixEscapes(text.view(), true);
    const std::u32string_view seen = fixed;
    constexpr std::u32string_view BEFORE = U"%25";
    constexpr std::u32string_view AFTER = U"%5B%41%254";
    EXPECT_EQ(seen.size(), BEFORE.size() + OVER_31_BITS + AFTER.size());
    EXPECT_TRUE(seen.starts_with(BEFORE));
    EXPECT_TRUE(seen.ends_with(AFTER));
    EXPECT_EQ(seen.find_first_not_of(U'x', BEFORE.size()), BEFORE.size() + OVER_31_BITS);
}

// The same of the text as a value holds it.
TEST(IRILongText, hasItsEscapesFixedToItsEndInUtf8)
{
    const LongText<char> text("%", 'x', OVER_31_BITS, "[%41%4");
    const std::string fixed = iri::fixEscapes(text.view(), true);
    const std::string_view seen = fixed;
    EXPECT_EQ(seen.size(), 3 + OVER_31_BITS + 10);
    EXPECT_TRUE(seen.starts_with("%25x"));
    EXPECT_TRUE(seen.ends_with("x%5B%41%254"));
    EXPECT_EQ(seen.find_first_not_of('x', 3), 3 + OVER_31_BITS);
}

// ICU counts in 31 bits. A name with more units is refused before ICU sees it.
TEST(IRILongText, isNoNameForIcu)
{
    const std::u16string name(OVER_31_BITS, u'.');
    try {
        IdnConverter().toAscii(name);
        FAIL() << "converted";
    } catch (const IdnConverterException& failure) {
        EXPECT_STREQ(failure.what(), "U_ILLEGAL_ARGUMENT_ERROR");
    }
}

} // namespace foundation::network
