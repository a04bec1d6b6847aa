#include "GL/VIEW/clsCameraPathGUI.h"

#include <algorithm>

#include <wx/button.h>
#include <wx/notebook.h>
#include <wx/sizer.h>

#include "COLORCURVE/EDITOR/clsColorCurveBtn.h"
#include "COMMON/EventIds.h"
#include "COMMON/MenuEvent.h"
#include "COMMON/UpdateBits.h"
#include "GL/VIEW/CameraSpeed.h"
#include "GL/VIEW/clsCameraPathCtrl.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsSharedView.h"
#include "GL/VIEW/clsViewHost.h"
#include "GL/VIEW/clsViewPage.h"
#include "SCENE/clsAnchorPath.h"
#include "SCENE/clsCameraPath.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

constexpr int kLabelWidth = 110;
constexpr int kPanelWidth = 480;
constexpr double kFastTurn = 60.0; // degrees a second of film
constexpr double kUsualRate = 25.0;

} // namespace

CameraPathGUI_cls* CameraPathGUI_cls::mspCThis = nullptr;

void CameraPathCtrl_cls::ShowView(int view) {
    mCurrentView = view;
    if (CameraPathGUI_cls::mspCThis) CameraPathGUI_cls::mspCThis->ReconnectView();
}

OwnedDialog_cls* CameraPathCtrl_cls::MakeDialog(wxWindow* pParent) {
    return new CameraPathGUI_cls(pParent, *this);
}

CameraPathGUI_cls::CameraPathGUI_cls(wxWindow* pParent, CameraPathCtrl_cls& ctrl)
    : wxDialogEXKey(pParent, _("View and Camera Config")), mCtrl(ctrl) {
    mspCThis = this;
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    mpCNotebook = new wxNotebook(this, wxID_ANY);
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view) {
        auto* page = new ViewPage_cls(mpCNotebook, *mCtrl.mHost.GetPCGLCanvas(view));
        mVPages.push_back(page);
        mpCNotebook->AddPage(page, view == MainGLCanvas_cls::kExtraPanel ? wxString(_("Extra"))
                                                                         : wxString::Format("View%d", view));
    }
    mpCNotebook->SetMinSize(wxSize(FromDIP(kPanelWidth), -1));
    sizer->Add(mpCNotebook, 0, wxEXPAND | wxALL, FromDIP(4));
    MakeFold(0, _("View Advanced Setting"), sizer);
    mpCAdvancedSizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCAdvancedSizer, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(4));
    SetMNumAdv();
    MakeFold(1, _("Camera Setting"), sizer);
    SetMNumPath();
    sizer->Add(mpCPath, 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(4));
    sizer->Add(new wxButton(this, ID_DIALOG_CLOSE, _("Close")), 0, wxALIGN_RIGHT | wxALL, FromDIP(8));
    SetSizer(sizer);
    mpCNotebook->Bind(wxEVT_NOTEBOOK_PAGE_CHANGED, &CameraPathGUI_cls::OnNotebookChanged, this);
    ReconnectView();
    HideAndShowAll();
    ShowFolds();
}

CameraPathGUI_cls::~CameraPathGUI_cls() { mspCThis = nullptr; }

MainGLCanvas_cls* CameraPathGUI_cls::GetPCActiveGLCanvas() const {
    return &GetPCPage(mCtrl.mCurrentView)->GetCanvas();
}

ViewPage_cls* CameraPathGUI_cls::GetPCPage(int view) const { return mVPages[size_t(view)]; }

void CameraPathGUI_cls::MakeFold(int which, const wxString& title, wxBoxSizer* pSizer) {
    mTitle[which] = title;
    mpCFold[which] = new wxButton(this, wxID_ANY, "[+]" + title, wxDefaultPosition, wxDefaultSize,
                                  wxBU_LEFT | wxBORDER_NONE);
    mpCFold[which]->SetToolTip(_("Open or close this part"));
    mpCFold[which]->Bind(wxEVT_BUTTON, [this, which](wxCommandEvent&) {
        mbOpen[which] = !mbOpen[which];
        ShowFolds();
    });
    pSizer->Add(mpCFold[which], 0, wxEXPAND | wxLEFT | wxRIGHT, FromDIP(4));
}

