#include "CONFITEM/clsConfItemList.h"

#include <gtest/gtest.h>
#include <wx/arrstr.h>

TEST(ConfItem, defaultsSayNoneAndAnEmptyValueKeepsWhatIsThere) {
    ConfItemFLOAT_cls item("Scale=", "");
    EXPECT_EQ(item.mStrKey, "Scale=");
    EXPECT_EQ(item.mStrValue, "NONE");
    item.SetItem("Scale=", "2.5");
    item.SetItem("Other=", "");
    EXPECT_EQ(item.mStrKey, "Other=");
    EXPECT_EQ(item.mValue, 2.5f);
    ConfItemINTARRAY_cls array;
    EXPECT_EQ(array.mStrKey, "NONE");
    EXPECT_EQ(array.mCount, 0u);
    EXPECT_EQ(array.Serialize(), "NONE\n");
}

TEST(ConfItem, writesEachTypeInItsFormat) {
    EXPECT_EQ(ConfItemINT_cls("I=", "-100").Serialize(), "I=-100\n");
    EXPECT_EQ(ConfItemUINT_cls("U=", "4000000000").Serialize(), "U=4000000000\n");
    EXPECT_EQ(ConfItemFLOAT_cls("F=", "0.03").Serialize(), "F=0.030000\n");
    EXPECT_EQ(ConfItemFLOAT_cls("F=", "-3.4e38").GetItemStr().length(), 47u);
    EXPECT_EQ(ConfItemDOUBLE_cls("D=", "1234567.875").Serialize(), "D=1.23457e+06\n");
    EXPECT_EQ(ConfItemDOUBLE_cls("D=", "0.1").GetItemStr(), "0.1");
    EXPECT_EQ(ConfItemBOOL_cls("B=", "-7").Serialize(), "B=1\n");
    EXPECT_EQ(ConfItemSTR_cls("S=", "/data/a b.dat").Serialize(), "S=/data/a b.dat\n");
    EXPECT_EQ(ConfItemFLOATARRAY_cls("T=", "0 1.5 -2").Serialize(), "T=0.000000 1.500000 -2.000000\n");
    EXPECT_EQ(ConfItemDOUBLEARRAY_cls("T=", "1e-7 2").GetItemStr(), "1e-07 2");
    ConfItemBOOLARRAY_cls bools;
    bools.SetItem("M=", "1 0 3");
    EXPECT_EQ(bools.Serialize(), "M=1 0 1\n");
}

TEST(ConfItem, readsByTheLengthOfItsKeyFromTheStartOfTheLine) {
    ConfItemFLOAT_cls item("LoaderScale=", "3");
    EXPECT_FALSE(item.ReadStrLine("LoaderScaleValue1=7"));
    EXPECT_EQ(item.mValue, 3.0f);
    EXPECT_TRUE(item.ReadStrLine("LoaderScale=1.000000"));
    EXPECT_EQ(item.mValue, 1.0f);
    EXPECT_TRUE(item.ReadStrLine("xLoaderScale=1.5"));
    EXPECT_EQ(item.mStrValue, "=1.5");
    EXPECT_EQ(item.mValue, 0.0f);
    EXPECT_TRUE(item.ReadStrLine(" LoaderScale=25"));
    EXPECT_EQ(item.mStrValue, "=25");
    EXPECT_TRUE(item.ReadStrLine("LoaderScale="));
    EXPECT_EQ(item.mValue, 0.0f);
}

TEST(ConfItem, takesTheNumberThatATextBeginsWith) {
    EXPECT_EQ(ConfItemINT_cls("I=", "12.9abc").mValue, 12);
    EXPECT_EQ(ConfItemDOUBLE_cls("D=", " 1.25,7").mValue, 1.25);
    EXPECT_EQ(ConfItemDOUBLE_cls("D=", "0x10").mValue, 16.0);
    EXPECT_EQ(ConfItemINT_cls("I=", "none").mValue, 0);
    EXPECT_EQ(ConfItemFLOAT_cls("F=", wxString::FromUTF8("1½")).mValue, 1.0f);
    ConfItemINT_cls item("I=", "1");
    EXPECT_TRUE(item.ReadStrLine("I=5\r"));
    EXPECT_EQ(item.mValue, 5);
}

