// Shows what the program makes of an unknown file (its layout, the reasons, the first records as they
// would be read, and what else it offers to set) and asks whether to take it over.
#pragma once

#include <vector>

#include "PDATA/GrammarGuess.h"
#include "PDATA/GuessOffer.h"
#include "WIDGET/clsDialogEXKey.h"

class DataLoader_cls;
class GrammerBaseGUI_cls;
class GrammerBase_cls;
class wxSizer;
class wxWindow;

class GuessDialog_cls : public wxDialogEXKey {
public:
    enum Answer { Cancel, OtherFile, Use, UseAndOpen };

    /// Looks at `path` at once; `present` is the grammar so far, which is tried too. `scale`: the loader's.
    GuessDialog_cls(wxWindow* pParent, const wxString& path, const GrammerBaseGUI_cls& lists,
                    const GrammerBase_cls& present, float scale);
    /// Ask with the views still.
    Answer Ask();
    /// Layout and ticked offers to where they belong, as one undo step; nothing when nothing was found.
    void Apply(DataLoader_cls* pLoader) const;

private:
    void AddLayout(wxSizer* pSizer, const GrammerBaseGUI_cls& lists);
    void AddReasons(wxSizer* pSizer);
    void AddOffers(wxSizer* pSizer);
    void AddOfferValue(wxSizer* pSizer, const GuessOffer_st& offer);
    void AddRecords(wxSizer* pSizer);
    void AddButtons(wxSizer* pSizer);

    GrammarGuess_st mGuess;
    std::vector<GuessOffer_st> mOffers;
};
