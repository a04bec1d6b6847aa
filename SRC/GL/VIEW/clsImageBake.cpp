#include "GL/VIEW/clsImageBake.h"

void ImageBake_cls::RequestOne() {
    mBaked = Moment_st();
    mbImageRequest = true;
}

void ImageBake_cls::RequestSequence() {
    mBaked = Moment_st();
    mbImageRequest = mbImageSequence = true;
}

bool ImageBake_cls::StopSequence() {
    if (!mbImageSequence) return false;
    mbImageRequest = mbImageSequence = false;
    mbDropImage = true; // not here: another view may be in the middle of a paint
    return true;
}

// A blur that hasn't begun yet adds nothing, and a window that was uncovered doesn't add a step twice.
ImageBake_cls::Step ImageBake_cls::Begin(const Paint_st& paint) {
    mbBaked = false;
    if (!mbImageRequest || paint.mbLoading) return Step::None;
    if (paint.mbCut && !paint.mbHidden) return mbImageSequence ? Step::Stop : Step::None;
    if (paint.mbBlur && (paint.mBlurStep < 0 || paint.mBlurStep >= paint.mBlurSteps)) return Step::None;
    if (paint.mMoment == mBaked) return Step::None;
    mBaked = paint.mMoment;
    mbBaked = true;
    return Step::Bake;
}

ImageBake_cls::Step ImageBake_cls::GoOn(const Paint_st& paint) {
    if (!mbBaked) return Step::None;
    if (!paint.mbCut || paint.mbHidden) return Step::Bake;
    mBaked = Moment_st(); // one eye is no picture
    mbBaked = false;
    return mbImageSequence ? Step::Stop : Step::None;
}
