#pragma once

#include "iri/grammar/IriGrammar.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>

namespace foundation::network::iri::grammar::test {

/// In a row of the tables below: the component is absent, which is not the same as empty.
inline constexpr const char32_t* NO = nullptr;

/// What the grammar must make of a text. The text is accepted if nothing is left over.
struct Reading {
    const char32_t* text;
    const char32_t* leftOver;
    const char32_t* scheme;
    const char32_t* userInfo;
    const char32_t* host;
    const char32_t* port;
    const char32_t* path;
    const char32_t* query;
    const char32_t* fragment;
};

using It = std::u32string::const_iterator;
using Range = boost::optional<boost::iterator_range<It>>;

inline void expectComponent(const char* name, const Range& range, const char32_t* expected)
{
    ASSERT_EQ(range.has_value(), expected != nullptr) << name;
    if (range) {
        EXPECT_EQ(std::u32string(range->begin(), range->end()), expected) << name;
    }
}

/// Walks over a text as its components and their delimiters must follow each other.
class Layout {
public:
    explicit Layout(It first)
        : at_(first)
    {
    }

    void expect(const char* name, const Range& range, std::size_t delimitersBefore,
                std::size_t delimitersBehind = 0)
    {
        if (!range)
            return;
        at_ += static_cast<std::ptrdiff_t>(delimitersBefore);
        EXPECT_TRUE(range->begin() == at_) << name;
        at_ = range->end() + static_cast<std::ptrdiff_t>(delimitersBehind);
    }

    It position() const { return at_; }
    void skip(std::ptrdiff_t count) { at_ += count; }

private:
    It at_;
};

/// The ranges lie in the text itself, in order, with nothing but their delimiters between them.
inline void expectLayout(It first, It last, const iri::detail::Parts<It>& parts)
{
    const auto& hierarchical = parts.hierarchicalPart;
    Layout layout(first);
    layout.expect("scheme", parts.scheme, 0, 1);
    if (hierarchical.host)
        layout.skip(2);
    layout.expect("user info", hierarchical.userInfo, 0, 1);
    layout.expect("host", hierarchical.host, 0);
    layout.expect("port", hierarchical.port, 1);
    layout.expect("path", hierarchical.path, 0);
    layout.expect("query", parts.query, 1);
    layout.expect("fragment", parts.fragment, 1);
    EXPECT_TRUE(layout.position() == last) << "end of the match";
}

inline void expectReading(const Reading& row)
{
    SCOPED_TRACE(testing::PrintToString(std::u32string(row.text)));
    const std::u32string text(row.text);
    auto first = text.begin();
    iri::detail::Parts<It> parts;

    EXPECT_TRUE(parseIriReference(first, text.end(), parts));
    EXPECT_EQ(std::u32string(first, text.end()), row.leftOver);

    const auto& hierarchical = parts.hierarchicalPart;
    expectComponent("scheme", parts.scheme, row.scheme);
    expectComponent("user info", hierarchical.userInfo, row.userInfo);
    expectComponent("host", hierarchical.host, row.host);
    expectComponent("port", hierarchical.port, row.port);
    expectComponent("path", hierarchical.path, row.path);
    expectComponent("query", parts.query, row.query);
    expectComponent("fragment", parts.fragment, row.fragment);
    expectLayout(text.begin(), first, parts);
}

/// The length of the match at the front of a text.
inline std::size_t matchedLength(const std::u32string& text)
{
    auto first = text.begin();
    iri::detail::Parts<It> parts;
    EXPECT_TRUE(parseIriReference(first, text.end(), parts));
    return static_cast<std::size_t>(first - text.begin());
}

/// Whether a text is an IRI reference: the grammar matches, and up to the end.
inline bool accepts(const std::u32string& text)
{
    return matchedLength(text) == text.size();
}

} // namespace foundation::network::iri::grammar::test
