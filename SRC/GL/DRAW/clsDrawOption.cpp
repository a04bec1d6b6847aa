#include "GL/DRAW/clsDrawOption.h"

DrawOption_cls::DrawOption_cls() {
    mConfList.Add(&mDownSizing, "DownSizing=", "1");
    mConfList.Add(&mSortOrder, "SortOrder=", "0");
    mConfList.Add(&mClassify, "Classify=", "1");
    mConfList.Add(&mShadow, "Shadow=", "0");
}
