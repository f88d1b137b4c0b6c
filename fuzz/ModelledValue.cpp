#include "ModelledValue.hpp"

#include "build/NaiveBuilt.hpp"
#include "text/Failure.hpp"

#include <optional>
#include <utility>

namespace foundation::network::fuzz {

namespace {

    using namespace tests;
    using iri::Encoding;

    std::uint64_t madeHash(NaiveRecord& record)
    {
        return record.isEmpty ? 0 : hashOf(record.whole(Encoding::Iri));
    }

    std::uint64_t naiveHashValue(ModelledValue& value)
    {
        NaiveHash& hash = value.hash;
        if (hash.state == NaiveHash::State::Unknown) {
            hash.value = madeHash(value.record());
            hash.state = NaiveHash::State::Known;
            hash.wasComputedHere = true;
        }
        return hash.value;
    }

    // The text of a component is compared in the form in which the left side stores it.
    bool differs(std::optional<NaiveComponent>& left, std::optional<NaiveComponent>& right)
    {
        if (!left || !right)
            return left.has_value() != right.has_value();
        const Text text = left->read(left->storedForm());
        return text != right->read(left->storedForm());
    }

    bool componentsDiffer(NaiveRecord& left, NaiveRecord& right)
    {
        return differs(left.userInfo, right.userInfo) || differs(left.host, right.host)
               || differs(left.path, right.path) || differs(left.query, right.query)
               || differs(left.fragment, right.fragment);
    }

    bool schemeOrPortDiffers(const NaiveRecord& left, const NaiveRecord& right)
    {
        if (left.scheme != right.scheme || left.port.has_value() != right.port.has_value())
            return true;
        return left.port && left.portNumber() != right.portNumber();
    }

    bool textDiffers(ModelledValue& left, ModelledValue& right)
    {
        if (naiveHashValue(left) != naiveHashValue(right))
            return true;
        const Text text = left.record().whole(Encoding::Iri);
        return text != right.record().whole(Encoding::Iri);
    }

    bool naiveEqual(ModelledValue& left, ModelledValue& right)
    {
        NaiveRecord &mine = left.record(), &theirs = right.record();
        if (mine.isEmpty || theirs.isEmpty)
            return mine.isEmpty == theirs.isEmpty;
        if (schemeOrPortDiffers(mine, theirs))
            return false;
        if (mine.source || theirs.source)
            return !textDiffers(left, right);
        return (mine.componentsAreEmpty && theirs.componentsAreEmpty)
               || !componentsDiffer(mine, theirs);
    }

    // Not always the opposite.
    bool naiveUnequal(ModelledValue& left, ModelledValue& right)
    {
        NaiveRecord &mine = left.record(), &theirs = right.record();
        if (mine.isEmpty || theirs.isEmpty)
            return mine.isEmpty != theirs.isEmpty;
        if (schemeOrPortDiffers(mine, theirs))
            return true;
        if (mine.source || theirs.source)
            return textDiffers(left, right);
        return mine.componentsAreEmpty != theirs.componentsAreEmpty
               || (!mine.componentsAreEmpty && componentsDiffer(mine, theirs));
    }

    bool naiveLess(ModelledValue& left, ModelledValue& right)
    {
        const bool bothBuilt = !left.record().source && !right.record().source;
        const Encoding form = bothBuilt ? Encoding::Decoded : Encoding::Iri;
        const Text text = left.record().whole(form);
        return text < right.record().whole(form);
    }

    // The value of one operation on both sides, or its failure.
    template <class Ours, class Theirs>
    testing::AssertionResult alike(const char* what, Ours ours, Theirs theirs)
    {
        decltype(ours()) value{}, expected{};
        const auto failure = failureOf([&] { value = ours(); });
        const auto expectedFailure = failureOf([&] { expected = theirs(); });
        if (failure == expectedFailure && value == expected)
            return testing::AssertionSuccess();
        return testing::AssertionFailure()
               << what << ": " << value << ' ' << testing::PrintToString(failure) << " instead of "
               << expected << ' ' << testing::PrintToString(expectedFailure);
    }

    void empty(ModelledValue& value)
    {
        value.record() = NaiveRecord();
        value.hash.leaveBehind();
        value.isMovedFrom = false;
    }

    // @returns whether the assignment of an empty value has been dealt with
    bool isDone(ModelledValue& to, ModelledValue& from)
    {
        if (!from.record().isEmpty)
            return false;
        if (!to.record().isEmpty)
            empty(to);
        return true;
    }

    void assignRecord(ModelledValue& to, NaiveRecord&& record, const NaiveHash& hash)
    {
        const bool refresh =
            to.hash.state == NaiveHash::State::Known && hash.state != NaiveHash::State::Known;
        to.record() = std::move(record);
        to.isMovedFrom = false;
        to.hash.take(hash);
        if (refresh) {
            to.hash.value = madeHash(to.record());
            to.hash.state = NaiveHash::State::Known;
        }
    }

