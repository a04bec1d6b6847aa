// The time control's buttons left of the ruler. Part A, the upper row: what the time line shows. Part B, the
// lower one: the keys.
#pragma once

#include <functional>
#include <vector>

#include <wx/bitmap.h>
#include <wx/window.h>

#include "WIDGET/TIMELINE/TimelineIcons.h"

class ParamGUICtrl_cls;
class wxDC;

class TimeHeader_cls : public wxWindow {
public:
    TimeHeader_cls(wxWindow* pParent, ParamGUICtrl_cls* pCtrl);

    bool AcceptsFocus() const override { return false; }
    /// Paint again if a button looks different now.
    void RefreshIfChanged();

private:
    struct Button {
        TimelineIcon mIcon;
        int mKind; ///< interpolation that the button stands for, -1 none
        int mPart; ///< 0 A, 1 B
        int mX;    ///< logical pixels
        wxString mTip;
        std::function<void()> mAct;
        std::function<bool()> mOn;      ///< pressed; empty for a plain button
        std::function<bool()> mEnabled; ///< empty: always
    };
    void MakePartA();
    void MakePartB();
    void Add(int part, TimelineIcon icon, const wxString& tip, std::function<void()> act,
             std::function<bool()> on = {}, std::function<bool()> enabled = {});
    void Space(int part) { mNext[part] += kSpace; }
    wxRect RectOf(const Button& button) const;
    int ButtonAt(const wxPoint& point) const;
    std::vector<int> States() const;
    void OnPaint(wxPaintEvent& event);
    void OnMouse(wxMouseEvent& event);
    void DrawButton(wxDC& dc, size_t i) const;

    static constexpr int kSpace = 8;

    ParamGUICtrl_cls* mpCCtrl;
    std::vector<Button> mVButtons;
    int mNext[2] = {3, 3};
    int mHover = -1;
    int mPressed = -1;
    std::vector<int> mShown; ///< states as they were painted
};
