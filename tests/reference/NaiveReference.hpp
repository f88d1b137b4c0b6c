#pragma once

#include "reference/NaiveRecord.hpp"

/// Resolving and relativising a second time, on plain records.
///
/// The records that go in may take on more forms of their components, as IRIs do when they are
/// read.
namespace foundation::network::tests {

/// What @p reference denotes against @p base.
NaiveRecord naiveResolve(NaiveRecord& reference, NaiveRecord& base);

/// @p iri in terms of @p base. @throws the library's exceptions where it refuses
NaiveRecord naiveRelativise(NaiveRecord& iri, NaiveRecord& base);

} // namespace foundation::network::tests
