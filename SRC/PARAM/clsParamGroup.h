// The curves of one animated setting: a colour, a position, a number. Objects own one group a setting.
#pragma once

#include <istream>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "PARAM/clsParameters.h"

class ParamGUICtrl_cls;
class ParametersPanel_cls;
class SceneObj_cls;

/// A group of dimension 0 is a folder: it has no curves of its own, only children. Positions and
/// resolutions are those of Parameters_cls. Main thread only.
class ParamGroup_cls {
public:
    static constexpr double kCurrent = Parameters_cls::kCurrent;
    static constexpr double kNoValue = -9999.0; ///< for InsertKey: the curve's own value

    /// `pSuffixes`: one a dimension, the curves' short names. `updateBit`: what an edit makes stale.
    ParamGroup_cls(const wxString& name, int dimension, const wxString* pSuffixes, long long updateBit,
                   bool bTimeDepend);
    ParamGroup_cls(const ParamGroup_cls&) = delete;
    ParamGroup_cls& operator=(const ParamGroup_cls&) = delete;

    int GetDimension() const { return int(mVParams.size()); }

    /// One value a dimension into `pOut`. At exactly kCurrent the cached values, else the curves are
    /// evaluated. Does not allocate.
    void GetInterpolatedValue(double* pOut, double doubleIndex, double resolution);

    // Editing: one step each.
    /// A key in every curve as soon as one of the values is new, or anyway with `bForce`.
    void SetKeyFrame(const double* pValues, bool bForce, double doubleIndex);
    /// Keys for the cached values that differ from their curve; no step around them.
    void SetKeyFrameIfChanged(double doubleIndex);
    /// `dim` -1: every curve, at its own value.
    void InsertKey(int dim, double doubleIndex, double value);
    void SetTimeDependent(bool bTimeDepend);
    void Flip();
    /// Take the curves of a group of the same dimension.
    void CopyFromP(ParamGroup_cls* pSrc);
    /// Take names, flags and curves; no step.
    void CopyParamGroupFromP(const ParamGroup_cls* pSrc);
    /// The first n curves move down by one, the first becomes the n-th.
    void Swap(int n);

    /// In the identifiers of the group, its curves and all children.
    void ReplaceID(const wxString& from, const wxString& to);
    /// Searched through all children; null when there is none.
    Parameters_cls* GetPCParamFromID(const wxString& id);

    /// All dimensions in scene language.
    wxString GetStrExpression() const;
    void Export() const; ///< puts that on the clipboard
    wxString Serialize();
    wxString SerializeChilds();
    /// True when the line was this group's first one and its block was read.
    bool ReadStrLine(std::wistream& stream, const wxString& line);

    std::vector<Parameters_cls> mVParams; ///< never resized: commands point to them
    std::vector<ParametersPanel_cls*> mVpCPanels;
    std::vector<ParamGroup_cls*> mVpCChilds; ///< of a folder; not owned
    wxString mName;                          ///< the key of the text form, never changes
    wxString mID;
    ParamGUICtrl_cls* mpCParamGUICtrl = nullptr;
    SceneObj_cls* mpCSceneObj = nullptr; ///< the object that the group animates
    bool mbFolder;
    bool mbOpen = true;
    bool mbLinked = true; ///< key edits on one dimension act on all
    bool mbVisible = true;
    bool mbShy = false;             ///< hidden in the time line's shy mode
    double* mpKeyDlgEase = nullptr; ///< ease factors, while the key dialog is open
    int mKeyDlgType = 0;
    int mKeyDlgTypeOld = 0;
    ConfItemList_cls mConfList;
    ConfItemINT_cls mDimension;
};
