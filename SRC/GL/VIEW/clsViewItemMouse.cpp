#include "GL/VIEW/clsViewItemMouse.h"

#include <wx/defs.h>
#include <wx/intl.h>

#include "GL/BASE/clsGLGuides.h"
#include "GL/BASE/clsMouseCtrl.h"
#include "GL/BASE/clsMouseNormalized.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/BASE/clsPreference.h"
#include "GL/VIEW/ParticleUnder.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewPick.h"
#include "SCENE/clsMoveItem.h"
#include "SCENE/clsSceneObj.h"

namespace {

SceneObj_cls* Selected() { return MoveItem_cls::mspCSelectedObject; }

bool IsOfNumber(int keycode) {
    return (keycode >= '0' && keycode <= '9') || (keycode >= WXK_NUMPAD0 && keycode <= WXK_NUMPAD9) ||
           keycode == '-' || keycode == '.' || keycode == ',' || keycode == WXK_NUMPAD_DECIMAL ||
           keycode == WXK_NUMPAD_SUBTRACT;
}

} // namespace

ViewItemMouse_cls::ViewItemMouse_cls(MainGLCanvas_cls& canvas, ViewPick_cls& pick, ViewHost_cls& host,
                                     SharedView_cls& shared)
    : mCanvas(canvas), mPick(pick), mHost(host), mShared(shared) {}

void ViewItemMouse_cls::Tell(const wxString& text) const {
    if (mShared.mOnPointed) mShared.mOnPointed(text);
}

void ViewItemMouse_cls::Pick(const MouseCtrl_cls& mouse) {
    const HitTest_cls test = mPick.Pick(wxPoint(mouse.mCurX, mouse.mCurY));
    ViewPick_cls::msHitObject = test.GetFirstObject();
    ViewPick_cls::msHitSub = test.GetFirstObjectSub();
    if (ViewPick_cls::msHitObject >= 0 && mShared.mOnPicked) mShared.mOnPicked(ViewPick_cls::msHitObject);
}

void ViewItemMouse_cls::PickParticle(const MouseCtrl_cls& mouse) {
    ParticleWatch_cls* watch = mShared.mspCParticles;
    if (watch) watch->Pick(FindParticleUnder(mPick, mHost, wxPoint(mouse.mCurX, mouse.mCurY)));
}

void ViewItemMouse_cls::Press(const MouseCtrl_cls& mouse) {
    SceneObj_cls* item = Selected();
    if (!item) {
        Tell(_("Nothing is selected: pick an item first"));
        return;
    }
    mbPressed = true;
    mbBegun = false;
    mbCtrl = mouse.mbCtrl;
    mpCPressed = item;
    mAxisBefore = item->mDragMode; // locked by a key
    const HitTest_cls test = mPick.Pick(wxPoint(mouse.mCurX, mouse.mCurY));
    ViewPick_cls::msHitObject = test.GetFirstObject();
    ViewPick_cls::msHitSub = test.GetFirstObjectSub();
    // Its own handle, whichever other marks lie there as well.
    int axis = -1;
    for (const HitTest_cls::Names& names : test.GetVVHittedObject())
        if (axis < 0 && names.size() > 1 && mPick.FindObject(names.front()) == item) axis = names[1];
    item->SetDragMode(axis);
}

// The gesture itself may ask for that key: then letting it go snaps.
bool ViewItemMouse_cls::IsSnapping(const MouseCtrl_cls& mouse) const { return mouse.mbCtrl != mbCtrl; }

bool ViewItemMouse_cls::Drag(const MouseCtrl_cls& mouse, const MouseNormalized_cls& moved) {
    if (mbBegun && !MoveItem_cls::IsDragging()) { // it has ended otherwise, or its item has gone
        Stop();
        return false;
    }
    const MoveItem_cls::View_st view = mPick.GetView(IsSnapping(mouse));
    const bool bMoved = MoveItem_cls::MoveItem(view, moved, Navigators_cls::msManipulatorMode,
                                               MoveItem_cls::IsAxisFlipped(view.mCamera));
    mbBegun = MoveItem_cls::IsDragging();
    mAt[0] = double(moved.mCurX);
    mAt[1] = double(moved.mCurY);
    if (bMoved) RefreshAll();
    const wxString why = !bMoved && Selected() ? Selected()->GetWhyHeld() : wxString();
    if (why.empty())
        TellDrag();
    else
        Tell(why);
    return bMoved;
}

