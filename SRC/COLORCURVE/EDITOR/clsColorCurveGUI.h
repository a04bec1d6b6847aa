// The window of the colour curve editor.
#pragma once

#include <memory>
#include <vector>

#include "COLORCURVE/clsColorCurve.h"
#include "WIDGET/clsDialogEXKey.h"

class ColorCurveCtrl_cls;
class ColorCurveEdit_cls;
class ColorCurveGraph_cls;
class ColorCurveTemplate_cls;
class ColorSwatch_cls;
class MultiInputPanel_cls;
class NumField_cls;
class wxBoxSizer;
class wxButton;
class wxChoice;
class wxSizer;

class ColorCurveGUI_cls : public wxDialogEXKey {
public:
    ColorCurveGUI_cls(wxWindow* pParent, ColorCurveCtrl_cls* pCtrl);

    void UpdateValues() override;
    ColorCurveGraph_cls* GetPCGraph() const { return mpCGraph; }
    ColorCurveTemplate_cls* GetPCTemplate() const { return mpCTemplate; }

private:
    void AddSettings(wxSizer* pSizer);
    wxSizer* MakeFitRow();
    wxSizer* MakeKeyRow();
    wxSizer* MakeChannelRow();
    wxSizer* MakeButtonRow();
    void FillCurveList();
    void OnSetting(int row, bool bFinal);
    void ShowRows();
    void UpdateKeyRow();
    void UpdateHistogram();
    void SetPosition(double value, bool bFinal);
    void SetChannel(int channel, double value, bool bFinal);
    void BeginField(double start);
    void EndField(bool bFinal);
    wxSizer* MakeChannel(int channel, const wxString& name, const wxString& tip, const wxString& hint);

    ColorCurveCtrl_cls* mpCCtrl;
    ColorCurveEdit_cls& mCEdit;
    ColorSettings_st mSettings; ///< what the fields show
    std::vector<ColorCurve_cls*> mVListed;
    wxChoice* mpCCurveChoice = nullptr;
    MultiInputPanel_cls* mpCPanel = nullptr;
    int mRowUse = -1, mRowConstant = -1, mRowDepend = -1, mRowScaling = -1;
    wxSizer* mpCFitRow = nullptr;
    ColorCurveTemplate_cls* mpCTemplate = nullptr;
    ColorCurveGraph_cls* mpCGraph = nullptr;
    wxChoice* mpCKind = nullptr;
    NumField_cls* mpCPosition = nullptr;
    NumField_cls* mpCValues[4] = {}; ///< red, green, blue, alpha
    ColorSwatch_cls* mpCStopColor = nullptr;
    wxButton* mpCDelete = nullptr;
    size_t mHistogramStamp = 0;  ///< what the histogram was made of
    bool mbFieldGesture = false; ///< a key's field is being dragged
    double mFieldStart = 0.0;
};
