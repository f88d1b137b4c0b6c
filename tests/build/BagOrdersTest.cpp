#include "build/BagTesting.hpp"
#include "build/TwinBag.hpp"

#include <gtest/gtest.h>

#include <cstddef>
#include <string>
#include <vector>

// All short sequences of setters and clears over the seven components, against a naive bag.
namespace foundation::network::tests {
namespace {

    constexpr std::size_t PORT = fieldCount;
    constexpr std::size_t callCount = 2 * (fieldCount + 1);
    constexpr std::size_t longest = 4;

    // A text that says at which place in the sequence it was set.
    std::string textFor(std::size_t component, std::size_t place)
    {
        return (component == PATH ? "/p" : "p") + std::to_string(place);
    }

    void set(TwinBag& bag, std::size_t component, std::size_t place, Level level)
    {
        const auto number = static_cast<unsigned short>(place);
        if (component == PORT) {
            if (level == Level::IRIArgs)
                bag.library.setPort(number);
            else
                static_cast<Base&>(bag.library).setPort(number);
            bag.naive.setPort(number);
            return;
        }
        const TextComponent& operations = textComponents[component];
        const std::string text = textFor(component, place);
        if (level == Level::IRIArgs)
            (bag.library.*operations.setUtf8)(text);
        else
            (static_cast<Base&>(bag.library).*operations.setBaseUtf8)(text);
        bag.naive.set(static_cast<Field>(component), text);
    }

    void clear(TwinBag& bag, std::size_t component, Level level)
    {
        if (component == PORT) {
            if (level == Level::IRIArgs)
                bag.library.clearPort();
            else
                static_cast<Base&>(bag.library).clearPort();
            bag.naive.clearPort();
            return;
        }
        const TextComponent& operations = textComponents[component];
        if (level == Level::IRIArgs)
            (bag.library.*operations.clear)();
        else
            (static_cast<Base&>(bag.library).*operations.clearBase)();
        bag.naive.clear(static_cast<Field>(component), level);
    }

    TwinBag twinOf(const IRIArgs& library, const NaiveBag& naive)
    {
        return {library, naive};
    }

    TwinBag fullTwin()
    {
        NaiveBag naive;
        const char* const texts[] = {"s", "u", "h", "/p", "q", "f"};
        for (std::size_t field = 0; field < fieldCount; ++field)
            naive.set(static_cast<Field>(field), std::string(texts[field]));
        naive.setPort(8);
        return twinOf(fullBag(), naive);
    }

    // Makes every call behind those that led to `bag`, on a copy each, and so on.
    void tryAll(const TwinBag& bag, Level level, std::string calls, std::size_t place,
                Outcomes& outcomes)
    {
        ASSERT_TRUE(buildAlike(bag, Depth::ONE_TEXT, outcomes)) << calls;
        if (place == longest)
            return;
        for (std::size_t call = 0; call < callCount; ++call) {
            TwinBag next = bag;
            const std::size_t component = call / 2;
            if (call % 2 == 0)
                set(next, component, place, level);
            else
                clear(next, component, level);
            tryAll(next, level,
                   calls + (call % 2 == 0 ? " set " : " clear ") + std::to_string(component),
                   place + 1, outcomes);
            if (testing::Test::HasFatalFailure())
                return;
        }
    }

    void tryAllFrom(const TwinBag& bag, Level level)
    {
        Outcomes outcomes;
        tryAll(bag, level, "", 0, outcomes);
        for (const char* outcome : {"done", "User Info requires a host", "Port requires a host"})
            EXPECT_GT(outcomes[outcome], 100) << outcome;
    }

    TEST(BagOrders, ofCallsOfIRIArgsOnAFreshBag)
    {
        tryAllFrom(TwinBag(), Level::IRIArgs);
    }

    TEST(BagOrders, ofCallsOfArgsBaseOnAFreshBag)
    {
        tryAllFrom(TwinBag(), Level::ArgsBase);
    }

    TEST(BagOrders, ofCallsOfIRIArgsOnAFullBag)
    {
        tryAllFrom(fullTwin(), Level::IRIArgs);
    }

    TEST(BagOrders, ofCallsOfArgsBaseOnAFullBag)
    {
        tryAllFrom(fullTwin(), Level::ArgsBase);
    }

} // namespace
} // namespace foundation::network::tests
