#include "GL/BASE/clsPosition.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <locale>
#include <sstream>

void Position_cls::Set(double x, double y, double z) {
    mPos[0] = x;
    mPos[1] = y;
    mPos[2] = z;
}

void Position_cls::Set(const double* p) { Set(p[0], p[1], p[2]); }

void Position_cls::Set(const float* p) { Set(p[0], p[1], p[2]); }

bool Position_cls::ReadStrLine(const wxString& line) {
    return line.StartsWith(mStrKey) && VectorFromText(line.Mid(mStrKey.length()), mPos);
}

wxString Position_cls::Serialize() const { return mStrKey + VectorToText(mPos) + "\n"; }

bool Position_cls::operator==(const Position_cls& other) const {
    return std::equal(mPos, mPos + 3, other.mPos);
}

wxString VectorToText(const double* v) {
    wxString text;
    for (int i = 0; i < 3; ++i) {
        char buffer[32];
        const auto end = std::to_chars(buffer, buffer + sizeof buffer, v[i]);
        if (i > 0) text += " ";
        text += wxString::FromAscii(buffer, static_cast<size_t>(end.ptr - buffer));
    }
    return text;
}

bool VectorFromText(const wxString& text, double* v) {
    std::istringstream stream{std::string(text.ToAscii())};
    stream.imbue(std::locale::classic());
    double read[3];
    for (double& value : read)
        if (!(stream >> value) || !std::isfinite(value)) return false;
    std::copy(read, read + 3, v);
    return true;
}
