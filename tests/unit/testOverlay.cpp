// What is written on top of a picture, without drawing it; the exposure's settings; a particle in numbers.
#include <gtest/gtest.h>
#include <wx/image.h>

#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsDrawClrLegend.h"
#include "GL/VIEW/clsDrawTimeIndex.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsOverlay.h"
#include "PARAM/clsUndoManager.h"
#include "StoreFixture.h"

namespace {

TEST(Overlay, FilesKeepTheirSpelling) {
    Overlay_cls overlay;
    EXPECT_EQ(overlay.Serialize(),
              "OverLayTimePos=4\nOverLayTimeFontFamily=2\nOverLayTimeFontPoint=18\n"
              "OverLayTimeCustomFont=\nOverLayTimeTag=Time=\nOverLayShowLegend=1 0 0 0\n"
              "OverLayLegendPos=3\nOverLayLegendIgnoreAlphe=0\nOverLayLegendIgnoreTics=0\n");
    overlay.ReadStrLine("OverLayLegendIgnoreAlphe=1");
    overlay.ReadStrLine("OverLayShowLegend=0 1 1 0");
    overlay.ReadStrLine("OverLayTimeTag=t = ");
    EXPECT_TRUE(overlay.mLegendIgnoreAlpha.mValue);
    EXPECT_TRUE(!overlay.mShowLegend.mValue[0] && overlay.mShowLegend.mValue[2]);
    Exposure_cls exposure;
    EXPECT_EQ(exposure.Serialize(), "ExposureLevel=0 1\nExposureGamma=1.000000\nExposureHueOffset=0\n"
                                    "ExposureSaturation=0\n");
    exposure.ReadStrLine("ExposureLevel=0.25 0.75");
    EXPECT_EQ(exposure.mLevel.mValue[1], 0.75);
    EXPECT_FALSE(exposure.IsNeutral());
    exposure.SetToDefault();
    EXPECT_TRUE(exposure.IsNeutral());
    GCUndoList.UndoCurrent();
    EXPECT_EQ(exposure.mLevel.mValue[0], 0.25) << "one step for all";
    GCUndoList.Clear();
}

TEST(Overlay, ItemsStackAwayFromTheirEdge) {
    Overlay_cls overlay;
    DrawClrLegend_cls item(&overlay);
    const auto at = [&item](int pos, int row) {
        item.SetOffsetPos(pos, row, 800, 600);
        return item.GetOffset();
    };
    EXPECT_EQ(at(Overlay_cls::TOP_LEFT, 0), wxPoint(20, 564));
    EXPECT_EQ(at(Overlay_cls::TOP_RIGHT, 2), wxPoint(540, 492));
    EXPECT_EQ(at(Overlay_cls::BTM_LEFT, 0), wxPoint(20, 20));
    EXPECT_EQ(at(Overlay_cls::BTM_RIGHT, 3), wxPoint(540, 128));
}

TEST(Overlay, TimeIsTheTagAndTheNumber) {
    Overlay_cls overlay;
    const DrawTimeIndex_cls item(&overlay);
    EXPECT_EQ(item.GetTimeText(12.5), "Time=12.5");
    EXPECT_EQ(item.GetTimeText(1e-7), "Time=1e-07");
    EXPECT_EQ(item.GetTimeText(-9999.0), "Time=Not Defined");
    overlay.mTimeTag.mStrValue = "t/s: ";
    EXPECT_EQ(item.GetTimeText(0), "t/s: 0");
}

TEST(Overlay, BlackBecomesTransparentAndRowsTurnUpward) {
    Overlay_cls overlay;
    DrawTimeIndex_cls item(&overlay);
    wxImage image(2, 2);
    image.SetRGB(0, 0, 10, 0, 0);
    image.SetRGB(1, 1, 255, 255, 255);
    item.GenerateBufferRGBA(image);
    const std::vector<unsigned char> expected = {0,  0, 0, 0,   255, 255, 255, 255, // lower row
                                                 10, 0, 0, 255, 0,   0,   0,   0};
    EXPECT_EQ(item.GetBufferRGBA(), expected);
    item.DeleteBufferRGBA();
    EXPECT_TRUE(item.GetBufferRGBA().empty());
}

TEST(Information, TellsOneParticle) {
    HandBlock_st hand(10, 3);
    const PDataBlock_cls& block = hand.mBlock;
    Information_cls::Values_st values = Information_cls::GetValues(&block, 7);
    EXPECT_TRUE(values.mbThere);
    EXPECT_EQ(values.mPos[1], block.mpPos[7][1]);
    EXPECT_EQ(values.mRadius, block.mpRadius[7]);
    EXPECT_EQ(values.mID, 7);
    for (const int index : {-1, 10, 2147483647})
        EXPECT_TRUE(Information_cls::GetValues(&block, index) == Information_cls::Values_st()) << index;
    EXPECT_FALSE(Information_cls::GetValues(static_cast<const PDataBlock_cls*>(nullptr), 0).mbThere);
    EXPECT_FALSE(Information_cls::GetValues(static_cast<const SnapData_cls*>(nullptr), 0).mbThere);
}

} // namespace
