// Which frames of the film an animation for POV-Ray is made of.
#pragma once

#include "POVRAY/clsPovSettings.h"

class PovRender_cls : public PovSettings_cls {
public:
    /// The numbers stand in projects.
    enum Region { REGION_WORK_AREA = 0, REGION_ALL, REGION_CUSTOM };

    PovRender_cls();
    void SetToDefault() override;

    ConfItemUINT_cls mRegion; ///< a Region
    ConfItemINT_cls mCustomMin;
    ConfItemINT_cls mCustomMax; ///< the last frame itself

private:
    void Repair() override;
};
