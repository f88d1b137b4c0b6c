#include <foundation/network/IRI.hpp>

#include "iri/IriGenerator.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>
#include <rapidcheck/gtest.h>

#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {

namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    constexpr Encoding forms[] = {Encoding::Decoded, Encoding::Iri, Encoding::IriStrict,
                                  Encoding::Ascii, Encoding::AsciiStrict};

    using Text = std::optional<std::string>; // nothing: the reader threw

    template <class Read>
    Text textOrNothing(Read read)
    {
        try {
            return read();
        } catch (const std::exception&) {
            return std::nullopt;
        }
    }

    using Reading = std::function<Text(const IRI&)>;

    // Every reading of a text, but for the whole ASCII ones: the plain one depends on whether the
    // strict one was read before.
    std::vector<Reading> readingsWithoutMemory()
    {
        std::vector<Reading> result;
        for (const Encoding form : forms)
            for (const auto member : {&IRI::getUserInfoUtf8, &IRI::getHostUtf8,
                                      &IRI::getAuthorityUtf8, &IRI::getPathUtf8, &IRI::getQueryUtf8,
                                      &IRI::getFragmentUtf8, &IRI::getSchemeSpecificPartUtf8})
                result.emplace_back([form, member](const IRI& iri) {
                    return textOrNothing([&] { return (iri.*member)(form); });
                });
        for (const auto member : {&IRI::getSchemeUtf8, &IRI::getPortUtf8})
            result.emplace_back([member](const IRI& iri) {
                return textOrNothing([&] { return (iri.*member)(); });
            });
        for (const bool strict : {false, true})
            result.emplace_back([strict](const IRI& iri) { return iri.toStringUtf8(strict); });
        result.emplace_back([](const IRI& iri) { return std::to_string(iri.hashValue()); });
        return result;
    }

    std::vector<Reading> allReadings()
    {
        std::vector<Reading> result = readingsWithoutMemory();
        for (const bool strict : {false, true})
            result.emplace_back([strict](const IRI& iri) { return iri.toAsciiStringUtf8(strict); });
        return result;
    }

    std::vector<Text> readAll(const IRI& iri)
    {
        std::vector<Text> result;
        for (const Reading& reading : allReadings())
            result.push_back(reading(iri));
        return result;
    }

    // What readAll gives for a value that nobody has read yet.
    std::vector<Text> readAll(const std::string& text)
    {
        return readAll(IRI(text));
    }

    // A value of which some things have been read.
    IRI somewhatRead(const std::string& text)
    {
        IRI iri(text);
        const auto isRead =
            *rc::gen::arbitrary<std::uint64_t>() & *rc::gen::arbitrary<std::uint64_t>();
        const std::vector<Reading> readings = readingsWithoutMemory();
        for (std::size_t i = 0; i < readings.size(); ++i)
            if ((isRead >> (i % 64) & 1) != 0)
                readings[i](iri);
        return iri;
    }

    Text modelOf(const std::optional<std::string>& component, Encoding form, bool isRepaired,
                 bool brackets)
    {
        const Text text = component ? converted(*component, form) : std::nullopt;
        const bool strict = form == Encoding::IriStrict || form == Encoding::AsciiStrict;
        return text && strict && isRepaired ? repaired(*text, brackets) : text;
    }

    std::optional<IRI> parsed(const std::string& text)
    {
        try {
            return IRI(text);
        } catch (const std::logic_error&) {
            return std::nullopt;
        }
    }

    std::string print(const IRI& iri, Encoding form)
    {
        const bool strict = form == Encoding::IriStrict || form == Encoding::AsciiStrict;
        const bool ascii = form == Encoding::Ascii || form == Encoding::AsciiStrict;
        return ascii ? iri.toAsciiStringUtf8(strict) : iri.toStringUtf8(strict);
    }

} // namespace

RC_GTEST_PROP(IRIProperty, whatParsesPrintsAsItCame, ())
{
    const std::string text = *iriReferences();
    RC_ASSERT(IRI(text).toStringUtf8() == text);
    RC_ASSERT(IRI(text).toString() == utf16(text));
    RC_ASSERT(IRI(utf16(text)).toStringUtf8() == text);
    RC_ASSERT(IRI(utf16(text)).toString() == utf16(text));
}

