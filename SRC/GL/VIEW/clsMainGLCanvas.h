// One OpenGL view. A paint draws the scene with this view's camera into off-screen buffers and shows the
// result in the window as one textured quad; the window's size never changes what is rendered.
//
// There are always five: four panels and the Extra Panel. Their GL objects are shared (clsSharedView.h). The
// canvas is the window, its context and the order of a paint's steps; its parts do the steps.
#pragma once

#include <memory>
#include <vector>

#include <wx/glcanvas.h>
#include <wx/stopwatch.h>

#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsNavigators.h"
#include "GL/VIEW/clsFrameWait.h"
#include "GL/VIEW/clsKeptPicture.h"
#include "GL/VIEW/clsViewCamera.h"
#include "GL/VIEW/clsViewContext.h"
#include "GL/VIEW/clsViewExport.h"
#include "GL/VIEW/clsViewGather.h"
#include "GL/VIEW/clsViewImage.h"
#include "GL/VIEW/clsViewMenu.h"
#include "GL/VIEW/clsViewMessage.h"
#include "GL/VIEW/clsViewMouse.h"
#include "GL/VIEW/clsViewOverlay.h"
#include "GL/VIEW/clsViewPov.h"
#include "GL/VIEW/clsViewScene.h"
#include "GL/VIEW/clsViewSettings.h"

class DrawOption_cls;
class GLCanvasCtrl_cls;
class wxDC;
class ViewPick_cls;
struct ShownPart_st;
struct ViewLinks_st;

class MainGLCanvas_cls : public wxGLCanvas, public ViewSettings_cls {
public:
    /// `pShare` is the context of panel 0, null for panel 0 itself.
    MainGLCanvas_cls(wxWindow* pParent, GLCanvasCtrl_cls* pCtrl, const ViewLinks_st& links, int panelIndex,
                     int displayMode, std::shared_ptr<wxGLContext> pContext);
    ~MainGLCanvas_cls() override;

    /// Queue a paint; with panel 0 also one of an Extra Panel that copies it.
    void RefreshEX();
    /// Queue a paint of this view alone. One that writes something is painted whether it can be seen or not.
    void RefreshForOutput();
    /// True when this view is hidden or shows this frame and step; otherwise it is refreshed.
    bool CheckGLRefresh(int frame, int step);
    /// Whatever was painted no longer holds.
    void MarkStale();
    /// Of the window, at least 1 by 1.
    wxSize GetPixelSize() const;
    /// An image or exported data are wanted: paints go on although nobody sees the view.
    bool WritesOutput() const { return mImage.IsRequested() || mExport.IsRunning() || mPov.IsRunning(); }
    /// Null: no OpenGL here.
    std::shared_ptr<wxGLContext> GetContext() const { return mpCGLContext; }
    /// Is there a picture at all, or only a text that tells why not?
    bool HasGL() const { return mpCGLContext != nullptr; }

    // View settings; see TakeDisplayMode and TakeGeometry.
    void SetDisplayMode(int mode);
    void SetGeometry(int geometry);
    // What menus and keys choose: one step of the undo list each.
    void ChooseDisplayMode(int mode);
    void TogglePerspective();
    /// Look through the camera path (display mode 7).
    void LinkageConnect();
    void SetThisToBeActiveGL();
    /// Keys while an item is dragged here (ViewItemMouse_cls::OnKey).
    bool OnDragKey(int keycode) { return mMouse.OnDragKey(keycode); }

    /// The next paint makes an image, complete when the last step of a motion blur has been added. `size`
    /// empty: as large as the window.
    void RequestImage(ViewImage_cls::ImageTaker taker, wxSize size = wxSize(), bool bTransparent = false);
    /// Draw the image that is requested now, whether the view can be seen or not, without its window. Waits
    /// for the data. False: there is nothing that could draw it.
    bool DrawImage();
    /// Called inside the next paint, when the window's picture with its overlays is complete and the messages
    /// aren't there yet; the picture is GL's read buffer. With `bEyes` two eyes that have a file each are
    /// taken one after the other.
    void RequestWindowPicture(ViewImage_cls::WindowTaker taker, bool bEyes);

