#pragma once

/// @file
/// The classes that are measured, behind one shape.
///
/// A subject has a `name`; a `Value` that owns what was parsed; `accepts(text)`; `parse(text)`, for
/// texts that it accepts; `readStrings(value, use)`, which hands each present component to `use`
/// as a std::string in the form in which it was written; and `print(value)`, the whole text. A
/// subject that can show its components without a copy has `readViews` besides.

#include "subjects/Zkflnetwork.hpp"

#ifdef ZKFLNETWORK_BENCHMARK_BOOST_URL
#    include "subjects/BoostUrl.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_URIPARSER
#    include "subjects/Uriparser.hpp"
#endif

namespace benchmarks {

/// Calls `visit.template operator()<Subject>()` for this library and for each peer built in.
template <class Visit>
void forEachSubject(Visit visit)
{
    visit.template operator()<Zkflnetwork>();
#ifdef ZKFLNETWORK_BENCHMARK_BOOST_URL
    visit.template operator()<BoostUrl>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_URIPARSER
    visit.template operator()<Uriparser>();
#endif
}

/// Whether `Subject` shows its components without a copy.
template <class Subject>
concept ShowsViews = requires(const typename Subject::Value& value)
{
    Subject::readViews(value, [](auto) {});
};

} // namespace benchmarks
