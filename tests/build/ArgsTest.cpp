#include <foundation/network/IRIArgs.hpp>

#include "build/BagTesting.hpp"
#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;

    static_assert(std::is_base_of_v<Base, IRIArgs>);
    static_assert(std::is_convertible_v<IRIArgs*, Base*>, "the bag derives publicly");
    static_assert(std::has_virtual_destructor_v<Base>);

    // A text that any component may hold, the scheme too: U+00E9 is a letter.
    const std::string text = "zé1";
    const std::u16string text16 = u"zé1";
    const std::u32string text32 = U"zé1";
    constexpr std::initializer_list<char> list = {'z', '\xC3', '\xA9', '1'};

    std::string valueFor(const TextComponent& component)
    {
        return component.name == std::string("path") ? "/" + text : text;
    }

    // `set` gives a bag the component, which has to become `expected`, whatever it was before.
    template <class Set>
    void expectThatSets(const TextComponent& component, const std::string& expected, Set set)
    {
        IRIArgs full = fullBag();
        set(full);
        Components changed = fullComponents;
        changed[component.name] = expected;
        EXPECT_EQ(componentsOf(full), changed);

        IRIArgs without = bagWithout(component);
        Components added = componentsOf(without);
        set(without);
        added[component.name] = expected;
        EXPECT_EQ(componentsOf(without), added);
    }

    // `set` has to fail without a trace.
    template <class Set>
    void expectThatFails(const TextComponent& component, const std::string& message, Set set)
    {
        for (IRIArgs args : {fullBag(), bagWithout(component)}) {
            const Components before = componentsOf(args);
            EXPECT_TRUE(throwsExactly<AnyFailure>([&] { set(args); }, message));
            EXPECT_EQ(componentsOf(args), before);
        }
    }

    std::string misplaced(const std::string& unit)
    {
        return "Misplaced UTF-16 surrogate U+" + unit
               + " encountered while trying to encode UTF-32 sequence";
    }

} // namespace

TEST(IRIArgs, holdsNothingAtFirst)
{
    EXPECT_EQ(componentsOf(IRIArgs()), (Components{{"path", ""}}));
    EXPECT_TRUE(IRI(IRIArgs()).isEmpty());
    EXPECT_EQ(queryFlagsOf(IRIArgs()), (QueryFlags{false, false}));
}

TEST(IRIArgs, everyOverloadOfASetterSetsItsComponentAlone)
{
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        const bool isPath = component.name == std::string("path");
        const std::string value = valueFor(component);
        expectThatSets(component, value,
                       [&](IRIArgs& args) { EXPECT_EQ(&(args.*component.setUtf8)(value), &args); });
        expectThatSets(component, value, [&](IRIArgs& args) {
            EXPECT_EQ(&(args.*component.setUtf16)(isPath ? u"/" + text16 : text16), &args);
        });
        expectThatSets(component, isPath ? "/zé" : text, [&](IRIArgs& args) {
            const std::initializer_list<char> path = {'/', 'z', '\xC3', '\xA9'};
            EXPECT_EQ(&(args.*component.setList)(isPath ? path : list), &args);
        });
    }
}

TEST(ArgsBase, everyOverloadOfASetterSetsItsComponentAlone)
{
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        const bool isPath = component.name == std::string("path");
        const std::string value = valueFor(component);
        expectThatSets(component, value, [&](Base& args) {
            (args.*component.setBaseUtf32)(isPath ? U"/" + text32 : text32);
        });
        expectThatSets(component, value, [&](Base& args) { (args.*component.setBaseUtf8)(value); });
        expectThatSets(component, value, [&](Base& args) {
            (args.*component.setBaseUtf16)(isPath ? u"/" + text16 : text16);
        });
        expectThatSets(component, isPath ? "/zé" : text, [&](Base& args) {
            const std::initializer_list<char> path = {'/', 'z', '\xC3', '\xA9'};
            (args.*component.setBaseList)(isPath ? path : list);
        });
    }
}

