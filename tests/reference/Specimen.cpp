#include "reference/Specimen.hpp"

#include "build/NaiveText.hpp"
#include "iri/NaiveCoding.hpp"
#include "reference/NaiveReference.hpp"
#include "text/Failure.hpp"

#include <foundation/network/IRIArgs.hpp>

#include <optional>
#include <sstream>
#include <utility>

namespace foundation::network::tests {

namespace {

    using Encoding = IRI::Encoding;
    using Record = NaiveRecord;
    using Slot = std::optional<NaiveComponent> Record::*;

    std::string utf8(const Text& text)
    {
        std::string result;
        for (const char32_t c : text)
            result += writeUtf8(c);
        return result;
    }

    // What was read as UTF-16.
    std::string utf8(const std::u16string& text)
    {
        return utf8(fromUtf16(text));
    }

    // The result of a reading, or its failure in words.
    template <class Read>
    std::string said(Read read)
    {
        std::string text;
        const auto failure = failureOf([&] { text = read(); });
        if (!failure)
            return '"' + text + '"';
        std::ostringstream words;
        words << *failure;
        return words.str();
    }

    [[noreturn]] void missing(const std::string& message)
    {
        throw core::except::AnonymousInternalException<std::runtime_error>(
            std::runtime_error(message));
    }

    enum class Fix { None, Escapes, EscapesAndBrackets };

    Text readComponent(Record& record, Slot slot, const char* name, Fix fix, Encoding form)
    {
        if (!(record.*slot))
            missing(std::string("Item not set: ") + name);
        const Text& text = (record.*slot)->read(form);
        const bool isStrict = form == Encoding::IriStrict || form == Encoding::AsciiStrict;
        return isStrict && fix != Fix::None
                   ? iri::naive::fixEscapes(text, fix == Fix::EscapesAndBrackets)
                   : text;
    }

    struct FormReading {
        const char* name;
        std::string (IRI::*readUtf8)(const Encoding&) const;
        std::u16string (IRI::*readUtf16)(const Encoding&) const;
        Text (*readModel)(Record&, Encoding);
    };

    const FormReading formReadings[] = {
        {"user information", &IRI::getUserInfoUtf8, &IRI::getUserInfo,
         [](Record& record, Encoding form) {
             return readComponent(record, &Record::userInfo, "UserInfo", Fix::None, form);
         }},
        {"host", &IRI::getHostUtf8, &IRI::getHost,
         [](Record& record, Encoding form) {
             return readComponent(record, &Record::host, "Host", Fix::Escapes, form);
         }},
        {"path", &IRI::getPathUtf8, &IRI::getPath,
         [](Record& record, Encoding form) {
             return readComponent(record, &Record::path, "Path", Fix::EscapesAndBrackets, form);
         }},
        {"query", &IRI::getQueryUtf8, &IRI::getQuery,
         [](Record& record, Encoding form) {
             return readComponent(record, &Record::query, "Query", Fix::EscapesAndBrackets, form);
         }},
        {"fragment", &IRI::getFragmentUtf8, &IRI::getFragment,
         [](Record& record, Encoding form) {
             return readComponent(record, &Record::fragment, "Fragment", Fix::EscapesAndBrackets,
                                  form);
         }},
        {"authority", &IRI::getAuthorityUtf8, &IRI::getAuthority,
         [](Record& record, Encoding form) {
             if (!record.host)
                 missing("Item not set: Host: Host (in getAuthority)");
             return record.authority(form);
         }},
        {"scheme-specific part", &IRI::getSchemeSpecificPartUtf8, &IRI::getSchemeSpecificPart,
         [](Record& record, Encoding form) {
             if (!record.path)
                 missing("Item not set: Path");
             return record.schemeSpecificPart(form);
         }},
    };

    constexpr Encoding forms[] = {Encoding::Decoded, Encoding::Iri, Encoding::IriStrict,
                                  Encoding::Ascii, Encoding::AsciiStrict};
    constexpr const char* formNames[] = {"decoded", "IRI", "strict IRI", "ASCII", "strict ASCII"};

    struct PlainReading {
        const char* name;
        std::string (*readUtf8)(const IRI&);
        std::u16string (*readUtf16)(const IRI&); // but for what is no text
        std::string (*readModel)(Record&);
    };

    std::string orMissing(const std::optional<Text>& text, const char* message)
    {
        if (!text)
            missing(message);
        return utf8(*text);
    }

