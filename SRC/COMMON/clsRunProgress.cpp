#include "COMMON/clsRunProgress.h"

#include <algorithm>

#include <wx/intl.h>

namespace {

/// "1:05", with hours "2:01:05"; less than a second counts as one.
wxString TextOfSeconds(long long seconds) {
    seconds = std::max(seconds, 1LL);
    const long long hours = seconds / 3600;
    const int minutes = int(seconds / 60 % 60);
    const int rest = int(seconds % 60);
    if (hours > 0) return wxString::Format("%lld:%02d:%02d", hours, minutes, rest);
    return wxString::Format("%d:%02d", minutes, rest);
}

} // namespace

void RunProgress_cls::Begin(int total) {
    mTotal = std::max(total, 0);
    mDone = 0;
    mDoneMillis = 0;
    mCWatch.Start();
}

void RunProgress_cls::Done(int n) {
    mDone = std::max(n, 0);
    mDoneMillis = mCWatch.Time();
}

wxString RunProgress_cls::GetText() const { return MakeText(mDone, mTotal, GetLeftMillis()); }

// It runs down between two items too.
long long RunProgress_cls::GetLeftMillis() const {
    if (mDone <= 0 || mDone >= mTotal) return 0;
    const long long behind = mDoneMillis * (mTotal - mDone) / mDone;
    return std::max(behind - (mCWatch.Time() - mDoneMillis), 0LL);
}

wxString RunProgress_cls::MakeText(int done, int total, long long leftMillis) {
    if (total <= 0) return wxString::Format(_("Frame %d"), done);
    const wxString text = wxString::Format(_("Frame %d of %d"), done, total);
    if (done <= 0 || done >= total) return text;
    return text + ", " + wxString::Format(_("%s left"), TextOfSeconds((leftMillis + 500) / 1000));
}
