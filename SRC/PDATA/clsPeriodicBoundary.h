// The periodic box of the simulation: which axes wrap, its base vectors and a factor for each coordinate.
// Holds data alone; interpolation, CopyBox and Stick do the work.
#pragma once

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "COMMON/clsDialogControl.h"

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
    ConfItemUINT_cls mCPeriodicType;       ///< 0 none, 1 x and y, 2 x, y and z
    ConfItemUINT_cls mCPeriodicEffect;     ///< a wrapped particle: 0 guess its velocity, 1 stands still
    ConfItemFLOATARRAY_cls mCPeriodicSize; ///< factors of x, y, z
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector0;
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector1;
    ConfItemFLOATARRAY_cls mCPeriodicBaseVector2;
};
