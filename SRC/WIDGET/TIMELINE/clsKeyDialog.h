// The dialog "Key Settings" of the selected keys: kind, ease factors, and of a single key its place.
#pragma once

#include <vector>

#include "WIDGET/clsDialogEXKey.h"

class MultiInputPanel_cls;
struct NumSpec;
class ParamGroup_cls;
class Parameters_cls;

/// OK applies what was changed as one step; Cancel and Escape leave everything.
class KeyDialog_cls : public wxDialogEXKey {
public:
    /// Runs the dialog for the selected keys of these curves; true when they changed. Without selected
    /// keys it doesn't open.
    static bool Open(wxWindow* pParent, const std::vector<Parameters_cls*>& curves);

    KeyDialog_cls(wxWindow* pParent, const std::vector<Parameters_cls*>& curves);
    ~KeyDialog_cls() override;
    void UpdateValues() override;
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

protected:
    bool OnKeyDown(wxKeyEvent& event) override;

private:
    /// Ease factors of one group's curves, or of one curve without a group.
    struct Ease_st {
        ParamGroup_cls* mpCGroup;
        std::vector<Parameters_cls*> mVParams;
        std::vector<double> mVValue; ///< one a curve; the group's scratch array while the dialog is open
        std::vector<double> mVOld;
        std::vector<bool> mVActs; ///< a selected key of the curve goes by it
        std::vector<int> mVRows;
        std::vector<size_t> mVRowStarts; ///< the first curve of each row
    };

    void Collect();
    void AddRows();
    void AddEaseRows(Ease_st* pEase);
    void AddValueRows(const NumSpec& spec);
    bool DoesEaseAct(const Ease_st& ease, size_t row) const;
    void EnableRows();
    bool Apply();

    MultiInputPanel_cls* mpCPanel;
    std::vector<Parameters_cls*> mVCurves; ///< those with selected keys
    std::vector<Ease_st> mVEase;
    int mKind = 0; ///< behind the five: keys of several kinds
    int mOldKind = 0;
    int mCount = 0;         ///< selected keys
    bool mbOneTime = false; ///< all at one place
    double mFrame = 0.0;
    bool mbOneEach = true;        ///< one of each curve
    std::vector<double> mVValues; ///< of the curves' first selected keys
    double mSlope = 0.0;
    double mOldFrame = 0.0;
    std::vector<double> mVOldValues;
    double mOldSlope = 0.0;
    int mSlopeRow = -1;
};
