#pragma once

#include <cstdint>

namespace foundation::network::iri {

/// The form in which a component, or a whole IRI, is written.
///
/// Every reader that takes an `Encoding` accepts any value: those above `AsciiStrict` read the
/// ASCII form and are not strict.
enum class Encoding : std::uint32_t {
    /// Plain text: percent escapes are undone and nothing is escaped. Made to be shown or matched,
    /// not to be parsed again: a "/" may stand for a delimiter or for "%2F". Escaped bytes that are
    /// no UTF-8 become the characters of those numbers ("%E9" is U+00E9), and where that happens
    /// the escapes that are left are undone once more.
    Decoded = 0,
    /// What the text of an IRI may show (RFC 3987, 2.2): characters outside ASCII stay themselves.
    Iri = 1,
    /// As `Iri`, with the percent signs and brackets repaired that RFC 3987 does not allow there.
    IriStrict = 2,
    /// Characters outside ASCII are percent-encoded from UTF-8 (RFC 3987, 3.1, step 2).
    Ascii = 3,
    /// As `Ascii`, repaired in the same way as `IriStrict`.
    AsciiStrict = 4,
};

} // namespace foundation::network::iri
