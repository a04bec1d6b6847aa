#include "DrawTest.h"

#include <algorithm>
#include <cmath>

#include <epoxy/gl.h>

#include <wx/image.h>

#include "COMMON/Globals.h"
#include "GL/BASE/clsPositionAndDirection.h"
#include "GL/DRAW/clsGLSequence.h"
#include "GL/DRAW/clsSnapData.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "PDATA/clsPDataBlock.h"
#include "PDATA/clsPDataSnap.h"

DrawTest::DrawTest() = default;
DrawTest::~DrawTest() = default;

void DrawTest::SetUp() {
    GuiTest::SetUp();
    ASSERT_TRUE(Canvas(0)->SetCurrent(*Canvas(0)->GetContext()));
    GLAttribute_cls::InitializeShader(Canvas(0), true);
    mOption.mClassify.mValue = 1;
    for (int i = 0; i < 4; ++i)
        mAttribute[size_t(i)] = std::make_unique<GLAttribute_cls>(nullptr, 0, i, &mOption);
}

void DrawTest::TearDown() {
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr;
    GLDrawData_cls::msStrMessage.clear();
    for (auto& attribute : mAttribute)
        attribute.reset();
    GuiTest::TearDown();
}

void DrawTest::SetAll(unsigned drawType, unsigned quality, unsigned shader) {
    for (auto& attribute : mAttribute) {
        attribute->mDrawType.mValue = drawType;
        attribute->mDrawQuality.mValue = quality;
        attribute->mShaderType.mValue = shader;
    }
}

void DrawTest::SetColor(ColorCurve_cls& curve, float r, float g, float b, float a) {
    const float color[4] = {r, g, b, a};
    std::copy_n(color, 4, curve.mConstantColor.mValue);
}

std::string DrawTest::MakePlainTexture() {
    const std::string path = mDir / "plain.png";
    wxImage image(4, 4);
    std::fill_n(image.GetData(), 48, static_cast<unsigned char>(255));
    EXPECT_TRUE(image.SaveFile(wxString::FromUTF8(path), wxBITMAP_TYPE_PNG));
    for (auto& attribute : mAttribute)
        attribute->mTexFileBillboard.mStrValue = wxString::FromUTF8(path);
    return path;
}

// One from the right above, behind the camera, and a faint one from below.
void DrawTest::SetLights() {
    const float places[2][4] = {{0.48f, 0.6f, 0.64f, 0.0f}, {-0.6f, -0.8f, 0.0f, 0.0f}};
    const float colors[2][4] = {{1, 1, 1, 0}, {0.1f, 0.1f, 0.1f, 0}};
    const float none[4] = {0, 0, 0, 0};
    for (unsigned i = 0; i < 2; ++i) {
        glEnable(GL_LIGHT0 + i);
        glLightfv(GL_LIGHT0 + i, GL_POSITION, places[i]);
        glLightfv(GL_LIGHT0 + i, GL_DIFFUSE, colors[i]);
        glLightfv(GL_LIGHT0 + i, GL_SPECULAR, colors[i]);
        glLightfv(GL_LIGHT0 + i, GL_AMBIENT, i == 0 ? colors[0] : none);
        glLightf(GL_LIGHT0 + i, GL_SPOT_CUTOFF, 180.0f);
    }
    // In eye coordinates as soon as it is set.
    const float near[4] = {1, 1, 2, 1};
    const float at[3] = {-1, -1, -2};
    if (mbSpot) {
        glLightfv(GL_LIGHT0, GL_POSITION, near);
        glLightfv(GL_LIGHT0, GL_SPOT_DIRECTION, at);
        glLightf(GL_LIGHT0, GL_SPOT_CUTOFF, 14.0f);
        glLightf(GL_LIGHT0, GL_SPOT_EXPONENT, 3.0f);
    }
    glLightf(GL_LIGHT0, GL_CONSTANT_ATTENUATION, mbSpot ? 0.2f : 1.0f);
    glLightf(GL_LIGHT0, GL_LINEAR_ATTENUATION, mbSpot ? 0.1f : 0.0f);
    glLightf(GL_LIGHT0, GL_QUADRATIC_ATTENUATION, mbSpot ? 0.1f : 0.0f);
    const float white[4] = {0.5f, 0.5f, 0.6f, 1};
    (mbFog ? glEnable : glDisable)(GL_FOG);
    glFogfv(GL_FOG_COLOR, white);
    glFogi(GL_FOG_MODE, GL_EXP2);
    glFogf(GL_FOG_DENSITY, 0.2f);
    for (unsigned i = 2; i < 8; ++i)
        glDisable(GL_LIGHT0 + i);
}

