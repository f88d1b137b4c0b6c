#include <foundation/network/IRI.hpp>

#include "iri/Expect.hpp"
#include "iri/NaiveIri.hpp"

#include <gtest/gtest.h>

#include <cstdint>
#include <memory>
#include <string>
#include <type_traits>
#include <utility>

namespace foundation::network {

namespace {

    using namespace tests;

    const std::string full = "http://u:p@h:0080/a/b?q#f";

    // The host begins with a "%" and two full-width digits. The strict text repairs it, and so does
    // each plain ASCII text that is first read after the strict one. That shows which texts were
    // kept.
    const std::string withMemory = "x://%ＡＢ/";
    const std::string asciiOfFresh = "x://%%EF%BC%A1%EF%BC%A2/";
    const std::string asciiAfterStrict = "x://%25%EF%BC%A1%EF%BC%A2/";

    IRI make(const std::string& text)
    {
        return IRI(text);
    }

    IRI makeWithStrictTextRead()
    {
        IRI iri(withMemory);
        iri.toAsciiString(true);
        return iri;
    }

    void expectNoComponent(const IRI& iri)
    {
        EXPECT_TRUE(iri.isEmpty());
        EXPECT_FALSE(iri.hasScheme());
        EXPECT_FALSE(iri.hasAuthority());
        EXPECT_FALSE(iri.hasQuery());
        EXPECT_FALSE(iri.hasFragment());
        EXPECT_FALSE(iri.hasAbsolutePath());
        EXPECT_FALSE(iri.isAbsolute());
        EXPECT_FALSE(iri.isOpaque());
        EXPECT_FALSE(iri.hasPort());
        EXPECT_FALSE(iri.hasHost());
        EXPECT_FALSE(iri.hasUserInfo());
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getScheme(); }, "No scheme"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPortNumber(); }, "No port"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getHost(); }, "Item not set: Host"));
        for (const bool strict : {false, true}) {
            EXPECT_EQ(iri.toStringUtf8(strict), "");
            EXPECT_EQ(iri.toString(strict), u"");
            EXPECT_EQ(iri.toAsciiStringUtf8(strict), "");
            EXPECT_EQ(iri.toAsciiString(strict), u"");
        }
    }

    // The empty value as it is made by default: even its path cannot be read.
    void expectBareEmpty(const IRI& iri)
    {
        expectNoComponent(iri);
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getPath(); }, "Item not set: Path"));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&] { iri.getPathUtf8(); }, "Item not set: Path"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { iri.getSchemeSpecificPart(); },
                                                  "Item not set: Path"));
    }

    void expectFull(const IRI& iri)
    {
        EXPECT_FALSE(iri.isEmpty());
        EXPECT_EQ(iri.toStringUtf8(), full);
        EXPECT_EQ(iri.getSchemeUtf8(), "http");
        EXPECT_EQ(iri.getUserInfoUtf8(), "u:p");
        EXPECT_EQ(iri.getHostUtf8(IRI::Encoding::Decoded), "h");
        EXPECT_EQ(iri.getPortUtf8(), "0080");
        EXPECT_EQ(iri.getPortNumber(), 80);
        EXPECT_EQ(iri.getPathUtf8(IRI::Encoding::Ascii), "/a/b");
        EXPECT_EQ(iri.getQueryUtf8(), "q");
        EXPECT_EQ(iri.getFragmentUtf8(), "f");
        EXPECT_TRUE(iri.isAbsolute());
        EXPECT_FALSE(iri.isOpaque());
        EXPECT_TRUE(iri.hasAbsolutePath());
    }

    static_assert(std::is_nothrow_move_constructible_v<IRI>);
    static_assert(std::is_nothrow_swappable_v<IRI>);
    static_assert(std::is_nothrow_default_constructible_v<IRI>);

} // namespace

TEST(IRILifeCycle, defaultValueIsEmptyAndHasNoPath)
{
    expectBareEmpty(IRI());
}

TEST(IRILifeCycle, emptyTextGivesAnEmptyValueWithAnEmptyPath)
{
    for (const IRI& iri : {IRI(std::string()), IRI(std::u16string())}) {
        expectNoComponent(iri);
        for (unsigned encoding = 0; encoding < 6; ++encoding) {
            EXPECT_EQ(iri.getPathUtf8(static_cast<IRI::Encoding>(encoding)), "");
            EXPECT_EQ(iri.getSchemeSpecificPart(static_cast<IRI::Encoding>(encoding)), u"");
        }
    }
}

TEST(IRILifeCycle, copyLivesOnItsOwn)
{
    auto original = std::make_unique<IRI>(full);
    original->getPath(IRI::Encoding::Decoded);
    original->getQuery(IRI::Encoding::Ascii);
    original->toString(true);
    const IRI copy(*original);
    expectFull(*original);
    original.reset();
    expectFull(copy);
    EXPECT_EQ(copy.toStringUtf8(true), full);
}

