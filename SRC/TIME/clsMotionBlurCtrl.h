// Sub-steps of one film step, accumulated into one picture.
#pragma once

class FilmTime_cls;

class MotionBlurCtrl_cls {
public:
    explicit MotionBlurCtrl_cls(const FilmTime_cls* pTimeCtrl) : mpCTimeCtrl(pTimeCtrl) {}

    /// Start sub-stepping in the play direction, +1 or -1.
    void BeginMotionBlur(int dir);
    void EndMotionBlur() { mbBlur = false; }
    /// One sub-step on; true when that carries into the next film step.
    bool Increment(int dir);
    /// Time offset in interpolation steps; 0 while no blur runs.
    double GetFactor() const {
        return mBlurSteps > 0 ? double(mBlurStep) * double(mShutter) / mBlurSteps : 0.0;
    }
    /// Weight of one sub-frame.
    double GetAlpha() const { return mBlurSteps > 0 ? 1.0 / mBlurSteps : 1.0; }
    bool IsInitBluring() const;
    bool IsLastBluring() const;
    /// The picture is complete: blur is off or on its last sub-step.
    bool IsOutputConditionOK() const { return !mbBlur || IsLastBluring(); }

    const FilmTime_cls* mpCTimeCtrl;
    bool mbBlur = false; ///< sub-stepping is running
    int mBlurStep = 0;
    float mShutter = 0.5f; ///< share of a step that the shutter is open
    int mBlurSteps = 4;
};
