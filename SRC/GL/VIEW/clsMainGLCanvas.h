// One OpenGL view. A paint draws the scene with this view's camera into off-screen buffers and shows the
// result in the window as one textured quad; the window's size never changes what is rendered.
//
// There are always five: four panels and the Extra Panel. Their GL objects are shared.
#pragma once

#include <epoxy/gl.h>

#include <functional>
#include <istream>
#include <memory>
#include <optional>
#include <vector>

#include <wx/glcanvas.h>
#include <wx/stopwatch.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/BASE/clsDolly.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsGLStrings2D.h"
#include "GL/BASE/clsMouseCtrl.h"
#include "GL/BASE/clsPositionAndDirection.h"

class AnchorPath_cls;
class CameraPath_cls;
class ColorCurve_cls;
class DataExporter_cls;
class Distortion_cls;
class DrawClrLegend_cls;
class DrawOption_cls;
class DrawTimeIndex_cls;
class Exposure_cls;
class FBO_cls;
class FishEye_cls;
class FrameMain_cls;
class GLCanvasCtrl_cls;
class GLTexture_cls;
class ImgSequence_cls;
class Information_cls;
class Overlay_cls;
class Preference_cls;
class wxDC;
struct ImageBuffers_st;

class MainGLCanvas_cls : public wxGLCanvas {
public:
    static constexpr int kViewNumber = 5;
    static constexpr int kExtraPanel = 4;

    /// `pShare` is the context of panel 0, null for panel 0 itself.
    MainGLCanvas_cls(wxWindow* pParent, GLCanvasCtrl_cls* pCtrl, FrameMain_cls* pFrame,
                     DrawOption_cls* pDrawOption, Preference_cls* pPreference, int panelIndex,
                     int displayMode, wxGLContext* pShare);
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
    bool WritesOutput() const { return mbImageRequest || mpCDataExporter; }
    wxGLContext* GetContext() const { return mpCGLContext.get(); }

    // Queries on the view.
    int GetDisplayMode() const { return mDisplayMode.mValue; }
    int GetGeometry() const { return mGLGeometry.mValue; }
    /// The geometry that counts: a camera path brings its own.
    int GetEffectiveGeometry() const;
    bool IsOrthographic() const;
    bool IsAlongAxis() const;
    bool IsFishEye() const;
    bool IsCylinder() const;
    int GetMultiPanelMode() const; ///< 0 one face, 1 fisheye, 2 panorama

    // View settings.
    /// A geometry below 2 follows the mode: orthographic along an axis, else perspective.
    void SetDisplayMode(int mode);
    void SetGeometry(int geometry);
    // What menus and keys choose: one step of the undo list each.
    void ChooseDisplayMode(int mode);
    void TogglePerspective();
    /// Look through the camera path (display mode 7).
    void LinkageConnect();
    /// Drop a user's move of the linked camera with the next paint.
    void ForceUpdateCameraPos() { mbForceUpdateCameraPos = true; }
    CameraPath_cls* GetPLinkedCameraPath() const;
    AnchorPath_cls* GetPLinkedAnchorPath() const;
    // Keys of the camera path from this view's camera and anchor; one step each. Time -1: now.
    void SetKeyPos(double time = -1.0);
    void SetKeyPosRot(double time = -1.0);
    void SetKeyAnc(double time = -1.0);
    void SetCameraToDefaultPos();
    PositionAndDirection_cls* GetPCCameraPosition();
    double* GetPCAnchorPosition(); ///< three doubles
    void SetThisToBeActiveGL();
    /// Is there a picture at all, or only a text that tells why not?
    bool HasGL() const { return mpCGLContext != nullptr; }

    /// Takes a finished image: squares of which the middle counts, and what is written on top, `size` pixels.
    /// Called inside the paint.
    using ImageTaker = std::function<void(const ImageBuffers_st& buffers, wxSize size)>;
    /// The next paint makes an image, complete when the last step of a motion blur has been added. `size`
    /// empty: as large as the window.
    void RequestImage(ImageTaker taker, wxSize size = wxSize(), bool bTransparent = false);
    /// Draw the image that is requested now, whether the view can be seen or not, without its window. Waits
    /// for the data. False: there is nothing that could draw it.
    bool DrawImage();
    /// Called inside the next paint, when the window's picture with its overlays is complete and the messages
    /// aren't there yet; the picture is GL's read buffer.
    void RequestWindowPicture(std::function<void(wxSize size)> taker);

