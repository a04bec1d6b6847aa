#include "APP/clsCopyQuestion.h"

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "COMMON/MsgBox.h"

bool CopyQuestion_cls::MayDraw(long long number) {
    if (number <= kMost) return true;
    const auto answer = mAnswers.find(number);
    if (answer != mAnswers.end()) return answer->second;
    if (!mbAsks) {
        MsgBox(wxString::Format(_("a CopyBox draws the data %lld times a picture"), number), _("CopyBox"));
        return mAnswers[number] = true;
    }
    if (!mbPending) mFrame.CallAfter([this, number] { Ask(number); });
    mbPending = true;
    return false;
}

void CopyQuestion_cls::Ask(long long number) {
    mAnswers[number] = MsgBoxYesno(
        wxString::Format(_("The CopyBox makes %lld copies: each picture draws the data so many times, which "
                           "may take very long. Draw them?"),
                         number),
        _("CopyBox"));
    mbPending = false;
    mFrame.RefreshGL();
}
