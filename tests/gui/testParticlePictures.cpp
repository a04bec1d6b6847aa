// What is drawn into a view for a picked particle: its label, which written pictures lack, and its trail.
#include <epoxy/gl.h>

#include "APP/clsMain.h"
#include "GL/BASE/clsFBO.h"
#include "GL/VIEW/clsInformation.h"
#include "GL/VIEW/clsInformationGUI.h"
#include "GL/VIEW/clsMainGLCanvas.h"
#include "GL/VIEW/clsParticlePanel.h"
#include "GL/VIEW/clsParticleWatch.h"
#include "IMAGE/clsImageIO.h"
#include "PDATA/clsPeriodicBoundary.h"
#include "ParticlesTest.h"
#include "TIME/clsTimeCtrl.h"

namespace {

class ParticlePictures : public ParticlesTest {};

TEST_F(ParticlePictures, PicturesThatAreWrittenHaveNoLabel) {
    ShowRun({{{10, 0, 0, 1}}});
    PickAt(At({10, 0, 0}));
    ASSERT_GT(CountMark(Grab(0), At({10, 0, 0}), 12), 20);
    int lit = -1, count = -1;
    Canvas(0)->RequestImage(
        [&](const ImageBuffers_st& buffers, wxSize) {
            const int size = buffers.mpColor->GetWidth();
            std::vector<float> pixels(size_t(3 * size) * size_t(size));
            buffers.mpColor->BindTexture();
            glGetTexImage(GL_TEXTURE_2D, 0, GL_RGB, GL_FLOAT, pixels.data());
            lit = count = 0;
            for (size_t i = 0; i < pixels.size(); i += 3) {
                lit += pixels[i] > 0.4f;
                count += pixels[i] > pixels[i + 2] + 0.2f;
            }
        },
        wxSize(256, 256));
    Settle();
    EXPECT_GT(lit, 0);
    EXPECT_EQ(count, 0);
    Settle();
    EXPECT_GT(CountMark(Grab(0), At({10, 0, 0}), 12), 20) << "it is there again in the window";
}

TEST_F(ParticlePictures, TheTrailIsALineInPicturesToo) {
    ShowRun({{{10, 1, 0, 5}}, {{10, 0, 0.5f, 5}}, {{10, 9, 0, 6}}, {{10, -1, 0.5f, 5}}, {{10, -2, 0, 5}}});
    Hub()->mpCTimeCtrl->SetWAMaxNative(4);
    PickAt(At({10, 1, 0}));
    Key(WXK_ESCAPE);
    PickAt(At({10, 1, 0}));
    ClickOn(FindByLabel(Hub()->mpCInformation->mpCParticleGUI, "Trail"));
    ASSERT_TRUE(PumpUntil([] {
        const auto lines = Hub()->mpCParticles->GetTrail();
        return lines.size() == 2 && lines[0].size() == 2 && lines[1].size() == 2;
    })) << "broken where the particle is missing";
    Settle();
    Key(WXK_ESCAPE); // the ring has the same colours
    Settle();
    EXPECT_EQ(CountMark(Grab(0), At({10, 1, 0}, 25, 7), 6), 0) << "the label has gone";
    EXPECT_GT(CountMark(Grab(0), At({10, 0.5, 0.25}), 4), 3);
    EXPECT_EQ(CountMark(Grab(0), At({10, -0.5, 0.5}), 4), 0) << "the gap";
    EXPECT_GT(CountMark(Grab(0), At({10, -1.5, 0.25}), 4), 3);
    Snap("particle_trail");
    // The work area says how long it is.
    Hub()->mpCTimeCtrl->SetWAMaxNative(1);
    EXPECT_EQ(Hub()->mpCParticles->GetTrail().size(), 1u);
    // Round a periodic box it leaves through one face and comes in through the other.
    PeriodicBoundary_cls& box = *Hub()->mpCPeriodicBoundary;
    box.mCPeriodicType.mValue = PERIODIC_XYZ;
    for (ConfItemFLOATARRAY_cls* vector :
         {&box.mCPeriodicBaseVector0, &box.mCPeriodicBaseVector1, &box.mCPeriodicBaseVector2})
        std::fill_n(vector->mValue, 3, 0.0f);
    box.mCPeriodicBaseVector0.mValue[0] = box.mCPeriodicBaseVector2.mValue[2] = 100.0f;
    box.mCPeriodicBaseVector1.mValue[1] = 1.5f;
    const auto lines = Hub()->mpCParticles->GetTrail();
    ASSERT_EQ(lines.size(), 2u);
    EXPECT_FLOAT_EQ(lines[0][1][1], 1.5f);
    EXPECT_FLOAT_EQ(lines[1][0][1], -0.5f);
    box.SetToDefault();
}

} // namespace
