// The popup menu of a view.
#pragma once

#include <optional>
#include <vector>

#include <wx/string.h>

class GLCanvasCtrl_cls;
class MainGLCanvas_cls;
class ViewSettings_cls;
class wxCommandEvent;

class ViewMenu_cls {
public:
    static constexpr int kSeparator = -1;

    struct Entry_st {
        int mId; ///< or kSeparator
        wxString mLabel;
        bool mbEnabled = true;
        std::optional<bool> mChecked = std::nullopt; ///< without: no check box
    };

    /// Takes the canvas's menu events from here on. A part of the canvas: it goes with it.
    ViewMenu_cls(MainGLCanvas_cls& canvas, GLCanvasCtrl_cls& ctrl);
    ViewMenu_cls(const ViewMenu_cls&) = delete;
    ViewMenu_cls& operator=(const ViewMenu_cls&) = delete;

    /// What the menu offers for such a view. `bControlsShown`: its row of controls is there.
    static std::vector<Entry_st> MakeEntries(const ViewSettings_cls& view, bool bControlsShown);
    /// At the pointer; the view becomes the active one.
    void Show();

private:
    void OnMenu(wxCommandEvent& event);
    void OnMenuViewAngle();
    void OnMenuMoveToCamPos();
    void OnMenuToggleLink();

    MainGLCanvas_cls& mCanvas;
    GLCanvasCtrl_cls& mCtrl;
};
