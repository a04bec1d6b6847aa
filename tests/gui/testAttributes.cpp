// The pages on the right: each field changes the picture as it must.
#include <wx/checkbox.h>
#include <wx/notebook.h>
#include <wx/scrolwin.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COMMON/EventIds.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLAttributeGUI.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsTopHalfPanel.h"
#include "GuiTest.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "WIDGET/clsColourDialogEX.h"
#include "WIDGET/clsNumField.h"

namespace {

struct Colour_st {
    int mR, mG, mB;
};

class Attributes : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        ResetViews();
        HideAllButData(0);
        Menu(ID_REFRESH_GL);
        // All particles of this file are of type 1.
        Book()->SetSelection(1);
        ASSERT_TRUE(Settle());
        TypeInto(FindField(Side(), "Edge of a point"), "3");
        ASSERT_TRUE(Settle());
    }
    void TearDown() override {
        wxColourDialogEX::sTestAnswer = wxColour();
        GuiTest::TearDown();
    }
    static wxNotebook* Book() {
        return static_cast<wxNotebook*>(Frame()->FindWindow(int(ID_NOTEBOOK_ATTRIB)));
    }
    static wxWindow* Side() { return Book()->GetParent(); }
    static GLAttribute_cls* Attribute(int index) {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[index];
    }
    static int Lit() { return Grab(0).CountLit(40); }
    /// Mean colour of the lit pixels.
    static Colour_st MeanColour() {
        const Picture_st picture = Grab(0);
        long sum[3] = {};
        long count = 0;
        for (size_t i = 0; i + 2 < picture.mRGB.size(); i += 3) {
            if (std::max({picture.mRGB[i], picture.mRGB[i + 1], picture.mRGB[i + 2]}) < 120) continue;
            ++count;
            for (size_t k = 0; k < 3; ++k)
                sum[k] += picture.mRGB[i + k];
        }
        if (count == 0) return {0, 0, 0};
        return {int(sum[0] / count), int(sum[1] / count), int(sum[2] / count)};
    }
};

TEST_F(Attributes, PointSizeGrowsThePoints) {
    const int small = Lit();
    ASSERT_GT(small, 100);
    TypeInto(FindField(Side(), "Edge of a point"), "6");
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Attribute(1)->mPointSize.mValue, 6);
    const int large = Lit();
    EXPECT_GT(large, small * 3 / 2);
    TypeInto(FindField(Side(), "Edge of a point"), "3");
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Lit(), small) << "and back";
    TypeInto(FindField(Side(), "Edge of a point"), "0");
    EXPECT_EQ(Attribute(1)->mPointSize.mValue, 1) << "the smallest there is";
}

TEST_F(Attributes, DrawTypesShowWhatMattersAndDraw) {
    wxWindow* type = FindByTip(Side(), "What stands for a particle");
    ASSERT_TRUE(type);
    const int points = Lit();
    // From the first row each time: a list at the top of the screen opens where the pointer is on another.
    const auto choose = [&](int row) {
        Attribute(1)->mDrawType.mValue = 0;
        Attribute(1)->mpCGUI->UpdateValues();
        Choose(type, row);
    };
    choose(1);
    EXPECT_EQ(Attribute(1)->mDrawType.mValue, 1u);
    EXPECT_FALSE(FindField(Side(), "Edge of a point"));
    EXPECT_FALSE(FindByTip(Side(), "Lighting of spheres"));
    EXPECT_TRUE(FindByTip(Side(), "Picture on billboards"));
    EXPECT_GT(Lit(), 100) << "soft sprites";
    choose(2);
    EXPECT_EQ(Attribute(1)->mDrawType.mValue, 2u);
    EXPECT_TRUE(FindByTip(Side(), "Fineness of the mesh"));
    EXPECT_TRUE(FindByTip(Side(), "Lighting of spheres"));
    EXPECT_FALSE(FindByTip(Side(), "Picture on billboards"));
    EXPECT_GT(Lit(), 100) << "lit spheres";
    choose(3);
    EXPECT_EQ(Attribute(1)->mDrawType.mValue, 4u);
    EXPECT_EQ(Lit(), 0);
    EXPECT_FALSE(FindByTip(Side(), "Where the radius comes from")) << "a hidden particle has nothing to set";
    choose(0);
    EXPECT_TRUE(FindField(Side(), "Edge of a point"));
    Menu(ID_REFRESH_GL);
    EXPECT_EQ(Lit(), points);
}

TEST_F(Attributes, ColourDialogColoursThem) {
    wxWindow* swatch = FindByTip(Side(), "Colour of all particles");
    ASSERT_TRUE(swatch);
    wxColourDialogEX::sTestAnswer = wxColour(250, 20, 10);
    ClickOn(swatch);
    ASSERT_TRUE(Settle());
    const Colour_st red = MeanColour();
    EXPECT_GT(red.mR, 180);
    EXPECT_LT(red.mG, 60);
    EXPECT_LT(red.mB, 60);
    wxColourDialogEX::sTestAnswer = wxColour(10, 240, 20);
    ClickOn(swatch);
    ASSERT_TRUE(Settle());
    const Colour_st green = MeanColour();
    EXPECT_GT(green.mG, 180);
    EXPECT_LT(green.mR, 60);
}

