// pslist_test.cpp - links of the list at its first and last elements.
#include "psbase/pslist.h"

#include <gtest/gtest.h>
#include <vector>

namespace {

// Read forwards, after a check that the way back over prev gives the same.
std::vector<int> items(psList<int>& list) {
    std::vector<int> forward;
    for (int item : list) {
        forward.push_back(item);
    }
    std::vector<int> backward;
    for (auto* node = list.end().pNode()->prev; node != nullptr; node = node->prev) {
        backward.insert(backward.begin(), node->item);
    }
    EXPECT_EQ(forward, backward);
    EXPECT_EQ(list.size(), static_cast<int>(forward.size()));
    return forward;
}

TEST(PsList, InsertsAndErasesAtBothEnds) {
    psList<int> list;
    auto const middle = list.insert(list.end(), 2);
    list.insert(list.begin(), 1);
    list.insert(list.end(), 4);
    auto after = middle;
    list.insert(++after, 3);
    EXPECT_EQ(items(list), (std::vector<int>{1, 2, 3, 4}));

    EXPECT_EQ(*list.erase(list.begin()), 2);
    EXPECT_TRUE(list.begin() == middle);
    after = middle;
    EXPECT_EQ(*after++, 2);
    EXPECT_TRUE(list.erase(after, list.end()) == list.end());
    EXPECT_EQ(items(list), (std::vector<int>{2}));
}

TEST(PsList, KeepsItsSentinelThroughClearAndSwap) {
    psList<int> list;
    auto const end = list.end();
    list.insert(list.end(), 1);
    list.insert(list.end(), 2);
    psList<int> copy(list);
    list.clear();
    EXPECT_TRUE(list.begin() == end && list.end() == end);
    list.swap(copy);
    EXPECT_EQ(items(list), (std::vector<int>{1, 2}));
    copy.insert(copy.end(), 3);
    EXPECT_EQ(items(copy), (std::vector<int>{3}));
}

} // namespace
