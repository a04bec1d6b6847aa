// What the views ask of the program around them. The main frame answers; tests answer with less.
#pragma once

#include <functional>

class AnchorPath_cls;
class CameraPath_cls;
class DrawOption_cls;
class FilterLists_cls;
class LightSRCCtrl_cls;
class MainGLCanvas_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class Preference_cls;
class SharedView_cls;
class TimeCtrl_cls;

class ViewHost_cls {
public:
    virtual ~ViewHost_cls() = default;

    virtual TimeCtrl_cls* GetPCTimeCtrl() const = 0;
    virtual PDataSeqCtrl_cls* GetPCDataSeqCtrl() const = 0;
    virtual PDataSequence_cls* GetPCActiveFileSequence() const = 0;
    virtual CameraPath_cls* GetPCCameraPath() const = 0;
    virtual AnchorPath_cls* GetPCAnchorPath() const = 0;
    virtual LightSRCCtrl_cls* GetPCLightSRCCtrl() const = 0;
    virtual FilterLists_cls* GetPCFilters() const = 0;
    /// 0 to 3 panels, 4 the Extra Panel; null while there is none yet.
    virtual MainGLCanvas_cls* GetPCGLCanvas(int view) const = 0;

    /// Frame -1 is the current one. Prepare blocks (reader, interpolator) exactly then.
    virtual bool IsTheFrameReady(int frame) const = 0;
    virtual void PrepareTheFrame(int frame) = 0;
    /// To the store: which snapshots the clock shows now.
    virtual void TellPresent() const = 0;
    /// Start the nearest frame ahead, in play direction, that isn't ready; at most one a call.
    virtual void PrepareFramesAhead(int count) = 0;

    /// The present frame's data are there and about to be drawn in the window: cameras may still be placed.
    virtual void OnDataReady() {}
    /// May a picture draw the data so many times? Where the user hasn't been asked yet it is no for now, and
    /// he is asked behind the present event.
    virtual bool MayDrawCopies(long long) { return true; }
    /// The export of data has come to its end: the run ends behind the present event.
    virtual void EndExport() = 0;
    /// The camera's dialog follows the active view.
    virtual void ReconnectCameraPathGUI() = 0;
    /// The user has closed the Extra Panel's window.
    virtual void OnExtraFrameClosed() = 0;

    /// A whole picture stands in the window of a view that scenes for POV-Ray are written of; such a view has
    /// been told to stop.
    std::function<void()> mOnPovFrameDrawn;
    std::function<void()> mOnPovRunStopped;
};

/// What a view is made with; nothing of it is owned.
struct ViewLinks_st {
    ViewHost_cls* mpCHost;
    SharedView_cls* mpCShared;
    DrawOption_cls* mpCDrawOption;
    Preference_cls* mpCPreference;
    bool mbShown; ///< false: nobody will see the views, which need no controls
};
