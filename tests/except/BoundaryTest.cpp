#include "except/Boundary.hpp"

#include "except/Expected.hpp"
#include "except/Handlers.hpp"
#include "except/Throw.hpp"

#include <gtest/gtest.h>

#include <cerrno>
#include <new>
#include <string>

namespace foundation::core::except {
namespace {

    template <class Thrown>
    auto throwing(Thrown thrown)
    {
        return [thrown] { asInternalRuntimeError([&]() -> int { throw thrown; }); };
    }

    TEST(Boundary, answersWhatTheOperationAnswers)
    {
        EXPECT_EQ(asInternalRuntimeError([] { return std::string("text"); }), "text");
    }

    TEST(Boundary, convertsARuntimeErrorAndKeepsItsText)
    {
        const auto operation = throwing(std::runtime_error("Item not set: Host"));
        EXPECT_EQ(tests::handlersThatTake(operation), tests::namesForRuntimeError());
        try {
            operation();
        } catch (const std::exception& thrown) {
            EXPECT_STREQ(thrown.what(), "Item not set: Host");
        }
    }

    TEST(Boundary, reducesWhatIsDerivedFromARuntimeError)
    {
        const auto code = throwing(std::system_error(ENOENT, std::generic_category()));
        EXPECT_EQ(tests::handlersThatTake(code), tests::namesForRuntimeError());
        const auto family = throwing(
            AnonymousInternalException<std::system_error>(std::system_error(std::error_code())));
        EXPECT_EQ(tests::handlersThatTake(family), tests::namesForRuntimeError());
    }

    TEST(Boundary, letsOthersPass)
    {
        const auto convert = [](void (*operation)()) {
            return [operation] { asInternalRuntimeError([&] { operation(); }); };
        };
        EXPECT_EQ(tests::handlersThatTake(convert([] { throwOutOfRange("text"); })),
                  tests::namesForOutOfRange());
        EXPECT_EQ(tests::handlersThatTake(convert([] { throwAnonymous("text"); })),
                  tests::namesForException());
        EXPECT_EQ(tests::handlersThatTake(convert([] { throwLogicError("text"); })),
                  tests::namesForLogicError());
        EXPECT_TRUE(tests::isTakenBy<std::bad_alloc>(convert([] { throw std::bad_alloc(); })));
    }

} // namespace
} // namespace foundation::core::except