TEST(ConfItem, skippedTextWritesNoLine) {
    ConfItemSTR_cls item("Path=", "!!SKIP!!");
    EXPECT_EQ(item.Serialize(), "");
    EXPECT_EQ(item.GetItemStr(), "!!SKIP!!");
}

TEST(ConfItemArray, countsBlanksBehindTheFirstCharacter) {
    ConfItemFLOATARRAY_cls array;
    EXPECT_EQ(array.CountDimension(""), 1u);
    EXPECT_EQ(array.CountDimension(" 1"), 1u);
    EXPECT_EQ(array.CountDimension("1 2"), 2u);
    EXPECT_EQ(array.CountDimension(wxString(' ', 400)), 16u);
}

TEST(ConfItemArray, fixedArraysKeepTheirCountAndWhatIsMissing) {
    ConfItemFLOATARRAY_cls array("T=", "1 2 3");
    EXPECT_TRUE(array.ReadStrLine("T=7"));
    EXPECT_EQ(array.GetItemStr(), "7.000000 2.000000 3.000000");
    EXPECT_TRUE(array.ReadStrLine("T=4 5 6 7 8"));
    EXPECT_EQ(array.GetItemStr(), "4.000000 5.000000 6.000000");
    EXPECT_TRUE(array.ReadStrLine("T=9 x 9"));
    EXPECT_EQ(array.GetItemStr(), "9.000000 5.000000 6.000000");
}

TEST(ConfItemArray, intsTakeTheirLengthFromTheText) {
    ConfItemINTARRAY_cls array;
    array.SetItem("GrammerBody=", "5 4 3 2 1 0");
    EXPECT_EQ(array.mCount, 6u);
    EXPECT_TRUE(array.ReadStrLine("GrammerBody=0 1"));
    EXPECT_EQ(array.mCount, 2u);
    EXPECT_TRUE(array.ReadStrLine("GrammerBody=3 4 \r"));
    EXPECT_EQ(array.GetItemStr(), "3 4");
    EXPECT_TRUE(array.ReadStrLine("GrammerBody=8 nine 10"));
    EXPECT_EQ(array.GetItemStr(), "8");
    EXPECT_TRUE(array.ReadStrLine("GrammerBody="));
    EXPECT_EQ(array.GetItemStr(), "");
}

namespace {

wxString Numbers(int count) {
    wxString text = "0";
    for (int i = 1; i < count; ++i)
        text += wxString::Format(" %d", i);
    return text;
}

template <class ITEM>
wxString ToldBySetting(ITEM& item, int count) {
    testing::internal::CaptureStdout();
    item.SetItem("List=", Numbers(count));
    return testing::internal::GetCapturedStdout();
}

} // namespace

TEST(ConfItemArray, moreThanSixteenValuesKeepTheFirstSixteenAndSaySo) {
    ConfItemINTARRAY_cls ints;
    ConfItemDOUBLEARRAY_cls doubles;
    EXPECT_EQ(ToldBySetting(ints, 16), "");
    EXPECT_EQ(ToldBySetting(doubles, 16), "");
    const wxString told = "List= more than 16 values, the first 16 are taken\n";
    EXPECT_EQ(ToldBySetting(ints, 17), told);
    EXPECT_EQ(ToldBySetting(doubles, 1000), told);
    EXPECT_EQ(ints.GetItemStr(), Numbers(16));
    EXPECT_EQ(doubles.GetItemStr(), Numbers(16));
    doubles.mCount = 99; // owners write it
    EXPECT_EQ(doubles.GetItemStr(), Numbers(16));
}

namespace {

struct Settings_t {
    ConfItemSTR_cls mCName;
    ConfItemINT_cls mCInt;
    ConfItemUINT_cls mCUint;
    ConfItemFLOAT_cls mCFloat;
    ConfItemBOOL_cls mCBool;
    ConfItemFLOATARRAY_cls mCVec;
    ConfItemDOUBLEARRAY_cls mCDoubles;
    ConfItemBOOLARRAY_cls mCBools;
    ConfItemList_cls mCList;

