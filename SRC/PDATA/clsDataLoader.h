// How data is read and treated: the record grammar and the loader's settings. One instance serves all;
// readers take the settings at the moment they start, so a change shows at the next read.
#pragma once

#include <functional>

#include "PDATA/clsGrammerBase.h"

class DataLoaderGUI_cls;
class DataOpener_cls;
class PeriodicBoundary_cls;
class wxWindow;

/// Values of the loader's items, as projects hold them. Between two snapshots:
enum InterpolateType : unsigned { INTERPOLATE_LINEAR = 0, INTERPOLATE_HERMITE = 1, INTERPOLATE_NONE = 2 };
/// A particle keeps its place in all files, is found by its ID, or particles are sorted by it.
enum VariableNumber : unsigned { NUMBER_CONSTANT = 0, NUMBER_VARIABLE = 1, NUMBER_SORTED = 2 };
enum Value1Scale : unsigned { VALUE1_RAW = 0, VALUE1_LOG10 = 1 };

/// What a loader asks of its dialog. LinkDataDialogs (PDATA/EDITOR) sets these; an empty one does nothing.
struct LoaderDialogHooks_st {
    std::function<DataLoaderGUI_cls*(wxWindow* pParent)> mMake;
    std::function<void(DataLoaderGUI_cls* pDialog)> mOpen; ///< show in front
};

class DataLoader_cls : public GrammerBase_cls {
public:
    /// pMain may be null (no hub: nothing can be opened).
    explicit DataLoader_cls(DataOpener_cls* pMain);

    /// Translate, scales and logarithm; grammar and interpolation stay.
    void SetToDefault();
    /// Make the dialog on first use (OpenWindow: then show it).
    void InitGUI(wxWindow* pParent);
    void OpenWindow(wxWindow* pParent);
    /// Open the sequence of `path` and remember it.
    void OpenDataFile(const wxString& path);
    /// True for a usable grammar; otherwise the user is told.
    static bool CheckGrammer(const GrammerBase_cls& grammer);
    bool ReadStrLine(const wxString& line) { return ReadStrLineAll(line); }
    wxString Serialize() { return SerializeAll(); }

    DataOpener_cls* mpCMain;
    PeriodicBoundary_cls* mpCPeriodic = nullptr; ///< set by the hub
    DataLoaderGUI_cls* mpCGUI = nullptr;         ///< null until first opened
    LoaderDialogHooks_st mDialogHooks;
    std::function<bool(const wxString& path)> mTakeFile; ///< somebody else opens this file: true

    ConfItemSTR_cls mCItemLastOpened;       ///< "NONE" or the last path opened
    ConfItemUINT_cls mCItemInterpolateType; ///< an InterpolateType
    ConfItemUINT_cls mCItemVariableNumber;  ///< a VariableNumber
    ConfItemFLOATARRAY_cls mCItemTranslate; ///< added to each position, before the scale
    ConfItemFLOAT_cls mCItemScale;          ///< of positions, velocities, radii; 0 leaves them alone
    ConfItemFLOAT_cls mCItemScaleValue1;    ///< of Value1; 0 leaves it alone
    ConfItemUINT_cls mCItemLogarithm;       ///< a Value1Scale
};
