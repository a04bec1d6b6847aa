// The camera that moves by itself: its key-framed place and direction are what a view follows.
#pragma once

#include "SCENE/clsSceneObj.h"

class CameraPath_cls final : public SceneObj_cls {
public:
    enum Geometry { GEOMETRY_PERSPECTIVE = 0, GEOMETRY_ORTHOGRAPHIC, GEOMETRY_FISHEYE, GEOMETRY_PANORAMIC };

    CameraPath_cls();

    /// As it was made, without keys.
    void SetToDefault();

    static constexpr int kPickName = 1;

    /// Camera and path as others see them; nothing while it isn't visible. What it draws on the screen needs
    /// a current OpenGL context.
    void GLDraw(MarkPainter_cls& painter) const;
    wxString GetShownName() const override;
    wxString Serialize();
    /// Reads on from the stream when `line` is the block's marker.
    void ReadStrLine(std::wistream& stream, const wxString& line);

    ConfItemINT_cls mCGeometry;        ///< a Geometry
    ConfItemDOUBLE_cls mCVAngle;       ///< vertical view angle, degrees, 0 to 180
    ConfItemFLOAT_cls mCFishEyeOffset; ///< tilt of a dome, degrees, -90 to 90
    ConfItemBOOL_cls mCLookAnchor; ///< looks at the anchor path's place, whatever the rotation's curves say
};
