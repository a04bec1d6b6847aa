#include "PARAM/clsKeyFrame.h"

#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

#include <wx/intl.h>

wxString KeyFrame_cls::msAstrInterp[INTERP_COUNT] = {"LINEAR", "HERMITE (AUTO)", "HERMITE (SEMIAUTO)",
                                                     "HERMITE", "STEP"};

void KeyFrame_cls::FillInterpNames() {
    msAstrInterp[INTERP_LINEAR] = _("LINEAR");
    msAstrInterp[INTERP_HERMITE_AUTO] = _("HERMITE (AUTO)");
    msAstrInterp[INTERP_HERMITE] = _("HERMITE");
    msAstrInterp[INTERP_STEP] = _("STEP");
}

void KeyFrame_cls::Set(double doubleIndex, unsigned int interpType, double value, double d1, double d2,
                       bool bSelected) {
    mDoubleIndex = doubleIndex;
    mInterpType = interpType;
    SetValue(value, d1, d2);
    mbSelected = bSelected;
}

void KeyFrame_cls::SetValue(double value, double d1, double d2) {
    mValue = value;
    mValueD1 = d1;
    mValueD2 = d2;
}

wxString KeyFrame_cls::Serialize() const {
    // Room for the largest double with its decimals, four times over.
    char line[4 * 330];
    char* end = line;
    const auto fixed = [&](double value, int decimals) {
        end = std::to_chars(end, line + sizeof line, value, std::chars_format::fixed, decimals).ptr;
        *end++ = ' ';
    };
    fixed(mDoubleIndex, 9);
    end = std::to_chars(end, line + sizeof line, static_cast<int>(mInterpType)).ptr;
    *end++ = ' ';
    fixed(mValue, 6);
    fixed(mValueD1, 6);
    fixed(mValueD2, 6);
    *end++ = '\n';
    return wxString::FromAscii(line, static_cast<size_t>(end - line));
}

void KeyFrame_cls::ReadStrLine(const wxString& line) {
    std::wistringstream stream(line.ToStdWstring());
    stream.imbue(std::locale::classic());
    stream >> mDoubleIndex >> mInterpType >> mValue >> mValueD1 >> mValueD2;
}
