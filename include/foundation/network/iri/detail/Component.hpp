#pragma once

#include <cstdint>

namespace foundation::network::iri::detail {

/// The components of an IRI that exist in several forms.
enum class Component : std::uint8_t { UserInfo, Host, Path, Query, Fragment };

} // namespace foundation::network::iri::detail