// Of the view in front, and of all of them.
void CameraPathGUI_cls::SetMNumAdv() {
    SharedView_cls& shared = mCtrl.mShared;
    mpCAdvanced = new MultiInputPanel_cls(this, kLabelWidth);
    MultiInputPanel_cls& panel = *mpCAdvanced;
    const int colors =
        AddColorCurve(panel, _("Colors"), shared.mspCClrCurveBG.get(),
                      _("Behind the scene, around the picture and of tags, for all views"), true);
    for (const auto* pCurve : {&shared.mspCClrCurveOut, &shared.mspCClrCurveTag}) {
        auto* button = new ColorCurveBtn_cls(&panel, pCurve->get());
        if (pCurve == &shared.mspCClrCurveOut) button->ShowOpaque();
        panel.AddWindowTo(colors, button);
        panel.AddRefresh(colors, [button] { button->RefreshIfChanged(); });
    }
    MainGLCanvas_cls& canvas = *GetPCActiveGLCanvas();
    const int grid = panel.AddChoice(_("Grid and Width"), &canvas.mGridType.mValue,
                                     {_("Grid"), _("Grid+Circle"), _("Polar")},
                                     _("Kind of the ground grid: kept with the project, without effect yet"));
    panel.AddNumberTo(grid, &shared.msCLineWidth.mValue, RangeSpec(0, 100, 0.5),
                      _("Width of lines in all views, in pixels of a buffer of 2048"));
    NumSpec scale = RangeSpec(1e-30, 1e30, 0.1);
    scale.mbRelative = true;
    panel.AddNumberTo(grid, &canvas.mGLOrthoScale.mValue, scale, _("What a view along an axis shows across"));
    panel.AddChoice(_("Buffer Size"), &shared.msCFBOSizeIndex.mValue,
                    {"256x256", "512x512", "1024x1024", "2048x2048", "4096x4096"},
                    _("Pixels that all views are drawn with, whatever their windows' size"));
    panel.AddChoice(_("Tag Font"), &shared.msCTagFontIndex.mValue,
                    {"HELVETICA_10", "HELVETICA_12", "HELVETICA_18", "TIMES_ROMAN_10", "TIMES_ROMAN_24"},
                    _("Letters of grids' labels"));
    panel.SetUndo(UPDATE_CAM_CONF | UPDATE_GL);
    panel.SetOnChange([](int, bool) { PostMenuEvent(ID_REFRESH_GL); });
    mpCAdvancedSizer->Add(mpCAdvanced, 0, wxEXPAND);
}

void CameraPathGUI_cls::SetMNumPath() {
    CameraPath_cls& camera = *mCtrl.mHost.GetPCCameraPath();
    AnchorPath_cls& anchor = *mCtrl.mHost.GetPCAnchorPath();
    mpCPath = new MultiInputPanel_cls(this, kLabelWidth);
    MultiInputPanel_cls& panel = *mpCPath;
    panel.AddChoice(_("Camera Geom."), &camera.mCGeometry.mValue,
                    {_("Perspective"), _("Orthographic"), _("Fisheye"), _("Panoramic")},
                    _("Geometry of views that follow the camera"));
    panel.AddCheck(_("Look Anchor"), &camera.mCLookAnchor.mValue, _("On"),
                   _("The camera always turns to the anchor, whatever its rotation says"));
    panel.AddNumber(_("View Angle"), &camera.mCVAngle.mValue, 1, RangeSpec(0, 180, 1),
                    _("Angle of the picture's height, degrees"));
    panel.AddNumber(_("Fisheye Offset"), &camera.mCFishEyeOffset.mValue, 1, RangeSpec(-90, 90, 1),
                    _("Tilt of a dome picture, degrees"));
    const NumSpec place = RangeSpec(-1e30, 1e30, 0.01);
    panel.AddParam(_("Translae"), camera.mpCTranslate, place, _("Place of the camera"));
    panel.AddParam(_("Rotation"), camera.mpCRotate, RangeSpec(-1e30, 1e30, 1),
                   _("Rotation of the camera around x, y and z in degrees; it looks along its x axis"));
    panel.AddParam(_("Anchor"), anchor.mpCTranslate, place, _("What the camera can be told to look at"));
    const int ease = panel.AddButton("", _("Ease whole path"),
                                     _("All keys of camera and anchor get automatic tangents: the speed has "
                                       "no jumps"));
    panel.GetField(ease)->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) { OnEase(); });
    panel.AddStatic(
        "", [this] { return GetWarning(); },
        _("Where the camera turns faster than 60 degrees a second of film, which eyes can't follow"));
    panel.SetUndo(UPDATE_CAM_CONF | UPDATE_GL);
    panel.SetOnChange([this](int, bool) { FuncHookAssign(); });
}

