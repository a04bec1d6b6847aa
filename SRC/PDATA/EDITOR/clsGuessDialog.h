// Shows what the program makes of an unknown file (its layout, the reasons, the first records as they
// would be read) and asks whether to take it over.
#pragma once

#include "PDATA/GrammarGuess.h"
#include "WIDGET/clsDialogEXKey.h"

class GrammerBaseGUI_cls;
class wxListCtrl;
class wxSizer;

class GuessDialog_cls : public wxDialogEXKey {
public:
    /// Looks at `path` at once; `present` is the grammar so far, which is tried too.
    GuessDialog_cls(wxWindow* pParent, const wxString& path, const GrammerBaseGUI_cls& lists,
                    const GrammerBase_cls& present);
    /// Ask with the views still: wxID_OK for "Use", wxID_OPEN when another file is wanted.
    int Ask();
    /// Data type and both lists into a grammar; nothing when nothing was found.
    void CopyTo(GrammerBase_cls* pGrammer) const;

private:
    void AddLayout(wxSizer* pSizer, const GrammerBaseGUI_cls& lists);
    void AddReasons(wxSizer* pSizer);
    void AddRecords(wxSizer* pSizer);

    GrammarGuess_st mGuess;
};
