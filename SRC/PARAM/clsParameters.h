// One animatable scalar: a curve of key frames over the film's time axis.
//
// A double index is a position on that axis: 0.0 is the first frame, 1.0 the last, so that a longer film
// stretches all animation. A resolution is a distance on it; two positions closer than half of it count
// as the same. Where an operation takes either, exactly -1.0 (kCurrent) means the current position or
// the film's resolution. Main thread only.
#pragma once

#include <istream>
#include <vector>

#include <wx/string.h>

#include "CONFITEM/clsConfItem.h"
#include "CONFITEM/clsConfItemList.h"
#include "PARAM/clsKeyFrame.h"

class ComParamBase_cls;
class ParamGroup_cls;
class ParamTL_cls;

class Parameters_cls {
public:
    static constexpr double kCurrent = -1.0;
    static constexpr unsigned kFilmGrid = unsigned(-1); ///< as a number of grid steps: the film's frames

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

    // The film's time axis. The clock (TIME) alone writes these.
    static void SetFrameNumber(int frames, int stepsPerFrame);
    static int msFrameNumber;
    static int msAnimInterp;
    static double msResolution;
    static double msCurrentDoubleIndex;
    /// False: edits change the keys directly and leave no step in the undo list.
    static bool msbUndoCommandMake;
    static double Time(double doubleIndex) {
        return doubleIndex == kCurrent ? msCurrentDoubleIndex : doubleIndex;
    }
    static double Resolution(double r) { return r == kCurrent ? msResolution : r; }
    /// Nearest multiple of 1/n, halves up; n kFilmGrid: frames of the film.
    static double Quantize(double doubleIndex, unsigned n = kFilmGrid);
    /// False for a curve that has been deleted.
    static bool IsAlive(const Parameters_cls* pParam);
    /// No two curves of a run share it, not even at one address.
    unsigned long long GetSerial() const { return mSerial; }

    // The curve's value. Nothing here allocates.
    /// Also kept as the cached current value.
    double GetInterpolatedValue(double doubleIndex, double resolution = kCurrent) {
        return mCurrentValue = Evaluate(Time(doubleIndex), Resolution(resolution));
    }
    /// The same without the cache; both arguments as they stand.
    double Evaluate(double doubleIndex, double resolution) const;
    /// The curve from `doubleIndex` to the next key, without snapping to keys: the value at doubleIndex + u
    /// is pC[0] + u (pC[1] + u (pC[2] + u pC[3])). For loops that evaluate a curve many times.
    void GetPolynomial(double doubleIndex, double* pC) const;
    /// The same numbers for many ascending times, in one walk over the keys.
    void EvaluateMany(const double* pTimes, size_t count, double resolution, double* pOut) const;
    unsigned int GetInterpTypeFromDouble(double doubleIndex) const;
    double GetHermiteVelocity(int i) const;  ///< tangent in use
    double CalcVelocity(int i, int j) const; ///< slope from key i to key j; 0.0 where there is none
    /// The representative of y1 nearest to y0; on a tie the lower one if y1 > y0, else the upper one.
    static double GetValue1Periodic(double y0, double y1, double period);
    /// The curve in scene language, as a declaration of `name` over the variable t0.
    wxString GetStrExpression(wxString name) const;

    // Finding keys; -1 where there is none.
    const std::vector<KeyFrame_cls>& GetKeys() const { return mVKeys; }
    int GetKeyNumber() const { return int(mVKeys.size()); }
    bool IsKeyFrame(double doubleIndex, double resolution = kCurrent) const;
    int CheckOverWrite(double doubleIndex, double resolution) const; ///< last key strictly near
    /// First key at the position; if none and `bNearest`, the key in force there.
    int GetKeyFrameIndexFromDouble(double doubleIndex, double resolution, bool bNearest) const;
    int GetKeyFrameIndexToInsert(double doubleIndex, double resolution) const;
    double GetNextKeyPosDoubleIndex(double doubleIndex, double resolution) const;
    double GetPrevKeyPosDoubleIndex(double doubleIndex, double resolution) const;
    int GetAdjacentKey(double doubleIndex, int dir) const;
    double GetKeyFrameDoubleIndex(int i) const { return KeyAt(i).mDoubleIndex; }
    double GetKeyFrameValue(int i) const { return KeyAt(i).mValue; }
    double GetKeyFrameValueD1(int i) const { return KeyAt(i).mValueD1; }
    double GetKeyFrameValueD2(int i) const { return KeyAt(i).mValueD2; }
    bool IsValueChanged(double doubleIndex) const; ///< cached value differs from the curve

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

    // Selection; no steps. Tests by point are strict, regions include their bounds.
    bool SelectKeyFrame(double doubleIndex, double tolerance, bool bQuery, bool bToggle);
    bool SelectKeyFrameRegion(double t0, double t1, double v0, double v1, bool bToggle);
    bool SelectKeyByXY(double doubleIndex, double value, double dT, double dV, bool bFirstOnly);
    /// Does a selected key lie there?
    bool SelectSelectedKeyByXY(double doubleIndex, double value, double dT, double dV) const;
    int OnWhichKeyFrame(double doubleIndex, double tolerance) const;
    void SelectKey(int i, bool bSelected);
    void DeselectAll();
    int GetSelectedKeyNum() const;
    int GetSelectedKeyIndex() const; ///< the first one

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
    void SortKey();
    void AdjustAutoControl();                        ///< automatic tangents
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
    ConfItemBOOL_cls mbTimeDepend;
    ConfItemINT_cls mPeriodic; ///< the value's period, 0 none
    ParamGroup_cls* mpCParamGroup;
    ParamTL_cls* mpCParamTL = nullptr; ///< the strip on the time line
    wxString mID;
    wxString mName;
    long long mUpdateBit;
    double mCurrentValue = 0.0; ///< last result, or the value just edited

private:
    void DefineConfList();
    const KeyFrame_cls& KeyAt(int i) const;
    bool IsIndex(int i) const { return i >= 0 && i < GetKeyNumber(); }
    double ValueFor(double y0, double y1) const;
    const KeyFrame_cls* FindSegment(double doubleIndex, double half) const;
    double InSegment(const KeyFrame_cls* pKey, double doubleIndex) const;
    wxString GetStrSegment(int i, wxString* pName) const;
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

    std::vector<KeyFrame_cls> mVKeys; ///< ascending positions
    const unsigned long long mSerial = NextSerial();
};
