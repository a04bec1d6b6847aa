// Time and colour legends in a view, their page, and the page that tells of one particle.
#include <wx/checkbox.h>
#include <wx/choice.h>
#include <wx/notebook.h>
#include <wx/textctrl.h>

#include <fstream>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/clsColorCurve.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsExposure.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsOverlay.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GoldenPicture.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PictureTest.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsNumField.h"

namespace {

class Overlay : public PictureTest {
protected:
    static constexpr int kW = 480, kH = 400;

    void SetUp() override {
        PictureTest::SetUp();
        ShowParticles({{50, 0, 0}, {51, 2, 3}}, 1);
        ASSERT_TRUE(SizeView(kW, kH));
    }
    void TearDown() override {
        for (const char* line : {"OverLayTimePos=4", "OverLayTimeFontFamily=2", "OverLayTimeFontPoint=18",
                                 "OverLayTimeTag=Time=", "OverLayShowLegend=0 0 0 0", "OverLayLegendPos=3",
                                 "OverLayLegendIgnoreAlphe=0", "OverLayLegendIgnoreTics=0"})
            Settings()->ReadStrLine(line);
        Settings()->mTimeCustomFont.mStrValue.clear();
        PictureTest::TearDown();
    }
    static Overlay_cls* Settings() { return Hub()->mpCOverlay; }
    static ColorCurve_cls& Curve(int which) {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
            .mpCGLAttribute[which]
            ->mColor;
    }
    static int CountLit(const wxRect& rect) {
        const Picture_st picture = Grab(0);
        int lit = 0;
        for (int y = rect.GetTop(); y <= rect.GetBottom(); ++y)
            for (int x = rect.GetLeft(); x <= rect.GetRight(); ++x)
                lit += picture.Brightness(x, y) > 60;
        return lit;
    }
};

TEST_F(Overlay, TimeStandsInItsCorner) {
    EXPECT_EQ(Grab(0).CountLit(60), 0) << "not shown at first";
    const wxRect corners[4] = {wxRect(20, 0, 260, 36), wxRect(kW - 260, 0, 260, 36),
                               wxRect(20, kH - 60, 260, 40), wxRect(kW - 260, kH - 60, 260, 40)};
    for (int pos = 0; pos < 4; ++pos) {
        Settings()->mTimePos.mValue = pos;
        Repaint();
        EXPECT_GT(CountLit(corners[pos]), 80) << pos;
        EXPECT_EQ(CountLit(corners[pos]), Grab(0).CountLit(60)) << "nowhere else, " << pos;
    }
    const int lit = CountLit(corners[3]);
    Settings()->mTimeFontPoint.mValue = 36;
    Repaint();
    EXPECT_GT(Grab(0).CountLit(60), 2 * lit) << "larger letters, and whole";
    Settings()->mTimeFontPoint.mValue = 18;
    Settings()->mShowLegend.mValue[0] = true;
    Settings()->mLegendPos.mValue = Overlay_cls::TOP_LEFT;
    Repaint();
    EXPECT_GT(CountLit(corners[0]), 1000);
    Hub()->CloseData();
    Repaint();
    EXPECT_GT(CountLit(corners[3]), 80) << "\"Not Defined\"";
    EXPECT_EQ(CountLit(corners[0]), 0) << "no data, no colours of theirs";
}

TEST_F(Overlay, AChosenFontServesTheLastTwoStyles) {
    const wxString family = wxFont(wxFontInfo(18).Family(wxFONTFAMILY_TELETYPE)).GetFaceName();
    const wxString face = wxFont(wxFontInfo(18).Family(wxFONTFAMILY_ROMAN)).GetFaceName();
    Settings()->mTimeFontFamily.mValue = 6;
    EXPECT_EQ(Settings()->GetTimeFont().GetFaceName(), family);
    Settings()->mTimeCustomFont.mStrValue = face;
    for (const int style : {6, 7}) {
        Settings()->mTimeFontFamily.mValue = style;
        EXPECT_EQ(Settings()->GetTimeFont().GetFaceName(), face) << style;
    }
    Settings()->mTimeFontFamily.mValue = 5;
    EXPECT_NE(Settings()->GetTimeFont().GetFaceName(), face);
}

TEST_F(Overlay, LegendsHaveTheColoursOfTheirAttributes) {
    const float red[4] = {1, 0, 0, 1}, blue[4] = {0, 0, 1, 0.5};
    std::copy_n(red, 4, Curve(0).mConstantColor.mValue);
    std::copy_n(blue, 4, Curve(2).mConstantColor.mValue);
    Settings()->ReadStrLine("OverLayShowLegend=1 0 1 0");
    Repaint();
    const auto colorAt = [](int y) {
        const Picture_st picture = Grab(0);
        return std::array<int, 3>{Channel(picture, kW - 100, y, 0), Channel(picture, kW - 100, y, 1),
                                  Channel(picture, kW - 100, y, 2)};
    };
    // From below: a margin of 20, then 36 for each; the bar is the upper part.
    EXPECT_EQ(colorAt(kH - 20 - 26), (std::array<int, 3>{255, 0, 0}));
    EXPECT_NEAR(colorAt(kH - 20 - 36 - 26)[2], 127, 1) << "with its alpha over black";
    EXPECT_EQ(colorAt(kH - 20 - 72 - 26)[2], 0);
    Settings()->mLegendIgnoreAlpha.mValue = true;
    Settings()->mLegendPos.mValue = Overlay_cls::TOP_RIGHT;
    Repaint();
    EXPECT_EQ(colorAt(10), (std::array<int, 3>{255, 0, 0}));
    EXPECT_EQ(colorAt(46), (std::array<int, 3>{0, 0, 255})) << "from the top downward, without alpha";
    // A curve has values under it, a constant has none.
    EXPECT_EQ(CountLit(wxRect(kW - 260, 22, 240, 13)), 0);
    Curve(0).mbUseColorCurve.mValue = true;
    Repaint();
    EXPECT_GT(CountLit(wxRect(kW - 260, 22, 240, 13)), 30);
    Settings()->mLegendIgnoreTics.mValue = true;
    Repaint();
    EXPECT_EQ(CountLit(wxRect(kW - 260, 22, 240, 13)), 0);
    Curve(0).mbUseColorCurve.mValue = false;
}

TEST_F(Overlay, ThePageIsUndoableAndHidesWhatHasNoEffect) {
    Frame()->SetSize(mSize); // all rows in sight
    OptionBook()->SetSelection(1);
    Settle();
    wxWindow* page = OptionBook()->GetPage(1);
    const auto choice = [page](const wxString& tip) { return FindByTip(page, tip); };
    EXPECT_FALSE(choice("Text ahead of the time")) << "while the time isn't shown";
    Choose(choice("Where the snapshot's time"), Overlay_cls::BTM_LEFT);
    EXPECT_EQ(Settings()->mTimePos.mValue, int(Overlay_cls::BTM_LEFT));
    EXPECT_GT(Grab(0).CountLit(60), 80);
    ASSERT_TRUE(choice("Text ahead of the time"));
    EXPECT_FALSE(choice("Name of a font"));
    Choose(choice("Kind of letters"), Overlay_cls::kCustomFont);
    EXPECT_TRUE(choice("Name of a font"));
    EXPECT_FALSE(choice("Whether a legend is as transparent"));
    ClickOn(choice("Show the colours of attribute 1"));
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(Settings()->mShowLegend.mValue[1]);
    ASSERT_TRUE(choice("Whether a legend is as transparent"));
    Choose(choice("Whether a legend is as transparent"), 1);
    EXPECT_TRUE(Settings()->mLegendIgnoreAlpha.mValue);
    for (int step = 0; step < 4; ++step)
        Menu(ID_UNDO);
    EXPECT_FALSE(Settings()->mLegendIgnoreAlpha.mValue);
    EXPECT_FALSE(Settings()->mShowLegend.mValue[1]);
    EXPECT_EQ(Settings()->mTimeFontFamily.mValue, 2);
    EXPECT_EQ(Settings()->mTimePos.mValue, int(Overlay_cls::DO_NOT_SHOW));
    EXPECT_EQ(dynamic_cast<wxChoice*>(choice("Where the snapshot's time"))->GetSelection(), 4);
    EXPECT_EQ(Grab(0).CountLit(60), 0);
    OptionBook()->SetSelection(0);
    GCUndoList.Clear();
}

TEST_F(Overlay, ProjectsKeepOverlayAndExposure) {
    Settings()->ReadStrLine("OverLayTimeTag=t/Myr = ");
    Settings()->mTimePos.mValue = 1;
    Hub()->mpCExposure->mGamma.mValue = 1.5f;
    const wxString path = wxString::FromUTF8(mDir / "overlay.mrp");
    ASSERT_TRUE(Hub()->SaveProjectFile(path, true));
    Settings()->ReadStrLine("OverLayTimeTag=Time=");
    Settings()->mTimePos.mValue = 4;
    Hub()->mpCExposure->mGamma.mValue = 1.0f;
    Frame()->OpenProject(path);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Settings()->mTimeTag.mStrValue, "t/Myr = ");
    EXPECT_EQ(Settings()->mTimePos.mValue, 1);
    EXPECT_EQ(Hub()->mpCExposure->mGamma.mValue, 1.5f);
}

