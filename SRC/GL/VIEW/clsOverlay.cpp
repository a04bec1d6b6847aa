#include "GL/VIEW/clsOverlay.h"

#include <algorithm>

#include <wx/fontdlg.h>

#include "COMMON/Globals.h"
#include "COMMON/UpdateBits.h"
#include "COMMON/UserActs.h"
#include "GL/VIEW/clsOverlayGUI.h"
#include "PARAM/clsCommandSetValue.h"
#include "PARAM/clsUndoManager.h"

namespace {

constexpr int kSmallest = 6; // points
constexpr int kLargest = 72;

wxFontFamily GetFamily(int style) {
    static const wxFontFamily kFamilies[] = {
        wxFONTFAMILY_DEFAULT, wxFONTFAMILY_DECORATIVE, wxFONTFAMILY_ROMAN,   wxFONTFAMILY_SCRIPT,
        wxFONTFAMILY_SWISS,   wxFONTFAMILY_MODERN,     wxFONTFAMILY_TELETYPE};
    return style >= 0 && style < 7 ? kFamilies[style] : wxFONTFAMILY_DEFAULT;
}

constexpr int kUpdateMask = UPDATE_DRAW_OPTIONS | UPDATE_GL;

} // namespace

Overlay_cls::Overlay_cls() {
    mConfList.Add(&mTimePos, "OverLayTimePos=", "4");
    mConfList.Add(&mTimeFontFamily, "OverLayTimeFontFamily=", "2");
    mConfList.Add(&mTimeFontPoint, "OverLayTimeFontPoint=", "18");
    mConfList.Add(&mTimeCustomFont, "OverLayTimeCustomFont=", "");
    mConfList.Add(&mTimeTag, "OverLayTimeTag=", "Time=");
    mConfList.Add(&mShowLegend, "OverLayShowLegend=", "1 0 0 0");
    mConfList.Add(&mLegendPos, "OverLayLegendPos=", "3");
    mConfList.Add(&mLegendIgnoreAlpha, "OverLayLegendIgnoreAlphe=", "0"); // files know it under this spelling
    mConfList.Add(&mLegendIgnoreTics, "OverLayLegendIgnoreTics=", "0");
    mTimeCustomFont.mStrValue.clear(); // an empty default is none
}

wxFont Overlay_cls::GetTimeFont() const {
    const int points = std::clamp(mTimeFontPoint.mValue, kSmallest, kLargest);
    wxFontInfo info(points);
    // Teletype too, as soon as a font was chosen: pictures made so stay what they were.
    const bool bCustom = mTimeFontFamily.mValue > kModernFont && !mTimeCustomFont.mStrValue.empty();
    wxFont font(bCustom ? info.FaceName(mTimeCustomFont.mStrValue)
                        : info.Family(GetFamily(mTimeFontFamily.mValue)));
    if (!font.IsOk()) font = wxFont(wxFontInfo(points));
    return font;
}

void Overlay_cls::SetCustomFont(wxWindow* pParent) {
    wxFontData data;
    data.SetInitialFont(GetTimeFont());
    data.EnableEffects(false);
    const wxString chosen = AskUser("font", [&] {
        wxFontDialog dialog(pParent, data);
        const FlagScope_cls modal(GbGLLockModalDialog);
        if (dialog.ShowModal() != wxID_OK) return wxString();
        return dialog.GetFontData().GetChosenFont().GetNativeFontInfoDesc();
    });
    if (chosen.empty()) return;
    const wxFont font(chosen);
    if (!font.IsOk()) return;
    const UndoBlock_cls block;
    PushSetValue(&mTimeFontFamily.mValue, kCustomFont, kUpdateMask);
    PushSetValue(&mTimeCustomFont.mStrValue, font.GetFaceName(), kUpdateMask);
    PushSetValue(&mTimeFontPoint.mValue, std::clamp(font.GetPointSize(), kSmallest, kLargest), kUpdateMask);
}
