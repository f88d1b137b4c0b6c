#pragma once

#include "iri/ComponentCoders.hpp"
#include "iri/NaiveCoding.hpp"

#include <string_view>

/// The conversions of the components beside the naive ones.
namespace foundation::network::iri::naive {

/// @{
/// As much of a naive context as a coder wants to know.
inline NoContext contextFor(NoContext, const Context&)
{
    return {};
}

inline PathContext contextFor(PathContext, const Context& from)
{
    return {from.schemePresent, from.userInfoPresent, from.hostPresent};
}

inline QueryContext contextFor(QueryContext, const Context& from)
{
    return {from.formEncoded};
}
/// @}

/// One conversion, ours and the naive one.
template <class Coder>
struct CoderPair {
    const char* name;
    Conversion (*ours)(std::u32string_view, const typename Coder::Context&);
    MaybeText (*theirs)(Component, const Text&, const Context&);
};

/// All six of them.
template <class Coder>
inline constexpr CoderPair<Coder> coderPairs[] = {
    {"decodedToIri", Coder::decodedToIri, decodedToIri},
    {"iriToAscii", Coder::iriToAscii, iriToAscii},
    {"decodedToAscii", Coder::decodedToAscii, decodedToAscii},
    {"iriToDecoded", Coder::iriToDecoded, iriToDecoded},
    {"asciiToIri", Coder::asciiToIri, asciiToIri},
    {"asciiToDecoded", Coder::asciiToDecoded, asciiToDecoded},
};

} // namespace foundation::network::iri::naive
