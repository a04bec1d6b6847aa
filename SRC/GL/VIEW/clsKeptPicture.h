// The picture that a view has last shown, read back; for tests.
#pragma once

#include <cstdint>
#include <vector>

#include <wx/gdicmn.h>

class KeptPicture_cls {
public:
    /// Read the back buffer of the window, `size` pixels. Needs the view's context.
    void Read(wxSize size);
    /// RGB, top row first; made when it is asked for. Valid until the next call.
    const std::vector<unsigned char>& Get(int* pW, int* pH) const;

private:
    std::vector<uint32_t> mRead; ///< 0xAARRGGBB, bottom row first
    mutable std::vector<unsigned char> mVPicture;
    wxSize mPictureSize;
};
