#pragma once

#include <rapidcheck.h>

#include <string>

namespace foundation::network::tests {

/// Texts in UTF-8 that are IRI references, with escapes of all sorts, many scripts and all kinds of
/// hosts. Now and then the text is empty.
rc::Gen<std::string> iriReferences();

} // namespace foundation::network::tests
