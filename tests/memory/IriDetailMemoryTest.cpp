// What IRIs and their bags stand on, in UTF-32: the texts of the components, and the two base classes.

#include "iri/StringPartsTesting.hpp"
#include "memory/Said.hpp"
#include "memory/Trial.hpp"

#include <foundation/network/iri/detail/ArgsBase.hpp>
#include <foundation/network/iri/detail/TemplateIRI.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

namespace foundation::network::iri {
namespace {

    using namespace tests;
    using test::components;
    using test::encodings;
    using test::Parts;
    using Bag = detail::ArgsBase<std::u32string>;
    using Value = detail::TemplateIRI<std::u32string>;
    using Operations = std::vector<Operation>;

    // Long enough that no text fits into a string object; with all that conversions look at.
    const std::u32string longText = U"a-name-of-some-length-%41%C3%A9-\u00FC\u4F8B-%zz";
    const std::u32string noText = longText + char32_t(0x110000);
    const std::u32string undecodable = U"a-name-of-some-length-%C0%80";

    // All that can be seen of an object.
    std::string seen(const Parts& parts);
    std::string seen(const Value& value);
    std::string seen(const Bag& bag);

    template <class Object>
    struct Specimen {
        const char* name;
        Object (*make)();
    };

    template <class Object>
    std::string seen(const std::pair<Object, Object>& both)
    {
        return seen(both.first) + "\n\n" + seen(both.second);
    }

    // An operation on each of some objects.
    template <class Object, std::size_t Count, class Run>
    void addForEach(Operations& operations, const std::string& name,
                    const Specimen<Object> (&specimens)[Count], Run run,
                    Guarantee guarantee = Guarantee::Strong)
    {
        for (const Specimen<Object>& specimen : specimens)
            operations.push_back(operation(
                name + ", " + specimen.name, specimen.make,
                [run](Object& object) { return said([&] { return run(object); }); },
                [](const Object& object) { return seen(object); }, guarantee));
    }

    // With a second object beside each.
    template <class Object, std::size_t Count, class Run>
    void addForEachPair(Operations& operations, const std::string& name,
                        const Specimen<Object> (&specimens)[Count], Run run,
                        Guarantee guarantee = Guarantee::Strong)
    {
        using Both = std::pair<Object, Object>;
        for (const Specimen<Object>& first : specimens)
            for (const Specimen<Object>& second : specimens)
                operations.push_back(operation(
                    name + ", " + first.name + ", " + second.name,
                    [&first, &second] { return Both(first.make(), second.make()); },
                    [run](Both& both) {
                        return said([&] { return run(both.first, both.second); });
                    },
                    [](const Both& both) { return seen(both); }, guarantee));
    }

    // The texts of the components.

    // Each form is that of a copy which nobody has read.
    std::string seen(const Parts& parts)
    {
        std::string result = bytesOf(parts.isEmpty()) + bytesOf(parts == Parts());
        const auto add = [&](auto read) {
            const Parts copy(parts);
            result += '\n' + said([&] { return read(copy); });
        };
        for (const Encoding form : {Encoding::Decoded, Encoding::Iri, Encoding::Ascii}) {
            for (const auto& component : components)
                add([&](const Parts& copy) { return component.get(copy, form); });
            add([&](const Parts& copy) { return copy.getAuthority(form); });
        }
        return result;
    }

    Parts partsOf(const std::u32string& text, Encoding encoding)
    {
        Parts parts;
        for (const auto& component : components)
            component.set(parts, text, encoding);
        return parts;
    }

    Parts readParts()
    {
        Parts parts = partsOf(longText + U"~", Encoding::Decoded);
        for (const Encoding form : encodings)
            for (const auto& component : components)
                component.get(parts, form);
        EXPECT_TRUE(parts == Parts(parts)); // so that they are hashed
        return parts;
    }

