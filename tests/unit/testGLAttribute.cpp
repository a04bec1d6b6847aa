#include <gtest/gtest.h>

#include <sstream>

#include "GL/DRAW/clsDrawOption.h"
#include "GL/DRAW/clsGLAttribute.h"

namespace {

TEST(GLAttribute, KeysBearSequenceAndType) {
    DrawOption_cls option;
    GLAttribute_cls attribute(nullptr, 2, 3, &option);
    const wxString text = attribute.Serialize();
    for (const char* line :
         {"SEQ2TYPE3DrawType=0\n", "SEQ2TYPE3PointSize=10\n", "SEQ2TYPE3AlphaFactro=1.000000\n",
          "SEQ2TYPE3RadiusFactorForConst=0.001000\n", "SEQ2TYPE3TexFileBillboard=Texture/ParticleA.png\n"})
        EXPECT_NE(text.Find(line), wxNOT_FOUND) << line;
    const int order[] = {text.Find("SEQ2TYPE3Ambient"), text.Find("SEQ2TYPE3Diffuse"),
                         text.Find("SEQ2TYPE3Specular"), text.Find("SEQ2TYPE3Col"),
                         text.Find("SEQ2TYPE3DrawType=")};
    for (int i = 1; i < 5; ++i)
        EXPECT_LT(order[i - 1], order[i]) << i;
}

TEST(GLAttribute, ComesBackFromItsOwnText) {
    DrawOption_cls option;
    GLAttribute_cls first(nullptr, 0, 1, &option);
    first.mDrawType.mValue = 3;
    first.mPointSize.mValue = 4;
    first.mAlphaFactor.mValue = 0.25f;
    first.mColor.mbUseColorCurve.mValue = true;
    GLAttribute_cls second(nullptr, 0, 1, &option);
    GLAttribute_cls other(nullptr, 0, 2, &option);
    std::wistringstream stream(first.Serialize().ToStdWstring());
    for (std::wstring line; std::getline(stream, line);) {
        second.ReadStrLine(stream, line);
        other.ReadStrLine(stream, line);
    }
    EXPECT_EQ(second.Serialize(), first.Serialize());
    EXPECT_EQ(other.mPointSize.mValue, 10) << "lines of one class reached another";
}

TEST(GLAttribute, RadiusFactorFollowsTheRadiusType) {
    DrawOption_cls option;
    GLAttribute_cls attribute(nullptr, 0, 0, &option);
    attribute.mRadiusFactor.mValue = 2.0f;
    attribute.mRadiusFactorForConst.mValue = 0.5f;
    EXPECT_FLOAT_EQ(attribute.GetRadiusFactor(), 2.0f);
    attribute.mRadiusType.mValue = 1;
    EXPECT_FLOAT_EQ(attribute.GetRadiusFactor(), 0.5f);
}

} // namespace
