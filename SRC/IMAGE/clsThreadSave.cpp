#include "IMAGE/clsThreadSave.h"

#include <algorithm>
#include <cstdio>
#include <exception>

#include <wx/image.h>
#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"
#include "IMAGE/BoxFilter.h"

namespace {

unsigned char ToByte(float value) { return static_cast<unsigned char>(std::clamp(value, 0.0f, 255.0f)); }

} // namespace

ThreadSave_cls::ThreadSave_cls(SavePicture_st picture, std::atomic<bool>& bDone)
    : wxThread(wxTHREAD_JOINABLE), mPicture(std::move(picture)), mbDone(bDone) {
    if (SplitPath_cls(mPicture.mWXStrFilename).mStrExt.empty()) mPicture.mWXStrFilename += ".png";
}

wxThread::ExitCode ThreadSave_cls::Entry() {
    try {
        Save();
    } catch (const std::exception& error) {
        mStrError = wxString::FromUTF8(error.what());
    }
    for (PixelBuffer_cls* pPixels :
         {&mPicture.mSource, &mPicture.mOnBlack, &mPicture.mOnWhite, &mPicture.mOverlay})
        pPixels->Free();
    mbDone.store(true, std::memory_order_release);
    return nullptr;
}

void ThreadSave_cls::Save() {
    const bool bAlpha = mPicture.mOnBlack && mPicture.mOnWhite;
    if (!mPicture.mSource || mPicture.mW < 1 || mPicture.mH < 1) {
        std::puts("Image Save Skipped!!");
        mStrError = _("not enough memory for the picture");
        return;
    }
    PixelBuffer_cls alpha;
    if (!Fit(mPicture.mSource) || (bAlpha && !(Fit(mPicture.mOnBlack) && Fit(mPicture.mOnWhite) &&
                                               alpha.Allocate(mPicture.mW, mPicture.mH, 1)))) {
        std::puts("Image Save Skipped!!");
        mStrError = _("not enough memory for the picture");
        return;
    }
    if (bAlpha) AddAlpha(alpha);
    if (mPicture.mOverlay) AddOverlay(alpha.Get());
    Write(alpha);
}

// Into a picture of the file's size.
bool ThreadSave_cls::Fit(PixelBuffer_cls& pixels) const {
    if (mPicture.mSrcW == mPicture.mW && mPicture.mSrcH == mPicture.mH) return true;
    PixelBuffer_cls target;
    if (!target.Allocate(mPicture.mW, mPicture.mH, 3)) return false;
    ResampleMiddle(pixels.Get(), mPicture.mSrcW, mPicture.mSrcH, target.Get(), mPicture.mW, mPicture.mH);
    pixels = std::move(target);
    return true;
}

// What of the background shows is the difference of the two pictures. Light that is added to the background
// can't be told in a file, which knows covering alone: it covers as much as it is bright. Over black the file
// then looks exactly as the picture does.
void ThreadSave_cls::AddAlpha(PixelBuffer_cls& alpha) {
    unsigned char* pColor = mPicture.mSource.Get();
    const unsigned char* pBlack = mPicture.mOnBlack.Get();
    const unsigned char* pWhite = mPicture.mOnWhite.Get();
    const size_t count = size_t(mPicture.mW) * size_t(mPicture.mH);
    for (size_t i = 0; i < count; ++i, pColor += 3, pBlack += 3, pWhite += 3) {
        int cover = 0;
        for (int c = 0; c < 3; ++c)
            cover = std::max({cover, 255 - (pWhite[c] - pBlack[c]), int(pColor[c])});
        cover = std::min(cover, 255);
        alpha.Get()[i] = static_cast<unsigned char>(cover);
        if (cover == 0) continue;
        for (int c = 0; c < 3; ++c)
            pColor[c] = static_cast<unsigned char>((pColor[c] * 255 + cover / 2) / cover);
    }
}

void ThreadSave_cls::MergeOverlayRow(const unsigned char* pOverlay, int step, unsigned char* pOut,
                                     unsigned char* pAlpha) {
    for (int x = 0; x < mPicture.mW; x += step, pOverlay += 4 * step, pOut += 3) {
        const float over = float(pOverlay[3]) / 255.0f;
        const float under = pAlpha ? float(*pAlpha) / 255.0f * (1.0f - over) : 1.0f - over;
        const float sum = over + under;
        if (over > 0.0f)
            for (int c = 0; c < 3; ++c)
                pOut[c] = ToByte((float(pOverlay[c]) * over + float(pOut[c]) * under) / sum);
        if (pAlpha) *pAlpha++ = ToByte(sum * 255.0f + 0.5f);
    }
}

// Text and legends on top. In two halves every second column of them serves.
void ThreadSave_cls::AddOverlay(unsigned char* pAlpha) {
    const size_t w = size_t(mPicture.mW);
    const size_t half = w / 2;
    for (size_t y = 0; y < size_t(mPicture.mH); ++y) {
        const unsigned char* pOverlay = mPicture.mOverlay.Get() + y * w * 4;
        unsigned char* pOut = mPicture.mSource.Get() + y * w * 3;
        unsigned char* pCover = pAlpha ? pAlpha + y * w : nullptr;
        if (!mPicture.mbSideBySide) {
            MergeOverlayRow(pOverlay, 1, pOut, pCover);
            continue;
        }
        MergeOverlayRow(pOverlay, 2, pOut, pCover);
        MergeOverlayRow(pOverlay, 2, pOut + half * 3, pCover ? pCover + half : nullptr);
    }
}

void ThreadSave_cls::Write(PixelBuffer_cls& alpha) {
    wxImage image(mPicture.mW, mPicture.mH, mPicture.mSource.Get(), true);
    if (alpha) image.SetAlpha(alpha.Get(), true);
    if (!mPicture.mbQuiet) std::puts("Saving");
    mStrError = WriteImageFile(image.Mirror(false), mPicture.mWXStrFilename, mPicture.mFormat);
    if (mPicture.mbQuiet) return;
    if (!mStrError.empty()) std::puts("ImgOutputFailed!!");
    std::puts("Saving End");
}