    const Specimen<Parts> allParts[] = {
        {"none", [] { return Parts(); }},
        {"plain", [] { return partsOf(longText, Encoding::Decoded); }},
        {"IRI", [] { return partsOf(longText, Encoding::Iri); }},
        {"read", &readParts},
        {"no code points", [] { return partsOf(noText, Encoding::Decoded); }},
        {"undecodable", [] { return partsOf(undecodable, Encoding::Ascii); }},
        {"without texts", [] { return partsOf(longText, Encoding{5}); }},
        {"of pairs",
         [] {
             Parts parts;
             parts.setPath(U"a-name-of-some-length:" + longText, Encoding::Decoded);
             parts.setQuery(U"a+" + longText + U" &", Encoding::Decoded, true);
             return parts;
         }},
    };

    TEST(StringPartsMemory, mayFailWhereverATextIsReadOrStored)
    {
        Operations operations;
        for (const Encoding encoding : encodings) {
            const std::string form = " in form " + std::to_string(static_cast<unsigned>(encoding));
            for (const auto& component : components) {
                addForEach(
                    operations, component.name + form, allParts,
                    [&component, encoding](Parts& parts) { return component.get(parts, encoding); },
                    Guarantee::Reading);
                addForEach(operations, std::string("set") + component.name + form, allParts,
                           [&component, encoding](Parts& parts) {
                               component.set(parts, longText + U"!", encoding);
                               return std::string();
                           });
            }
            addForEach(
                operations, "getAuthority" + form, allParts,
                [encoding](Parts& parts) { return parts.getAuthority(encoding); },
                Guarantee::Reading);
            addForEach(operations, "setQuery of pairs" + form, allParts, [encoding](Parts& parts) {
                parts.setQuery(longText + U"!", encoding, true);
                return std::string();
            });
        }
        expectSurvival(operations);
    }

    TEST(StringPartsMemory, mayFailWhereverTextsAreCopiedOrCompared)
    {
        Operations operations;
        addForEach(operations, "copy", allParts,
                   [](Parts& parts) { return Parts(parts) == Parts(); });
        addForEach(operations, "move", allParts, [](Parts& parts) {
            Parts taken(std::move(parts));
            parts = std::move(taken);
            return parts.isEmpty();
        });
        addForEach(operations, "setSchemePresent", allParts, [](Parts& parts) {
            parts.setSchemePresent(true);
            return std::string();
        });
        addForEach(operations, "reset", allParts, [](Parts& parts) {
            parts.reset();
            return parts.isEmpty();
        });
        addForEachPair(operations, "assignment", allParts, [](Parts& left, const Parts& right) {
            left = right;
            return left.isEmpty();
        });
        addForEachPair(operations, "swap", allParts, [](Parts& left, Parts& right) {
            left.swap(right);
            return left.isEmpty();
        });
        addForEachPair(
            operations, "==", allParts,
            [](const Parts& left, const Parts& right) { return left == right; },
            Guarantee::Reading);
        addForEachPair(
            operations, "!=", allParts,
            [](const Parts& left, const Parts& right) { return left != right; },
            Guarantee::Reading);
        expectSurvival(operations);
    }

    // The base of all values.

    using ReadForm = std::string (Value::*)(const Encoding&) const;

    // A copy is read, so that the value itself makes nothing; the copy has what the value has made.
    std::string seen(const Value& value)
    {
        const Value copy(value);
        std::string result;
        for (const bool holds :
             {copy.isEmpty(), copy.hasScheme(), copy.hasAuthority(), copy.hasQuery(),
              copy.hasFragment(), copy.hasAbsolutePath(), copy.isAbsolute(), copy.isOpaque(),
              copy.hasPort(), copy.hasHost(), copy.hasUserInfo()})
            result += holds ? '+' : '-';
        const auto add = [&result](auto read) { result += '\n' + said(read); };
        for (const ReadForm read :
             {&Value::getUserInfoUtf8, &Value::getHostUtf8, &Value::getPathUtf8,
              &Value::getQueryUtf8, &Value::getFragmentUtf8, &Value::toStringUtf8})
            for (const Encoding form : encodings)
                add([&] { return (copy.*read)(form); });
        add([&] { return copy.getSchemeUtf8(); });
        add([&] { return copy.getPortUtf8(); });
        add([&] { return std::to_string(copy.hashValue()); });
        return result;
    }

