#pragma once

#include <foundation/network/API.hpp>

#include <concepts>
#include <cstddef>
#include <iterator>
#include <ranges>
#include <string>
#include <string_view>
#include <type_traits>

namespace foundation::network::iri {

/// One pair of a query.
struct QueryPair {
    /// @{
    /// What stands before and behind the first "=", with each "+" as a space and all escapes undone:
    /// the bytes that they stand for, which need not be UTF-8, and may be zero. A "%" that begins no
    /// escape stands for itself.
    std::string key;
    std::string value;
    /// @}

    bool hasValue = false; ///< whether there is a "=", so that "a" and "a=" can be told apart

    /// Whether key and value are UTF-8, by the rule of RFC 3629.
    bool isText = true;

    /// @{
    /// The same as they were written. They live as long as the query.
    std::string_view writtenKey;
    std::string_view writtenValue;
    /// @}

    /// Whether two pairs are the same, as written and as read.
    bool operator==(const QueryPair& other) const = default;
};

/// The pairs of a query in the style of application/x-www-form-urlencoded, in their order, with those
/// that occur twice: what `IRIArgs::appendQueryKeyValuePair` appended.
///
///     const std::string query = iri.getQueryUtf8();
///     for (const QueryPair& pair : QueryPairs(query))
///         use(pair.key, pair.value);
///
/// Give it the query as the text of the IRI shows it: that of `getQueryUtf8()`, whose form is
/// `Encoding::Iri`, of the ASCII form, or of an `IRIView`. From the decoded form delimiters can no
/// longer be told from what they delimit.
///
/// What was appended comes back, if all of it was appended with one separator and that is named here:
/// the builder escapes no other. One thing does not: of a key or value that holds an escape, such as
/// "%41", it comes back undone ("A") wherever the builder kept it; `appendQueryKeyValuePair` tells
/// when.
///
/// A query "a&&b" has three pairs, of which the second is empty; the empty query has none.
///
/// A range of forward iterators, cheap to copy, over the caller's text, which has to stay where it is
/// as long as the range, the iterators and the written texts of pairs are in use. Any number of
/// threads may read one.
class QueryPairs {
public:
    /// What stands between pairs.
    enum class Separator {
        Ampersand, ///< "&" only
        Semicolon, ///< ";" only
        Either,    ///< both, as in "a=b;c=d&e=f"
    };

    class Iterator;

    /// The pairs of a query.
    /// @param query  UTF-8 without the "?"; but nothing is checked
    explicit QueryPairs(std::string_view query, Separator separator = Separator::Ampersand) noexcept
        : query_(query)
        , separator_(separator)
    {
    }

    /// Not of a text that is about to go: keep what `getQueryUtf8()` gives in a variable.
    template <class Text>
    requires std::same_as<std::remove_cv_t<Text>, std::string>
    // NOLINTNEXTLINE(bugprone-forwarding-reference-overload): it takes nothing but std::string
    explicit QueryPairs(Text&& query, Separator separator = Separator::Ampersand) = delete;

    /// The first pair.
    Iterator begin() const noexcept;

    /// Behind the last pair.
    Iterator end() const noexcept;

private:
    std::string_view query_;
    Separator separator_;
};

/// A place among the pairs. A pair is read when the iterator is dereferenced, each time anew.
class QueryPairs::Iterator {
public:
    using iterator_concept = std::forward_iterator_tag; ///< for the algorithms of std::ranges
    using iterator_category = std::input_iterator_tag;  ///< for others: gives values
    using value_type = QueryPair;                       ///< for algorithms
    using difference_type = std::ptrdiff_t;             ///< for algorithms
    using pointer = void;                               ///< a pair lives in no place
    using reference = QueryPair;                        ///< a value, made anew each time

    /// Belongs to no query.
    Iterator() noexcept = default;

    /// The pair.
    /// @throws std::bad_alloc, but nothing on account of the text
    /// @complexity Linear in the length of the pair.
    ZKFLNETWORK_API QueryPair operator*() const;

    /// Moves to the next pair.
    /// @complexity Linear in the length of that.
    ZKFLNETWORK_API Iterator& operator++() noexcept;

    /// Moves to the next pair, and gives the place before.
    Iterator operator++(int) noexcept
    {
        const Iterator before = *this;
        ++*this;
        return before;
    }

    /// Whether both stand at the same place of the same query.
    bool operator==(const Iterator& other) const noexcept
    {
        return rest_.data() == other.rest_.data() && isAtEnd_ == other.isAtEnd_;
    }

private:
    friend class QueryPairs;

    ZKFLNETWORK_API Iterator(std::string_view rest, Separator separator, bool isAtEnd) noexcept;

    std::string_view rest_;  // from the pair on
    std::size_t length_ = 0; // of the pair
    Separator separator_ = Separator::Ampersand;
    bool isAtEnd_ = true; // not the same as an empty rest: "a&" ends in an empty pair
};

inline QueryPairs::Iterator QueryPairs::begin() const noexcept
{
    return {query_, separator_, query_.empty()};
}

inline QueryPairs::Iterator QueryPairs::end() const noexcept
{
    return {query_.substr(query_.size()), separator_, true};
}

} // namespace foundation::network::iri

/// @cond  Doxygen does not find the variable in the standard library.
/// The iterators outlive the range: they go by the caller's text.
template <>
inline constexpr bool std::ranges::enable_borrowed_range<foundation::network::iri::QueryPairs> =
    true;
/// @endcond