    // Other outputs than the window, driven from the frame's stop command.
    /// From the next paint on each new picture goes to the sequence, until the stop.
    void StartSaveImgSeqProcess(ImgSequence_cls* pSequence);
    void StopSaveImgSeqProcess();
    /// From now on a paint writes its frame and draws nothing; clsViewExport.cpp.
    void StartExportDataProcess(DataExporter_cls* pExporter);
    void StopExportDataProcess();
    void StopExportPovStringProcess() {}

    wxString Serialize();
    void ReadStrLine(const wxString& line);

    /// The settings are the hub's and outlive the views.
    static void InitializeStaticMembers(Overlay_cls* pOverlay, Exposure_cls* pExposure,
                                        Information_cls* pInformation);
    static void DestructStaticMembers();
    static wxString SerializeStaticMember();
    static void ReadStrLineStaticMember(std::wistream& stream, const wxString& line);

    /// Text of the last message lines, as drawn; for tests and the status.
    wxString GetMessageText() const { return mStrMessageShown; }
    int GetPaintCount() const { return mPaintCount; }
    double GetFirstPaintMillis() const { return double(mFirstPaintMillis); }
    /// The picture last shown: RGB, top row first, w times h pixels. Kept only while msbKeepPicture is set.
    const std::vector<unsigned char>& GetShownPicture(int* pW, int* pH) const;

    int mPanelIndex; ///< 0 to 3, 4 for the Extra Panel
    ConfItemList_cls mConfList;
    ConfItemBOOL_cls mShowMessage;
    ConfItemBOOL_cls mShowItems;
    ConfItemBOOL_cls mShowGrid;
    ConfItemBOOL_cls mShowData;
    ConfItemBOOL_cls mPivotMode;
    ConfItemFLOAT_cls mGLDepthMin;
    ConfItemFLOAT_cls mGLDepthMax;
    ConfItemFLOAT_cls mGLPersAngle;
    ConfItemFLOAT_cls mGLOrthoScale;
    ConfItemINT_cls mDisplayMode;
    ConfItemINT_cls mGLGeometry;
    ConfItemINT_cls mGLPathIndex;
    ConfItemUINT_cls mGridType; ///< this and the four that follow are kept in the file only
    ConfItemBOOL_cls mShowOtherCam;
    ConfItemBOOL_cls mDrawItemByXOR;
    ConfItemBOOL_cls mGridAntialias;
    ConfItemBOOL_cls mGridShowTag;
    ConfItemBOOL_cls mDistortion;
    ConfItemBOOL_cls mFisheyeGrid;

    static bool msbKeepPicture;     ///< read every picture back before it is shown, for tests; slow
    static const int msAFBOSize[5]; ///< 256 to 4096
    static int GetFBOSize();
    static ConfItemUINT_cls msCFBOSizeIndex;
    static ConfItemFLOAT_cls msCLineWidth;
    static ConfItemUINT_cls msCTagFontIndex;
    static ConfItemList_cls msCConfListStatic;
    static ColorCurve_cls* mspCClrCurveBG;
    static ColorCurve_cls* mspCClrCurveOut;
    static ColorCurve_cls* mspCClrCurveTag;
    static FishEye_cls* mspCFishEyeCtrl;
    static Distortion_cls* mspCDistortion;
    static GLTexture_cls* mspCMask; ///< null until the first view has a context
    static GLTexture_cls* mspCFisheyeGrid;
    static DrawTimeIndex_cls* mspCDrawTimeIndex;
    static DrawClrLegend_cls* mspCDrawClrLegend;
    static ImgSequence_cls* mspCImgSeqLinked; ///< told the active window's size; null before the first dialog
    static double msCAnchorPos[3];
    static double msCAnchorPosOrtho[3];

