#include "IMAGE/clsImageIO.h"

#include <cstdio>
#include <optional>

#include <epoxy/gl.h>
#include <wx/filedlg.h>
#include <wx/filename.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "COMMON/Eye.h"
#include "COMMON/Globals.h"
#include "COMMON/WorkTimes.h"
#include "COMMON/clsSplitPath.h"
#include "GL/BASE/clsFBO.h"
#include "GL/BASE/clsGLState.h"
#include "WIDGET/clsFileDialogEX.h"

ImageIO_cls GCImgIO;
int ImageIO_cls::msJPEGQuality = 95;

namespace {

constexpr int kColumns = 8; // lines of that many pixels are aligned whatever the reader wants
constexpr unsigned long kPollMillis = 3;

/// Were there any?
bool TakeGLErrors() {
    bool bAny = false;
    for (GLenum error = glGetError(); error != GL_NO_ERROR; error = glGetError()) {
        bAny = true;
        if (error == GL_CONTEXT_LOST) break; // reported for ever
    }
    return bAny;
}

/// False: there is nothing to be shown.
bool ReadShown(const FBO_cls& buffer, GLenum type, int pixelBytes, PixelBuffer_cls* pPixels) {
    const ShownPart_st& part = buffer.GetShown();
    if (!pPixels->Allocate(part.mW, part.mH, pixelBytes)) return false;
    CheckGLErrors("what came before an image");
    TakeGLErrors();
    buffer.ReadShown(GL_RGBA, type, pPixels->Get());
    return !TakeGLErrors(); // memory that was never written may hold anything
}

/// As it is stored: to make bytes of it takes OpenGL several times as long as our thread.
bool ReadLight(const FBO_cls* pBuffer, PixelBuffer_cls* pPixels) {
    if (pBuffer) return ReadShown(*pBuffer, GL_HALF_FLOAT, 8, pPixels);
    pPixels->Free();
    return true;
}

} // namespace

ImageIO_cls::~ImageIO_cls() { Finish(); }

// The slot's thread, if it has one, is waited for.
int ImageIO_cls::TakeSlot() {
    const int index = mIndex;
    FreeSlot(index);
    mIndex = (mIndex + 1) % kThreads;
    return index;
}

void ImageIO_cls::FreeSlot(int index) {
    if (!mbBusy[index]) return;
    while (!mbDone[index].load(std::memory_order_acquire))
        wxMilliSleep(kPollMillis);
    if (mbThread[index]) mpCThread[index]->Wait();
    if (!mpCThread[index]->GetError().empty())
        mFailures.push_back({mpCThread[index]->GetPath(), mpCThread[index]->GetError()});
    mSpare = mpCThread[index]->TakePicture();
    mpCThread[index].reset();
    mbBusy[index] = false;
    mbDone[index].store(false);
}

SavePicture_st ImageIO_cls::MakePicture(int w, int h, const wxString& path, const ImageOrigin_st& origin) {
    SavePicture_st picture = std::move(mSpare);
    mSpare = SavePicture_st();
    picture.mbHalfFloat = false;
    picture.mPart = ShownPart_st();
    picture.mHalves = HALVES_NONE;
    picture.mWXStrFilename = path;
    picture.mW = picture.mSrcW = w;
    picture.mH = picture.mSrcH = h;
    picture.mFormat.mJPEGQuality = msJPEGQuality;
    picture.mFormat.mbSmallestPNG = mbSmallestPNG;
    picture.mFormat.mOrigin = origin;
    picture.mbQuiet = mbQuiet;
    return picture;
}

// A system that gives no more threads still writes: here, while the next picture waits.
void ImageIO_cls::Run(int index, SavePicture_st picture) {
    mpCThread[index] = std::make_unique<ThreadSave_cls>(std::move(picture), mbDone[index]);
    mbBusy[index] = true;
    mbThread[index] = mpCThread[index]->Run() == wxTHREAD_NO_ERROR;
    if (mbThread[index]) return;
    mpCThread[index]->Entry();
    FreeSlot(index);
}

void ImageIO_cls::SaveImageFromGL(int w, int h, const ImageOrigin_st& origin) {
    SaveImageFromGL(w, h, mWXStrPath, 0, 0, origin);
}

