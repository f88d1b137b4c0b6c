#pragma once

#include <foundation/network/API.hpp>

#include <boost/optional.hpp>
#include <boost/range/iterator_range_core.hpp>

#include <string>

namespace foundation::network::iri::detail {

/// What stands between the scheme and the query: authority and path, as ranges of the parsed text.
///
/// The ranges refer to the caller's text and are valid as long as it is. Delimiters are in none of
/// them. RFC 3987, 2.2: `ihier-part`, `irelative-part`.
template <class It>
struct HierarchicalPart {
    using Range = boost::iterator_range<It>; ///< from the first character to behind the last

    boost::optional<Range> userInfo; ///< before the "@", without it
    boost::optional<Range> host;     ///< an IP literal keeps its brackets
    boost::optional<Range> port;     ///< after the ":"; may be empty
    boost::optional<Range> path;     ///< always present after a match

    /// Gives each absent field an empty range at the place where that component would stand.
    ///
    /// Absent and empty cannot be told apart afterwards. Requires that `path` is present.
    void update();
};

extern template struct ZKFLNETWORK_API_EXTERN HierarchicalPart<std::u32string::const_iterator>;

} // namespace foundation::network::iri::detail
