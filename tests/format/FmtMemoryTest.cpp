#include "FormattingMemory.hpp"

// Nothing else of fmt: the header is to do by itself.
#include <foundation/network/format/Fmt.hpp>

#include <gtest/gtest.h>

TEST(FmtMemory, mayFailWhereverAValueIsFormatted)
{
    foundation::network::tests::checkFormattingMemory([](const char* options, const auto& value) {
        return fmt::format(fmt::runtime(options), value);
    });
}
