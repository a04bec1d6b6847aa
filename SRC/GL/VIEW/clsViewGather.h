// From the faces of a view to its picture: in the window, or in the buffer of an image.
#pragma once

#include <functional>

#include "GL/VIEW/clsViewContext.h"

class ViewGather_cls {
public:
    explicit ViewGather_cls(const ViewContext_st& context) : mContext(context) {}

    /// Compose the faces into the present target, w by h pixels of it. To an image, the steps of a motion
    /// blur are added.
    void GatherFBOImages(int w, int h, bool bToImage);

private:
    void GatherFBOMultiPanel(int w, int h, bool bAdditive);
    void GatherDome(int w, int h);
    void DrawDistorted(int w, int h);
    void DrawDomeSquare(int w, int h);
    void DrawFisheyeGrid(const std::function<void()>& draw);
    void AddStage(int w, int h, float weight);

    ViewContext_st mContext;
};
