// The point that the camera's path can be told to look at, with keys of its own.
#pragma once

#include <functional>

#include "SCENE/clsSceneObj.h"

class AnchorPath_cls final : public SceneObj_cls {
public:
    static constexpr int kPickName = 2;

    AnchorPath_cls();

    /// As it was made, without keys.
    void SetToDefault();

    /// Mark and path as others see them; an anchor that rests in the origin stays out of the picture.
    /// What it draws on the screen needs a current OpenGL context.
    void GLDraw(MarkPainter_cls& painter) const;
    /// Where its curves have it, unless it follows something.
    void UpdateCurrentObj(double time) override;
    /// None while it follows something.
    bool TakesMode(int mode) const override;
    wxString GetWhyHeld() const override;
    wxString GetShownName() const override;
    wxString Serialize();
    /// Reads on from the stream when `line` is the block's marker.
    void ReadStrLine(std::wistream& stream, const wxString& line);

    /// What is known of the thing it follows: LATE is where it was last, as long as its place has to be
    /// looked for.
    enum Followed { NOTHING, LATE, PRESENT };
    /// Set by the hub: where what it follows is at a time.
    std::function<Followed(double time, double out[3])> mFollow;
    /// Set by the hub: another number whenever mFollow has other answers; 0: nothing is followed.
    std::function<unsigned long long()> mFollowState;

private:
    bool mbHeld = false; ///< by what it follows
};
