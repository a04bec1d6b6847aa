// A frame that a view has just drawn as a scene file for POV-Ray: camera, lights, fog, particles, sticks,
// objects and grids, each written by its owner and put together here.
#pragma once

#include <cstdint>
#include <memory>
#include <string>

#include <wx/string.h>

#include "POVRAY/TEXT/clsPovText.h"

class FilterCopy_cls;
class FilterDataBoxData_cls;
class FilterLists_cls;
class MainGLCanvas_cls;
class Main_cls;
class PovParticles_cls;
class SnapData_cls;
struct PovCamera_st;

/// Bytes of memory that a renderer is thought to have; 0: as many as the machine has. Tests set it.
extern double GPovMachineBytes;

/// For one frame, right behind its picture.
class PovScene_cls {
public:
    /// `pCanvas`: the view that has drawn; null: the one that pictures are made of.
    explicit PovScene_cls(Main_cls& main, MainGLCanvas_cls* pCanvas = nullptr);
    ~PovScene_cls();
    PovScene_cls(const PovScene_cls&) = delete;
    PovScene_cls& operator=(const PovScene_cls&) = delete;

    /// Write the frame to `povPath`. Data of a sequence of one snapshot go to `commonScenePath`, unless that
    /// is there already (PovRayCtrl_cls::mbCommonSceneWritten), and the scene includes it by `includeName`;
    /// but where this frame shows them otherwise than that file does, they stand in the scene. False, told: a
    /// file can't be written.
    bool OutputPovRayPov(const wxString& povPath, const wxString& includeName,
                         const wxString& commonScenePath);
    /// Does the frame's data stand in a common scene, as far as they are the same as there?
    bool HasCommonScene() const;
    /// Write it, if there is to be one. False, told: it can't be written.
    bool OutputPovRayCommonScene(const wxString& path);
    /// What to ask when POV-Ray won't have the memory for this scene; empty where it will, or where as much
    /// has been allowed before.
    wxString GetMemoryQuestion() const;
    /// Scenes as large as this one may be written.
    void AllowMemory() const;

private:
    void TakeParticles();
    void TakeSticks();
    void TakeCopies();
    double GetPovBytes(double enough) const;
    PovCamera_st GetCamera() const;
    double GetAmbientLight() const;
    std::string GetStrPovLikeView() const;
    std::string GetStrPovBackground() const;
    /// Are the particles written where they stand, not declared?
    bool IsInPlace() const;
    /// Particles and sticks, declared; `pPrint` as PovParticles_cls::Append has it.
    void AppendData(std::string* pText, uint64_t* pPrint) const;
    bool WriteFrame(const wxString& povPath, const wxString& includeName, const wxString& commonScenePath);
    bool AppendDataReference(std::string* pText, const wxString& includeName, const wxString& path);
    std::string GetStrPovCopyLoopRef();
    std::string GetStrPovCopyLoopRefObject();
    /// The same in the DataBox, where there is one.
    template <class WRITE>
    std::string InDataBox(const WRITE& write);

    Main_cls& mMain;
    MainGLCanvas_cls& mCanvas;
    FilterLists_cls& mFilters;
    const double mTime; ///< double index
    PovText_cls mText;
    SnapData_cls* mpCSnap = nullptr;                ///< null: there is no frame of the data
    std::unique_ptr<PovParticles_cls> mpCParticles; ///< null: as above
    int mStickLists = 0;                            ///< that are declared
    double mSticks = 0.0;                           ///< in all of them
    float mStickRadius = 0.0f;                      ///< the smallest of theirs
    const FilterCopy_cls* mpCCopies = nullptr;      ///< null: the data stand there once
    long long mCopies = 1;
};
