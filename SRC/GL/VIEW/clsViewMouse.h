// The mouse over a view: it moves the camera, picks and drags items, opens the menu, and makes the view the
// active one.
#pragma once

#include <wx/timer.h>

#include "GL/BASE/clsDolly.h"
#include "GL/BASE/clsMouseCtrl.h"
#include "GL/VIEW/clsViewItemMouse.h"

class DragThinning_cls;
class MainGLCanvas_cls;
class PositionAndDirection_cls;
class Preference_cls;
class SharedView_cls;
class ViewHost_cls;
class ViewMenu_cls;
class ViewPick_cls;
class wxMouseCaptureLostEvent;
class wxMouseEvent;

class ViewMouse_cls {
public:
    /// Takes the canvas's mouse events from here on. A part of the canvas: it goes with it.
    ViewMouse_cls(MainGLCanvas_cls& canvas, ViewMenu_cls& menu, ViewPick_cls& pick, ViewHost_cls& host,
                  Preference_cls* pPreference, SharedView_cls& shared);
    ViewMouse_cls(const ViewMouse_cls&) = delete;
    ViewMouse_cls& operator=(const ViewMouse_cls&) = delete;

    /// ViewItemMouse_cls::OnKey.
    bool OnDragKey(int keycode);
    /// Does the view show buttons for what drags do to items (Navigators_cls)? The active one, with items.
    bool HasButtons() const;
    /// ViewItemMouse_cls::DrawGuide.
    void DrawGuide(int w, int h) const { mItem.DrawGuide(w, h); }

    /// What a paint may take to be made anew for a pointer that only passes by.
    static double msCheapMillis;
    /// A hand or pointer that stays for so long rests.
    static int msRestMillis;

private:
    void OnMouse(wxMouseEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);
    void OnButtonDown();
    void OnButtonUp();
    bool OnWheel();
    bool OnNavigators();
    bool ProcViewOrItemDragging();
    bool MoveCenter(PositionAndDirection_cls* pCamera);
    void OnChangedByMouse();
    void OnPointer(bool bLeaving);
    bool IsPaintCheap() const;
    void Thin();
    void Rest();
    void SetOtherCanvasToBeActiveGL(wxPoint pointer); ///< on the screen
    /// Those along an axis, or those that aren't: they share an anchor.
    void RefreshOthers(bool bAlongAxis);

    MainGLCanvas_cls& mCanvas;
    ViewMenu_cls& mMenu;
    ViewHost_cls& mHost;
    Preference_cls* mpCPreference;
    DragThinning_cls& mThinning;
    ViewItemMouse_cls mItem;
    Dolly_cls mCDolly;
    MouseCtrl_cls mCMouse;
    wxTimer mRest;  ///< from the last move of the hand to the whole picture
    wxTimer mHover; ///< from the last move of the pointer to the brighter mark, where paints take long
    bool mbLockDragging = false;
};
