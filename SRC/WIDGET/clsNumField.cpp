#include "WIDGET/clsNumField.h"

#include <cmath>
#include <cstdlib>
#include <utility>

#include <wx/dcclient.h>
#include <wx/settings.h>
#include <wx/sizer.h>
#include <wx/textctrl.h>

#include "WIDGET/DenseStyle.h"

namespace {
constexpr int kArrowWidth = 14;
constexpr int kDragThreshold = 3; // pixels before a press becomes a drag
constexpr int kHoldDelay = 400;   // milliseconds before a held arrow repeats
constexpr int kHoldRepeat = 60;
constexpr int kBurstEnd = 400; // milliseconds without another turn of the wheel
} // namespace

wxDEFINE_EVENT(EVT_FIELD_SET, wxCommandEvent);

NumField_cls* NumField_cls::mspCActive = nullptr;

NumField_cls::~NumField_cls() {
    if (mspCActive == this) mspCActive = nullptr;
}

void NumField_cls::EndAnyGesture() {
    if (mspCActive) mspCActive->EndGesture();
}

NumField_cls::NumField_cls(wxWindow* pParent, const NumSpec& spec, int widthChars)
    : wxPanel(pParent, wxID_ANY, wxDefaultPosition, wxDefaultSize, wxTAB_TRAVERSAL), mSpec(spec) {
    InstallDenseStyle();
    mpCText = new wxTextCtrl(this, wxID_ANY, "", wxDefaultPosition, wxDefaultSize, wxTE_PROCESS_ENTER);
    mpCText->SetMinSize(wxSize(mpCText->GetCharWidth() * widthChars + FromDIP(12), FromDIP(kFieldHeight)));
    mpCArrows =
        new wxPanel(this, wxID_ANY, wxDefaultPosition, FromDIP(wxSize(kArrowWidth, -1)), wxBORDER_NONE);
    mpCArrows->SetCanFocus(false);
    mpCArrows->Bind(wxEVT_PAINT, [this](wxPaintEvent&) { PaintArrows(); });
    mpCArrows->Bind(wxEVT_MOUSEWHEEL, &NumField_cls::OnWheel, this);

    auto* sizer = new wxBoxSizer(wxHORIZONTAL);
    sizer->Add(mpCText, 1, wxEXPAND);
    sizer->Add(mpCArrows, 0, wxEXPAND);
    SetSizerAndFit(sizer); // in its size at once: the toolkit complains of entries without width

    mpCText->Bind(wxEVT_TEXT_ENTER, [this](wxCommandEvent&) {
        Commit();
        mpCText->SelectAll();
    });
    mpCText->Bind(wxEVT_KILL_FOCUS, [this](wxFocusEvent& event) {
        Commit();
        event.Skip();
    });
    mpCText->Bind(wxEVT_CHAR_HOOK, &NumField_cls::OnTextKey, this);
    // The toolkit's entry leaves the wheel to the window under it, which is this one.
    Bind(wxEVT_MOUSEWHEEL, [this](wxMouseEvent& event) {
        if (mpCText->HasFocus())
            OnWheel(event);
        else
            event.Skip(); // the wheel scrolls the page
    });
    mHoldTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) {
        StepBy(mHoldTicks);
        mHoldTimer.StartOnce(kHoldRepeat);
    });
    mBurstTimer.Bind(wxEVT_TIMER, [this](wxTimerEvent&) { EndGesture(); });
    AttachGrip(mpCArrows);
    ShowText();
}

void NumField_cls::SetValue(double value) {
    const bool bSame = value == mValue || (std::isnan(value) && std::isnan(mValue));
    if (mpCText->HasFocus() && mpCText->IsModified() && bSame) return;
    mValue = value;
    if (!mbDragging) ShowText();
}

void NumField_cls::SetSpec(const NumSpec& spec) {
    mSpec = spec;
    ShowText();
}

void NumField_cls::SetHint(const wxString& tooltip) {
    mpCText->SetToolTip(tooltip);
    mpCArrows->SetToolTip(tooltip);
}

void NumField_cls::ShowText() {
    const wxString text = FormatNumber(mValue, mSpec);
    if (mpCText->GetValue() != text) mpCText->ChangeValue(text);
    mpCText->SetModified(false);
}

void NumField_cls::Change(double value, bool bFinal) {
    const double clamped = ClampNumber(value, mSpec);
    const bool bNew = clamped != mValue;
    mValue = clamped;
    ShowText();
    const bool bTell = bNew || (bFinal && mbChanged);
    mbChanged = !bFinal && (mbChanged || bNew);
    if (mbChanged) {
        if (mspCActive != this) EndAnyGesture();
        mspCActive = this;
    }
    if (bTell) Tell(bFinal);
}

void NumField_cls::Tell(bool bFinal) {
    if (bFinal) { // before it acts: what follows from it comes behind
        wxCommandEvent event(EVT_FIELD_SET);
        event.SetEventObject(this);
        ProcessWindowEventLocally(event);
    }
    if (mOnChange) mOnChange(mValue, bFinal);
}

void NumField_cls::Commit() {
    if (!mbPressed) EndGesture(); // a press takes the focus away, and goes on
    if (!mpCText->IsModified()) return;
    double value = 0.0;
    if (ParseNumber(mpCText->GetValue(), mSpec, &value))
        Change(value, true);
    else
        ShowText();
}

