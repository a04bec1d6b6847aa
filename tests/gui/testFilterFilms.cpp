// What films make of filters.
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FILTER/clsFilterCopy.h"
#include "FILTER/clsFilterDataBox.h"
#include "FILTER/clsFilterFog.h"
#include "FILTER/clsFilterGrid.h"
#include "FILTER/clsFilterObject.h"
#include "FILTER/clsFilterStick.h"
#include "FilterPictures.h"
#include "RunFilm.h"

namespace {

class FilterFilms : public ::testing::Test {
protected:
    void SetUp() override {
        for (const char* folder : {"whole", "slices", "plain", "many", "data"})
            std::filesystem::create_directory(mFolder.mPath / folder);
    }
    ChildRun_st Film(const std::string& lines, const std::string& out, std::vector<std::string> words) {
        const std::string project = mFolder.MakeProject(out + ".mrp", lines);
        words.insert(words.end(), {"--output", mFolder / (out + "/f%04d.png"), project});
        return RunFilm(words);
    }
    static std::string Blocks(FilterLists_cls& lists) {
        return lists.Serialize().ToStdString() + "PeriodicBaseVector1=0 1 0\n";
    }
    FilmFolder_cls mFolder;
};

// A cut that sweeps through the film with key frames, a turning box and copies, and all that filters add; a
// frame has a mesh, the others lack it.
TEST_F(FilterFilms, SlicesAreThoseOfOneRun) {
    FilterLists_cls lists;
    std::string blocks;
    std::ofstream(mFolder / "sheet0002.obj") << "v 0 0 0\nv 0 1 0\nv 0 0 1\nf 1 2 3\n";
    {
        FilterScope_cls filters(lists);
        FilterBooleanData_cls& cut = filters.AddCut(0, 0, 0.2f, {0, 0, 0}, {1, 100, 100});
        FilterDataBoxData_cls& box = *filters.Add<FilterDataBox_cls>(FILTER_DATABOX).GetPCData();
        filters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[1].mValue = 2;
        FilterObjectData_cls& mesh = *filters.Add<FilterObject_cls>(FILTER_OBJECT).GetPCData();
        mesh.mCObjectType.mValue = FilterObjectData_cls::IMPORT;
        mesh.mCImportPath.mStrValue = "sheet%04d.obj";
        filters.Add<FilterObject_cls>(FILTER_OBJECT);
        filters.Add<FilterGrid_cls>(FILTER_GRID);
        filters.Add<FilterFog_cls>(FILTER_FOG);
        FilterStickData_cls& stick = *filters.Add<FilterStick_cls>(FILTER_STICK).GetPCData();
        stick.mCCalcType.mValue = FilterStickData_cls::CALCULATE;
        stick.mCCritA.mValue = 0.03f;
        stick.mCStickWidth.mValue = 1;
        for (const double time : {0.0, 1.0}) {
            const double place[3] = {time - 0.5, 0, 0}, turn[3] = {0, 0, 90 * time};
            SceneObj_cls::SetKeyAt(cut.mpCTranslate, place, time);
            SceneObj_cls::SetKeyAt(box.mpCRotate, turn, time);
        }
        blocks = Blocks(lists);
    }
    const ChildRun_st run = Film(blocks, "whole", {"--quiet", "--damaged", "ok"});
    ASSERT_EQ(run.mStatus, 0) << run.mErr;
    ASSERT_EQ(Film(blocks, "slices", {"--quiet", "--damaged", "ok", "--frames", "3-4"}).mStatus, 0);
    ASSERT_EQ(Film(blocks, "slices", {"--quiet", "--damaged", "ok", "--frames", "0-2"}).mStatus, 0);
    const auto whole = mFolder.ReadAll("whole");
    EXPECT_EQ(whole.size(), 5u);
    EXPECT_TRUE(mFolder.ReadAll("slices") == whole);
    ASSERT_EQ(Film("", "plain", {"--quiet", "--frames", "2"}).mStatus, 0);
    EXPECT_FALSE(mFolder.ReadAll("plain").at("f0002.png") == whole.at("f0002.png"));
}

TEST_F(FilterFilms, ManyCopiesAreToldAndDrawnAndDataStayWhole) {
    FilterLists_cls lists;
    std::string blocks;
    {
        FilterScope_cls filters(lists);
        filters.AddCut(1, 0, 0.0f, {0, 0, 0}, {1e9, 1e9, 1e9});
        filters.Add<FilterCopy_cls>(FILTER_COPY).GetPCData()->mCMax[0].mValue = 100001;
        blocks = Blocks(lists);
    }
    const ChildRun_st run = Film(blocks + "DataExportFiltered=1\n", "many",
                                 {"--quiet", "--frames", "0", "--export-data", mFolder / "data/d%04d.bin"});
    EXPECT_EQ(run.mStatus, 0) << run.mErr;
    EXPECT_NE(run.mErr.find("100001 times"), std::string::npos) << run.mErr;
    EXPECT_EQ(mFolder.ReadAll("many").size(), 1u);
    EXPECT_GT(mFolder.ReadAll("data").at("d0000.bin").size(), 1000u) << "filters have no part in that";
}

} // namespace
