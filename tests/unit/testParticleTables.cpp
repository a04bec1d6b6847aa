// The tables of particle columns, record items and colouring scalars.
#include <cstring>
#include <set>

#include <gtest/gtest.h>

#include "PDATA/ParticleColumns.h"
#include "PDATA/ParticleScalars.h"
#include "PDATA/SnapshotBody.h"
#include "PDATA/clsArrayPool.h"
#include "PDATA/clsGrammerBase.h"

namespace {

TEST(ParticleTables, EveryItemOfARecordFillsOneColumnOfItsSize) {
    size_t bytes = 0;
    unsigned bits = 0;
    ForEachColumn([&](const auto& column) {
        EXPECT_EQ(bits & column.mBit, 0u) << "a bit of its own";
        bits |= column.mBit;
        bytes += sizeof(*(ParticleArrays_st().*column.mpArray));
        if (column.mItem == kNoItem) return;
        EXPECT_EQ(GetBodyItemBit(column.mItem), unsigned(column.mBit));
    });
    EXPECT_EQ(bits, 255u);
    EXPECT_EQ(bytes, 45u) << "what a particle costs";
    for (int code = -2; code < kBodyCodes + 2; ++code) {
        const bool bFills = code >= 0 && code < kBodyCodes && !IsBodyDummy(code);
        EXPECT_EQ(GetBodyItemBit(code) != 0, bFills) << code;
        EXPECT_EQ(GrammerBase_cls::GetBodyItemByte(code) > 0, code >= 0 && code < kBodyCodes) << code;
    }
}

TEST(ParticleTables, ABitClearsItsColumnAlone) {
    constexpr size_t kNumber = 5;
    ArrayPool_cls pool;
    ParticleArrays_st arrays;
    ASSERT_TRUE(pool.AllocateParticles(kNumber, true, &arrays));
    for (unsigned bit = 1; bit < 256; bit *= 2) {
        const auto isFilled = [&arrays](const auto& column, size_t i) {
            const auto* bytes = reinterpret_cast<const unsigned char*>(arrays.*column.mpArray + i);
            return bytes[0] == 7;
        };
        ForEachColumn([&](const auto& column) {
            std::memset(static_cast<void*>(arrays.*column.mpArray), 7,
                        kNumber * sizeof(*(arrays.*column.mpArray)));
        });
        ClearParticles(arrays, bit, 1, 4);
        ForEachColumn([&](const auto& column) {
            for (size_t i = 0; i < kNumber; ++i)
                EXPECT_EQ(isFilled(column, i), column.mBit != bit || i == 0 || i == 4) << bit << " " << i;
        });
    }
    pool.FreeParticles(&arrays);
    ForEachColumn([&](const auto& column) { EXPECT_EQ(arrays.*column.mpArray, nullptr); });
}

TEST(ParticleTables, ScalarsKeepTheNumbersThatProjectsHold) {
    const char* const labels[] = {"VALUE1",      "Radius",      "Position", "Position(X)",
                                  "Position(Y)", "Position(Z)", "Velocity", "Velocity(X)",
                                  "Velocity(Y)", "Velocity(Z)", "ID"};
    const std::vector<wxString> shown = ParticleScalars_st::GetLabels();
    ASSERT_GE(shown.size(), std::size(labels));
    for (unsigned depend = 0; depend < std::size(labels); ++depend) {
        EXPECT_EQ(shown[depend], labels[depend]);
        EXPECT_EQ(ParticleScalars_st::NeedsSlopes(depend), shown[depend].StartsWith("Velocity"));
        EXPECT_EQ(ParticleScalars_st::IsComputed(depend), depend > 1);
    }
    // What a project of a later version may hold.
    EXPECT_EQ(ParticleScalars_st::Find(4000000000u), nullptr);
    EXPECT_TRUE(ParticleScalars_st::IsComputed(4000000000u));
    EXPECT_FALSE(ParticleScalars_st::NeedsSlopes(4000000000u));
}

// Whatever stands in the table: its choice, its values and their absence.
TEST(ParticleTables, EveryScalarHasALabelAndIsZeroWithoutArrays) {
    std::set<wxString> labels;
    for (const wxString& label : ParticleScalars_st::GetLabels())
        EXPECT_TRUE(!label.empty() && labels.insert(label).second) << label;
    ASSERT_EQ(ParticleScalars_st::Find(unsigned(labels.size())), nullptr);
    ParticleScalars_st none;
    none.mNumber = 3;
    for (unsigned depend = 0; depend <= labels.size(); ++depend) {
        float values[3] = {1, 1, 1};
        none.Fill(values, depend, 0, 3);
        EXPECT_EQ(values[0] + values[1] + values[2], 0.0f) << depend;
        const ParticleScalar_st* pScalar = ParticleScalars_st::Find(depend);
        EXPECT_TRUE(!pScalar || (pScalar->mpArray == nullptr) != (pScalar->mFill == nullptr)) << depend;
    }
}

} // namespace