TEST(IRIArgs, callsCanBeWrittenAsTheyAreMeant)
{
    IRIArgs args;
    args.setScheme("s").setUserInfo(u"u").setHost({'h'}).setPort(0).setPath({'/', 'p'});
    args.setQuery(u"q").setFragment("f");
    EXPECT_EQ(IRI(args).toStringUtf8(), "s://u@h:0/p?q#f");
    args.setPort("80").setPort(u"81").setPort({'8', '2'});
    EXPECT_EQ(IRI(args).toStringUtf8(), "s://u@h:82/p?q#f");
    args.clearScheme().clearUserInfo().clearPort().clearPath().clearQuery().clearFragment();
    EXPECT_EQ(IRI(args).toStringUtf8(), "//h");
    EXPECT_EQ(IRI(args.clearHost()).toStringUtf8(), "");

    Base& base = args;
    base.setPath(U"b");
    base.setQuery({'q'});
    EXPECT_EQ(IRI(args).toStringUtf8(), "b?q");
}

TEST(IRIArgs, textIsPlain)
{
    for (const char* plain : {"a b", "a%41", "100%", "%zz", "<\">", "\x7F", "/?#[]@:", "😀\uE000"}) {
        SCOPED_TRACE(plain);
        IRIArgs args;
        args.setUserInfo(plain).setHost(plain).setPath("/" + std::string(plain)).setQuery(plain);
        EXPECT_EQ(componentsOf(args.setFragment(plain)),
                  (Components{{"userInfo", plain},
                              {"host", plain},
                              {"path", "/" + std::string(plain)},
                              {"query", plain},
                              {"fragment", plain}}));
    }
}

TEST(IRIArgs, zeroBytesAreText)
{
    IRIArgs args;
    args.setPath({'a', '\0', 'b'}).setQuery(std::string("\0q", 2));
    args.setFragment(std::u16string(u"f\0", 2));
    EXPECT_EQ(IRI(args).toStringUtf8(), "a%00b?%00q#f%00");
}

TEST(IRIArgs, anEmptyTextIsPresent)
{
    IRIArgs args;
    args.setUserInfo("").setHost(u"").setPath("").setQuery(std::initializer_list<char>());
    args.setFragment("");
    EXPECT_EQ(componentsOf(args),
              (Components{
                  {"userInfo", ""}, {"host", ""}, {"path", ""}, {"query", ""}, {"fragment", ""}}));
}

// The failure comes when the IRI is built.
TEST(IRIArgs, anEmptySchemeIsPresent)
{
    IRIArgs args;
    args.setScheme("");
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Malformed scheme"));
    EXPECT_TRUE(IRI(args.clearScheme()).isEmpty());
}

TEST(IRIArgs, setterOfATextThatDoesNotConvertChangesNothing)
{
    const std::string utf8 = "a\xC3";
    const std::u16string low = {u'a', 0xDC00, u'b'};
    const std::u16string high = {u'a', 0xD800, u'b'};
    const std::u16string last = {u'a', 0xDBFF};
    const std::string misplacedLow = misplaced("0xdc00");
    const std::string misplacedHigh = misplaced("0x62");
    const std::string misplacedLast = misplaced("0");
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        const auto setUtf8 = [&](IRIArgs& args) { (args.*component.setUtf8)(utf8); };
        const auto setList = [&](IRIArgs& args) { (args.*component.setList)({'\xFF'}); };
        expectThatFails(component, invalidUtf8, setUtf8);
        expectThatFails(component, invalidUtf8, setList);
        const auto setLow = [&](IRIArgs& args) { (args.*component.setUtf16)(low); };
        const auto setHigh = [&](IRIArgs& args) { (args.*component.setUtf16)(high); };
        const auto setLast = [&](IRIArgs& args) { (args.*component.setUtf16)(last); };
        expectThatFails(component, misplacedLow, setLow);
        expectThatFails(component, misplacedHigh, setHigh);
        expectThatFails(component, misplacedLast, setLast);
    }
}

TEST(ArgsBase, setterOfATextThatDoesNotConvertChangesNothing)
{
    const std::u16string low = {u'a', 0xDFFF};
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        const auto setUtf8 = [&](Base& args) { (args.*component.setBaseUtf8)("\x80"); };
        const auto setList = [&](Base& args) { (args.*component.setBaseList)({'\xC0', '\x80'}); };
        const auto setUtf16 = [&](Base& args) { (args.*component.setBaseUtf16)(low); };
        expectThatFails(component, invalidUtf8, setUtf8);
        expectThatFails(component, invalidUtf8, setList);
        expectThatFails(component, misplaced("0xdfff"), setUtf16);
    }
}

