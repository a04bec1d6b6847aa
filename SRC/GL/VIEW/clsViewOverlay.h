// What is written on top of a view's picture: the time, and the legend of the colours.
#pragma once

#include "GL/VIEW/clsViewContext.h"

class ViewOverlay_cls {
public:
    explicit ViewOverlay_cls(const ViewContext_st& context) : mContext(context) {}

    bool HasOverlays() const;
    /// Into the present target, w by h pixels of it.
    void DrawOverlays(int w, int h, bool bToImage);

private:
    ViewContext_st mContext;
};
