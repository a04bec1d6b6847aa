// The commands on curves. Each finds its curve by the pointer that it was made with, and one that was rebuilt
// by its name.
#pragma once

#include <utility>
#include <vector>

#include "PARAM/clsCommandItem.h"
#include "PARAM/clsKeyFrame.h"
#include "PARAM/clsParameters.h"

class ComParamBase_cls : public CommandItem_cls {
public:
    void Execute(bool bUndo) final;
    /// The work alone.
    virtual void Run(Parameters_cls& param) = 0;
    /// The curve to act on; null when it is gone.
    Parameters_cls* GetTarget() const;
    /// `got` is what Run leaves, `wanted` what it shall leave: have Execute mend the rest. Automatic
    /// tangents depend on the edits that went before, and undo must bring back every last digit.
    void NoteDifferences(const std::vector<KeyFrame_cls>& wanted, const std::vector<KeyFrame_cls>& got);

protected:
    explicit ComParamBase_cls(Parameters_cls* pParam, long long moreBits = 0)
        : CommandItem_cls(pParam->mUpdateBit | moreBits), mpCParam(pParam), mSerial(pParam->GetSerial()),
          mID(pParam->mID) {}

private:
    Parameters_cls* mpCParam;
    unsigned long long mSerial;
    wxString mID;
    std::vector<std::pair<int, KeyFrame_cls>> mVMend;
    int mMendCount = 0; ///< number of keys for which mVMend holds
};

/// Adds an unselected key.
class ComParamSetKey_cls final : public ComParamBase_cls {
public:
    ComParamSetKey_cls(Parameters_cls* pParam, double doubleIndex, double value, double d1, double d2,
                       unsigned kind);
    void Run(Parameters_cls& param) override { param.ExecCommandSetKey(mKey); }

private:
    KeyFrame_cls mKey;
};

/// Adds a key.
class ComParamSetKeyC_cls final : public ComParamBase_cls {
public:
    ComParamSetKeyC_cls(Parameters_cls* pParam, const KeyFrame_cls& key)
        : ComParamBase_cls(pParam), mKey(key) {}
    void Run(Parameters_cls& param) override { param.ExecCommandSetKey(mKey); }

private:
    KeyFrame_cls mKey;
};

/// Puts a key in the place of key `i`.
class ComParamOvwtKeyC_cls final : public ComParamBase_cls {
public:
    ComParamOvwtKeyC_cls(Parameters_cls* pParam, int i, const KeyFrame_cls& key)
        : ComParamBase_cls(pParam), mIndex(i), mKey(key) {}
    void Run(Parameters_cls& param) override { param.ExecCommandOvwtKey(mIndex, mKey); }

private:
    int mIndex;
    KeyFrame_cls mKey;
};

class ComParamDelKey_cls final : public ComParamBase_cls {
public:
    ComParamDelKey_cls(Parameters_cls* pParam, int i) : ComParamBase_cls(pParam), mIndex(i) {}
    void Run(Parameters_cls& param) override { param.ExecCommandDeleteKey(mIndex); }

private:
    int mIndex;
};

/// Leaves one key of kind 1.
class ComParamClearKey_cls final : public ComParamBase_cls {
public:
    ComParamClearKey_cls(Parameters_cls* pParam, double value, double doubleIndex)
        : ComParamBase_cls(pParam), mValue(value), mDoubleIndex(doubleIndex) {}
    void Run(Parameters_cls& param) override { param.ExecCommandInitSet(mValue, mDoubleIndex); }

private:
    double mValue;
    double mDoubleIndex;
};

class ComParamSetTimeDependent_cls final : public ComParamBase_cls {
public:
    ComParamSetTimeDependent_cls(Parameters_cls* pParam, bool bTimeDepend);
    void Run(Parameters_cls& param) override { param.ExecCommandTimeDependent(mbTimeDepend); }

private:
    bool mbTimeDepend;
};

/// Puts a whole curve back.
class ComParamMemento_cls final : public ComParamBase_cls {
public:
    /// Remembers `pParam` itself, or `pSource` when there is one.
    explicit ComParamMemento_cls(Parameters_cls* pParam, const Parameters_cls* pSource = nullptr);
    void Run(Parameters_cls& param) override { param.CopyCurveFromP(mCopy); }

private:
    Parameters_cls mCopy;
};
