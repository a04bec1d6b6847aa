#include "WIDGET/TIMELINE/clsKeyDialog.h"

#include <algorithm>
#include <cmath>

#include <wx/button.h>
#include <wx/sizer.h>

#include "PARAM/clsParamGroup.h"
#include "WIDGET/ShortcutKeys.h"
#include "WIDGET/TIMELINE/GraphEdit.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {
constexpr int kVarious = KeyFrame_cls::INTERP_COUNT; // behind the kinds
constexpr size_t kMostGroups = 8;                    // with ease factors of their own
constexpr size_t kMostCurves = 12;                   // of one of them
} // namespace

bool KeyDialog_cls::Open(wxWindow* pParent, const std::vector<Parameters_cls*>& curves) {
    if (CountSelectedKeys(curves) == 0) return false;
    KeyDialog_cls dialog(pParent, curves);
    return dialog.ShowModal() == wxID_OK && dialog.Apply();
}

KeyDialog_cls::KeyDialog_cls(wxWindow* pParent, const std::vector<Parameters_cls*>& curves)
    : wxDialogEXKey(wxGetTopLevelParent(pParent), _("Key Settings")) {
    for (Parameters_cls* param : curves)
        if (Parameters_cls::IsAlive(param) && param->GetSelectedKeyNum() > 0) mVCurves.push_back(param);
    Collect();
    mpCPanel = new MultiInputPanel_cls(this);
    AddRows();
    auto* buttons = CreateStdDialogButtonSizer(wxOK | wxCANCEL);
    auto* sizer = new wxBoxSizer(wxVERTICAL);
    sizer->Add(mpCPanel, 0, wxEXPAND | wxALL, FromDIP(4));
    sizer->Add(buttons, 0, wxEXPAND | wxLEFT | wxRIGHT | wxBOTTOM, FromDIP(8));
    SetSizerAndFit(sizer);
    EnableRows();
    CentreOnParent();
}

KeyDialog_cls::~KeyDialog_cls() {
    for (const Ease_st& ease : mVEase)
        if (ease.mpCGroup && Parameters_cls::IsAlive(ease.mVParams[0])) ease.mpCGroup->mpKeyDlgEase = nullptr;
}

void KeyDialog_cls::Collect() {
    bool bFirst = true;
    mbOneTime = true;
    double at = 0.0;
    for (Parameters_cls*& param : mVCurves) {
        ParamGroup_cls* group = param->mpCParamGroup;
        auto ease = std::find_if(mVEase.begin(), mVEase.end(),
                                 [group](const Ease_st& e) { return group && e.mpCGroup == group; });
        if (ease == mVEase.end()) ease = mVEase.insert(mVEase.end(), {group, {}, {}, {}, {}, {}, {}});
        double factor = 1.0;
        bool bEase = false;
        mbOneEach &= param->GetSelectedKeyNum() == 1;
        for (int i = 0; i < param->GetKeyNumber(); ++i) {
            const KeyFrame_cls& key = param->GetKeys()[size_t(i)];
            if (!key.mbSelected) continue;
            ++mCount;
            if (mVValues.size() == size_t(&param - mVCurves.data())) mVValues.push_back(key.mValue);
            const int kind = int(std::min(key.mInterpType, unsigned(INTERP_STEP)));
            mKind = bFirst || mKind == kind ? kind : kVarious;
            mbOneTime &= bFirst || std::fabs(key.mDoubleIndex - at) < Parameters_cls::msResolution / 2;
            if (bFirst) {
                at = key.mDoubleIndex;
                mSlope = param->GetHermiteVelocity(i);
            }
            bFirst = false;
            if (!bEase && key.mInterpType == INTERP_HERMITE_SEMIAUTO) {
                factor = key.mValueD2;
                bEase = true;
            }
        }
        ease->mVParams.push_back(param);
        ease->mVValue.push_back(factor);
        ease->mVActs.push_back(bEase);
    }
    mOldKind = mKind;
    mFrame = mOldFrame = at * std::max(Parameters_cls::msFrameNumber, 0);
    mVOldValues = mVValues;
    mOldSlope = mSlope;
    for (Ease_st& ease : mVEase) {
        ease.mVOld = ease.mVValue;
        if (!ease.mpCGroup) continue;
        ease.mpCGroup->mpKeyDlgEase = ease.mVValue.data();
        ease.mpCGroup->mKeyDlgType = ease.mpCGroup->mKeyDlgTypeOld = mKind;
    }
}

