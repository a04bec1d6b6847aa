#include "IMAGE/clsImgSequence.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>
#include <wx/intl.h>
#include <wx/utils.h>

#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "COMMON/clsSplitPath.h"
#include "GL/BASE/clsGLState.h"
#include "IMAGE/PictureOrigin.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequenceGUI.h"
#include "TIME/clsTimeCtrl.h"

namespace {

constexpr int kMostSteps = 100000000; // of a count that would never end
constexpr float kMaxRate = 1000.0f;

float FiniteOr(float value, float other) { return std::isfinite(value) ? value : other; }

} // namespace

ImgSequence_cls::ImgSequence_cls(TimeCtrl_cls* pTimeCtrl) : mpCTimeCtrl(pTimeCtrl) { SetToDefault(); }

void ImgSequence_cls::SetToDefault() {
    mCFileSequence.Set(wxGetCwd() + "/Preview%04d.png");
    mConfList.Clear();
    mConfList.Add(&mCInitNum, "ImgSequenceInitNum=", "0");
    mConfList.Add(&mItemFile, "ImgSequenceFile=", "!!SKIP!!");
    mConfList.Add(&mItemOutW, "ImgSequenceOutW=", "640");
    mConfList.Add(&mItemOutH, "ImgSequenceOutH=", "480");
    mConfList.Add(&mItemBlurLength, "ImgSequenceBlurLength=", "0.5");
    mConfList.Add(&mItemBlurSteps, "ImgSequenceBlurSteps=", "4");
    mConfList.Add(&mItemSmallest, "ImgSequenceSmallestPNG=", "0");
    mConfList.Add(&mItemVideo, "ImgSequenceVideo=", "0");
    mConfList.Add(&mItemRate, "ImgSequenceVideoRate=", "25");
    mConfListOwn.Clear();
    mConfListOwn.Add(&mItemKeepProject, "ImgSequenceKeepProject=", "1");
    TakeItems();
}

// Files may say anything.
void ImgSequence_cls::TakeItems() {
    MotionBlurCtrl_cls& blur = mpCTimeCtrl->mCMotionBlur;
    mOutW = std::clamp(mItemOutW.mValue, 1, kMaxSize);
    mOutH = std::clamp(mItemOutH.mValue, 1, kMaxSize);
    blur.mShutter = std::clamp(FiniteOr(mItemBlurLength.mValue, 0.5f), 0.0f, 1.0f);
    blur.mBlurSteps = std::clamp(mItemBlurSteps.mValue, 1, kMaxBlurSteps);
    mbSmallestPNG = mItemSmallest.mValue;
    mbVideo = mItemVideo.mValue;
    mbKeepProject = mItemKeepProject.mValue;
    mVideoRate = std::clamp(FiniteOr(mItemRate.mValue, 25.0f), 0.01f, kMaxRate);
    if (!mItemFile.mStrValue.empty() && mItemFile.mStrValue != "!!SKIP!!")
        mCFileSequence.Set(mItemFile.mStrValue);
}

wxString ImgSequence_cls::Serialize() {
    const MotionBlurCtrl_cls& blur = mpCTimeCtrl->mCMotionBlur;
    mItemFile.mStrValue = mCFileSequence.mStrPath;
    mItemOutW.mValue = mOutW;
    mItemOutH.mValue = mOutH;
    mItemBlurLength.mValue = blur.mShutter;
    mItemBlurSteps.mValue = blur.mBlurSteps;
    mItemSmallest.mValue = mbSmallestPNG;
    mItemVideo.mValue = mbVideo;
    mItemRate.mValue = mVideoRate;
    mItemKeepProject.mValue = mbKeepProject;
    return mConfList.SerializeAll() + (mbKeepProject ? wxString() : mConfListOwn.SerializeAll());
}

void ImgSequence_cls::ReadStrLine(const wxString& line) {
    if (!line.Contains("ImgSequence")) return;
    Serialize(); // what the line doesn't hold stays as it is
    if (!mConfList.ReadStrLineAll(line) && !mConfListOwn.ReadStrLineAll(line)) return;
    TakeItems();
    UpdateItems(true);
}

void ImgSequence_cls::SetGeom(int w, int h, float angle, bool bSetOutput) {
    const bool bNew = w != mPreviewW || h != mPreviewH || angle != mPreviewAngle;
    mPreviewW = w;
    mPreviewH = h;
    mPreviewAngle = angle;
    if (bSetOutput) {
        mOutW = std::clamp(w, 1, kMaxSize);
        mOutH = std::clamp(h, 1, kMaxSize);
    }
    if (bNew || bSetOutput) UpdateItems(true);
}

void ImgSequence_cls::SetDefaultPath(const wxString& path) {
    if (path.empty() || path == "None") return;
    const SplitPath_cls split(path);
    if (!split.mStrStem.Matches("snapshot")) {
        mCFileSequence.Set(path);
        return;
    }
    const wxString folder = split.mStrDir.empty() ? wxString() : split.mStrDir + "/";
    mCFileSequence.Set(folder + "preview%04d" + split.mStrExt);
}

