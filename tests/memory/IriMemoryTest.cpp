// IRIs, the bags that they are built from, and what reads texts beside them.

#include "memory/Said.hpp"
#include "memory/Trial.hpp"

#include "text/Utf.hpp"

#include <foundation/network/IRI.hpp>
#include <foundation/network/IRIArgs.hpp>
#include <foundation/network/iri/Diagnosis.hpp>
#include <foundation/network/iri/IRIView.hpp>
#include <foundation/network/iri/QueryPairs.hpp>

#include <gtest/gtest.h>

#include <cstddef>
#include <initializer_list>
#include <optional>
#include <sstream>
#include <string>
#include <utility>
#include <vector>

namespace foundation::network {
namespace {

    using namespace tests;
    using Encoding = IRI::Encoding;

    constexpr Encoding forms[] = {Encoding::Decoded, Encoding::Iri, Encoding::IriStrict,
                                  Encoding::Ascii, Encoding::AsciiStrict};

    using ReadForm = std::string (IRI::*)(const Encoding&) const;
    using ReadWideForm = std::u16string (IRI::*)(const Encoding&) const;
    using ReadWhole = std::string (IRI::*)(bool) const;
    using ReadWideWhole = std::u16string (IRI::*)(bool) const;

    struct FormReader {
        const char* name;
        ReadForm read;
        ReadWideForm readWide;
    };

    constexpr FormReader formReaders[] = {
        {"getUserInfo", &IRI::getUserInfoUtf8, &IRI::getUserInfo},
        {"getHost", &IRI::getHostUtf8, &IRI::getHost},
        {"getAuthority", &IRI::getAuthorityUtf8, &IRI::getAuthority},
        {"getPath", &IRI::getPathUtf8, &IRI::getPath},
        {"getQuery", &IRI::getQueryUtf8, &IRI::getQuery},
        {"getFragment", &IRI::getFragmentUtf8, &IRI::getFragment},
        {"getSchemeSpecificPart", &IRI::getSchemeSpecificPartUtf8, &IRI::getSchemeSpecificPart},
    };

    struct WholeReader {
        const char* name;
        ReadWhole read;
        ReadWideWhole readWide;
    };

    constexpr WholeReader wholeReaders[] = {
        {"toString", &IRI::toStringUtf8, &IRI::toString},
        {"toAsciiString", &IRI::toAsciiStringUtf8, &IRI::toAsciiString},
    };

    // All that can be seen of a value. A copy is read, so that the value itself makes nothing; the
    // copy has what the value has made.
    std::string seen(const IRI& value)
    {
        const IRI iri(value);
        std::string result;
        for (const bool holds : {iri.isEmpty(), iri.hasScheme(), iri.hasAuthority(), iri.hasQuery(),
                                 iri.hasFragment(), iri.hasAbsolutePath(), iri.isAbsolute(),
                                 iri.isOpaque(), iri.hasPort(), iri.hasHost(), iri.hasUserInfo()})
            result += holds ? '+' : '-';
        const auto add = [&result](const std::string& text) { result += '\n' + text; };
        for (const WholeReader& reader : wholeReaders)
            for (const bool strict : {false, true})
                add(said([&] { return (iri.*reader.read)(strict); }));
        for (const FormReader& reader : formReaders)
            for (const Encoding form : forms)
                add(said([&] { return (iri.*reader.read)(form); }));
        add(said([&] { return iri.getSchemeUtf8(); }));
        add(said([&] { return iri.getPortUtf8(); }));
        add(said([&] { return std::to_string(iri.hashValue()); }));
        return result;
    }

    std::string seen(const IRIArgs& args)
    {
        return said([&] { return seen(IRI(args)); });
    }

    template <class First, class Second>
    std::string seen(const std::pair<First, Second>& both)
    {
        return seen(both.first) + "\n\n" + seen(both.second);
    }

    // Long enough that no text fits into a string object; with all that conversions look at.
    const std::string longName = "a-name-of-some-length-%41%C3%A9-ü例-%zz";

    std::string longIri()
    {
        return "a-scheme-of-some-length://user-" + longName.substr(0, 31)
               + "@ü例%ＡＢ-a-host-of-some-length:" + std::string(30, '0') + "80/./" + longName
               + "/../x?" + longName + "#" + longName;
    }

    IRIArgs longBag()
    {
        IRIArgs args;
        args.setScheme("a-scheme-of-some-length").setUserInfo(longName).setHost(longName);
        args.setPort(8080).setPath("/./" + longName + "/../x").setFragment(longName);
        return args.appendQueryKeyValuePair(longName + "&", longName, false, false);
    }

