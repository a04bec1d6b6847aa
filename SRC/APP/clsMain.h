// The hub: owns every long-lived part of the program and outlives all others.
#pragma once

#include <string>

#include <wx/string.h>

#include "PDATA/DataOpener.h"
#include "TIME/TimeHost.h"

class AnchorPath_cls;
class CameraPathCtrl_cls;
class CameraPath_cls;
class ColorCurveCtrl_cls;
class DataExporter_cls;
class DataLoader_cls;
class DrawOption_cls;
class Exposure_cls;
class FrameMain_cls;
class ImgSequence_cls;
class Information_cls;
class LightSRCCtrl_cls;
class Overlay_cls;
class ParticleWatch_cls;
class PDataSeqCtrl_cls;
class PDataSequence_cls;
class ParamGUICtrl_cls;
class ParamGroup_cls;
class PeriodicBoundary_cls;
class PeriodicBoundaryCtrl_cls;
class Parameters_cls;
class FilterBase_cls;
class FilterLists_cls;
class PovRayCtrl_cls;
class Preference_cls;
class RecentFiles_cls;
class Recorder_cls;
class Recovery_cls;
class SceneObj_cls;
class Scene_cls;
class StereoGram_cls;
class TexPropertyCtrl_cls;
class TimeCtrl_cls;
class wxWindow;

class Main_cls : public TimeHost_cls, public DataOpener_cls {
public:
    /// Builds all objects and the main frame (not yet shown) and reads the configure file.
    /// filmView: the view that a film is made of, without a window that is ever shown; then no panels are
    /// made, and the program's defaults say what no project does in place of the user's configure file. -1: a
    /// window.
    explicit Main_cls(int filmView = -1);
    ~Main_cls() override;
    Main_cls(const Main_cls&) = delete;
    Main_cls& operator=(const Main_cls&) = delete;

    // The store, as the clock and the panels ask for it.
    int GetUsedTotalMemoryMB() const;
    int GetMemoryLimitMB() const override;
    int GetAverageMemoryMB() const override;
    bool IsTheIndexReady(int index, double frac) const;
    bool IsTheIndexLoaded(int index) const;

    /// Wait for reader and interpolator; paints may run meanwhile.
    void WaitThreadFinish();
    void OpenDataFileCommand(const wxString& path) override;
    void OpenDataFile(const wxString& path);
    /// Bring work area, active area and current frame into the film, whatever they were.
    void CheckAreas();
    void CloseDataCommand();
    /// All filters go, and with them the steps of the undo list, which may know them.
    void ClearFilters();
    void CloseData();

    // clsMainSelect.cpp
    /// The item of a click, by its name there.
    void SelectPicked(int name);
    /// The selected object of views, lists and time lines alike; null: none.
    void SelectObject(SceneObj_cls* pObject);
    void SelectObject(int id, int sub);
    /// A light of this name is the one that the dialog shows; other names change nothing.
    void ThisObjectIsSelected(int id);
    /// This filter alone, null none. `bDeselectObject`: objects that aren't filters lose the selection.
    void SelectFilter(FilterBase_cls* pFilter, bool bDeselectObject);
    void SelectFilterByHittest(int id, bool bDeselectObject);

    // clsMainParams.cpp
    /// One step back or forward; an edit that a hand still holds ends first.
    void Undo();
    void Redo();
    /// What a hand still holds becomes a step.
    void EndGestures();
    /// Also when the edit that a hand still holds would be the first step.
    bool IsUndoable() const;
    /// Let curves and clock reach what they need of the program.
    void LinkParamHooks();
    /// The living curve of this identifier, null when nobody knows it.
    Parameters_cls* GetPCParamFromID(const wxString& id);

    /// Full: a project. Else what the configure file holds. Written beside and renamed; false on failure,
    /// and then the old file is whole.
    bool SaveProjectFile(const wxString& path, bool bFull);
    void ReadProjectFile(const wxString& path);
    /// The text of a project; false, told to the user, when it can't be had. Changes nothing.
    bool LoadProjectText(const wxString& path, std::wstring* pText);
    /// Take over the settings of such a text. `folder` is where data that moved with it are looked for.
    void ReadProjectText(const std::wstring& text, const wxString& folder, bool bConfigure);
    /// Writes the configure file; quiet when that can't be done.
    void QuitProcess();
    /// What is there now, saved or not, as a project's bytes.
    std::string MakeProjectText();
    /// The folder of the project that a recovery project was made from.
    static wxString GetFolderOfRecovered(const std::wstring& text);
    /// Keep what can be kept: the program ends without being asked. Doesn't touch the display.
    void LastWords();
    void NoteOpenedData(const wxString& path) override;
    void OpenColorCurveDialog();
    /// Debug aid: radius, type and value of the previous snapshot into the current one.
    void Special();

    DrawOption_cls* mpCDrawOption = nullptr;
    FilterLists_cls* mpCFilters = nullptr;
    Exposure_cls* mpCExposure = nullptr;
    Information_cls* mpCInformation = nullptr;
    ParticleWatch_cls* mpCParticles = nullptr;
    Overlay_cls* mpCOverlay = nullptr;
    PDataSeqCtrl_cls* mpCPDataSeqCtrl = nullptr;
    PeriodicBoundary_cls* mpCPeriodicBoundary = nullptr;
    DataLoader_cls* mpCDataLoader = nullptr;
    DataExporter_cls* mpCDataExporter = nullptr;
    CameraPath_cls* mpCCameraPath = nullptr;
    AnchorPath_cls* mpCAnchorPath = nullptr;
    LightSRCCtrl_cls* mpCLightSRCCtrl = nullptr;
    StereoGram_cls* mpCStereoGram = nullptr;
    /// Folder "Camera Path" of the time line: the curves of camera and anchor that files keep.
    ParamGroup_cls* mpCParamGroupCameraPath = nullptr;
    TimeCtrl_cls* mpCTimeCtrl = nullptr;
    ImgSequence_cls* mpCImgSequence = nullptr;
    PovRayCtrl_cls* mpCPovRayCtrl = nullptr;
    ColorCurveCtrl_cls* mpCColorCurveCtrl = nullptr; ///< the colour curve editor
    ParamGUICtrl_cls* mpCParamGUICtrl = nullptr;     ///< the time lines, of the main frame
    Scene_cls* mpCScene = nullptr;
    CameraPathCtrl_cls* mpCCameraPathCtrl =
        nullptr; ///< dialog of views and camera; null until there are views
    TexPropertyCtrl_cls* mpCTexPropertyCtrl = nullptr; ///< the texture dialog
    FrameMain_cls* mpCFrameMain = nullptr;             ///< wxWidgets destroys windows
    RecentFiles_cls* mpCRecentFiles = nullptr;
    Recovery_cls* mpCRecovery = nullptr;
    Recorder_cls* mpCRecorder = nullptr; ///< null without a window
    wxString mStrExeDir;                 ///< directory of the executable, no trailing slash
    unsigned long mPid = 0;
    int mDisplayWidth = 0;
    int mDisplayHeight = 0;

private:
    void UnlinkParamHooks();
    void MakeCameraPathGroup();
    void MakeTimeLines();
    void LinkSelection();
    wxString SerializeAll(bool bFull);
};
