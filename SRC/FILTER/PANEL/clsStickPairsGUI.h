// The dialog that makes one stick filter for each pair of particle types.
#pragma once

#include <vector>

#include "FILTER/StickPairs.h"
#include "WIDGET/clsDialogEXKey.h"

class FilterStick_cls;
class MultiInputPanel_cls;

/// Modal. A row a pair: whether it gets a filter, and its distances. "OK" makes them as one step; nothing
/// changes before.
class StickPairsGUI_cls : public wxDialogEXKey {
public:
    /// `types`: those of the present frame, at least one.
    StickPairsGUI_cls(wxWindow* pParent, FilterStick_cls& filter, const std::vector<TypeCount_st>& types);
    MultiInputPanel_cls* GetPCPanel() const { return mpCPanel; }

private:
    wxWindow* MakeTable();

    FilterStick_cls& mFilter;
    std::vector<StickPair_st> mVPairs; ///< fixed in number: fields point at them
    bool mbInPlace = true;
    MultiInputPanel_cls* mpCPanel = nullptr;
};
