// The lists of filters: names, order, steps, and their blocks in projects.
#include <gtest/gtest.h>

#include "APP/ProjectText.h"
#include "COLORCURVE/clsColorCurve.h"
#include "FILTER/clsFilterBoolean.h"
#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterObject.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsUndoManager.h"

namespace {

class FilterLists : public ::testing::Test {
protected:
    void SetUp() override {
        GParamHooks.mFindParam = [this](const wxString& id) { return mLists.GetPCParamFromID(id); };
        mLists.mHooks.mTell = [this](const wxString& text) { mTold += text; };
        mLists.mHooks.mAddGroup = [this](ParamGroup_cls* group) { mLines.push_back(group->mID); };
        mLists.mHooks.mRemoveGroup = [this](ParamGroup_cls* group) {
            mLines.erase(std::remove(mLines.begin(), mLines.end(), group->mID), mLines.end());
        };
    }
    void TearDown() override {
        GCUndoList.Clear();
        GParamHooks = ParamHooks_st();
    }
    FilterCtrl_cls& List(int type) { return mLists.Get(GetFilterKind(type).mList); }
    FilterBase_cls& Add(int type) {
        List(type).AddFilterCommand(type);
        return *List(type).GetPCFilter(List(type).GetCount() - 1);
    }
    wxString Names(int list) {
        wxString names;
        for (int i = 0; i < mLists.Get(list).GetCount(); ++i)
            names += mLists.Get(list).GetPCFilter(i)->mpCData->mCName.mStrValue + " ";
        return names;
    }
    void Read(const wxString& text) {
        const std::wstring wide = text.ToStdWstring();
        TextStream_cls stream(wide);
        wxString line;
        mLeft.clear();
        while (NextProjectLine(stream, &line)) {
            mLeft += line + "\n";
            mLists.ReadStrLine(stream, line);
        }
    }

