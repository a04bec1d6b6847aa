// Memory of snapshots: reuse, limits, starts that don't evict each other, and failure.
#include <cstdint>
#include <cstring>
#include <set>

#include <gtest/gtest.h>
#include <sys/resource.h>

#include "PDATA/clsArrayPool.h"

namespace {

bool IsZero(const void* array, size_t length) {
    const char* bytes = static_cast<const char*>(array);
    return bytes[0] == 0 && std::memcmp(bytes, bytes + 1, length - 1) == 0;
}

} // namespace

TEST(ArrayPool, TellsFreshMemoryFromUsed) {
    ArrayPool_cls pool;
    for (const size_t bytes : {size_t(1), size_t(40000), size_t(5) << 20}) {
        bool bZero = false;
        void* array = pool.Allocate(bytes, &bZero);
        ASSERT_NE(nullptr, array);
        EXPECT_EQ(0u, reinterpret_cast<uintptr_t>(array) % 64);
        ASSERT_TRUE(bZero && IsZero(array, bytes));
        std::memset(array, 7, bytes);
        pool.Free(array);
        void* again = pool.Allocate(bytes, &bZero);
        EXPECT_TRUE(!bZero || IsZero(again, bytes)) << "zero is what it says";
        if (bytes > size_t(1) << 20) {
            EXPECT_EQ(array, again) << "big ones come back";
        }
        std::memset(again, 7, bytes);
        pool.Free(again);
    }
    EXPECT_GT(pool.GetCachedBytes(), size_t(5) << 20);
    pool.Trim();
    EXPECT_EQ(0u, pool.GetCachedBytes());
}

TEST(ArrayPool, KeepsNoMoreThanItsLimitAndNoBadFits) {
    ArrayPool_cls pool(size_t(20) << 20);
    bool bZero;
    void* arrays[4];
    for (void*& array : arrays)
        array = pool.Allocate(size_t(7) << 20, &bZero);
    for (void* array : arrays)
        pool.Free(array);
    EXPECT_LE(pool.GetCachedBytes(), size_t(20) << 20);
    EXPECT_GT(pool.GetCachedBytes(), size_t(0));
    void* small = pool.Allocate(size_t(2) << 20, &bZero);
    EXPECT_TRUE(bZero) << "seven megabytes are not spent on two";
    pool.Free(small);
}

TEST(ArrayPool, StaggersTheStartsOfASnapshot) {
    ArrayPool_cls pool;
    for (const size_t number : {size_t(20000), size_t(1000000)}) {
        ParticleArrays_st arrays;
        ASSERT_TRUE(pool.AllocateParticles(number, true, &arrays));
        EXPECT_EQ(255u, arrays.mZeroBits);
        std::set<uintptr_t> starts;
        for (const void* array : {static_cast<void*>(arrays.mpPos), static_cast<void*>(arrays.mpVel),
                                  static_cast<void*>(arrays.mpRadius), static_cast<void*>(arrays.mpValue1),
                                  static_cast<void*>(arrays.mpID), static_cast<void*>(arrays.mpDRadius)})
            starts.insert(reinterpret_cast<uintptr_t>(array) % 4096);
        if (number == 1000000) {
            EXPECT_EQ(6u, starts.size());
        }
        std::memset(static_cast<void*>(arrays.mpPos), 1, 12 * number);
        arrays.mpDValue1[number - 1] = 1;
        pool.FreeParticles(&arrays);
        EXPECT_EQ(nullptr, arrays.mpPos);
    }
    ParticleArrays_st noId;
    ASSERT_TRUE(pool.AllocateParticles(10, false, &noId));
    EXPECT_EQ(nullptr, noId.mpID);
    pool.FreeParticles(&noId);
}

TEST(ArrayPool, AnswersWithNothingWhenMemoryIsShort) {
    ArrayPool_cls pool;
    bool bZero = true;
    EXPECT_EQ(nullptr, pool.Allocate(SIZE_MAX / 4, &bZero));
    EXPECT_EQ(nullptr, pool.Allocate(SIZE_MAX, &bZero));
    ParticleArrays_st arrays;
    EXPECT_FALSE(pool.AllocateParticles(SIZE_MAX / 48, true, &arrays));
    EXPECT_EQ(nullptr, arrays.mpPos);
    EXPECT_FALSE(pool.AllocateParticles(SIZE_MAX / 3, true, &arrays));
}
