// POV-Ray: where its files stand and how they are named, what is in them besides the scene, and the pictures
// that are made of them one after the other. The scene's text and the playing of the film come from above.
#pragma once

#include <vector>

#include <wx/string.h>

#include "COMMON/clsDialogControl.h"
#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "POVRAY/TEXT/PovTextOptions.h"
#include "POVRAY/clsPovAdvanced.h"
#include "POVRAY/clsPovFormat.h"
#include "POVRAY/clsPovPhotons.h"
#include "POVRAY/clsPovRadiosity.h"
#include "POVRAY/clsPovRender.h"

class PovRayCtrl_cls : public DialogControl_cls {
public:
    enum FileKind : unsigned { FILE_SNAP = 0, FILE_ANIM, FILE_COMMON_SCENE };

    PovRayCtrl_cls();
    ~PovRayCtrl_cls() override;

    /// All settings of the dialog; paths and names stay.
    void SetToDefault();
    /// Before a project is read: what it doesn't speak of is as it was before there were such settings.
    void ResetOwnSettings();
    wxString Serialize();
    wxString SerializeForConfigure() { return mConfList.SerializeAll(); }
    void ReadStrLine(const wxString& line);

    /// Name of a file without its ending; of kind FILE_COMMON_SCENE with it, and without a folder unless
    /// files are named with theirs. `eye`: an Eye. `number` -1: the next one's.
    wxString GetFileStr(unsigned kind, unsigned eye, int number) const;
    /// The working directory and "/", or "./".
    wxString GetWorkingDirWithSep(bool bAbsolute) const;
    /// How a scene in the working directory names another file.
    wxString GetStrRelativePath(const wxString& path) const;
    /// Have the working directory made where it isn't there. Empty on success, else why not.
    wxString MakeWorkingDir() const;
    /// Does this kind's pattern have one number, and nothing else in its place?
    bool HasNumber(unsigned kind) const;

    PovTextOptions_st GetTextOptions() const;
    /// The global settings of a scene.
    wxString GetStrPovGlobal() const;
    wxString GetStrPovIni(const wxString& iniPath) const;
    /// False, told to the user, when the file can't be written.
    bool OutputPovRayIni(const wxString& iniPath) const;
    /// The words that a scene's .ini is rendered with, as a shell would be given them.
    wxString GetPovRayCommand(const wxString& base) const;

    unsigned GetRegionType() const { return mCRender.mRegion.mValue; }
    int GetRegionInit() const { return mCRender.mCustomMin.mValue; }
    int GetRegionFin() const { return mCRender.mCustomMax.mValue; }

    PovRadiosity_cls mCRadiosity;
    PovRender_cls mCRender;
    PovPhotons_cls mCPhotons;
    PovFormat_cls mCFormat;
    PovAdvanced_cls mCAdvanced;

    ConfItemSTR_cls mPathPovRay;
    ConfItemSTR_cls mPathPovWork;
    ConfItemSTR_cls mFilePovSnap;
    ConfItemSTR_cls mFilePovAnim;
    ConfItemUINT_cls mPovTweaks; ///< kept for who wrote it
    ConfItemBOOL_cls mUseCommonSceneFile;
    ConfItemINT_cls mDigits; ///< decimals of coordinates; 0: as many as the data need
    ConfItemBOOL_cls mColorByParticle;
    ConfItemBOOL_cls mGroupMaterials;
    ConfItemBOOL_cls mLikeView;

    int mSnapNumber = 0;     ///< of the next still
    int mAnimInitNumber = 0; ///< of an animation's first frame
    int mAnimNumber = 0;     ///< of the next frame of an animation
    bool mbCommonSceneWritten = false;

private:
    wxString GetWorkingDir() const;

    ConfItemList_cls mConfList;     ///< of the configure file
    ConfItemList_cls mConfListFile; ///< of names
    ConfItemList_cls mConfListOwn;
};
