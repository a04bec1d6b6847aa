// Lower half of the main window: the time control's buttons left of frame slider and cache bar, the time
// lines under them, and the play panel, which is always seen, at the bottom.
#pragma once

#include <wx/panel.h>
#include <wx/timer.h>

class CacheBar_cls;
class FrameSlider_cls;
class PDataSeqCtrl_cls;
class ParamGUICtrl_cls;
class PlayCtrlGUI_cls;
class TimeCtrl_cls;
class TimeHeader_cls;

class BtmHalfPanel_cls : public wxPanel {
public:
    BtmHalfPanel_cls(wxWindow* pParent, TimeCtrl_cls* pTime, PDataSeqCtrl_cls* pStore);

    /// Slider, cache bar and time lines from the clock, the store and the curves; what looks the same isn't
    /// drawn again.
    void RefreshTLPanels();
    /// Fields and buttons of the play panel from the clock.
    void RefreshGUI();
    /// Fit the children to the panel's size.
    void RecheckSize();
    /// Height, in pixels, that shows everything and two rows of the time lines.
    int GetMinHeight() const;

    PlayCtrlGUI_cls* GetPCPlayCtrl() const { return mpCPlay; }
    FrameSlider_cls* GetPCSlider() const { return mpCSlider; }
    CacheBar_cls* GetPCCacheBar() const { return mpCCacheBar; }
    TimeHeader_cls* GetPCHeader() const { return mpCHeader; }
    ParamGUICtrl_cls* GetPCParamGUICtrl() const { return mpCParamGUICtrl; }

private:
    void UpdateTags();
    void ShowTimeRemap();

    TimeCtrl_cls* mpCTime;
    FrameSlider_cls* mpCSlider;
    CacheBar_cls* mpCCacheBar;
    ParamGUICtrl_cls* mpCParamGUICtrl;
    TimeHeader_cls* mpCHeader;
    PlayCtrlGUI_cls* mpCPlay;
    wxTimer mTimer; ///< looks at the store
};
