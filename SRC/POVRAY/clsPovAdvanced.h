// Settings of POV-Ray that few touch.
#pragma once

#include "POVRAY/clsPovSettings.h"

class PovAdvanced_cls : public PovSettings_cls {
public:
    static constexpr int kMaxTraceLevel = 256; ///< what POV-Ray takes

    PovAdvanced_cls();
    void SetToDefault() override;
    /// Its line of a scene's global settings.
    wxString GetStrPovGlobal() const;

    ConfItemINT_cls mMaxTraceLevel; ///< how often a ray is reflected or bent at most

private:
    void Repair() override;
};