    GLPerspective_cls mCGLPerspective;
    PositionAndDirection_cls mCCamPos; ///< the camera of the current paint

private:
    // What the paint in progress draws.
    struct Moment_st {
        double doubleIndex = 0.0;
        double remappedIndex = 0.0;
        int dataFrame = 0;
        double dt = 0.0; ///< data time after the frame's snapshot
        double distanceToAnchor = 1.0;
        int fboSize = 2048;
        int face = 0;      ///< the one being drawn
        bool bData = true; ///< false: the data are still being read
    };
    enum class DataState { Ready, Loading };
    // An image that is wanted of this view.
    struct ImageOrder_st {
        ImageTaker taker;
        wxSize size; ///< empty: as the window
        bool bTransparent = false;
    };
    // What was added to the image last.
    struct BakedMoment_st {
        int frame = -1;
        int step = -1;
        double blur = -1.0;
        bool operator==(const BakedMoment_st& o) const {
            return frame == o.frame && step == o.step && blur == o.blur;
        }
    };

    // clsMainGLCanvas.cpp
    void AddItems();
    void MakeContext(wxGLContext* pShare);
    void TellNoGL();
    bool MakeContextCurrent();
    MainGLCanvas_cls* GetOther(int view) const;
    bool GoesAlong(int mode) const { return mode >= 1 && mode <= 6; }

    // clsMainGLCanvasPaint.cpp
    void OnPaint(wxPaintEvent& event);
    void QueuePaint();
    void Paint();
    bool IsPaintAllowed() const;
    DataState WaitForFrame();
    bool KeepsLastPicture() const;
    void ReadTime();
    void DrawTextOnDC(wxDC& dc);
    bool BeginGL();
    void InitializeGLIfNot();
    void SetViewFromSettings();
    void PlaceCamera();
    void DrawEyes();
    void CountPaint();
    void KeepPicture();
    void DrawOnWindow();

    // clsViewSceneData.cpp
    void SetLights();
    void DrawDataMain();
    void DrawDataLitDiffuse(int lightIndex);
    void DrawDataCopyLoop(bool bShadowPass);

    // clsSharedView.cpp
    static void InitializeShared();
    void DrawOnFBO();
    void EndFaces();
    void ModifyByDomeTilt(PositionAndDirection_cls* pCamera) const;
    bool IsAnyMultiPanel() const;

    // clsViewGather.cpp
    void GatherFBOImages(int w, int h, bool bToImage);
    void GatherFBOMultiPanel(int w, int h, bool bAdditive);
    void GatherDome(int w, int h);
    void DrawDistorted(int w, int h);
    void DrawDomeSquare(int w, int h);
    void DrawFisheyeGrid(const std::function<void()>& draw);
    void AddStage(int w, int h, float weight);

    // clsViewImage.cpp
    wxSize GetImageSize() const;
    bool BeginImage();
    void BakeImage(double angle);
    void BakeResultToFBOForImage(std::unique_ptr<FBO_cls>& pTarget, bool bExposed);
    void FinishImage();
    void DropImage();
    bool IsSeen() const;
    void TakeWindowPicture();
    void DrawFrameBox(int w, int h);

    // clsViewOverlay.cpp
    void DrawOverlays(int w, int h, bool bToImage);
    bool HasOverlays() const;

    // clsViewExport.cpp
    void ExportFrame();

    // clsViewScene.cpp
    void DrawFace(double gridUnit);
    void DrawOtherObjects(double gridUnit);
    void DrawCameraPath(bool bPick);
    void DrawAnchor();
    void SetLineWidth();
    void SetGLBGColor(int which);

    // clsViewCamera.cpp
    void UpdateCameraPos();
    void ModifyOrthoCamera();
    void EvaluatePaths(double doubleIndex);
    void FollowPath();
    bool HasPathMoved();
    const PositionAndDirection_cls& GetModeCamera();
    void UpdateAnc();
    void SetPerspective();
    void SetAngleIfLinked();
    bool IsCameraLinked() const { return mDisplayMode.mValue == 7; }

    // clsViewMouse.cpp
    void BindMouse();
    void OnMouse(wxMouseEvent& event);
    void OnCaptureLost(wxMouseCaptureLostEvent& event);
    void OnButtonDown();
    bool OnWheel();
    bool ProcViewOrItemDragging();
    bool MoveCenter(PositionAndDirection_cls* pCamera);
    void ShowMenu();
    void OnMenu(wxCommandEvent& event);
    void OnMenuToggleLink();
    void OnMenuMoveToCamPos();
    void OnMenuViewAngle();
    void OnChangedByMouse();
    void SetOtherCanvasToBeActiveGL();
    void RefreshOtherOrthoCanvas() { RefreshOthers(true); }
    void RefreshOtherFreeCanvas() { RefreshOthers(false); }
    void RefreshOthers(bool bAlongAxis);

