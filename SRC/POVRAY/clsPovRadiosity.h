// Radiosity: light that matt surfaces throw on each other. What the first look at a scene finds of it (the
// pretrace) can be kept in a file for other frames.
#pragma once

#include "POVRAY/clsPovSettings.h"

class PovRadiosity_cls : public PovSettings_cls {
public:
    /// The numbers stand in projects.
    enum Type { TYPE_NONE = 0, TYPE_PRETRACE, TYPE_FULL };
    enum Reuse { REUSE_NONE = 0, REUSE_SAVE, REUSE_LOAD };

    PovRadiosity_cls();
    void SetToDefault() override;
    /// Its block of a scene's global settings; empty without radiosity.
    wxString GetStrPovGlobal() const;
    /// Its lines of an .ini file; empty without radiosity. `folder` is where scenes stand, with its
    /// separator; with `bAbsolute` files are named with it.
    wxString GetStrPovIni(const wxString& folder, bool bAbsolute) const;
    /// The same for a film that has a pretrace file of its own in that folder: `reuse`, a Reuse, says what
    /// its frame does with it.
    wxString GetStrPovIniOfFilm(const wxString& file, unsigned reuse) const;
    /// Can the pretrace file in this folder be read or written, as the settings want it?
    bool IsRadiosityFormatOK(const wxString& folder) const;
    /// Why POV-Ray wouldn't read the file's name; empty where it would.
    wxString GetNameProblem() const;
    /// The file's name without its folder; empty when there is none.
    wxString GetFileName() const;

    ConfItemUINT_cls mType;   ///< a Type
    ConfItemUINT_cls mReuse;  ///< a Reuse
    ConfItemSTR_cls mPath;    ///< the pretrace file
    ConfItemINT_cls mCount;   ///< rays from a point
    ConfItemFLOAT_cls mError; ///< smaller is finer
    ConfItemFLOAT_cls mMinimumReuse;
    ConfItemINT_cls mRecursionLimit;
    ConfItemINT_cls mNearestCount;
    ConfItemFLOAT_cls mTraceStart; ///< of the pretrace, shares of the picture
    ConfItemFLOAT_cls mTraceEnd;
    ConfItemBOOL_cls mZeroAmbient; ///< surfaces have no light of their own
    ConfItemBOOL_cls mMedia;
    ConfItemBOOL_cls mNormal;
    ConfItemBOOL_cls mHighReproduce; ///< the same picture at every run

private:
    void Repair() override;
    wxString GetStrIni(const wxString& file, unsigned reuse) const;
};
