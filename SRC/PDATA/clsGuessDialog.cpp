#include "PDATA/clsGuessDialog.h"
GuessDialog_cls::GuessDialog_cls(wxWindow* p, const wxString&, const DataLoader_cls&) : wxDialogEXKey(p, "Guess") {}
void GuessDialog_cls::CopyTo(DataLoader_cls*) const {}
