#include "StringPartsTesting.hpp"

#include <memory>
#include <utility>

namespace foundation::network::iri::test {
namespace {

    // Each component has a text of its own, some of them several forms.
    Parts someParts()
    {
        Parts parts;
        parts.setUserInfo(U"u", Encoding::Iri);
        parts.setHost(U"h", Encoding::Ascii);
        parts.setPath(U"/p \u00E9", Encoding::Decoded);
        parts.setQuery(U"q", Encoding::Iri, false);
        parts.setFragment(U"f", Encoding::Iri);
        for (const Encoding encoding : settableEncodings)
            parts.getPath(encoding);
        return parts;
    }

    void expectSomeParts(const Parts& parts)
    {
        EXPECT_FALSE(parts.isEmpty());
        for (const Encoding encoding : encodings) {
            EXPECT_EQ(parts.getUserInfo(encoding), U"u");
            EXPECT_EQ(parts.getHost(encoding), U"h");
            EXPECT_EQ(parts.getQuery(encoding), U"q");
            EXPECT_EQ(parts.getFragment(encoding), U"f");
            EXPECT_EQ(parts.getAuthority(encoding), U"u@h");
        }
        EXPECT_EQ(parts.getPath(Encoding::Decoded), U"/p \u00E9");
        EXPECT_EQ(parts.getPath(Encoding::Iri), U"/p%20\u00E9");
        EXPECT_EQ(parts.getPath(Encoding::Ascii), U"/p%20%C3%A9");
    }

    void expectNothingSet(const Parts& parts)
    {
        for (const Component& component : components)
            for (const Encoding encoding : encodings)
                expectNotSet(parts, component, encoding);
    }

