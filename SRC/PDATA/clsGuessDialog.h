// Shows what the program makes of an unknown file (its layout, the reasons, the first records as they
// would be read) and asks whether to take it over.
#pragma once

#include "WIDGET/clsDialogEXKey.h"

class DataLoader_cls;

class GuessDialog_cls : public wxDialogEXKey {
public:
    /// Looks at `path` at once; `loader` holds the present grammar, which is tried too.
    GuessDialog_cls(wxWindow* pParent, const wxString& path, const DataLoader_cls& loader);
    /// Data type and both lists into the loader; nothing when nothing was found.
    void CopyTo(DataLoader_cls* pLoader) const;
};
