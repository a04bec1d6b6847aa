// One of the three ordered lists of filters. Its order is that of its panes and in which filters act.
#pragma once

#include <functional>
#include <istream>
#include <memory>
#include <string>
#include <vector>

#include <wx/string.h>

#include "FILTER/clsFilterBase.h"
#include "GL/BASE/TagObject.h"
#include "GL/DRAW/DrawListFilter.h"

class FilterCopy_cls;
class FilterDataBoxData_cls;
class FilterFog_cls;
class FilterLists_cls;
class FilterPane_cls;
class FilterStick_cls;
class MarkPainter_cls;
class Parameters_cls;
class PeriodicBoundary_cls;
class PovText_cls;
class SceneObjTexture_cls;

/// Positions count from 0. Nobody but its list owns a filter, or the undo list one that was deleted.
class FilterCtrl_cls final : public DrawListFilter_cls {
public:
    FilterCtrl_cls(FilterLists_cls& lists, int index) : mLists(lists), mIndex(index) {}
    ~FilterCtrl_cls() override;
    FilterCtrl_cls(const FilterCtrl_cls&) = delete;
    FilterCtrl_cls& operator=(const FilterCtrl_cls&) = delete;

    FilterLists_cls& GetLists() const { return mLists; }
    int GetIndex() const { return mIndex; }
    int GetCount() const { return int(mlpCFilter.size()); }
    FilterBase_cls* GetPCFilter(int position) const { return mlpCFilter[size_t(position)].get(); }
    FilterBase_cls* GetPCFilter(const wxString& name) const; ///< null when there is none
    Parameters_cls* GetPCParamFromID(const wxString& id) const;

    // The user's edits, a step of the undo list each.
    /// A new filter of this kind at the end, with scale 1. `set` changes its data before it is there.
    void AddFilterCommand(int type, const std::function<void(FilterData_cls&)>& set = nullptr);
    /// The first selected filter; false when there is none.
    bool DeleteSelectedFilter();
    /// The first selected filter that can move so far; false when there is none.
    bool MoveSelectedFilter(int delta);

    // The same without a step.
    /// A new filter, which gets a free name. `position` -1 is the end.
    FilterBase_cls* AddFilter(int type, int position = -1);
    void InsertFilter(std::unique_ptr<FilterBase_cls> pFilter, int position);
    /// The filter leaves list, pane and time lines; the caller has it now.
    std::unique_ptr<FilterBase_cls> TakeFilter(int position);
    void ClearFilters();
    void MoveFilterExe(int position, int delta);

    /// Select this one alone, null none; true when anything changed.
    bool SelectFilter(const FilterBase_cls* pFilter);
    /// The format with the first number that no filter of the list bears in it, 98 the last one tried.
    wxString GetNewName(const wxString& format) const;

    /// The panes' filters from now on; null takes all panels away.
    void SetPane(FilterPane_cls* pPane);
    void UpdateInterpolatedValue(double time);
    void UpdateValuesOnPanel();
    void HideAndShowOnPanel();
    /// To the user, beside the work.
    void Tell(const wxString& text) const;
    void ConnectTexture(SceneObjTexture_cls* pTexture, const wxString& name) const;

    /// The cell of the copies; null: there is none.
    const PeriodicBoundary_cls* GetPCPeriodic() const;

    // What acts.
    FilterDataBoxData_cls* GetPCDataBox() const;        ///< the first valid one, else null
    FilterCopy_cls* GetPCCopy() const;                  ///< the first one, valid or not
    FilterFog_cls* GetPCFog() const;                    ///< the first one, valid or not
    std::vector<FilterStick_cls*> GetVpCSticks() const; ///< valid ones
    /// Is a valid Object or Grid there?
    bool IsObjectExist() const;

    bool IsThinning() const override;
    void Thin(DrawList_t& list, long long particles, const float (*pPos)[3], double time) override;
    bool IsBooleanChangeConstantColor() const override;

    /// The frames of all filters, each known to clicks by its list and its position in that.
    void GLDraw(MarkPainter_cls& painter, double time) const;
    /// What a click knows the filter at a position by: numbers of its list's own, whatever their count.
    int GetPickName(int position) const;
    /// The other way round; -1: it is no name of this list.
    int FindPickName(int name) const;

    // These need a current OpenGL context with the camera in the model-view matrix.
    /// Once a picture: what objects read for snapshot `frame`.
    void PrepareObjects(int frame);
    /// All objects of one pass (FilterObject_cls::GLDrawRealObject).
    void GLDrawRealObject(double time, int lightNumber, bool bPerCopy);
    /// All grids; `pTags` takes their labels.
    void GLDrawRealGrid(double time, Tags* pTags) const;

    // Of a scene for POV-Ray.
    /// The meshes of its objects (FilterObject_cls::AppendPovInclude).
    void AppendPovInclude(std::string* pText, const PovText_cls& pov);
    /// Triangles of those meshes.
    size_t GetPovTriangles() const;
    /// All objects of one pass (FilterObject_cls::GetStrPovRealObject).
    std::string GetStrPovRealObject(double time, bool bPerCopy, const std::string& extra,
                                    const PovText_cls& pov) const;
    std::string GetStrPovRealGrids(double time, const PovText_cls& pov) const;

    wxString Serialize();
    /// Reads this list's block from behind its marker line, `line`. True when it was that.
    bool ReadStrLine(std::wistream& stream, const wxString& line);

private:
    template <class FILTER, class TEST>
    FILTER* FindFirst(FilterType type, TEST test) const;
    void ReadStrLineFilter(std::wistream& stream, std::vector<wxString>* pUnread);
    void TellPanes(FilterBase_cls& filter, int position);

    FilterLists_cls& mLists;
    const int mIndex;
    FilterPane_cls* mpCFilterPanelPain = nullptr;
    std::vector<std::unique_ptr<FilterBase_cls>> mlpCFilter;
};
