// A test that crashes, for crash.py.

#include <gtest/gtest.h>

namespace {

TEST(CrashProbe, writesWhereNothingIs)
{
    volatile int* volatile nothing = nullptr;
    *nothing = 1;
}

} // namespace