    NaiveComponents componentsOf(NaiveRecord& record)
    {
        const auto decoded = [](std::optional<NaiveComponent>& component) {
            return component ? std::optional(component->read(Encoding::Decoded)) : std::nullopt;
        };
        NaiveComponents result;
        result.texts[SCHEME] = record.scheme;
        result.texts[USER_INFO] = decoded(record.userInfo);
        result.texts[HOST] = decoded(record.host);
        result.texts[PATH] = record.pathText(Encoding::Decoded);
        if (record.hasQuery)
            result.texts[QUERY] = decoded(record.query);
        if (record.hasFragment)
            result.texts[FRAGMENT] = decoded(record.fragment);
        if (record.port)
            result.port = record.portNumber();
        result.formEncoded = record.formEncoded;
        return result;
    }

    NaiveArguments argumentsOf(const NaiveBag& bag)
    {
        NaiveArguments result;
        result.scheme = bag.texts[SCHEME];
        result.userInfo = bag.texts[USER_INFO];
        result.host = bag.texts[HOST];
        if (bag.port)
            result.port = static_cast<std::uint16_t>(*bag.port);
        result.path = bag.texts[PATH];
        result.query = bag.texts[QUERY];
        result.fragment = bag.texts[FRAGMENT];
        result.queryIsFormEncoded = bag.queryFormEncoded;
        result.queryHasEscapes = bag.queryHasEscapes;
        return result;
    }

} // namespace

void NaiveHash::take(const NaiveHash& other)
{
    state = other.state == State::Known ? State::Known : State::Unknown;
    value = other.value;
}

void NaiveHash::leaveBehind()
{
    if (state == State::Known)
        state = wasComputedHere ? State::LeftBehind : State::Unknown;
}

ModelledValuePointer emptyValue()
{
    return std::make_unique<ModelledValue>(
        ModelledValue{Specimen{IRI(), NaiveRecord(), ""}, {}, false});
}

ModelledValuePointer parsedValue(const std::string& utf8)
{
    return std::make_unique<ModelledValue>(ModelledValue{parsedSpecimen(utf8), {}, false});
}

ModelledValuePointer parsedFromUtf16(const std::u16string& utf16)
{
    return std::make_unique<ModelledValue>(ModelledValue{parsedSpecimen(utf16), {}, false});
}

ModelledValuePointer valueOf(Specimen&& specimen)
{
    return std::make_unique<ModelledValue>(ModelledValue{std::move(specimen), {}, false});
}

ModelledValuePointer copied(const ModelledValue& from)
{
    ModelledValuePointer result(
        new ModelledValue{Specimen{from.specimen.iri, from.specimen.record, ""}, {}, false});
    result->hash.take(from.hash);
    return result;
}

ModelledValuePointer moved(ModelledValue& from)
{
    ModelledValuePointer result(new ModelledValue{
        Specimen{std::move(from.specimen.iri), std::move(from.specimen.record), ""}, {}, false});
    result->hash.take(from.hash);
    empty(from);
    return result;
}

void assignCopy(ModelledValue& to, ModelledValue& from)
{
    to.iri() = from.iri();
    if (&to != &from && !isDone(to, from))
        assignRecord(to, NaiveRecord(from.record()), from.hash);
}

testing::AssertionResult assignMoved(ModelledValue& to, ModelledValue& from)
{
    to.iri() = std::move(from.iri());
    if (&to == &from || isDone(to, from))
        return testing::AssertionSuccess();
    assignRecord(to, NaiveRecord(from.record()), from.hash);
    from.isMovedFrom = true;
    Random none;
    return readsAlike(from.specimen, 0, none); // its predicates answer as before
}

void exchange(ModelledValue& left, ModelledValue& right)
{
    swap(left.iri(), right.iri());
    if (&left == &right)
        return;
    std::swap(left.specimen.record, right.specimen.record);
    NaiveHash mine;
    mine.take(left.hash);
    left.hash.take(right.hash);
    right.hash.take(mine);
}

testing::AssertionResult hashAlike(ModelledValue& value)
{
    return alike(
        "hash", [&] { return value.iri().hashValue(); }, [&] { return naiveHashValue(value); });
}

testing::AssertionResult compareAlike(ModelledValue& left, ModelledValue& right)
{
    auto result = alike(
        "==", [&] { return left.iri() == right.iri(); }, [&] { return naiveEqual(left, right); });
    if (result)
        result = alike(
            "!=", [&] { return left.iri() != right.iri(); },
            [&] { return naiveUnequal(left, right); });
    if (result)
        result = alike(
            "<", [&] { return left.iri() < right.iri(); }, [&] { return naiveLess(left, right); });
    return result;
}

testing::AssertionResult toArgsAlike(ModelledValue& value, TwinBag& bag)
{
    Outcomes outcomes;
    return failAlike([&] { value.iri().toArgs(bag.library); },
                     [&] { componentsOf(value.record()).toBag(bag.naive); }, outcomes);
}

testing::AssertionResult buildAlike(const TwinBag& bag, ModelledValuePointer& result)
{
    Outcomes outcomes;
    std::optional<IRI> value;
    auto alike = failAlike([&] { value.emplace(bag.library); },
                           [&] { NaiveBuilt naive(bag.naive); }, outcomes);
    if (alike && value)
        result = valueOf(Specimen{std::move(*value), built(argumentsOf(bag.naive)), ""});
    return alike;
}

} // namespace foundation::network::fuzz
