// Pictures that leave the program: snapshots of a view, the clipboard, and runs of the film that write
// images.
#include "APP/clsFrameMain.h"

#include <wx/bitmap.h>
#include <wx/clipbrd.h>
#include <wx/dataobj.h>
#include <wx/image.h>

#include "APP/FilmFrames.h"
#include "APP/clsMain.h"
#include "APP/clsSeriesVideo.h"
#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/MsgBox.h"
#include "GL/BASE/clsGLState.h"
#include "GL/DRAW/clsDrawOption.h"
#include "GL/VIEW/clsGLCanvasCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "IMAGE/clsImageIO.h"
#include "IMAGE/clsImgSequence.h"
#include "PARAM/clsUndoManager.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsDialogEXKey.h"

namespace {

constexpr int kLinked = 7; // display mode of a view that looks through the camera path

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

void FrameMain_cls::BindImages() {
    Bind(ID_SAVE_IMAGE_SNAP, &FrameMain_cls::OnMenuSaveImageSnap);
    Bind(ID_COPY_VIEW, &FrameMain_cls::OnMenuCopyView);
    Bind(ID_SAVE_IMAGE_SEQ, &FrameMain_cls::OnMenuSaveImageSeq);
    Bind(ID_SAVE_IMGSEQ_BEGIN, &FrameMain_cls::OnMenuSaveImgSeqBegin);
    Bind(ID_REFRESH_IMGSEQ, &FrameMain_cls::OnMenuRefreshImgSeq);
}

MainGLCanvas_cls* FrameMain_cls::GetPCOutputCanvas() const {
    const bool bSeen = GpCurrentGLPanel && GpCurrentGLPanel->IsShownOnScreen();
    return bSeen ? GpCurrentGLPanel : mpCMainCanvas;
}

void FrameMain_cls::OnMenuSaveImageSnap(wxCommandEvent&) {
    if (!GCImgIO.SelectFile(mCItemLastIMG.mStrValue, this)) return;
    mCItemLastIMG.mStrValue = GCImgIO.GetPath();
    ForgetNotices();
    GetPCOutputCanvas()->RequestWindowPicture([](wxSize size) { GCImgIO.SaveImageFromGL(size.x, size.y); });
}

void FrameMain_cls::OnMenuCopyView(wxCommandEvent&) {
    GetPCOutputCanvas()->RequestWindowPicture([this](wxSize size) {
        const wxImage image = ReadWindow(size);
        if (!image.IsOk()) return;
        // The clipboard's owner may want to talk to us: not in the middle of a paint.
        CallAfter([image] {
            wxClipboardLocker clipboard;
            if (!!clipboard) wxTheClipboard->SetData(new wxBitmapDataObject(wxBitmap(image)));
        });
    });
}

void FrameMain_cls::OnMenuSaveImageSeq(wxCommandEvent&) {
    ImgSequence_cls* sequence = mpCMain->mpCImgSequence;
    const bool bShown = sequence->GetPCDialog() && sequence->GetPCDialog()->IsShown();
    MainGLCanvas_cls* canvas = GetPCOutputCanvas();
    const wxSize size = canvas->GetPixelSize();
    sequence->SetGeom(size.x, size.y, float(canvas->mCGLPerspective.mAngle), false);
    MainGLCanvas_cls::mspCImgSeqLinked = sequence;
    if (!bShown && !sequence->IsRendering()) {
        sequence->mCInitNum.mValue = GetPCTimeCtrl()->GetWAMin();
        sequence->SetDefaultPath(mCItemLastIMG.mStrValue);
    }
    sequence->OpenWindow(this);
}

void FrameMain_cls::OnMenuRefreshImgSeq(wxCommandEvent&) { mpCMain->mpCImgSequence->UpdateItems(true); }

// What a film is seldom meant to show.
void FrameMain_cls::AskBeforeSequence(MainGLCanvas_cls* pCanvas) {
    if (pCanvas->GetDisplayMode() < kLinked &&
        AskSequence(wxString::Format(_("Panel %d is not linked to camera"), pCanvas->mPanelIndex)))
        pCanvas->LinkageConnect();
    if (pCanvas->mShowItems.mValue && AskSequence(_("Items are shown. Hide them ?")))
        pCanvas->mShowItems.mValue = false;
    GetPCGLCanvasCtrl(pCanvas->mPanelIndex)->UpdateWindow();
    TimeCtrl_cls* time = GetPCTimeCtrl();
    if (time->GetAnimStep() != 1 &&
        AskSequence(wxString::Format(_("Playing mode is Skipping: %d\nChange Skipping to 1 ?"),
                                     time->GetAnimStep()))) {
        time->SetAnimStepCommand(1);
        PostMenuEvent(ID_REFRESH_TL);
    }
    wxString error;
    int begin = 0;
    const wxString early = GetEarlyEnd(*time, ListFilm(*time, &error), &begin);
    if (!early.empty() && !mpCMain->mpCImgSequence->IsSnap() && AskSequence(early))
        time->SetWAMinCommand(begin);
    ConfItemINT_cls& downSizing = mpCMain->mpCDrawOption->mDownSizing;
    if (downSizing.mValue != 1 && AskSequence(_("Partiecles are downsized.\nShow full particles?"))) {
        downSizing.mValue = 1;
        PostMenuEvent(ID_REFRESH_ATTRIB);
    }
}

void FrameMain_cls::OnMenuSaveImgSeqBegin(wxCommandEvent&) {
    ImgSequence_cls* sequence = mpCMain->mpCImgSequence;
    if (!sequence->IsRendering()) return; // given up meanwhile
    TimeCtrl_cls* time = GetPCTimeCtrl();
    if (time->IsPlaying()) {
        // Its stop is on the way, and would stop this, too: behind it, then.
        time->StartPlayCommand(1);
        PostMenuEvent(ID_SAVE_IMGSEQ_BEGIN);
        return;
    }
    MainGLCanvas_cls* canvas = GetPCOutputCanvas();
    AskBeforeSequence(canvas);
    if (!sequence->IsRendering()) return;
    ForgetNotices();
    mCItemLastIMG.mStrValue = sequence->mCFileSequence.mStrPath;
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

void FrameMain_cls::StopRun() {
    TimeCtrl_cls* time = GetPCTimeCtrl();
    if (!time->mbOutputRun) return;
    if (time->IsPlaying()) time->StartPlayCommand(1);
    StopOutputs();
}

void FrameMain_cls::StopOutputs() {
    const bool bWhole = mpCMain->mpCImgSequence->IsSeriesWhole();
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        MainGLCanvas_cls* canvas = GetPCGLCanvas(view);
        if (!canvas) continue;
        canvas->StopSaveImgSeqProcess();
        canvas->StopExportDataProcess();
        canvas->StopExportPovStringProcess();
    }
    TellImageFailures();
    if (bWhole) BeginVideo();
}

void FrameMain_cls::TellImageFailures() {
    for (const ImageFailure_st& failure : GCImgIO.TakeFailures()) {
        mpCMain->mpCImgSequence->CountFailure();
        Notice("image file",
               wxString::Format(_("%s could not be written: %s."), failure.mPath, failure.mReason));
    }
}

// A series has come to its end by itself.
void FrameMain_cls::BeginVideo() {
    if (!mpCMain->mpCImgSequence->mbVideo) return;
    GCImgIO.Finish(); // the last picture
    TellImageFailures();
    mpCSeriesVideo->Begin(*mpCMain->mpCImgSequence, mpCMain->mpCImgSequence->GetFailures());
    UpdateStatusText();
}

void FrameMain_cls::TickVideo() {
    if (mpCSeriesVideo->Tick()) UpdateStatusText();
}
