// Pieces of a scene for POV-Ray that several writers share: textures, camera, references.
#pragma once

#include <string>

#include "POVRAY/TEXT/PovTextOptions.h"
#include "POVRAY/TEXT/clsPovSerialize.h"

/// Where a picture is seen from.
struct PovCamera_st {
    double mPos[3] = {0, 0, 0};
    double mFront[3] = {0, 0, -1}; ///< unit length, and mUp
    double mUp[3] = {0, 1, 0};
    double mDistance = 1.0; ///< to the camera's anchor
    double mAngle = 35.0;   ///< degrees, of the picture's height; of a fisheye across all of it
    bool mbFishEye = false;
    bool mbOrtho = false; ///< wins over mbFishEye; the picture's longer side is as long as mDistance
};

/// What one scene is written with. Indents are tabs that begin each line.
class PovText_cls : public PovSerialize_cls {
public:
    static constexpr float kRoughness = 0.024336f;

    explicit PovText_cls(PovTextOptions_st options) : mOptions(std::move(options)) {}

    const PovTextOptions_st& GetOptions() const { return mOptions; }
    /// `usual` decimals where three suffice for the data, and as many more as the data need more.
    int GetDecimals(int usual) const { return usual + mMoreDecimals; }
    /// Data have so many decimals, three at least.
    void SetDecimals(int decimals);

    struct Surface_st {
        float mColors[3][4] = {};     ///< RGBA: ambient, diffuse, specular
        std::string mFinish;          ///< what else stands in the finish
        std::string mNormal;          ///< bumps of the averaged form, which takes none from outside
        float mSpecularFactor = 1.0f; ///< on the fast form's highlight
        bool mbFiltered = false;      ///< light that goes through takes the colour
    };
    /// A texture; with `bFilterAlpha` its opacity is multiplied with the macro's argument FilterAlpha.
    std::string GetStrPovTextureColor(const std::string& indent, const Surface_st& surface,
                                      bool bFilterAlpha = false) const;
    /// One texture whose pigment is the diffuse colour.
    static std::string GetStrPovTextureFastColor(const std::string& indent, const Surface_st& surface,
                                                 bool bFilterAlpha);
    /// The average of three, lit as OpenGL lights a material.
    static std::string GetStrPovTextureGLColor(const std::string& indent, const Surface_st& surface,
                                               bool bFilterAlpha);

    /// The declaration of CameraAngle, across the picture's width.
    std::string GetStrPovCameraAngle(const PovCamera_st& camera) const;
    std::string GetStrPovCamera(const PovCamera_st& camera) const;

    /// What photons do at an object of such opacity and reflection; empty without photons.
    std::string GetStrPovPhotonSetting(double opacity, double reflectMin, double reflectMax,
                                       bool bNoTarget) const;
    /// A reference to something declared, with mStrObjectTransform in it.
    std::string GetStrPovParticleObject(const std::string& name) const;
    /// From the folder of scene files, "/" between folders; with absolute names as it is.
    std::string GetStrRelativePath(const wxString& path) const;

    int mIndentDepth = 0;            ///< of references
    std::string mStrObjectTransform; ///< a line in every reference; empty: none

private:
    PovTextOptions_st mOptions;
    int mMoreDecimals = 0;
};