// A text in UTF-32 is not looked at before it is written.
TEST(ArgsBase, anyCodeUnitsOfUtf32AreTaken)
{
    IRIArgs args;
    static_cast<Base&>(args).setPath(std::u32string{0xD800});
    EXPECT_EQ(IRI(args).toStringUtf8(), "%ED%A0%80");
    static_cast<Base&>(args).setPath(std::u32string{0x110000});
    EXPECT_TRUE(throwsExactly<RangeFailure>([&] { IRI(args).toStringUtf8(); },
                                            "Invalid UTF-32 code point U+0x110000 encountered "
                                            "while trying to encode UTF-16 sequence"));
}

TEST(IRIArgs, clearsMakeTheirComponentAbsent)
{
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        IRIArgs args = fullBag();
        Components left = fullComponents;
        left.erase(component.name);
        if (component.name == std::string("host")) {
            args.clearUserInfo();
            left.erase("userInfo");
            left.erase("port"); // it needs a host
        }
        if (component.name == std::string("path"))
            left["path"] = ""; // an absent one reads the same
        EXPECT_EQ(&(args.*component.clear)(), &args);
        EXPECT_EQ(componentsOf(args), left);
        EXPECT_EQ(&(args.*component.clear)(), &args); // nothing is left to clear
        EXPECT_EQ(componentsOf(args), left);
    }
}

TEST(ArgsBase, clearsMakeTheirComponentAbsent)
{
    for (const TextComponent& component : textComponents) {
        SCOPED_TRACE(component);
        IRIArgs args = fullBag();
        Components left = fullComponents;
        left.erase(component.name);
        if (component.name == std::string("host")) {
            args.clearUserInfo().clearPort();
            left.erase("userInfo");
            left.erase("port");
        }
        if (component.name == std::string("path"))
            left["path"] = "";
        (static_cast<Base&>(args).*component.clearBase)();
        EXPECT_EQ(componentsOf(args), left);
    }
}

// Or the next pair would follow it.
TEST(IRIArgs, clearQueryForgetsTheText)
{
    IRIArgs args;
    args.setQuery("old").clearQuery().appendQueryKeyValuePair("a", "b", false, false);
    EXPECT_EQ(IRI(args).toStringUtf8(), "?a=b");
    Base& base = args;
    base.clearQuery();
    base.appendQueryKeyValuePair("c", "d", false, false);
    EXPECT_EQ(IRI(args).toStringUtf8(), "?c=d");
}

TEST(IRIArgs, clearHostClearsThePortAsWell)
{
    IRIArgs args;
    args.setHost("h").setPort(80);
    EXPECT_TRUE(IRI(args.clearHost()).isEmpty());
    args.setHost("h");
    EXPECT_EQ(IRI(args).toStringUtf8(), "//h");

    args.setPort(80).setUserInfo("u").clearHost(); // the user information stays
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "User Info requires a host"));
}

TEST(ArgsBase, clearHostLeavesThePort)
{
    IRIArgs args;
    args.setHost("h").setPort(80);
    static_cast<Base&>(args).clearHost();
    EXPECT_TRUE(throwsExactly<LogicFailure>([&] { IRI{args}; }, "Port requires a host"));
    args.setHost("i");
    EXPECT_EQ(IRI(args).toStringUtf8(), "//i:80");
}

TEST(IRIArgs, plainSettersAndClearsLeaveTheFlagsOfPairs)
{
    for (const bool formEncoded : {false, true}) {
        IRIArgs args;
        args.appendQueryKeyValuePair("a&b", "c", formEncoded, false);
        const QueryFlags flags{formEncoded, !formEncoded};
        EXPECT_EQ(queryFlagsOf(args), flags); // which sets the query of a copy
        EXPECT_EQ(queryFlagsOf(args.setQuery("x")), flags);
        EXPECT_EQ(queryFlagsOf(args.clearQuery()), flags);
        static_cast<Base&>(args).setQuery(U"x");
        EXPECT_EQ(queryFlagsOf(args), flags);
        static_cast<Base&>(args).clearQuery();
        EXPECT_EQ(queryFlagsOf(args), flags);
    }
}

} // namespace foundation::network
