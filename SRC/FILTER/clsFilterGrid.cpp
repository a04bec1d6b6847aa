#include "FILTER/clsFilterGrid.h"

#include "COLORCURVE/clsColorCurve.h"

FilterGridData_cls::FilterGridData_cls()
    : FilterData_cls(true, true), mpCColor(AddColorCurve("Color", "0.5 0.5 0.5 1")) {
    mCConfItemList.Add(&mCGridType, "GridType=", "0");
    mCConfItemList.Add(&mCGridMin, "GridMin=", "-1");
    mCConfItemList.Add(&mCGridMax, "GridMax=", "+1");
    mCConfItemList.Add(&mCGridLineNum, "GridLineNum=", "20");
    mCConfItemList.Add(&mCGridCoord, "GridCoord=", "1");
}