TEST(IRILifeCycle, copyOfTheEmptyValuesIsAsEmpty)
{
    const IRI bare;
    const IRI parsed{std::string()};
    expectBareEmpty(IRI(bare));
    EXPECT_EQ(IRI(parsed).getPathUtf8(), "");
}

TEST(IRILifeCycle, textsOnceMadeGoWithTheValue)
{
    EXPECT_EQ(IRI(withMemory).toAsciiStringUtf8(), asciiOfFresh);

    const IRI source = makeWithStrictTextRead();
    EXPECT_EQ(source.toAsciiStringUtf8(), asciiAfterStrict);
    EXPECT_EQ(IRI(source).toAsciiStringUtf8(), asciiAfterStrict);
    EXPECT_EQ(IRI(makeWithStrictTextRead()).toAsciiStringUtf8(), asciiAfterStrict);

    IRI target(full);
    target = source;
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiAfterStrict);
    target = IRI(full);
    target = makeWithStrictTextRead();
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiAfterStrict);
    IRI other(full);
    other.swap(target);
    EXPECT_EQ(other.toAsciiStringUtf8(), asciiAfterStrict);
    EXPECT_EQ(target.toAsciiStringUtf8(), full);
}

TEST(IRILifeCycle, textsOnceMadeDoNotOutliveTheValue)
{
    const IRI fresh(withMemory);
    IRI target = makeWithStrictTextRead();
    target = fresh;
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiOfFresh);
    target = makeWithStrictTextRead();
    target = IRI(withMemory);
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiOfFresh);
    target = makeWithStrictTextRead();
    target = IRI();
    EXPECT_EQ(target.toAsciiStringUtf8(), "");
    target = fresh;
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiOfFresh);
    target = makeWithStrictTextRead();
    IRI other(withMemory);
    target.swap(other);
    EXPECT_EQ(target.toAsciiStringUtf8(), asciiOfFresh);
}

TEST(IRILifeCycle, isEmptyAfterBeingMovedFromByConstruction)
{
    // A short text may lie in the string itself, and would then be copied.
    for (const std::string& text :
         {full, std::string("a:b"), std::string("?"), std::string("//h:1")}) {
        SCOPED_TRACE(text);
        IRI source(text);
        source.toString(true);
        source.getPath(IRI::Encoding::Decoded);
        const IRI target(std::move(source));
        EXPECT_EQ(target.toStringUtf8(), text);
        expectBareEmpty(source); // NOLINT(bugprone-use-after-move): what it then is, is the point
        source = make("x:y");
        EXPECT_EQ(source.toStringUtf8(), "x:y");
        EXPECT_TRUE(source.isOpaque());
    }
}

TEST(IRILifeCycle, movedFromByConstructionForgetsThatItHadAPath)
{
    IRI source{std::string()};
    const IRI target(std::move(source));
    EXPECT_EQ(target.getPathUtf8(), "");
    expectBareEmpty(source); // NOLINT(bugprone-use-after-move)
}

TEST(IRILifeCycle, movedFromByAssignmentKeepsItsFlagsAndLosesItsTexts)
{
    IRI source(full);
    source.getHost(IRI::Encoding::Ascii);
    IRI target(std::string("x:y"));
    target = std::move(source);
    expectFull(target);

    // NOLINTBEGIN(bugprone-use-after-move)
    EXPECT_FALSE(source.isEmpty());
    EXPECT_TRUE(source.hasScheme());
    EXPECT_TRUE(source.hasAuthority());
    EXPECT_TRUE(source.hasUserInfo());
    EXPECT_TRUE(source.hasHost());
    EXPECT_TRUE(source.hasPort());
    EXPECT_TRUE(source.hasQuery());
    EXPECT_TRUE(source.hasFragment());
    EXPECT_TRUE(source.hasAbsolutePath());
    EXPECT_TRUE(source.isAbsolute());
    EXPECT_FALSE(source.isOpaque());
    EXPECT_EQ(source.getPortNumber(), 80); // the number is copied
    EXPECT_EQ(source.toStringUtf8(), "");
    EXPECT_EQ(source.toString(), u"");
    for (unsigned encoding = 0; encoding < 6; ++encoding) {
        const auto e = static_cast<IRI::Encoding>(encoding);
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { source.getUserInfo(e); },
                                                  "Item not set: UserInfo"));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&] { source.getHost(e); }, "Item not set: Host"));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&] { source.getPath(e); }, "Item not set: Path"));
        EXPECT_TRUE(
            throwsExactly<RuntimeFailure>([&] { source.getQuery(e); }, "Item not set: Query"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { source.getFragment(e); },
                                                  "Item not set: Fragment"));
        EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { source.getAuthority(e); },
                                                  "Item not set: UserInfo"));
    }
    // NOLINTEND(bugprone-use-after-move)
}