void KeyDialog_cls::AddRows() {
    std::vector<wxString> kinds(KeyFrame_cls::msAstrInterp,
                                KeyFrame_cls::msAstrInterp + KeyFrame_cls::INTERP_COUNT);
    if (mKind == kVarious) kinds.push_back(_("(various)"));
    mpCPanel->AddChoice(_("Interpolation"), &mKind, kinds,
                        _("How the curve runs from the selected keys to the next ones"));
    NumSpec spec;
    spec.mbDouble = true;
    if (mbOneTime) {
        NumSpec frames = spec;
        frames.mMin = 0;
        frames.mMax = std::max(Parameters_cls::msFrameNumber, 0);
        mpCPanel->AddNumber(_("Frame"), &mFrame, 1, frames, _("Where the key stands, in frames"));
    }
    spec.mStep = 0.1;
    if (mbOneTime && mbOneEach && mVCurves.size() <= kMostCurves) AddValueRows(spec);
    if (mCount == 1) {
        mSlopeRow = mpCPanel->AddNumber(_("Slope"), &mSlope, 1, spec,
                                        _("Change of the value over the whole film, at the key"));
    }
    if (mVEase.size() <= kMostGroups)
        for (Ease_st& ease : mVEase)
            AddEaseRows(&ease);
    mpCPanel->SetOnChange([this](int, bool) { EnableRows(); });
}

// Linked curves have their keys at one place, each with its own value; of several groups, a row each.
void KeyDialog_cls::AddValueRows(const NumSpec& spec) {
    int fields = 0;
    for (size_t i = 0; i < mVCurves.size(); i += size_t(fields)) {
        const ParamGroup_cls* group = mVCurves[i]->mpCParamGroup;
        wxString names = group && mVEase.size() > 1 ? group->mID + " " : wxString();
        for (fields = 0; fields < MultiInputPanel_cls::kMaxField; ++fields) {
            const size_t next = i + size_t(fields);
            if (next == mVCurves.size() || mVCurves[next]->mpCParamGroup != group) break;
            names += (fields > 0 ? ", " : "") + mVCurves[next]->mName;
        }
        const bool bOne = mVCurves.size() == 1;
        mpCPanel->AddNumber(bOne ? wxString(_("Value")) : wxString::Format(_("Value %s"), names),
                            &mVValues[i], fields, spec,
                            bOne ? wxString(_("The value at the key"))
                                 : wxString::Format(_("The values at the keys, of %s"), names));
    }
}

bool KeyDialog_cls::DoesEaseAct(const Ease_st& ease, size_t row) const {
    if (mKind != kVarious) return mKind == INTERP_HERMITE_SEMIAUTO;
    const size_t end = row + 1 < ease.mVRowStarts.size() ? ease.mVRowStarts[row + 1] : ease.mVActs.size();
    for (size_t i = ease.mVRowStarts[row]; i < end; ++i)
        if (ease.mVActs[i]) return true;
    return false;
}

