#include <foundation/network/detail/ImmutableIterableRange.hpp>

namespace foundation::network::detail {

template class ZKFLNETWORK_API_TEMPLATE ImmutableIterableRange<unsigned char>;

} // namespace foundation::network::detail
