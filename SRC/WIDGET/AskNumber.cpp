#include "WIDGET/AskNumber.h"

#include <wx/numdlg.h>

#include "COMMON/ActLine.h"
#include "COMMON/UserActs.h"

long AskNumber(wxWindow* pParent, const wxString& message, const wxString& prompt, const wxString& title,
               long value, long least, long most) {
    const wxString word = AskUser("number", [&] {
        const long chosen = wxGetNumberFromUser(message, prompt, title, value, least, most, pParent);
        return chosen < 0 ? wxString() : wxString::Format("%ld", chosen);
    });
    long number = -1;
    return ReadActCount(word, least, most, &number) ? number : -1;
}
