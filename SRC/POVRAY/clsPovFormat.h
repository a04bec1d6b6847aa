// Size and format of the pictures that POV-Ray makes, and how it makes their edges smooth.
#pragma once

#include <vector>

#include "POVRAY/clsPovSettings.h"

/// What an .ini file makes of its scene.
struct PovPicture_st {
    wxString mEnding; ///< with its dot
    int mW = 0;       ///< pixels
    int mH = 0;
};

class PovFormat_cls : public PovSettings_cls {
public:
    static constexpr int kMaxSize = 16384; ///< pixels of a side

    PovFormat_cls();

    void SetToDefault() override;
    /// Their lines of an .ini file, which has this path or will have it. With `bAbsolute` it names scene and
    /// picture with their folder.
    wxString GetStrPovFormat(const wxString& iniPath, bool bAbsolute) const;
    /// Can POV-Ray read such a path in an .ini file? Of letters it knows those of English alone.
    static bool IsReadableName(const wxString& path);

    /// Names of all output formats, in their order.
    static std::vector<wxString> GetFormatNames();
    /// Why POV-Ray as it is today would refuse the chosen format; empty where it wouldn't.
    wxString GetRefusal() const;
    /// What POV-Ray puts behind a picture's name, with its dot.
    wxString GetPictureEnding() const;
    PovPicture_st GetPicture() const { return {GetPictureEnding(), mWidth.mValue, mHeight.mValue}; }
    /// Can such pictures show what is behind them?
    bool HasAlpha() const;

    ConfItemUINT_cls mOutputFormat; ///< index in the table of formats
    ConfItemINT_cls mWidth;         ///< pixels
    ConfItemINT_cls mHeight;
    ConfItemBOOL_cls mFileAbsolute; ///< files name each other with their folders
    ConfItemBOOL_cls mAntialias;
    ConfItemBOOL_cls mDisplay; ///< a window shows the picture while it comes
    ConfItemBOOL_cls mPauseWhenDone;
    ConfItemBOOL_cls mJitter;
    ConfItemBOOL_cls mOutputAlpha;
    ConfItemFLOAT_cls mAntiAliasThreshold;
    ConfItemFLOAT_cls mJitterAmount;
    ConfItemINT_cls mAntiAliasDepth;
    ConfItemBOOL_cls mFastColoring;   ///< one texture an object instead of the average of three
    ConfItemUINT_cls mBoundingMethod; ///< 0 POV-Ray's own, 1 binary partitioning

private:
    void Repair() override;
};