    struct Specimen {
        const char* name;
        IRI (*make)();
    };

    const Specimen specimens[] = {
        {"parsed", [] { return IRI(longIri()); }},
        {"parsed and read",
         [] {
             IRI iri(longIri());
             iri.toAsciiString(true);
             iri.getPath(Encoding::Decoded);
             iri.getQuery(Encoding::Ascii);
             iri.hashValue();
             return iri;
         }},
        {"parsed ASCII",
         [] {
             return IRI(
                 std::string("http://example.org/a/path/of/some/length?and=a+query+of+some"));
         }},
        {"not to be decoded",
         [] { return IRI(std::string("//%C0%80@%C0%80/%C0%80?%C0%80#%C0%80")); }},
        {"empty", [] { return IRI(); }},
        {"empty text", [] { return IRI(std::string()); }},
        {"built", [] { return IRI(longBag()); }},
        {"built and read",
         [] {
             IRI iri(longBag());
             iri.toAsciiString(true);
             iri.getHost(Encoding::Ascii);
             iri.hashValue();
             return iri;
         }},
        {"resolved",
         [] {
             return IRI(std::string("../%41-another-path-of-some-length?%41"))
                 .resolveAgainst(IRI(longIri()));
         }},
        {"copy of its base", [] { return IRI(std::string()).resolveAgainst(IRI(longIri())); }},
    };

    using Operations = std::vector<Operation>;

    template <class Run>
    void addForEach(Operations& operations, const std::string& name, Run run,
                    Guarantee guarantee = Guarantee::Reading)
    {
        for (const Specimen& specimen : specimens)
            operations.push_back(operation(
                name + ", " + specimen.name, specimen.make,
                [run](IRI& iri) { return said([&] { return run(iri); }); },
                [](const IRI& iri) { return seen(iri); }, guarantee));
    }

    // With a second value beside each.
    template <class Run>
    void addForEachPair(Operations& operations, const std::string& name, Run run,
                        Guarantee guarantee)
    {
        for (const Specimen& first : specimens)
            for (const Specimen& second : specimens)
                operations.push_back(operation(
                    name + ", " + first.name + ", " + second.name,
                    [&first, &second] { return std::pair(first.make(), second.make()); },
                    [run](std::pair<IRI, IRI>& both) {
                        return said([&] { return run(both.first, both.second); });
                    },
                    [](const std::pair<IRI, IRI>& both) { return seen(both); }, guarantee));
    }

