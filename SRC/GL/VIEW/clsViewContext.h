// What the parts of a view have in common.
#pragma once

#include <optional>

class GLPerspective_cls;
class SharedView_cls;
class ViewCamera_cls;
class ViewHost_cls;
class ViewMessage_cls;
class ViewSettings_cls;

/// What the paint in progress draws.
struct ViewMoment_st {
    double doubleIndex = 0.0;
    double remappedIndex = 0.0;
    int frame = 0; ///< of the film
    int dataFrame = 0;
    double dt = 0.0; ///< data time after the frame's snapshot
    double distanceToAnchor = 1.0;
    double pixelsAcross = 1000.0; ///< units of the screen that a face is as wide as
    bool bWritten = false;        ///< the picture is written, too
    bool bHandles = false;        ///< handles and what the pointer is over are drawn, too
    int fboSize = 2048;
    int face = 0;                   ///< the one being drawn
    int passes = 1;                 ///< pictures of a paint: 2 with two eyes
    int pass = 0;                   ///< the one being drawn
    int eye = 0;                    ///< the Eye that it is for
    bool bData = true;              ///< false: the data are still being read
    bool bHidden = false;           ///< for an image alone, not for the window
    std::optional<float> plainGrey; ///< stands for every background colour
};

/// Handed to each part of a view. The view owns all of it but what it shares with others.
struct ViewContext_st {
    ViewHost_cls& mHost;
    SharedView_cls& mShared;
    ViewSettings_cls& mSettings;
    ViewCamera_cls& mCamera;
    GLPerspective_cls& mCGLPerspective;
    ViewMoment_st& mMoment;
    ViewMessage_cls& mMessage;
};
