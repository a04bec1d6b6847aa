// One animatable scalar: a curve of key frames that is edited, with undo, linked to the other curves of its
// group and shown on the time lines. Main thread only.
#pragma once

#include <istream>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItemList.h"
#include "PARAM/clsKeyCurve.h"

class ComParamBase_cls;
class ParamGroup_cls;
class ParamTL_cls;

class Parameters_cls : public KeyCurve_cls {
public:
    /// One all-zero key at 0.0. `id` is unique over the program, `name` the key of the text form.
    Parameters_cls(const wxString& id, const wxString& name, bool bTimeDepend, long long updateBit,
                   ParamGroup_cls* pGroup);
    Parameters_cls(const Parameters_cls& src);
    Parameters_cls& operator=(const Parameters_cls&) = delete;
    ~Parameters_cls();
    /// Take everything but the link to the strip.
    void CopyFromP(const Parameters_cls* pSrc);
    /// Take keys, settings and cached value; who this curve is stays.
    void CopyCurveFromP(const Parameters_cls& src);

    /// False: edits change the keys directly and leave no step in the undo list.
    static bool msbUndoCommandMake;
    /// False for a curve that has been deleted.
    static bool IsAlive(const Parameters_cls* pParam);
    /// No two curves of a run share it, not even at one address.
    unsigned long long GetSerial() const { return mSerial; }

    // Editing, each as a step of the undo list (clsParametersEdit.cpp).
    void InitSet(double value); ///< a single key at 0.0, kind 1
    void InsertKey(double doubleIndex, double value, double d1, double d2);
    void SetChangedValueKey(double doubleIndex, double d1, double d2, double resolution);
    void SetKey(const KeyFrame_cls& key, double resolution);
    void SetKeyToValueAt(KeyFrame_cls* pKey, double doubleIndex) const;
    void SetKeyType(int i, int kind);
    void SetKeyTypeMulti(unsigned kind);
    bool DeleteKey(double doubleIndex, double resolution);
    bool DeleteSelectedKey();
    /// Bit 0: moved; bit 1: it took another key's place and the list shrank.
    int MoveKey(int i, double delta, unsigned frames = kFilmGrid);
    /// Ranges of 0.0, 0.0 are none.
    bool MoveSelectedKeyByXY(double dT, double dV, double resolution, double tMin, double tMax, double vMin,
                             double vMax);
    void RemapKeys(double factor);
    void RemapKeyFrame(int a, int b); ///< positions times a / b, no step
    void Flip();
    void CopyParameterFromP(const Parameters_cls* pSrc);
    void SetTimeDependent(bool bTimeDepend);

    // The same for all curves of the group while it is linked (clsParametersSelect.cpp).
    void InsertKeyQueue(double doubleIndex);
    bool DeleteKeyQueue(double doubleIndex);
    bool SelectKeyFrameQueue(double doubleIndex, double tolerance, bool bQuery, bool bToggle);
    bool SelectKeyFrameRegionQueue(double t0, double t1, double v0, double v1, bool bToggle);
    bool MoveSelectedKeyByXYQueue(double dT, double dV, double resolution, double tMin, double tMax,
                                  double vMin, double vMax);
    void ProcStartDraggingQueue(int x, int y);
    void ProcDraggingQueue(int x, int y);
    void SetRegionOriginQueue(int x, int y);
    void TurnOffDraggingQueue();

    /// A selection of which the strip is told; no step.
    bool SelectKeyFrame(double doubleIndex, double tolerance, bool bQuery, bool bToggle);

    // What the commands do, without a command.
    void ExecCommandSetKey(const KeyFrame_cls& key);
    void ExecCommandOvwtKey(int i, const KeyFrame_cls& key);
    void ExecCommandMoveKey(double from, double to, double resolution);
    void ExecCommandDeleteKey(int i);
    void ExecCommandSetKeys(std::vector<KeyFrame_cls> keys); ///< these in place of all
    void ExecCommandSetKeyType(int i, unsigned kind);
    void ExecCommandSetKeyTypeMulti(const std::vector<int>& indices, const std::vector<unsigned>& kinds);
    void ExecCommandInitSet(double value, double doubleIndex = 0.0);
    void ExecCommandTimeDependent(bool bTimeDepend);
    void RestoreKey(int i, const KeyFrame_cls& key); ///< all but the selection, no sorting

    void GroupRefresh();
    void CheckSnippingTag(std::vector<bool>* pTags) const;
    wxString GetClipboardText() const; ///< the selected keys; empty when there are none
    void CopyKeyFrameToClipBoard() const;
    void PasteKeyFrameFromClipBoard() {} ///< text on the clipboard is for other programs
    wxString Serialize();
    /// True when the line was this curve's first one.
    bool ReadStrLine(std::wistream& stream, const wxString& line);

    ConfItemList_cls mConfList;
    ParamGroup_cls* mpCParamGroup;
    ParamTL_cls* mpCParamTL = nullptr; ///< the strip on the time line
    wxString mID;
    wxString mName;
    long long mUpdateBit;

private:
    void DefineConfList();
    void Perform(ComParamBase_cls* pRedo, ComParamBase_cls* pUndo);
    bool DeleteKeyNumber(int i);
    int MoveKeyTo(int i, double delta, unsigned frames, int* pWhere);
    int ReplaceKeyByMove(int i, int occupant, const KeyFrame_cls& moved);
    bool MoveSelected(double dT, double dV, unsigned frames, bool bTimeFixed);
    bool ForceTimes(double tMin, double tMax, unsigned frames);
    bool ForceValues(double vMin, double vMax);
    void SetValueOfKey(int i, double value);
    static unsigned long long NextSerial();
    void Drag(int step, int x, int y);

    const unsigned long long mSerial = NextSerial();
};
