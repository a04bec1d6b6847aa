// The periodic box of the simulation: which axes wrap, its base vectors and a factor for each coordinate.
// Holds data alone; interpolation, CopyBox and Stick do the work.
#pragma once

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "COMMON/clsDialogControl.h"

/// Values of the items below, as files hold them.
enum PeriodicType : unsigned { PERIODIC_NONE = 0, PERIODIC_XY = 1, PERIODIC_XYZ = 2 };
/// What a particle does that went round the box: take the shorter way, or stand still.
enum PeriodicEffect : unsigned { PERIODIC_GUESS_VELOCITY = 0, PERIODIC_STAND_STILL = 1 };

class PeriodicBoundary_cls : public DialogControl_cls {
public:
    PeriodicBoundary_cls() { SetToDefault(); }
    PeriodicBoundary_cls(const PeriodicBoundary_cls&) = delete; // the list holds pointers to the items
    PeriodicBoundary_cls& operator=(const PeriodicBoundary_cls&) = delete;

    /// No wrapping, a cube of edge 10.
    void SetToDefault();
    /// Box vector k (0 to 2) into pOut[3]: each coordinate times the factor of that coordinate.
    void GetBoundaryVector(float* pOut, int k) const;
    bool ReadStrLine(const wxString& line) { return mCConfItemList.ReadStrLineAll(line); }
    wxString Serialize() { return mCConfItemList.SerializeAll(); }

    ConfItemList_cls mCConfItemList;
    ConfItemUINT_cls mCPeriodicType;       ///< a PeriodicType
    ConfItemUINT_cls mCPeriodicEffect;     ///< a PeriodicEffect
    ConfItemFLOATARRAY_cls mCPeriodicSize; ///< factors of x, y, z
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector0;
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector1;
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector2;
};
