// The part of saving a picture that needs no OpenGL: crop and resample, overlay, alpha, format, file.
#pragma once

#include <atomic>
#include <memory>

#include <wx/string.h>
#include <wx/thread.h>

#include "GL/BASE/ShownPart.h"
#include "IMAGE/HalfFloat.h"
#include "IMAGE/ImageFile.h"
#include "IMAGE/PixelBuffer.h"

/// Where the two eyes of a picture stand in it.
enum Halves { HALVES_NONE, HALVES_BESIDE, HALVES_ABOVE };

/// Pixels as they came from OpenGL: rows from the bottom. Those of the source are bytes of RGB or half floats
/// of RGBA, whose alpha doesn't count.
struct SavePicture_st {
    wxString mWXStrFilename; ///< full path; without an ending it gets ".png"
    int mW = 0;              ///< of the file
    int mH = 0;
    int mSrcW = 0; ///< of the source; another size is resampled
    int mSrcH = 0;
    ShownPart_st mPart; ///< what of the source stands in the following buffers; empty: all
    bool mbHalfFloat = false;
    std::shared_ptr<const HalfBytes> mColorBytes; ///< of the source's half floats; null: the plain ones
    std::shared_ptr<const HalfBytes> mCoverBytes; ///< of those over black and over white
    PixelBuffer_cls mSource;
    /// The scene over black and over white, as the source: together they tell how much of the background
    /// shows. Empty: the file has no alpha.
    PixelBuffer_cls mOnBlack;
    PixelBuffer_cls mOnWhite;
    PixelBuffer_cls mOverlay; ///< RGBA, w by h; empty: none
    /// Two eyes, each in a half: the overlay stands in both. Without the following it is squeezed as they
    /// are.
    Halves mHalves = HALVES_NONE;
    PixelBuffer_cls
        mRightSource; ///< the other eye: the file is two pictures of w by h; the left one is on top
    PixelBuffer_cls mRightOnBlack;
    PixelBuffer_cls mRightOnWhite;
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
    /// The buffers, for the next picture. Once the thread is done.
    SavePicture_st TakePicture() { return std::move(mPicture); }

private:
    void Save();
    bool MakeEyes();
    bool MakeEye();
    bool Join(const PixelBuffer_cls& left, const PixelBuffer_cls& right, int pixelBytes,
              PixelBuffer_cls* pBoth) const;
    bool AddRightEye();
    bool Fit(const PixelBuffer_cls& source, const HalfBytes* pTable, PixelBuffer_cls* pTarget) const;
    void AddAlpha();
    void AddOverlay();
    void MergeOverlayRow(const unsigned char* pOverlay, int step, unsigned char* pOut, unsigned char* pAlpha);
    void Write();

    SavePicture_st mPicture;
    // Of the file's size.
    PixelBuffer_cls mColor; ///< RGB
    PixelBuffer_cls mOnBlack;
    PixelBuffer_cls mOnWhite;
    PixelBuffer_cls mAlpha; ///< one byte a pixel; empty: none
    int mFileW = 0;
    int mFileH = 0;
    wxString mStrError;
    std::atomic<bool>& mbDone;
};
