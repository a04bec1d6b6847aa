// The hand on the items of a view: what it points at, picks and drags.
#pragma once

#include <wx/gdicmn.h>

class MainGLCanvas_cls;
class MouseCtrl_cls;
class MouseNormalized_cls;
class SceneObj_cls;
class SharedView_cls;
class ViewHost_cls;
class ViewPick_cls;

class ViewItemMouse_cls {
public:
    ViewItemMouse_cls(MainGLCanvas_cls& canvas, ViewPick_cls& pick, ViewHost_cls& host,
                      SharedView_cls& shared);

    /// A click that selects: the item that is drawn first there. Where nothing is, nothing changes.
    void Pick(const MouseCtrl_cls& mouse);
    /// A click that picks a particle. Where none is, none is picked any more.
    void PickParticle(const MouseCtrl_cls& mouse);
    /// A press from which a drag of the selected item may begin; on a handle it is along that axis.
    void Press(const MouseCtrl_cls& mouse);
    /// From such a press to the release moves of the mouse drag the item, whatever keys are held meanwhile.
    bool IsPressed() const { return mbPressed; }
    /// A move; true when the item has moved.
    bool Drag(const MouseCtrl_cls& mouse, const MouseNormalized_cls& moved);
    /// The item stays where it is, with keys, as one step.
    void Release();
    /// Keys while the item is dragged: false for those that mean the same as ever.
    bool OnKey(int keycode);
    /// The pointer moves, without a button. `bCheap`: painting takes no time that a hand would feel, or the
    /// hand rests.
    void Hover(const MouseCtrl_cls& mouse, bool bCheap);
    void Leave();
    /// A way of the mouse as one in a picture that fills the window (ViewPick_cls::GetPart).
    void StretchWay(MouseNormalized_cls& mouse) const;

    /// The line to the mouse, into the window. Needs a current OpenGL context.
    void DrawGuide(int w, int h) const;

private:
    void Stop();
    void RefreshAll();
    void TellDrag();
    void Tell(const wxString& text) const;
    bool IsSnapping(const MouseCtrl_cls& mouse) const;

    MainGLCanvas_cls& mCanvas;
    ViewPick_cls& mPick;
    ViewHost_cls& mHost;
    SharedView_cls& mShared;
    bool mbPressed = false;
    bool mbBegun = false;               ///< the press has become a drag
    bool mbCtrl = false;                ///< was held at the press
    SceneObj_cls* mpCPressed = nullptr; ///< what was selected at the press; it may have gone
    int mAxisBefore = -1;               ///< its drag mode then
    double mAt[2] = {0, 0};             ///< the mouse, half windows
    int mHovered = -1;                  ///< a pick's name
};