TEST_F(Attributes, AQuantityColoursParticlesDifferently) {
    const auto countHues = [] {
        const Picture_st picture = Grab(0);
        std::vector<bool> seen(16 * 16 * 16, false);
        for (size_t i = 0; i + 2 < picture.mRGB.size(); i += 3)
            seen[size_t(picture.mRGB[i] / 16 * 256 + picture.mRGB[i + 1] / 16 * 16 +
                        picture.mRGB[i + 2] / 16)] = true;
        return std::count(seen.begin(), seen.end(), true);
    };
    const auto plain = countHues();
    wxWindow* box = FindByLabel(Side(), "By a quantity");
    ASSERT_TRUE(box);
    Click(box, wxPoint(8, box->GetClientSize().y / 2));
    ASSERT_TRUE(Settle());
    ASSERT_TRUE(Attribute(1)->mColor.mbUseColorCurve.mValue);
    wxWindow* depend = FindByTip(Side(), "The quantity that chooses");
    ASSERT_TRUE(depend);
    Choose(depend, 3); // x
    TypeInto(FindField(Side(), "Quantity at the start"), "-1");
    TypeInto(FindField(Side(), "Quantity at the end"), "1");
    ASSERT_TRUE(Settle());
    EXPECT_GT(countHues(), plain + 3);
    // The picture depends on which quantity it is.
    const Picture_st byX = Grab(0);
    Choose(depend, 5);
    EXPECT_NE(Grab(0).mRGB, byX.mRGB);
}

TEST_F(Attributes, DownsizingDrawsEveryNth) {
    TypeInto(FindField(Side(), "Edge of a point"), "1");
    ASSERT_TRUE(Settle());
    const int all = Lit();
    TypeInto(FindField(Side(), "Every n-th particle"), "10");
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Hub()->mpCDrawOption->GetDownSizing(), 10);
    const int some = Lit();
    EXPECT_GT(some, 0);
    EXPECT_LT(some, all / 2);
    TypeInto(FindField(Side(), "Every n-th particle"), "1");
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Lit(), all);
}

TEST_F(Attributes, InALowWindowThePagesScroll) {
    const wxSize size = Frame()->GetSize();
    Attribute(1)->mDrawType.mValue = 1;
    Attribute(1)->mColor.mbUseColorCurve.mValue = true;
    Attribute(1)->mpCGUI->UpdateValues();
    Frame()->SetSize(1000, 620);
    ASSERT_TRUE(PumpUntil([] { return Frame()->GetSize().y == 620; }));
    Settle();
    auto* options = Frame()->FindWindow(int(ID_NOTEBOOK_OPTION));
    EXPECT_LE(options->GetRect().GetBottom(), options->GetParent()->GetClientSize().y) << "not cut off";
    auto* scroll = dynamic_cast<wxScrolledWindow*>(Attribute(1)->mpCGUI->GetParent());
    ASSERT_TRUE(scroll);
    EXPECT_GT(scroll->GetVirtualSize().y, scroll->GetClientSize().y);
    wxWindow* last = FindByLabel(scroll, "Sequence");
    ASSERT_TRUE(last);
    EXPECT_FALSE(scroll->GetScreenRect().Contains(last->GetScreenRect()));
    scroll->Scroll(0, 1000);
    Settle();
    EXPECT_TRUE(scroll->GetScreenRect().Contains(last->GetScreenRect())) << "the last row can be reached";
    // Fewer rows need no scrolling.
    Attribute(1)->mDrawType.mValue = 4;
    Attribute(1)->mpCGUI->UpdateValues();
    Settle();
    EXPECT_LE(scroll->GetVirtualSize().y, scroll->GetClientSize().y);
    Frame()->SetSize(size);
    Settle();
}

TEST_F(Attributes, ClassificationPicksTheAttribute) {
    Attribute(0)->mColor.mConstantColor.mValue[0] = 1.0f;
    Attribute(0)->mColor.mConstantColor.mValue[1] = 0.0f;
    Attribute(0)->mColor.mConstantColor.mValue[2] = 0.0f;
    wxColourDialogEX::sTestAnswer = wxColour(10, 20, 250);
    ClickOn(FindByTip(Side(), "Colour of all particles"));
    wxWindow* classify = FindByTip(Side(), "Whether a particle's type");
    ASSERT_TRUE(classify);
    Choose(classify, 1);
    EXPECT_GT(MeanColour().mB, MeanColour().mR) << "type 1 has attribute 1";
    Choose(classify, 0);
    EXPECT_GT(MeanColour().mR, MeanColour().mB) << "attribute 0 alone";
    Choose(classify, 1);
    EXPECT_GT(MeanColour().mB, MeanColour().mR);
}

} // namespace
