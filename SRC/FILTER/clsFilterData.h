// The settings of a filter: what projects keep, key frames included.
#pragma once

#include <istream>
#include <memory>
#include <vector>

#include "SCENE/clsSceneObj.h"

class ColorCurve_cls;
class SceneObjTexture_cls;

/// What ChangeCustomName makes of the kinds' words in a name.
enum NameWords { NAME_TRANSLATED = 0, NAME_PLAIN = 1 };

/// Stands for the number in a name that is to be given by the list.
extern const wxString kFilterNumber;
/// A path that is none.
extern const wxString kNoPath;

class FilterData_cls : public SceneObj_cls {
public:
    ~FilterData_cls() override;

    wxString Serialize();
    /// What there was no reading of.
    struct Unread_st {
        int mLines = 0;     ///< nobody knows
        bool mbEnd = false; ///< the block was cut
    };
    /// From behind the type to the end of the filter's block; a block that was cut ends where another begins,
    /// and that line stays in the stream.
    Unread_st ReadBlock(std::wistream& stream);
    /// The curves' identifiers, which begin with the word "Filter", begin with this name instead.
    void ReplaceParameterName(const wxString& name);
    void ChangeCustomName(NameWords words);
    /// What a filter made by the user begins with, before it is in a list; no step.
    void InitNew();
    bool TakesMode(int) const override { return true; }
    void GetGuideAxes(int mode, double out[3][3]) const override;
    wxString GetShownName() const override { return mCName.mStrValue; }
    /// Everything animated of it: the groups of its line on the time lines.
    const std::vector<ParamGroup_cls*>& GetGroups() const { return mpCObjectGroup->mVpCChilds; }

    /// The paths among the items, which projects have as they lead from their folder.
    virtual std::vector<ConfItemSTR_cls*> GetPaths() { return {}; }
    /// The look of its surface; null where it has none.
    virtual SceneObjTexture_cls* GetTexture() { return nullptr; }

    wxString mStrFolder;             ///< of the project that it was read from; empty for a new one
    int mLastFrame = 0;              ///< whose files were looked for last
    ConfItemList_cls mCConfItemList; ///< kinds add their own behind the first two
    ConfItemBOOL_cls mCValid;        ///< acts at all
    ConfItemSTR_cls mCName;          ///< unique in its list; begins the curves' identifiers
    std::vector<std::unique_ptr<ColorCurve_cls>> mvpCColorCurve;

protected:
    /// Without `bShowOnTimeLine` place, rotation and scale are neither shown there nor saved.
    FilterData_cls(bool bShowOnTimeLine, bool bWithParams);
    /// `color` as text: red, green, blue, alpha.
    ColorCurve_cls* AddColorCurve(const wxString& id, const wxString& color);
    /// An item that came later: projects have its line only where it isn't as it is at first, so that those
    /// without it stay as they were.
    void AddOptional(ConfItem_cls* pItem, const wxString& key, const wxString& value);
    /// One more animated group, behind the others on the time line and in files. The caller owns it.
    std::unique_ptr<ParamGroup_cls> MakeGroup(const wxString& name, int dimension, const wxString* pSuffixes);

private:
    struct Optional_st {
        ConfItem_cls* mpItem;
        wxString mStrFirst; ///< its line at first
    };

    bool ReadItem(const wxString& line);
    bool ReadGroupOrCurve(std::wistream& stream, const wxString& line);

    std::vector<Optional_st> mVOptional;
};
