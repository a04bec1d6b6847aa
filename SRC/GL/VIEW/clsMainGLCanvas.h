// One OpenGL view. A paint draws the scene with this view's camera into off-screen buffers and shows the
// result in the window as one textured quad; the window's size never changes what is rendered.
//
// There are always five: four panels and the Extra Panel. Their GL objects are shared.
#pragma once

#include <epoxy/gl.h>

#include <wx/glcanvas.h>
#include <wx/stopwatch.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/BASE/clsGLPerspective.h"
#include "GL/BASE/clsMouseCtrl.h"
#include "GL/BASE/clsPositionAndDirection.h"

class ColorCurve_cls;
class DrawOption_cls;
class FBO_cls;
class FrameMain_cls;
class GLCanvasCtrl_cls;
class Preference_cls;

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
    /// True when this view is hidden or shows this frame and step; otherwise it is refreshed.
    bool CheckGLRefresh(int frame, int step);
    /// Whatever was painted no longer holds.
    void MarkStale();
    wxGLContext* GetContext() const { return mpCGLContext; }

    // Queries on the view.
    int GetDisplayMode() const { return mDisplayMode.mValue; }
    int GetGeometry() const { return mGLGeometry.mValue; }
    bool IsOrthographic() const;
    bool IsAlongAxis() const;
    bool IsFishEye() const;
    bool IsCylinder() const;
    int GetMultiPanelMode() const; ///< 0 one face, 1 fisheye, 2 panorama

    // View settings.
    void SetDisplayMode(int mode);
    void TogglePerspective();
    void LinkageConnect();
    void ForceUpdateCameraPos() { mbForceUpdateCameraPos = true; }
    void SetCameraToDefaultPos();
    PositionAndDirection_cls* GetPCCameraPosition();
    double* GetPCAnchorPosition(); ///< three doubles
    void SetThisToBeActiveGL();

    // Other outputs than the window, driven from the frame's stop command.
    void StopSaveImgSeqProcess() {}
    void StopExportDataProcess() {}
    void StopExportPovStringProcess() {}

    wxString Serialize();
    void ReadStrLine(const wxString& line);

    static void InitializeStaticMembers();
    static void DestructStaticMembers();
    static wxString SerializeStaticMember();
    static void ReadStrLineStaticMember(std::wistream& stream, const wxString& line);

    /// Text of the last message lines, as drawn; for tests and the status.
    wxString GetMessageText() const { return mStrMessageShown; }
    int GetPaintCount() const { return mPaintCount; }
    double GetFirstPaintMillis() const { return double(mFirstPaintMillis); }
    /// The picture now in the window, for tests: RGB, top row first; w and h in pixels.
    std::vector<unsigned char> ReadWindowPixels(int* pW, int* pH);

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

    static const int msAFBOSize[5]; ///< 256 to 4096
    static ConfItemUINT_cls msCFBOSizeIndex;
    static ConfItemFLOAT_cls msCLineWidth;
    static ConfItemUINT_cls msCTagFontIndex;
    static ConfItemList_cls msCConfListStatic;
    static ColorCurve_cls* mspCClrCurveBG;
    static ColorCurve_cls* mspCClrCurveOut;
    static ColorCurve_cls* mspCClrCurveTag;
    static double msCAnchorPos[3];
    static double msCAnchorPosOrtho[3];

    GLPerspective_cls mCGLPerspective;
    PositionAndDirection_cls mCCamPos; ///< the camera of the current paint

    // The view developer adds the private part: the steps of a paint, mouse, popup menu.
};
