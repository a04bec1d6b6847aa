#include "FILTER/clsFilterCopy.h"

FilterCopyData_cls::FilterCopyData_cls() : FilterData_cls(false, true) {
    for (int axis = 0; axis < 3; ++axis) {
        mCConfItemList.Add(&mCMin[axis], wxString::Format("CopyArrayMin%d=", axis), "0");
        mCConfItemList.Add(&mCMax[axis], wxString::Format("CopyArrayMax%d=", axis), "1");
    }
}
