#pragma once

#include <foundation/network/API.hpp>
#include <foundation/network/iri/detail/HierarchicalPart.hpp>

#include <boost/optional.hpp>
#include <boost/range/iterator_range_core.hpp>

#include <string>

namespace foundation::network::iri::detail {

/// The components of one parsed text, as ranges of it; an absent component has no range.
///
/// The ranges refer to the caller's text and are valid as long as it is. RFC 3987, 2.2:
/// `IRI-reference`.
template <class It>
struct Parts {
    using Range = boost::iterator_range<It>; ///< from the first character to behind the last

    boost::optional<Range> scheme;         ///< without the ":"
    HierarchicalPart<It> hierarchicalPart; ///< authority and path
    boost::optional<Range> query;          ///< after the "?"; may be empty
    boost::optional<Range> fragment;       ///< after the "#"; may be empty

    /// Gives each absent field but the scheme an empty range at the place where that component
    /// would stand.
    ///
    /// Absent and empty cannot be told apart afterwards. Requires that the path is present.
    void update();
};

extern template struct ZKFLNETWORK_API_EXTERN Parts<std::u32string::const_iterator>;

} // namespace foundation::network::iri::detail
