#include <foundation/network/iri/detail/Parts.hpp>

#include "iri/Parts.ipp"

namespace foundation::network::iri::detail {

template struct ZKFLNETWORK_API_TEMPLATE HierarchicalPart<std::u32string::const_iterator>;
template struct ZKFLNETWORK_API_TEMPLATE Parts<std::u32string::const_iterator>;

} // namespace foundation::network::iri::detail
