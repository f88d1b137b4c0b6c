#include "except/Throw.hpp"

#include "except/Expected.hpp"
#include "except/Handlers.hpp"

#include <gtest/gtest.h>

#include <string>

namespace foundation::core::except {
namespace {

    struct Thrower {
        const char* name;
        void (*operation)();
        tests::Names names;
    };

    const Thrower throwers[] = {
        {"throwLogicError", [] { throwLogicError("the text"); }, tests::namesForLogicError()},
        {"throwRuntimeError", [] { throwRuntimeError("the text"); }, tests::namesForRuntimeError()},
        {"throwOutOfRange", [] { throwOutOfRange("the text"); }, tests::namesForOutOfRange()},
        {"throwAnonymous", [] { throwAnonymous("the text"); }, tests::namesForException()},
    };

    TEST(Throw, throwsTheTypeThatItNamesWithTheText)
    {
        for (const Thrower& row : throwers) {
            SCOPED_TRACE(row.name);
            EXPECT_EQ(tests::handlersThatTake(row.operation), row.names);
            try {
                row.operation();
            } catch (const std::exception& thrown) {
                EXPECT_STREQ(thrown.what(), "the text");
            }
        }
    }

} // namespace
} // namespace foundation::core::except