    Settings_t(const wxString& prefix, bool bOther) {
        mCList.Add(&mCName, prefix + "Name=", bOther ? "b" : "a");
        mCList.Add(&mCInt, prefix + "Int=", bOther ? "2" : "1");
        mCList.Add(&mCUint, prefix + "Uint=", bOther ? "20" : "10");
        mCList.Add(&mCFloat, prefix + "Float=", bOther ? "2.5" : "1.5");
        mCList.Add(&mCBool, prefix + "Bool=", bOther ? "1" : "0");
        mCList.Add(&mCVec, prefix + "Vec=", bOther ? "4 5 6 7" : "1 2 3");
        mCList.Add(&mCDoubles, prefix + "Doubles=", bOther ? "8 9" : "0 0 0");
        mCList.Add(&mCBools, prefix + "Bools=", bOther ? "1 1 0 1" : "0 0 0");
    }
};

} // namespace

TEST(ConfItemList, writesInOrderAndReadsBack) {
    Settings_t a("P", false), b("P", true);
    const wxString text = b.mCList.SerializeAll();
    EXPECT_EQ(text.BeforeFirst('\n'), "PName=b");
    ConfItemSTR_cls tail; // every item sees every line
    a.mCList.Add(&tail, "Float=", "");
    for (const wxString& line : wxSplit(text, '\n', '\0'))
        EXPECT_EQ(a.mCList.ReadStrLineAll(line), !line.empty());
    EXPECT_EQ(a.mCFloat.mValue, 2.5f);
    EXPECT_EQ(tail.mStrValue, "=2.500000");
    EXPECT_EQ(a.mCVec.mCount, 3u);
    EXPECT_EQ(a.mCVec.mValue[2], 6.0f);
    EXPECT_FALSE(a.mCList.ReadStrLineAll("Pnothing=1"));
}

TEST(ConfItemList, withoutDefaultsAddKeepsTheValue) {
    ConfItemINT_cls item("Old=", "7");
    ConfItemList_cls list;
    list.mbUseDefault = false;
    list.Add(&item, "New=", "1");
    EXPECT_EQ(list.SerializeAll(), "New=7\n");
    list.Clear();
    EXPECT_EQ(list.SerializeAll(), "");
}

TEST(ConfItemList, givesDefaultsBackWhateverWasReadOrSet) {
    Settings_t a("P", false);
    const wxString defaults = a.mCList.SerializeAll();
    Settings_t b("P", true);
    ASSERT_NE(b.mCList.SerializeAll(), defaults);
    for (ConfItem_cls* item : std::initializer_list<ConfItem_cls*>{
             &a.mCName, &a.mCInt, &a.mCUint, &a.mCFloat, &a.mCBool, &a.mCVec, &a.mCDoubles, &a.mCBools}) {
        a.mCList.ReadStrLineAll(item->mStrKey + "7 8 9");
        ASSERT_NE(a.mCList.SerializeAll(), defaults) << item->mStrKey;
        a.mCList.SetToDefault(item);
    }
    EXPECT_EQ(a.mCList.SerializeAll(), defaults);
    ConfItemINT_cls stranger("S=", "3");
    stranger.mValue = 5;
    a.mCList.SetToDefault(&stranger);
    EXPECT_EQ(stranger.mValue, 5);
    EXPECT_EQ(a.mCList.GetDefault(&stranger), "");
}

TEST(ConfItemList, copiesAllClassesByPosition) {
    Settings_t a("P", false), b("Q", true);
    a.mCList.CopyListComponentFromP(&b.mCList);
    EXPECT_EQ(a.mCList.SerializeAll(), b.mCList.SerializeAll());
    EXPECT_EQ(a.mCBools.GetItemStr(), "1 1 0 1");
    EXPECT_EQ(a.mCVec.mStrValue, "4 5 6 7");
}

TEST(ConfItemList, copyLeavesItemsOfAnotherClassAlone) {
    Settings_t a("P", false);
    ConfItemList_cls other;
    ConfItemSTR_cls name("N=", "n");
    ConfItemDOUBLEARRAY_cls doubles("D=", "1 2");
    other.Add(&name, "N=", "n");
    other.Add(&doubles, "D=", "1 2");
    a.mCList.CopyListComponentFromP(&other);
    EXPECT_EQ(a.mCName.mStrKey, "N=");
    EXPECT_EQ(a.mCInt.Serialize(), "PInt=1\n");
}