    const PlainReading plainReadings[] = {
        {"text", [](const IRI& iri) { return iri.toStringUtf8(); },
         [](const IRI& iri) { return iri.toString(); },
         [](Record& record) { return utf8(record.whole(Encoding::Iri)); }},
        {"strict text", [](const IRI& iri) { return iri.toStringUtf8(true); },
         [](const IRI& iri) { return iri.toString(true); },
         [](Record& record) { return utf8(record.whole(Encoding::IriStrict)); }},
        {"ASCII text", [](const IRI& iri) { return iri.toAsciiStringUtf8(); },
         [](const IRI& iri) { return iri.toAsciiString(); },
         [](Record& record) { return utf8(record.whole(Encoding::Ascii)); }},
        {"strict ASCII text", [](const IRI& iri) { return iri.toAsciiStringUtf8(true); },
         [](const IRI& iri) { return iri.toAsciiString(true); },
         [](Record& record) { return utf8(record.whole(Encoding::AsciiStrict)); }},
        {"scheme", [](const IRI& iri) { return iri.getSchemeUtf8(); },
         [](const IRI& iri) { return iri.getScheme(); },
         [](Record& record) { return orMissing(record.scheme, "No scheme"); }},
        {"port", [](const IRI& iri) { return iri.getPortUtf8(); },
         [](const IRI& iri) { return iri.getPort(); },
         [](Record& record) { return orMissing(record.port, "No port"); }},
        {"port number", [](const IRI& iri) { return std::to_string(iri.getPortNumber()); }, nullptr,
         [](Record& record) {
             orMissing(record.port, "No port");
             return std::to_string(record.portNumber());
         }},
    };

    std::string predicates(const IRI& iri)
    {
        const std::pair<const char*, bool> all[] = {
            {"isEmpty", iri.isEmpty()},
            {"hasScheme", iri.hasScheme()},
            {"hasAuthority", iri.hasAuthority()},
            {"hasUserInfo", iri.hasUserInfo()},
            {"hasHost", iri.hasHost()},
            {"hasPort", iri.hasPort()},
            {"hasQuery", iri.hasQuery()},
            {"hasFragment", iri.hasFragment()},
            {"hasAbsolutePath", iri.hasAbsolutePath()},
            {"isAbsolute", iri.isAbsolute()},
            {"isOpaque", iri.isOpaque()},
        };
        std::string result;
        for (const auto& [name, holds] : all)
            result += holds ? std::string(" ") + name : "";
        return result;
    }

    std::string predicates(const Record& record)
    {
        const std::pair<const char*, bool> all[] = {
            {"isEmpty", record.isEmpty},
            {"hasScheme", record.scheme.has_value()},
            {"hasAuthority", record.hasAuthority},
            {"hasUserInfo", record.userInfo.has_value()},
            {"hasHost", record.host.has_value()},
            {"hasPort", record.port.has_value()},
            {"hasQuery", record.hasQuery},
            {"hasFragment", record.hasFragment},
            {"hasAbsolutePath", record.hasAbsolutePath},
            {"isAbsolute", record.isAbsolute},
            {"isOpaque", record.isOpaque},
        };
        std::string result;
        for (const auto& [name, holds] : all)
            result += holds ? std::string(" ") + name : "";
        return result;
    }

    testing::AssertionResult differ(const std::string& origin, const std::string& what,
                                    const std::string& ours, const std::string& expected)
    {
        return testing::AssertionFailure() << origin << "\n  " << what << "\n    library  " << ours
                                           << "\n    expected " << expected;
    }

