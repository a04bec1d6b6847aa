// Panels by the kind of filter, and rows that several kinds have.
#pragma once

#include <memory>

#include "WIDGET/NumberText.h"

class FilterBase_cls;
class FilterData_cls;
class FilterGUI_cls;
class FilterPanelPain_cls;
class MultiInputPanel_cls;
class wxString;

std::unique_ptr<FilterGUI_cls> MakeFilterGUI(FilterBase_cls& filter, FilterPanelPain_cls& pane);

/// Animated place, rotation in degrees and scale, a row each.
void SetMNumBasic(MultiInputPanel_cls& panel, FilterData_cls& data);
/// Ask for a file in the place of `*pPath`; a step of the undo list.
void AskForPath(MultiInputPanel_cls& panel, int row, const FilterData_cls& data, wxString* pPath,
                const wxString& title, const wxString& wildcard);