void ImageIO_cls::SaveImageFromGL(int w, int h, const wxString& path, int x, int y,
                                  const ImageOrigin_st& origin) {
    w = std::max(w / kColumns * kColumns, kColumns);
    const int index = TakeSlot();
    SavePicture_st picture = MakePicture(w, h, path, origin);
    for (PixelBuffer_cls* pUnused : {&picture.mOnBlack, &picture.mOnWhite, &picture.mOverlay,
                                     &picture.mRightSource, &picture.mRightOnBlack, &picture.mRightOnWhite})
        pUnused->Free();
    if (picture.mSource.Allocate(w, h, 3)) {
        const GLClientScope_cls client;
        glPixelStorei(GL_PACK_ALIGNMENT, 1);
        TakeGLErrors();
        glReadPixels(x, y, w, h, GL_RGB, GL_UNSIGNED_BYTE, picture.mSource.Get());
        if (TakeGLErrors()) picture.mSource.Free();
    }
    Run(index, std::move(picture));
}

void ImageIO_cls::SaveImageFromTexture(const ImageBuffers_st& buffers, int w, int h, const wxString& path,
                                       const ImageOrigin_st& origin) {
    const int index = TakeSlot();
    SavePicture_st picture = MakePicture(w, h, path, origin);
    picture.mSrcW = buffers.mpColor->GetWidth();
    picture.mSrcH = buffers.mpColor->GetHeight();
    picture.mPart = buffers.mpColor->GetShown();
    picture.mColorBytes = buffers.mColorBytes;
    picture.mCoverBytes = buffers.mCoverBytes;
    picture.mHalves = buffers.mHalves;
    picture.mbHalfFloat = true;
    std::optional<WorkScope_cls> work(Work::Fetch);
    bool bRead = true;
    if (buffers.mpOverlay)
        bRead = ReadShown(*buffers.mpOverlay, GL_UNSIGNED_BYTE, 4, &picture.mOverlay);
    else
        picture.mOverlay.Free();
    bRead = ReadLight(buffers.mpColor, &picture.mSource) && bRead;
    bRead = ReadLight(buffers.mpOnBlack, &picture.mOnBlack) && bRead;
    bRead = ReadLight(buffers.mpOnWhite, &picture.mOnWhite) && bRead;
    const ImageBuffers_st right = buffers.mpRight ? *buffers.mpRight : ImageBuffers_st();
    bRead = ReadLight(right.mpColor, &picture.mRightSource) && bRead;
    bRead = ReadLight(right.mpOnBlack, &picture.mRightOnBlack) && bRead;
    bRead = ReadLight(right.mpOnWhite, &picture.mRightOnWhite) && bRead;
    work.reset();
    if (!bRead) picture.mSource.Free(); // a part of a picture is none
    Run(index, std::move(picture));
}

void ImageIO_cls::Finish() {
    for (int index = 0; index < kThreads; ++index)
        FreeSlot(index);
}

void ImageIO_cls::DropSpare() { mSpare = SavePicture_st(); }

std::vector<ImageFailure_st> ImageIO_cls::TakeFailures() {
    for (int index = 0; index < kThreads; ++index)
        if (mbDone[index].load(std::memory_order_acquire)) FreeSlot(index);
    std::vector<ImageFailure_st> failures;
    failures.swap(mFailures);
    return failures;
}

bool ImageIO_cls::SelectFile(const wxString& initialPath, wxWindow* pParent) {
    wxFileDialogEX local(pParent);
    wxFileDialogEX* pDialog = GpCFileDialog ? GpCFileDialog : &local;
    wxFileName start(initialPath);
    if (initialPath.empty() || initialPath == "None") start = wxFileName(wxGetCwd(), "snapshot.png");
    pDialog->SetParams(_("Select a image file to save"), start.GetPath(), start.GetFullName(),
                       "image(*.png;*.jpg;*.tiff)|*.png;*.jpg;*.tiff|png (*.png)|*.png|jpg (*.jpg)|*.jpg|"
                       "tiff (*.tiff)|*.tiff",
                       wxFD_SAVE | wxFD_OVERWRITE_PROMPT);
    if (pDialog->ShowModal() != wxID_OK) return false;
    SetPath(pDialog->GetPath());
    return true;
}

void ImageIO_cls::SetFilenameStereo(int eye) {
    const SplitPath_cls split(mWXStrPath);
    wxString stem = split.mStrNoExt;
    if (stem.EndsWith("L") || stem.EndsWith("R")) stem.RemoveLast();
    if (eye == EYE_LEFT) stem += "L";
    if (eye == EYE_RIGHT) stem += "R";
    mWXStrPath = stem + split.mStrExt;
}