    FilterLists_cls mLists;
    wxString mTold;
    wxString mLeft; ///< lines that came to the round of all blocks
    std::vector<wxString> mLines;
};

TEST_F(FilterLists, NamesTakeTheFirstFreeNumberOfTheirList) {
    for (int i = 0; i < 3; ++i)
        Add(FILTER_BOOLEAN);
    Add(FILTER_FILTERING);
    EXPECT_EQ(Names(0), "Boolean00 Boolean01 Boolean02 Filtering00 ");
    mLists.SelectFilter(mLists.GetBoolean().GetPCFilter(0), true);
    mLists.DeleteSelectedFilter();
    Add(FILTER_BOOLEAN);
    EXPECT_EQ(Names(0), "Boolean01 Boolean02 Filtering00 Boolean00 ");
    for (int i = 0; i < 100; ++i)
        mLists.GetWorld().AddFilter(FILTER_FOG);
    EXPECT_EQ(mLists.GetWorld().GetPCFilter(99)->mpCData->mCName.mStrValue, "Fog98");
}

TEST_F(FilterLists, AClickFindsEachFilterWhateverTheirNumber) {
    for (int i = 0; i < 30; ++i) {
        mLists.GetBoolean().AddFilter(FILTER_BOOLEAN);
        mLists.GetObject().AddFilter(FILTER_GRID);
    }
    for (const int list : {FILTER_LIST_BOOLEAN, FILTER_LIST_OBJECT})
        for (int i = 0; i < 30; ++i) {
            const FilterCtrl_cls& filters = mLists.Get(list);
            const int name = filters.GetPickName(i);
            EXPECT_EQ(mLists.FindByPickName(name), filters.GetPCFilter(i)) << list << " " << i;
            EXPECT_TRUE(i >= 20 || name == 20 * (list + 1) + i) << name;
        }
    for (const int name : {-1, 0, 19, 70, 999999, 1000019, 1000030})
        EXPECT_EQ(mLists.FindByPickName(name), nullptr) << name;
}

TEST_F(FilterLists, StepsBringBackEveryByte) {
    const wxString empty = mLists.Serialize();
    auto& box = static_cast<FilterBoolean_cls&>(Add(FILTER_BOOLEAN));
    const double place[3] = {1.5, 2.0, -3.0};
    box.GetPCData()->mpCTranslate->SetKeyFrame(place, true, 0.25);
    Add(FILTER_FILTERING);
    Add(FILTER_DATABOX);
    const wxString made = mLists.Serialize();
    mLists.SelectFilter(&box, true);
    mLists.MoveSelectedFilter(-1); // the first one can't
    EXPECT_EQ(mLists.Serialize(), made);
    mLists.MoveSelectedFilter(1);
    EXPECT_EQ(Names(0), "Filtering00 Boolean00 ");
    mLists.DeleteSelectedFilter();
    EXPECT_EQ(Names(0), "Filtering00 ");
    EXPECT_EQ(mLists.GetPCParamFromID("Boolean00 Translate x"), nullptr);
    EXPECT_EQ(mLines, (std::vector<wxString>{"DataBox00"}));
    const wxString last = mLists.Serialize();
    GCUndoList.UndoCurrent();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(mLists.Serialize(), made);
    ASSERT_NE(mLists.GetPCParamFromID("Boolean00 Translate x"), nullptr);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
    EXPECT_EQ(mLists.Serialize(), empty);
    EXPECT_TRUE(mLines.empty());
    while (GCUndoList.IsRedoable())
        GCUndoList.ExecCurrent();
    EXPECT_EQ(mLists.Serialize(), last);
}

// Their names may be equal, and a name may hold the word that it stands for.
TEST_F(FilterLists, StepsGoToTheCurveThatWasEdited) {
    Read("---FilterCtrl0Begin\n-FilterBegin\nFilterType=0\nFilterName=Filter A\n-FilterEnd\n"
         "-FilterBegin\nFilterType=0\nFilterName=Filter A\n-FilterEnd\n---FilterCtrl0End\n");
    ASSERT_EQ(Names(0), "Filter A Filter A ");
    FilterCtrl_cls& list = mLists.GetBoolean();
    FilterBase_cls& second = *list.GetPCFilter(1);
    const wxString before = mLists.Serialize();
    const double place[3] = {1, 2, 3};
    second.mpCData->mpCTranslate->SetKeyFrame(place, true, 0.0);
    const auto at = [&list](int position) {
        return list.GetPCFilter(position)->mpCData->mpCTranslate->mVParams[1].Evaluate(0.0, 1.0);
    };
    EXPECT_EQ(at(0), 0.0);
    EXPECT_EQ(at(1), 2.0);
    mLists.SelectFilter(&second, true);
    mLists.DeleteSelectedFilter();
    GCUndoList.UndoCurrent();
    EXPECT_EQ(list.GetPCFilter(1)->mpCData->mpCTranslate->mID, "Filter A Translate");
    EXPECT_EQ(at(1), 2.0);
    while (GCUndoList.IsUndoable())
        GCUndoList.UndoCurrent();
    EXPECT_EQ(mLists.Serialize(), before);
    while (GCUndoList.IsRedoable())
        GCUndoList.ExecCurrent();
    EXPECT_EQ(list.GetCount(), 1);
    EXPECT_EQ(at(0), 0.0);
}

TEST_F(FilterLists, OneFilterOfAllIsSelected) {
    SceneObj_cls* selected = nullptr;
    mLists.mHooks.mSelectObject = [&](SceneObj_cls* object) { selected = object; };
    FilterBase_cls& cut = Add(FILTER_BOOLEAN);
    FilterBase_cls& fog = Add(FILTER_FOG);
    mLists.SelectFilter(&cut, true);
    mLists.SelectFilter(&fog, true);
    EXPECT_FALSE(cut.mpCData->mbSelected);
    EXPECT_EQ(mLists.GetPCSelected(), &fog);
    EXPECT_EQ(selected, fog.mpCData.get());
    mLists.DeleteSelectedFilter();
    EXPECT_EQ(selected, nullptr);
    EXPECT_EQ(mLists.GetPCSelected(), nullptr);
}

// Every kind with its keys in their order and with its defaults; scale 1 is what the user's new one has.
TEST_F(FilterLists, BlocksOfAllKinds) {
    for (int type = 0; type < kFilterTypes; ++type)
        Add(type);
    const wxString text = mLists.Serialize();
    const auto block = [&text](const wxString& name) {
        const wxString from = text.Mid(text.Find("FilterName=" + name + "\n"));
        return from.Left(from.Find("-FilterEnd\n"));
    };
    EXPECT_TRUE(text.StartsWith(
        "---FilterCtrl0Begin\n-FilterBegin\nFilterType=0\nFilterValid=1\nFilterName=Boolean00\n"
        "OperatorType=0\nRegionType=0\nBorderFactor=0.010000\n"
        "-ParamGroup=Filter Translate\n"));
    EXPECT_EQ(block("Filtering00"),
              "FilterName=Filtering00\nFilteringType=0\nIndexType=0\nFilteringString=0\n");
    EXPECT_EQ(block("CopyBox00"), "FilterName=CopyBox00\nCopyArrayMin0=0\nCopyArrayMax0=1\nCopyArrayMin1=0\n"
                                  "CopyArrayMax1=1\nCopyArrayMin2=0\nCopyArrayMax2=1\n");
    EXPECT_EQ(
        block("Stick00"),
        "FilterName=Stick00\nStickType=0\nStickRadius=0.500000\nStickWidth=10\nCalcType=0\nStickPath=NONE\n"
        "CritType=0\nCritA=1.000000\nCritB=2.000000\nSpecType=0\nSpecA=0\nSpecB=1\nShaderType=2\n"
        "Shininess=10\nTransmitType=0\nAlpha=1.000000\nReflectType=0\nReflectMin=0.200000\n"
        "ReflectMax=0.500000\nIOR=1.000000\nNormalPattern0=0\nNormalPattern1=0\nNormalDegree0=0.300000\n"
        "NormalDegree1=0.300000\nNormalScale0=1.000000\nNormalScale1=1.000000\n");
    EXPECT_TRUE(block("Object00")
                    .Contains("ObjectType=0\nImportPath=NONE\nArrayVector0=1.000000 0.000000 0.000000\n"))
        << block("Object00");
    EXPECT_TRUE(
        block("Grid00").Contains("GridMin=-1.000000\nGridMax=1.000000\nGridLineNum=20\nGridCoord=1\n"));
    EXPECT_TRUE(block("Fog00").Contains("FogEnd=1.000000\n-ParamGroup=Filter Parameter\n"));
    EXPECT_LT(block("DataBox00").Find("Filter Scale"), block("DataBox00").Find("Filter Anchor"));
    mLists.ClearFilters();
    EXPECT_EQ(mLists.Serialize().Freq('\n'), 6);
    Read(text);
    EXPECT_EQ(mLists.Serialize(), text);
    EXPECT_TRUE(mTold.empty()) << mTold;
}

TEST_F(FilterLists, WrongBlocksLoseNoMoreThanThemselves) {
    Add(FILTER_BOOLEAN);
    Add(FILTER_COPY);
    const wxString text = mLists.Serialize();
    // Cut in mid-filter, and the next block follows.
    for (size_t cut = text.Find("OperatorType"); cut < size_t(text.Find("-FilterEnd")); cut += 7) {
        mLists.ClearFilters();
        Read(text.Left(cut) + "\n---FilterCtrl2Begin\n-FilterBegin\nFilterType=6\nFilterName=kept\n");
        EXPECT_EQ(mLists.GetBoolean().GetCount(), 1) << cut;
        EXPECT_EQ(Names(2), "kept ") << cut;
        EXPECT_TRUE(mTold.Contains("Parts of filters could not be read: the end of Boolean00")) << mTold;
        mTold.clear();
    }
    mLists.ClearFilters();
    Read("---FilterCtrl0Begin\n-FilterBegin\nFilterType=8\nFilterName=odd\n-FilterEnd\n-FilterBegin\n"
         "FilterType=5\nFilterName=%s%n\nFilteringString=\n-FilterEnd\n-FilterBegin\nFilterValid=1\n-"
         "FilterEnd\n"
         "---FilterCtrl0End\nOther=1\n");
    EXPECT_EQ(Names(0), "%s%n ");
    EXPECT_TRUE(mTold.Contains("FilterType=8"));
    EXPECT_TRUE(mLeft.Contains("Other=1"));
}

TEST_F(FilterLists, WrongCountsAndNumbersLoseNoCurve) {
    auto& cut = static_cast<FilterBoolean_cls&>(Add(FILTER_BOOLEAN));
    for (const double time : {0.0, 0.5, 1.0}) {
        const double place[3] = {time, 2 * time, 3 * time};
        SceneObj_cls::SetKeyAt(cut.mpCData->mpCTranslate, place, time);
    }
    const wxString text = mLists.Serialize();
    for (const char* count : {"0", "1", "99", "2147483647", "99999999999999999999", "-3"}) {
        wxString wrong = text;
        wrong.Replace("itemnum 3", wxString("itemnum ") + count);
        mLists.ClearFilters();
        Read(wrong);
        EXPECT_EQ(mLists.Serialize(), text) << count;
    }
    EXPECT_TRUE(mTold.empty()) << mTold;
    // What there is no sense in is passed over, and told once, whatever there is of it.
    mLists.ClearFilters();
    wxString strange = "---FilterCtrl0Begin\n";
    for (int i = 0; i < 1000; ++i)
        strange += "-FilterBegin\nFilterType=0\nFilterName=Same\nBorderFactor=1e99\nOperatorType=-1\n"
                   "RegionType=99999999999999999999\nSomething=1\n-ParamGroup=Filter Scale\ndimension=3\n"
                   "Start\nParameter_x\ntimeDepend=0\nperiodic=0\nitemnum 1\n0 1 nan 0 inf\nParameter_y\n"
                   "itemnum 1\n0 1 -1e400 0 0\n-ParamGroup=Nobody\n-FilterEnd\n";
    Read(strange + "---FilterCtrl0End\n");
    EXPECT_EQ(mLists.GetBoolean().GetCount(), 1000);
    EXPECT_TRUE(mTold.Contains("2 lines of Same")) << mTold;
    EXPECT_LT(mTold.length(), 200u);
    const float places[2][3] = {{0, 0, 0}, {1, 1, 1}};
    DrawList_t list = {{0, 0.0f, 1.0f}, {1, 0.0f, 1.0f}};
    mLists.GetBoolean().Thin(list, 2, places, 0.5);
    EXPECT_EQ(list.size(), 2u) << "an operation that files alone know changes nothing";
}

TEST_F(FilterLists, OnlyWhatActsIsFound) {
    Add(FILTER_DATABOX);
    Add(FILTER_DATABOX);
    FilterCtrl_cls& objects = mLists.GetObject();
    FilterData_cls& first = *objects.GetPCFilter(0)->mpCData;
    EXPECT_EQ(objects.GetPCDataBox(), &first);
    first.mCValid.mValue = false;
    EXPECT_EQ(objects.GetPCDataBox(), objects.GetPCFilter(1)->mpCData.get());
    EXPECT_FALSE(objects.IsObjectExist());
    Add(FILTER_GRID);
    EXPECT_TRUE(objects.IsObjectExist());
    FilterBase_cls& fog = Add(FILTER_FOG);
    Add(FILTER_FOG);
    fog.mpCData->mCValid.mValue = false;
    EXPECT_EQ(mLists.GetWorld().GetPCFog(), &fog);
    auto& cut = static_cast<FilterBoolean_cls&>(Add(FILTER_BOOLEAN));
    EXPECT_TRUE(mLists.GetBoolean().IsBooleanChangeConstantColor());
    cut.GetPCData()->mCBorderFactor.mValue = 0.0f;
    EXPECT_FALSE(mLists.GetBoolean().IsBooleanChangeConstantColor());
}

} // namespace
