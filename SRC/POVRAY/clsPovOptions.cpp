#include "POVRAY/clsPovOptions.h"

#include <wx/choice.h>
#include <wx/intl.h>
#include <wx/textctrl.h>

#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"
#include "POVRAY/clsPovRayCtrl.h"
#include "WIDGET/clsNumField.h"

namespace {

constexpr int kNothingStale = 0;

} // namespace

PovOptions_cls::PovOptions_cls(wxWindow* pParent) : MultiInputPanel_cls(pParent, 120) {
    SetUndo(kNothingStale);
    SetOnChange([this](int, bool bFinal) {
        if (bFinal) UpdateValues();
    });
}

void PovOptions_cls::ShowAllRows() {
    for (int row = 0; row < GetRowCount(); ++row)
        ShowRow(row, true);
}

int PovOptions_cls::AddWarning(const wxString& text, const wxString& tip) {
    return AddStatic(
        wxEmptyString, [text] { return text; }, tip);
}

// Rows that have come up make the dialog higher, not one another unseen.
void PovOptions_cls::GiveRoom() {
    if (!IsShownOnScreen() || GetBestSize().y <= GetSize().y) return;
    wxWindow* dialog = wxGetTopLevelParent(this);
    const wxSize size = dialog->GetSize();
    dialog->SetSize(wxSize(size.x, size.y + GetBestSize().y - GetSize().y));
}

void PovOptions_cls::FinishPage() {
    AddRefresh(0, [this] { // whatever has values shown, an undone step too
        HideAndShow();
        GiveRoom();
    });
    UpdateValues();
}

void CommitFields(MultiInputPanel_cls& panel) {
    for (int row = 0; row < panel.GetRowCount(); ++row)
        for (int k = 0; k < MultiInputPanel_cls::kMaxField; ++k) {
            wxWindow* field = panel.GetField(row, k);
            if (auto* number = dynamic_cast<NumField_cls*>(field)) {
                number->Commit();
            } else if (dynamic_cast<wxTextCtrl*>(field)) {
                wxCommandEvent enter(wxEVT_TEXT_ENTER, field->GetId());
                field->ProcessWindowEvent(enter);
            }
        }
}

// Format.

PovFormatPage_cls::PovFormatPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl)
    : PovOptions_cls(pParent), mCtrl(ctrl), mFormat(ctrl.mCFormat) {
    AddChoice(_("Output Format"), &mFormat.mOutputFormat.mValue, PovFormat_cls::GetFormatNames(),
              _("Format of the pictures"));
    mRowRefusal =
        AddWarning(_("POV-Ray 3.7 refuses this."), _("It makes no picture; choose another format to render"));
    SetMNumSize();
    AddCheck(_("Files"), &mFormat.mFileAbsolute.mValue, _("Absolute path"), _("Use absolute file path"));
    const int edges = AddCheck(_("Edges"), &mFormat.mAntialias.mValue, _("Antialias(+A)"),
                               _("Antialias to decrease jaggies"));
    AddCheckTo(edges, &mFormat.mJitter.mValue, _("Jitter(+J)"), _("Add noise to decrease jaggies"));
    mRowJitter = AddNumber(_("Jitter"), &mFormat.mJitterAmount.mValue, 1, RangeSpec(0, 1, 0.05),
                           _("How far the noise moves a ray, in pixels"));
    const int display = AddCheck(_("Rendering"), &mFormat.mDisplay.mValue, _("Display(+D)"),
                                 _("Show rendering image on the display"));
    AddCheckTo(display, &mFormat.mPauseWhenDone.mValue, _("Pause(+P)"),
               _("Pause when the rendering is finished"));
    AddCheck(_("Background"), &mFormat.mOutputAlpha.mValue, _("Alpha(+UA)"), _("Sets alpha output on"));
    SetMNumScene();
    FinishPage();
}

void PovFormatPage_cls::SetMNumSize() {
    const NumSpec size = IntegerSpec(1, PovFormat_cls::kMaxSize);
    mRowSize =
        AddNumber(_("Width,Height"), &mFormat.mWidth.mValue, 1, size, _("Width of the pictures in pixels"));
    AddNumberTo(mRowSize, &mFormat.mHeight.mValue, size, _("Height of the pictures in pixels"));
    mpCSizes = new wxChoice(this, wxID_ANY);
    for (const wxString& label : GetLabels())
        mpCSizes->Append(label);
    mpCSizes->SetToolTip(_("The usual sizes; \"Custom\" lets you type any other"));
    mpCSizes->Bind(wxEVT_CHOICE, [this](wxCommandEvent&) { HookGeometry(); });
    AddWindow(wxEmptyString, mpCSizes);
}

