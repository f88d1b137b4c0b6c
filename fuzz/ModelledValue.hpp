#pragma once

#include "build/TwinBag.hpp"
#include "reference/Specimen.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>

namespace foundation::network::fuzz {

/// What an object knows of its hash. That it was computed here stays with the object, whatever value
/// it takes over.
struct NaiveHash {
    enum class State { Unknown, Known, LeftBehind };

    State state = State::Unknown;
    std::uint64_t value = 0;
    bool wasComputedHere = false;

    void take(const NaiveHash& other);
    void leaveBehind();
};

/// An IRI with the plain record of all that it has been through: parsing, building, copying, moving,
/// assigning, swapping, comparing, hashing.
struct ModelledValue {
    tests::Specimen specimen;
    NaiveHash hash;
    bool isMovedFrom = false; ///< by an assignment: now it may only be assigned to, or go

    IRI& iri() { return specimen.iri; }
    tests::NaiveRecord& record() { return specimen.record; }
};

using ModelledValuePointer = std::unique_ptr<ModelledValue>;

/// @{
/// New values.
ModelledValuePointer emptyValue();
ModelledValuePointer parsedValue(const std::string& utf8);
ModelledValuePointer parsedFromUtf16(const std::u16string& utf16);
ModelledValuePointer valueOf(tests::Specimen&& specimen);
ModelledValuePointer copied(const ModelledValue& from);
ModelledValuePointer moved(ModelledValue& from);
/// @}

/// @{
/// Does the same with values and records. @returns, if anything, whether both gave the same
void assignCopy(ModelledValue& to, ModelledValue& from);
testing::AssertionResult assignMoved(ModelledValue& to, ModelledValue& from);
void exchange(ModelledValue& left, ModelledValue& right);
testing::AssertionResult hashAlike(ModelledValue& value);
testing::AssertionResult compareAlike(ModelledValue& left, ModelledValue& right);
testing::AssertionResult toArgsAlike(ModelledValue& value, tests::TwinBag& bag);
/// @}

/// What a bag builds, if it does. @returns whether both are built, or are refused alike
testing::AssertionResult buildAlike(const tests::TwinBag& bag, ModelledValuePointer& result);

} // namespace foundation::network::fuzz
