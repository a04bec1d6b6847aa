// Projects whose numbers are none: whatever stands in a file, keys and pictures have numbers.
#include <regex>

#include "APP/clsMain.h"
#include "FILTER/clsFilterLists.h"
#include "FilterTest.h"
#include "GL/DRAW/clsDrawOption.h"
#include "PARAM/clsParamGroup.h"
#include "SCENE/clsLightSRC.h"
#include "SCENE/clsLightSRCCtrl.h"
#include "SCENE/clsStereoGram.h"

namespace {

class OddNumbers : public FilterTest {
protected:
    void TearDown() override {
        Hub()->mpCLightSRCCtrl->SetToDefault();
        Hub()->mpCStereoGram->Reset();
        Hub()->mpCStereoGram->UpdateTLShown();
        Hub()->mpCDrawOption->mShadow.mValue = 0;
        FilterTest::TearDown();
    }
    /// A project with filters of every kind, lights of every type, two eyes and shadows.
    std::string MakeText() {
        Open(Root() + "examples/lj_melt_bin/melt_shadows.mrp");
        for (int type = 0; type < kFilterTypes; ++type)
            Lists().Get(GetFilterKind(type).mList).AddFilter(type);
        while (Hub()->mpCLightSRCCtrl->GetLightNumber() < 4)
            Hub()->mpCLightSRCCtrl->AddLight();
        for (int i = 0; i < 4; ++i)
            Hub()->mpCLightSRCCtrl->GetLight(i).mCType.mValue = i;
        Hub()->mpCStereoGram->mCType.mValue = StereoGram_cls::TYPE_TOE_IN;
        Hub()->mpCStereoGram->mCEye.mValue = StereoGram_cls::OUTPUT_SIDE_BY_SIDE;
        const std::string path = mDir / "all.mrp";
        EXPECT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(path), true));
        return ReadAll(path);
    }
    /// Whatever can be a curve on the time lines has numbers alone.
    static int CountBadKeys() {
        int bad = 0;
        for (const TimelineRow& row : Strips()->GetRows()) {
            const ParamGroup_cls* group = row.mpCGroup->GetPCGroup();
            if (!group) continue;
            for (const Parameters_cls& param : group->mVParams) {
                for (const KeyFrame_cls& key : param.GetKeys())
                    bad += !std::isfinite(key.mDoubleIndex) || !std::isfinite(key.mValue) ||
                           !std::isfinite(key.mValueD1) || !std::isfinite(key.mValueD2);
                bad += !std::isfinite(param.mCurrentValue);
            }
        }
        return bad;
    }
    void ExpectNumbers(const std::string& text, const std::string& what) {
        const std::string path = mDir / "odd.mrp";
        std::ofstream(path, std::ios::binary) << text;
        ASSERT_TRUE(OpenProjectAndPaint(path)) << what;
        EXPECT_EQ(CountBadKeys(), 0) << what;
        const std::string again = mDir / "again.mrp";
        ASSERT_TRUE(Hub()->SaveProjectFile(wxString::FromUTF8(again), true));
        std::istringstream lines(ReadAll(again));
        const std::regex none("(^|[ =])-?(nan|inf)($| )");
        for (std::string line; std::getline(lines, line);)
            EXPECT_FALSE(std::regex_search(line, none)) << what << ": " << line;
        // What is drawn, picked and keyed comes from numbers, too.
        Menu(ID_REFRESH_GL);
        Settle();
        EXPECT_EQ(CountBadKeys(), 0) << what << ", painted";
    }
};

TEST_F(OddNumbers, NoKeyHasThem) {
    const std::string text = MakeText();
    // Time, kind, value and two slopes.
    const std::regex key("(-?[0-9]+\\.[0-9]{9}) ([0-9]) (-?[0-9]+\\.[0-9]+) (-?[0-9.]+) (-?[0-9.]+) *\\n");
    ASSERT_TRUE(std::regex_search(text, key));
    for (const char* odd : {"nan", "-1e999", "x"})
        for (const std::string& line :
             {std::string("$1 $2 ") + odd + " $4 $5\n", std::string(odd) + " $2 $3 $4 $5\n",
              std::string("$1 5 $3 ") + odd + " " + odd + "\n"})
            ExpectNumbers(std::regex_replace(text, key, line), line);
}

TEST_F(OddNumbers, NorHasASetting) {
    const std::string text = MakeText();
    const std::regex number("=(-?[0-9]+\\.[0-9]{6})(?=[ \\n])");
    ASSERT_TRUE(std::regex_search(text, number));
    for (const char* odd : {"nan", "-inf", "-1e30", "0"})
        ExpectNumbers(std::regex_replace(text, number, std::string("=") + odd), odd);
}

} // namespace
