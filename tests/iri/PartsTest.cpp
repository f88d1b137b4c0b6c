#include <foundation/network/iri/detail/Parts.hpp>

#include <gtest/gtest.h>

#include <optional>
#include <string>
#include <utility>

namespace foundation::network::iri::detail {
namespace {

    using It = std::u32string::const_iterator;
    using Range = boost::iterator_range<It>;

    // Where a component lies in the text: offsets of its begin and end. Nothing: it is absent.
    using Span = std::optional<std::pair<std::ptrdiff_t, std::ptrdiff_t>>;

    // The ranges need not fit a real IRI: update() looks at their ends and at nothing else.
    const std::u32string text = U"s://user@host:80/path?query#fragment";

    boost::optional<Range> rangeOf(const Span& span)
    {
        if (!span)
            return boost::none;
        return Range(text.begin() + span->first, text.begin() + span->second);
    }

    Span spanOf(const boost::optional<Range>& range)
    {
        if (!range)
            return std::nullopt;
        return std::pair(range->begin() - text.begin(), range->end() - text.begin());
    }

    struct Spans {
        Span userInfo, host, port, path, query, fragment;
    };

    Parts<It> partsOf(const Spans& spans)
    {
        Parts<It> parts;
        parts.hierarchicalPart.userInfo = rangeOf(spans.userInfo);
        parts.hierarchicalPart.host = rangeOf(spans.host);
        parts.hierarchicalPart.port = rangeOf(spans.port);
        parts.hierarchicalPart.path = rangeOf(spans.path);
        parts.query = rangeOf(spans.query);
        parts.fragment = rangeOf(spans.fragment);
        return parts;
    }

    void expectHierarchicalPart(const HierarchicalPart<It>& part, const Spans& expected)
    {
        EXPECT_EQ(spanOf(part.userInfo), expected.userInfo);
        EXPECT_EQ(spanOf(part.host), expected.host);
        EXPECT_EQ(spanOf(part.port), expected.port);
        EXPECT_EQ(spanOf(part.path), expected.path);
    }

    constexpr Span at(std::ptrdiff_t offset)
    {
        return std::pair(offset, offset);
    }

    constexpr Span between(std::ptrdiff_t begin, std::ptrdiff_t end)
    {
        return std::pair(begin, end);
    }

    constexpr Span ABSENT = std::nullopt;

    struct Update {
        const char* about;
        Spans before, after; // user info, host, port, path, query, fragment
    };
    const Update updates[] = {
        {"all present: nothing changes",
         {between(4, 8), between(9, 13), between(14, 16), between(16, 21), between(22, 27),
          between(28, 36)},
         {between(4, 8), between(9, 13), between(14, 16), between(16, 21), between(22, 27),
          between(28, 36)}},
        {"all present and empty: nothing changes",
         {at(4), at(5), at(6), at(7), at(8), at(9)},
         {at(4), at(5), at(6), at(7), at(8), at(9)}},
        {"user information stands at the start of the host",
         {ABSENT, between(9, 13), between(14, 16), between(16, 21), at(21), at(21)},
         {at(9), between(9, 13), between(14, 16), between(16, 21), at(21), at(21)}},
        {"user information stands at the start of the path, if there is no host either",
         {ABSENT, ABSENT, between(14, 16), between(16, 21), at(21), at(21)},
         {at(16), at(16), between(14, 16), between(16, 21), at(21), at(21)}},
        {"a host stands at the start of the path",
         {between(4, 8), ABSENT, between(14, 15), between(16, 21), at(21), at(21)},
         {between(4, 8), at(16), between(14, 15), between(16, 21), at(21), at(21)}},
        {"a port stands at the end of the host",
         {between(4, 8), between(9, 13), ABSENT, between(16, 21), at(21), at(21)},
         {between(4, 8), between(9, 13), at(13), between(16, 21), at(21), at(21)}},
        {"a port stands at the end of the host that was itself given a place",
         {ABSENT, ABSENT, ABSENT, between(16, 21), at(22), at(23)},
         {at(16), at(16), at(16), between(16, 21), at(22), at(23)}},
        {"a query stands at the end of the path",
         {at(4), at(5), at(6), between(16, 21), ABSENT, between(28, 36)},
         {at(4), at(5), at(6), between(16, 21), at(21), between(28, 36)}},
        {"a fragment stands at the end of the query",
         {at(4), at(5), at(6), between(16, 21), between(22, 27), ABSENT},
         {at(4), at(5), at(6), between(16, 21), between(22, 27), at(27)}},
        {"a fragment stands at the end of the query that was itself given a place",
         {at(4), at(5), at(6), between(16, 21), ABSENT, ABSENT},
         {at(4), at(5), at(6), between(16, 21), at(21), at(21)}},
        {"a path alone",
         {ABSENT, ABSENT, ABSENT, between(16, 21), ABSENT, ABSENT},
         {at(16), at(16), at(16), between(16, 21), at(21), at(21)}},
    };

    TEST(Parts, updateGivesAbsentComponentsTheirPlaces)
    {
        for (const Update& row : updates) {
            SCOPED_TRACE(row.about);
            Parts<It> parts = partsOf(row.before);
            parts.update();
            expectHierarchicalPart(parts.hierarchicalPart, row.after);
            EXPECT_EQ(spanOf(parts.query), row.after.query);
            EXPECT_EQ(spanOf(parts.fragment), row.after.fragment);
        }
    }

    TEST(HierarchicalPart, updateGivesAbsentComponentsTheirPlaces)
    {
        for (const Update& row : updates) {
            SCOPED_TRACE(row.about);
            HierarchicalPart<It> part = partsOf(row.before).hierarchicalPart;
            part.update();
            expectHierarchicalPart(part, row.after);
        }
    }

    TEST(Parts, updateLeavesTheSchemeAlone)
    {
        for (const Span& scheme : {ABSENT, at(0), between(0, 1)}) {
            Parts<It> parts = partsOf(updates[0].before);
            parts.scheme = rangeOf(scheme);
            parts.update();
            EXPECT_EQ(spanOf(parts.scheme), scheme);
        }
    }

    TEST(Parts, areAbsentAtFirst)
    {
        const Parts<It> parts;
        EXPECT_FALSE(parts.scheme);
        EXPECT_FALSE(parts.hierarchicalPart.userInfo);
        EXPECT_FALSE(parts.hierarchicalPart.host);
        EXPECT_FALSE(parts.hierarchicalPart.port);
        EXPECT_FALSE(parts.hierarchicalPart.path);
        EXPECT_FALSE(parts.query);
        EXPECT_FALSE(parts.fragment);
    }

} // namespace
} // namespace foundation::network::iri::detail
