// The part of saving a picture that needs no OpenGL: crop and resample, overlay, alpha, format, file.
#pragma once

#include <atomic>

#include <wx/string.h>
#include <wx/thread.h>

#include "IMAGE/ImageFile.h"
#include "IMAGE/PixelBuffer.h"

/// Pixels as they came from OpenGL: rows from the bottom.
struct SavePicture_st {
    wxString mWXStrFilename; ///< full path; without an ending it gets ".png"
    int mW = 0;              ///< of the file
    int mH = 0;
    int mSrcW = 0; ///< of the source; another size is resampled
    int mSrcH = 0;
    PixelBuffer_cls mSource; ///< RGB
    /// The scene over black and over white, RGB of the source's size: together they tell how much of the
    /// background shows. Empty: the file has no alpha.
    PixelBuffer_cls mOnBlack;
    PixelBuffer_cls mOnWhite;
    PixelBuffer_cls mOverlay;  ///< RGBA, w by h; empty: none
    bool mbSideBySide = false; ///< the overlay stands in both halves, half as wide
    ImageFormat_st mFormat;
    bool mbQuiet = false; ///< no words on standard output
};

class ThreadSave_cls : public wxThread {
public:
    /// `bDone` is set as the last act.
    ThreadSave_cls(SavePicture_st picture, std::atomic<bool>& bDone);
    ExitCode Entry() override;

    const wxString& GetPath() const { return mPicture.mWXStrFilename; }
    /// Why the file isn't there; empty when it is. To be read once the thread is done.
    const wxString& GetError() const { return mStrError; }

private:
    void Save();
    bool Fit(PixelBuffer_cls& pixels) const;
    void AddAlpha(PixelBuffer_cls& alpha);
    void AddOverlay(unsigned char* pAlpha);
    void MergeOverlayRow(const unsigned char* pOverlay, int step, unsigned char* pOut, unsigned char* pAlpha);
    void Write(PixelBuffer_cls& alpha);

    SavePicture_st mPicture;
    wxString mStrError;
    std::atomic<bool>& mbDone;
};
