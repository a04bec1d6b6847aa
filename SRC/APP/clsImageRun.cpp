#include "APP/clsImageRun.h"

#include <wx/bitmap.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/image.h>

#include "APP/BindMenu.h"
#include "APP/FilmFrames.h"
#include "APP/PictureProject.h"
#include "APP/clsFrameMain.h"
#include "APP/clsMain.h"
#include "APP/clsRecovery.h"
#include "APP/clsSeriesVideo.h"
#include "COMMON/EventIds.h"
#include "COMMON/Eye.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "IMAGE/PictureOrigin.h"
#include "IMAGE/VideoFile.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsDialogEXKey.h"

namespace {

/// The read buffer as an image; empty without memory for it.
wxImage ReadWindow(wxSize size) {
    wxImage image;
    if (!image.Create(size, false)) return image;
    const GLClientScope_cls client;
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, size.x, size.y, GL_RGB, GL_UNSIGNED_BYTE, image.GetData());
    return image.Mirror(false);
}

bool AskSequence(const wxString& text) { return MsgBoxYesno(text, _("Save Image Sequence")); }

} // namespace

ImageRun_cls::ImageRun_cls(FrameMain_cls& frame, ConfItemList_cls& list)
    : mFrame(frame), mHub(*frame.GetPCMain()), mpCSeriesVideo(std::make_unique<SeriesVideo_cls>()) {
    list.Add(&mCItemLastIMG, "LastOpenedFileIMG=", "None");
    BindMenu(mFrame, this, ID_SAVE_IMAGE_SNAP, &ImageRun_cls::OnMenuSaveImageSnap);
    BindMenu(mFrame, this, ID_COPY_VIEW, &ImageRun_cls::OnMenuCopyView);
    BindMenu(mFrame, this, ID_SAVE_IMAGE_SEQ, &ImageRun_cls::OnMenuSaveImageSeq);
    BindMenu(mFrame, this, ID_SAVE_IMGSEQ_BEGIN, &ImageRun_cls::OnMenuSaveImgSeqBegin);
    BindMenu(mFrame, this, ID_REFRESH_IMGSEQ, &ImageRun_cls::OnMenuRefreshImgSeq);
    BindMenu(mFrame, this, ID_PLAY_STOP, &ImageRun_cls::OnMenuPlayStop);
}

ImageRun_cls::~ImageRun_cls() = default;

wxString ImageRun_cls::GetVideoStatus() const { return mpCSeriesVideo->GetStatusText(); }

wxString ImageRun_cls::GetQuitWarning() const { return mpCSeriesVideo->GetQuitWarning(); }

// As it stands now; null where pictures shall carry nothing.
std::shared_ptr<const OriginPack_cls> ImageRun_cls::PackOrigin() const {
    return mHub.mpCImgSequence->mbKeepProject ? PackProject(mHub.MakeProjectText()) : nullptr;
}

void ImageRun_cls::OnMenuSaveImageSnap(wxCommandEvent&) {
    if (!GCImgIO.SelectFile(mCItemLastIMG.mStrValue, &mFrame)) return;
    mCItemLastIMG.mStrValue = GCImgIO.GetPath();
    ForgetNotices();
    mFrame.GetPCOutputCanvas()->RequestWindowPicture(
        [this, pPack = PackOrigin()](wxSize size, int eye) {
            if (eye != EYE_NONE) GCImgIO.SetFilenameStereo(eye);
            GCImgIO.SaveImageFromGL(size.x, size.y, MakeImageOrigin(pPack, *mHub.mpCTimeCtrl));
        },
        true);
}

void ImageRun_cls::OnMenuCopyView(wxCommandEvent&) {
    const auto take = [this](wxSize size, int) {
        const wxImage image = ReadWindow(size);
        if (!image.IsOk()) return;
        // The clipboard's owner may want to talk to us: not in the middle of a paint.
        mFrame.CallAfter([image] {
            wxClipboardLocker clipboard;
            if (!!clipboard) wxTheClipboard->SetData(new wxBitmapDataObject(wxBitmap(image)));
        });
    };
    mFrame.GetPCOutputCanvas()->RequestWindowPicture(take, false);
}

void ImageRun_cls::OnMenuSaveImageSeq(wxCommandEvent&) {
    ImgSequence_cls* sequence = mHub.mpCImgSequence;
    const bool bShown = sequence->GetPCDialog() && sequence->GetPCDialog()->IsShown();
    MainGLCanvas_cls* canvas = mFrame.GetPCOutputCanvas();
    const wxSize size = canvas->GetPixelSize();
    sequence->SetGeom(size.x, size.y, float(canvas->mCGLPerspective.mAngle), false);
    mFrame.GetPCSharedView()->mspCImgSeqLinked = sequence;
    if (!bShown && !sequence->IsRendering()) {
        sequence->mCInitNum.mValue = mHub.mpCTimeCtrl->GetWAMin();
        sequence->SetDefaultPath(mCItemLastIMG.mStrValue);
    }
    sequence->OpenWindow(&mFrame);
}

