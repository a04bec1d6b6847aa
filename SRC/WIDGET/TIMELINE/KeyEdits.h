// What the time line does to keys, for several curves at once. Each operation is one step of the undo list,
// or direct while command making is off; one that changes nothing leaves no step. GraphEdit.h has those that
// the graph knows too.
#pragma once

#include <vector>

#include <wx/string.h>

class ParamGroup_cls;
class Parameters_cls;

using Curves = std::vector<Parameters_cls*>;

/// The curves of a group and of all its children.
Curves CurvesOf(ParamGroup_cls& group);
/// The curve, or all of its group while that is linked.
Curves LinkedCurves(Parameters_cls& curve);
/// The linked companions of all of them, each once.
Curves WithLinked(const Curves& curves);

/// A curve shows its keys while it depends on time.
bool IsAnimated(const Parameters_cls& curve);
/// The key less than half a step from a position; -1 none. Constant curves have none.
int KeyAt(const Parameters_cls& curve, double doubleIndex);
bool HasKeyAt(const Curves& curves, double doubleIndex);
/// The nearest key before (dir -1) or behind (1) a position, over all the curves; the position itself if
/// there is none.
double NeighbourKey(const Curves& curves, double doubleIndex, int dir);

/// Places of all their keys, ascending.
std::vector<double> KeyPlaces(const Curves& curves);

enum class SelectMode { SET, ADD, TOGGLE };
void DeselectKeys(const Curves& curves);
/// The keys within a stretch, bounds included. SET deselects all others of these curves.
void SelectKeys(const Curves& curves, double from, double to, SelectMode mode);
/// Those with a selected key.
Curves WithSelectedKeys(const Curves& curves);
/// Kind that all selected keys share; -1 none or several.
int CommonKind(const Curves& curves);

/// A key in each curve that has none there, on the curve as it runs; constant curves become animated.
void InsertKeys(const Curves& curves, double doubleIndex);
/// A curve whose last key goes becomes constant, at the value on show.
void RemoveKeys(const Curves& curves, double doubleIndex);
/// Removes the keys there if every curve has one, else completes them.
void ToggleKeys(const Curves& curves, double doubleIndex);
void SetTimeDependent(const Curves& curves, bool bTimeDepend);
/// The value at the current time: a key there keeps kind and tangents; a constant stays one. Linked curves
/// get keys at the same place.
void SetValueNow(Parameters_cls& curve, double value);
/// The value on show.
double ValueNow(const Parameters_cls& curve);
void FlipCurves(const Curves& curves);
/// Selected keys as text; empty when none is selected.
wxString CopiedKeys(const Curves& curves);
/// Such text back: its first key comes to a position, the others keep their distances; keys beyond the film's
/// ends are left out, keys at the same places replaced. Each copied curve goes to the curve of its name; a
/// single one goes to all, whatever their names. The new keys alone are selected. False when nothing came of
/// it.
bool PasteKeys(const Curves& curves, const wxString& text, double doubleIndex);