bool ImgSequence_cls::NormalizeName(bool bNeedsNumber) {
    wxString typed = mCFileSequence.mStrPath;
    // As the writer would do: what is told of written files must be their names.
    if (!typed.empty() && SplitPath_cls(typed).mStrExt.empty()) typed += ".png";
    mCFileSequence.Set(typed);
    mCFileSequence.AdoptFormat();
    if (bNeedsNumber && mCFileSequence.mDigits < 0) {
        if (!MsgBoxYesno(_("Not Sequence. Append 4-digit tag ?"), _("Sequence Format error"))) return false;
        mCFileSequence.Set(typed); // more digits than a tag can have give way to four
        mCFileSequence.AppendDefaultSequenceTag();
    }
    UpdateItems(true);
    return true;
}

void ImgSequence_cls::CalcInitNum() { mCInitNum.mValue = -mpCTimeCtrl->GetOffsetForImgSeq(0, 0); }

// Steps that share a number with another share its file.
int ImgSequence_cls::CountSteps() const {
    int frame = mpCTimeCtrl->GetWAMin();
    int step = 0;
    int count = 1;
    for (int last = mpCTimeCtrl->GetOffsetForImgSeq(frame, step); count < kMostSteps;) {
        const int oldFrame = frame;
        const int oldStep = step++;
        mpCTimeCtrl->CalcNextFrameFromStep(&frame, &step, true, false);
        if (frame < oldFrame || (frame == oldFrame && step <= oldStep)) break;
        const int next = mpCTimeCtrl->GetOffsetForImgSeq(frame, step);
        if (next > last) ++count;
        last = next;
    }
    return count;
}

void ImgSequence_cls::Begin(bool bSnap) {
    mbRendering = true;
    mbSnap = bSnap;
    mbSeries = !bSnap;
    ForgetWritten();
}

void ImgSequence_cls::ForgetWritten() {
    mLastFrame = mLastEye = -1;
    mFailures = 0;
    for (std::vector<wxString>& written : mVWritten)
        written.clear();
    mProgress.Begin(mbSnap ? 1 : CountSteps());
}

void ImgSequence_cls::OutputFinish() {
    if (!mbRendering) return;
    mbRendering = mbSnap = false;
    UpdateItems(false);
}

void ImgSequence_cls::SaveImageFromTexture(ImageIO_cls* pImageIO, const ImageBuffers_st& buffers, int offset,
                                           int eye) {
    if (eye == mLastEye && offset < mLastFrame) return;
    mLastEye = eye;
    mLastFrame = offset;
    const wxString path = mCFileSequence.GetModifiedStr(offset + mCInitNum.mValue, eye);
    pImageIO->mbSmallestPNG = mbSmallestPNG;
    const ImageOrigin_st origin = MakeImageOrigin(mpOrigin, *mpCTimeCtrl);
    pImageIO->SaveImageFromTexture(buffers, mOutW, mOutH, path, origin);
    std::vector<wxString>& written = mVWritten[eye];
    if (written.empty() || written.back() != path) written.push_back(path);
    if (eye != EYE_LEFT) mProgress.Done(int(written.size())); // the other eye's comes with it
    UpdateItems(true);
    if (!mbSnap) return;
    mbSnap = false;
    PostMenuEvent(ID_PLAY_STOP);
}

wxString ImgSequence_cls::GetProgressText() const {
    if (!mbRendering) return wxString();
    const wxString text = mProgress.GetText();
    return mFailures == 0 ? text : text + wxString::Format(_(", %d files could not be written"), mFailures);
}

void ImgSequence_cls::RenderFrameBoxInRender(int w, int h) const {
    const double longSide = std::max(mOutW, mOutH);
    const double halfW = w * mOutW / longSide / 2.0 - 0.5;
    const double halfH = w * mOutH / longSide / 2.0 - 0.5;
    const double corners[4][2] = {{w / 2.0 - halfW, h / 2.0 - halfH},
                                  {w / 2.0 + halfW, h / 2.0 - halfH},
                                  {w / 2.0 + halfW, h / 2.0 + halfH},
                                  {w / 2.0 - halfW, h / 2.0 + halfH}};
    const GLClientScope_cls client;
    glLineWidth(1.0f);
    glColor4f(1.0f, 0.5f, 0.5f, 1.0f);
    glEnableClientState(GL_VERTEX_ARRAY);
    glVertexPointer(2, GL_DOUBLE, 0, corners);
    glDrawArrays(GL_LINE_LOOP, 0, 4);
}

OwnedDialog_cls* ImgSequence_cls::MakeDialog(wxWindow* pParent) {
    return new ImgSequenceGUI_cls(pParent, this);
}
