#pragma once

#include <boost/range/iterator_range_core.hpp>

namespace foundation::network::iri::grammar {

/// The place in a text that the productions have reached.
///
/// A production that fails leaves the cursor where it was. `It` is a forward iterator over code
/// points.
template <class It>
class Cursor {
public:
    Cursor(It first, It last)
        : at_(first)
        , last_(last)
    {
    }

    It position() const { return at_; }
    void reset(It position) { at_ = position; }
    It last() const { return last_; }
    bool atEnd() const { return at_ == last_; }

    /// The text between @p start and here.
    boost::iterator_range<It> from(It start) const { return {start, at_}; }

    /// Whether a character that satisfies @p predicate stands here.
    template <class Predicate>
    bool is(Predicate predicate) const
    {
        return at_ != last_ && predicate(*at_);
    }

    /// The character that stands here; moves past it. Not at the end.
    char32_t next() { return *at_++; }

    /// Moves past one character that satisfies @p predicate, if it stands here.
    template <class Predicate>
    bool takeIf(Predicate predicate)
    {
        if (!is(predicate))
            return false;
        ++at_;
        return true;
    }

    /// Moves past @p character, if it stands here.
    bool take(char32_t character)
    {
        return takeIf([character](char32_t c) { return c == character; });
    }

    /// Moves past two characters, if they stand here together.
    bool take(char32_t first, char32_t second)
    {
        const It start = at_;
        if (take(first) && take(second))
            return true;
        at_ = start;
        return false;
    }

    /// Moves past all characters that satisfy @p predicate.
    template <class Predicate>
    void skipWhile(Predicate predicate)
    {
        It at = at_; // a place that nobody else sees can stay in a register
        while (at != last_ && predicate(*at))
            ++at;
        at_ = at;
    }

private:
    It at_;
    It last_;
};

} // namespace foundation::network::iri::grammar