    // Other outputs than the window, driven from the frame's stop command.
    /// From the next paint on each new picture goes to the sequence, until the stop.
    void StartSaveImgSeqProcess(ImgSequence_cls* pSequence);
    void StopSaveImgSeqProcess();
    /// From now on a paint writes its frame and draws nothing.
    void StartExportDataProcess(DataExporter_cls* pExporter);
    void StopExportDataProcess();

    wxString Serialize();
    void ReadStrLine(const wxString& line);

    /// Text of the last message lines, as drawn; for tests and the status.
    wxString GetMessageText() const { return mMessage.GetMessageText(); }
    int GetPaintCount() const { return mPaintCount; }
    struct LastPaint_st {
        double mMillis = 0.0;
        bool mbThinned = false; ///< particles lack because a hand drags something (DragThinning_cls)
    };
    const LastPaint_st& GetLastPaint() const { return mLastPaint; }
    const ViewPick_cls& GetPick() const { return *mpCPick; }
    /// The picture last shown: RGB, top row first, w times h pixels. Kept only while the views' shared
    /// msbKeepPicture is set.
    const std::vector<unsigned char>& GetShownPicture(int* pW, int* pH) const {
        return mKeptPicture.Get(pW, pH);
    }

    GLPerspective_cls mCGLPerspective;
    ViewCamera_cls mCamera;
    ViewPov_cls mPov; ///< scenes for POV-Ray

private:
    // clsMainGLCanvas.cpp
    void MakeContext();
    void TellNoGL();
    bool MakeContextCurrent();
    MainGLCanvas_cls* GetOther(int view) const;
    /// As the text of a message.
    ViewMessage_cls::Facts_st GetFacts() const;
    bool IsSeen() const;
    bool IsAnyMultiPanel() const;

    // clsMainGLCanvasPaint.cpp
    void OnPaint(wxPaintEvent& event);
    void QueuePaint();
    void Paint();
    bool IsPaintAllowed() const;
    bool IsFrameLoading();
    bool LacksFollowed();
    void ReadTime();
    void DrawTextOnDC(wxDC& dc);
    bool BeginGL();
    void InitializeGLIfNot();
    void SetViewFromSettings();
    void PlaceCamera();
    void NotePainted();
    void SetEye(int pass);
    ShownPart_st GetShownPart() const;
    void DrawEyes();
    void EndFaces();
    void CountPaint();
    void DrawOnWindow();
    void SetItemsFromWindow();
    void NotePaintTime();
    void ExportFrame();

    GLCanvasCtrl_cls* mpCCtrl;
    ViewHost_cls* mpCHost;
    SharedView_cls* mpCShared;
    DrawOption_cls* mpCDrawOption;
    std::shared_ptr<wxGLContext> mpCGLContext; ///< of all views; null: no OpenGL here
    bool mbGLInitialized = false;
    ViewMoment_st mMoment;
    ViewMessage_cls mMessage;
    FrameWait_cls mWait;
    // The parts of a paint, and what they have in common.
    ViewContext_st mContext;
    ViewScene_cls mScene;
    ViewGather_cls mGather;
    ViewOverlay_cls mOverlay;
    ViewImage_cls mImage;
    ViewExport_cls mExport;
    std::unique_ptr<ViewPick_cls> mpCPick;
    Navigators_cls mNavigators;
    ViewMenu_cls mMenu;
    ViewMouse_cls mMouse;

    bool mbPaintQueued = false; ///< a paint event has come whose picture is still to be drawn
    bool mbPainting = false;    ///< this canvas is the one that holds GbGLLockDrawing
    bool mbWaits = false;       ///< the last paint was for a picture that is written
    bool mbLoading = false;     ///< the last paint gave up waiting for the reader
    int mPaintedFrame = -1;     ///< -1 when the view must be drawn anyway
    int mPaintedStep = -1;
    double mPaintedBlurFactor = -1.0;
    int mFrameFrame = -1;
    int mFrameStep = -1;
    double mFrameBlurFactor = -1.0;
    wxStopWatch mCStopWatch; ///< of the drawing
    wxSize mShownSize;       ///< of the picture in the window; empty before the first
    int mPaintCount = 0;     ///< paints with all data
    LastPaint_st mLastPaint;
    KeptPicture_cls mKeptPicture;
};
