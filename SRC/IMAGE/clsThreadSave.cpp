#include "IMAGE/clsThreadSave.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <exception>

#include <wx/image.h>
#include <wx/intl.h>

#include "COMMON/WorkTimes.h"
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
    mFileW = mPicture.mW;
    mFileH = mPicture.mH;
    if (!MakeEyes()) {
        std::puts("Image Save Skipped!!");
        mStrError = _("there is not enough memory for the picture, or OpenGL failed");
        return;
    }
    Write();
}

bool ThreadSave_cls::MakeEyes() {
    const WorkScope_cls work(Work::Convert);
    return MakeEye() && (!mPicture.mRightSource || AddRightEye());
}

// The picture, or the half of it that stands in the source.
bool ThreadSave_cls::MakeEye() {
    const bool bAlpha = mPicture.mOnBlack && mPicture.mOnWhite;
    const HalfBytes* pColor = mPicture.mColorBytes.get();
    const HalfBytes* pCover = mPicture.mCoverBytes.get();
    bool bFits =
        mPicture.mSource && mPicture.mW > 0 && mPicture.mH > 0 && Fit(mPicture.mSource, pColor, &mColor);
    if (bFits && bAlpha)
        bFits = Fit(mPicture.mOnBlack, pCover, &mOnBlack) && Fit(mPicture.mOnWhite, pCover, &mOnWhite) &&
                mAlpha.Allocate(mPicture.mW, mPicture.mH, 1);
    if (!bFits) return false;
    if (bAlpha) AddAlpha();
    if (mPicture.mOverlay) AddOverlay();
    return true;
}

bool ThreadSave_cls::AddRightEye() {
    const PixelBuffer_cls color = std::move(mColor);
    const PixelBuffer_cls alpha = std::move(mAlpha);
    mColor = PixelBuffer_cls();
    mAlpha = PixelBuffer_cls();
    std::swap(mPicture.mSource, mPicture.mRightSource);
    std::swap(mPicture.mOnBlack, mPicture.mRightOnBlack);
    std::swap(mPicture.mOnWhite, mPicture.mRightOnWhite);
    if (!MakeEye()) return false;
    (mPicture.mHalves == HALVES_ABOVE ? mFileH : mFileW) *= 2;
    PixelBuffer_cls both;
    if (!Join(color, mColor, 3, &both)) return false;
    mColor = std::move(both);
    if (!mAlpha) return true;
    PixelBuffer_cls cover;
    if (!Join(alpha, mAlpha, 1, &cover)) return false;
    mAlpha = std::move(cover);
    return true;
}

// Rows are from the bottom.
bool ThreadSave_cls::Join(const PixelBuffer_cls& left, const PixelBuffer_cls& right, int pixelBytes,
                          PixelBuffer_cls* pBoth) const {
    if (!pBoth->Allocate(mFileW, mFileH, pixelBytes)) return false;
    const size_t row = size_t(mPicture.mW) * size_t(pixelBytes);
    const auto rows = size_t(mPicture.mH);
    const bool bAbove = mPicture.mHalves == HALVES_ABOVE;
    for (size_t y = 0; y < rows; ++y) {
        std::copy_n(left.Get() + y * row, row, pBoth->Get() + (bAbove ? rows + y : 2 * y) * row);
        std::copy_n(right.Get() + y * row, row, pBoth->Get() + (bAbove ? y : 2 * y + 1) * row);
    }
    return true;
}

// Bytes of the file's size. Of half floats those that the file shows are there at least.
bool ThreadSave_cls::Fit(const PixelBuffer_cls& source, const HalfBytes* pTable,
                         PixelBuffer_cls* pTarget) const {
    const int w = mPicture.mSrcW, h = mPicture.mSrcH;
    const bool bSame = w == mPicture.mW && h == mPicture.mH;
    if (!pTarget->Allocate(mPicture.mW, mPicture.mH, 3)) return false;
    if (!mPicture.mbHalfFloat) {
        if (bSame)
            std::copy_n(source.Get(), size_t(w) * size_t(h) * 3, pTarget->Get());
        else
            ResampleMiddle(source.Get(), w, h, pTarget->Get(), mPicture.mW, mPicture.mH);
        return true;
    }
    const HalfBytes& table = pTable ? *pTable : GetPlainBytes();
    const ShownPart_st part = mPicture.mPart.IsEmpty() ? ShownPart_st{0, 0, w, h} : mPicture.mPart;
    const auto* pFrom = reinterpret_cast<const std::uint16_t*>(source.Get());
    if (!bSame) {
        ResampleHalves(pFrom, part, w, h, table, pTarget->Get(), mPicture.mW, mPicture.mH);
        return true;
    }
    for (int y = part.mY; y < part.mY + part.mH; ++y, pFrom += size_t(part.mW) * 4)
        ConvertHalfPixels(pFrom, pTarget->Get() + (size_t(y) * size_t(w) + size_t(part.mX)) * 3,
                          size_t(part.mW), table);
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

// Text and legends on top. In two halves every second column, or row, of them serves.
void ThreadSave_cls::AddOverlay() {
    const auto w = size_t(mPicture.mW), h = size_t(mPicture.mH);
    const Halves halves = mPicture.mRightSource ? HALVES_NONE : mPicture.mHalves;
    const size_t half = halves == HALVES_ABOVE ? h / 2 * w : w / 2;
    const bool bAbove = halves == HALVES_ABOVE;
    for (size_t y = 0; y < h; y += bAbove ? 2 : 1) {
        const unsigned char* pOverlay = mPicture.mOverlay.Get() + y * w * 4;
        const size_t first = (bAbove ? y / 2 : y) * w;
        for (const size_t begin : {first, first + half}) {
            MergeOverlayRow(pOverlay, halves == HALVES_BESIDE ? 2 : 1, mColor.Get() + begin * 3,
                            mAlpha ? mAlpha.Get() + begin : nullptr);
            if (halves == HALVES_NONE) break;
        }
    }
}

void ThreadSave_cls::Write() {
    wxImage image(mFileW, mFileH, mColor.Get(), true);
    if (mAlpha) image.SetAlpha(mAlpha.Get(), true);
    if (!mPicture.mbQuiet) std::puts("Saving");
    mStrError = WriteImageFile(image.Mirror(false), mPicture.mWXStrFilename, mPicture.mFormat);
    if (mPicture.mbQuiet) return;
    if (!mStrError.empty()) std::puts("ImgOutputFailed!!");
    std::puts("Saving End");
}
