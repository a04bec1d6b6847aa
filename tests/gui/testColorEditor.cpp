// The colour curve editor under mouse and keys, and what the views show of it meanwhile.
#include <algorithm>

#include <wx/app.h>
#include <wx/notebook.h>

#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COLORCURVE/EDITOR/clsColorCurveCtrl.h"
#include "COLORCURVE/EDITOR/clsColorCurveGUI.h"
#include "COLORCURVE/EDITOR/clsColorCurveGraph.h"
#include "COLORCURVE/EDITOR/clsColorCurveTemplate.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"
#include "GL/DRAW/clsGLAttributeGUI.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiTest.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "PDATA/clsPDataSequence.h"
#include "PDATA/clsPDataSnap.h"
#include "WIDGET/clsColourDialogEX.h"
#include "WIDGET/clsNumField.h"

namespace {

class ColorEditor : public GuiTest {
protected:
    void SetUp() override {
        GuiTest::SetUp();
        ResetViews();
        ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
        ResetViews();
        HideAllButData(0);
        // All particles of this file are of type 1.
        Color().mbUseColorCurve.mValue = true;
        Color().mDependType.mValue = 0;
        GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
            .mpCGLAttribute[1]
            ->mPointSize.mValue = 4;
        GbSnapDataRefresh.store(true);
        Menu(ID_REFRESH_GL);
        GCUndoList.Clear();
        Hub()->mpCColorCurveCtrl->OpenCurve(&Color(), wxTheApp->GetTopWindow());
        ASSERT_TRUE(WaitForWindow("Color Curve Editor - Attrib 1 : Color"));
        ASSERT_TRUE(Settle());
    }
    void TearDown() override {
        wxColourDialogEX::sTestAnswer = wxColour();
        if (Gui()) Gui()->CloseEXKey();
        GCUndoList.Clear();
        GuiTest::TearDown();
    }
    static ColorCurve_cls& Color() {
        return GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
            .mpCGLAttribute[1]
            ->mColor;
    }
    static ColorCurveGUI_cls* Gui() {
        return static_cast<ColorCurveGUI_cls*>(Hub()->mpCColorCurveCtrl->GetPCDialog());
    }
    static ColorCurveGraph_cls* Graph() { return Gui()->GetPCGraph(); }
    static const std::vector<KeyFrame_cls>& Keys(size_t c) {
        return Color().mpCParamGroup->mVParams[c].GetKeys();
    }
    static wxPoint KeyPoint(double position, double value) {
        return wxPoint(int(Graph()->ToX(position)), int(Graph()->ToY(value)));
    }
    static wxPoint StopPoint(double position) {
        return wxPoint(int(Graph()->ToX(position)),
                       Graph()->GetStopStrip().y + Graph()->GetStopStrip().height / 2);
    }
    static wxPoint CellPoint(int cell) {
        const wxRect rect = Gui()->GetPCTemplate()->GetCell(cell);
        return wxPoint(rect.x + rect.width / 2, rect.y + rect.height / 2);
    }
    static void Undo() {
        Menu(ID_UNDO);
        EXPECT_TRUE(Settle());
    }
};

TEST_F(ColorEditor, TemplatesColourTheView) {
    const Picture_st before = Grab(0);
    const wxString text = Color().Serialize();
    Click(Gui()->GetPCTemplate(), CellPoint(9));
    ASSERT_TRUE(Settle());
    EXPECT_GT(Keys(0).size(), 5u) << "viridis";
    EXPECT_NE(Grab(0).mRGB, before.mRGB);
    Snap("colour_template");
    Undo();
    EXPECT_EQ(Color().Serialize(), text);
    EXPECT_EQ(Grab(0).mRGB, before.mRGB);
}

TEST_F(ColorEditor, AKeyIsDraggedInOneStepAndTheViewFollows) {
    const Picture_st before = Grab(0);
    const wxString text = Color().Serialize();
    Drag(Graph(), KeyPoint(1.0, 1.0), KeyPoint(0.4, 0.6));
    ASSERT_TRUE(Settle());
    // Red's last key, or alpha's, which lie at one place: the others come along in position.
    EXPECT_NEAR(Keys(1)[1].mDoubleIndex, 0.4, 0.02);
    EXPECT_NE(Grab(0).mRGB, before.mRGB);
    Undo();
    EXPECT_EQ(Color().Serialize(), text);
    EXPECT_EQ(Grab(0).mRGB, before.mRGB);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(ColorEditor, StopsAreInsertedColouredAndDeleted) {
    const size_t count = Keys(0).size();
    const wxRect bar = Graph()->GetBar();
    DoubleClick(Graph(), wxPoint(int(Graph()->ToX(0.3)), bar.y + bar.height / 2));
    ASSERT_TRUE(Settle());
    ASSERT_EQ(Keys(0).size(), count + 1);
    EXPECT_NEAR(Keys(0)[1].mDoubleIndex, 0.3, 0.01);
    wxColourDialogEX::sTestAnswer = wxColour(0, 51, 255);
    DoubleClick(Graph(), StopPoint(Keys(0)[1].mDoubleIndex));
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Keys(1)[1].mValue, 0.2, 1e-6);
    EXPECT_NEAR(Keys(2)[1].mValue, 1.0, 1e-6);
    Click(Graph(), StopPoint(Keys(0)[1].mDoubleIndex));
    Key(WXK_DELETE);
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Keys(0).size(), count);
    EXPECT_EQ(Keys(3).size(), count);
    for (int step = 0; step < 3; ++step)
        Undo();
    EXPECT_EQ(Keys(0).size(), count);
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(ColorEditor, AStopHasAFieldForEachChannel) {
    Click(Graph(), StopPoint(1.0));
    ASSERT_TRUE(Settle());
    NumField_cls* green = FindField(Gui(), "Green of the selected keys");
    ASSERT_NE(green, nullptr);
    ASSERT_TRUE(green->IsEnabled());
    const double red = Keys(0).back().mValue, alpha = Keys(3).back().mValue;
    TypeInto(green, "0.35");
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Keys(1).back().mValue, 0.35, 1e-9);
    EXPECT_EQ(Keys(0).back().mValue, red);
    EXPECT_EQ(Keys(3).back().mValue, alpha);
    Snap("colour_stop_fields");
    Undo();
    EXPECT_FALSE(GCUndoList.IsUndoable());
}

