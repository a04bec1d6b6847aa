// From the faces of a view to its picture: in the window, or in the buffer of an image.
#pragma once

#include <functional>
#include <memory>

#include <wx/gdicmn.h>

#include "GL/VIEW/clsViewContext.h"
#include "SCENE/clsStereoGram.h"

class FBO_cls;

/// What a picture is put together for: the window; an image of its own, and what tells its transparency;
/// the window's picture of one eye.
enum class GatherTarget { Window, Image, OnBlack, OnWhite, WindowEye };

class ViewGather_cls {
public:
    explicit ViewGather_cls(const ViewContext_st& context) : mContext(context) {}

    /// Compose the faces into the present target, w by h pixels of it. To an image, the steps of a motion
    /// blur are added. The second of two eyes joins the first, unless images keep them apart.
    void GatherFBOImages(int w, int h, GatherTarget target);

private:
    const StereoGram_cls* GetStereo() const;
    bool IsEyeAlone(const StereoGram_cls& stereo, GatherTarget target) const;
    bool JoinsFirstEye(GatherTarget target) const;
    void BeginMasks(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const;
    void GatherFlat(int w, int h, bool bBlur, GatherTarget target);
    void GatherWideEye(const StereoGram_cls& stereo, int w, int h, bool bBlur, GatherTarget target);
    void GatherFBOMultiPanel(int w, int h, bool bAdditive);
    void GatherMixed(int w, int h, bool bBlur, GatherTarget target);
    StereoGram_cls::Part_st GetPart(const StereoGram_cls& stereo, GatherTarget target) const;
    void SetEyeViewport(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const;
    wxRect GetPlace(const StereoGram_cls& stereo, int w, int h, GatherTarget target) const;
    void FillPicture(std::unique_ptr<FBO_cls>& pPicture, int w, int h, bool bImage);
    void DrawExposedFace(bool bPixelOnPixel);
    void GatherDome(int w, int h);
    void DrawDistorted(int w, int h);
    void DrawDomeSquare(int w, int h);
    void DrawFisheyeGrid(const std::function<void()>& draw);
    void AddStage(const wxRect& place, float weight, bool bBlend);

    ViewContext_st mContext;
};