void PovFormatPage_cls::SetMNumScene() {
    AddCaption(_("Scene"));
    AddCheck(_("Colors"), &mFormat.mFastColoring.mValue, _("Fast coloring"),
             _("One texture an object; without it the average of three, which shines as the view does"));
    AddCheck(
        wxEmptyString, &mCtrl.mColorByParticle.mValue, _("Of each particle"),
        _("Colors of a curve differ from particle to particle, as the view shows them; else all of a set "
          "have one"));
    AddCheck(_("Picture"), &mCtrl.mLikeView.mValue, _("Like the view"),
             _("Angle, background and grids are the view's; without it they are as plain scenes have them"));
    AddCheck(_("Particles"), &mCtrl.mGroupMaterials.mValue, _("Share materials"),
             _("Particles that look alike share one texture: a large scene takes a third of the memory and "
               "time"));
    AddCheck(wxEmptyString, &mCtrl.mUseCommonSceneFile.mValue, _("Common scene file"),
             _("Particles that are the same in all frames stand in one file"));
    AddNumber(_("Decimals"), &mCtrl.mDigits.mValue, 1, IntegerSpec(0, 9),
              _("Of coordinates and radii; 0 is as many as the data need"));
}

void PovFormatPage_cls::HideAndShow() {
    const int index = mbCustom ? 0 : SetIndexFromGeometry(mFormat.mWidth.mValue, mFormat.mHeight.mValue);
    if (mpCSizes->GetSelection() != index) mpCSizes->SetSelection(index);
    EnableRow(mRowSize, index == 0);
    ShowRow(mRowRefusal, !mFormat.GetRefusal().empty());
    ShowRow(mRowJitter, mFormat.mJitter.mValue);
}

void PovFormatPage_cls::HookGeometry() {
    int w = mFormat.mWidth.mValue;
    int h = mFormat.mHeight.mValue;
    mbCustom = SetGeometry(mpCSizes->GetSelection(), &w, &h);
    {
        const UndoBlock_cls block;
        PushSetValue(&mFormat.mWidth.mValue, w, kNothingStale);
        PushSetValue(&mFormat.mHeight.mValue, h, kNothingStale);
    }
    UpdateValues();
}

// RenderType.

PovRenderPage_cls::PovRenderPage_cls(wxWindow* pParent, PovRender_cls& render)
    : PovOptions_cls(pParent), mRender(render) {
    AddChoice(_("Region to render"), &mRender.mRegion.mValue,
              {_("Render Working Area"), _("Render All Scene"), _("Custum")}, _("Frames of an animation"));
    const NumSpec frame = IntegerSpec(0, 1000000);
    mRowCustom = AddNumber(_("Custom Region"), &mRender.mCustomMin.mValue, 1, frame,
                           _("First frame of the animation"));
    AddNumberTo(mRowCustom, &mRender.mCustomMax.mValue, frame, _("Last frame of the animation"));
    FinishPage();
}

void PovRenderPage_cls::HideAndShow() {
    ShowRow(mRowCustom, mRender.mRegion.mValue == PovRender_cls::REGION_CUSTOM);
}

// Radiosity.

PovRadiosityPage_cls::PovRadiosityPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl)
    : PovOptions_cls(pParent), mRadiosity(ctrl.mCRadiosity), mpKeepFirst(&ctrl.mKeepFirstPretrace.mValue) {
    SetMNumRadiosity();
    FinishPage();
}