TEST_F(Overlay, InfoTellsTheParticleAsDrawnAndAsRead) {
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/galaxy_small_bin/galaxy_small_bin.mrp"));
    Frame()->SetSize(mSize);
    const PDataSequence_cls& sequence = *Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence();
    OptionBook()->SetSelection(3);
    Settle();
    wxWindow* page = OptionBook()->GetPage(3);
    NumField_cls* index = FindField(page, "Which particle");
    ASSERT_TRUE(index);
    TypeInto(index, "17");
    ASSERT_TRUE(Settle());
    const auto shows = [page](double value) {
        return FindByLabel(page, wxString::Format("%g", value)) != nullptr;
    };
    const PDataBlock_cls* block = sequence.GetPCBlock(0);
    for (int axis = 0; axis < 3; ++axis)
        EXPECT_TRUE(shows(double(block->mpPos[17][axis]))) << axis;
    EXPECT_TRUE(FindByLabel(page, wxString::Format("%d / %d", block->mpType[17], block->mpID[17])));
    // Between two snapshots it moves, the file's place stands.
    Hub()->mpCTimeCtrl->SetAnimInterpNative(10);
    Hub()->mpCTimeCtrl->SetInterpStepNative(5, 6);
    ASSERT_TRUE(Settle());
    EXPECT_FALSE(shows(double(block->mpPos[17][0])));
    Choose(FindByTip(page, "As drawn"), Information_cls::RAW_DATA);
    EXPECT_TRUE(shows(double(block->mpPos[17][0])));
    TypeInto(index, "999999");
    EXPECT_TRUE(FindByLabel(page, "no such particle"));
    Menu(ID_UNDO);
    EXPECT_TRUE(shows(double(block->mpPos[17][0]))) << "the page follows undo";
    OptionBook()->SetSelection(0);
    Hub()->mpCInformation->mType.mValue = 0;
    GCUndoList.Clear();
}

TEST_F(Overlay, PicturesAreThoseThatWereLookedAt) {
    Settings()->mTimePos.mValue = Overlay_cls::TOP_LEFT;
    Settings()->ReadStrLine("OverLayShowLegend=1 1 0 0");
    const float blue[4] = {0.3f, 0.6f, 0.9f, 0.8f};
    std::copy_n(blue, 4, Curve(1).mConstantColor.mValue);
    Curve(0).mbUseColorCurve.mValue = true;
    Curve(0).mScalingMin.mValue = -3.0f;
    Curve(0).mScalingMax.mValue = 17.5f;
    SetBackground(0.1f, 0.2f, 0.1f);
    Repaint();
    EXPECT_TRUE(IsGolden("overlay", Grab(0)));
    Curve(0).mbUseColorCurve.mValue = false;
}

} // namespace
