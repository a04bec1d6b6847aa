#include "APP/clsPreferenceGUI.h"

#include <wx/arrstr.h>
#include <wx/button.h>
#include <wx/notebook.h>
#include <wx/sizer.h>

#include "COMMON/EventIds.h"
#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "GL/BASE/clsPreference.h"
#include "IMAGE/clsImageIO.h"
#include "PDATA/clsPDataSeqCtrl.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {

constexpr int kMaxThreads = 64;
constexpr int kMaxMemoryMB = 1 << 20;

const std::vector<wxString>& ButtonLabels() {
    static const std::vector<wxString> sLabels = {_("Left Mouse BTN"), _("Middle Mouse BTN"),
                                                  _("Right Mouse BTN"), _("Not Assigned")};
    return sLabels;
}

} // namespace

PreferenceGUI_cls::PreferenceGUI_cls(wxWindow* pParent, Preference_cls* pPreference, Preference_cls* pUser,
                                     PDataSeqCtrl_cls* pSeqCtrl)
    : wxDialogEXKey(pParent, _("Preference")), mpCPreference(pPreference), mpCUser(pUser),
      mpCSeqCtrl(pSeqCtrl), mStrShown(pPreference->SerializeWhole()) {
    auto* book = new wxNotebook(this, wxID_ANY);
    for (const bool bMouse : {true, false}) {
        auto* page = new wxPanel(book);
        mpPage = page;
        auto* sizer = new wxBoxSizer(wxVERTICAL);
        if (bMouse)
            SetMNumMouseParam(sizer);
        else
            SetMNumMemParam(sizer);
        page->SetSizer(sizer);
        book->AddPage(page, bMouse ? _("Mouse") : _("Performance"));
    }
    auto* close = new wxButton(this, ID_DIALOG_CLOSE, _("Close"));
    close->SetDefault();
    auto* outer = new wxBoxSizer(wxVERTICAL);
    outer->Add(book, 1, wxEXPAND | wxALL, FromDIP(4));
    outer->Add(close, 0, wxALIGN_RIGHT | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(outer);
}

void PreferenceGUI_cls::AddActionRow(const wxString& label, ConfItemUINT_cls& button,
                                     ConfItemBOOLARRAY_cls& modifiers) {
    const int row =
        mpCMouse->AddChoice(label, &button.mValue, ButtonLabels(), _("Mouse button of this action"));
    const wxString keys[3] = {_("Shift"), _("Ctrl"), _("Alt")};
    for (int k = 0; k < 3; ++k)
        mpCMouse->AddCheckTo(row, &modifiers.mValue[k], keys[k], _("Key that must be held with the button"));
}

void PreferenceGUI_cls::SetMNumMouseParam(wxBoxSizer* pSizer) {
    Preference_cls& p = *mpCPreference;
    mpCMouse = new MultiInputPanel_cls(mpPage);
    AddActionRow(_("Gyration"), p.mCGyration, p.mCGyrationMod);
    AddActionRow(_("Zoom"), p.mCZoom, p.mCZoomMod);
    AddActionRow(_("Move Center"), p.mCCenter, p.mCCenterMod);
    AddActionRow(_("Move Item"), p.mCItem, p.mCItemMod);
    AddActionRow(_("Menu"), p.mCMenu, p.mCMenuMod);
    AddActionRow(_("Item Selection"), p.mCHitTest, p.mCHitTestMod);
    AddActionRow(_("Pick Particle"), p.mCPick, p.mCPickMod);
    mpCMouse->AddChoice(_("MButton Emulate"), &p.mCMButtonEmulate.mValue,
                        {_("Left BTN + Shift"), _("Left BTN + Ctrl"), _("Left BTN + Alt"), _("Not Assigned")},
                        _("Key that makes the left button the middle one"));
    const int invert = mpCMouse->AddCheck(_("Invert"), &p.mCZoomInvert.mValue, _("Zoom"),
                                          _("Reverse the direction of zooming"));
    mpCMouse->AddCheckTo(invert, &p.mCGyrationInvert.mValue, _("Gyration"),
                         _("Reverse the direction of turning"));
    mpCMouse->AddChoice(_("Template"), &mTemplate, {_("Defalut"), _("Blender Like")},
                        _("Set of assignments"));
    mpCMouse->SetOnChange([this](int, bool) { KeepForUser(); });
    pSizer->Add(mpCMouse, 1, wxEXPAND);
}

void PreferenceGUI_cls::SetMNumMemParam(wxBoxSizer* pSizer) {
    mpCPerformance = new MultiInputPanel_cls(mpPage);
    mpCPerformance->AddCaption(_("Memory Limit(MB)"));
    NumSpec memory;
    memory.mMin = 1;
    memory.mMax = kMaxMemoryMB;
    memory.mStep = 64;
    mpCPerformance->AddNumber(_("Critical"), &mpCSeqCtrl->mLimitMB, 1, memory,
                              _("Snapshots are dropped from memory above this many megabytes"));
    mpCPerformance->AddStatic(
        _("NowUsed"), [this] { return wxString::Format("%lld", mpCSeqCtrl->CalcAndGetUsedTotalMemoryMB()); },
        _("Megabytes that the loaded snapshots take"));
    mpCPerformance->AddCaption(_("Calculation"));
    NumSpec threads;
    threads.mMin = 1;
    threads.mMax = kMaxThreads;
    threads.mbInteger = true;
    mpCPerformance->AddNumber(
        _("Thread (I/O)"), [] { return static_cast<double>(GThreadNumberReadAscii.load()); },
        [](double value) { GThreadNumberReadAscii.store(static_cast<int>(value)); }, threads,
        _("Threads that read text files"));
    NumSpec quality;
    quality.mMin = 0;
    quality.mMax = 100;
    quality.mbInteger = true;
    mpCPerformance->AddNumber(_("JPEG Quality"), &ImageIO_cls::msJPEGQuality, 1, quality,
                              _("Of pictures that are written as JPEG: higher is finer and larger"));
    const int sort = mpCPerformance->AddChoice(
        _("Z-Sort Algorithm"), &mpCPreference->mCSortType.mValue,
        {_("Precise"), _("Approximate 10"), _("Approximate 100"), _("Approximate 1000")},
        _("How exactly particles are sorted by depth"));
    mpCPerformance->AddCaption(_("Views"));
    mpCPerformance->AddCheck(
        _("New Data"), &mpCPreference->mCFitFirst.mValue, _("Fit all views"),
        _("Data that are opened before any camera was moved stand whole in the picture"));
    mpCPerformance->AddCheck(
        _("Dragging"), &mpCPreference->mCThinDrags.mValue, _("Fewer particles meanwhile"),
        _("While a drag turns a view or moves an item, only as many particles are drawn as keep the picture "
          "moving; pictures and films always have all"));
    const int way = mpCPerformance->AddChoice(
        _("Draw particles"), &mpCPreference->mCDrawWay.mValue, {_("Auto"), _("OpenGL"), _("Processor")},
        _("Who draws points, billboards and Exact spheres. Auto: the processor itself where OpenGL is a "
          "software driver, as there it is faster"));
    mpCPerformance->SetOnChange([this, sort, way](int row, bool) {
        KeepForUser();
        if (row == sort || row == way) PostMenuEvent(ID_REFRESH_GL);
    });
    pSizer->Add(mpCPerformance, 1, wxEXPAND);
}

void PreferenceGUI_cls::UpdateValues() {
    mpCMouse->UpdateValues();
    mpCPerformance->UpdateValues();
    mStrShown = mpCPreference->SerializeWhole();
}

// Only what was changed: the rest of what acts may be an open project's.
void PreferenceGUI_cls::KeepForUser() {
    const wxString now = mpCPreference->SerializeWhole();
    const wxArrayString before = wxSplit(mStrShown, '\n', '\0');
    const wxArrayString after = wxSplit(now, '\n', '\0');
    for (size_t i = 0; i < after.size(); ++i)
        if (i >= before.size() || after[i] != before[i]) mpCUser->ReadStrLine(after[i]);
    mStrShown = now;
}
