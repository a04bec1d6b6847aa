#include <algorithm>
#include <limits>
#include <random>
#include <vector>

#include <gtest/gtest.h>

#include "PDATA/clsIDIndex.h"

TEST(IDIndex, FindsWhatAScanWouldFind) {
    std::mt19937 random(11);
    for (const unsigned range : {1u, 50u, 3000u, 4000000000u}) {
        std::vector<int> ids(2000);
        for (int& id : ids)
            id = static_cast<int>(random() % range);
        ids[5] = std::numeric_limits<int>::min();
        ids[6] = std::numeric_limits<int>::max();
        IDIndex_cls index;
        ASSERT_TRUE(index.Make(ids.data(), int(ids.size())));
        for (int round = 0; round < 3000; ++round) {
            const int id = round % 3 == 0 ? static_cast<int>(random() % range) : ids[random() % ids.size()];
            const int begin = static_cast<int>(random() % ids.size());
            const int end = static_cast<int>(random() % (ids.size() + 1));
            const auto from = ids.begin() + std::min(begin, end);
            const auto found = std::find(from, ids.begin() + end, id);
            EXPECT_EQ(index.FindBetween(id, begin, end),
                      found == ids.begin() + end ? -1 : int(found - ids.begin()));
            const auto count = std::count(ids.begin(), ids.end(), id);
            const int only = index.FindOnly(id);
            EXPECT_EQ(count == 0  ? -1
                      : count > 1 ? IDIndex_cls::kSeveral
                                  : ids[size_t(only)],
                      count == 1 ? id : only);
        }
    }
    IDIndex_cls none;
    EXPECT_TRUE(none.Make(nullptr, 0));
    EXPECT_EQ(none.FindOnly(3), -1);
    EXPECT_EQ(none.FindBetween(3, 0, 10), -1);
}
