// A place in space.
#pragma once

#include <wx/string.h>

class Position_cls {
public:
    double mPos[3] = {0, 0, 0};

    Position_cls() = default;
    Position_cls(double x, double y, double z) { Set(x, y, z); }

    void Set(double x, double y, double z);
    void Set(const double* p);
    void Set(const float* p);
    void SetZero() { Set(0, 0, 0); }

    /// The key of the text form, with its "="; objects that share a file need different ones.
    void SetKey(const wxString& key) { mStrKey = key; }
    /// Take the place from a line that begins with the key. False and unchanged for any other line and
    /// where there are not three finite numbers.
    bool ReadStrLine(const wxString& line);
    /// The line with its line feed; the numbers come back exactly.
    wxString Serialize() const;

    /// The same place; the key does not count.
    bool operator==(const Position_cls& other) const;
    bool operator!=(const Position_cls& other) const { return !(*this == other); }

private:
    wxString mStrKey = "Position=";
};

/// Three numbers as text that gives them back exactly, whatever the locale.
wxString VectorToText(const double* v);
/// The reverse; false with v as it was when there are not three finite numbers.
bool VectorFromText(const wxString& text, double* v);