void DrawTest::Draw(const std::vector<Particle_st>& particles) {
    const int number = int(particles.size());
    delete GLDrawData_cls::mspCSnapShot;
    GLDrawData_cls::mspCSnapShot = nullptr;
    mSnap = std::make_unique<PDataSnap_cls>(nullptr, 0);
    PDataBlock_cls& block = *mSnap->mpCBlock;
    block.mParticleNumber = number;
    ASSERT_TRUE(block.Allocate(number));
    for (int i = 0; i < number; ++i) {
        const Particle_st& p = particles[size_t(i)];
        std::copy_n(p.pos.data(), 3, block.mpPos[i]);
        std::fill_n(block.mpVel[i], 3, 0.0f);
        block.mpRadius[i] = p.radius;
        block.mpType[i] = p.type;
        block.mpValue1[i] = p.value;
    }
    mSnap->mTime = 0.0;
    mSnap->mbLoadStarted = true;
    mSnap->mbLoaded.store(true);

    FBO_cls target(mSize, mSize);
    target.MakeFBO(false);
    const FBOScope_cls scope(target, true);
    PositionAndDirection_cls camera;
    camera.Set(0, 0, kEye);
    const double anchor[3] = {0, 0, 0};
    camera.SetAncPos(anchor);
    mPerspective.SetWindowSize(mSize, mSize);
    mPerspective.mbPerspective = !mbParallel;
    mPerspective.SetPerspectiveOnGL(camera);
    mPerspective.SetModelOrProjectionViewOnGL(camera, GL_MODELVIEW);
    glEnable(GL_CULL_FACE);
    glEnable(GL_DEPTH_TEST);
    glDepthFunc(GL_LEQUAL);
    if (mSetLights)
        mSetLights();
    else
        SetLights();
    mDraw.SetCameraPos(camera);
    glTranslatef(mShift, 0.0f, 0.0f);
    mDraw.SetLightSourceInfo(mLightNumber, nullptr);
    GLAttribute_cls* attributes[4];
    for (size_t i = 0; i < 4; ++i)
        attributes[i] = mAttribute[i].get();
    {
        const FlagScope_cls painting(GbGLLockDrawing);
        GLSequence_cls::DrawSnapshot(0, *mSnap, &mDraw, attributes, 0.0);
        if (mDrawMore) mDrawMore();
    }
    EXPECT_EQ(glGetError(), GLenum(GL_NO_ERROR));
    GLint program = 0;
    glGetIntegerv(GL_CURRENT_PROGRAM, &program);
    EXPECT_EQ(program, 0) << "nothing else may be drawn through a shader of spheres";

    const size_t pixels = size_t(mSize) * size_t(mSize);
    mColor.resize(pixels * 3);
    mDepth.resize(pixels);
    glPixelStorei(GL_PACK_ALIGNMENT, 1);
    glReadPixels(0, 0, mSize, mSize, GL_RGB, GL_FLOAT, mColor.data());
    glReadPixels(0, 0, mSize, mSize, GL_DEPTH_COMPONENT, GL_FLOAT, mDepth.data());
}

DrawTest::Pixel_st DrawTest::At(int x, int y) const {
    const float* p = &mColor[3 * (size_t(y) * size_t(mSize) + size_t(x))];
    return {p[0], p[1], p[2]};
}

bool DrawTest::IsLit(int x, int y) const {
    const Pixel_st pixel = At(x, y);
    return pixel.r + pixel.g + pixel.b > 0.001f;
}

Picture_st DrawTest::Picture() const {
    Picture_st picture;
    picture.mW = picture.mH = mSize;
    for (int y = mSize - 1; y >= 0; --y)
        for (int x = 0; x < mSize; ++x) {
            const Pixel_st pixel = At(x, y);
            for (const float v : {pixel.r, pixel.g, pixel.b})
                picture.mRGB.push_back(
                    static_cast<unsigned char>(std::lround(std::clamp(v, 0.0f, 1.0f) * 255)));
        }
    return picture;
}

int DrawTest::CountLit() const {
    int count = 0;
    for (int y = 0; y < mSize; ++y)
        for (int x = 0; x < mSize; ++x)
            count += IsLit(x, y);
    return count;
}

std::array<int, 2> DrawTest::LitInRow(int y) const {
    int first = 0, end = 0;
    for (int x = mSize - 1; x >= 0; --x)
        if (IsLit(x, y)) {
            first = x;
            if (end == 0) end = x + 1;
        }
    return {first, end};
}

std::array<int, 2> DrawTest::LitInColumn(int x) const {
    int first = 0, end = 0;
    for (int y = mSize - 1; y >= 0; --y)
        if (IsLit(x, y)) {
            first = y;
            if (end == 0) end = y + 1;
        }
    return {first, end};
}

double DrawTest::PixelsPerUnit() const {
    const double half = mbParallel ? kEye / 2.0 : kEye * std::tan(mPerspective.mAngle * M_PI / 360.0);
    return mSize / 2.0 / half;
}