    TEST(IriMemory, mayFailWhereverATextIsTaken)
    {
        Operations operations;
        for (const std::string& text :
             {longIri(), std::string("http://example.org/a/path/of/some/length"), std::string(),
              longIri() + " ", std::string("a text that is no IRI and has some length"),
              std::string("/a/path/of/some/length/\xC3"),
              std::string("//h:99999/a/path/of/some/length")}) {
            operations.push_back(operation("constructor of UTF-8, " + text, [text] {
                return said([&] { return IRI(text).toStringUtf8(); });
            }));
            operations.push_back(operation("tryParse of UTF-8, " + text, [text] {
                return said([&] { return IRI::tryParse(text).has_value(); });
            }));
            operations.push_back(operation("repair of UTF-8, " + text, [text] {
                return said([&] { return iri::repair(text).value_or("nothing"); });
            }));
            operations.push_back(operation("diagnose and IRIView, " + text, [text] {
                return said([&] { return iri::diagnose(text).has_value(); })
                       + said([&] { return iri::IRIView::parse(text).has_value(); });
            }));
        }
        for (const std::u16string& text :
             {std::u16string(u"http://ü例.example.org/a/path/of/some/length"),
              std::u16string(u"a text that is no IRI and has some length"),
              u"/a/path/of/some/length/" + std::u16string(1, char16_t(0xD800))}) {
            const std::string name = bytesOf(text);
            operations.push_back(operation("constructor of UTF-16, " + name, [text] {
                return said([&] { return IRI(text).toStringUtf8(); });
            }));
            operations.push_back(operation("tryParse of UTF-16, " + name, [text] {
                return said([&] { return IRI::tryParse(text).has_value(); });
            }));
            operations.push_back(operation("diagnose of UTF-16, " + name, [text] {
                return said([&] { return iri::diagnose(text).has_value(); });
            }));
            operations.push_back(operation("repair of UTF-16, " + name, [text] {
                return said([&] { return iri::repair(text).value_or(u"nothing"); });
            }));
        }
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverAValueIsRead)
    {
        Operations operations;
        for (const FormReader& reader : formReaders)
            for (const Encoding form : forms) {
                const std::string name =
                    reader.name + (" in form " + std::to_string(static_cast<int>(form)));
                addForEach(operations, name,
                           [&reader, form](IRI& iri) { return (iri.*reader.read)(form); });
                addForEach(operations, name + ", UTF-16",
                           [&reader, form](IRI& iri) { return (iri.*reader.readWide)(form); });
            }
        for (const WholeReader& reader : wholeReaders)
            for (const bool strict : {false, true}) {
                const std::string name = reader.name + std::string(strict ? ", strict" : "");
                addForEach(operations, name,
                           [&reader, strict](IRI& iri) { return (iri.*reader.read)(strict); });
                addForEach(operations, name + ", UTF-16",
                           [&reader, strict](IRI& iri) { return (iri.*reader.readWide)(strict); });
            }
        addForEach(operations, "getSchemeUtf8", [](IRI& iri) { return iri.getSchemeUtf8(); });
        addForEach(operations, "getScheme", [](IRI& iri) { return iri.getScheme(); });
        addForEach(operations, "getPortUtf8", [](IRI& iri) { return iri.getPortUtf8(); });
        addForEach(operations, "getPort", [](IRI& iri) { return iri.getPort(); });
        addForEach(operations, "getPortNumber",
                   [](IRI& iri) { return std::to_string(iri.getPortNumber()); });
        addForEach(operations, "hashValue",
                   [](IRI& iri) { return std::to_string(iri.hashValue()); });
        addForEach(operations, "std::hash",
                   [](IRI& iri) { return std::to_string(std::hash<IRI>()(iri)); });
        addForEach(operations, "operator<<", [](IRI& iri) {
            std::ostringstream stream;
            stream.exceptions(std::ios::badbit); // otherwise the stream keeps a failure to itself
            stream << iri;
            return stream.str();
        });
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverAValueIsCopied)
    {
        Operations operations;
        addForEach(
            operations, "copy", [](IRI& iri) { return seen(IRI(iri)); }, Guarantee::Strong);
        addForEach(
            operations, "move",
            [](IRI& iri) {
                IRI taken(std::move(iri));
                iri.swap(taken); // so that it is there for a second try
                return iri.isEmpty();
            },
            Guarantee::Strong);
        addForEach(operations, "IRIArgs", [](IRI& iri) { return seen(IRIArgs(iri)); });
        addForEachPair(
            operations, "assignment",
            [](IRI& left, IRI& right) {
                left = right;
                return left.isEmpty();
            },
            Guarantee::Strong);
        addForEachPair(
            operations, "assignment by a move",
            [](IRI& left, IRI& right) {
                left = std::move(right);
                return left.isEmpty();
            },
            Guarantee::Strong);
        addForEachPair(
            operations, "swap",
            [](IRI& left, IRI& right) {
                swap(left, right);
                return left.isEmpty();
            },
            Guarantee::Strong);
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverTwoValuesMeet)
    {
        Operations operations;
        addForEachPair(
            operations, "==", [](IRI& left, IRI& right) { return left == right; },
            Guarantee::Reading);
        addForEachPair(
            operations, "!=", [](IRI& left, IRI& right) { return left != right; },
            Guarantee::Reading);
        addForEachPair(
            operations, "<", [](IRI& left, IRI& right) { return left < right; },
            Guarantee::Reading);
        addForEachPair(
            operations, "resolveAgainst",
            [](IRI& left, IRI& right) { return left.resolveAgainst(right).toStringUtf8(); },
            Guarantee::Reading);
        addForEachPair(
            operations, "makeRelativeTo",
            [](IRI& left, IRI& right) { return left.makeRelativeTo(right).toStringUtf8(); },
            Guarantee::Reading);
        expectSurvival(operations);
    }

    template <class Run, class Make = IRIArgs (*)()>
    Operation onBag(const std::string& name, Run run, Make make = &longBag)
    {
        return operation(
            name, make,
            [run](IRIArgs& args) {
                return said([&] {
                    run(args);
                    return std::string();
                });
            },
            [](const IRIArgs& args) { return seen(args); });
    }

