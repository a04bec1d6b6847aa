// Colour curves as the editor has them: its tables as keys, pictures and swatches.
#include <cmath>

#include <wx/colour.h>
#include <wx/image.h>

#include "COLORCURVE/EDITOR/ColorTables.h"
#include "COLORCURVE/clsColorCurve.h"
#include "ParamTest.h"

namespace {

constexpr double kSpectrum[4][5] = {
    {0, 0.03, 0, 0.07, 1}, {0.25, 0.32, 0, 0.77, 0.5}, {0.5, 0, 0.31, 0.59, 1}, {1, 0.26, 0, 0, 0.25}};

class ColorCurvePictures : public ParamTest {
protected:
    static Parameters_cls& Channel(const ColorCurve_cls& curve, size_t c) {
        return curve.mpCParamGroup->mVParams[c];
    }
};

} // namespace

TEST_F(ColorCurvePictures, KeysOfAShortFilmDontFallTogether) {
    Parameters_cls::SetFrameNumber(3, 1);
    Parameters_cls::msCurrentDoubleIndex = 1.0;
    for (const auto* tables : {&GetClassicTables(), &GetEvenTables()})
        for (const ColorTable_st& table : *tables) {
            ColorCurve_cls curve("T", table.mStrName, "1 0.8 0.6 1");
            curve.SetKeys(table.mVKeys);
            curve.mbUseColorCurve.mValue = true;
            EXPECT_EQ(Channel(curve, 2).GetKeyNumber(), int(table.mVKeys.size())) << table.mStrName;
            for (const ColorCurve_cls::Key& key : table.mVKeys) {
                float color[4];
                curve.GetColor4fNormal(color, static_cast<float>(key[0]));
                for (size_t c = 0; c < 4; ++c)
                    EXPECT_NEAR(double(color[c]), key[c + 1], 1e-5) << table.mStrName << " at " << key[0];
            }
        }
}

TEST_F(ColorCurvePictures, PicturesShowColoursAndAlpha) {
    ColorCurve_cls curve("A", "label", "1 0.5 0 0.5", 4, kSpectrum);
    Channel(curve, 0).ExecCommandOvwtKey(0, MakeKey(0.0, -1e30));
    curve.mbUseColorCurve.mValue = true;
    const wxImage image = curve.GetColorImage(200, 3, false);
    ASSERT_TRUE(image.HasAlpha());
    EXPECT_EQ(image.GetBlue(99, 2), std::lround(255 * (0.59 + 0.01 * 0.18)));
    EXPECT_EQ(image.GetAlpha(199, 0), std::lround(255 * (0.25 + 0.005 * 0.75)));
    EXPECT_FALSE(curve.GetColorImage(0, 0, true).HasAlpha());
}
