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
    void InsertKey(double doubleIndex, double value, double d1, double d2);
    void SetChangedValueKey(double doubleIndex, double d1, double d2, double resolution);
    void SetKey(const KeyFrame_cls& key, double resolution);
    void SetKeyToValueAt(KeyFrame_cls* pKey, double doubleIndex) const;
    bool DeleteKey(double doubleIndex, double resolution);
    void Flip();
    void CopyParameterFromP(const Parameters_cls* pSrc);
    void SetTimeDependent(bool bTimeDepend);

    // The same for all curves of the group while it is linked.
    void InsertKeyQueue(double doubleIndex);
    bool DeleteKeyQueue(double doubleIndex);

    // What the commands do, without a command.
    void ExecCommandSetKey(const KeyFrame_cls& key);
    void ExecCommandOvwtKey(int i, const KeyFrame_cls& key);
    void ExecCommandDeleteKey(int i);
    void ExecCommandSetKeys(std::vector<KeyFrame_cls> keys); ///< these in place of all
    void ExecCommandInitSet(double value, double doubleIndex = 0.0);
    void ExecCommandTimeDependent(bool bTimeDepend);
    void RestoreKey(int i, const KeyFrame_cls& key); ///< all but the selection, no sorting

    void CheckSnippingTag(std::vector<bool>* pTags) const;
    wxString GetClipboardText() const; ///< the selected keys; empty when there are none
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
    static unsigned long long NextSerial();

    const unsigned long long mSerial = NextSerial();
};