    struct Setter {
        const char* name;
        IRIArgs& (IRIArgs::*utf8)(const std::string&);
        IRIArgs& (IRIArgs::*utf16)(const std::u16string&);
        IRIArgs& (IRIArgs::*list)(std::initializer_list<char>);
        IRIArgs& (IRIArgs::*clear)();
    };

    constexpr Setter setters[] = {
        {"Scheme", &IRIArgs::setScheme, &IRIArgs::setScheme, &IRIArgs::setScheme,
         &IRIArgs::clearScheme},
        {"UserInfo", &IRIArgs::setUserInfo, &IRIArgs::setUserInfo, &IRIArgs::setUserInfo,
         &IRIArgs::clearUserInfo},
        {"Host", &IRIArgs::setHost, &IRIArgs::setHost, &IRIArgs::setHost, &IRIArgs::clearHost},
        {"Path", &IRIArgs::setPath, &IRIArgs::setPath, &IRIArgs::setPath, &IRIArgs::clearPath},
        {"Query", &IRIArgs::setQuery, &IRIArgs::setQuery, &IRIArgs::setQuery, &IRIArgs::clearQuery},
        {"Fragment", &IRIArgs::setFragment, &IRIArgs::setFragment, &IRIArgs::setFragment,
         &IRIArgs::clearFragment},
        {"Port", &IRIArgs::setPort, &IRIArgs::setPort, &IRIArgs::setPort, &IRIArgs::clearPort},
    };

    TEST(IriMemory, mayFailWhereverABagIsFilled)
    {
        const std::string utf8(40, '8');
        const std::u16string utf16(40, u'8');
        const std::string broken = std::string(40, '8') + "\xC3";
        Operations operations;
        for (const Setter& setter : setters) {
            const std::string name = setter.name;
            for (const std::string& text : {utf8, broken})
                operations.push_back(onBag(
                    "set" + name, [&setter, text](IRIArgs& args) { (args.*setter.utf8)(text); }));
            operations.push_back(onBag("set" + name + ", UTF-16", [&setter, utf16](IRIArgs& args) {
                (args.*setter.utf16)(utf16);
            }));
            operations.push_back(onBag("set" + name + ", list", [&setter](IRIArgs& args) {
                (args.*setter.list)({'8', '8', '8', '8', '8', '8', '8', '8', '8', '8',
                                     '8', '8', '8', '8', '8', '8', '8', '8', '8', '8'});
            }));
            operations.push_back(
                onBag("clear" + name, [&setter](IRIArgs& args) { (args.*setter.clear)(); }));
        }
        operations.push_back(onBag("setPort", [](IRIArgs& args) { args.setPort(1); }));
        // The number in front of what is refused may stay.
        const auto setWrongPort = [](IRIArgs& args) { args.setPort("80x"); };
        operations.push_back(onBag("setPort, refused", setWrongPort));
        operations.back().leftovers.push_back(
            onBag("setPort, refused", setWrongPort, [] { return longBag().setPort(80); }).prepare);
        expectSurvival(operations);
    }

    struct Query {
        std::optional<std::string> text;
        bool hasEscapes; // counts as one that carries them
    };

    IRIArgs bagWith(const Query& query)
    {
        IRIArgs args;
        args.setScheme("x").setPath("/" + longName).setFragment(longName);
        if (query.hasEscapes)
            args.appendQueryKeyValuePair("=", "", false, false); // which is kept in mind
        return query.text ? args.setQuery(*query.text) : args.clearQuery();
    }

    // What a pair that cannot be appended may leave, beside the query as it was.
    std::vector<Query> leftoversOf(const Query& query, char separator)
    {
        std::vector<Query> result{{query.text, true}};
        if (query.text && !query.text->empty())
            for (const bool hasEscapes : {query.hasEscapes, true})
                result.push_back({*query.text + separator, hasEscapes});
        return result;
    }

    template <class Text>
    void addPairs(Operations& operations, const Query& query, const Text& key, const Text& value)
    {
        for (const bool formEncoded : {false, true})
            for (const bool semicolon : {false, true}) {
                const auto onQuery = [=](const Query& before) {
                    return onBag(
                        "appendQueryKeyValuePair to " + before.text.value_or("nothing"),
                        [=](IRIArgs& args) {
                            args.appendQueryKeyValuePair(key, value, formEncoded, semicolon);
                        },
                        [before] { return bagWith(before); });
                };
                operations.push_back(onQuery(query));
                for (const Query& leftover : leftoversOf(query, semicolon ? ';' : '&'))
                    operations.back().leftovers.push_back(onQuery(leftover).prepare);
            }
    }

