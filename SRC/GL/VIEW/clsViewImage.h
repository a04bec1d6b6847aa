// Images of a view: of a size of their own, added up over the steps of a motion blur, one or a whole film of
// them; and the picture of the window as it is.
#pragma once

#include <functional>
#include <memory>

#include <wx/gdicmn.h>

#include "GL/VIEW/clsImageBake.h"
#include "GL/VIEW/clsViewContext.h"

class FBO_cls;
class ImgSequence_cls;
class ViewGather_cls;
enum class GatherTarget;
class ViewOverlay_cls;
class ViewScene_cls;
struct ImageBuffers_st;
struct ShownPart_st;

class ViewImage_cls {
public:
    /// Takes a finished image: squares of which the middle counts, or the whole in the shape of `size`; and
    /// what is written on top, `size` pixels.
    /// Called inside the paint, twice where two eyes have an image each.
    using ImageTaker = std::function<void(const ImageBuffers_st& buffers, wxSize size)>;

    /// Takes a picture as large as the window, out of GL's read buffer; `eye` is the Eye that it is of.
    using WindowTaker = std::function<void(wxSize size, int eye)>;

    /// The other parts of the view outlive this.
    ViewImage_cls(const ViewContext_st& context, ViewScene_cls& scene, ViewGather_cls& gather,
                  ViewOverlay_cls& overlay);
    ~ViewImage_cls();

    // Orders, for the paints that follow. A `size` that is empty means as large as the window.
    void RequestImage(ImageTaker taker, wxSize size, bool bTransparent);
    /// With `bEyes` two eyes that have a file each are taken one after the other.
    void RequestWindowPicture(WindowTaker taker, bool bEyes) {
        mWindowTaker = std::move(taker);
        mbWindowEyes = bEyes;
    }
    void StartSaveImgSeqProcess(ImgSequence_cls* pSequence);
    bool StopSaveImgSeqProcess(); ///< false when none was running

    bool IsRequested() const { return mBake.IsRequested(); }
    /// Is the window's picture wanted?
    bool TakesWindow() const { return bool(mWindowTaker); }
    /// Has the last paint added to an image?
    bool HasBaked() const { return mBake.HasBaked(); }
    /// Of the image that is wanted; a window of `window` pixels.
    wxSize GetImageSize(wxSize window) const;
    /// What the image that is wanted shows of a flat view's face of `side` pixels; empty where none is.
    ShownPart_st GetShownPart(int side, wxSize window) const;

    // The steps of a paint, in this order; all but the second need the view's context.
    void DropIfOver();
    /// Before the faces are drawn.
    void BeginPaint();
    /// The faces are drawn, with a view angle of `angle` degrees; a window of `window` pixels.
    void TakeFaces(const ImageBake_cls::Moment_st& moment, bool bLoading, double angle, wxSize window);
    /// The window's picture of the present eye alone, where that is wanted.
    void TakeWindowEye(wxSize window, bool bLoading);
    /// Hand on what is complete.
    void FinishImage(wxSize window);
    /// The window's picture with its overlays is complete, the messages aren't there yet.
    void TakeWindowPicture(wxSize window, bool bLoading);
    /// What the output keeps of what the window shows.
    void DrawFrameBox(int w, int h);

private:
    struct ImageOrder_st {
        ImageTaker taker;
        wxSize size;
        bool bTransparent = false;
    };
    /// Live while a motion blur runs.
    struct EyeBuffers_st {
        std::unique_ptr<FBO_cls> mpCFBOForImage;
        std::unique_ptr<FBO_cls> mpCFBOOnBlack; ///< both of a transparent image
        std::unique_ptr<FBO_cls> mpCFBOOnWhite;
    };
    bool ShowsFace() const;
    bool IsDual() const;
    bool IsApart() const;
    ImageBuffers_st GetBuffers(int pass) const;
    void BakeImage(double angle, wxSize window);
    void BakeResultToFBOForImage(std::unique_ptr<FBO_cls>& pTarget, GatherTarget what, wxSize window);
    void DropImage();

    ViewContext_st mContext;
    ViewScene_cls& mScene;
    ViewGather_cls& mGather;
    ViewOverlay_cls& mOverlay;
    ImageBake_cls mBake;
    ImageOrder_st mImageOrder;
    EyeBuffers_st mEyes[2]; ///< the second one where two eyes have an image each
    /// The paint's image has the pixels of its face, but for their exposure, which is left to who makes
    /// bytes of them.
    bool mbByBytes = false;
    WindowTaker mWindowTaker;
    bool mbWindowEyes = false;
};