void ImageRun_cls::OnMenuRefreshImgSeq(wxCommandEvent&) { mHub.mpCImgSequence->UpdateItems(true); }

// What a film is seldom meant to show.
void ImageRun_cls::AskBeforeSequence(MainGLCanvas_cls* pCanvas) {
    if (pCanvas->GetDisplayMode() < DISPLAY_PATH &&
        AskSequence(wxString::Format(_("Panel %d is not linked to camera"), pCanvas->mPanelIndex)))
        pCanvas->LinkageConnect();
    if (pCanvas->mShowItems.mValue && AskSequence(_("Items are shown. Hide them ?")))
        pCanvas->mShowItems.mValue = false;
    mFrame.GetPCGLCanvasCtrl(pCanvas->mPanelIndex)->UpdateWindow();
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (time->GetAnimStep() != 1 &&
        AskSequence(wxString::Format(_("Playing mode is Skipping: %d\nChange Skipping to 1 ?"),
                                     time->GetAnimStep()))) {
        time->SetAnimStepCommand(1);
        PostMenuEvent(ID_REFRESH_TL);
    }
    wxString error;
    int begin = 0;
    const wxString early = GetEarlyEnd(*time, ListFilm(*time, &error), &begin);
    if (!early.empty() && !mHub.mpCImgSequence->IsSnap() && AskSequence(early)) time->SetWAMinCommand(begin);
    ConfItemINT_cls& downSizing = mHub.mpCDrawOption->mDownSizing;
    if (downSizing.mValue != 1 && AskSequence(_("Partiecles are downsized.\nShow full particles?"))) {
        downSizing.mValue = 1;
        PostMenuEvent(ID_REFRESH_ATTRIB);
    }
}

void ImageRun_cls::OnMenuSaveImgSeqBegin(wxCommandEvent&) {
    ImgSequence_cls* sequence = mHub.mpCImgSequence;
    if (!sequence->IsRendering()) return; // given up meanwhile
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (time->IsPlaying()) {
        // Its stop is on the way, and would stop this, too: behind it, then.
        time->StartPlayCommand(1);
        PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
        return;
    }
    MainGLCanvas_cls* canvas = mFrame.GetPCOutputCanvas();
    AskBeforeSequence(canvas);
    if (!sequence->IsRendering()) return;
    ForgetNotices();
    mHub.mpCRecovery->WriteNow(); // a picture may take minutes, in which nothing is written
    mCItemLastIMG.mStrValue = sequence->mCFileSequence.mStrPath;
    sequence->mpOrigin = PackOrigin();
    mVideoStereo = canvas->IsAlongAxis() ? VideoStereo::None : GetVideoStereo(*mHub.mpCStereoGram);
    canvas->StartSaveImgSeqProcess(sequence);
    const TimeState_st before = time->GetState();
    {
        const UndoBlock_cls block;
        if (!sequence->IsSnap()) time->MoveFrameCommandLarge(-1);
        time->StartPlayCommand(1);
    }
    if (sequence->IsSnap()) time->SetState(before); // starting goes into the work area
    time->mbOutputRun = true;
    time->BeginMotionBlur();
}

void ImageRun_cls::StopRun() {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (!time->mbOutputRun) return;
    if (time->IsPlaying()) time->StartPlayCommand(1);
    StopOutputs();
}

void ImageRun_cls::OnMenuPlayStop(wxCommandEvent&) {
    TimeCtrl_cls* time = mHub.mpCTimeCtrl;
    if (time->mbIgnoreNextStop) {
        time->mbIgnoreNextStop = false;
        return;
    }
    StopOutputs();
    if (time->IsPlaying()) time->ProcStopPlaying();
}

void ImageRun_cls::StopOutputs() {
    const bool bWhole = mHub.mpCImgSequence->IsSeriesWhole();
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* canvas = mFrame.GetPCGLCanvas(view);
        if (!canvas) continue;
        canvas->StopSaveImgSeqProcess();
        canvas->StopExportDataProcess();
        canvas->mPov.StopExportPovStringProcess();
    }
    TellImageFailures();
    if (bWhole) BeginVideo();
}

void ImageRun_cls::TellImageFailures() {
    for (const ImageFailure_st& failure : GCImgIO.TakeFailures()) {
        mHub.mpCImgSequence->CountFailure();
        Notice("image file",
               wxString::Format(_("%s could not be written: %s."), failure.mPath, failure.mReason));
    }
}

// A series has come to its end by itself.
void ImageRun_cls::BeginVideo() {
    if (!mHub.mpCImgSequence->mbVideo) return;
    GCImgIO.Finish(); // the last picture
    TellImageFailures();
    const ImgSequence_cls& sequence = *mHub.mpCImgSequence;
    mpCSeriesVideo->Begin(sequence, sequence.GetFailures(), mVideoStereo);
    mFrame.UpdateStatusText();
}

void ImageRun_cls::TickVideo() {
    if (mpCSeriesVideo->Tick()) mFrame.UpdateStatusText();
}
