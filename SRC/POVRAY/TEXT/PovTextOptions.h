// What the text of a scene for POV-Ray depends on, besides the scene itself.
#pragma once

#include <wx/string.h>

/// The settings of whoever writes a scene file, as its writers need them.
struct PovTextOptions_st {
    bool mbFastColoring = true;     ///< one texture an object instead of the average of three
    int mDigits = 0;                ///< decimals of coordinates and radii; 0: as many as the data need
    bool mbColorByParticle = false; ///< colours of a curve from particle to particle, as the view shows them
    bool mbGroupMaterials = false;  ///< particles of one material share one texture
    bool mbCommonScene = true;      ///< particles that are the same in all frames have a file of their own
    unsigned mPhotonsType = 0;      ///< 0: no photons, and no line about them in objects
    wxString mStrWorkDir;           ///< where scene files stand, without a separator at its end
    bool mbFileAbsolute = false; ///< files are named with their folders, instead of relative to mStrWorkDir
    /// The picture is the view's where plain scenes differ from it: angle of pictures that aren't square,
    /// scale of orthographic ones, background, place and colour of grids.
    bool mbLikeView = false;
};
