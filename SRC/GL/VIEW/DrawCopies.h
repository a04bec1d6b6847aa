// Draws the same in each cell that a Copy filter has.
#pragma once

#include <functional>

class FilterCopy_cls;

/// Calls `draw` for each of `number` copies with the copy's shift in the model-view matrix; without a filter
/// once, where things are. Nothing of what is drawn is kept for the copies. `cost` is what one copy costs the
/// slowest OpenGL, nanoseconds: in between the window may breathe and the user may stop it, which stops
/// further copies, too. Needs a current context.
void DrawCopies(const FilterCopy_cls* pCopy, long long number, float cost,
                const std::function<void(long long copy)>& draw);
