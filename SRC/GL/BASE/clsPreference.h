// What the user prefers: which buttons and keys turn, zoom, move and pick in the views, and how the
// particles are sorted. The dialog that edits it stands elsewhere and writes the items directly.
#pragma once

#include "CONFITEM/clsConfItemList.h"

/// Buttons are arrays of four bools: left, middle, right, and a last one that is never pressed.
/// Modifiers are four as well: shift, ctrl, alt, and one that is never held. Values out of range, as a
/// file may hold them, mean "not assigned".
class Preference_cls {
public:
    static constexpr unsigned NOT_ASSIGNED = 3;

    ConfItemList_cls mCConfItemList; ///< mouse keys
    ConfItemUINT_cls mCGyration;     ///< turn the view
    ConfItemBOOLARRAY_cls mCGyrationMod;
    ConfItemUINT_cls mCZoom;
    ConfItemBOOLARRAY_cls mCZoomMod;
    ConfItemUINT_cls mCCenter; ///< move the centre of the view
    ConfItemBOOLARRAY_cls mCCenterMod;
    ConfItemUINT_cls mCItem; ///< move the selected item
    ConfItemBOOLARRAY_cls mCItemMod;
    ConfItemUINT_cls mCMenu; ///< pop up the context menu
    ConfItemBOOLARRAY_cls mCMenuMod;
    ConfItemUINT_cls mCHitTest; ///< select an item by clicking it
    ConfItemBOOLARRAY_cls mCHitTestMod;
    ConfItemBOOL_cls mCZoomInvert;
    ConfItemBOOL_cls mCGyrationInvert;
    ConfItemUINT_cls mCMButtonEmulate; ///< the modifier that makes the left button the middle one
    ConfItemList_cls
        mCConfItemListPick;  ///< mouse keys that came later: files have them where they aren't the defaults
    ConfItemUINT_cls mCPick; ///< pick a particle by clicking it
    ConfItemBOOLARRAY_cls mCPickMod;
    ConfItemList_cls mCConfItemListPref; ///< the other keys
    ConfItemUINT_cls mCSortType;         ///< 0 precise, 1 to 3 approximate in 10, 100, 1000 steps
    ConfItemBOOL_cls mCFitFirst;         ///< views are fitted to data that are opened
    ConfItemBOOL_cls mCThinDrags;        ///< fewer particles while a hand drags, so that the picture keeps up
    ConfItemList_cls mCConfItemListDraw; ///< keys that files have where they aren't the defaults
    ConfItemUINT_cls mCDrawWay;          ///< who draws particles, a DrawWay

    Preference_cls();
    Preference_cls(const Preference_cls&) = delete; // the lists point into the object
    Preference_cls& operator=(const Preference_cls&) = delete;

    /// Set all mouse keys to their defaults; for a template other than 0 there are none.
    void SetToDefaultMouse(int mouseTemplate);
    void SetToDefaultParam();
    bool ReadStrLine(const wxString& line);
    wxString Serialize();
    /// With the keys that Serialize leaves out.
    wxString SerializeWhole();
    /// Take over all values.
    void CopyFrom(Preference_cls& other);

    /// Turn the left button with the emulating key into the middle button and forget that key.
    void ModulateBTN(bool* pModifiers, bool* pButtons) const;
    // Each asks for buttons and modifiers that ModulateBTN has seen.
    bool IsMouse4Gyration(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4Zoom(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4MoveCenter(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4MoveItem(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4Menu(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4HitTest(const bool* pModifiers, const bool* pButtons) const;
    bool IsMouse4Pick(const bool* pModifiers, const bool* pButtons) const;

private:
    /// Position of the emulating key among the modifiers, 3 for none.
    unsigned GetEmulate() const;
};
