// What a user sets of one view: what it shows, from where and how. Files keep all of it.
#pragma once

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "GL/BASE/DisplayMode.h"

class AnchorPath_cls;
class CameraPath_cls;
class ViewHost_cls;

class ViewSettings_cls {
public:
    static constexpr int kViewNumber = 5;
    static constexpr int kExtraPanel = 4;

    /// What a picture shows of the scene; the numbers stand in files. A camera path has the same ones.
    enum Geometry { GEOMETRY_PERSPECTIVE = 0, GEOMETRY_ORTHOGRAPHIC, GEOMETRY_FISHEYE, GEOMETRY_PANORAMIC };

    /// `host` outlives this.
    ViewSettings_cls(const ViewHost_cls& host, int panelIndex);

    int GetDisplayMode() const { return mDisplayMode.mValue; }
    int GetGeometry() const { return mGLGeometry.mValue; }
    /// The geometry that counts: a camera path brings its own.
    int GetEffectiveGeometry() const;
    bool IsOrthographic() const { return GetEffectiveGeometry() == GEOMETRY_ORTHOGRAPHIC; }
    bool IsAlongAxis() const { return IsAxisMode(mDisplayMode.mValue); }
    bool IsFishEye() const { return !IsAlongAxis() && GetEffectiveGeometry() == GEOMETRY_FISHEYE; }
    bool IsCylinder() const { return !IsAlongAxis() && GetEffectiveGeometry() == GEOMETRY_PANORAMIC; }
    int GetMultiPanelMode() const; ///< 0 one face, 1 fisheye, 2 panorama
    /// The user looks through the camera path.
    bool IsCameraLinked() const { return mDisplayMode.mValue == DISPLAY_PATH; }
    /// The view has a camera that the user places: its own, or that along an axis.
    bool HasOwnCamera() const { return mDisplayMode.mValue < DISPLAY_PATH; }
    CameraPath_cls* GetPLinkedCameraPath() const;
    AnchorPath_cls* GetPLinkedAnchorPath() const;

    /// Beyond what the panel offers it is the nearest. A geometry below 2 follows the mode: orthographic
    /// along an axis, else perspective.
    void TakeDisplayMode(int mode);
    void TakeGeometry(int geometry);
    /// Display mode 7, with the host's paths.
    void LinkPaths();
    /// Out of a file; false when the line is none of these settings.
    bool ReadSettings(const wxString& line);

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
    ConfItemINT_cls mDisplayMode; ///< a DisplayMode
    ConfItemINT_cls mGLGeometry;  ///< a Geometry
    ConfItemINT_cls mGLPathIndex;
    ConfItemUINT_cls mGridType; ///< this and the four that follow are kept in the file only
    ConfItemBOOL_cls mShowOtherCam;
    ConfItemBOOL_cls mDrawItemByXOR;
    ConfItemBOOL_cls mGridAntialias;
    ConfItemBOOL_cls mGridShowTag;
    ConfItemBOOL_cls mDistortion;
    ConfItemBOOL_cls mFisheyeGrid;

private:
    int GetLastMode() const { return mPanelIndex == kExtraPanel ? DISPLAY_COPY : DISPLAY_PATH; }

    const ViewHost_cls* mpCHost;
    CameraPath_cls* mpCLinkedCameraPath = nullptr; ///< null: the host's
    AnchorPath_cls* mpCLinkedAnchorPath = nullptr; ///< null: the host's
};
