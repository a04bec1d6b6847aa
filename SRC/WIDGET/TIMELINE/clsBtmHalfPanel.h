// Lower half of the main window: frame slider and cache bar over the play panel.
#pragma once

#include <wx/panel.h>
#include <wx/timer.h>

class CacheBar_cls;
class FrameSlider_cls;
class Main_cls;
class PlayCtrlGUI_cls;

class BtmHalfPanel_cls : public wxPanel {
public:
    BtmHalfPanel_cls(wxWindow* pParent, Main_cls* pMain);

    /// Slider and cache bar from the clock and the store; what looks the same isn't drawn again.
    void RefreshTLPanels();
    /// Fields and buttons of the play panel from the clock.
    void RefreshGUI();
    /// Fit the children to the panel's size.
    void RecheckSize();
    /// Height, in pixels, that shows everything.
    int GetMinHeight() const;
    /// Everything from its data.
    void UpdateValues();

    PlayCtrlGUI_cls* GetPCPlayCtrl() const { return mpCPlay; }
    FrameSlider_cls* GetPCSlider() const { return mpCSlider; }
    CacheBar_cls* GetPCCacheBar() const { return mpCCacheBar; }

private:
    FrameSlider_cls* mpCSlider;
    CacheBar_cls* mpCCacheBar;
    PlayCtrlGUI_cls* mpCPlay;
    wxTimer mTimer; ///< looks at the store
};
