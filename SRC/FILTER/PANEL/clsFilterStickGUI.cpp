#include "FILTER/PANEL/clsFilterStickGUI.h"

#include <wx/button.h>

#include "FILTER/PANEL/FilterGUIs.h"
#include "FILTER/PANEL/clsFilterPanelPain.h"
#include "FILTER/PANEL/clsStickPairsGUI.h"
#include "FILTER/clsFilterCtrl.h"
#include "FILTER/clsFilterLists.h"
#include "FILTER/clsFilterStick.h"
#include "WIDGET/clsMultiInputPanel.h"

namespace {
constexpr int kShortLabel = 10; // a long button needs the room
} // namespace

void FilterStickGUI_cls::SetMNumPanel(MultiInputPanel_cls& panel) {
    auto& data = static_cast<FilterStickData_cls&>(*GetFilter().mpCData);
    const int row = panel.AddChoice(_("Type/Calc"), &data.mCStickType.mValue, {_("Line"), _("Cylinder")},
                                    _("What stands for a connection"));
    panel.AddChoiceTo(row, &data.mCCalcType.mValue, {_("Load File"), _("Calculate")},
                      _("Pairs from a file, or from the distances of the particles"));
    mRowRadius = panel.AddNumber(_("Radius"), &data.mCStickRadius.mValue, 1, RangeSpec(0, 300, 0.1),
                                 _("Radius of a cylinder, in units of the data"));
    mRowWidth = panel.AddNumber(_("Line Width"), &data.mCStickWidth.mValue, 1, IntegerSpec(1, 20),
                                _("Width of a line in pixels of the picture"));
    SetCalcRows(panel, data);
    panel.BeginColumns(kLabelWidth);
    mRowPath = panel.AddText(_("Path"), &data.mCStickPath.mStrValue,
                             _("File of pairs; %d or %04d in it stands for the frame's number"));
    panel.AddButtonTo(mRowPath, "..", _("Choose a file of pairs"), [&panel, &data, this] {
        AskForPath(panel, mRowPath, data, &data.mCStickPath.mStrValue, _("Select Stick File"),
                   "StickInfo (*.txt;*.bond)|*.txt;*.bond");
    });
}

void FilterStickGUI_cls::SetCalcRows(MultiInputPanel_cls& panel, FilterStickData_cls& data) {
    mRowRule = panel.AddChoice(_("Calculate Type"), &data.mCCritType.mValue,
                               {_("Step"), _("Ramp"), _("Step between A and B")},
                               _("Nearer than A; fading out between A and B; or farther than A and nearer "
                                 "than B"));
    const NumSpec length = RangeSpec(0, 1e30, 0.1);
    mRowDistance = panel.AddNumber(_("Crit A/B"), &data.mCCritA.mValue, 1, length,
                                   _("Distance A, in units of the data"));
    panel.AddNumberTo(mRowDistance, &data.mCCritB.mValue, length, _("Distance B, in units of the data"));
    mRowKeep =
        panel.AddNumber(_("Keep until"), &data.mCKeepUntil.mValue, 1, length,
                        _("A bond that formed breaks at this distance, so that bonds don't flicker in a "
                          "film; followed from the work area's start. 0: at A"));
    mRowTypes = panel.AddChoice(_("Connection"), &data.mCSpecType.mValue,
                                {_("Any Type"), _("Connect between A and B")},
                                _("Whether the types of the particles matter"));
    const NumSpec types = IntegerSpec(0, 255);
    mRowTypeAB = panel.AddNumber(_("Spec A/B"), &data.mCSpecA.mValue, 1, types, _("Type of one end"));
    panel.AddNumberTo(mRowTypeAB, &data.mCSpecB.mValue, types, _("Type of the other end"));
    panel.BeginColumns(kShortLabel);
    mRowAcross = panel.AddCheck("", &data.mCAcross.mValue, _("Across faces"),
                                _("Partners are found through the faces of the periodic box, too, where a "
                                  "CopyBox has the neighbour"));
    mRowPairs = panel.AddButton("", _("One filter a pair of types..."),
                                _("A table of the types in this frame, with distances for each pair"));
    static_cast<wxButton*>(panel.GetField(mRowPairs))->Bind(wxEVT_BUTTON, [this](wxCommandEvent&) {
        // Behind the button's own event: its panel may go for those that are made.
        GetPane().CallAfter([this] { MakePairs(); });
    });
}

void FilterStickGUI_cls::HideAndShowRows(MultiInputPanel_cls& panel) {
    const auto& data = static_cast<const FilterStickData_cls&>(*GetFilter().mpCData);
    const bool bCylinder = data.mCStickType.mValue == FilterStickData_cls::CYLINDER;
    const bool bCalculate = data.mCCalcType.mValue == FilterStickData_cls::CALCULATE;
    panel.ShowRow(mRowRadius, bCylinder);
    panel.ShowRow(mRowWidth, !bCylinder);
    for (const int row : {mRowRule, mRowDistance, mRowTypes, mRowAcross, mRowPairs})
        panel.ShowRow(row, bCalculate);
    panel.ShowRow(mRowKeep, bCalculate && data.mCCritType.mValue == STICK_STEP);
    panel.ShowRow(mRowTypeAB, bCalculate && data.mCSpecType.mValue == 1);
    panel.ShowRow(mRowPath, !bCalculate);
}

void FilterStickGUI_cls::MakePairs() {
    const FilterLists_cls& lists = GetPane().GetPCFilterCtrl().GetLists();
    const std::vector<TypeCount_st> types =
        lists.mHooks.mCountTypes ? lists.mHooks.mCountTypes() : std::vector<TypeCount_st>();
    if (types.empty()) {
        lists.Tell(_("There are no particles in this frame whose types could be paired"));
        return;
    }
    StickPairsGUI_cls dialog(wxGetTopLevelParent(GetWindow()), static_cast<FilterStick_cls&>(GetFilter()),
                             types);
    dialog.ShowModal();
}
