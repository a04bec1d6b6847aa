// Takes pictures out of OpenGL, on the UI thread with a current context, and has them finished and written by
// a thread of their own: while one is being written the next can be drawn. One is written at a time.
#pragma once

#include <atomic>
#include <memory>
#include <vector>

#include <wx/string.h>

#include "IMAGE/clsThreadSave.h"

class FBO_cls;
class wxWindow;

/// The buffers of one picture, squares of one size; all show the same part.
struct ImageBuffers_st {
    const FBO_cls* mpColor = nullptr;
    const FBO_cls* mpOnBlack = nullptr; ///< both or none of the two: see SavePicture_st
    const FBO_cls* mpOnWhite = nullptr;
    /// Of the half floats of colour, and of those over black and white; null: the plain ones.
    std::shared_ptr<const HalfBytes> mColorBytes;
    std::shared_ptr<const HalfBytes> mCoverBytes;
    const FBO_cls* mpOverlay = nullptr;       ///< with alpha, as large as the file; null: none
    Halves mHalves = HALVES_NONE;             ///< where the two eyes of the picture stand
    const ImageBuffers_st* mpRight = nullptr; ///< the other eye in full size; null: the halves are squeezed
    int mEye = 0;                             ///< the Eye that the file is for
};

/// A file that isn't there.
struct ImageFailure_st {
    wxString mPath;
    wxString mReason;
};

class ImageIO_cls {
public:
    ImageIO_cls() = default;
    ~ImageIO_cls();
    ImageIO_cls(const ImageIO_cls&) = delete;
    ImageIO_cls& operator=(const ImageIO_cls&) = delete;

    /// The current read buffer, from its lower left corner, into the chosen file. The width is rounded down
    /// to a multiple of 8.
    void SaveImageFromGL(int w, int h, const ImageOrigin_st& origin = {});
    void SaveImageFromGL(int w, int h, const wxString& path, int x, int y, const ImageOrigin_st& origin = {});
    /// The middle of the buffers as a picture of w by h. Waits for the picture before it.
    void SaveImageFromTexture(const ImageBuffers_st& buffers, int w, int h, const wxString& path,
                              const ImageOrigin_st& origin = {});

    /// Ask for a file; true when one was chosen.
    bool SelectFile(const wxString& initialPath, wxWindow* pParent);
    /// The chosen file's name for an Eye: the left one's ends in "L", the right one's in "R".
    void SetFilenameStereo(int eye);
    wxString GetPath() const { return mWXStrPath; }
    void SetPath(const wxString& path) { mWXStrPath = path; }

    /// Wait until nothing is being written.
    void Finish();
    /// A run is over: give back the memory that the next picture would have used, up to 1 GB.
    void DropSpare();
    /// What failed since the last call, without waiting.
    std::vector<ImageFailure_st> TakeFailures();

    static int msJPEGQuality; ///< 0 to 100
    bool mbSmallestPNG = false;
    bool mbQuiet = false; ///< no words on standard output

private:
    static constexpr int kThreads = 1;

    int TakeSlot();
    void FreeSlot(int index);
    void Run(int index, SavePicture_st picture);
    SavePicture_st MakePicture(int w, int h, const wxString& path, const ImageOrigin_st& origin);

    int mIndex = 0;
    std::atomic<bool> mbDone[kThreads] = {};
    bool mbBusy[kThreads] = {};
    bool mbThread[kThreads] = {}; ///< the slot's thread runs, or did; else its work was done here
    std::unique_ptr<ThreadSave_cls> mpCThread[kThreads];
    std::vector<ImageFailure_st> mFailures;
    SavePicture_st mSpare; ///< buffers of a picture that is written: fresh memory costs more than using it
    wxString mWXStrPath;
};

/// The one of the program.
extern ImageIO_cls GCImgIO;
