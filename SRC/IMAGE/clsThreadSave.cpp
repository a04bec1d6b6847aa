#include "IMAGE/clsThreadSave.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

#include <wx/image.h>
#include <wx/intl.h>

#include "COMMON/clsSplitPath.h"
#include "IMAGE/BoxFilter.h"
#include "IMAGE/HalfFloat.h"

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
    mbDone.store(true, std::memory_order_release);
    return nullptr;
}

void ThreadSave_cls::Save() {
    const bool bAlpha = mPicture.mOnBlack && mPicture.mOnWhite;
    bool bFits = mPicture.mSource && mPicture.mW > 0 && mPicture.mH > 0 && Fit(mPicture.mSource, &mColor);
    if (bFits && bAlpha)
        bFits = Fit(mPicture.mOnBlack, &mOnBlack) && Fit(mPicture.mOnWhite, &mOnWhite) &&
                mAlpha.Allocate(mPicture.mW, mPicture.mH, 1);
    if (!bFits) {
        std::puts("Image Save Skipped!!");
        mStrError = _("there is not enough memory for the picture, or OpenGL failed");
        return;
    }
    if (bAlpha) AddAlpha();
    if (mPicture.mOverlay) AddOverlay();
    Write();
}

// Bytes of the file's size.
bool ThreadSave_cls::Fit(const PixelBuffer_cls& source, PixelBuffer_cls* pTarget) const {
    const int w = mPicture.mSrcW, h = mPicture.mSrcH;
    const size_t count = size_t(w) * size_t(h) * 3;
    if (!pTarget->Allocate(mPicture.mW, mPicture.mH, 3)) return false;
    const bool bSame = w == mPicture.mW && h == mPicture.mH;
    PixelBuffer_cls bytes;
    const unsigned char* pBytes = source.Get();
    if (mPicture.mbHalfFloat) {
        if (!bSame && !bytes.Allocate(w, h, 3)) return false;
        unsigned char* pTo = bSame ? pTarget->Get() : bytes.Get();
        // Above and below the part of the file's shape nothing is looked at; a row more, where its edge is
        // rounded.
        const double edge = bSame ? 0.0 : GetMiddlePart(w, h, mPicture.mW, mPicture.mH).mY;
        const int first = std::max(int(std::floor(edge)) - 1, 0);
        const int end = std::min(int(std::ceil(h - edge)) + 1, h);
        const size_t skip = size_t(first) * size_t(w) * 3;
        ConvertHalfToBytes(reinterpret_cast<const std::uint16_t*>(source.Get()) + skip, pTo + skip,
                           size_t(end - first) * size_t(w) * 3);
        pBytes = pTo;
    } else if (bSame) {
        std::copy_n(pBytes, count, pTarget->Get());
    }
    if (!bSame) ResampleMiddle(pBytes, w, h, pTarget->Get(), mPicture.mW, mPicture.mH);
    return true;
}

// What of the background shows is the difference of the two pictures. Light that is added to the background
// can't be told in a file, which knows covering alone: it covers as much as it is bright. Over black the file
// then looks exactly as the picture does.
void ThreadSave_cls::AddAlpha() {
    unsigned char* pColor = mColor.Get();
    const unsigned char* pBlack = mOnBlack.Get();
    const unsigned char* pWhite = mOnWhite.Get();
    const size_t count = size_t(mPicture.mW) * size_t(mPicture.mH);
    for (size_t i = 0; i < count; ++i, pColor += 3, pBlack += 3, pWhite += 3) {
        int cover = 0;
        for (int c = 0; c < 3; ++c)
            cover = std::max({cover, 255 - (pWhite[c] - pBlack[c]), int(pColor[c])});
        cover = std::min(cover, 255);
        mAlpha.Get()[i] = static_cast<unsigned char>(cover);
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
void ThreadSave_cls::AddOverlay() {
    const size_t w = size_t(mPicture.mW);
    const size_t half = w / 2;
    for (size_t y = 0; y < size_t(mPicture.mH); ++y) {
        const unsigned char* pOverlay = mPicture.mOverlay.Get() + y * w * 4;
        unsigned char* pOut = mColor.Get() + y * w * 3;
        unsigned char* pCover = mAlpha ? mAlpha.Get() + y * w : nullptr;
        if (!mPicture.mbSideBySide) {
            MergeOverlayRow(pOverlay, 1, pOut, pCover);
            continue;
        }
        MergeOverlayRow(pOverlay, 2, pOut, pCover);
        MergeOverlayRow(pOverlay, 2, pOut + half * 3, pCover ? pCover + half : nullptr);
    }
}

void ThreadSave_cls::Write() {
    wxImage image(mPicture.mW, mPicture.mH, mColor.Get(), true);
    if (mAlpha) image.SetAlpha(mAlpha.Get(), true);
    if (!mPicture.mbQuiet) std::puts("Saving");
    mStrError = WriteImageFile(image.Mirror(false), mPicture.mWXStrFilename, mPicture.mFormat);
    if (mPicture.mbQuiet) return;
    if (!mStrError.empty()) std::puts("ImgOutputFailed!!");
    std::puts("Saving End");
}
