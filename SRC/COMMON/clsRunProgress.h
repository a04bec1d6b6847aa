// How far a run of many items (a film, an export) has come, in words, with an estimate of the time left.
#pragma once

#include <wx/stopwatch.h>
#include <wx/string.h>

class RunProgress_cls {
public:
    /// Starts the clock. total 0: nobody knows how many.
    void Begin(int total);
    /// n items are finished so far.
    void Done(int n);
    int GetDone() const { return mDone; }
    int GetTotal() const { return mTotal; }
    /// "Frame 12 of 300, 1:05 left"; without an estimate before the first item is finished and behind the
    /// last one, and without a total where it isn't known.
    wxString GetText() const;

    static wxString MakeText(int done, int total, long long leftMillis);
    /// 0 while there is no estimate.
    long long GetLeftMillis() const;

private:
    wxStopWatch mCWatch;
    int mTotal = 0;
    int mDone = 0;
    long long mDoneMillis = 0; ///< when the last item was finished
};
