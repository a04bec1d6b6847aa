// Which paints of a view add to an image that is wanted of it, and when the image is done. Knows no OpenGL.
#pragma once

class ImageBake_cls {
public:
    /// A place of the film, with the step of a motion blur.
    struct Moment_st {
        int mFrame = -1;
        int mStep = -1;
        double mBlur = -1.0;
        bool operator==(const Moment_st& o) const {
            return mFrame == o.mFrame && mStep == o.mStep && mBlur == o.mBlur;
        }
    };
    /// What is known of a paint once its faces are drawn.
    struct Paint_st {
        Moment_st mMoment;
        bool mbLoading = false; ///< without its data
        bool mbCut = false;     ///< the user has cut the drawing short
        bool mbHidden = false;  ///< for the image alone
        bool mbBlur = false;    ///< a motion blur runs
        int mBlurStep = 0;
        int mBlurSteps = 1;
    };
    enum class Step {
        None, ///< the image takes nothing of this paint
        Stop, ///< the whole run ends: half a picture is none
        Bake  ///< the picture is added to the image
    };

    /// One image. While a sequence runs the order belongs to that.
    void RequestOne();
    void RequestSequence();
    /// The sequence is over, its buffers go with the next paint; false when there is none.
    bool StopSequence();
    /// Asked once a paint.
    Step Begin(const Paint_st& paint);
    /// The same for the second eye of that paint.
    Step GoOn(const Paint_st& paint);
    /// Is the image done with this paint? `bLastStep`: no further step of a blur will be added.
    bool IsComplete(bool bLastStep) const { return mbBaked && bLastStep; }
    /// The one image has been taken.
    void FinishOne() { mbImageRequest = false; }
    /// Must a paint that begins drop what an ended run has left?
    bool MustDrop() const { return mbDropImage && !mbImageRequest; }
    void ForgetDrop() { mbDropImage = false; }

    bool IsRequested() const { return mbImageRequest; }
    bool IsSequence() const { return mbImageSequence; }
    bool HasBaked() const { return mbBaked; }

private:
    bool mbImageRequest = false;  ///< paints make images: they wait for their data
    bool mbImageSequence = false; ///< one after another
    bool mbBaked = false;         ///< this paint has added to the image
    bool mbDropImage = false;
    Moment_st mBaked; ///< added last
};
