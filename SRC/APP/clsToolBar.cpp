#include "APP/clsToolBar.h"

#include <wx/menu.h>
#include <wx/toolbar.h>

#include "APP/BindMenu.h"
#include "APP/clsFrameMain.h"
#include "COMMON/EventIds.h"
#include "WIDGET/clsMyArtProvider.h"

namespace {

constexpr int kIconSize = 20;
const wxString kKey = "ToolBar=";

/// A button does what the menu's entry does; 0 stands for a gap.
constexpr struct {
    int mId;
    const char* mIcon; ///< file under ICONS
} kTools[] = {{ID_LOAD_DATA, "Open"},
              {ID_GUESS_DATA, "Guess"},
              {0, nullptr},
              {ID_SAVE_IMAGE_SEQ, "ImgSequence"},
              {ID_POVRAY, "PovRay"},
              {0, nullptr},
              {ID_CAMERA_PATH, "Camera"},
              {ID_LIGHT_SOURCE, "LightSource"},
              {ID_COLOR_CURVE, "Color"},
              {ID_TEX_PROPERTY, "Texture"},
              {ID_STEREOGRAM, "StereoGram"},
              {ID_PERIODIC_BOUNDARY, "PeriodicBoundary"},
              {0, nullptr},
              {ID_SCENE, "Scene"},
              {ID_PREFERENCE, "Preference"}};

/// The entry's words, and its keys in brackets.
wxString GetTip(const wxMenuItem& item) {
    const wxString keys = item.GetItemLabel().AfterFirst('\t');
    // The letter to press stands behind the name, in brackets of its own.
    const wxString name = item.GetItemLabel().BeforeFirst('\t').BeforeFirst('(');
    return keys.empty() ? name : name + " (" + keys + ")";
}

} // namespace

ToolBar_cls::ToolBar_cls(FrameMain_cls& frame) : mFrame(frame) {
    wxToolBar* bar = mFrame.CreateToolBar(wxTB_HORIZONTAL | wxTB_FLAT | wxTB_NODIVIDER);
    bar->SetToolBitmapSize(wxSize(kIconSize, kIconSize));
    for (const auto& tool : kTools) {
        if (tool.mId == 0) {
            bar->AddSeparator();
            continue;
        }
        const wxMenuItem* item = mFrame.GetMenuBar()->FindItem(tool.mId);
        bar->AddTool(tool.mId, wxString(), MyArtProvider::GetIcon(tool.mIcon, kIconSize),
                     item ? GetTip(*item) : wxString());
    }
    bar->Realize();
    BindMenu(mFrame, this, ID_TOOL_BAR, &ToolBar_cls::OnMenuToolBar);
    Show(true);
}

void ToolBar_cls::Show(bool bShow) {
    mFrame.GetToolBar()->Show(bShow);
    mFrame.GetMenuBar()->Check(ID_TOOL_BAR, bShow);
    mFrame.SendSizeEvent(); // the rest of the window takes the room
}

void ToolBar_cls::OnMenuToolBar(wxCommandEvent& event) { Show(event.IsChecked()); }

wxString ToolBar_cls::Serialize() const { return kKey + (mFrame.GetToolBar()->IsShown() ? "1\n" : "0\n"); }

bool ToolBar_cls::ReadStrLine(const wxString& line) {
    wxString value;
    if (!line.StartsWith(kKey, &value)) return false;
    Show(value.Trim() != "0");
    return true;
}
