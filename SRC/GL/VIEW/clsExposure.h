// From the light in the off-screen buffers to the picture: level, gamma, hue and saturation, by one program
// that stands between every buffer and its target.
#pragma once

#include <array>
#include <memory>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "IMAGE/HalfFloat.h"

class ExposureGUI_cls;
class ShaderProgram_cls;
class wxWindow;

class Exposure_cls {
public:
    Exposure_cls();
    ~Exposure_cls();
    Exposure_cls(const Exposure_cls&) = delete;
    Exposure_cls& operator=(const Exposure_cls&) = delete;

    /// Make the program; with a current context. Without its files, or with broken ones, pictures are shown
    /// as they are: the user is told which file is wrong. Later calls do nothing.
    void Initialize();
    bool IsEnabled() const { return mbEnabled; }
    /// What the page says about the program.
    wxString GetStatus() const;

    /// All that is drawn from the bound texture goes through the program until End, if it would change
    /// anything.
    void Begin() const;
    void End() const;
    /// The next pictures add up, each with the weight `alpha` twice: by the program, and by blending with
    /// its alpha.
    void SetAccumulation(float alpha);
    void EndAccumulation();
    float GetAlpha() const { return mAlpha; }
    /// Colours go through unchanged, whatever the page says; weights still count.
    void SetBypassed(bool bBypassed) { mbBypassed = bBypassed; }

    /// Does each channel come out by itself, whatever the others are?
    bool IsByChannel() const { return mHueOffset.mValue % 360 == 0 && mSaturation.mValue == 0; }
    /// The bytes that half floats become in a picture of full weight, which needn't be drawn through the
    /// program then. They are the program's own: all half floats are drawn through it once, when settings
    /// have changed. Null: the plain ones. Needs a current context, and IsByChannel unless `bBypassed`.
    std::shared_ptr<const HalfBytes> GetBytes(bool bBypassed);

    /// Pictures come out as they went in.
    bool IsNeutral() const;
    /// Back to that; one step of the undo list.
    void SetToDefault();
    wxWindow* InstantiateGUI(wxWindow* pParent);
    void ReadStrLine(const wxString& line) { mConfList.ReadStrLineAll(line); }
    wxString Serialize() { return mConfList.SerializeAll(); }

    ExposureGUI_cls* mpCGUI = nullptr; ///< owned by its notebook
    ConfItemList_cls mConfList;
    ConfItemDOUBLEARRAY_cls mLevel; ///< light that becomes black, and full brightness
    ConfItemFLOAT_cls mGamma;       ///< above 0
    ConfItemINT_cls mHueOffset;     ///< degrees
    ConfItemINT_cls mSaturation;    ///< percent, -100 to 100

private:
    using Levels = std::array<double, 3>; ///< both levels and gamma
    struct Bytes_st {
        Levels mLevels{};
        std::shared_ptr<const HalfBytes> mBytes;
    };
    bool MakeProgram();
    void SetColors() const;
    std::shared_ptr<const HalfBytes> FindBytes() const;

    bool mbBypassed = false;
    bool mbInitialized = false;
    bool mbEnabled = false;
    float mAlpha = 1.0f;
    bool mbBlendMode = false; ///< steps of a motion blur are added up
    wxString mStrProblem;
    std::unique_ptr<ShaderProgram_cls> mpCProgram;
    Bytes_st mBytes[2]; ///< found last: with the settings, and bypassed
    int mLocation[8];   ///< of the uniforms
};