    // clsViewMessage.cpp
    void DrawMessage(int w, int h);
    wxString MakeStatusLine() const;
    wxString MakeDataLine() const;
    wxString MakeMemoryLine();

    GLCanvasCtrl_cls* mpCCtrl;
    FrameMain_cls* mpCFrame;
    DrawOption_cls* mpCDrawOption;
    std::unique_ptr<wxGLContext> mpCGLContext; ///< null: no OpenGL here
    bool mbGLInitialized = false;
    PositionAndDirection_cls mCFaceCam; ///< mCCamPos as the face being drawn sees the scene
    PositionAndDirection_cls mCCamFree;
    PositionAndDirection_cls mCCamLinked;
    PositionAndDirection_cls mCCamOrtho;
    CameraPath_cls* mpCLinkedCameraPath = nullptr; ///< null: the hub's
    AnchorPath_cls* mpCLinkedAnchorPath = nullptr; ///< null: the hub's
    Dolly_cls mCDolly;
    MouseCtrl_cls mCMouse;
    GLStrings2D_cls mCStrings;
    Moment_st mMoment;

    bool mbForceUpdateCameraPos = false;
    bool mbImageRequest = false;  ///< paints make images: they wait for their data
    bool mbImageSequence = false; ///< one after another, for the linked sequence
    bool mbHiddenPaint = false;   ///< this paint is for an image alone, not for the window
    bool mbBaked = false;         ///< this paint has added to the image
    bool mbDropImage = false;     ///< a run has ended: the next paint drops its buffers
    ImageOrder_st mImageOrder;
    BakedMoment_st mBaked;
    std::unique_ptr<FBO_cls> mpCFBOForImage[2]; ///< one an eye; live while a motion blur runs
    std::unique_ptr<FBO_cls> mpCFBOOnBlack;     ///< both of a transparent image
    std::unique_ptr<FBO_cls> mpCFBOOnWhite;
    std::optional<float> mPlainGrey; ///< stands for every background colour
    std::function<void(wxSize)> mWindowTaker;
    bool mbPaintQueued = false; ///< a paint event has come whose picture is still to be drawn
    bool mbPainting = false;    ///< this canvas is the one that holds GbGLLockDrawing
    bool mbLoading = false;     ///< the last paint gave up waiting for the reader
    bool mbLockDragging = false;
    // What mCCamLinked was last taken from; until any of it changes, a user's move of it stands.
    PositionAndDirection_cls mCCamPath;
    int mPathFrame = -1;
    int mPathStep = -1;
    double mPathBlurFactor = -1.0;
    int mPaintedFrame = -1; ///< -1 when the view must be drawn anyway
    int mPaintedStep = -1;
    double mPaintedBlurFactor = -1.0;
    int mFrameFrame = -1;
    int mFrameStep = -1;
    double mFrameBlurFactor = -1.0;
    int mWaitFrame = -1; ///< position whose reading mCWaitWatch times
    int mWaitStep = -1;
    wxStopWatch mCWaitWatch;
    DataExporter_cls* mpCDataExporter = nullptr; ///< set while an export runs
    wxStopWatch mCStopWatch;                     ///< of the drawing
    wxSize mShownSize;                           ///< of the picture in the window; empty before the first
    int mPaintCount = 0;                         ///< paints with all data
    float mFirstPaintMillis = 0.0f;
    int mDrawCount = 0;
    wxString mWXStrMessage; ///< warning of this paint
    wxString mStrMessageShown;
    std::vector<unsigned char> mVPicture; ///< see msbKeepPicture
    wxSize mPictureSize;

    static Exposure_cls* mspCExposureLink;
    static Information_cls* mspCInformationLink;
    static std::unique_ptr<FBO_cls> mspCDome; ///< the dome picture; kept for its memory
    static std::unique_ptr<FBO_cls>
        mspCStage; ///< one finished picture before it is added to others of an image
};