void ViewItemMouse_cls::Release() {
    if (!mbPressed) return;
    if (mbBegun) MoveItem_cls::EndDrag();
    Stop();
}

void ViewItemMouse_cls::Stop() {
    // What a handle or a key chose was for this drag alone.
    if (Selected() && Selected() == mpCPressed) mpCPressed->mDragMode = mAxisBefore;
    mpCPressed = nullptr;
    mbPressed = mbBegun = false;
    Tell(wxString());
    RefreshAll();
}

bool ViewItemMouse_cls::OnKey(int keycode) {
    const bool bMode = keycode == 'R' || keycode == 'S' || keycode == 'T';
    const bool bAxis = keycode >= 'X' && keycode <= 'Z';
    if (mbPressed && !mbBegun && Selected() && (bMode || bAxis || IsOfNumber(keycode))) {
        MoveItem_cls::InitializeMoveItem(); // the hand needn't move first
        mbBegun = MoveItem_cls::IsDragging();
    }
    if (!mbBegun || !MoveItem_cls::IsDragging()) return false;
    if (keycode == WXK_ESCAPE) {
        MoveItem_cls::CancelDrag();
        Stop();
        return true;
    }
    if (keycode == WXK_RETURN || keycode == WXK_NUMPAD_ENTER) {
        Release();
        return true;
    }
    if (bMode || bAxis) {
        if (keycode == 'R') Navigators_cls::RotationMode();
        if (keycode == 'S') Navigators_cls::ScaleMode();
        if (keycode == 'T') Navigators_cls::TranslationMode();
        if (bAxis) Selected()->ToggleDragMode(keycode - 'X');
        if (bMode) MoveItem_cls::Restart();
        MoveItem_cls::ChangeAxis(Navigators_cls::msManipulatorMode);
    } else {
        MoveItem_cls::TypeKey(keycode, Navigators_cls::msManipulatorMode);
    }
    RefreshAll();
    TellDrag();
    return true; // nothing else may change what the hand holds
}

void ViewItemMouse_cls::TellDrag() { Tell(MoveItem_cls::GetDragText(Navigators_cls::msManipulatorMode)); }

void ViewItemMouse_cls::Hover(const MouseCtrl_cls& mouse, bool bCheap) {
    const int name = mPick.Pick(wxPoint(mouse.mCurX, mouse.mCurY)).GetFirstObject();
    const SceneObj_cls* item = name >= 0 ? mPick.FindObject(name) : nullptr;
    if (name == mHovered && item == SceneObj_cls::mspCHovered) return;
    mHovered = name;
    const bool bShown = SceneObj_cls::mspCHovered != nullptr;
    SceneObj_cls::mspCHovered = bCheap ? item : nullptr;
    Tell(item ? item->GetShownName() : wxString());
    if (bShown || SceneObj_cls::mspCHovered) RefreshAll();
}

void ViewItemMouse_cls::StretchWay(MouseNormalized_cls& mouse) const {
    double part[2];
    mPick.GetPart(part);
    mouse.mCurX = mouse.mPrevX + (mouse.mCurX - mouse.mPrevX) / static_cast<float>(part[0]);
    mouse.mCurY = mouse.mPrevY + (mouse.mCurY - mouse.mPrevY) / static_cast<float>(part[1]);
}

void ViewItemMouse_cls::Leave() {
    if (mHovered < 0) return;
    mHovered = -1;
    Tell(wxString());
    if (!SceneObj_cls::mspCHovered) return;
    SceneObj_cls::mspCHovered = nullptr;
    RefreshAll();
}

void ViewItemMouse_cls::RefreshAll() {
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* other = mHost.GetPCGLCanvas(view);
        if (other && other->IsShownOnScreen()) other->RefreshEX();
    }
}

void ViewItemMouse_cls::DrawGuide(int w, int h) const {
    if (!mbBegun) return;
    MoveItem_cls::DrawMouseGuide(mPick.GetView(false), mAt[0], mAt[1], Navigators_cls::msManipulatorMode, w,
                                 h);
}
