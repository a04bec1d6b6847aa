#include "GL/VIEW/clsDrawTimeIndex.h"

#include <algorithm>

#include <wx/bitmap.h>
#include <wx/dcmemory.h>
#include <wx/image.h>

#include "GL/VIEW/clsOverlay.h"

namespace {

constexpr double kTimeUnset = -9999.0;
constexpr int kIndent = 2;

} // namespace

wxString DrawTimeIndex_cls::GetTimeText(double time) const {
    const wxString tag = mpCOverlay->mTimeTag.mStrValue;
    return time == kTimeUnset ? tag + "Not Defined" : tag + wxString::Format("%g", time);
}

wxImage DrawTimeIndex_cls::GetTimeOnBitmap(const wxString& text) const {
    const wxFont font = mpCOverlay->GetTimeFont();
    wxBitmap bitmap(1, 1, 24);
    wxMemoryDC dc(bitmap);
    dc.SetFont(font);
    const wxSize needed = dc.GetTextExtent(text) + wxSize(2 * kIndent, 0);
    dc.SelectObject(wxNullBitmap);
    bitmap = wxBitmap(std::max(needed.x, kWidth), std::max(needed.y, kBitmapHeight), 24);
    dc.SelectObject(bitmap);
    dc.SetFont(font);
    dc.SetBackground(*wxBLACK_BRUSH);
    dc.Clear();
    dc.SetTextForeground(*wxWHITE);
    dc.DrawText(text, kIndent, (bitmap.GetHeight() - needed.y) / 2);
    dc.SelectObject(wxNullBitmap);
    return bitmap.ConvertToImage();
}

void DrawTimeIndex_cls::MakeTimeTexture(const wxString& text) {
    const wxString made = text + "\n" + mpCOverlay->GetTimeFont().GetNativeFontInfoDesc();
    if (made == mStrMade && mTexture != 0) return;
    mStrMade = made;
    GenerateBufferRGBA(GetTimeOnBitmap(text));
    Upload(&mTexture);
    DeleteBufferRGBA();
}

bool DrawTimeIndex_cls::IsShown() const {
    const int pos = mpCOverlay->mTimePos.mValue;
    return pos >= Overlay_cls::TOP_LEFT && pos <= Overlay_cls::BTM_RIGHT;
}

void DrawTimeIndex_cls::DrawTimeInfo(double time, int w, int h, Target target) {
    const int pos = mpCOverlay->mTimePos.mValue;
    if (!IsShown()) return;
    MakeTimeTexture(GetTimeText(time));
    SetOffsetPos(pos, 0, w, h);
    // What is larger than an item grows into the picture.
    if (mX > kMargin) mX -= mBufferW - kWidth;
    if (mY > kMargin) mY -= std::max(mBufferH, kBitmapHeight) - kBitmapHeight;
    DrawTexture(mTexture, w, h, GL_ONE, target);
}
