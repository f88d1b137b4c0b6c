#include <foundation/network/detail/ImmutableIterableRange.hpp>

#include <foundation/network/HardwareAddress.hpp>
#include <foundation/network/InetAddress.hpp>
#include <foundation/network/InterfaceAddress.hpp>
#include <foundation/network/NetworkInterface.hpp>

#include "iri/AllocationCounter.hpp"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <iterator>
#include <string>
#include <type_traits>
#include <utility>
#include <vector>

namespace foundation::network::detail {
namespace {

    using namespace tests;

    template <class Range>
    concept ChangesThroughIterators = requires(Range& range, typename Range::value_type value)
    {
        *range.begin() = value;
    };

    template <class Range>
    concept HasMutator = requires(Range& range, typename Range::value_type value)
    {
        range.push_back(value);
    }
    || requires(Range& range)
    {
        range.clear();
    }
    || requires(Range& range)
    {
        range.pop_back();
    }
    || requires(Range& range)
    {
        range.resize(1);
    }
    || requires(Range& range)
    {
        range.erase(range.begin());
    }
    || requires(Range& range, typename Range::value_type value)
    {
        range.insert(range.begin(), value);
    }
    || requires(Range& range, typename Range::value_type value)
    {
        range[0] = value;
    }
    || requires(Range& range)
    {
        range.data();
    };

    template <class T>
    constexpr bool isReadOnlyRange()
    {
        using Range = ImmutableIterableRange<T>;
        using Iterator = typename std::vector<T>::const_iterator;
        return std::is_same_v<decltype(std::declval<Range&>().begin()), Iterator>
               && std::is_same_v<decltype(std::declval<Range&>().end()), Iterator>
               && std::is_same_v<decltype(std::declval<const Range&>().size()), std::size_t>
               && std::is_same_v<decltype(std::declval<const Range&>().empty()), bool>
               && !ChangesThroughIterators<Range> && !HasMutator<Range>
               && std::is_nothrow_default_constructible_v<Range>
               && std::is_copy_constructible_v<Range> && std::is_copy_assignable_v<Range>
               && std::is_nothrow_move_constructible_v<Range>
               && std::is_nothrow_move_assignable_v<Range> && !std::is_polymorphic_v<Range>
               && !std::is_convertible_v<std::vector<T>, Range>;
    }

    static_assert(isReadOnlyRange<unsigned char>());
    static_assert(isReadOnlyRange<InetAddress>());
    static_assert(isReadOnlyRange<InterfaceAddress>());
    static_assert(isReadOnlyRange<NetworkInterface>());
    static_assert(!ChangesThroughIterators<HardwareAddress> && !HasMutator<HardwareAddress>);
    // The questions do find what they look for.
    static_assert(ChangesThroughIterators<std::vector<unsigned char>>);
    static_assert(HasMutator<std::vector<unsigned char>>);
    static_assert(HasMutator<std::array<unsigned char, 1>>);

    using Range = ImmutableIterableRange<InterfaceAddress>;

    InterfaceAddress numbered(unsigned number)
    {
        const auto last = static_cast<unsigned char>(number);
        return {InetAddress(std::array<unsigned char, 4>{10, 0, 0, last}), 8};
    }

    Range numbered(unsigned first, unsigned last)
    {
        std::vector<InterfaceAddress> addresses;
        for (unsigned number = first; number < last; ++number)
            addresses.push_back(numbered(number));
        return Range(std::move(addresses));
    }

    std::vector<std::string> textsOf(const Range& range)
    {
        std::vector<std::string> texts;
        for (const InterfaceAddress& address : range)
            texts.push_back(address.toString());
        return texts;
    }

    using Texts = std::vector<std::string>;

    TEST(ImmutableIterableRange, withoutAnythingIsEmpty)
    {
        const Range range;
        EXPECT_TRUE(range.empty());
        EXPECT_EQ(range.size(), 0U);
        EXPECT_EQ(range.begin(), range.end());
    }

