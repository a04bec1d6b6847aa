// The mouse over a view: it moves the camera, opens the menu, and makes the view the active one.
#pragma once

#include "GL/BASE/clsDolly.h"
#include "GL/BASE/clsMouseCtrl.h"

class MainGLCanvas_cls;
class PositionAndDirection_cls;
class Preference_cls;
class ViewHost_cls;
class ViewMenu_cls;
class wxMouseCaptureLostEvent;
class wxMouseEvent;

class ViewMouse_cls {
public:
    /// Takes the canvas's mouse events from here on. A part of the canvas: it goes with it.
    ViewMouse_cls(MainGLCanvas_cls& canvas, ViewMenu_cls& menu, ViewHost_cls& host,
                  Preference_cls* pPreference);
    ViewMouse_cls(const ViewMouse_cls&) = delete;
    ViewMouse_cls& operator=(const ViewMouse_cls&) = delete;

private:
    void OnMouse(wxMouseEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);
    void OnButtonDown();
    bool OnWheel();
    bool ProcViewOrItemDragging();
    bool MoveCenter(PositionAndDirection_cls* pCamera);
    void OnChangedByMouse();
    void SetOtherCanvasToBeActiveGL();
    /// Those along an axis, or those that aren't: they share an anchor.
    void RefreshOthers(bool bAlongAxis);

    MainGLCanvas_cls& mCanvas;
    ViewMenu_cls& mMenu;
    ViewHost_cls& mHost;
    Dolly_cls mCDolly;
    MouseCtrl_cls mCMouse;
    bool mbLockDragging = false;
};
