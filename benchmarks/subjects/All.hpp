#pragma once

/// @file
/// The classes that are measured, behind one shape.
///
/// A subject has a `name`; a `Value` that owns what was parsed; `accepts(text)`; `parse(text)`, for
/// texts that it accepts; `readStrings(value, use)`, which hands each present component to `use`
/// in a buffer of its own, in the form in which it was written where the class can; and
/// `print(value)`, the whole text. What only some subjects can do has a concept below.

#include "subjects/Zkflnetwork.hpp"

#ifdef ZKFLNETWORK_BENCHMARK_BOOST_URL
#    include "subjects/BoostUrl.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_CURL
#    include "subjects/Curl.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_GLIB
#    include "subjects/GLib.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_POCO
#    include "subjects/Poco.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_QT
#    include "subjects/Qt.hpp"
#endif
#ifdef ZKFLNETWORK_BENCHMARK_URIPARSER
#    include "subjects/Uriparser.hpp"
#endif

#include <string>

namespace benchmarks {

/// Calls `visit.template operator()<Subject>()` for this library and for each peer built in.
template <class Visit>
void forEachSubject(Visit visit)
{
    visit.template operator()<Zkflnetwork>();
#ifdef ZKFLNETWORK_BENCHMARK_BOOST_URL
    visit.template operator()<BoostUrl>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_CURL
    visit.template operator()<Curl>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_GLIB
    visit.template operator()<GLib>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_POCO
    visit.template operator()<PocoUri>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_QT
    visit.template operator()<Qt5>();
#endif
#ifdef ZKFLNETWORK_BENCHMARK_URIPARSER
    visit.template operator()<Uriparser>();
#endif
}

// clang-format off

/// Whether `Subject` shows its components without a copy.
template <class Subject>
concept ShowsViews = requires(const typename Subject::Value& value)
{
    Subject::readViews(value, [](auto) {});
};

/// Whether it gives the whole text in ASCII, whatever it was parsed from.
template <class Subject>
concept HasAsciiForm = requires(const typename Subject::Value& value)
{
    Subject::asciiForm(value);
};

/// Whether it resolves a reference against a parsed base and gives the text.
template <class Subject>
concept Resolves = requires(const std::string& reference, const typename Subject::Value& base)
{
    Subject::resolve(reference, base);
};

/// Whether it names one value in terms of another and gives the text.
template <class Subject>
concept Relativises = requires(const typename Subject::Value& value)
{
    Subject::relativise(value, value);
};

/// Whether its values can be copied.
template <class Subject>
concept Copies = requires(const typename Subject::Value& value)
{
    Subject::copy(value);
};

/// Whether its values can be compared.
template <class Subject>
concept Compares = requires(const typename Subject::Value& value)
{
    Subject::equal(value, value);
};

/// Whether its values can be put in order.
template <class Subject>
concept Orders = requires(const typename Subject::Value& value)
{
    Subject::less(value, value);
};

/// Whether its values have a hash.
template <class Subject>
concept Hashes = requires(const typename Subject::Value& value)
{
    Subject::hash(value);
};

// clang-format on

} // namespace benchmarks
