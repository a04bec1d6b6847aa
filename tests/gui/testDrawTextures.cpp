// The pictures that billboards are made of.
#include <fstream>

#include "DrawTest.h"

namespace {

class DrawTextures : public DrawTest {};

TEST_F(DrawTextures, ThatCannotBeReadAreNamed) {
    SetAll(1);
    SetColor(mAttribute[0]->mColor, 1, 1, 1, 1);
    const std::string missing = mDir / "nothing.png";
    const std::string broken = mDir / "broken.png";
    std::ofstream(broken) << "This is no picture.";
    for (const std::string& path : {missing, broken, mDir.mPath.string()}) {
        mVMessages.clear();
        mAttribute[0]->mTexFileBillboard.mStrValue = wxString::FromUTF8(path);
        Draw({{{0, 0, 0}, 0.5f}});
        Draw({{{0, 0, 0}, 0.5f}});
        ASSERT_EQ(mVMessages.size(), 1u) << path;
        EXPECT_EQ(mVMessages[0].mText, "The texture " + wxString::FromUTF8(path) +
                                           " can't be read as an image. Billboards of attribute 0 are plain "
                                           "squares.");
        const Pixel_st middle = Middle();
        for (const float part : {middle.r, middle.g, middle.b})
            EXPECT_NEAR(part, 1, 0.002f) << "a plain square";
    }
    mAttribute[0]->mTexFileBillboard.mStrValue = "Texture/ParticleA.png";
    Draw({{{0, 0, 0}, 0.5f}});
    EXPECT_LT(At(mSize / 2 + int(0.45 * PixelsPerUnit()), mSize / 2).r, 0.2f) << "soft again";
}

} // namespace
