#include "APP/clsCopyQuestion.h"

#include <wx/intl.h>

#include "APP/clsFrameMain.h"
#include "COMMON/MsgBox.h"

bool CopyQuestion_cls::MayDraw(long long number) {
    if (number == mRefused) return false;
    mRefused = kNone;
    if (number <= kMost || mSAllowed.count(number) > 0) return true;
    if (!mbAsks) {
        MsgBox(wxString::Format(_("a CopyBox draws the data %lld times a picture"), number), _("CopyBox"));
        return mSAllowed.insert(number).second;
    }
    if (!mbPending) mFrame.CallAfter([this, number] { Ask(number); });
    mbPending = true;
    return false;
}

void CopyQuestion_cls::Ask(long long number) {
    const wxString text = wxString::Format(_("The CopyBox makes %lld copies: each picture draws the data so "
                                             "many times, which may take very long. Draw them?"),
                                           number);
    if (MsgBoxYesno(text, _("CopyBox")))
        mSAllowed.insert(number);
    else
        mRefused = number;
    mbPending = false;
    mFrame.RefreshGL();
}
