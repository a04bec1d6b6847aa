// Distortion meshes: good ones, and what is said of bad ones.
#include <gtest/gtest.h>

#include "GL/VIEW/clsDistortion.h"

namespace {

const std::string kCorners = "v -8 0 -4\nv 8 0 -4\nv 8 0 4\nv -8 0 4\n"
                             "vt 0 1\nvt 1 1\nvt 1 0.25\nvt 0 0.25 0.5\nvn 0 -1 0\n";
const std::string kQuad = "f 1/1/1 2/2/1 3/3/1 4/4/1\n";

TEST(Distortion, ReadsAMeshOfQuads) {
    Distortion_cls mesh;
    EXPECT_FALSE(mesh.IsReady());
    ASSERT_TRUE(mesh.ReadText("# a comment\no name\n\n" + kCorners + "s off\n" + kQuad, "x.obj"))
        << mesh.GetProblem();
    EXPECT_TRUE(mesh.IsReady() && mesh.GetProblem().empty() && mesh.IsDefault());
    EXPECT_EQ(mesh.GetQuadCount(), 1u);
    const double extent[6] = {-8, 8, 0, 0, -4, 4};
    EXPECT_TRUE(std::equal(extent, extent + 6, mesh.GetMinMax()));
    float uv[2];
    mesh.GetTexture(2, false, uv);
    EXPECT_FLOAT_EQ(uv[0], 1.0f);
    EXPECT_FLOAT_EQ(uv[1], 0.25f);
    // Corners may be named before they come, and lines may end as on other systems.
    std::string text = kQuad + kCorners;
    for (size_t at = 0; (at = text.find('\n', at)) != std::string::npos; at += 2)
        text.replace(at, 1, "\r\n");
    EXPECT_TRUE(mesh.ReadText(text, "x.obj")) << mesh.GetProblem();
}

TEST(Distortion, BadMeshesLeaveNoMeshAndAreNamed) {
    const wxString noQuad = "a face must be a quad of the form \"f v/vt/vn v/vt/vn v/vt/vn v/vt/vn\".";
    const wxString noCorner = ": a face names a corner that isn't there.";
    const struct {
        std::string mText;
        wxString mProblem;
    } cases[] = {
        {"", " has no faces."},
        {kCorners, " has no faces."},
        {kCorners + "f 1/1/1 2/2/1 3/3/1\n", ", line 10: " + noQuad},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 4/4/1 1/1/1\n", ", line 10: " + noQuad},
        {kCorners + "f 1 2 3 4\n", ", line 10: " + noQuad},
        {kCorners + "f 1//1 2//1 3//1 4//1\n", ", line 10: " + noQuad},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 5/4/1\n", noCorner},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 4/9/1\n", noCorner},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 4/4/2\n", noCorner},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 0/4/1\n", noCorner},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 -1/4/1\n", noCorner},
        {kCorners + "f 1/1/1 2/2/1 3/3/1 2147483647/4/1\n", noCorner},
        {kQuad, noCorner},
        {"v 1 2\n" + kCorners + kQuad, ", line 1: \"v\" wants 3 finite numbers."},
        {"v 1 2 nan\n" + kCorners + kQuad, ", line 1: \"v\" wants 3 finite numbers."},
        {kCorners + "vt inf 0\n" + kQuad, ", line 10: \"vt\" wants 2 finite numbers."},
        {"v 1 0 1\nv 1 0 2\nv 1 0 2\nv 1 0 1\nvt 0 0\nvn 0 1 0\nf 1/1/1 2/1/1 3/1/1 4/1/1\n",
         " has no extent in x and z."},
    };
    for (const auto& item : cases) {
        Distortion_cls mesh;
        mesh.ReadText(kCorners + kQuad, "good.obj");
        EXPECT_FALSE(mesh.ReadText(item.mText, "bad.obj")) << item.mText;
        EXPECT_EQ(mesh.GetProblem(), "The distortion mesh bad.obj" + item.mProblem) << item.mText;
        EXPECT_FALSE(mesh.IsReady());
        EXPECT_EQ(mesh.GetQuadCount(), 0u) << "nothing of the old one either";
    }
    Distortion_cls mesh;
    EXPECT_FALSE(mesh.ReadWavefrontObject("/nowhere/mesh.obj"));
    EXPECT_EQ(mesh.GetProblem(), "The distortion mesh /nowhere/mesh.obj can't be opened.");
}

TEST(Distortion, TheShippedMeshIsWhole) {
    Distortion_cls mesh;
    ASSERT_TRUE(mesh.ReadWavefrontObject(wxString(MORENTIS_TEST_ROOT) + "/Resource/distortion.obj"))
        << mesh.GetProblem();
    EXPECT_EQ(mesh.GetQuadCount(), 64u * 36u);
    float low = 1.0f, high = 0.0f;
    for (size_t corner = 0; corner < 4 * mesh.GetQuadCount(); ++corner) {
        float uv[2];
        mesh.GetTexture(corner, false, uv);
        EXPECT_TRUE(uv[0] >= 0.0f && uv[0] <= 1.0f && uv[1] >= 0.0f && uv[1] <= 1.0f);
        low = std::min(low, uv[1]);
        high = std::max(high, uv[1]);
    }
    EXPECT_TRUE(low < 0.05f && high > 0.9f) << "from one rim of the dome to the other";
}

TEST(Distortion, TurnAndTiltMoveThePointsOnTheDome) {
    Distortion_cls mesh;
    const std::string points = "v -8 0 -4\nv 8 0 -4\nv 8 0 4\nv -8 0 4\nvn 0 -1 0\n"
                               "vt 0.5 0.5\nvt 0.75 0.5\nvt 0.5 0.75\nvt 1 1\n";
    ASSERT_TRUE(mesh.ReadText(points + kQuad, "x"));
    const auto expect = [&mesh](size_t corner, float u, float v) {
        float uv[2];
        mesh.GetTexture(corner, true, uv);
        EXPECT_NEAR(uv[0], u, 2e-5f) << corner;
        EXPECT_NEAR(uv[1], v, 2e-5f) << corner;
    };
    mesh.UpdateTransformedTex(0, 0, 180);
    expect(1, 0.75f, 0.5f);
    mesh.UpdateTransformedTex(90, 0, 180);
    EXPECT_FALSE(mesh.IsDefault());
    expect(1, 0.5f, 0.75f);
    expect(3, 0.0f, 1.0f); // stays inside the picture
    // 45 degrees about the horizontal axis: a point at 45 degrees goes to the middle or to the rim.
    mesh.UpdateTransformedTex(0, 45, 180);
    expect(0, 0.5f, 0.25f);
    expect(2, 0.5f, 0.5f);
    mesh.UpdateTransformedTex(0, 0, 90); // half the dome fills the mesh
    expect(1, 0.625f, 0.5f);
}

} // namespace
