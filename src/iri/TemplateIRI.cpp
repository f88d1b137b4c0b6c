#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include "iri/Comparison.ipp"
#include "iri/LifeCycle.ipp"
#include "iri/Parsing.ipp"
#include "iri/Reading.ipp"
#include "iri/Serialisation.ipp"

namespace foundation::network::iri::detail {

template class ZKFLNETWORK_API_TEMPLATE TemplateIRI<std::u32string>;

} // namespace foundation::network::iri::detail
