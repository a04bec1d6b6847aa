// The film's time that can be set: positions, areas and settings, natively, which leaves no step in the undo
// list, and their text form.
#pragma once

#include <functional>
#include <istream>

#include <wx/string.h>

#include "TIME/TimeValues.h"
#include "TIME/clsFilmTime.h"

class FilmClock_cls : public FilmTime_cls {
public:
    void SetFrameNative(int frame, int updateMask);
    void SetInterpStepNative(int step, int updateMask);
    void SetWAMinNative(int frame);
    void SetWAMaxNative(int frame);
    void SetAAMinNative(int frame);
    void SetAAMaxNative(int frame);
    void SetRepeatNative(int repeat);
    void SetAnimStepNative(int step);
    void SetAnimInterpNative(int interp);
    void SetPrefetchNative(int frames);
    void SetMaxFrameNative(int maxFrame);
    /// `kind` is a TimeValue.
    int GetValue(int kind) const;
    void SetValueNative(int kind, int value);
    TimeState_st GetState() const;
    void SetState(const TimeState_st& state);

    /// Told when the film's length or the remapping changes. Keys keep their share of the film and the
    /// curve its values, so there is nothing to do.
    void RemapParameterKeys(double) {}
    void SetBUseTimeRemap(bool) {}

    // Areas.
    void CheckWorkingArea();
    void SetIndex(unsigned frame);

    // Snipping marks: which frames hold keys.
    void EmptySnippingTag();
    /// Clear them and have mCollectTags set them anew.
    void UpdateSnippingTag();
    std::function<void(std::vector<bool>*)> mCollectTags; ///< the hub knows whose keys count

    wxString Serialize();
    void ReadStrLine(std::wistream& stream, const wxString& line);

    bool mbShyMode = false;

protected:
    explicit FilmClock_cls(TimeHost_cls* pHost) : FilmTime_cls(pHost) {}
    ~FilmClock_cls() = default;

    void TellStale() const;
    void UpdateCurrentDoubleIndex();

private:
    void CheckAfterMaxFrameChange();

    int mRegionMin = 0;
    int mRegionMax = 99;
    int mPrevMaxFrame = 100;
};
