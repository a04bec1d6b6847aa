// The hub's part in scenes for POV-Ray: its menu, the run of the film that writes a scene of each frame, and
// what is asked before.
#pragma once

#include <wx/string.h>

class FrameMain_cls;
class Main_cls;
class PovRayCtrl_cls;
class wxCommandEvent;

class PovExport_cls {
public:
    /// Takes the frame's commands about POV-Ray from here on. A part of the frame.
    explicit PovExport_cls(FrameMain_cls& frame);

    /// Write the scene of what view 0 has just drawn, and its .ini. `eye`: an Eye. False, told: it could not
    /// be written.
    bool ExportPovSnap(int eye, bool bForRender);
    /// The same as the next frame of an animation.
    bool ExportPovAnim(int eye);
    bool RenderPovSnap(int eye);
    /// Bring the clock to the first frame that is wanted, and its range to them all.
    void SetTimeForPovAnim();
    /// May a scene be written? One without a light is black: the user is asked.
    bool IsPovrayCondistionSatisfiled();

    /// For the status bar; empty when nothing runs.
    wxString GetStatus() const;

private:
    enum class Still { None, Export, Render, Try };

    PovRayCtrl_cls& Ctrl() const;
    void OnFrameDrawn();
    void AskMemory(const wxString& question);
    void WriteDrawn();
    void StopAnim();
    void OnRunStopped();
    void OnMenuPovRay(wxCommandEvent& event);
    void OnMenuPovExportSnap(wxCommandEvent& event);
    void OnMenuPovExportAnim(wxCommandEvent& event);
    void OnMenuPovRenderSnap(wxCommandEvent& event);
    void OnMenuPovRenderAnim(wxCommandEvent& event);
    void OnMenuPovRenderEnd(wxCommandEvent& event);
    void OnMenuPovTry(wxCommandEvent& event);
    void BeginStill(Still still);
    void EndStill();
    void TryStill();
    void BeginAnim(bool bRender, int id);
    bool MayBegin(bool bRender);
    int CountFrames() const;
    bool WriteScene(const wxString& base, int pretrace);

    FrameMain_cls& mFrame;
    Main_cls& mHub;
    Still mStill = Still::None; ///< wanted of the next picture
    bool mbAsking = false;      ///< for the memory of what has been drawn
    int mLastFrame = -1;        ///< of the run: what was written last
    int mLastStep = -1;
};