void NumField_cls::OnTextKey(wxKeyEvent& event) {
    switch (event.GetKeyCode()) {
    case WXK_ESCAPE:
        if (!mpCText->IsModified()) {
            event.Skip(); // nothing to restore: the dialog closes
            return;
        }
        ShowText();
        mpCText->SelectAll();
        return;
    case 'Z':
        if (event.GetModifiers() != wxMOD_CONTROL || !mpCText->IsModified()) {
            event.Skip(); // the program's undo
            return;
        }
        ShowText();
        mpCText->SelectAll();
        return;
    case WXK_UP:
    case WXK_NUMPAD_UP:
        StepInBurst(1);
        return;
    case WXK_DOWN:
    case WXK_NUMPAD_DOWN:
        StepInBurst(-1);
        return;
    default:
        event.Skip();
    }
}

void NumField_cls::OnWheel(wxMouseEvent& event) {
    const int ticks = event.GetWheelRotation() > 0 ? 1 : -1;
    StepInBurst(event.ControlDown() ? 10 * ticks : ticks);
}

void NumField_cls::StepBy(int ticks) {
    double value = mValue;
    if (mpCText->IsModified()) ParseNumber(mpCText->GetValue(), mSpec, &value);
    Change(StepNumber(value, ticks, mSpec), false);
}

void NumField_cls::StepInBurst(int ticks) {
    StepBy(ticks);
    mBurstTimer.StartOnce(kBurstEnd);
}

void NumField_cls::AttachGrip(wxWindow* pGrip) {
    const bool bArrows = pGrip == mpCArrows;
    pGrip->SetCursor(wxCursor(wxCURSOR_SIZEWE));
    for (const auto& type : {wxEVT_LEFT_DOWN, wxEVT_LEFT_DCLICK, wxEVT_LEFT_UP, wxEVT_MOTION})
        pGrip->Bind(type,
                    [this, pGrip, bArrows](wxMouseEvent& event) { OnGripMouse(event, pGrip, bArrows); });
    pGrip->Bind(wxEVT_MOUSE_CAPTURE_LOST, [this](wxMouseCaptureLostEvent&) { EndGesture(); });
}

void NumField_cls::OnGripMouse(wxMouseEvent& event, wxWindow* pGrip, bool bArrows) {
    if (!IsEnabled()) return;
    if (event.LeftDown() || event.LeftDClick()) {
        OnGripDown(pGrip, bArrows, event.GetPosition());
    } else if (event.LeftUp()) {
        if (pGrip->HasCapture()) pGrip->ReleaseMouse();
        EndGesture();
    } else if (event.Dragging() && mbPressed) {
        OnGripDrag(pGrip, event);
    }
}

void NumField_cls::OnGripDown(wxWindow* pGrip, bool bArrows, const wxPoint& position) {
    Commit();
    if (!pGrip->HasCapture()) pGrip->CaptureMouse();
    mbPressed = true;
    mbDragging = false;
    mDragStart = mValue;
    mDragFrom = pGrip->ClientToScreen(position);
    if (!bArrows) return;
    mHoldTicks = position.y < pGrip->GetClientSize().y / 2 ? 1 : -1;
    StepBy(mHoldTicks);
    mHoldTimer.StartOnce(kHoldDelay);
}

void NumField_cls::OnGripDrag(wxWindow* pGrip, const wxMouseEvent& event) {
    const int pixels = pGrip->ClientToScreen(event.GetPosition()).x - mDragFrom.x;
    if (!mbDragging && std::abs(pixels) < FromDIP(kDragThreshold)) return;
    if (!mbDragging) {
        mbDragging = true;
        mHoldTimer.Stop();
    }
    const double factor = event.ShiftDown() ? 0.1 : event.ControlDown() ? 10.0 : 1.0;
    Change(DragNumber(mDragStart, pixels, factor, mSpec), false);
}

void NumField_cls::EndGesture() {
    mHoldTimer.Stop();
    mBurstTimer.Stop();
    mHoldTicks = 0;
    mbPressed = mbDragging = false;
    if (mspCActive == this) mspCActive = nullptr;
    if (!std::exchange(mbChanged, false)) return;
    Tell(true); // the text stays: the user may be typing already
}

void NumField_cls::PaintArrows() {
    wxPaintDC dc(mpCArrows); // no buffer of its own: the page's background shows through
    const wxSize size = mpCArrows->GetClientSize();
    // A panel with a ground of its own says what can be read on it.
    const bool bOwn = IsEnabled() && GetParent()->UseForegroundColour();
    const wxColour colour =
        bOwn ? GetParent()->GetForegroundColour()
             : wxSystemSettings::GetColour(IsEnabled() ? wxSYS_COLOUR_BTNTEXT : wxSYS_COLOUR_GRAYTEXT);
    dc.SetPen(*wxTRANSPARENT_PEN);
    dc.SetBrush(wxBrush(colour));
    const int x = size.x / 2;
    const int half = FromDIP(3);
    const int up = size.y / 4 + FromDIP(1);
    const int down = size.y - up;
    const wxPoint upper[3] = {{x - half, up + half / 2}, {x + half, up + half / 2}, {x, up - half}};
    const wxPoint lower[3] = {{x - half, down - half / 2}, {x + half, down - half / 2}, {x, down + half}};
    dc.DrawPolygon(3, upper);
    dc.DrawPolygon(3, lower);
}
