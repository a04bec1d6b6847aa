#include "GL/BASE/clsPreference.h"

#include <algorithm>

namespace {

// `ignored` is the place of a modifier that counts as not asked for; past the last one, none.
bool IsGesture(const ConfItemUINT_cls& button, const ConfItemBOOLARRAY_cls& triple, unsigned ignored,
               const bool* pModifiers, const bool* pButtons) {
    if (button.mValue >= Preference_cls::NOT_ASSIGNED || !pButtons[button.mValue]) return false;
    for (unsigned i = 0; i < 3; ++i)
        if (pModifiers[i] != (triple.mValue[i] && i != ignored)) return false;
    return true;
}

} // namespace

Preference_cls::Preference_cls() {
    SetToDefaultMouse(0);
    SetToDefaultParam();
}

void Preference_cls::SetToDefaultMouse(int mouseTemplate) {
    mCConfItemList.Clear();
    mCConfItemListPick.Clear();
    mCConfItemListPick.Add(&mCPick, "GUI_PICK=", "0");
    mCConfItemListPick.Add(&mCPickMod, "GUI_PICK_MOD=", "0 1 0");
    if (mouseTemplate != 0) return;
    mCConfItemList.Add(&mCGyration, "GUI_GYRATION=", "0");
    mCConfItemList.Add(&mCGyrationMod, "GUI_GYRATION_MOD=", "0 0 0");
    mCConfItemList.Add(&mCGyrationInvert, "GUI_GYRATION_INVERT=", "0");
    mCConfItemList.Add(&mCZoom, "GUI_ZOOM=", "1");
    mCConfItemList.Add(&mCZoomMod, "GUI_ZOOM_MOD=", "0 0 0");
    mCConfItemList.Add(&mCZoomInvert, "GUI_ZOOM_INVERT=", "0");
    mCConfItemList.Add(&mCCenter, "GUI_CENTER=", "0");
    mCConfItemList.Add(&mCCenterMod, "GUI_CENTER_MOD=", "1 1 0");
    mCConfItemList.Add(&mCItem, "GUI_ITEM=", "0");
    mCConfItemList.Add(&mCItemMod, "GUI_ITEM_MOD=", "1 0 0");
    mCConfItemList.Add(&mCMenu, "GUI_MENU=", "2");
    mCConfItemList.Add(&mCMenuMod, "GUI_MENU_MOD=", "0 0 0");
    mCConfItemList.Add(&mCHitTest, "GUI_HITTEST=", "2");
    mCConfItemList.Add(&mCHitTestMod, "GUI_HITTEST_MOD=", "1 0 0");
    mCConfItemList.Add(&mCMButtonEmulate, "GUI_MBUTTON_EMULATE=", "2");
}

void Preference_cls::SetToDefaultParam() {
    mCConfItemListPref.Clear();
    mCConfItemListPref.Add(&mCSortType, "PREF_SORT_TYPE=", "0");
    mCConfItemListPref.Add(&mCFitFirst, "PREF_FIT_FIRST=", "1");
    mCConfItemListPref.Add(&mCThinDrags, "PREF_THIN_DRAGS=", "1");
    mCConfItemListDraw.Clear();
    mCConfItemListDraw.Add(&mCDrawWay, "PREF_DRAW_WAY=", "0");
}

bool Preference_cls::ReadStrLine(const wxString& line) {
    bool bMouse = mCConfItemList.ReadStrLineAll(line);
    bMouse = mCConfItemListPick.ReadStrLineAll(line) || bMouse;
    bMouse = mCConfItemListDraw.ReadStrLineAll(line) || bMouse;
    return mCConfItemListPref.ReadStrLineAll(line) || bMouse;
}

wxString Preference_cls::Serialize() {
    static const wxString kPick = Preference_cls().mCConfItemListPick.SerializeAll();
    const wxString pick = mCConfItemListPick.SerializeAll();
    return mCConfItemList.SerializeAll() + mCConfItemListPref.SerializeAll() +
           (pick == kPick ? wxString() : pick) +
           (mCDrawWay.mValue == 0 ? wxString() : mCConfItemListDraw.SerializeAll());
}

wxString Preference_cls::SerializeWhole() {
    return mCConfItemList.SerializeAll() + mCConfItemListPref.SerializeAll() +
           mCConfItemListDraw.SerializeAll() + mCConfItemListPick.SerializeAll();
}

void Preference_cls::CopyFrom(Preference_cls& other) {
    mCConfItemList.CopyListComponentFromP(&other.mCConfItemList);
    mCConfItemListPref.CopyListComponentFromP(&other.mCConfItemListPref);
    mCConfItemListDraw.CopyListComponentFromP(&other.mCConfItemListDraw);
    mCConfItemListPick.CopyListComponentFromP(&other.mCConfItemListPick);
}

unsigned Preference_cls::GetEmulate() const { return std::min(mCMButtonEmulate.mValue, NOT_ASSIGNED); }

void Preference_cls::ModulateBTN(bool* pModifiers, bool* pButtons) const {
    const unsigned emulate = GetEmulate();
    if (pButtons[0] && pModifiers[emulate]) {
        pButtons[0] = false;
        pButtons[1] = true;
    }
    pModifiers[emulate] = false;
}

bool Preference_cls::IsMouse4Gyration(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCGyration, mCGyrationMod, GetEmulate(), pModifiers, pButtons);
}

bool Preference_cls::IsMouse4Zoom(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCZoom, mCZoomMod, NOT_ASSIGNED, pModifiers, pButtons);
}

bool Preference_cls::IsMouse4MoveCenter(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCCenter, mCCenterMod, GetEmulate(), pModifiers, pButtons);
}

bool Preference_cls::IsMouse4MoveItem(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCItem, mCItemMod, GetEmulate(), pModifiers, pButtons);
}

bool Preference_cls::IsMouse4Menu(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCMenu, mCMenuMod, NOT_ASSIGNED, pModifiers, pButtons);
}

bool Preference_cls::IsMouse4HitTest(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCHitTest, mCHitTestMod, GetEmulate(), pModifiers, pButtons);
}

bool Preference_cls::IsMouse4Pick(const bool* pModifiers, const bool* pButtons) const {
    return IsGesture(mCPick, mCPickMod, GetEmulate(), pModifiers, pButtons);
}
