#include "WIDGET/TIMELINE/clsGraphPanel.h"

#include <algorithm>
#include <cmath>
#include <cstring>

#include <wx/dcbuffer.h>

#include "PARAM/ParamHooks.h"
#include "TIME/clsTimeCtrl.h"
#include "WIDGET/TIMELINE/TimeGesture.h"
#include "WIDGET/TIMELINE/clsKeyActions.h"

namespace {
constexpr int kLeastHeight = 96;
} // namespace

GraphPanel_cls::GraphPanel_cls(wxWindow* pParent, TimeCtrl_cls* pTime)
    : TimelineStrip_cls(pParent, pTime, kLeastHeight) {
    SetCanFocus(true); // the strips' base was made without
    Bind(wxEVT_PAINT, [this](wxPaintEvent&) {
        wxAutoBufferedPaintDC dc(this);
        Draw(dc, GetClientSize());
    });
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MIDDLE_DOWN,
                             wxEVT_MIDDLE_UP, wxEVT_RIGHT_UP, wxEVT_MOTION, wxEVT_LEAVE_WINDOW})
        Bind(type, &GraphPanel_cls::OnMouse, this);
    Bind(wxEVT_MOUSEWHEEL, &GraphPanel_cls::OnWheel, this);
    Bind(wxEVT_CHAR_HOOK, &GraphPanel_cls::OnKey, this);
    Bind(wxEVT_SYS_COLOUR_CHANGED, [this](wxSysColourChangedEvent& event) {
        Refresh();
        event.Skip();
    });
}

void GraphPanel_cls::SetCurves(const std::vector<Parameters_cls*>& curves) {
    if (curves == mVCurves) {
        RefreshIfChanged();
        return;
    }
    CancelGesture();
    mVCurves = curves;
    mHover = Hit_st();
    FitToView();
}

std::vector<Parameters_cls*> GraphPanel_cls::GetCurves() const {
    std::vector<Parameters_cls*> alive;
    for (Parameters_cls* param : mVCurves)
        if (Parameters_cls::IsAlive(param)) alive.push_back(param);
    return alive;
}

GraphScale GraphPanel_cls::ScaleFor(const wxSize& size) const {
    FrameScale frames = GetScale();
    frames.mWidth = std::max(size.x - 2 * frames.mLeft, 0);
    return MakeGraphScale(frames, mpCTime->GetMaxFrame(), mCValues, size.x, size.y);
}

void GraphPanel_cls::FitToView() {
    const wxSize size = GetClientSize();
    mbFitPending = size.x <= 1 || size.y <= 1;
    Refresh();
    if (mbFitPending) return;
    std::vector<CurveColumns> columns;
    for (const Parameters_cls* param : GetCurves()) {
        columns.emplace_back();
        mCSampler.Sample(*param, GetGraphScale(), Parameters_cls::msResolution, &columns.back());
    }
    mCValues = FitValues(columns);
}

uint64_t GraphPanel_cls::Fingerprint() const {
    uint64_t hash = 14695981039346656037ull;
    const auto add = [&hash](uint64_t word) { hash = (hash ^ word) * 1099511628211ull; };
    const auto addReal = [&add](double value) {
        uint64_t bits;
        std::memcpy(&bits, &value, sizeof bits);
        add(bits);
    };
    for (const int frame : {mpCTime->GetAAMin(), mpCTime->GetAAMax(), mpCTime->GetWAMin(),
                            mpCTime->GetWAMax(), mpCTime->GetMaxFrame(), mpCTime->GetAnimInterp()})
        add(uint64_t(frame));
    addReal(mpCTime->GetDoubleIndex());
    addReal(mCValues.mLow);
    addReal(mCValues.mHigh);
    for (const Parameters_cls* param : mVCurves) {
        const bool bAlive = Parameters_cls::IsAlive(param);
        add(bAlive);
        if (!bAlive) continue;
        add(uint64_t(param->mbTimeDepend.mValue) + 2 * uint64_t(param->mPeriodic.mValue));
        for (const KeyFrame_cls& key : param->GetKeys()) {
            add(key.mInterpType + 16u * key.mbSelected);
            addReal(key.mDoubleIndex);
            addReal(key.mValue);
            addReal(key.mValueD1);
            addReal(key.mValueD2);
        }
    }
    return hash;
}

void GraphPanel_cls::RefreshIfChanged() {
    if (mbFitPending)
        FitToView();
    else if (Fingerprint() != mShown)
        Refresh();
}

void GraphPanel_cls::SetActiveArea(int first, int last) {
    const int end = mpCTime->GetMaxFrame();
    const int span = std::clamp(last - first, std::min(1, end), end);
    first = std::clamp(first, 0, end - span);
    if (first == mpCTime->GetAAMin() && first + span == mpCTime->GetAAMax()) return;
    const TimeGesture_cls gesture(mpCTime);
    mpCTime->SetAAMinCommand(first);
    mpCTime->SetAAMaxCommand(first + span);
    Refresh();
}

void GraphPanel_cls::ZoomTime(int x, double factor) {
    const FrameScale frames = GetScale();
    const int span = frames.mLast - frames.mFirst;
    const double share =
        frames.mWidth > 0 ? std::clamp(double(x - frames.mLeft) / frames.mWidth, 0.0, 1.0) : 0.5;
    int wanted = int(std::lround(std::min(span * factor, 1e9)));
    if (wanted == span) wanted += factor < 1.0 ? -1 : 1;
    wanted = std::clamp(wanted, std::min(1, mpCTime->GetMaxFrame()), mpCTime->GetMaxFrame());
    const int first = int(std::lround(frames.mFirst + share * span - share * wanted));
    SetActiveArea(first, first + wanted);
}

void GraphPanel_cls::OnKey(wxKeyEvent& event) {
    if (!HandleKey(event.GetKeyCode(), event.GetModifiers())) event.Skip();
}

bool GraphPanel_cls::HandleKey(int key, int modifiers) {
    if (mGesture.IsActive()) {
        if (key == WXK_ESCAPE) CancelGesture();
        return true; // no other edit while one is under way
    }
    if (modifiers == wxMOD_NONE && (key == WXK_DELETE || key == WXK_NUMPAD_DELETE)) {
        if (DeleteSelectedKeys(GetCurves())) Edited();
    } else if (modifiers == wxMOD_NONE && key == 'F') {
        FitToView();
    } else if (modifiers == wxMOD_CONTROL && key == 'A') {
        SelectAll();
    } else if (modifiers == wxMOD_CONTROL && key == 'C') {
        Copy();
    } else if (modifiers == wxMOD_CONTROL && key == 'V') {
        if (PasteKeys(GetCurves(), KeyActions_cls::ClipboardText(), Parameters_cls::kCurrent)) Edited();
    } else {
        return false;
    }
    Refresh();
    return true;
}

void GraphPanel_cls::SelectAll() {
    for (Parameters_cls* param : GetCurves())
        for (int i = 0; param->mbTimeDepend.mValue && i < param->GetKeyNumber(); ++i)
            param->SelectKey(i, true);
    Edited();
}

void GraphPanel_cls::Copy() const {
    wxString text;
    for (const Parameters_cls* param : GetCurves())
        text += param->GetClipboardText();
    if (!text.empty() && GParamHooks.mClipboard) GParamHooks.mClipboard(text);
}

void GraphPanel_cls::Edited() {
    if (mOnEdited) mOnEdited();
    Refresh();
}
