// Process-wide flags and pointers by which the UI thread and the background threads meet.
//
// There is no mutex in the program: every rendezvous is one of these flags. A flag that publishes
// data (a "finished" flag) is stored with release by the worker as its last act and read with acquire
// by the UI thread. None of the GbGLLock flags is ever waited for: code that finds one set skips its
// work, and the idle loop brings it back.
#pragma once

#include <atomic>

class FrameMain_cls;
class MainGLCanvas_cls;
class ThreadFileReader_cls;
class ThreadInterpolator_cls;
class wxColourDialogEX;
class wxFileDialogEX;

/// A paint is running. Set by MainGLCanvas_cls::OnPaint, cleared by FinishPaint.
extern std::atomic<bool> GbGLLockDrawing;
/// The UI thread waits for the interpolator.
extern std::atomic<bool> GbGLLockForInterplateData;
/// The UI thread waits for the reader.
extern std::atomic<bool> GbGLLockForLoadingData;
/// A question or a save is on the screen: views keep still.
extern std::atomic<bool> GbGLLockModalDialog;
/// Playback has advanced and not yet been painted.
extern std::atomic<bool> GbGLLockPlayWait;
/// Objects are half read from a project file.
extern std::atomic<bool> GbGLLockProjectLoading;
/// The next draw rebuilds the draw-time snapshot.
extern std::atomic<bool> GbSnapDataRefresh;
/// The reader has written its last array element (release / acquire).
extern std::atomic<bool> GbThreadReaderFinished;
/// The interpolator's block threads have ended (release / acquire).
extern std::atomic<bool> GbThreadInterpolateFinished;
/// The user asks long drawing loops to stop.
extern std::atomic<bool> GbAbort;

/// The one reader and the one interpolator; null when there is none. Only compared with null by
/// others than the thread itself: a detached thread deletes itself.
extern std::atomic<ThreadFileReader_cls*> GpCThreadReader;
extern std::atomic<ThreadInterpolator_cls*> GpCThreadInterpolate;
/// Index of the snapshot under read, -1 when none.
extern std::atomic<int> GThreadReaderIndex;
/// 0 to 100; 100 means that no reader message is shown.
extern std::atomic<int> GThreadReaderPercentage;
/// 0 drawing, 1 shadow volumes, 2 the shadowed redraw.
extern std::atomic<int> GDrawingStage;
/// 0 to 100; 100 means that nothing is being drawn.
extern std::atomic<int> GDrawingPercentage;
/// Number of text parser threads, "Thread (I/O)"; 0 counts as 1.
extern std::atomic<int> GThreadNumberReadAscii;

extern FrameMain_cls* GpCMainFrameCLS;
extern MainGLCanvas_cls* GpCurrentGLPanel; ///< the canvas that last took a mouse event
extern wxFileDialogEX* GpCFileDialog;
extern wxColourDialogEX* GpCClrDialog;

/// Key and modifiers (1 Alt, 2 Ctrl, 4 Shift, 8 Meta) that a text field hands back to the frame.
extern int GShortcutKeycode;
extern int GShortcutModifier;

/// Sets a flag for the length of a scope and clears it at its end.
class FlagScope_cls {
public:
    explicit FlagScope_cls(std::atomic<bool>& flag) : mFlag(flag) { mFlag.store(true); }
    ~FlagScope_cls() { mFlag.store(false); }
    FlagScope_cls(const FlagScope_cls&) = delete;
    FlagScope_cls& operator=(const FlagScope_cls&) = delete;

private:
    std::atomic<bool>& mFlag;
};
