// Stick filters: keys of our own making, and the table that makes one filter a pair of types.
#include <numeric>

#include <gtest/gtest.h>

#include "APP/ProjectText.h"
#include "FILTER/StickPairs.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "PARAM/clsUndoManager.h"

namespace {

class StickFilters : public ::testing::Test {
protected:
    void TearDown() override { GCUndoList.Clear(); }
    FilterCtrl_cls& List() { return mLists.GetObject(); }
    FilterStick_cls& At(int position) { return static_cast<FilterStick_cls&>(*List().GetPCFilter(position)); }
    FilterStick_cls& Add() {
        List().AddFilterCommand(FILTER_STICK);
        return At(List().GetCount() - 1);
    }
    wxString Names() {
        wxString names;
        for (int i = 0; i < List().GetCount(); ++i)
            names += At(i).GetPCData()->mCName.mStrValue + ", ";
        return names;
    }
    static void Read(FilterLists_cls& lists, const wxString& text) {
        const std::wstring wide = text.ToStdWstring();
        TextStream_cls stream(wide);
        wxString line;
        while (NextProjectLine(stream, &line))
            lists.ReadStrLine(stream, line);
    }

    FilterLists_cls mLists;
};

TEST_F(StickFilters, OurOwnKeysAreWrittenOnlyWhereTheyAreOn) {
    FilterStickData_cls& data = *Add().GetPCData();
    const wxString plain = List().Serialize();
    EXPECT_FALSE(plain.Contains("AcrossFaces"));
    EXPECT_FALSE(plain.Contains("KeepUntil"));
    EXPECT_TRUE(plain.Contains("NormalScale1=1.000000\n-FilterEnd\n")) << plain;
    data.mCAcross.mValue = true;
    data.mCKeepUntil.mValue = 1.5f;
    const wxString more = List().Serialize();
    EXPECT_TRUE(more.Contains("NormalScale1=1.000000\nAcrossFaces=1\nKeepUntil=1.500000\n-FilterEnd\n"));
    for (const wxString& text : {plain, more}) {
        FilterLists_cls again;
        Read(again, text);
        ASSERT_EQ(again.GetObject().GetCount(), 1);
        EXPECT_EQ(again.GetObject().Serialize(), text);
    }
    data.mCAcross.mValue = false;
    data.mCKeepUntil.mValue = 0.0f;
    EXPECT_EQ(List().Serialize(), plain);
}

TEST_F(StickFilters, KeepingNeedsTheRuleAndALargerDistance) {
    FilterStick_cls& stick = Add();
    FilterStickData_cls& data = *stick.GetPCData();
    data.mCCritA.mValue = 1.0f;
    data.mCKeepUntil.mValue = 1.5f;
    EXPECT_FALSE(stick.KeepsBonds()) << "from a file";
    data.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
    EXPECT_TRUE(stick.KeepsBonds());
    data.mCCritType.mValue = STICK_RAMP;
    EXPECT_FALSE(stick.KeepsBonds());
    data.mCCritType.mValue = STICK_STEP;
    for (const float keep : {1.0f, 0.5f, 0.0f, std::numeric_limits<float>::quiet_NaN()}) {
        data.mCKeepUntil.mValue = keep;
        EXPECT_FALSE(stick.KeepsBonds()) << keep;
    }
}

TEST_F(StickFilters, APairOfTypesIsAFilterAndAllOfThemAStep) {
    const unsigned char types[] = {1, 0, 0, 7, 1, 0};
    const std::vector<TypeCount_st> counts = CountTypes(types, 6);
    ASSERT_EQ(counts.size(), 3u);
    EXPECT_EQ(counts[2].mType, 7);
    EXPECT_EQ(counts[0].mCount, 3);
    FilterStick_cls& like = Add();
    Add();
    FilterStickData_cls& data = *like.GetPCData();
    data.mCStickType.mValue = FilterStickData_cls::CYLINDER;
    data.mCTexture.mCAlpha.mValue = 0.25f;
    data.mCAcross.mValue = true;
    data.mCCritA.mValue = 2.5f;
    data.mCKeepUntil.mValue = 3.0f;
    std::vector<StickPair_st> pairs = ListStickPairs(counts, data);
    ASSERT_EQ(pairs.size(), 6u);
    EXPECT_EQ(pairs[1].mTypeA, 0);
    EXPECT_EQ(pairs[1].mTypeB, 1);
    EXPECT_EQ(pairs[5].mA, 2.5f);
    EXPECT_EQ(pairs[5].mSecond, 3.0f);
    pairs[0].mbOn = pairs[2].mbOn = pairs[4].mbOn = false;
    pairs[1].mA = 1.25f;
    pairs[1].mSecond = 1.75f;

    const wxString before = List().Serialize();
    const unsigned steps = GCUndoList.GetCurrent();
    AddStickPairs(like, pairs, false);
    EXPECT_EQ(Names(), "Stick00, Stick00 (0-1), Stick00 (1-1), Stick00 (7-7), Stick01, ");
    const wxString after = List().Serialize();
    const FilterStickData_cls& made = *At(1).GetPCData();
    EXPECT_EQ(made.mCCalcType.mValue, FilterStickData_cls::CALCULATE);
    EXPECT_EQ(made.mCSpecType.mValue, unsigned(STICK_TYPES_A_B));
    EXPECT_EQ(made.mCSpecA.mValue, 0);
    EXPECT_EQ(made.mCSpecB.mValue, 1);
    EXPECT_EQ(made.mCCritA.mValue, 1.25f);
    EXPECT_EQ(made.mCKeepUntil.mValue, 1.75f);
    EXPECT_EQ(made.mCTexture.mCAlpha.mValue, 0.25f);
    EXPECT_EQ(made.mCStickType.mValue, unsigned(FilterStickData_cls::CYLINDER));
    EXPECT_TRUE(made.mCAcross.mValue);
    GCUndoList.UndoCurrent();
    EXPECT_EQ(GCUndoList.GetCurrent(), steps) << "one step";
    EXPECT_EQ(List().Serialize(), before);
    GCUndoList.ExecCurrent();
    EXPECT_EQ(List().Serialize(), after);
    GCUndoList.UndoCurrent();

    data.mCCritType.mValue = STICK_RAMP;
    AddStickPairs(like, pairs, true);
    EXPECT_EQ(Names(), "Stick00 (0-1), Stick00 (1-1), Stick00 (7-7), Stick01, ");
    EXPECT_EQ(At(0).GetPCData()->mCCritB.mValue, 1.75f);
    GCUndoList.UndoCurrent();
    data.mCCritType.mValue = STICK_STEP;
    EXPECT_EQ(List().Serialize(), before);
    for (StickPair_st& pair : pairs)
        pair.mbOn = false;
    AddStickPairs(like, pairs, true);
    EXPECT_EQ(List().Serialize(), before) << "nothing asked for, nothing done";
}

TEST_F(StickFilters, ATableHasTheTypesThatAreManiest) {
    std::vector<unsigned char> types;
    for (int type = 0; type < 256; ++type)
        types.insert(types.end(), size_t(1 + (type * 37) % 256), static_cast<unsigned char>(type));
    const std::vector<StickPair_st> pairs =
        ListStickPairs(CountTypes(types.data(), static_cast<long long>(types.size())), *Add().GetPCData());
    ASSERT_EQ(pairs.size(), size_t(kMostPairTypes * (kMostPairTypes + 1) / 2));
    for (const StickPair_st& pair : pairs)
        EXPECT_GE((pair.mTypeA * 37) % 256, 256 - kMostPairTypes);
    EXPECT_TRUE(CountTypes(nullptr, 0).empty());
    EXPECT_TRUE(ListStickPairs({}, *At(0).GetPCData()).empty());
}

} // namespace