    TEST(IriMemory, mayFailWhereverAPairIsAppended)
    {
        Operations operations;
        for (const auto& text : {std::optional<std::string>(), std::optional(std::string()),
                                 std::optional(std::string("%41")), std::optional(longName)})
            for (const bool hasEscapes : {false, true}) {
                const Query query{text, hasEscapes};
                addPairs(operations, query, longName, longName); // nothing to escape
                addPairs(operations, query, longName + ";&", longName);
                addPairs(operations, query, longName, longName + "=\xC3");
                addPairs(operations, query, std::string(), longName);
                addPairs(operations, query, std::u16string(40, u'ü'), std::u16string(40, u'='));
            }
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverABagIsCopiedOrBuilt)
    {
        Operations operations;
        operations.push_back(onBag("copy", [](IRIArgs& args) { IRIArgs copy(args); }));
        operations.push_back(onBag("move", [](IRIArgs& args) { IRIArgs copy(std::move(args)); }));
        operations.push_back(onBag("build", [](IRIArgs& args) { IRI iri(args); }));
        operations.push_back(onBag("build what is refused", [](IRIArgs& args) {
            IRIArgs other(args);
            IRI iri(other.setPath("relative"));
        }));
        for (const bool moves : {false, true})
            operations.push_back(operation(
                moves ? "assignment by a move" : "assignment",
                [] {
                    IRIArgs other;
                    other.setScheme("another-scheme-of-some-length").setPath("/" + longName + "x");
                    other.setQuery(longName + "x");
                    return std::pair(longBag(), other.setFragment(longName + "x"));
                },
                [moves](std::pair<IRIArgs, IRIArgs>& both) {
                    // Into one with less room, so that memory is taken.
                    if (moves)
                        both.second = std::move(both.first);
                    else
                        both.second = both.first;
                    return std::string();
                },
                [](const std::pair<IRIArgs, IRIArgs>& both) { return seen(both); }));
        for (const Specimen& specimen : specimens)
            operations.push_back(operation(
                std::string("toArgs, ") + specimen.name,
                [&specimen] { return std::pair(specimen.make(), longBag()); },
                [](std::pair<IRI, IRIArgs>& both) {
                    return said([&] {
                        both.first.toArgs(both.second);
                        return std::string();
                    });
                },
                [](const std::pair<IRI, IRIArgs>& both) { return seen(both.second); }));
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverAQueryIsRead)
    {
        const std::string query = longName + "=" + longName + "&" + longName + "&&=";
        std::vector<Operation> operations;
        for (const auto separator :
             {iri::QueryPairs::Separator::Ampersand, iri::QueryPairs::Separator::Semicolon,
              iri::QueryPairs::Separator::Either})
            operations.push_back(operation("QueryPairs", [query, separator] {
                std::string result;
                for (const iri::QueryPair& pair : iri::QueryPairs(query, separator))
                    result +=
                        pair.key + '=' + pair.value + (pair == iri::QueryPair(pair) ? ' ' : '!');
                return result;
            }));
        expectSurvival(operations);
    }

    TEST(IriMemory, mayFailWhereverATextIsConverted)
    {
        const std::string utf8 = longName + longName;
        const std::u32string utf32 = text::toUtf32(utf8);
        const std::u16string utf16 = text::toUtf16(utf32);
        expectSurvival({
            operation("UTF-8 to UTF-32",
                      [utf8] { return said([&] { return text::toUtf32(utf8); }); }),
            operation("bad UTF-8 to UTF-32",
                      [utf8] { return said([&] { return text::toUtf32(utf8 + "\xC3"); }); }),
            operation("UTF-16 to UTF-32",
                      [utf16] { return said([&] { return text::toUtf32(utf16); }); }),
            operation(
                "bad UTF-16 to UTF-32",
                [utf16] { return said([&] { return text::toUtf32(utf16 + char16_t(0xDC00)); }); }),
            operation("UTF-32 to UTF-8",
                      [utf32] { return said([&] { return text::toUtf8(utf32); }); }),
            operation(
                "bad UTF-32 to UTF-8",
                [utf32] { return said([&] { return text::toUtf8(utf32 + char32_t(0x110000)); }); }),
            operation("UTF-32 to UTF-16",
                      [utf32] { return said([&] { return text::toUtf16(utf32); }); }),
        });
    }

} // namespace
} // namespace foundation::network