RC_GTEST_PROP(IRIProperty, componentsAreThoseOfTheNaiveReading, ())
{
    const std::string text = *iriReferences();
    const NaiveIri naive(text);
    const IRI iri(text);
    for (const Encoding form : forms) {
        const auto read = [&iri, form](auto member) {
            return textOrNothing([&] { return (iri.*member)(form); });
        };
        RC_ASSERT(read(&IRI::getUserInfoUtf8) == modelOf(naive.userInfo, form, false, false));
        RC_ASSERT(read(&IRI::getHostUtf8) == modelOf(naive.host, form, true, false));
        RC_ASSERT(read(&IRI::getPathUtf8) == modelOf(naive.path, form, true, true));
        RC_ASSERT(read(&IRI::getQueryUtf8) == modelOf(naive.query, form, true, true));
        RC_ASSERT(read(&IRI::getFragmentUtf8) == modelOf(naive.fragment, form, true, true));
        if (naive.host && read(&IRI::getUserInfoUtf8).has_value() == naive.userInfo.has_value()
            && read(&IRI::getHostUtf8))
            RC_ASSERT(read(&IRI::getAuthorityUtf8) == naive.authority(form));
    }
    RC_ASSERT(iri.hasScheme() == naive.scheme.has_value());
    RC_ASSERT(iri.hasAuthority() == naive.host.has_value());
    RC_ASSERT(iri.hasUserInfo() == naive.userInfo.has_value());
    RC_ASSERT(iri.hasPort() == naive.port.has_value());
    RC_ASSERT(iri.hasQuery() == naive.query.has_value());
    RC_ASSERT(iri.hasFragment() == naive.fragment.has_value());
    RC_ASSERT(textOrNothing([&] { return iri.getSchemeUtf8(); }) == naive.scheme);
    RC_ASSERT(textOrNothing([&] { return iri.getPortUtf8(); }) == naive.port);
    RC_ASSERT(iri.hashValue() == (text.empty() ? 0 : naiveHash(text)));
}

RC_GTEST_PROP(IRIProperty, wholeTextsAreThoseOfTheNaivePrinter, ())
{
    const std::string text = *iriReferences();
    const NaiveIri naive(text);
    for (const Encoding form :
         {Encoding::Iri, Encoding::IriStrict, Encoding::Ascii, Encoding::AsciiStrict})
        RC_ASSERT(print(IRI(text), form) == naive.print(form));
    const IRI iri(text);
    iri.toAsciiString(true);
    RC_ASSERT(iri.toAsciiStringUtf8() == naive.print(Encoding::Ascii, Encoding::AsciiStrict));
}

RC_GTEST_PROP(IRIProperty, printedAndParsedAgainIsTheSameInEachForm, ())
{
    const std::string text = *iriReferences();
    const IRI iri(text);
    for (const Encoding form :
         {Encoding::Iri, Encoding::IriStrict, Encoding::Ascii, Encoding::AsciiStrict}) {
        const std::string printed = print(IRI(text), form);
        const std::optional<IRI> again = parsed(printed);
        if (!again) {
            // A full-width escape of user information or host, plain in ASCII, is none any more; a
            // literal that is not ASCII knows no escapes.
            RC_ASSERT(form == Encoding::Ascii || form == Encoding::AsciiStrict);
            RC_ASSERT(iri.hasHost());
            continue;
        }
        RC_ASSERT(print(*again, form) == printed);
        const IRI twice(print(*again, form));
        RC_ASSERT(twice == *again);
        RC_ASSERT(twice.hashValue() == again->hashValue());
        RC_ASSERT((*again == iri) == (printed == text));
        // Nothing that is printed changes what the IRI denotes.
        const auto decodedPath = [](const IRI& of) {
            return textOrNothing([&] { return of.getPathUtf8(Encoding::Decoded); });
        };
        const auto decodedQuery = [](const IRI& of) {
            return textOrNothing([&] { return of.getQueryUtf8(Encoding::Decoded); });
        };
        RC_ASSERT(decodedPath(*again) == decodedPath(iri));
        RC_ASSERT(decodedQuery(*again) == decodedQuery(iri));
        RC_ASSERT(again->hasFragment() == iri.hasFragment());
    }
    RC_ASSERT(IRI(iri.toString()) == iri);
    RC_ASSERT(IRI(iri.toString()).hashValue() == iri.hashValue());
}

RC_GTEST_PROP(IRIProperty, strictTextsAreAlwaysIris, ())
{
    const IRI iri(*iriReferences());
    RC_ASSERT(parsed(iri.toStringUtf8(true)).has_value());
}

