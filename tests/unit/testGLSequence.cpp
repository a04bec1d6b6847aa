// What draws a sequence, as the store sees it; no OpenGL is called.
#include "DrawnStoreFixture.h"

#include <sstream>

#include "GL/DRAW/clsGLDrawData.h"
#include "GL/DRAW/clsSnapData.h"

namespace {

class GLSequence : public DrawnStoreFixture {};

TEST_F(GLSequence, AttributesStandBehindThePathInTheProject) {
    OpenRun(2);
    const wxString text = mStore.Serialize();
    EXPECT_TRUE(text.StartsWith("DataSequence0=0\n" + mFolder + "/run0000.bin\nSEQ0TYPE0Ambient"));
    EXPECT_LT(text.Find("SEQ0TYPE3TexFileBillboard="), text.Find("DataSequence1=1\n"));
    EXPECT_LT(text.Find("DataSequence1=1\n\nSEQ1TYPE0Ambient"), text.Find("SEQ3TYPE3TexFileBillboard="));
    Drawing().mpCGLAttribute[2]->mAlphaFactor.mValue = 7.0f;
    EXPECT_NE(mStore.Serialize(), text);
    std::wistringstream stream(text.ToStdWstring());
    for (std::wstring line; std::getline(stream, line);)
        mStore.ReadStrLine(stream, line);
    EXPECT_EQ(mStore.Serialize(), text);
}

TEST_F(GLSequence, ComputedColoursWaitForSlopesAndDownsizingThinsOut) {
    OpenRun(2);
    mStore.PrepareIndex(0, 0.0, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.0, false));
    ColorCurve_cls& curve = Drawing().mpCGLAttribute[3]->mColor;
    curve.mDependType.mValue = 2;
    EXPECT_FALSE(mStore.IsTheIndexReady(0, 0.0, false));
    mStore.PrepareIndex(0, 0.0, false, true);
    EXPECT_TRUE(mStore.IsTheIndexReady(0, 0.0, false));
    EXPECT_TRUE(Snap(0).mbInterpolated);
    mOption.mDownSizing.mValue = -4;
    EXPECT_EQ(Sequence().GetDrawing().GetThinning(), 1);
    mOption.mDownSizing.mValue = 5;
    EXPECT_EQ(Sequence().GetDrawing().GetThinning(), 5);
}

TEST_F(GLSequence, ReleasedBlocksLeaveNoDanglingSnapshot) {
    OpenRun(2);
    mStore.PrepareIndex(0, 0.0, false, true);
    const auto make = [this] {
        GLDrawData_cls::mspCSnapShot = new SnapData_cls(Snap(0).mpCBlock, Drawing().mpCGLAttribute, 0.0, 1);
    };
    make();
    EXPECT_TRUE(GLDrawData_cls::mspCSnapShot->IsItSameSnap(Snap(0).mpCBlock, 0.0, 1));
    Snap(1).ReleaseData();
    EXPECT_NE(GLDrawData_cls::mspCSnapShot, nullptr);
    Snap(0).ReleaseData();
    EXPECT_EQ(GLDrawData_cls::mspCSnapShot, nullptr);

    mStore.PrepareIndex(0, 0.0, false, true);
    make();
    {
        const FlagScope_cls painting(GbGLLockDrawing);
        Snap(0).ReleaseData();
    }
    ASSERT_NE(GLDrawData_cls::mspCSnapShot, nullptr);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(GLDrawData_cls::mspCSnapShot->mpType[i], i % 5);
    mStore.PrepareIndex(0, 0.0, false, true);
    EXPECT_FALSE(GLDrawData_cls::mspCSnapShot->IsItSameSnap(Snap(0).mpCBlock, 0.0, 1));
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr;
}

} // namespace
