// How points, billboards and lines blend, which no light changes. In the picture of one light alone, to be
// added to one that has them already, they are black and hide what they cover.
#pragma once

/// As long as one of these is there the picture is that of one light alone.
class LightAloneScope_cls {
public:
    LightAloneScope_cls();
    ~LightAloneScope_cls();
    LightAloneScope_cls(const LightAloneScope_cls&) = delete;
    LightAloneScope_cls& operator=(const LightAloneScope_cls&) = delete;
};

/// Is there one?
bool IsLightAlone();
/// The blend function for colours with their alpha, or, `bMultiplied`, already multiplied by it.
void SetUnlitBlend(bool bAdditive, bool bMultiplied = false);
/// Blending is needed, or opaque things simply overwrite.
void EnableUnlitBlend(bool bNeeded);
