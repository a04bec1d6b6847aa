// The one top-level window: menus, status bar, the two halves of the window, and the idle handler that
// drives the program. Other objects and threads reach it only by posted commands (COMMON/EventIds.h).
#pragma once

#include <wx/bitmap.h>
#include <wx/frame.h>
#include <wx/timer.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

class BtmHalfPanel_cls;
class GLCanvasCtrl_cls;
class GLExtraFrame_cls;
class GLInfo_cls;
class Main_cls;
class MainGLCanvas_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class Preference_cls;
class PreferenceGUI_cls;
class Shortcut_cls;
class TimeCtrl_cls;
class TopHalfPanel_cls;
class wxInfoBar;
class wxSplitterEvent;
class wxSplitterWindow;

class FrameMain_cls : public wxFrame {
public:
    FrameMain_cls(const wxString& title, Main_cls* pMain, const wxRect& rect);
    ~FrameMain_cls() override;

    Main_cls* GetPCMain() const { return mpCMain; }
    PDataSequence_cls* GetPCActiveFileSequence() const;
    GLCanvasCtrl_cls* GetPCGLCanvasCtrl(int view) const; ///< 0 to 3 panels, 4 the extra frame's
    MainGLCanvas_cls* GetPCGLCanvas(int view) const;
    TimeCtrl_cls* GetPCTimeCtrl() const;
    PDataSeqCtrl_cls* GetPCDataSeqCtrl() const;
    Preference_cls* GetPCPreference() const { return mpCPreference; }
    GLExtraFrame_cls* GetPCExtraFrame() const { return mpCExtraFrame; }
    TopHalfPanel_cls* GetPCTopHalf() const { return mpCTopHalf; }
    BtmHalfPanel_cls* GetPCBtmHalf() const { return mpCBtmHalf; }

    /// Frame -1 is the current one. Prepare blocks (reader, interpolator) exactly then.
    bool IsTheFrameReady(int frame) const;
    bool IsTheFrameLoaded(int frame) const;
    void PrepareTheFrame(int frame);
    /// Start the nearest frame ahead, in play direction, that isn't ready; at most one a call.
    void PrepareFramesAhead(int count);

    void UpdateStatusText();
    void UpdateTitle(const wxString& projectName);
    void FitSplitterWindow(bool bForce);
    void ReconnectCameraPathGUI() {} ///< the camera dialog follows the active canvas
    void OpenProject(const wxString& path);
    /// Tell something beside the work, in a bar above the views.
    void ShowNotice(const wxString& text);

    wxString Serialize();
    wxString SerializeForConfigure();
    void ReadStrLine(const wxString& line);

    static FrameMain_cls* mspCThis;

    // The frame's developer adds the handlers.
private:
    Main_cls* mpCMain;
    wxSplitterWindow* mpCSplitter = nullptr;
    TopHalfPanel_cls* mpCTopHalf = nullptr;
    BtmHalfPanel_cls* mpCBtmHalf = nullptr;
    GLExtraFrame_cls* mpCExtraFrame = nullptr;
    wxInfoBar* mpCInfoBar = nullptr;
    wxTimer mTimer;
    Preference_cls* mpCPreference = nullptr;
    Shortcut_cls* mpCShortcut = nullptr;
    MainGLCanvas_cls* mpCMainCanvas = nullptr;
    GLInfo_cls* mpCGLInfo = nullptr;
    int mBtmHeight = 150;
    bool mbProjectNamed = false;
    ConfItemList_cls mCConfList;
    ConfItemSTR_cls mCItemLastMRP;
    ConfItemSTR_cls mCItemLastIMG;
};