    Bag bagOf(const std::u32string& text)
    {
        Bag bag;
        bag.setScheme(U"a-scheme-of-some-length");
        bag.setUserInfo(text);
        bag.setHost(text);
        bag.setPort(8080);
        bag.setPath(U"/./" + text + U"/../x");
        bag.setQuery(text);
        bag.setFragment(text);
        return bag;
    }

    Bag bagOfPairs()
    {
        Bag bag = bagOf(longText);
        bag.appendQueryKeyValuePair(std::u16string(40, u'ü'), u"&", true, false);
        return bag;
    }

    Value parsed()
    {
        return Value(U"a-scheme-of-some-length://user-name@%\uFF21\uFF22-a-host-of-some-length:80/"
                     U"./x/../"
                     + longText + U"?" + longText + U"#" + longText);
    }

    const Specimen<Value> values[] = {
        {"none", [] { return Value(); }},
        {"parsed", &parsed},
        {"undecodable", [] { return Value(U"//" + undecodable + U"/" + undecodable); }},
        {"built", [] { return Value(bagOf(longText)); }},
        {"built of pairs", [] { return Value(bagOfPairs()); }},
        {"built of no code points", [] { return Value(bagOf(noText)); }},
        {"built and read",
         [] {
             Value value(bagOf(longText));
             value.toStringUtf8(Encoding::AsciiStrict);
             value.getHost(Encoding::Ascii);
             value.hashValue();
             return value;
         }},
    };

    TEST(TemplateIRIMemory, mayFailWhereverATextIsTaken)
    {
        Operations operations;
        for (const std::u32string& text :
             {std::u32string(U"http://\u00FC\u4F8B.example.org/a/path/of/some/length"),
              std::u32string(), U"/" + longText, noText, longText + U" ",
              std::u32string(U"//h:99999/a/path/of/some/length")}) {
            operations.push_back(operation(
                "constructor of UTF-32", [text] { return text; },
                [](std::u32string& from) {
                    return said([&] { return Value(from).toStringUtf8(Encoding::Iri); });
                },
                [](const std::u32string& from) { return bytesOf(from); }));
        }
        for (const std::string& text :
             {std::string("http://example.org/a/path/of/some/length"), std::string("a text")})
            operations.push_back(operation("tryRead of UTF-8", [text] {
                return said([&] { return Value().tryRead(text); });
            }));
        for (const std::u16string& text :
             {std::u16string(u"http://example.org/a/path/of/some/length"),
              std::u16string(u"a text")})
            operations.push_back(operation("tryRead of UTF-16", [text] {
                return said([&] { return Value().tryRead(text); });
            }));
        expectSurvival(operations);
    }

    TEST(TemplateIRIMemory, mayFailWhereverAValueIsReadOrMeetsAnother)
    {
        Operations operations;
        for (const Encoding form : encodings)
            for (const ReadForm read : {&Value::toStringUtf8, &Value::toAsciiStringUtf8})
                addForEach(
                    operations,
                    "toStringUtf8 in form " + std::to_string(static_cast<unsigned>(form)), values,
                    [read, form](Value& value) { return (value.*read)(form); }, Guarantee::Reading);
        addForEachPair(
            operations, "doResolve", values,
            [](const Value& value, const Value& base) {
                return value.doResolve(base).toStringUtf8(Encoding::Iri);
            },
            Guarantee::Reading);
        addForEachPair(
            operations, "doRelativise", values,
            [](const Value& value, const Value& base) {
                return value.doRelativise(base).toStringUtf8(Encoding::Iri);
            },
            Guarantee::Reading);
        expectSurvival(operations);
    }

    // The base of all bags.

    // Which lets out what is for those that are derived from it.
    struct Encoder : Bag {
        using Bag::percentEncodeFormEncodedReservedChars;
    };

