// The shadows that spheres throw, as closed volumes (ShadowShape_st). They go out as instances of one
// cylinder, into the stencil that ShadowStencil_cls has set up. Where they are many and too small for their
// sides to be told, each pixel is looked up among them instead, which takes a small part of the time.
#pragma once

#include <array>
#include <optional>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"

#include "GL/DRAW/ShadowShape.h"
#include "GL/DRAW/clsShadowLookup.h"

class ShadowStencil_cls;

/// Of files that don't hold it the default is the value, and the default isn't written.
class ConfItemOwnFLOAT_cls final : public ConfScalar_cls<float, CONFITEM_FLOAT> {
public:
    wxString Serialize() override {
        return GetItemStr() == mStrDefault ? wxString() : ConfScalar_cls::Serialize();
    }
    wxString mStrDefault;
};

class ShadowVolume_cls {
public:
    /// What all volumes have in common; projects keep it.
    struct Settings_st {
        Settings_st();
        ConfItemList_cls mConfList;
        ConfItemINT_cls mQuality;       ///< 0 to 2: at most 8, 16 or 32 sides
        ConfItemFLOAT_cls mLength;      ///< of a shadow, radii of its sphere
        ConfItemOwnFLOAT_cls mDarkness; ///< 0 to 1: share of the light that doesn't come through
    };
    static constexpr float kLongest = 1e6f;

    static Settings_st& GetSettings();
    static void SetToDefault();
    static void ReadStrLineStaticMember(const wxString& line);
    static wxString SerializeStaticMember() { return GetSettings().mConfList.SerializeAll(); }
    /// As drawing takes them, whatever files say.
    static int GetQuality();
    static float GetLength();
    static float GetDarkness();

    /// `pLight` is the light in eye coordinates: where it comes from and 0, or its place and 1. The matrices
    /// in use are those of the spheres. A place that makes the spheres flat gives no shadows.
    /// Shadows begin `start` radii behind the circle on which the light touches a sphere.
    ShadowVolume_cls(const float* pLight, float start, ShadowStencil_cls& stencil);
    ~ShadowVolume_cls();
    ShadowVolume_cls(const ShadowVolume_cls&) = delete;
    ShadowVolume_cls& operator=(const ShadowVolume_cls&) = delete;

    /// Where the shadows of spheres of this quality begin. On a mesh light reaches as far behind the circle
    /// as its triangles, whose corners before it are lit.
    static float GetStart(unsigned quality, bool bExact);
    /// A sphere's shadow; one that holds the light throws none. Returns the cost for DrawProgress_cls.
    float Add(const float* pPos, float radius);
    /// Draw what has been gathered.
    void Flush();

private:
    static constexpr int kForms = 5; ///< numbers of sides
    using Ends_st = ShadowShape_st::Ends_st;
    struct Batch_st {
        std::vector<float> mData;
        int mCount = 0;
    };

    void BeginShader();
    bool GetBounds(const Ends_st& ends, float* pBounds, float* pPixels) const;
    int GetForm(float pixels) const;
    float GetCost(int form, const float* pBounds) const;
    void AddVolume(const float* pPos, float radius, int form, const float* pBounds);
    void AddVolume(const float* pBall);
    void FlushLookup();
    void FlushForms();
    void FlushForm(int form);
    void DrawInstances(int form);
    void DrawPlain(int form);

    ShadowStencil_cls& mStencil;
    bool mbMade = false;
    bool mbShader = false;
    bool mbInstances = false; ///< else corners are worked out here
    ShadowShape_st mShape;
    double mModel[16]; ///< matrix from the spheres to the eye
    int mFinest;
    float mClip[3][4];        ///< rows that lead to x, y and w of the screen
    float mWide[3];           ///< lengths of their first three numbers
    float mHalfScreen = 1.0f; ///< pixels
    std::array<Batch_st, kForms> mBatches;
    std::vector<float> mTemplate; ///< corners of the form drawn
    std::vector<float> mCorners;  ///< of many volumes
    std::optional<ShadowLookup_cls> mLookup;
    float mLookupBounds[4];    ///< of what is gathered for it
    float mLookupSaves = 0.0f; ///< what that costs as volumes, ns
};
