// Taking over what a guess found: the layout and the offers that are ticked, as one step that undo takes
// back.
#pragma once

#include <array>
#include <functional>
#include <optional>
#include <vector>

#include "PDATA/GuessOffer.h"

class DataLoader_cls;

/// What offers change in the looks of particles.
struct GuessLooks_st {
    std::optional<unsigned> mClassify; ///< 0 the first attributes for all, 1 by type
    bool mbColors = false;             ///< the four classes get the colours of kGuessColors
    std::optional<float> mRadius;      ///< a constant radius of all classes
};

/// Set by the hub at start; an empty one does nothing.
struct GuessHooks_st {
    /// Change the looks by steps of the undo list.
    std::function<void(const GuessLooks_st&)> mApplyLooks;
    /// Layout, loader or box were changed behind the dialogs: show it where it is seen.
    std::function<void()> mShowValues;
};

extern GuessHooks_st GGuessHooks;

/// Data type and lists of the guess, and the ticked offers, in one block of the undo list; no step where
/// nothing changes. The loader lives as long as the list.
void ApplyGuess(DataLoader_cls* pLoader, const GrammarGuess_st& guess,
                const std::vector<GuessOffer_st>& offers);
