// Ground for tests of curves, groups and undo: a film of 100 frames and an empty undo list.
#pragma once

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "COMMON/Globals.h"
#include "COMMON/MenuEvent.h"
#include "PARAM/ParamHooks.h"
#include "PARAM/clsParamGroup.h"
#include "PARAM/clsUndoManager.h"

/// Notes the menu events that are posted, and lets none of them on.
class EventRecorder : public MenuEventTarget_cls {
public:
    EventRecorder() { SetMenuEventTarget(this); }
    ~EventRecorder() override { SetMenuEventTarget(nullptr); }
    void QueueMenuEvent(int id, int) override { mIds.push_back(id); }
    std::vector<int> Take() {
        std::vector<int> ids;
        ids.swap(mIds);
        return ids;
    }

private:
    std::vector<int> mIds;
};

class ParamTest : public ::testing::Test {
protected:
    ParamTest() {
        Parameters_cls::SetFrameNumber(100, 1);
        Parameters_cls::msCurrentDoubleIndex = 0.0;
        Parameters_cls::msbUndoCommandMake = true;
        GCUndoList.Clear();
        GCUndoList.ExecUpdate();
        GbSnapDataRefresh.store(false);
        mClipboard = GParamHooks.mClipboard;
        GParamHooks = ParamHooks_st();
        GParamHooks.mClipboard = [this](const wxString& text) { mCopied = text; };
    }
    ~ParamTest() override {
        GCUndoList.Clear();
        GParamHooks = ParamHooks_st();
        GParamHooks.mClipboard = mClipboard;
        GbSnapDataRefresh.store(false); // steps on colours leave it
        Parameters_cls::SetFrameNumber(100, 1);
        Parameters_cls::msbUndoCommandMake = true;
        Parameters_cls::msCurrentDoubleIndex = 0.0;
    }

    wxString mCopied; ///< what went to the clipboard

private:
    std::function<void(const wxString&)> mClipboard;
};

inline KeyFrame_cls MakeKey(double t, double value, unsigned kind = INTERP_LINEAR, double d1 = 0.0,
                            double d2 = 0.0) {
    KeyFrame_cls key;
    key.Set(t, kind, value, d1, d2, false);
    return key;
}

/// Exactly these keys, with automatic tangents worked out; no steps.
inline void SetKeys(Parameters_cls& param, const std::vector<KeyFrame_cls>& keys) {
    param.ExecCommandInitSet(0.0);
    for (size_t i = 0; i < keys.size(); ++i)
        i == 0 ? param.ExecCommandOvwtKey(0, keys[i]) : param.ExecCommandSetKey(keys[i]);
}

/// Another kind for one key; no step.
inline void SetKind(Parameters_cls& param, int i, unsigned kind) {
    KeyFrame_cls key = param.GetKeys()[size_t(i)];
    key.mInterpType = kind;
    param.ExecCommandOvwtKey(i, key);
}

struct Curve : Parameters_cls {
    explicit Curve(const std::vector<KeyFrame_cls>& keys)
        : Parameters_cls("Group x", "x", true, 4102, nullptr) {
        SetKeys(*this, keys);
    }
    std::vector<double> Positions() const {
        std::vector<double> positions;
        for (const KeyFrame_cls& key : GetKeys())
            positions.push_back(key.mDoubleIndex);
        return positions;
    }
    std::vector<double> Values() const {
        std::vector<double> values;
        for (const KeyFrame_cls& key : GetKeys())
            values.push_back(key.mValue);
        return values;
    }
};

/// Give a text line by line to something with ReadStrLine; the lines that it did not take.
template <class READER>
std::vector<std::string> ReadText(READER& reader, const wxString& text) {
    std::wistringstream stream(text.ToStdWstring());
    std::wstring line;
    std::vector<std::string> left;
    while (std::getline(stream, line))
        if (!reader.ReadStrLine(stream, line)) left.push_back(wxString(line).ToStdString());
    return left;
}

inline bool IsSorted(const Parameters_cls& param) {
    for (int i = 1; i < param.GetKeyNumber(); ++i)
        if (!(param.GetKeyFrameDoubleIndex(i - 1) <= param.GetKeyFrameDoubleIndex(i))) return false;
    return true;
}
