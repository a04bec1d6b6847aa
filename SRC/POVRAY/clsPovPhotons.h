// Photons: light that mirrors and glass gather on what lies around them.
#pragma once

#include "POVRAY/clsPovSettings.h"

class PovPhotons_cls : public PovSettings_cls {
public:
    PovPhotons_cls();
    void SetToDefault() override;
    /// Its block of a scene's global settings; empty without photons.
    wxString GetStrPovGlobal() const;
    /// Photons need no line of an .ini file.
    wxString GetStrPovIni() const { return wxString(); }

    ConfItemUINT_cls mType;    ///< 0 none, 1 photons
    ConfItemINT_cls mCount;    ///< thousands
    ConfItemINT_cls mMaxTrace; ///< how often a photon is reflected or bent at most

private:
    void Repair() override;
};