void PovRadiosityPage_cls::SetMNumRadiosity() {
    PovRadiosity_cls& r = mRadiosity;
    AddChoice(_("radiosity"), &r.mType.mValue,
              {_("No Radiosity (fast)"), _("Pretrace Only"), _("Fully Trace")},
              _("Light that surfaces throw on each other"));
    mRowReuse = AddChoice(_("reuse pretrace"), &r.mReuse.mValue,
                          {_("Not reuse pretrace"), _("Save Pretrace"), _("Load Pretrace")},
                          _("Keep what the first look at the scene finds of it"));
    mRowFile = AddText(_("pretrace file"), &r.mPath.mStrValue,
                       _("Name of the file in the working directory that keeps it"));
    mRowName = AddWarning(_("POV-Ray reads no such name."),
                          _("The light is found anew in each picture: take English letters, and no quotes"));
    AddCheck(
        _("film"), mpKeepFirst, _("First frame's pretrace"),
        _("All frames of an animation use the pretrace of the first one, so that light doesn't flicker"));
    AddNumber(_("ray count"), &r.mCount.mValue, 1, IntegerSpec(35, 3200), _("Rays that look for light"));
    AddNumber(_("error bound"), &r.mError.mValue, 1, RangeSpec(0.01, 100, 0.1),
              _("How far light is carried over; smaller is finer and slower"));
    AddNumber(_("minimum_reuse"), &r.mMinimumReuse.mValue, 1, RangeSpec(0.0001, 1, 0.005),
              _("Least distance of two looks for light, in shares of the picture's width"));
    AddNumber(_("recursion_limit"), &r.mRecursionLimit.mValue, 1, IntegerSpec(1, 20),
              _("How often light is thrown on"));
    AddNumber(_("nearest_count"), &r.mNearestCount.mValue, 1, IntegerSpec(3, 20),
              _("Looks for light that are mixed at a point"));
    const int trace = AddNumber(_("Trace Start/End"), &r.mTraceStart.mValue, 1, RangeSpec(0.0001, 1, 0.01),
                                _("Coarsest step of the pretrace, in shares of the picture's width"));
    AddNumberTo(trace, &r.mTraceEnd.mValue, RangeSpec(0.0001, 1, 0.01),
                _("Finest step of the pretrace, in shares of the picture's width"));
    const int flags = AddCheck(wxEmptyString, &r.mZeroAmbient.mValue, _("ambient off"),
                               _("Surfaces have no light of their own"));
    AddCheckTo(flags, &r.mMedia.mValue, _("media on"), _("Fog and smoke count"));
    AddCheck(wxEmptyString, &r.mNormal.mValue, _("normal on"), _("Uneven surfaces count"));
    AddCheck(wxEmptyString, &r.mHighReproduce.mValue, _("High Reproducibility"),
             _("Less chance of the order in which parts of the picture are done"));
}

void PovRadiosityPage_cls::HideAndShow() {
    const bool bOn = mRadiosity.mType.mValue != PovRadiosity_cls::TYPE_NONE;
    for (int row = mRowReuse; row < GetRowCount(); ++row)
        ShowRow(row, bOn);
    if (!bOn) return;
    ShowRow(mRowReuse, !*mpKeepFirst);
    const bool bFile = !*mpKeepFirst && mRadiosity.mReuse.mValue != PovRadiosity_cls::REUSE_NONE;
    ShowRow(mRowFile, bFile);
    ShowRow(mRowName, bFile && !mRadiosity.GetNameProblem().empty());
}

// Photons.

PovPhotonsPage_cls::PovPhotonsPage_cls(wxWindow* pParent, PovPhotons_cls& photons)
    : PovOptions_cls(pParent), mPhotons(photons) {
    SetMNumPhotons();
    FinishPage();
}

void PovPhotonsPage_cls::SetMNumPhotons() {
    AddChoice(_("Photon Mapping"), &mPhotons.mType.mValue, {_("No Photons"), _("Use Photons")},
              _("Light that mirrors and glass throw on what lies around them"));
    AddNumber(_("photon (x1000)"), &mPhotons.mCount.mValue, 1, IntegerSpec(2, 2500),
              _("Photons that are sent out, in thousands"));
    AddNumber(_("max_trace_level"), &mPhotons.mMaxTrace.mValue, 1, IntegerSpec(2, 10),
              _("How often a photon is thrown on"));
}

void PovPhotonsPage_cls::HideAndShow() {
    for (int row = 1; row < GetRowCount(); ++row)
        ShowRow(row, mPhotons.mType.mValue != 0);
}

// Advanced.

PovAdvancedPage_cls::PovAdvancedPage_cls(wxWindow* pParent, PovRayCtrl_cls& ctrl) : PovOptions_cls(pParent) {
    PovFormat_cls& format = ctrl.mCFormat;
    AddNumber(_("max_trace_level"), &ctrl.mCAdvanced.mMaxTraceLevel.mValue, 1,
              IntegerSpec(1, PovAdvanced_cls::kMaxTraceLevel), _("How often a ray is thrown on or bent"));
    AddNumber(_("AA Threshold"), &format.mAntiAliasThreshold.mValue, 1, RangeSpec(0, 3, 0.05),
              _("Pixels whose neighbors differ by more are smoothed"));
    AddNumber(_("AA Depth"), &format.mAntiAliasDepth.mValue, 1, IntegerSpec(1, 9),
              _("Rays a side of a pixel that is smoothed"));
    AddChoice(_("Bounding Method"), &format.mBoundingMethod.mValue, {_("default"), _("Binary Partitioning")},
              _("How POV-Ray finds what a ray meets"));
    FinishPage();
}
