#include "except/Catcher.hpp"
#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "platform/SystemAnswers.hpp"

#include <foundation/core/except/Exception.hpp>
#include <foundation/network/IRI.hpp>

#include <gtest/gtest.h>

#include <algorithm>
#include <cerrno>
#include <string>
#include <typeinfo>

// Three modules meet here, all with hidden symbols: the library throws, and this program and the
// shared library `catcher` catch.
namespace foundation::core::except {
namespace {

    using network::IRI;
    using tests::Names;

    template <class Standard>
    void throwInsideTheLibrary(const Standard& standard)
    {
        AnonymousInternalException<Standard>(standard).rethrow();
    }

    struct Thrown {
        const char* what;
        void (*operation)();
        Names names;
        const char* text;
    };

    const Thrown family[] = {
        {"a text that is no IRI", [] { IRI iri(std::string("http://[")); },
         tests::namesForLogicError(), "IRI parsing failed"},
        {"an absent component", [] { IRI(std::string("a")).getScheme(); },
         tests::namesForRuntimeError(), "No scheme"},
        {"a failure that the library met and converted", [] { IRI(std::string("a")).getHost(); },
         tests::namesForRuntimeError(), "Item not set: Host"},
        {"invalid UTF-8", [] { IRI iri(std::string("\xFF")); }, tests::namesForException(),
         "Invalid UTF-8 sequence encountered while trying to encode UTF-32 character"},
        {"an exception", [] { throwInsideTheLibrary<std::exception>(std::logic_error("text")); },
         tests::namesForException(), "text"},
        {"a logic error", [] { throwInsideTheLibrary(std::logic_error("text")); },
         tests::namesForLogicError(), "text"},
        {"a runtime error", [] { throwInsideTheLibrary(std::runtime_error("text")); },
         tests::namesForRuntimeError(), "text"},
        {"an invalid argument", [] { throwInsideTheLibrary(std::invalid_argument("text")); },
         tests::namesForInvalidArgument(), "text"},
        {"a system error",
         [] {
             throwInsideTheLibrary(
                 std::system_error(EACCES, std::generic_category(), "Call to it failed."));
         },
         tests::namesForSystemError(), "Call to it failed.: Permission denied"},
        {"an exception of another library", [] { catcher::throwSystemError(EACCES); },
         tests::namesForSystemError(), "Made elsewhere: Permission denied"},
        {"a failure of this library under another one", [] { catcher::parse("http://["); },
         tests::namesForLogicError(), "IRI parsing failed"},
    };

    TEST(ExceptionAcrossLibraries, isTakenByEachOfItsHandlersInTheProgram)
    {
        for (const Thrown& row : family) {
            SCOPED_TRACE(row.what);
            EXPECT_EQ(tests::handlersThatTake(row.operation), row.names);
        }
    }

    TEST(ExceptionAcrossLibraries, isTakenByEachOfItsHandlersInAnotherLibrary)
    {
        for (const Thrown& row : family) {
            SCOPED_TRACE(row.what);
            EXPECT_EQ(catcher::handlersThatTake(row.operation), row.names);
            EXPECT_EQ(catcher::textTakenAsIException(row.operation), row.text);
        }
    }

    TEST(ExceptionAcrossLibraries, keepsItsCode)
    {
        EXPECT_EQ(catcher::codeTakenAsSystemError([] {
                      throwInsideTheLibrary(std::system_error(ENOENT, std::generic_category()));
                  }),
                  ENOENT);
    }

    // Misplaced UTF-16 is reported by an exception outside the family.
    TEST(ExceptionAcrossLibraries, outOfRangeIsTakenAsWhatItIs)
    {
        const auto misplaced = [] { IRI iri(std::u16string(1, char16_t{0xDC00})); };
        EXPECT_EQ(tests::handlersThatTake(misplaced), tests::namesForOutOfRange());
        EXPECT_EQ(catcher::handlersThatTake(misplaced), tests::namesForOutOfRange());
    }

    // One object for each type in the whole process, where the system can have that: comparing
    // addresses is then enough for a handler.
    bool isSame(const std::type_info* one, const std::type_info* other)
    {
        return network::tests::isTypeInformationShared() ? one == other : *one == *other;
    }

    TEST(ExceptionAcrossLibraries, hasOneTypeInformationInAllModules)
    {
        const auto here = tests::typesOfTheFamily();
        EXPECT_TRUE(std::ranges::equal(catcher::typesOfTheFamily(), here, isSame));
        for (const Thrown& row : family) {
            SCOPED_TRACE(row.what);
            try {
                row.operation();
                FAIL() << "nothing was thrown";
            } catch (const IException& thrown) {
                const auto* type = &typeid(thrown);
                const auto isThisType = [&](const auto* other) { return isSame(type, other); };
                EXPECT_EQ(std::ranges::count_if(here, isThisType), 1) << type->name();
            }
        }
    }

} // namespace
} // namespace foundation::core::except
