// A numeric field: type into it, click or hold its arrows, turn the wheel, or drag the arrows sideways
// (Shift fine, Ctrl coarse). Enter and leaving the field commit, Escape and Ctrl-Z restore what is being
// typed; text that is no number gives the old value back. Turns of the wheel and strokes of the arrow keys
// that come close after each other are one gesture.
#pragma once

#include <functional>

#include <wx/panel.h>
#include <wx/timer.h>

#include "WIDGET/NumberText.h"

class wxTextCtrl;

/// The user has set a field, which is the event's object; at the end of each gesture.
wxDECLARE_EVENT(EVT_FIELD_SET, wxCommandEvent);

class NumField_cls : public wxPanel {
public:
    /// Called with the new value; bFinal is false while a drag, a held arrow or a burst of the wheel is under
    /// way, and each gesture ends with one call where it is true.
    using ChangeHandler = std::function<void(double value, bool bFinal)>;

    NumField_cls(wxWindow* pParent, const NumSpec& spec, int widthChars = 8);
    ~NumField_cls() override;
    /// Finish the gesture that is under way in any field.
    static void EndAnyGesture();
    static bool IsAnyGesture() { return mspCActive != nullptr; }

    double GetValue() const { return mValue; }
    /// Show a value without telling the handler; an edit under way stays.
    void SetValue(double value);
    /// As if it had been typed.
    void Enter(double value) { Change(value, true); }
    /// Give the handler what stands in the field now, if it changed.
    void Commit();
    void SetSpec(const NumSpec& spec);
    const NumSpec& GetSpec() const { return mSpec; }
    void SetOnChange(ChangeHandler handler) { mOnChange = std::move(handler); }
    void SetHint(const wxString& tooltip);
    /// Let another window, such as the label, be dragged too.
    void AttachGrip(wxWindow* pGrip);
    wxTextCtrl* GetPCText() const { return mpCText; }

private:
    void ShowText();
    void Tell(bool bFinal);
    void Change(double value, bool bFinal);
    void OnTextKey(wxKeyEvent& event);
    void OnWheel(wxMouseEvent& event);
    void OnGripMouse(wxMouseEvent& event, wxWindow* pGrip, bool bArrows);
    void OnGripDown(wxWindow* pGrip, bool bArrows, const wxPoint& position);
    void OnGripDrag(wxWindow* pGrip, const wxMouseEvent& event);
    void EndGesture();
    void StepBy(int ticks);
    void StepInBurst(int ticks);
    void PaintArrows();

    NumSpec mSpec;
    double mValue = 0.0;
    ChangeHandler mOnChange;
    wxTextCtrl* mpCText;
    wxPanel* mpCArrows;
    wxTimer mHoldTimer;      ///< repeats a held arrow
    wxTimer mBurstTimer;     ///< ends a burst of the wheel
    int mHoldTicks = 0;      ///< +1, -1, or 0 when no arrow is held
    bool mbDragging = false; ///< the pointer has moved enough to be a drag
    bool mbPressed = false;
    bool mbChanged = false; ///< something was told with bFinal false
    double mDragStart = 0.0;
    wxPoint mDragFrom;

    static NumField_cls* mspCActive; ///< the field with a gesture under way
};