    // All components are absent, not merely without a text.
    void expectAllAbsent(const Parts& parts)
    {
        expectNothingSet(parts);
        EXPECT_TRUE(parts == Parts());
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); },
                           "Item not set: Host: Host (in getAuthority)");
    }

    // All components are present, but none has a text.
    void expectAllWithoutText(const Parts& parts)
    {
        Parts expected;
        for (const Component& component : components)
            component.set(expected, U"x", Encoding{5});
        expectNothingSet(parts);
        EXPECT_FALSE(parts.isEmpty());
        EXPECT_TRUE(parts == expected);
        EXPECT_FALSE(parts != expected);
        expectRuntimeError([&] { parts.getAuthority(Encoding::Iri); }, "Item not set: UserInfo");
    }

    TEST(StringPartsLifeCycle, aCopyHasTextsOfItsOwn)
    {
        auto source = std::make_unique<Parts>(someParts());
        const std::u32string& sourceText = source->getPath(Encoding::Iri);
        const Parts copy(*source);
        EXPECT_NE(&copy.getPath(Encoding::Iri), &sourceText);
        expectSomeParts(*source);
        source.reset();
        expectSomeParts(copy);
    }

    TEST(StringPartsLifeCycle, aCopySharesWithinItself)
    {
        for (const Encoding stored : settableEncodings) {
            auto source = std::make_unique<Parts>();
            source->setHost(U"host", stored);
            source->getHost(Encoding::Decoded);
            source->getHost(Encoding::Iri);
            source->getHost(Encoding::Ascii);
            const std::u32string* sourceText = &source->getHost(Encoding::Iri);
            const Parts copy(*source);
            EXPECT_NE(&copy.getHost(Encoding::Iri), sourceText);
            source.reset();
            const std::u32string* text = &copy.getHost(Encoding::Decoded);
            EXPECT_EQ(*text, U"host");
            EXPECT_EQ(&copy.getHost(Encoding::Iri), text);
            EXPECT_EQ(&copy.getHost(Encoding::Ascii), text);
        }
    }

    TEST(StringPartsLifeCycle, aCopyGoesItsOwnWay)
    {
        Parts source = someParts();
        Parts copy(source);
        copy.setHost(U"other", Encoding::Iri);
        copy.reset();
        expectSomeParts(source);
        copy = source;
        source.setPath(U"/other", Encoding::Iri);
        source.reset();
        expectSomeParts(copy);
    }

    TEST(StringPartsLifeCycle, aCopyIsAbsentOrWithoutTextWhereItsSourceIs)
    {
        const Parts fresh;
        expectAllAbsent(Parts(fresh));
        EXPECT_TRUE(Parts(fresh).isEmpty());
        Parts source = someParts();
        const Parts taken(std::move(source));
        const Parts copy(source); // NOLINT(bugprone-use-after-move)
        expectAllWithoutText(copy);
    }

    TEST(StringPartsLifeCycle, aCopyIsEmptyIfItsSourceIs)
    {
        Parts empty;
        empty.setPath(U"", Encoding::Iri);
        EXPECT_TRUE(Parts(empty).isEmpty());
        Parts assigned = someParts();
        assigned = empty; // as well as reset, assignment brings emptiness back
        EXPECT_TRUE(assigned.isEmpty());
        EXPECT_EQ(assigned.getPath(Encoding::Iri), U"");
        expectNotSet(assigned, components[1], Encoding::Iri);
    }

    TEST(StringPartsLifeCycle, copyAssignmentReplacesEverything)
    {
        const Parts source = someParts();
        Parts target;
        EXPECT_EQ(&(target = source), &target);
        expectSomeParts(target);
        expectSomeParts(source);
        target = Parts();
        expectAllAbsent(target);
        EXPECT_TRUE(target.isEmpty());
    }

    TEST(StringPartsLifeCycle, assignmentToItselfChangesNothing)
    {
        Parts parts = someParts();
        const std::u32string* text = &parts.getPath(Encoding::Ascii);
        Parts& alias = parts;
        parts = alias;
        expectSomeParts(parts);
        EXPECT_EQ(&parts.getPath(Encoding::Ascii), text);
        parts = std::move(alias);
        expectSomeParts(parts);
        EXPECT_EQ(&parts.getPath(Encoding::Ascii), text);
    }

    TEST(StringPartsLifeCycle, aMoveLeavesComponentsWithoutText)
    {
        Parts source = someParts();
        const Parts target(std::move(source));
        expectSomeParts(target);
        expectAllWithoutText(source); // NOLINT(bugprone-use-after-move)
    }

    TEST(StringPartsLifeCycle, aMoveLeavesAbsentComponentsAbsent)
    {
        Parts source;
        source.setHost(U"h", Encoding::Iri);
        const Parts target(std::move(source));
        EXPECT_EQ(target.getAuthority(Encoding::Iri), U"h");
        Parts expected;
        expected.setHost(U"", Encoding{5});
        EXPECT_TRUE(source == expected); // NOLINT(bugprone-use-after-move)
        expectRuntimeError([&] { source.getAuthority(Encoding::Iri); },
                           "Item not set: Host: Host (in getAuthority)");
    }

    TEST(StringPartsLifeCycle, aMoveLeavesTheAnswerWhetherItIsEmpty)
    {
        Parts empty;
        empty.setPath(U"", Encoding::Iri);
        const Parts first(std::move(empty));
        EXPECT_TRUE(first.isEmpty());
        EXPECT_TRUE(empty.isEmpty()); // NOLINT(bugprone-use-after-move)
        Parts full = someParts();
        Parts second;
        second = std::move(full);
        EXPECT_FALSE(second.isEmpty());
        EXPECT_FALSE(full.isEmpty()); // NOLINT(bugprone-use-after-move)
        Parts third = someParts();
        third = std::move(empty);
        EXPECT_TRUE(third.isEmpty());
    }

    TEST(StringPartsLifeCycle, aMovedFromObjectCanBeUsedAgain)
    {
        Parts source = someParts();
        const Parts target(std::move(source));
        for (const Component& component : components)
            component.set(source, U"/n", Encoding::Iri);
        for (const Component& component : components)
            // NOLINTNEXTLINE(bugprone-use-after-move): it was set again
            EXPECT_EQ(component.get(source, Encoding::Decoded), U"/n");
        source.reset();
        expectAllAbsent(source);
        expectSomeParts(target);
    }

    TEST(StringPartsLifeCycle, moveAssignmentReplacesEverything)
    {
        Parts source = someParts();
        Parts target;
        target.setHost(U"old", Encoding::Decoded);
        EXPECT_EQ(&(target = std::move(source)), &target);
        expectSomeParts(target);
        expectAllWithoutText(source); // NOLINT(bugprone-use-after-move)

        // Components without a text, over ones that have one.
        Parts next = someParts();
        next = std::move(source);
        expectAllWithoutText(next);
        expectAllWithoutText(source); // NOLINT(bugprone-use-after-move)

        // Absent ones over present ones.
        target = Parts();
        expectAllAbsent(target);
        next = std::move(target);
        expectAllAbsent(next);
    }

    TEST(StringPartsLifeCycle, swapExchangesEverything)
    {
        Parts left = someParts();
        Parts right;
        left.swap(right);
        expectAllAbsent(left);
        EXPECT_TRUE(left.isEmpty());
        expectSomeParts(right);

        left.swap(right);
        expectSomeParts(left);
        expectAllAbsent(right);
        EXPECT_TRUE(right.isEmpty());

        right.setHost(U"other", Encoding::Iri);
        right.setFragment(U"x", Encoding{5});
        left.swap(right);
        expectSomeParts(right);
        EXPECT_EQ(left.getAuthority(Encoding::Ascii), U"other");
        expectNotSet(left, components[4], Encoding::Iri);
    }

    TEST(StringPartsLifeCycle, swapWithItselfChangesNothing)
    {
        Parts parts = someParts();
        parts.swap(parts);
        expectSomeParts(parts);
        Parts fresh;
        fresh.swap(fresh);
        expectAllAbsent(fresh);
        Parts withoutText;
        withoutText.setHost(U"x", Encoding{5});
        withoutText.swap(withoutText);
        expectNotSet(withoutText, components[1], Encoding::Iri);
        EXPECT_FALSE(withoutText == Parts());
    }

    TEST(StringPartsLifeCycle, swappedFormsStaySharedWithinTheirObject)
    {
        Parts left;
        left.setHost(U"host", Encoding::Iri);
        left.getHost(Encoding::Decoded);
        auto right = std::make_unique<Parts>();
        right->setHost(U"other\u00E9", Encoding::Iri);
        right->swap(left);
        EXPECT_EQ(&right->getHost(Encoding::Decoded), &right->getHost(Encoding::Iri));
        right.reset();
        EXPECT_EQ(left.getHost(Encoding::Ascii), U"other%C3%A9");
    }

    TEST(StringPartsLifeCycle, resetMakesAllAbsent)
    {
        Parts parts = someParts();
        parts.reset();
        expectAllAbsent(parts);
        EXPECT_TRUE(parts.isEmpty());
        parts.reset();
        expectAllAbsent(parts);
        parts.setHost(U"x", Encoding{5});
        parts.reset();
        expectAllAbsent(parts);
    }

} // namespace
} // namespace foundation::network::iri::test
