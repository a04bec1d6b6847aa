// The message lines of a view: what it shows, how long that took, and what is wrong with it.
#pragma once

#include <wx/string.h>

#include "GL/BASE/clsGLStrings2D.h"

class ViewMessage_cls {
public:
    /// What the lines tell.
    struct Facts_st {
        wxString mFile; ///< of the snapshot on show
        int mFileStatus = 0;
        int mDisplayMode = 0;
        bool mbLookAnchor = false; ///< the camera path looks at its anchor
        double mTime = 0.0;        ///< of the snapshot; -9999 where it has none
        int mParticles = 0;
        long long mCopies = 1; ///< of a Copy filter
        long mMillis = 0;      ///< since the drawing began
        int mHitObject = -1;   ///< names of what a click found last (HitTest_cls)
        int mHitSub = -1;
        long long mSelected = 0; ///< address of the selected object
        double mScale = 1.0;     ///< pixels of the screen for one of a plain one
        int mLeft = 5;           ///< where the upper lines begin, pixels: beside the buttons
    };

    static wxString MakeStatusLine(const Facts_st& facts);
    static wxString MakeDataLine(const Facts_st& facts);

    /// A warning of this paint, whole lines; the next message shows it once.
    void Add(const wxString& warning) {
        if (!mWXStrMessage.Contains(warning)) mWXStrMessage += warning; // faces say the same
    }
    /// The size of the window that texts are drawn in, pixels.
    void SetWindowGeometry(int w, int h) { mCStrings.SetWindowGeometry(w, h); }
    /// All lines into a window of w by h; without `bShow` the warnings are dropped, too.
    void DrawMessage(const Facts_st& facts, bool bShow, int w, int h);
    /// Text of the last message lines, as drawn.
    wxString GetMessageText() const { return mStrMessageShown; }

private:
    wxString MakeMemoryLine();

    GLStrings2D_cls mCStrings;
    int mDrawCount = 0;
    wxString mWXStrMessage;
    wxString mStrMessageShown;
};
