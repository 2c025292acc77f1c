// Checks of values that share their data.

#pragma once

#include <gtest/gtest.h>

#include <type_traits>
#include <utility>

/// Checks that a value holds nothing but a pointer to data that its copies share until one of them is changed, and that
/// an object that was moved from can be assigned and destroyed.
/// \param read    reads what \a change changes
template<class Value, class Change, class Read>
void ExpectSharedValue(const Value& original, const Change& change, const Read& read)
{
    static_assert(std::is_nothrow_move_constructible_v<Value> && std::is_nothrow_move_assignable_v<Value>);
    EXPECT_EQ(sizeof(void*), sizeof(Value)) << "new members would change the size of the value";

    const auto before = read(original);
    Value copy = original;
    change(copy);
    const auto after = read(copy);
    EXPECT_NE(before, after);
    EXPECT_EQ(before, read(original));
    copy = original;
    change(copy);
    EXPECT_EQ(after, read(copy));
    EXPECT_EQ(before, read(original));

    Value constructed = std::move(copy);
    EXPECT_EQ(after, read(constructed));
    copy = original; // NOLINT(bugprone-use-after-move): assigning is allowed
    EXPECT_EQ(before, read(copy));
    constructed = std::move(copy);
    EXPECT_EQ(before, read(constructed));
    change(constructed);
    copy = std::move(constructed); // constructed is destroyed without data
    EXPECT_EQ(after, read(copy));

    Value other = original;
    swap(copy, other);
    EXPECT_EQ(before, read(copy));
    EXPECT_EQ(after, read(other));
}
