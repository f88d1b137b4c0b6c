#include <foundation/network/iri/IRIView.hpp>

#include <gtest/gtest.h>

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <type_traits>

namespace foundation::network::iri {

namespace {

    static_assert(std::is_trivially_copyable_v<IRIView>);
    static_assert(noexcept(IRIView::parse("")));

    // A view of a text that is gone as soon as it was made does not compile.
    template <class Text>
    concept Viewable = requires(Text&& text)
    {
        IRIView::parse(std::forward<Text>(text));
    };
    static_assert(Viewable<std::string&> && Viewable<const std::string&>);
    static_assert(Viewable<std::string_view> && Viewable<const char*>);
    static_assert(!Viewable<std::string> && !Viewable<const std::string>);
    static_assert(sizeof(IRIView) <= 72);

    using Text = std::optional<std::string_view>;
    using Port = std::optional<std::uint16_t>;
    constexpr std::nullopt_t NONE = std::nullopt;

    struct Reading {
        const char* text;
        Text scheme;
        Text authority;
        Text userInfo;
        Text host;
        Text port;
        Port portNumber;
        std::string_view path;
        Text query;
        Text fragment;
    };

    const Reading readings[] = {
        {"", NONE, NONE, NONE, NONE, NONE, NONE, "", NONE, NONE},
        {"a", NONE, NONE, NONE, NONE, NONE, NONE, "a", NONE, NONE},
        {"/", NONE, NONE, NONE, NONE, NONE, NONE, "/", NONE, NONE},
        {"?", NONE, NONE, NONE, NONE, NONE, NONE, "", "", NONE},
        {"#", NONE, NONE, NONE, NONE, NONE, NONE, "", NONE, ""},
        {"a?#", NONE, NONE, NONE, NONE, NONE, NONE, "a", "", ""},
        {"x:", "x", NONE, NONE, NONE, NONE, NONE, "", NONE, NONE},
        {"x:a:b", "x", NONE, NONE, NONE, NONE, NONE, "a:b", NONE, NONE},
        {"x:?#", "x", NONE, NONE, NONE, NONE, NONE, "", "", ""},
        {"//", NONE, "", NONE, "", NONE, NONE, "", NONE, NONE},
        {"//?", NONE, "", NONE, "", NONE, NONE, "", "", NONE},
        {"///", NONE, "", NONE, "", NONE, NONE, "/", NONE, NONE},
        {"//@", NONE, "@", "", "", NONE, NONE, "", NONE, NONE},
        {"//:80", NONE, ":80", NONE, "", "80", 80, "", NONE, NONE},
        {"//@:0", NONE, "@:0", "", "", "0", 0, "", NONE, NONE},
        {"//u@", NONE, "u@", "u", "", NONE, NONE, "", NONE, NONE},
        {"x://h", "x", "h", NONE, "h", NONE, NONE, "", NONE, NONE},
        {"x://[::1]:0080#", "x", "[::1]:0080", NONE, "[::1]", "0080", 80, "", NONE, ""},
        {"http://u:p@h:8/a/b?q#f", "http", "u:p@h:8", "u:p", "h", "8", 8, "/a/b", "q", "f"},
        {"é://ü@ö:65535/ä?%E9#例", "é", "ü@ö:65535", "ü", "ö", "65535", 65535, "/ä", "%E9", "例"},
    };

} // namespace

TEST(IRIView, showsTheComponents)
{
    for (const Reading& row : readings) {
        SCOPED_TRACE(row.text);
        const std::optional<IRIView> view = IRIView::parse(row.text);
        ASSERT_TRUE(view);
        EXPECT_EQ(view->text(), row.text);
        EXPECT_EQ(view->isEmpty(), view->text().empty());
        EXPECT_EQ(view->scheme(), row.scheme);
        EXPECT_EQ(view->authority(), row.authority);
        EXPECT_EQ(view->userInfo(), row.userInfo);
        EXPECT_EQ(view->host(), row.host);
        EXPECT_EQ(view->port(), row.port);
        EXPECT_EQ(view->portNumber(), row.portNumber);
        EXPECT_EQ(view->path(), row.path);
        EXPECT_EQ(view->query(), row.query);
        EXPECT_EQ(view->fragment(), row.fragment);
        EXPECT_EQ(view->hasScheme(), row.scheme.has_value());
        EXPECT_EQ(view->hasAuthority(), row.authority.has_value());
        EXPECT_EQ(view->hasUserInfo(), row.userInfo.has_value());
        EXPECT_EQ(view->hasHost(), row.host.has_value());
        EXPECT_EQ(view->hasPort(), row.port.has_value());
        EXPECT_EQ(view->hasQuery(), row.query.has_value());
        EXPECT_EQ(view->hasFragment(), row.fragment.has_value());
    }
}

// What lies behind the view is not read, and what is handed out lies in the caller's text.
TEST(IRIView, liesInTheTextOfTheCaller)
{
    const std::string text = "x://h:80/\xC3\xA9\xFF";
    const std::optional<IRIView> view = IRIView::parse(std::string_view(text).substr(0, 11));
    ASSERT_TRUE(view);
    EXPECT_EQ(view->path().data(), text.data() + 8);
    EXPECT_EQ(view->path().size(), 3U);
    EXPECT_EQ(view->host()->data(), text.data() + 4);
    EXPECT_FALSE(IRIView::parse(std::string_view(text).substr(0, 10)));
    EXPECT_FALSE(IRIView::parse(text));
    ASSERT_TRUE(IRIView::parse(std::string_view()));
    EXPECT_TRUE(IRIView::parse(std::string_view())->isEmpty());
}

TEST(IRIView, givesNothingForABadText)
{
    for (const std::string_view text :
         {" ", "a b", "1a:b", "//h:", "//h:65536", "//h:٣", "//[::1", "\\", "//u@h@x", "//h:80a",
          "\xFF", "a\xC3", "\xC0\x80", "é\x80", "?\xED\xA0\x80", "\xF8\x88\x80\x80"}) {
        SCOPED_TRACE(testing::PrintToString(text));
        EXPECT_FALSE(IRIView::parse(text));
    }
}

// The lead F8 is read as one of four bytes; the view shows the text as it is.
TEST(IRIView, showsLongLeadsAsTheyAre)
{
    const std::optional<IRIView> view = IRIView::parse("/\xF8\x90\x80\x80");
    ASSERT_TRUE(view);
    EXPECT_EQ(view->path(), "/\xF8\x90\x80\x80");
}

} // namespace foundation::network::iri
