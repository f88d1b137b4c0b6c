#pragma once

#include "reference/NaiveRecord.hpp"

#include <foundation/network/IRI.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <optional>
#include <random>
#include <string>

/// The library beside its naive model.
namespace foundation::network::tests {

/// An IRI and what the model knows of it. Whatever is read of one must be read of the other, since
/// reading leaves traces in both.
struct Specimen {
    IRI iri;
    NaiveRecord record;
    std::string origin; ///< says how it came to be
};

Specimen parsedSpecimen(const std::string& text);
Specimen parsedSpecimen(const std::u16string& text);
Specimen builtSpecimen(const NaiveArguments& arguments);

/// What is drawn for one case. The same number gives the same case on every machine.
using Random = std::mt19937_64;

/// A number below @p bound.
std::size_t below(std::size_t bound, Random& random);

/// Some readings of an IRI, in any order, against those of the model. @p count of them, besides the
/// predicates.
testing::AssertionResult readsAlike(Specimen& specimen, std::size_t count, Random& random);

/// What came of resolving, or of relativising.
struct Outcome {
    testing::AssertionResult alike; ///< both gave a value, or failed in the same way
    std::optional<Specimen> result;
};

Outcome resolve(Specimen& reference, Specimen& base);
Outcome relativise(Specimen& iri, Specimen& base);

} // namespace foundation::network::tests