    std::string seen(const Bag& bag)
    {
        return said([&] { return seen(Value(bag)); });
    }

    const Specimen<Bag> bags[] = {
        {"none", [] { return Bag(); }},
        {"some", [] { return bagOf(longText); }},
        {"of pairs", &bagOfPairs},
        {"no code points", [] { return bagOf(noText); }},
        {"others",
         [] {
             Bag bag = bagOf(longText + U"x");
             bag.setScheme(U"another-scheme-of-some-length");
             return bag;
         }},
    };

    struct Setter {
        const char* name;
        void (Bag::*utf32)(std::u32string);
    };

    constexpr Setter setters[] = {
        {"Scheme", &Bag::setScheme}, {"UserInfo", &Bag::setUserInfo},
        {"Host", &Bag::setHost},     {"Path", &Bag::setPath},
        {"Query", &Bag::setQuery},   {"Fragment", &Bag::setFragment},
    };

    TEST(ArgsBaseMemory, mayFailWhereverABagIsFilled)
    {
        Operations operations;
        for (const Setter& setter : setters)
            for (const std::u32string& text : {std::u32string(40, U'8'), noText})
                addForEach(operations, std::string("set") + setter.name, bags,
                           [&setter, text](Bag& bag) {
                               (bag.*setter.utf32)(text);
                               return std::string();
                           });
        for (const std::u32string& text :
             {std::u32string(40, U'0') + U"81", std::u32string(40, U'8'), std::u32string(40, U'x')})
            addForEach(operations, "setPort", bags, [text](Bag& bag) {
                bag.setPort(text);
                return std::string();
            });
        expectSurvival(operations);
    }

    TEST(ArgsBaseMemory, mayFailWhereverABagIsCopiedOrBuilt)
    {
        Operations operations;
        addForEach(operations, "copy", bags,
                   [](Bag& bag) { return Value(Bag(bag)).toStringUtf8(Encoding::Iri); });
        addForEach(operations, "build", bags,
                   [](Bag& bag) { return Value(bag).toAsciiStringUtf8(Encoding::Ascii); });
        addForEachPair(operations, "assignment", bags, [](Bag& left, const Bag& right) {
            left = right;
            return std::string();
        });
        for (const auto& specimen : values)
            addForEach(operations, std::string("toArgs, ") + specimen.name, bags,
                       [&specimen](Bag& bag) {
                           const Value value = specimen.make();
                           value.toArgs(bag);
                           return std::string();
                       });
        for (const bool semicolon : {false, true}) {
            operations.push_back(operation("percentEncodeFormEncodedReservedChars", [semicolon] {
                return std::get<0>(Encoder().percentEncodeFormEncodedReservedChars(
                    std::string(40, '+') + "&;", semicolon));
            }));
            operations.push_back(operation("the same of UTF-16", [semicolon] {
                return bytesOf(std::get<0>(Encoder().percentEncodeFormEncodedReservedChars(
                    std::u16string(40, u'+') + u"&;", semicolon)));
            }));
        }
        expectSurvival(operations);
    }

    TEST(ArgsBaseMemory, isNotAskedForWhereAPortIsRead)
    {
        for (const std::u32string& text :
             {std::u32string(40, U'0') + U"81", std::u32string(40, U'8'), std::u32string(40, U'x'),
              std::u32string(U"81x"), std::u32string()}) {
            unsigned short expected = 7;
            const bool isNumber = detail::portStringToNumeric(text, expected);
            unsigned short number = 7;
            bool again = false;
            bool hasFailed = false;
            {
                const FailingMemory memory(1, Shortage::FromOneOn);
                again = detail::portStringToNumeric(text, number);
                hasFailed = FailingMemory::hasFailed();
            }
            EXPECT_EQ(again, isNumber);
            EXPECT_EQ(number, expected);
            EXPECT_FALSE(hasFailed);
        }
    }

} // namespace
} // namespace foundation::network::iri