// What the fields hold has become keys already.
void CameraPathGUI_cls::FuncHookAssign() {
    mpCPath->UpdateValues(ROW_WARNING);
    PostMenuEvent(ID_SYNC_GL_CTRL);
    PostMenuEvent(ID_REFRESH_GL);
}

void CameraPathGUI_cls::OnEase() {
    EaseWholePath(*mCtrl.mHost.GetPCCameraPath(), *mCtrl.mHost.GetPCAnchorPath());
    UpdateValuesAll();
    PostMenuEvent(ID_REFRESH_TL);
    PostMenuEvent(ID_REFRESH_GL);
}

// The whole film is looked at again only when something in it is another.
wxString CameraPathGUI_cls::GetWarning() {
    CameraPath_cls& camera = *mCtrl.mHost.GetPCCameraPath();
    AnchorPath_cls& anchor = *mCtrl.mHost.GetPCAnchorPath();
    const TimeCtrl_cls& time = *mCtrl.mHost.GetPCTimeCtrl();
    const double rate = mCtrl.mGetRate ? mCtrl.mGetRate() : kUsualRate;
    const wxString judged = camera.Serialize() + anchor.Serialize() +
                            wxString::Format("%d %d %d %d %d %g %llu", time.GetWAMin(), time.GetWAMax(),
                                             time.GetMaxFrame(), time.GetAnimStep(), time.GetAnimInterp(),
                                             rate, anchor.mFollowState ? anchor.mFollowState() : 0);
    if (judged == mStrJudged) return mStrWarning;
    mStrJudged = judged;
    const CameraTurn_st turn = FindFastestTurn(camera, anchor, time, rate);
    mStrWarning = turn.mDegrees <= kFastTurn
                      ? wxString()
                      : wxString::Format(_("Turns by %.0f degrees a second at frame %d; more than 60 is hard "
                                           "to follow."),
                                         turn.mDegrees, turn.mFrame);
    return mStrWarning;
}

void CameraPathGUI_cls::ReconnectView() {
    if (mpCNotebook->GetSelection() != mCtrl.mCurrentView)
        mpCNotebook->ChangeSelection(size_t(mCtrl.mCurrentView));
    ReconnectViewAdv();
    UpdateValuesAll();
}

// Some of its fields hold places of values of the view in front.
void CameraPathGUI_cls::ReconnectViewAdv() {
    mpCAdvancedSizer->Clear(true);
    SetMNumAdv();
    mpCAdvanced->Show(mbOpen[0]);
    Layout();
}

void CameraPathGUI_cls::OnNotebookChanged(wxBookCtrlEvent& event) {
    event.Skip();
    mCtrl.mCurrentView = event.GetSelection();
    ReconnectViewAdv();
    UpdateValuesAll();
}

bool CameraPathGUI_cls::HideAndShowView(int view) { return GetPCPage(view)->HideAndShowView(); }

void CameraPathGUI_cls::HideAndShowAll() {
    bool bChanged = false;
    for (int view = 0; view < MainGLCanvas_cls::kViewNumber; ++view)
        bChanged |= HideAndShowView(view);
    if (bChanged) ShowFolds();
}

void CameraPathGUI_cls::ShowFolds() {
    MultiInputPanel_cls* const parts[2] = {mpCAdvanced, mpCPath};
    for (int which = 0; which < 2; ++which) {
        mpCFold[which]->SetLabel((mbOpen[which] ? "[-]" : "[+]") + mTitle[which]);
        parts[which]->Show(mbOpen[which]);
    }
    GetSizer()->SetSizeHints(this);
    Fit();
}

void CameraPathGUI_cls::UpdateValuesAll() {
    HideAndShowAll();
    for (ViewPage_cls* page : mVPages)
        page->ShowView();
    mpCAdvanced->UpdateValues();
    mpCPath->UpdateValues();
}
