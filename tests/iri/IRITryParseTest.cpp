#include <foundation/network/IRI.hpp>

#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace foundation::network {

namespace {

    using namespace tests;

    static_assert(std::is_same_v<decltype(IRI::tryParse("")), std::optional<IRI>>);

} // namespace

TEST(IRITryParse, takesTextsOfAllSorts)
{
    const std::string utf8 = "x://h/é";
    const std::u16string wide = u"x://h/é";
    EXPECT_EQ(IRI::tryParse(utf8), IRI(utf8));
    EXPECT_EQ(IRI::tryParse(std::string_view(utf8)), IRI(utf8));
    EXPECT_EQ(IRI::tryParse("x://h/é"), IRI(utf8));
    EXPECT_EQ(IRI::tryParse(utf8.c_str()), IRI(utf8));
    EXPECT_EQ(IRI::tryParse(wide), IRI(utf8));
    EXPECT_EQ(IRI::tryParse(std::u16string_view(wide)), IRI(utf8));
    EXPECT_EQ(IRI::tryParse(u"x://h/é"), IRI(utf8));
    // A piece of a text that goes on.
    EXPECT_EQ(IRI::tryParse(std::string_view(utf8).substr(0, 5)), IRI(std::string("x://h")));
    EXPECT_EQ(IRI::tryParse(std::u16string_view(wide).substr(0, 5)), IRI(std::string("x://h")));
}

TEST(IRITryParse, givesTheValueOfTheConstructor)
{
    for (const char* text : {"", "a", "?", "#", "//", "http://u:p@h:0080/a/b?q#f", "é:x", "a%zz",
                             "//[::1]:80", "\U0001F600?\uE000"}) {
        SCOPED_TRACE(text);
        const IRI expected{std::string(text)};
        for (const std::optional<IRI>& made : {IRI::tryParse(text), IRI::tryParse(utf16(text))}) {
            ASSERT_TRUE(made);
            EXPECT_EQ(*made, expected);
            EXPECT_EQ(made->isEmpty(), expected.isEmpty());
            EXPECT_EQ(made->hashValue(), expected.hashValue());
            EXPECT_EQ(made->toStringUtf8(), text);
            EXPECT_EQ(made->getPathUtf8(), expected.getPathUtf8());
        }
    }
    EXPECT_EQ(IRI::tryParse("//h:0080")->getPortNumber(), 80);
}

TEST(IRITryParse, givesNothingForABadText)
{
    for (const char* text :
         {" ", "a b", "1a:b", "//h:", "//h:65536", "//h:٣", "//[::1", "\\", "//u@h@x"}) {
        SCOPED_TRACE(text);
        EXPECT_FALSE(IRI::tryParse(text));
        EXPECT_FALSE(IRI::tryParse(utf16(text)));
    }
    EXPECT_FALSE(IRI::tryParse(std::string_view("a\0", 2)));
    for (const char* text : {"\xFF", "a\xC3", "\xC0\x80", "\xED\xA0\x80", "\xF8\x88\x80\x80"})
        EXPECT_FALSE(IRI::tryParse(text));
    for (const std::u16string& text :
         {std::u16string{0xD800}, {0xDC00}, {0xD800, u'a'}, {0xDC00, 0xD800}, {u'a', 0xD83D}})
        EXPECT_FALSE(IRI::tryParse(text));
}

} // namespace foundation::network