    TEST(ImmutableIterableRange, keepsTheOrderOfItsElements)
    {
        const Range range = numbered(7, 10);
        EXPECT_EQ(textsOf(range), (Texts{"10.0.0.7/8", "10.0.0.8/8", "10.0.0.9/8"}));
        EXPECT_EQ(range.size(), 3U);
        EXPECT_FALSE(range.empty());
        EXPECT_EQ(std::distance(range.begin(), range.end()), 3);
    }

    TEST(ImmutableIterableRange, isARangeForAlgorithms)
    {
        const ImmutableIterableRange<unsigned char> bytes(std::vector<unsigned char>{3, 1, 2});
        EXPECT_EQ(*std::max_element(bytes.begin(), bytes.end()), 3);
        EXPECT_EQ(*std::ranges::min_element(bytes), 1);
        EXPECT_TRUE(std::ranges::equal(bytes, std::vector<unsigned char>{3, 1, 2}));
    }

    TEST(ImmutableIterableRange, copiesHoldEqualElementsAndLiveByThemselves)
    {
        Range original = numbered(1, 4);
        const Range copy(original);
        Range assigned;
        assigned = original;
        EXPECT_EQ(textsOf(copy), textsOf(original));
        EXPECT_EQ(textsOf(assigned), textsOf(original));
        original = numbered(5, 6);
        EXPECT_EQ(textsOf(original), (Texts{"10.0.0.5/8"}));
        EXPECT_EQ(copy.size(), 3U);
        EXPECT_EQ(assigned.size(), 3U);
    }

    TEST(ImmutableIterableRange, isEmptyAfterBeingMovedFrom)
    {
        Range source = numbered(1, 4);
        Range moved(std::move(source));
        EXPECT_TRUE(source.empty());
        EXPECT_EQ(source.size(), 0U);
        EXPECT_EQ(source.begin(), source.end());
        EXPECT_EQ(moved.size(), 3U);

        Range other = numbered(5, 6);
        other = std::move(moved);
        EXPECT_TRUE(moved.empty());
        EXPECT_EQ(other.size(), 3U);
        moved = other;
        EXPECT_EQ(textsOf(moved), textsOf(other));
    }

    TEST(ImmutableIterableRange, assignedToItselfStaysWhatItIs)
    {
        Range range = numbered(1, 4);
        Range& same = range;
        range = same;
        EXPECT_EQ(range.size(), 3U);
        range = std::move(same);
        EXPECT_EQ(range.size(), 3U);
    }

    // A copy takes memory for its handles and for nothing behind them.
    TEST(ImmutableIterableRange, copiesShareWhatTheHandlesHold)
    {
        const Range range = numbered(0, 100);
        const std::size_t before = allocationCount();
        const std::size_t bytesBefore = bytesInUse();
        const Range copy(range);
        EXPECT_EQ(allocationCount() - before, 1U);
        EXPECT_EQ(bytesInUse() - bytesBefore, 100 * sizeof(InterfaceAddress));
        EXPECT_EQ(copy.size(), 100U);
    }

    TEST(ImmutableIterableRange, movesTakeNoMemory)
    {
        Range range = numbered(0, 100);
        const std::size_t before = allocationCount();
        Range moved(std::move(range));
        range = std::move(moved);
        EXPECT_EQ(allocationCount(), before);
        EXPECT_EQ(range.size(), 100U);
    }

    TEST(ImmutableIterableRange, handlesAreCopiedWithoutMemory)
    {
        const InetAddress address(std::string("10.0.0.1"));
        const InterfaceAddress interfaceAddress(address, 8);
        const std::size_t before = allocationCount();
        const InetAddress copy(address);
        const InterfaceAddress interfaceCopy(interfaceAddress);
        EXPECT_EQ(allocationCount(), before);
    }

} // namespace
} // namespace foundation::network::detail