TEST_F(ColorEditor, FitRangeTakesTheExtremesOfFrameAndSequence) {
    const PDataBlock_cls& block = *Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()->mpCSnap[0]->mpCBlock;
    float* pEnd = block.mpValue1 + block.mParticleNumber;
    const float low = *std::min_element(block.mpValue1, pEnd);
    const float high = *std::max_element(block.mpValue1, pEnd);
    ClickOn(FindByLabel(Gui(), "Frame"));
    ASSERT_TRUE(Settle());
    EXPECT_EQ(Color().mScalingMin.mValue, low);
    EXPECT_EQ(Color().mScalingMax.mValue, high);
    ClickOn(FindByLabel(Gui(), "Sequence"));
    ASSERT_TRUE(Settle());
    EXPECT_NEAR(Color().mScalingMin.mValue, 0.07048167f, 1e-6f) << "as the data's own facts say";
    EXPECT_NEAR(Color().mScalingMax.mValue, 6.257619f, 1e-5f);
    Undo();
    EXPECT_EQ(Color().mScalingMax.mValue, high);
    Undo();
    EXPECT_EQ(Color().mScalingMax.mValue, 1.0f);
}

TEST_F(ColorEditor, ThePageFitsItsRangeToo) {
    Gui()->CloseEXKey();
    auto* book = static_cast<wxNotebook*>(Frame()->FindWindow(int(ID_NOTEBOOK_ATTRIB)));
    book->SetSelection(1);
    wxWindow* page = book->GetPage(1);
    GLAttribute_cls& attribute =
        *GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence()).mpCGLAttribute[1];
    attribute.mpCGUI->UpdateValues();
    ASSERT_TRUE(Settle());
    const Picture_st before = Grab(0);
    wxWindow* frame = FindByLabel(page, "Frame");
    ASSERT_TRUE(frame && frame->IsShownOnScreen());
    ClickOn(frame);
    ASSERT_TRUE(Settle());
    const float low = Color().mScalingMin.mValue;
    const float high = Color().mScalingMax.mValue;
    EXPECT_GT(high, low);
    EXPECT_NE(Grab(0).mRGB, before.mRGB);
    EXPECT_EQ(FindField(page, "Quantity at the end")->GetValue(), double(high)) << "the fields show it";
    ClickOn(FindByLabel(page, "Sequence"));
    ASSERT_TRUE(Settle());
    EXPECT_LT(Color().mScalingMin.mValue, low);
    Undo();
    EXPECT_EQ(Color().mScalingMax.mValue, high);
    Undo();
    EXPECT_EQ(Color().mScalingMax.mValue, 1.0f);
    EXPECT_EQ(Grab(0).mRGB, before.mRGB);
    EXPECT_FALSE(GCUndoList.IsUndoable());
    // A colour that no quantity drives has no range.
    Color().mbUseColorCurve.mValue = false;
    attribute.mpCGUI->UpdateValues();
    EXPECT_FALSE(frame->IsShownOnScreen());
}

TEST_F(ColorEditor, ButtonOfThePageOpensItsCurve) {
    Gui()->CloseEXKey();
    auto* book = static_cast<wxNotebook*>(Frame()->FindWindow(int(ID_NOTEBOOK_ATTRIB)));
    book->SetSelection(2);
    GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
        .mpCGLAttribute[2]
        ->mColor.mbUseColorCurve.mValue = true;
    Menu(ID_REFRESH_ATTRIB);
    wxWindow* button = FindByTip(book, "Colours by the quantity");
    ASSERT_TRUE(button);
    ClickOn(button);
    EXPECT_TRUE(WaitForWindow("Color Curve Editor - Attrib 2 : Color"));
    GLSequence_cls::Of(*Hub()->mpCPDataSeqCtrl->GetPCActiveFileSequence())
        .mpCGLAttribute[2]
        ->mColor.mbUseColorCurve.mValue = false;
}

TEST_F(ColorEditor, ProjectKeepsTheKeysAndTheEditorShowsThem) {
    Click(Gui()->GetPCTemplate(), CellPoint(14)); // turbo: eighteen keys
    ASSERT_TRUE(Settle());
    const wxString text = Color().Serialize();
    const TempDir_cls folder;
    const wxString path = wxString::FromUTF8(folder / "colours.mrp");
    ASSERT_TRUE(Hub()->SaveProjectFile(path, true));
    Color().Flip();
    EXPECT_NE(Color().Serialize(), text);
    ASSERT_TRUE(OpenProjectAndPaint(path.ToStdString()));
    EXPECT_EQ(Color().Serialize(), text);
    Menu(ID_CLOSE_DATA);
    ClickOn(FindByLabel(Gui(), "Frame"));
    ASSERT_TRUE(Settle());
    EXPECT_TRUE(WasTold("no particles of this attribute"));
}

} // namespace
