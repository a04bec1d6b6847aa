// The picture that a view has last shown, read back; for tests.
#pragma once

#include <vector>

#include <wx/gdicmn.h>

class KeptPicture_cls {
public:
    /// Read the back buffer of the window, `size` pixels. Needs the view's context.
    void Read(wxSize size);
    /// RGB, top row first.
    const std::vector<unsigned char>& Get(int* pW, int* pH) const {
        *pW = mPictureSize.x;
        *pH = mPictureSize.y;
        return mVPicture;
    }

private:
    std::vector<unsigned char> mVPicture;
    wxSize mPictureSize;
};
