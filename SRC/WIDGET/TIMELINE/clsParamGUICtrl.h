// The time lines: a tree of groups and curves on the left, their strips on the right, one row each. It knows
// the groups, which rows stand there, and what is selected; the two windows draw and take the mouse.
#pragma once

#include <functional>
#include <memory>
#include <unordered_map>
#include <vector>

#include <wx/panel.h>

#include "WIDGET/TIMELINE/TimelineLook.h"
#include "WIDGET/TIMELINE/TimelineModel.h"
#include "WIDGET/TIMELINE/clsKeyActions.h"

class GraphPanel_cls;
class ParamGroupGUI_cls;
class ParamStrips_cls;
class ParamTL_cls;
class ParamTree_cls;
class SceneObj_cls;
class TimeCtrl_cls;
class wxScrollBar;

struct TimelineRow {
    ParamGroupGUI_cls* mpCGroup;
    int mDim;   ///< curve of the group, -1 for the group's own row
    int mDepth; ///< in the tree
};

class ParamGUICtrl_cls : public wxPanel {
public:
    ParamGUICtrl_cls(wxWindow* pParent, TimeCtrl_cls* pTime);
    ~ParamGUICtrl_cls() override;

    // Groups. HideAndShow brings the rows in line with changes.
    void AddParamGroup(ParamGroup_cls* pGroup); ///< with its children
    void RemoveParamGroup(ParamGroup_cls* pGroup);
    void FoldGroup(ParamGroup_cls* pGroup, bool bFolded); ///< hide its items
    void ShowGroup(ParamGroup_cls* pGroup, bool bShow);
    void FoldAll(bool bFolded);
    void HideAndShow();      ///< rebuild the rows
    void HideAndShowLater(); ///< when the present event is dealt with: many groups may come and go in one
    void ResizeTL();         ///< have the frame place the lower half again
    void RecheckSize();      ///< place windows and scroll bar
    /// Repaint what shows something else now.
    void RefreshTL();
    /// Frames that hold keys of the rows.
    void CheckSnippingTag(std::vector<bool>* pTags) const;

    // What the curves tell (PARAM/ParamHooks.h).
    void GroupRefresh(ParamGroup_cls* pGroup);
    void StripRead(ParamTL_cls* pStrip);
    void StripTimeDepend(ParamTL_cls* pStrip, bool bTimeDepend);

    // The selection of rows.
    /// Select the groups of an object alone, null none; the argument.
    SceneObj_cls* SelectObject(SceneObj_cls* pObject);
    /// This one alone is selected, whichever rows are.
    void MarkObject(const SceneObj_cls* pObject) const;
    SceneObj_cls* SelectObject(int id, int sub);
    Curves GetSelectedCurves() const;
    void SelectRow(int row, bool bExtend, bool bToggle);
    void DeselectRows();
    bool IsRowSelected(int row) const;

    // Rows, for the two windows.
    const std::vector<TimelineRow>& GetRows() const { return mVRows; }
    RowScale GetRowScale() const;
    void ScrollTo(int top);
    void ScrollBy(int pixels) { ScrollTo(mTop + pixels); }
    /// Curves that an edit in the row acts on: linked ones come along.
    Curves CurvesOfRow(int row) const;
    /// Those that the row draws.
    Curves OwnCurvesOfRow(int row) const;
    Curves AllCurves() const;
    /// Those of the rows that exist, of folded groups too: ruler and jumps from key to key know no others.
    Curves ShownCurves() const;
    bool ToggleFold(int row);
    void SetHoverRow(int row);
    int GetHoverRow() const { return mHoverRow; }
    const TimelineLook& GetLook() const { return mLook; }

    /// Edits of keys by buttons, menus and the keyboard.
    KeyActions_cls& GetKeyActions() { return mKeyActions; }

    // What is shown of the film (clsParamGUICtrlView.cpp).
    void SetShyMode(bool bShy);
    /// The graph of the selected rows in the place of the strips.
    void ShowGraph(bool bShow);
    bool IsGraphShown() const;
    void SetActiveArea(const FrameArea& area);
    void Zoom(double anchor, double factor);
    void ZoomTo(bool bWorkArea);
    /// Keys of the time line; true when it was one.
    bool OnKey(const wxKeyEvent& event);
    void RefreshAll();

    TimeCtrl_cls* GetPCTime() const { return mpCTime; }
    ParamTree_cls* GetPCTree() const { return mpCTree; }
    ParamStrips_cls* GetPCStrips() const { return mpCStrips; }
    GraphPanel_cls* GetPCGraph() const { return mpCGraph; }
    /// Width at the right that the scroll bar takes, pixels.
    int GetBarWidth() const;

    std::function<void()> mOnChanged; ///< selection or keys look different now
    /// The user chose a row of this object, or of none.
    std::function<void(SceneObj_cls*)> mOnObjectChosen;

private:
    ParamGroupGUI_cls* FindGUI(const ParamGroup_cls* pGroup) const;
    void EnsureGUI(ParamGroup_cls* pGroup);
    void DropGUI(const ParamGroup_cls* pGroup);
    void DropGroup(ParamGroup_cls* pGroup); ///< with its children
    void AddRows(ParamGroup_cls* pGroup, int depth);
    void Forget(const ParamGroupGUI_cls* pGUI);
    void SetRowSelected(int row, bool bSelected);
    void UpdateScrollBar();
    void UpdateGraph();
    size_t Signature() const;
    void MoveFocusRow(int by, bool bExtend);

    TimeCtrl_cls* mpCTime;
    KeyActions_cls mKeyActions;
    TimelineLook mLook;
    ParamTree_cls* mpCTree;
    ParamStrips_cls* mpCStrips;
    GraphPanel_cls* mpCGraph;
    wxScrollBar* mpCBar;
    std::vector<ParamGroup_cls*> mVpCRoots; ///< as they were added
    std::vector<std::unique_ptr<ParamGroupGUI_cls>> mVpCGUIs;
    std::unordered_map<const ParamGroup_cls*, ParamGroupGUI_cls*> mGUIOf; ///< the same, by group
    std::vector<TimelineRow> mVRows;
    bool mbResizing = false;   ///< the frame is about to be asked
    bool mbRebuilding = false; ///< the rows are about to be rebuilt
    int mTop = 0;              ///< pixels scrolled away
    int mFocusRow = -1;        ///< the row that was last clicked
    int mHoverRow = -1;
    size_t mShown = 0; ///< signature of what was painted
};
