// The shared colour dialog.
#pragma once

#include <wx/colour.h>
#include <wx/colourdata.h>

class wxWindow;

class wxColourDialogEX {
public:
    explicit wxColourDialogEX(wxWindow* pParent);

    void SetColour(const wxColour& colour) { mData.SetColour(colour); }
    wxColour GetColour() const { return mData.GetColour(); }
    /// wxID_OK or wxID_CANCEL. Views keep still meanwhile.
    int ShowModal();

    /// Valid: the next ShowModal answers OK with this colour without a window.
    static wxColour sTestAnswer;

private:
    int Ask();

    wxWindow* mpParent;
    wxColourData mData; ///< keeps the user's own colours
};
