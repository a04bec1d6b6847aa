// The row of buttons under the menus, pressed by hand.
#include <wx/bitmap.h>
#include <wx/menu.h>
#include <wx/toolbar.h>

#include "APP/clsFrameMain.h"
#include "APP/clsToolBar.h"
#include "COMMON/EventIds.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GuiEvents.h"
#include "GuiTest.h"
#include "WIDGET/clsDialogEXKey.h"

namespace {

class ToolBar : public GuiTest {
protected:
    static wxToolBar* Bar() { return Frame()->GetToolBar(); }
    static wxDialogEXKey* FindDialog(const wxString& title) {
        for (wxWindow* window : wxTopLevelWindows)
            if (window->IsShown() && window->GetLabel().StartsWith(title))
                return dynamic_cast<wxDialogEXKey*>(window);
        return nullptr;
    }
};

TEST_F(ToolBar, EachButtonOpensItsDialog) {
    const struct {
        int mId;
        const char* mTitle;
    } kDialogs[] = {{ID_LOAD_DATA, "Data Loader"},
                    {ID_SAVE_IMAGE_SEQ, "Save Image Sequence"},
                    {ID_POVRAY, "Pov-Ray Rendering Configure"},
                    {ID_CAMERA_PATH, "View and Camera Config"},
                    {ID_LIGHT_SOURCE, "Light Source Editor"},
                    {ID_COLOR_CURVE, "Color Curve Editor"},
                    {ID_TEX_PROPERTY, "Texture"},
                    {ID_STEREOGRAM, "Stereogram Configure"},
                    {ID_PERIODIC_BOUNDARY, "Periodic Boundary"},
                    {ID_SCENE, "Scene Config"},
                    {ID_PREFERENCE, "Preference"}};
    ASSERT_TRUE(OpenProjectAndPaint(Root() + "examples/lj_melt_bin/lj_melt_bin.mrp"));
    Snap("tool_bar");
    for (const auto& [id, title] : kDialogs) {
        SCOPED_TRACE(title);
        ASSERT_FALSE(FindDialog(title));
        ASSERT_NE(Bar()->GetToolPos(id), wxNOT_FOUND);
        EXPECT_TRUE(Bar()->FindById(id)->GetNormalBitmap().IsOk()) << "its icon";
        EXPECT_TRUE(Bar()->GetToolShortHelp(id).StartsWith(
            wxMenuItem::GetLabelText(Frame()->GetMenuBar()->GetLabel(id)).BeforeFirst('(')))
            << Bar()->GetToolShortHelp(id);
        Click(Bar(), GuiEvents_cls::GetToolMiddle(Bar()->GetHandle(), Bar()->GetToolPos(id)));
        const wxString name = title;
        ASSERT_TRUE(PumpUntil([&name] { return FindDialog(name) != nullptr; }));
        FindDialog(title)->CloseEXKey();
        ASSERT_TRUE(Settle());
    }
}

TEST_F(ToolBar, TheMenuHidesItAndTheViewsGetItsRoom) {
    const auto getHeight = [] { return Canvas(0)->GetClientSize().y; };
    const int before = getHeight();
    EXPECT_TRUE(Frame()->GetMenuBar()->IsChecked(ID_TOOL_BAR));
    Menu(ID_TOOL_BAR, false);
    EXPECT_TRUE(PumpUntil([&] { return getHeight() > before; }));
    EXPECT_EQ(Frame()->GetPCToolBar()->Serialize(), "ToolBar=0\n");
    // As the next start reads it.
    EXPECT_FALSE(Frame()->GetPCToolBar()->ReadStrLine("ToolBars=1"));
    EXPECT_FALSE(Bar()->IsShown());
    EXPECT_TRUE(Frame()->GetPCToolBar()->ReadStrLine("ToolBar=1"));
    EXPECT_TRUE(PumpUntil([&] { return getHeight() == before; }));
    EXPECT_TRUE(Frame()->GetMenuBar()->IsChecked(ID_TOOL_BAR));
}

} // namespace
