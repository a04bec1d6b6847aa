// The record grammar's lists and sizes, and the loader's settings as text.
#include "ReaderTestTools.h"

TEST(Grammer, CountsBytesAndLinesOfItsItems) {
    TestLoader_cls loader(0, {0, 1, 2, 3, 4, 5, -1, 1000}, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, -7});
    EXPECT_EQ(4 + 4 + 4 + 12 + 40, loader.GetHeaderByte()) << "codes that don't exist count nothing";
    EXPECT_EQ(1 + 1 + 1 + 3 + 10, loader.GetHeaderLine());
    EXPECT_EQ(12 + 12 + 4 + 12 + 40 + 4 * 4, loader.GetRecordByte());
    EXPECT_TRUE(loader.IsItemExistHead(4) && loader.IsItemExistBody(8));
    EXPECT_FALSE(loader.IsItemExistHead(6) || loader.IsItemExistBody(10));
}

TEST(Grammer, KnowsItsDefault) {
    DataLoader_cls loader(nullptr);
    EXPECT_TRUE(loader.IsDefaultBody());
    EXPECT_EQ(8, loader.GetHeaderByte());
    EXPECT_EQ(40, loader.GetRecordByte());
    loader.SetBodyGrammer({0, 1, 5, 6, 7, 8, 2});
    EXPECT_FALSE(loader.IsDefaultBody());
    loader.SetBodyGrammer(std::vector<int>(20, 4));
    EXPECT_EQ(16u, loader.mCItemBody.mCount);
}

TEST(Grammer, LoaderWritesAndReadsItsSettings) {
    DataLoader_cls loader(nullptr);
    EXPECT_EQ(
        "DataLoadDataType=0\nDataLoadGrammerHead=0 1\nDataLoadGrammerBody=0 1 5 6 7 8\nLastOpenedFile=NONE\n"
        "InterpolateType=1\nVariableNumber=0\nLoaderTranslate=0.000000 0.000000 0.000000\n"
        "LoaderScale=1.000000\nLoaderScaleValue1=1.000000\nLoaderLogarithm=0\n",
        loader.Serialize());
    EXPECT_TRUE(loader.ReadStrLine("DataLoadGrammerBody=6 0"));
    EXPECT_TRUE(loader.ReadStrLine("LoaderScaleValue1=3"));
    EXPECT_FALSE(loader.ReadStrLine("DataExportGrammerBody=1"));
    EXPECT_EQ(std::vector<int>({6, 0}), loader.GetBodyGrammer());
    EXPECT_EQ(1.0f, loader.mCItemScale.mValue);
    loader.ReadStrLine("LoaderTranslate=1 2 3");
    loader.SetToDefault();
    EXPECT_EQ(0.0f, loader.mCItemTranslate.mValue[2]);
    EXPECT_EQ(1.0f, loader.mCItemScaleValue1.mValue);
    EXPECT_EQ(std::vector<int>({6, 0}), loader.GetBodyGrammer()) << "the grammar stays";
    loader.OpenDataFile("nothing happens without a hub");
    EXPECT_EQ("NONE", loader.mCItemLastOpened.mStrValue);
}