RC_GTEST_PROP(IRIProperty, orderOfReadingDoesNotMatter, ())
{
    const std::string text = *iriReferences();
    const std::vector<Reading> readings = readingsWithoutMemory();
    std::vector<std::size_t> order(readings.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = i;
    // Swapping each place with a random other one makes any order possible.
    for (std::size_t& place : order)
        std::swap(place, order[*rc::gen::inRange<std::size_t>(0, order.size())]);

    const IRI iri(text);
    for (const std::size_t i : order)
        RC_ASSERT(readings[i](iri) == readings[i](IRI(text)));
    RC_ASSERT(readAll(iri) == readAll(text));
}

RC_GTEST_PROP(IRIProperty, copiesAndMovesAnswerAsTheOriginal, ())
{
    const std::string text = *iriReferences();
    const std::vector<Text> expected = readAll(text);
    IRI original = somewhatRead(text);
    const IRI copy(original);
    RC_ASSERT(readAll(copy) == expected);
    IRI moved(std::move(original));
    RC_ASSERT(original.isEmpty()); // NOLINT(bugprone-use-after-move)
    RC_ASSERT(moved == copy);
    const IRI copyOfMoved(moved);
    RC_ASSERT(readAll(copyOfMoved) == expected);
    RC_ASSERT(readAll(moved) == expected);
}

RC_GTEST_PROP(IRIProperty, assignmentTakesOneValueAndLeavesNothingOfTheOther, ())
{
    const std::string text = *rc::gen::suchThat(iriReferences(), [](const std::string& some) {
        return !some.empty(); // assigning an empty value has rules of its own
    });
    const std::vector<Text> expected = readAll(text);
    const bool byMove = *rc::gen::arbitrary<bool>();
    IRI source = somewhatRead(text);
    IRI target = somewhatRead(*iriReferences());
    if (byMove)
        target = std::move(source);
    else
        target = source;
    RC_ASSERT(readAll(target) == expected);
    if (!byMove)
        RC_ASSERT(readAll(source) == expected);
}

RC_GTEST_PROP(IRIProperty, swapExchangesAllThatIsRead, ())
{
    const std::string leftText = *iriReferences();
    const std::string rightText = *iriReferences();
    IRI left = somewhatRead(leftText);
    IRI right = somewhatRead(rightText);
    left.swap(right);
    RC_ASSERT(readAll(left) == readAll(rightText));
    RC_ASSERT(readAll(right) == readAll(leftText));
}

RC_GTEST_PROP(IRIProperty, componentsPutTogetherGiveTheText, ())
{
    const std::string text = *iriReferences();
    const IRI iri(text);
    std::string whole = iri.hasScheme() ? iri.getSchemeUtf8() + ":" : "";
    if (iri.hasAuthority())
        whole += "//" + (iri.hasUserInfo() ? iri.getUserInfoUtf8() + "@" : "") + iri.getHostUtf8()
                 + (iri.hasPort() ? ":" + iri.getPortUtf8() : "");
    whole += iri.getPathUtf8() + (iri.hasQuery() ? "?" + iri.getQueryUtf8() : "");
    RC_ASSERT((iri.hasScheme() ? iri.getSchemeUtf8() + ":" : "") + iri.getSchemeSpecificPartUtf8()
              == whole);
    whole += iri.hasFragment() ? "#" + iri.getFragmentUtf8() : "";
    RC_ASSERT(whole == text);
}

RC_GTEST_PROP(IRIProperty, failuresLeaveTheValueAsItWas, ())
{
    const std::string text = *iriReferences();
    IRI iri = somewhatRead(text);
    const std::string bad = *rc::gen::element<std::string>(" ", "\xFF", "{", "a\tb", "\u0080");
    RC_ASSERT_THROWS(iri = IRI(text + bad));
    RC_ASSERT_THROWS(iri = IRI(bad + text));
    for (const Reading& reading : readingsWithoutMemory())
        reading(iri); // some of them fail
    RC_ASSERT(readAll(iri) == readAll(text));
}

RC_GTEST_PROP(IRIProperty, orderAndEqualityAreThoseOfTheCodePoints, ())
{
    const std::string left = *iriReferences();
    const std::string right = *rc::gen::oneOf(iriReferences(), rc::gen::just(left));
    const IRI a = somewhatRead(left);
    const IRI b = somewhatRead(right);
    RC_ASSERT((a == b) == (left == right));
    RC_ASSERT((a != b) == (left != right));
    RC_ASSERT((a < b) == (codePoints(left) < codePoints(right)));
    RC_ASSERT((b < a) == (codePoints(right) < codePoints(left)));
}

} // namespace foundation::network