TEST(IRILifeCycle, movedFromByAssignmentCanBeUsedAnew)
{
    for (const std::string& text : {full, std::string("a:b"), std::string("?")}) {
        SCOPED_TRACE(text);
        IRI source(text);
        IRI target;
        target = std::move(source);
        EXPECT_EQ(target.toStringUtf8(), text);
        EXPECT_EQ(source.toStringUtf8(), ""); // NOLINT(bugprone-use-after-move)
        source = target;
        EXPECT_EQ(source.toStringUtf8(), text);
        EXPECT_EQ(source.getPathUtf8(), target.getPathUtf8());
        target = std::move(source);
        source = IRI();
        expectBareEmpty(source);
        source.swap(target);
        EXPECT_EQ(source.toStringUtf8(), text);
        expectBareEmpty(target);
    }
}

TEST(IRILifeCycle, whatWasMovedFromByAssignmentIsCopiedAsItIs)
{
    IRI source(full);
    IRI target;
    target = std::move(source);
    const IRI copy(source); // NOLINT(bugprone-use-after-move)
    EXPECT_TRUE(copy.hasQuery());
    EXPECT_TRUE(throwsExactly<RuntimeFailure>([&] { copy.getQuery(); }, "Item not set: Query"));
    EXPECT_EQ(copy.toStringUtf8(), "");
}

TEST(IRILifeCycle, assignmentAnswersItsTarget)
{
    IRI source(full);
    IRI target;
    EXPECT_EQ(&(target = source), &target);
    EXPECT_EQ(&(target = std::move(source)), &target);
    EXPECT_EQ(&(target = IRI()), &target);
}

TEST(IRILifeCycle, assignmentAndSwapWithItselfDoNothing)
{
    IRI iri = makeWithStrictTextRead();
    IRI& same = iri;
    const std::uint64_t hash = iri.hashValue();
    iri = same;
    EXPECT_EQ(iri.toAsciiStringUtf8(), asciiAfterStrict);
    iri = std::move(same);
    EXPECT_EQ(iri.toStringUtf8(), withMemory);
    EXPECT_EQ(iri.toAsciiStringUtf8(), asciiAfterStrict);
    iri.swap(same);
    swap(iri, same);
    EXPECT_EQ(iri.toStringUtf8(), withMemory);
    EXPECT_EQ(iri.getHostUtf8(), "%ＡＢ");
    EXPECT_EQ(iri.hashValue(), hash);

    IRI empty{std::string()};
    IRI& sameEmpty = empty;
    empty = sameEmpty;
    empty = std::move(sameEmpty);
    EXPECT_EQ(empty.getPathUtf8(), "");
}

TEST(IRILifeCycle, oneEmptyValueIsNotAssignedToAnother)
{
    const IRI parsed{std::string()};
    IRI bare;
    bare = parsed;
    expectBareEmpty(bare);
    bare = IRI(std::string());
    expectBareEmpty(bare);

    const IRI none;
    IRI target{std::string()};
    target = none;
    EXPECT_EQ(target.getPathUtf8(), "");
    target = IRI();
    EXPECT_EQ(target.getPathUtf8(), "");
}

TEST(IRILifeCycle, assigningAnEmptyValueClears)
{
    const IRI bare;
    const IRI parsed{std::string()};
    IRI iri(full);
    iri = bare;
    expectBareEmpty(iri);
    iri = IRI(full);
    iri = IRI();
    expectBareEmpty(iri);

    // What clears takes no path with it, though the empty text has one.
    iri = IRI(full);
    iri = parsed;
    expectBareEmpty(iri);
    iri = IRI(full);
    iri = IRI(std::string());
    expectBareEmpty(iri);
}

TEST(IRILifeCycle, anEmptyValueThatWasAssignedKeepsItsPath)
{
    IRI source{std::string()};
    IRI target(full);
    target = std::move(source);
    EXPECT_EQ(source.getPathUtf8(), ""); // NOLINT(bugprone-use-after-move): nothing was taken
}

TEST(IRILifeCycle, swapExchangesEverything)
{
    IRI left(full);
    IRI right(std::string("urn:x"));
    left.getPath(IRI::Encoding::Decoded);
    left.swap(right);
    expectFull(right);
    EXPECT_EQ(left.toStringUtf8(), "urn:x");
    EXPECT_TRUE(left.isOpaque());
    EXPECT_FALSE(left.hasPort());
    EXPECT_EQ(left.getPathUtf8(IRI::Encoding::Decoded), "x");
    swap(left, right);
    expectFull(left);

    IRI bare;
    bare.swap(left);
    expectFull(bare);
    expectBareEmpty(left);

    IRI parsed{std::string()};
    parsed.swap(left);
    EXPECT_EQ(left.getPathUtf8(), "");
    expectBareEmpty(parsed);
}

TEST(IRILifeCycle, failedConstructionLeavesTheTargetAlone)
{
    IRI iri(full);
    EXPECT_THROW(iri = IRI(std::string("http://h:/")), std::logic_error);
    EXPECT_THROW(iri = IRI(std::string("\xFF")), core::except::IException);
    EXPECT_THROW(iri = IRI(std::u16string{0xD800}), std::out_of_range);
    expectFull(iri);
}

} // namespace foundation::network