    template <class Operation, class Model>
    Outcome both(const std::string& origin, Operation operation, Model model)
    {
        // Never assigned: assigning an empty value to another changes nothing.
        std::optional<IRI> value;
        std::optional<Record> record;
        const std::string ours = said([&] {
            value.emplace(operation());
            return std::string("a value");
        });
        const std::string expected = said([&] {
            record.emplace(model());
            return std::string("a value");
        });
        if (ours != expected)
            return {differ(origin, "outcome", ours, expected), std::nullopt};
        if (!value)
            return {testing::AssertionSuccess(), std::nullopt};
        return {testing::AssertionSuccess(),
                Specimen{std::move(*value), std::move(*record), "(" + origin + ")"}};
    }

} // namespace

Specimen parsedSpecimen(const std::string& text)
{
    return {IRI(text), parsed(readUtf8(text).value()), '<' + text + '>'};
}

Specimen parsedSpecimen(const std::u16string& text)
{
    return {IRI(text), parsed(fromUtf16(text)), "UTF-16 <" + utf8(text) + '>'};
}

Specimen builtSpecimen(const NaiveArguments& arguments)
{
    IRIArgs args;
    std::string origin = "built(";
    const auto give = [&](const std::optional<Text>& text, const char* name, auto set) {
        if (text) {
            (args.*set)(utf8(*text));
            origin += std::string(" ") + name + "=<" + utf8(*text) + '>';
        }
    };
    using Set = IRIArgs& (IRIArgs::*)(const std::string&);
    give(arguments.scheme, "scheme", Set(&IRIArgs::setScheme));
    give(arguments.userInfo, "userInfo", Set(&IRIArgs::setUserInfo));
    give(arguments.host, "host", Set(&IRIArgs::setHost));
    if (arguments.port) {
        args.setPort(*arguments.port);
        origin += " port=" + std::to_string(*arguments.port);
    }
    give(arguments.path, "path", Set(&IRIArgs::setPath));
    // The flags of a pair stay when its text is replaced.
    if (arguments.queryIsFormEncoded || arguments.queryHasEscapes) {
        const char* const value = arguments.queryHasEscapes ? "=" : "";
        args.appendQueryKeyValuePair(std::string("k"), value, arguments.queryIsFormEncoded, false);
        args.clearQuery();
        origin += arguments.queryIsFormEncoded ? " formEncoded" : "";
        origin += arguments.queryHasEscapes ? " hasEscapes" : "";
    }
    give(arguments.query, "query", Set(&IRIArgs::setQuery));
    give(arguments.fragment, "fragment", Set(&IRIArgs::setFragment));
    return {IRI(args), built(arguments), origin + " )"};
}

std::size_t below(std::size_t bound, Random& random)
{
    return static_cast<std::size_t>(random() % bound);
}

testing::AssertionResult readsAlike(Specimen& specimen, std::size_t count, Random& random)
{
    const std::string ours = predicates(specimen.iri);
    const std::string expected = predicates(specimen.record);
    if (ours != expected)
        return differ(specimen.origin, "predicates", ours, expected);

    constexpr std::size_t formCount = std::size(forms);
    constexpr std::size_t formTotal = std::size(formReadings) * formCount;
    for (std::size_t i = 0; i < count; ++i) {
        const std::size_t draw = below(2 * (formTotal + 2 * std::size(plainReadings)), random);
        const std::size_t drawn = draw / 2;
        const bool isUtf16 = draw % 2 != 0;
        std::string what;
        std::string read;
        std::string expectedText;
        if (drawn < formTotal) {
            const FormReading& reading = formReadings[drawn / formCount];
            const Encoding form = forms[drawn % formCount];
            what = std::string(reading.name) + ", " + formNames[drawn % formCount];
            read = said([&] {
                return isUtf16 ? utf8((specimen.iri.*reading.readUtf16)(form))
                               : (specimen.iri.*reading.readUtf8)(form);
            });
            expectedText = said([&] { return utf8(reading.readModel(specimen.record, form)); });
        } else {
            const PlainReading& reading = plainReadings[(drawn - formTotal) / 2];
            what = reading.name;
            read = said([&] {
                return isUtf16 && reading.readUtf16 ? utf8(reading.readUtf16(specimen.iri))
                                                    : reading.readUtf8(specimen.iri);
            });
            expectedText = said([&] { return reading.readModel(specimen.record); });
        }
        if (read != expectedText)
            return differ(specimen.origin, what + (isUtf16 ? ", in UTF-16" : ""), read,
                          expectedText);
    }
    return testing::AssertionSuccess();
}

Outcome resolve(Specimen& reference, Specimen& base)
{
    return both(
        "resolve " + reference.origin + " against " + base.origin,
        [&] { return reference.iri.resolveAgainst(base.iri); },
        [&] { return naiveResolve(reference.record, base.record); });
}

Outcome relativise(Specimen& iri, Specimen& base)
{
    return both(
        "make " + iri.origin + " relative to " + base.origin,
        [&] { return iri.iri.makeRelativeTo(base.iri); },
        [&] { return naiveRelativise(iri.record, base.record); });
}

} // namespace foundation::network::tests
