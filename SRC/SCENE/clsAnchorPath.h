// The point that the camera's path can be told to look at, with keys of its own.
#pragma once

#include "SCENE/clsSceneObj.h"

class AnchorPath_cls final : public SceneObj_cls {
public:
    AnchorPath_cls();

    /// Mark and path as others see them; an anchor that rests in the origin stays out of the picture.
    /// Needs a current OpenGL context.
    void GLDraw(bool bPick) const;
    wxString Serialize();
    /// Reads on from the stream when `line` is the block's marker.
    void ReadStrLine(std::wistream& stream, const wxString& line);
};