void KeyDialog_cls::AddEaseRows(Ease_st* pEase) {
    NumSpec spec;
    spec.mbDouble = true;
    spec.mStep = 0.05;
    const bool bNamed = mVEase.size() > 1 && pEase->mpCGroup;
    const size_t count = std::min(pEase->mVParams.size(), kMostCurves);
    for (size_t i = 0; i < count; i += MultiInputPanel_cls::kMaxField) {
        const int fields = int(std::min(count - i, size_t(MultiInputPanel_cls::kMaxField)));
        wxString names;
        for (int k = 0; k < fields; ++k)
            names += (k > 0 ? ", " : "") + pEase->mVParams[i + size_t(k)]->mName;
        wxString label = _("Ease Factor");
        if (bNamed)
            label = pEase->mpCGroup->mID + " " + names;
        else if (mVCurves.size() > 1)
            label = wxString::Format(_("Ease %s"), names);
        pEase->mVRowStarts.push_back(i);
        pEase->mVRows.push_back(mpCPanel->AddNumber(
            label, &pEase->mVValue[i], fields, spec,
            wxString::Format(_("Factor of the automatic slope, for %s; 0 stops at the key"), names)));
    }
}

void KeyDialog_cls::EnableRows() {
    if (mSlopeRow >= 0) mpCPanel->EnableRow(mSlopeRow, mKind == INTERP_HERMITE);
    for (const Ease_st& ease : mVEase) {
        for (size_t row = 0; row < ease.mVRows.size(); ++row)
            mpCPanel->EnableRow(ease.mVRows[row], DoesEaseAct(ease, row));
        if (ease.mpCGroup && Parameters_cls::IsAlive(ease.mVParams[0])) ease.mpCGroup->mKeyDlgType = mKind;
    }
}

void KeyDialog_cls::UpdateValues() { mpCPanel->UpdateValues(); }

bool KeyDialog_cls::OnKeyDown(wxKeyEvent& event) {
    const int key = event.GetKeyCode();
    if ((key != WXK_RETURN && key != WXK_NUMPAD_ENTER) || event.GetModifiers() != wxMOD_NONE) return false;
    if (dynamic_cast<wxButton*>(FindKeyTarget())) return false; // Enter presses the button with the focus
    // The field under the caret takes what was typed when it loses the focus.
    wxWindow* ok = FindWindow(wxID_OK);
    if (ok) ok->SetFocus();
    CallAfter([this] {
        if (IsModal()) EndModal(wxID_OK);
    });
    return true;
}

bool KeyDialog_cls::Apply() {
    const double dT = mbOneTime && mFrame != mOldFrame
                          ? (mFrame - mOldFrame) / std::max(Parameters_cls::msFrameNumber, 1)
                          : 0.0;
    const auto easeOf = [this](const Parameters_cls* pParam, double* pValue) {
        for (const Ease_st& ease : mVEase)
            for (size_t i = 0; i < ease.mVParams.size(); ++i)
                if (ease.mVParams[i] == pParam) {
                    *pValue = ease.mVValue[i];
                    return ease.mVValue[i] != ease.mVOld[i];
                }
        return false;
    };
    CurveGesture_cls gesture;
    gesture.Begin(mVCurves, true);
    gesture.MoveAnd(dT, 0.0, [&](const CurveGesture_cls::Entry_st& entry, std::vector<KeyFrame_cls>* pKeys) {
        if (entry.mbFollows) return;
        if (mKind != kVarious) ChangeKinds(pKeys, *entry.mpBefore, unsigned(mKind));
        double factor = 1.0;
        const bool bEase = easeOf(entry.mpCParam, &factor);
        const size_t curve =
            size_t(std::find(mVCurves.begin(), mVCurves.end(), entry.mpCParam) - mVCurves.begin());
        const double dV = curve < mVValues.size() && mbOneEach ? mVValues[curve] - mVOldValues[curve] : 0.0;
        for (KeyFrame_cls& key : *pKeys) {
            if (!key.mbSelected) continue;
            if (std::isfinite(key.mValue + dV)) key.mValue += dV;
            if (bEase && key.mInterpType == INTERP_HERMITE_SEMIAUTO) key.mValueD2 = factor;
            if (mCount == 1 && mSlope != mOldSlope && key.mInterpType == INTERP_HERMITE)
                key.mValueD1 = mSlope;
        }
    });
    return gesture.Commit();
}
